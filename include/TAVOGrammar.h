/*
 * The recognizer objects: lexer and parser of the parameter language on the ANTLR 3 C runtime.
 * Parser_Service builds them itself; this header is for callers that want tokens or want to drive
 * the recognizer. Needs the runtime's headers (antlr3.h).
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

/* A lexer over an input stream of UTF-16 in the machine's byte order, which stays the caller's and
 * must outlive the lexer and its tokens. Null when memory is refused or the stream is null or in
 * another encoding. */
TAVO_API pTAVOLexer TAVOLexerNew(pANTLR3_INPUT_STREAM instream) TAVO_NOEXCEPT;
/* The same with a recognizer state of the caller's, which must have come from malloc; the lexer
 * owns it from then on. Null makes a state. */
TAVO_API pTAVOLexer TAVOLexerNewSSD(pANTLR3_INPUT_STREAM instream,
                                    pANTLR3_RECOGNIZER_SHARED_STATE state) TAVO_NOEXCEPT;

/* A parser over a token stream, which stays the caller's and must outlive the parser. Null when
 * memory is refused or the stream is null. */
TAVO_API pTAVOParser TAVOParserNew(pANTLR3_COMMON_TOKEN_STREAM instream) TAVO_NOEXCEPT;
/* The same with a recognizer state of the caller's, as for the lexer. */
TAVO_API pTAVOParser TAVOParserNewSSD(pANTLR3_COMMON_TOKEN_STREAM instream,
                                      pANTLR3_RECOGNIZER_SHARED_STATE state) TAVO_NOEXCEPT;

/* Called before a free string value is matched: a next token that is a word, a keyword, a number
 * or any other token but a quoted string becomes an unquoted string, text unchanged. */
TAVO_API void TAVO_HandlePossibleStringTokenMatch(pTAVOParser ctx) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_GRAMMAR_H */
