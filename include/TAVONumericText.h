/*
 * Digit fields and permutations: fixed-width decimal digits, keyed scrambling of a short digit
 * string, and a permutation of 1 to n selected by a seed. Compiles as C11 and as C++20.
 *
 * Names that end in W work on wide text, the others on 8-bit text; all counts are in characters.
 * Every function returns 0, or 0xFFFFFFFF for failure (null arguments included), unless it says
 * otherwise; none records an error, keeps state or allocates memory, and all may be called from any
 * thread.
 */
#ifndef TAVO_NUMERIC_TEXT_H
#define TAVO_NUMERIC_TEXT_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* 256 blanks and a terminator. */
TAVO_API extern const char PXSpaces[257];
TAVO_API extern const wchar_t PXSpacesW[257];

/* Write the magnitude of a value as `width` digits with leading zeros.
 * out: space for width characters and, except for PXLongToNum, which writes none, a terminator.
 * Fail when the value has more digits than the width, with the low-order digits written, and for a
 * negative width, with nothing written. No sign is ever written. */
TAVO_API uint32_t PXLongToNum(int64_t value, int16_t width, char* out) TAVO_NOEXCEPT;
TAVO_API uint32_t PXLongToNumW(int64_t value, int16_t width, wchar_t* out) TAVO_NOEXCEPT;
TAVO_API uint32_t PXIntToNum(int32_t value, int16_t width, char* out) TAVO_NOEXCEPT;
TAVO_API uint32_t PXIntToNumW(int32_t value, int16_t width, wchar_t* out) TAVO_NOEXCEPT;

/* Read exactly `digits` digits; the rest of a field of `field` characters must be blanks, at most
 * 256 of them. A count of 0 reads 0. The value wraps at 64 or 32 bits.
 * result: out; untouched on failure (a character that is not a digit, a rest that is not blank,
 * more than 256 blanks, a negative count). */
TAVO_API uint32_t PXNumToLong(const char* text, int16_t digits, int16_t field,
                              uint64_t* result) TAVO_NOEXCEPT;
TAVO_API uint32_t PXNumToLongW(const wchar_t* text, int16_t digits, int16_t field,
                               uint64_t* result) TAVO_NOEXCEPT;
TAVO_API uint32_t TAVOCharNumToInt(const char* text, int16_t digits, int16_t field,
                                   uint32_t* result) TAVO_NOEXCEPT;

/* Scramble up to 12 digits: add shift + i to digit i, modulo 10 (nothing is added for a shift of
 * 0; a pass whose digits add up to 0 is repeated), then permute each group of four by row key
 * modulo 23 of a table.
 * dst: receives `length` characters, no terminator; may be src. Where a length is not a multiple of
 * 4 and the table points past the digits, dst receives a terminator.
 * Fail with nothing written for a length above 12 or below 0, and when every pass would add up to
 * 0. */
TAVO_API uint32_t PXTransposeNum(const char* src, char* dst, int16_t length, uint64_t key,
                                 int32_t shift) TAVO_NOEXCEPT;
TAVO_API uint32_t PXTransposeNumW(const wchar_t* src, wchar_t* dst, int16_t length, uint64_t key,
                                  int32_t shift) TAVO_NOEXCEPT;

/* Writes the permutation of 1 to n that a seed selects: from the shrinking list of 1 to n, step i
 * removes the element at seed modulo (n - i).
 * n: 1 to 16; out: n entries.
 * Returns the last entry written, not 0; 0xFFFFFFFF for a negative seed, n of 0 or above 16 or
 * null, with nothing written. */
TAVO_API uint32_t PXGetPermutation(int32_t seed, uint32_t n, uint16_t* out) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_NUMERIC_TEXT_H */
