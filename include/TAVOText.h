/*
 * Text helpers of libTAVOParser: byte and bit order, UTF-16 and UTF-32, case, comparison, list
 * elements, delimiters and column names. Compiles as C11 and as C++20.
 *
 * The functions keep no state and may be called from any thread, unless a function says otherwise.
 * "Converts in place" means that the caller owns the text and that its length does not change. A
 * function that returns its argument also returns a null argument.
 */
#ifndef TAVO_TEXT_H
#define TAVO_TEXT_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* ---- byte and bit order ----------------------------------------------------------------------*/

/* The value with its bytes in reverse order. */
TAVO_API uint32_t RTENDIAN_SWAP_UINT(uint32_t value) TAVO_NOEXCEPT;
TAVO_API uint16_t RTENDIAN_SWAP_USHORT(uint16_t value) TAVO_NOEXCEPT;

/* Swap the bytes of each unit in place up to the first zero unit. Return the array. */
TAVO_API uint16_t* SwapBytes_2(uint16_t* units) TAVO_NOEXCEPT;
TAVO_API uint32_t* SwapBytes_4(uint32_t* units) TAVO_NOEXCEPT;

/* The same while fewer than `bytes` bytes were swapped. The count is checked before each unit, so a
 * count that is not a multiple of the unit size swaps one more unit: 3 bytes are two 16-bit units,
 * and the array must have both. A count of 0 or less swaps nothing. */
TAVO_API uint16_t* SwapnBytes_2(uint16_t* units, int32_t bytes) TAVO_NOEXCEPT;
TAVO_API uint32_t* SwapnBytes_4(uint32_t* units, int32_t bytes) TAVO_NOEXCEPT;

/* Copies `count` bytes, each with its bits in reverse order; dst may be src.
 * The result has no meaning. A null argument copies nothing. */
TAVO_API uint32_t RTBITFIELD_FLIP(uint8_t* dst, const uint8_t* src, uint32_t count) TAVO_NOEXCEPT;

/* Always 0. */
TAVO_API uint32_t TAVO_IsPlatformBigEndian(void) TAVO_NOEXCEPT;

/* ---- UTF-16 and UTF-32 -----------------------------------------------------------------------*/

/* Converts UTF-16 to UTF-32 with the suite's data conversion.
 * srcBytes, dstBytes: sizes in bytes; a remainder of less than one unit is ignored. The source may
 * contain zero characters. count: out, characters produced; untouched on failure. The result is not
 * guaranteed to be terminated.
 * Returns 0, the data conversion's code, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TAVO_Utf16ToUtf32(const uint16_t* src, uint32_t srcBytes, wchar_t* dst,
                                    uint32_t dstBytes, uint32_t* count) TAVO_NOEXCEPT;

/* The reverse conversion. srcBytes is divided as a signed number, so a negative length reaches the
 * data conversion as a negative count. count: out, 16-bit units produced. */
TAVO_API uint32_t TAVO_Utf32ToUtf16(const wchar_t* src, int32_t srcBytes, uint16_t* dst,
                                    uint32_t dstBytes, uint32_t* count) TAVO_NOEXCEPT;

/* ---- case ------------------------------------------------------------------------------------*/

/* Convert zero-terminated 8-bit text in place with toupper and tolower, in the locale of the
 * process. Return the text. */
TAVO_API char* TAVO_StrToUpper(char* text) TAVO_NOEXCEPT;
TAVO_API char* TAVO_StrToLower(char* text) TAVO_NOEXCEPT;

/* Convert wide text in place with towupper and towlower. Return the text. */
TAVO_API wchar_t* TAVO_StrToWUpper(wchar_t* text) TAVO_NOEXCEPT;
TAVO_API wchar_t* TAVO_StrToWLower(wchar_t* text) TAVO_NOEXCEPT;

/* One character, only ASCII letters, in any locale; other values are returned unchanged. */
TAVO_API uint32_t tohrmwupper(uint32_t character) TAVO_NOEXCEPT;
TAVO_API uint32_t tohrmwlower(uint32_t character) TAVO_NOEXCEPT;

/* ---- comparison ------------------------------------------------------------------------------*/

/* Compares two wide texts, ignoring case (towlower).
 * Returns 0 for equal texts, else the difference of the first characters that differ, first minus
 * second, in lowercase. When one text is a prefix of the other, the sign says which is longer and
 * the magnitude is the last common character in lowercase. When one text is empty, the magnitude is
 * what the previous call left, which may be 0: to find out whether a text is empty, check its first
 * character.
 * Each function keeps this pair once per process: a call in another thread may change the result
 * for an empty text, and nothing else.
 * A null argument sorts before every text; two null arguments are equal. */
TAVO_API int32_t StringWCaseCompare(const wchar_t* first, const wchar_t* second) TAVO_NOEXCEPT;

/* The same for at most count characters; 0 when those are equal. */
TAVO_API int32_t StringWNCaseCompare(const wchar_t* first, const wchar_t* second,
                                     uint32_t count) TAVO_NOEXCEPT;

/* ---- lists, delimiters and names -------------------------------------------------------------*/

#define TAVO_ELEMENT_LAST (-1)      /* delivered; the text ended with it */
#define TAVO_ELEMENT_NONE (-2)      /* only blanks were left */
#define TAVO_ELEMENT_MALFORMED (-3) /* a misplaced quote, or an invalid argument */

/* Reads one element of a list.
 * text: the list; start: where to begin, in characters, at most the length of the text; separator:
 * ends an element outside quotes.
 * out: the element, terminated; must have space for the rest of the text and a terminator.
 * outLength: out, characters of the element, its quotes counted.
 * With -2 and -3 the element is empty and its length 0.
 * Blanks before an element are skipped; blanks after an unquoted element are dropped. A backslash
 * is dropped and escapes the next character. An element that begins with a quote keeps its quotes
 * and its case, and the text between its closing quote and the separator is skipped; any other
 * element is converted to uppercase. A quoted element that ends with the text, unclosed, loses its
 * trailing blanks and keeps its case.
 * Returns the position just after the separator, in characters, or one of the codes above. A null
 * text, out or outLength, or a negative start, is -3. */
TAVO_API int32_t TAVO_GetNextElement(const wchar_t* text, wchar_t* out, uint32_t* outLength,
                                     wchar_t separator, void* unused, int32_t start) TAVO_NOEXCEPT;

/* Removes every delimiter character from a text.
 * text: is split in the process, as by wcstok; work: receives the concatenated pieces, terminated,
 * and must be as large as the text; delimiters: a set of characters.
 * replaceFlag 1: the result is also copied back over the text and *length is set to its characters.
 * Any other flag: the text stays split, *length is unchanged, and only the work buffer has the
 * result.
 * Returns 0, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TrimSourceW(wchar_t* text, uint32_t* length, const wchar_t* delimiters,
                              wchar_t* work, int32_t replaceFlag) TAVO_NOEXCEPT;

/* Converts a column name to uppercase in place, unless it is quoted: it begins with a quote and has
 * a second one at an index below maxLength (characters). Always 0. */
TAVO_API uint32_t NormalizeColName(wchar_t* name, uint32_t maxLength) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_TEXT_H */
