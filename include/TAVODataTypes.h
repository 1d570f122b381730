/*
 * The suite's field data types: names, sizes and display lengths, buffers for values, digit counts.
 * Compiles as C11 and as C++20. The functions keep no state and may be called from any thread. A
 * fieldDef argument points to a field definition, of which only the two members of TAVOFieldType
 * are read.
 */
#ifndef TAVO_DATA_TYPES_H
#define TAVO_DATA_TYPES_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* Data-type codes. 0, 11 and 12 are placeholders. */
typedef enum TAVODataType {
  TAVO_TYPE_CHAR = 1,
  TAVO_TYPE_VARCHAR = 2,    /* text after a 16-bit length in bytes */
  TAVO_TYPE_VARCHAR_SZ = 3, /* zero-terminated text */
  TAVO_TYPE_WCHAR = 4,
  TAVO_TYPE_WVARCHAR = 5,
  TAVO_TYPE_WVARCHAR_SZ = 6,
  TAVO_TYPE_LONG_LONG = 7,
  TAVO_TYPE_U_LONG_LONG = 8,
  TAVO_TYPE_INTEGER = 9,
  TAVO_TYPE_U_INTEGER = 10,
  TAVO_TYPE_DECIMAL_K48 = 13,
  TAVO_TYPE_ODBC_DATE = 14,
  TAVO_TYPE_ODBC_TIME = 15,
  TAVO_TYPE_ODBC_TIMESTAMP = 16,
  TAVO_TYPE_DATETIME_SZ = 17,
  TAVO_TYPE_DATETIME_WSZ = 18,
  TAVO_TYPE_DOUBLE = 19,
  TAVO_TYPE_FLOAT = 20,
  TAVO_TYPE_SMALLINT = 21,
  TAVO_TYPE_USMALLINT = 22,
  TAVO_TYPE_TINYINT = 23,
  TAVO_TYPE_UTINYINT = 24,
  TAVO_TYPE_DATETIME_CHAR = 25,
  TAVO_TYPE_DATETIME_VARCHAR = 26,
  TAVO_TYPE_DATETIME_WCHAR = 27,
  TAVO_TYPE_DATETIME_WVARCHAR = 28,
  TAVO_TYPE_ORA_VARNUM = 101 /* has sizes, but no name and no row in the table */
} TAVODataType;

#define TAVO_DATA_TYPE_COUNT 29 /* codes 0 to 28 */

/* Result codes of the functions that read a field definition. */
#define TAVO_TYPE_STATUS_NO_FIELD 48u       /* no field definition */
#define TAVO_TYPE_STATUS_UNKNOWN 49u        /* no such data type */
#define TAVO_TYPE_STATUS_NO_DISPLAY 50u     /* a text type: its display length is not fixed */
#define TAVO_TYPE_STATUS_DATE_TEXT 65u      /* a date held as text; the length was stored */
#define TAVO_TYPE_STATUS_FAILED 0xFFFFFFFFu /* another null argument, refused memory, see there */

/* The members of a field definition that are read. */
typedef struct TAVOFieldType {
  uint8_t other[16];
  int16_t dataType;
  uint8_t pad18[2];
  uint32_t length; /* declared length, in characters for character types */
} TAVOFieldType;

TAVO_ASSERT_SIZE(TAVOFieldType, 24);
TAVO_ASSERT_OFFSET(TAVOFieldType, dataType, 16);
TAVO_ASSERT_OFFSET(TAVOFieldType, length, 20);

/* ---- names and sizes -------------------------------------------------------------------------*/

/* Name of a data type, static text; null for 0 and for every code above 28 or below 0. */
TAVO_API const char* TAVOGetDataTypeName(int16_t code) TAVO_NOEXCEPT;

/* 0 for the wide character codes 4, 5, 6, 18, 27 and 28, -1 for every other code. */
TAVO_API int32_t TAVO_IsWideCharacterDatatype(int16_t code) TAVO_NOEXCEPT;

/* Bytes of a value's data, without the 16-bit length or the terminator of a text. bytes: out,
 * untouched on failure.
 * Returns 0; 48 for a null argument; 49 for an unknown code, and for a wide text whose size in
 * bytes does not fit in 32 bits. */
TAVO_API uint32_t GetDataTypeBytes(const void* fieldDef, uint32_t* bytes) TAVO_NOEXCEPT;

/* Characters that display a value.
 * length: out; stored only with results 0 and 65.
 * Returns 0; 65 for a date held as text, with length 50 stored; 50 for codes 1 to 6; 49 for an
 * unknown code; 48 for a null argument. */
TAVO_API uint32_t GetDataTypeLengths(const void* fieldDef, uint32_t* length) TAVO_NOEXCEPT;

/* Add the number of decimal digits of a value's magnitude to a counter; 0 has none.
 * Return 0, or 0xFFFFFFFF for a null counter. */
TAVO_API uint32_t TAVOGetIntDigitCount(int32_t value, uint32_t* counter) TAVO_NOEXCEPT;
TAVO_API uint32_t TAVOGetLongLongDigitCount(int64_t value, uint32_t* counter) TAVO_NOEXCEPT;

/* ---- values and their buffers ----------------------------------------------------------------*/

/* Bytes of the buffer that one value of a field needs: the bytes of its data, and 2 for the length
 * before a VARCHAR (codes 2, 5, 26, 28) or one character for the terminator of a zero-terminated
 * text (codes 3, 6, 17, 18).
 * bytes: out, untouched on failure.
 * Returns 0, 48 for no field definition, 49 for an unknown code, 0xFFFFFFFF for a null bytes or a
 * size that does not fit in 32 bits. */
TAVO_API uint32_t GetSrcBufLen(const void* fieldDef, uint32_t* bytes) TAVO_NOEXCEPT;

/* Allocates a zeroed buffer for one value of a field, GetSrcBufLen bytes (at least one).
 * buffer: out, free it with free(); null on failure.
 * Returns the codes of GetSrcBufLen; also 0xFFFFFFFF when memory cannot be allocated. */
TAVO_API uint32_t TAVOAllocateBuffer(const void* fieldDef, void** buffer) TAVO_NOEXCEPT;

/* The same for `count` consecutive values of GetSrcBufLen bytes each.
 * A count of 0 is 0xFFFFFFFF. */
TAVO_API uint32_t TAVOAllocateBuffer1(const void* fieldDef, uint32_t count,
                                      void** buffer) TAVO_NOEXCEPT;

/* Bytes of data that a value holds: the whole declared length of a CHAR or WCHAR; the length prefix
 * of a VARCHAR; the bytes before the terminator of a zero-terminated text, DATETIME_CHAR or
 * DATETIME_WCHAR, at most the size of the type; the size of any other type.
 * data: a buffer as GetSrcBufLen describes it, of any alignment.
 * bytes: out, untouched on failure.
 * Returns 0; 48 for no field definition; 49 for an unknown code; 0xFFFFFFFF for another null
 * argument and for a VARCHAR that claims more bytes than its type holds or a broken wide one. */
TAVO_API uint32_t TAVOGetSourceDataLen(const void* fieldDef, const void* data,
                                       uint32_t* bytes) TAVO_NOEXCEPT;

/* Whether a value is numerically zero or a text of length zero; such a value may be left unmasked,
 * so the answer is no in case of doubt.
 * Zero: integers of value 0, DOUBLE and FLOAT of value 0 or -0, DECIMAL_K48 of 16 zero bytes.
 * Length zero: TAVOGetSourceDataLen is 0; CHAR and WCHAR also when all their characters are zero
 * (blanks are characters). Dates and times in binary form and ORA_VARNUM are neither.
 * Returns 0 for yes, -1 for no, and for refused input 48 (no field definition), 49 (unknown code)
 * or 50 (null data, or a text that TAVOGetSourceDataLen refuses). */
TAVO_API int32_t TAVO_IsZeroOrZeroLength(const void* fieldDef, const void* data) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_DATA_TYPES_H */
