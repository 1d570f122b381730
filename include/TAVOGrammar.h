/*
 * The recognizer objects: lexer and parser of the parameter language on the ANTLR 3 C runtime.
 * Parser_Service builds them itself; this header is for callers that need tokens or run the
 * recognizer themselves. Needs the runtime's headers (antlr3.h).
 */
#ifndef TAVO_GRAMMAR_H
#define TAVO_GRAMMAR_H

#include <antlr3.h>

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

typedef struct TAVOLexer_Ctx_struct TAVOLexer;
typedef TAVOLexer* pTAVOLexer;
typedef struct TAVOParser_Ctx_struct TAVOParser;
typedef TAVOParser* pTAVOParser;

/* pLexer is the runtime's lexer; its token source is pLexer->rec->state->tokSource. */
struct TAVOLexer_Ctx_struct {
  pANTLR3_LEXER pLexer;
  void (*mTokens)(pTAVOLexer ctx); /* recognizes one token */
  const char* (*getGrammarFileName)(void);
  void (*free)(pTAVOLexer ctx); /* frees the object and what it owns */
};

/* pParser is the runtime's parser. */
struct TAVOParser_Ctx_struct {
  pANTLR3_PARSER pParser;
  void (*parse_tavo_provider_syntax)(pTAVOParser ctx, RequestRecord* request); /* the top rule */
  const char* (*getGrammarFileName)(void);
  void (*free)(pTAVOParser ctx); /* frees the object, not the token stream */
};

/* Creates a lexer over an input stream of UTF-16 in native byte order. The caller keeps the stream,
 * which must outlive the lexer and its tokens. Returns null when memory cannot be allocated, or
 * when the stream is null or has another encoding. */
TAVO_API pTAVOLexer TAVOLexerNew(pANTLR3_INPUT_STREAM instream) TAVO_NOEXCEPT;
/* The same with the caller's recognizer state, which must come from malloc; the lexer takes
 * ownership of it. Null creates a state. */
TAVO_API pTAVOLexer TAVOLexerNewSSD(pANTLR3_INPUT_STREAM instream,
                                    pANTLR3_RECOGNIZER_SHARED_STATE state) TAVO_NOEXCEPT;

/* Creates a parser over a token stream. The caller keeps the stream, which must outlive the parser.
 * Returns null when memory cannot be allocated or the stream is null. */
TAVO_API pTAVOParser TAVOParserNew(pANTLR3_COMMON_TOKEN_STREAM instream) TAVO_NOEXCEPT;
/* The same with the caller's recognizer state, as for the lexer. */
TAVO_API pTAVOParser TAVOParserNewSSD(pANTLR3_COMMON_TOKEN_STREAM instream,
                                      pANTLR3_RECOGNIZER_SHARED_STATE state) TAVO_NOEXCEPT;

/* Called before a free string value is matched: changes the type of the next token to unquoted
 * string, unless it is a quoted string. Its text is unchanged. */
TAVO_API void TAVO_HandlePossibleStringTokenMatch(pTAVOParser ctx) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_GRAMMAR_H */
