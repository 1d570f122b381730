/*
 * Text helpers of libTAVOParser: byte and bit order, UTF-16 and UTF-32, case, comparison, list
 * elements, delimiters and column names. Compiles as C11 and as C++20.
 *
 * The functions keep no state and may be called from any thread, except where one says otherwise.
 * "Converts in place" means that the caller owns the text and that its length does not change.
 * Where a function returns its argument, a null argument is returned as it came.
 */
#ifndef TAVO_TEXT_H
#define TAVO_TEXT_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* ---- UTF-16 and UTF-32 -----------------------------------------------------------------------*/

/* Converts UTF-16 to UTF-32 with the suite's data conversion.
 * srcBytes, dstBytes: sizes in bytes; a rest of less than one unit is ignored. The source may hold
 * zero characters. count: out, characters produced; untouched on failure. No terminator is written.
 * Returns 0, the data conversion's code, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TAVO_Utf16ToUtf32(const uint16_t* src, uint32_t srcBytes, wchar_t* dst,
                                    uint32_t dstBytes, uint32_t* count) TAVO_NOEXCEPT;

/* The way back. srcBytes is signed and is divided as a signed number, so a negative length reaches
 * the data conversion as a negative count. count: out, 16-bit units produced. */
TAVO_API uint32_t TAVO_Utf32ToUtf16(const wchar_t* src, int32_t srcBytes, uint16_t* dst,
                                    uint32_t dstBytes, uint32_t* count) TAVO_NOEXCEPT;

/* ---- case ------------------------------------------------------------------------------------*/

/* Convert zero-terminated 8-bit text in place with toupper and tolower, so by the locale of the
 * process. Return the text. */
TAVO_API char* TAVO_StrToUpper(char* text) TAVO_NOEXCEPT;
TAVO_API char* TAVO_StrToLower(char* text) TAVO_NOEXCEPT;

/* Convert wide text in place with towupper and towlower. Return the text. */
TAVO_API wchar_t* TAVO_StrToWUpper(wchar_t* text) TAVO_NOEXCEPT;
TAVO_API wchar_t* TAVO_StrToWLower(wchar_t* text) TAVO_NOEXCEPT;

/* One character, ASCII letters only, whatever the locale; other values come back unchanged. */
TAVO_API uint32_t tohrmwupper(uint32_t character) TAVO_NOEXCEPT;
TAVO_API uint32_t tohrmwlower(uint32_t character) TAVO_NOEXCEPT;

/* ---- comparison ------------------------------------------------------------------------------*/

/* Compares two wide texts without regard to case (towlower).
 * Returns 0 for equal texts; at the first characters that differ their difference, first minus
 * second, lower-cased. When one text is the beginning of the other the sign tells which is longer
 * and the magnitude is the last common character, lower-cased. When nothing was compared, because
 * one text is empty, that magnitude is the one that the previous call left, which may be 0: to see
 * whether a text is empty, look at its first character.
 * That left-over pair is one per function in the whole process: a call in another thread may change
 * what this one answers for an empty text, and nothing else.
 * A null argument is not followed: it stands before every text, and two of them are equal. */
TAVO_API int32_t StringWCaseCompare(const wchar_t* first, const wchar_t* second) TAVO_NOEXCEPT;

/* The same over at most count characters; 0 when the count is used up. */
TAVO_API int32_t StringWNCaseCompare(const wchar_t* first, const wchar_t* second,
                                     uint32_t count) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_TEXT_H */
