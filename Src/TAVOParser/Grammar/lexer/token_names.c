/* The exported name table. In C, which has designated array initializers. */
#include "TAVOParser.h"

const char* const TAVOParserTokenNames[TAVO_TOKEN_NAME_COUNT] = {
    [0] = "<invalid>",
    [1] = "<EOR>",
    [2] = "<DOWN>",
    [3] = "<UP>",
#define TAVO_PUNCTUATION(number, name, text) [number] = #name,
#define TAVO_PATTERN(number, name, description) [number] = #name,
#define TAVO_KEYWORD(number, name, ...) [number] = #name,
#define TAVO_NUMBERED_KEYWORD(number, name, word) [number] = #name,
#define TAVO_VALUE(number, name, ...) [number] = #name,
#define TAVO_KEY_LITERAL(number, name, text) [number] = #name,
#define TAVO_FRAGMENT(number, name) [number] = #name,
#include "TAVOVocabulary.def"
};
