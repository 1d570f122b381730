/*
 * The parameter language as data: its statements, options, values, spellings and validation rules,
 * read from the tables that the parser itself runs on. For tools that explain, complete, format or
 * document. Extensions of this library.
 *
 * Iterate over each list by index, from 0 until a function returns TAVO_LANGUAGE_END. Returned
 * texts are static. The functions may be called from any thread. Compiles as C11 and as C++20.
 */
#ifndef TAVO_LANGUAGE_H
#define TAVO_LANGUAGE_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

/* No such index, or a null argument. */
#define TAVO_LANGUAGE_END 0xFFFFFFFFu
/* As the index of a parameter: the option itself. */
#define TAVO_LANGUAGE_NO_PARAMETER 0xFFFFFFFFu

/* ---- tokens ----------------------------------------------------------------------------------*/

typedef enum TAVOTokenKind {
  TAVO_KIND_RESERVED = 0,         /* a number that the recognizer reserves, or no token */
  TAVO_KIND_PUNCTUATION = 1,      /* one character */
  TAVO_KIND_PATTERN = 2,          /* described by a rule: see description */
  TAVO_KIND_KEYWORD = 3,          /* a word in either case */
  TAVO_KIND_NUMBERED_KEYWORD = 4, /* a word in either case, bare or with a number from 1 to 99 */
  TAVO_KIND_VALUE = 5,            /* a structured value in either case */
  TAVO_KIND_KEY_LITERAL = 6,      /* a word in exactly this case */
  TAVO_KIND_FRAGMENT = 7          /* never a token by itself */
} TAVOTokenKind;

typedef struct TAVOTokenInfo {
  const char* name;        /* such as "TAVO_PARSER_PROVIDER" */
  const char* description; /* of a pattern, else null */
  uint32_t kind;           /* TAVOTokenKind */
  uint32_t spellings;      /* how many */
} TAVOTokenInfo;

/* Describes a token type, 0 to 350. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetToken(uint32_t tokenType, TAVOTokenInfo* info) TAVO_NOEXCEPT;

/* The index-th spelling of a token type, upper case, or null. */
TAVO_API const char* TAVOLanguage_GetSpelling(uint32_t tokenType, uint32_t index) TAVO_NOEXCEPT;

/* ---- statements, options, values -------------------------------------------------------------*/

typedef struct TAVOStatementInfo {
  const char* rule;       /* such as "tavo_service_provider_eml" */
  const char* listRule;   /* rule of one separator and one option, or null */
  const char* optionRule; /* rule that chooses an option, or null */
  uint32_t keywords[4];   /* token types of the first word, 0 when unused */
  uint32_t nameToken;     /* token type after "=" */
  uint32_t keyType;       /* stored key type; 0 when the statement itself stores nothing */
  uint32_t valueType;     /* stored value type */
  uint32_t options;       /* how many */
  uint32_t rules;         /* validation rules, how many */
} TAVOStatementInfo;

/* Describes the index-th statement. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetStatement(uint32_t index, TAVOStatementInfo* info) TAVO_NOEXCEPT;

typedef enum TAVOValueSyntax {
  TAVO_SYNTAX_TOKEN = 0,     /* one of the accepted tokens */
  TAVO_SYNTAX_STRING = 1,    /* a quoted string, or any other single token as an unquoted string */
  TAVO_SYNTAX_PARAMETERS = 2 /* "(" parameter { "," parameter } ")" */
} TAVOValueSyntax;

typedef struct TAVOOptionInfo {
  const char* rule;     /* such as "cmn_opt_parm_seed" */
  uint32_t keywords[4]; /* token types that begin it, 0 when unused */
  uint32_t keyType;     /* stored key type */
  uint32_t syntax;      /* TAVOValueSyntax */
  uint32_t values;      /* accepted tokens, how many */
  uint32_t parameters;  /* parameters in parentheses, how many */
  uint32_t setsTraceLevel;
} TAVOOptionInfo;

/* Describes an option of a statement, or a parameter of that option.
 * parameter: TAVO_LANGUAGE_NO_PARAMETER for the option itself. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetOption(uint32_t statement, uint32_t option, uint32_t parameter,
                                         TAVOOptionInfo* info) TAVO_NOEXCEPT;

typedef struct TAVOValueInfo {
  uint32_t tokenType; /* accepted token */
  uint32_t keyType;   /* stored key type */
  uint32_t valueType; /* stored value type; for data types the data-type code */
} TAVOValueInfo;

/* Describes an accepted token of an option or parameter. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetValue(uint32_t statement, uint32_t option, uint32_t parameter,
                                        uint32_t index, TAVOValueInfo* info) TAVO_NOEXCEPT;

typedef struct TAVORuleInfo {
  uint32_t number;    /* error number of a violation */
  uint32_t keys[4];   /* key types that the rule looks at, 0 when unused */
  uint32_t insertKey; /* key type whose key text is the message's insert, or 0 */
} TAVORuleInfo;

/* Describes a validation rule of a statement. Rules are listed in the order in which they run.
 * Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetRule(uint32_t statement, uint32_t index,
                                       TAVORuleInfo* info) TAVO_NOEXCEPT;

/* ---- meaning ---------------------------------------------------------------------------------*/

/* What a statement, an option or a parameter means, and an example of it. Static texts, UTF-8. */
typedef struct TAVOMeaning {
  const char*
      meaning; /* one sentence; where the masking provider decides, it says what is stored */
  const char* example; /* of a statement: a valid one; else keyword, "=" and value */
  const char* start;   /* of an option: start, ", " and example are a valid statement; else null */
} TAVOMeaning;

/* Tells what the index-th statement means. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetStatementMeaning(uint32_t statement,
                                                   TAVOMeaning* meaning) TAVO_NOEXCEPT;

/* Tells what an option of a statement, or a parameter of that option, means.
 * parameter: TAVO_LANGUAGE_NO_PARAMETER for the option itself. Returns 0 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_GetOptionMeaning(uint32_t statement, uint32_t option,
                                                uint32_t parameter,
                                                TAVOMeaning* meaning) TAVO_NOEXCEPT;

/* One sentence on an accepted token of an option or parameter, indexed as by
 * TAVOLanguage_GetValue; static, or null for no such index. */
TAVO_API const char* TAVOLanguage_GetValueMeaning(uint32_t statement, uint32_t option,
                                                  uint32_t parameter, uint32_t index) TAVO_NOEXCEPT;

/* ---- tokens of a text ------------------------------------------------------------------------*/

/* One token of a text, or a lexical error. Offsets count characters. */
typedef struct TAVOTextToken {
  uint32_t type;   /* token type; 0 for a lexical error */
  uint32_t offset; /* 0-based; of a lexical error: start of the dropped text */
  uint32_t length;
  uint32_t line;      /* 1-based */
  uint32_t column;    /* 1-based */
  uint32_t hidden;    /* 1: white space or a comment */
  uint32_t offending; /* of a lexical error: offset of the offending character, else 0 */
} TAVOTextToken;

/* Called for each token in order; a non-zero result stops the iteration and is returned. */
typedef uint32_t (*TAVOTokenVisitor)(const TAVOTextToken* token, void* context);

/* Reads a text as the lexer does. text: characters wide characters, need not be terminated.
 * Returns 0, the visitor's result, 7089 (no memory), 7095 (the text is not valid Unicode) or
 * TAVO_LANGUAGE_END (null text or visitor). */
TAVO_API uint32_t TAVOLanguage_ReadTokens(const wchar_t* text, uint32_t characters,
                                          TAVOTokenVisitor visitor, void* context) TAVO_NOEXCEPT;

/* The result of one lexer rule at the beginning of a text. */
typedef struct TAVORuleMatch {
  uint32_t matched; /* 1 when the rule matched */
  uint32_t length;  /* characters matched, or before the offending one */
  uint32_t error;   /* kind of recognition error: 2 token, 3 no alternative, 4 set, 5 early exit */
} TAVORuleMatch;

/* Runs the lexer rule of a token type or fragment, committed from its first character.
 * Returns 0, 7089, 7095 or TAVO_LANGUAGE_END. */
TAVO_API uint32_t TAVOLanguage_MatchRule(uint32_t tokenType, const wchar_t* text,
                                         uint32_t characters, TAVORuleMatch* match) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_LANGUAGE_H */
