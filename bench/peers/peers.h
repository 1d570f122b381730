// The peers: recognizers of the same language made by other means. Each tells whether a text is a
// statement as far as its syntax goes, and stores nothing.
#pragma once

#include <cstddef>
#include <cstdint>

#include "peers/re2c_peer.h"

namespace peers {

// What the ANTLR 3 tool generates, on the same runtime: its chain made, the text recognized, the
// chain freed.
bool antlr_accepts(uint16_t* text, uint32_t units);

// A flex lexer and a bison parser. The buffer holds UTF-8 and has to have two zeros behind it; the
// lexer writes into it and restores it.
bool flex_bison_accepts(char* buffer, size_t bytes);
// The lexer alone: how many visible tokens.
size_t flex_count_tokens(char* buffer, size_t bytes);

}  // namespace peers
