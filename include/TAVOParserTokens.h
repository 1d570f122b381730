/*
 * Token type numbers of the parameter language, one enumerator per token that the lexer can
 * produce, plus the canonical numbers that are only stored. Derived from TAVOVocabulary.def.
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_PARSER_TOKENS_H
#define TAVO_PARSER_TOKENS_H

typedef enum TAVOTokenType {
  TAVO_TOKEN_INVALID = 0, /* the recognizer's own numbers */
  TAVO_TOKEN_END_OF_RULE = 1,
  TAVO_TOKEN_DOWN = 2,
  TAVO_TOKEN_UP = 3,
#define TAVO_PUNCTUATION(number, name, text) name = number,
#define TAVO_PATTERN(number, name, description) name = number,
#define TAVO_KEYWORD(number, name, ...) name = number,
#define TAVO_NUMBERED_KEYWORD(number, name, word) name = number,
#define TAVO_VALUE(number, name, ...) name = number,
#define TAVO_KEY_LITERAL(number, name, text) name = number,
#include "TAVOVocabulary.def"
} TAVOTokenType;

/* The type of the end-of-input token. */
#define TAVO_TOKEN_END_OF_INPUT 0xFFFFFFFFu
/* Entries of TAVOParserTokenNames: token types 0 to 350. */
#define TAVO_TOKEN_NAME_COUNT 351

#endif /* TAVO_PARSER_TOKENS_H */
