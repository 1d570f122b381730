// The engine that runs the grammar tables: reads tokens, stores pairs as the tables say, and stops
// at the first syntax error.
#pragma once

#include <antlr3.h>

#include "Grammar/engine/parser.h"
#include "Grammar/engine/token_window.h"

namespace tavo {

// The top rule. Returns false when a syntax error was reported to the parser.
bool run_grammar(TokenWindow& tokens, ParserObject& parser, RequestRecord* request);
// The same over a caller's own token stream.
bool run_grammar(pANTLR3_TOKEN_STREAM stream, ParserObject& parser, RequestRecord* request);

}  // namespace tavo
