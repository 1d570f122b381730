/*
 * Extensions: exported by libTAVOParser in addition to the suite's own interface.
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_PARSER_EXT_H
#define TAVO_PARSER_EXT_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

/* ---- where the last syntax error is ----------------------------------------------------------*/

/* The position in a recorded syntax error counts within its line; this one counts in the whole
 * string. */
typedef struct TAVOErrorLocation {
  uint32_t messageId; /* 7139, or 7140 for a bad separator */
  uint32_t offset;    /* 0-based offset in characters of the parameter string */
  uint32_t length;    /* characters to point at; 0 at the end of the string */
  uint32_t line;      /* 1-based */
  uint32_t column;    /* 1-based, in characters */
} TAVOErrorLocation;

TAVO_ASSERT_SIZE(TAVOErrorLocation, 20);

/* Gets the location of the last syntax error of the calling thread's last Parser_Service.
 * location: out. Returns 0; 72 when the last call of this thread found no syntax error (the record
 * is untouched); 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TAVOParser_GetErrorLocation(TAVOErrorLocation* location) TAVO_NOEXCEPT;

/* Version of the loaded library, such as "1.0.0"; static text. */
TAVO_API const char* TAVOParser_GetVersion(void) TAVO_NOEXCEPT;
/* TAVO_ABI_VERSION of the loaded library. */
TAVO_API uint32_t TAVOParser_GetAbiVersion(void) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_PARSER_EXT_H */
