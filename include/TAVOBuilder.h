/*
 * The other way round: from a provider and options to a statement that is right by construction. An
 * extension of libTAVOParser.
 *
 *   TAVOBuilder* builder = NULL;
 *   TAVOBuilder_New("HASH", &builder);
 *   TAVOBuilder_Add(builder, "DSTFLD", "CUSTNO");
 *   TAVOBuilder_AddNumber(builder, "HASHMAX", 1000000);
 *   char statement[200];
 *   if (TAVOBuilder_GetStatement(builder, statement, sizeof statement) == 0)
 *     puts(TAVOBuilder_GetProblem(builder));
 *   TAVOBuilder_Free(builder);
 *
 * Options come out in the order of the language reference, each in its first spelling; values are
 * quoted and escaped where they have to be. What cannot be part of a right statement is refused by
 * the call that brings it, and the builder stays as it was. Reading the statement gives back the
 * values that were put in.
 *
 * Texts are UTF-8 and zero-terminated. One thread at a time may use a builder; different threads
 * may use different ones. Neither Parser_Init nor Parser_Term is needed.
 *
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_BUILDER_H
#define TAVO_BUILDER_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

typedef struct TAVOBuilder TAVOBuilder;

typedef enum TAVOBuildStatus {
  TAVO_BUILD_OK = 0,
  TAVO_BUILD_UNKNOWN_PROVIDER = 1,
  TAVO_BUILD_UNKNOWN_OPTION = 2,
  TAVO_BUILD_REPEATED_OPTION = 3, /* the option is there already, and only the first one counts */
  TAVO_BUILD_VALUE_NOT_ACCEPTED = 4, /* the option does not accept it, or no statement can say it */
  TAVO_BUILD_RULE_VIOLATED = 5,      /* the options together break a rule of the provider */
  TAVO_BUILD_NO_MEMORY = 6,
  TAVO_BUILD_ARGUMENT_INVALID = 7 /* a null builder or text, or text that is no UTF-8 */
} TAVOBuildStatus;

/* Any value type will do. */
#define TAVO_BUILD_ANY_TYPE 0xFFFFFFFFu

/* Begins a statement of a provider. provider: its name, such as HASH, in any of its spellings;
 * builder: out, to be freed with TAVOBuilder_Free, or null. Returns a TAVOBuildStatus. */
TAVO_API uint32_t TAVOBuilder_New(const char* provider, TAVOBuilder** builder) TAVO_NOEXCEPT;
/* Begins a statement of a user's own provider. library: its library. */
TAVO_API uint32_t TAVOBuilder_NewLibrary(const char* library, TAVOBuilder** builder) TAVO_NOEXCEPT;

/* Adds an option. key: its keyword in any of its spellings; of an option in parentheses both
 * keywords, as a result tells them: FLDDEF1:NAME, FMT:US. value: what a reader of the statement is
 * to get, without quotes and escapes of the language. Returns a TAVOBuildStatus. */
TAVO_API uint32_t TAVOBuilder_Add(TAVOBuilder* builder, const char* key,
                                  const char* value) TAVO_NOEXCEPT;
/* The same for a number. */
TAVO_API uint32_t TAVOBuilder_AddNumber(TAVOBuilder* builder, const char* key,
                                        int64_t value) TAVO_NOEXCEPT;
/* The same with the key type instead of the keyword; of an option of a user's own provider there is
 * no such type. */
TAVO_API uint32_t TAVOBuilder_AddType(TAVOBuilder* builder, uint32_t keyType,
                                      const char* value) TAVO_NOEXCEPT;
TAVO_API uint32_t TAVOBuilder_AddTypeNumber(TAVOBuilder* builder, uint32_t keyType,
                                            int64_t value) TAVO_NOEXCEPT;
/* Adds a pair as a result tells it: key, key type, value, value type. The value is written so that
 * it gets this type, so a text that is a keyword, too, can be said as a quoted string.
 * keyType: or 0 for any; valueType: or TAVO_BUILD_ANY_TYPE. */
TAVO_API uint32_t TAVOBuilder_AddPair(TAVOBuilder* builder, const char* key, uint32_t keyType,
                                      const char* value, uint32_t valueType) TAVO_NOEXCEPT;

/* Writes the statement, in UTF-8 and terminated; cut when the buffer is too small.
 * buffer: null to ask for the size; bytes: its size. Returns the bytes that the whole statement
 * needs, terminator included; 0 when it would be rejected, or without memory. */
TAVO_API size_t TAVOBuilder_GetStatement(TAVOBuilder* builder, char* buffer,
                                         size_t bytes) TAVO_NOEXCEPT;

/* Why the builder's last call was refused, as "unknown-option: AGLO is no option of HASH"; never
 * holds a value. Empty after a call that was not. Belongs to the builder, until its next call. */
TAVO_API const char* TAVOBuilder_GetProblem(const TAVOBuilder* builder) TAVO_NOEXCEPT;
/* The number of the rule that TAVOBuilder_GetStatement was refused for, else 0. */
TAVO_API uint32_t TAVOBuilder_GetProblemNumber(const TAVOBuilder* builder) TAVO_NOEXCEPT;

/* Frees a builder; null is accepted. */
TAVO_API void TAVOBuilder_Free(TAVOBuilder* builder) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_BUILDER_H */
