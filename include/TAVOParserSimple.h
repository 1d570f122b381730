/*
 * One call for one statement: text in, one result out. An extension of libTAVOParser.
 *
 *   TAVOReadResult* result = NULL;
 *   if (TAVOParser_Read("PRO=CCN, PAT=6C", TAVO_TERMINATED, NULL, &result) == 0) {
 *     for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i)
 *       printf("%s = %s\n", TAVOResult_GetKey(result, i), TAVOResult_GetValue(result, i));
 *   }
 *   TAVOParser_FreeResult(result);
 *
 * A result says what a sizing run and a filling run of Parser_Service say: the same status, the
 * same pairs in the same order, the same errors with the same numbers and places. Two things are
 * different. A trace level is told among the results and switched by nobody, so the platform's
 * verdict on its text is not part of the status. And nothing is recorded for the thread: the errors
 * of its last Parser_Service stay as they are.
 *
 * Neither Parser_Init nor Parser_Term is needed. Any thread may call any function at any time; a
 * result never changes after it was made, so any number of threads may read it.
 *
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_PARSER_SIMPLE_H
#define TAVO_PARSER_SIMPLE_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

/* ---- how a text is handed in -----------------------------------------------------------------*/

typedef enum TAVOTextEncoding {
  TAVO_TEXT_UTF8 = 0,
  TAVO_TEXT_WIDE = 1,     /* wchar_t, 4 bytes a character */
  TAVO_TEXT_UTF16 = 2,    /* uint16_t in the machine's byte order */
  TAVO_TEXT_CODE_PAGE = 3 /* 8-bit text; the only encoding that the platform converts */
} TAVOTextEncoding;

/* What offsets and lengths of places count. */
typedef enum TAVOOffsetUnit {
  TAVO_COUNT_CHARACTERS = 0, /* Unicode characters, as everywhere in this library */
  TAVO_COUNT_UTF8 = 1,       /* bytes of the text in UTF-8 */
  TAVO_COUNT_UTF16 = 2       /* code units of the text in UTF-16 */
} TAVOOffsetUnit;

/* All zero but for size: UTF-8, places in characters. */
typedef struct TAVOReadOptions {
  uint32_t size;         /* sizeof(TAVOReadOptions) */
  uint32_t encoding;     /* TAVOTextEncoding */
  uint32_t codePageKind; /* of TAVO_TEXT_CODE_PAGE: kind of number, 0 for the default */
  uint32_t codePage;     /* of TAVO_TEXT_CODE_PAGE: number, 0 for the default code page */
  uint32_t offsetUnit;   /* TAVOOffsetUnit */
  uint32_t reserved;     /* 0 */
} TAVOReadOptions;

TAVO_ASSERT_SIZE(TAVOReadOptions, 24);

/* Instead of a length in bytes: the text ends at its zero. Not for TAVO_TEXT_CODE_PAGE. */
#define TAVO_TERMINATED SIZE_MAX

/* TAVOParser_ReadInto: the memory is too small. */
#define TAVO_READ_NEEDS_MEMORY 0xFFFFFFFEu
/* An argument is null or out of range. */
#define TAVO_READ_ARGUMENT_INVALID 0xFFFFFFFFu

/* ---- reading ---------------------------------------------------------------------------------*/

/* What a statement says. Made by a read function, looked into with the TAVOResult functions. */
typedef struct TAVOReadResult TAVOReadResult;

/* Reads one statement.
 * text: need not be terminated and is not needed afterwards; bytes: its size in bytes, or
 * TAVO_TERMINATED; options: null for UTF-8; result: out, the caller's, to be freed with
 * TAVOParser_FreeResult whatever the status is, or null when there was no memory for one.
 * Returns the status, as TAVOResult_GetStatus does: 0 when the statement was accepted; 7148 when it
 * was rejected; 7089 (no memory), 7090 (empty text), 7091 (null text), 7092 (unknown encoding) or
 * 7095 (the text is no valid Unicode, or none of the code page); TAVO_READ_ARGUMENT_INVALID for a
 * null result or options of an unknown size or unit, without a result. */
TAVO_API uint32_t TAVOParser_Read(const void* text, size_t bytes, const TAVOReadOptions* options,
                                  TAVOReadResult** result) TAVO_NOEXCEPT;

/* The same without memory of its own: everything lies in the caller's memory, and so does the
 * result, which ends with that memory and must not be freed.
 * memory: any alignment; memoryBytes: its size; needed: out, null or the size that this text needs.
 * The size does not depend on the memory given, so a second call with it succeeds.
 * Returns as TAVOParser_Read does, and TAVO_READ_NEEDS_MEMORY, without a result, when the memory is
 * null or too small. Only a text in a code page can make the platform ask for memory. */
TAVO_API uint32_t TAVOParser_ReadInto(void* memory, size_t memoryBytes, const void* text,
                                      size_t bytes, const TAVOReadOptions* options,
                                      TAVOReadResult** result, size_t* needed) TAVO_NOEXCEPT;

/* Frees a result of TAVOParser_Read; null is accepted. */
TAVO_API void TAVOParser_FreeResult(TAVOReadResult* result) TAVO_NOEXCEPT;

/* ---- what a result holds ---------------------------------------------------------------------*/
/*
 * Texts belong to the result and are terminated; a text may hold zeros, so its length is told
 * apart. Of an index out of range, and of a null result: null texts, 0 as numbers.
 */

/* Part of the text, in the unit that the options chose. */
typedef struct TAVORange {
  uint32_t offset; /* from 0 */
  uint32_t length;
} TAVORange;

/* A part of the text and the line and column where it begins. Columns count characters. */
typedef struct TAVOPlace {
  uint32_t offset; /* from 0 */
  uint32_t length; /* 0 at the end of the text */
  uint32_t line;   /* from 1 */
  uint32_t column; /* from 1 */
} TAVOPlace;

TAVO_ASSERT_SIZE(TAVORange, 8);
TAVO_ASSERT_SIZE(TAVOPlace, 16);

/* The status, see TAVOParser_Read. */
TAVO_API uint32_t TAVOResult_GetStatus(const TAVOReadResult* result) TAVO_NOEXCEPT;
/* The value type of the provider pair, or 0 without one. */
TAVO_API uint32_t TAVOResult_GetProvider(const TAVOReadResult* result) TAVO_NOEXCEPT;

/* ---- pairs: only an accepted statement has any -----------------------------------------------*/

TAVO_API uint32_t TAVOResult_CountPairs(const TAVOReadResult* result) TAVO_NOEXCEPT;
/* Index of the first pair with a key type, or TAVO_NO_KEY_INDEX. */
TAVO_API uint32_t TAVOResult_FindPair(const TAVOReadResult* result, uint32_t keyType) TAVO_NOEXCEPT;
/* The token type that identifies the option. */
TAVO_API uint32_t TAVOResult_GetKeyType(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;
/* The token type that classifies the value, a data-type code, or 0. */
TAVO_API uint32_t TAVOResult_GetValueType(const TAVOReadResult* result,
                                          uint32_t pair) TAVO_NOEXCEPT;

/* The key as typed, with a prefix inside a field definition, in UTF-8. */
TAVO_API const char* TAVOResult_GetKey(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;
TAVO_API size_t TAVOResult_GetKeyBytes(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;
/* The value without the quotes of a quoted string, in UTF-8. */
TAVO_API const char* TAVOResult_GetValue(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;
TAVO_API size_t TAVOResult_GetValueBytes(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;

/* The same as wide text, with lengths in characters. */
TAVO_API const wchar_t* TAVOResult_GetWideKey(const TAVOReadResult* result,
                                              uint32_t pair) TAVO_NOEXCEPT;
TAVO_API size_t TAVOResult_GetKeyLength(const TAVOReadResult* result, uint32_t pair) TAVO_NOEXCEPT;
TAVO_API const wchar_t* TAVOResult_GetWideValue(const TAVOReadResult* result,
                                                uint32_t pair) TAVO_NOEXCEPT;
TAVO_API size_t TAVOResult_GetValueLength(const TAVOReadResult* result,
                                          uint32_t pair) TAVO_NOEXCEPT;

/* Where key and value stand in the text: the keyword without a prefix, the value with its quotes.
 * Return 0, or TAVO_READ_ARGUMENT_INVALID with the range untouched. */
TAVO_API uint32_t TAVOResult_GetKeyRange(const TAVOReadResult* result, uint32_t pair,
                                         TAVORange* range) TAVO_NOEXCEPT;
TAVO_API uint32_t TAVOResult_GetValueRange(const TAVOReadResult* result, uint32_t pair,
                                           TAVORange* range) TAVO_NOEXCEPT;

/* ---- trace levels: of a statement without a syntax error -------------------------------------*/

/* How often the statement sets the trace level; the last one counts. */
TAVO_API uint32_t TAVOResult_CountTraceLevels(const TAVOReadResult* result) TAVO_NOEXCEPT;
/* The text that Parser_Service would hand to the platform: of the option its value, of the
 * statement that only sets the level its keyword. UTF-8. */
TAVO_API const char* TAVOResult_GetTraceLevel(const TAVOReadResult* result,
                                              uint32_t index) TAVO_NOEXCEPT;
/* Where the option, or the statement's keyword, stands. Returns as TAVOResult_GetKeyRange does. */
TAVO_API uint32_t TAVOResult_GetTraceLevelRange(const TAVOReadResult* result, uint32_t index,
                                                TAVORange* range) TAVO_NOEXCEPT;

/* ---- errors: in the order in which Parser_Service records them -------------------------------*/

TAVO_API uint32_t TAVOResult_CountErrors(const TAVOReadResult* result) TAVO_NOEXCEPT;
/* The number: 7139, 7140, a violated rule's, or the status of a text that could not be read. */
TAVO_API uint32_t TAVOResult_GetErrorNumber(const TAVOReadResult* result,
                                            uint32_t error) TAVO_NOEXCEPT;
/* The position that 7139 is recorded with, which counts characters within its line; else 0. */
TAVO_API uint32_t TAVOResult_GetErrorPosition(const TAVOReadResult* result,
                                              uint32_t error) TAVO_NOEXCEPT;
/* Where the error is in the text: the token of a syntax error, the first character that is
 * none, the option that a violated rule names. Returns 0; 72 when the error has no place, the place
 * untouched; TAVO_READ_ARGUMENT_INVALID. */
TAVO_API uint32_t TAVOResult_GetErrorPlace(const TAVOReadResult* result, uint32_t error,
                                           TAVOPlace* place) TAVO_NOEXCEPT;

/* Writes the message, as the platform formats it, in UTF-8 and terminated; cut when the buffer is
 * too small. buffer: null to ask for the size; bytes: its size. Returns the bytes that the whole
 * message needs, terminator included; 0 when there is none or memory was refused. */
TAVO_API size_t TAVOResult_GetErrorMessage(const TAVOReadResult* result, uint32_t error,
                                           char* buffer, size_t bytes) TAVO_NOEXCEPT;
/* The same as wide text; sizes in characters. */
TAVO_API size_t TAVOResult_GetWideErrorMessage(const TAVOReadResult* result, uint32_t error,
                                               wchar_t* buffer, size_t characters) TAVO_NOEXCEPT;

/* The inserts of an error's message. Returns the insert's text and its TAVOTokenId in id (null is
 * accepted), or null from the last one on. */
TAVO_API const wchar_t* TAVOResult_GetErrorInsert(const TAVOReadResult* result, uint32_t error,
                                                  uint32_t insert, uint32_t* id) TAVO_NOEXCEPT;

/* ---- JSON ------------------------------------------------------------------------------------*/

/* Writes the result as one JSON object in UTF-8, terminated; cut when the buffer is too small.
 * buffer: null to ask for the size; bytes: its size. Returns the bytes that the whole text needs,
 * terminator included; 0 for a null result or refused memory.
 *
 *   {"status":0,"pairs":[{"key":"PRO","keyType":230,"keyName":"TAVO_PARSER_PROVIDER",
 *     "value":"CCN","valueType":236,"valueName":"TAVO_PARSER_PROVIDER_CCN",
 *     "keyRange":{"offset":0,"length":3},"valueRange":{"offset":4,"length":3}}],
 *    "traceLevels":[],"errors":[]}
 *
 * An error is {"number","message","position","place":{"offset","length","line","column"}}; position
 * and place are left out where there is none. Values are told as they are: they may be secret. */
TAVO_API size_t TAVOResult_ToJson(const TAVOReadResult* result, char* buffer,
                                  size_t bytes) TAVO_NOEXCEPT;

/* Reads a statement and tells the result as JSON, in one call. Returns as TAVOResult_ToJson does;
 * whatever the statement is, the text is whole JSON. */
TAVO_API size_t TAVOParser_ReadJson(const void* text, size_t textBytes,
                                    const TAVOReadOptions* options, char* buffer,
                                    size_t bytes) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_PARSER_SIMPLE_H */
