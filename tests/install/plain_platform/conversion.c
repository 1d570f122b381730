/* Data conversion of a platform written in C: UTF-8, and ISO 8859-1 as the one page of one byte a
 * character. Nothing is substituted: what cannot be converted is refused. */
#include <TAVOPlatform.h>
#include <errno.h>
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kRefused = 9001 };
#define NONE 0xFFFFFFFFu /* no character */

static bool is_character(uint32_t c) {
  return c <= 0x10FFFF && (c & 0xFFFFF800u) != 0xD800;
}

typedef enum Page { kUtf8, kLatin1, kUnknown } Page;

static Page page_of(const void* descriptor) {
  const ConversionDescriptor* given = descriptor;
  if (given == NULL || given->code_page == 0) return kUtf8;
  if (given->kind > 2) return kUnknown;
  if (given->code_page == 1208 || given->code_page == 65001) return kUtf8;
  return given->code_page == 819 || given->code_page == 28591 ? kLatin1 : kUnknown;
}

/* ---- characters -------------------------------------------------------------------------------*/

/* Each reads or writes one character and moves on past it; NONE or false is a refusal. */

static uint32_t read_utf8(const unsigned char** at, const unsigned char* end) {
  static const uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  const uint32_t lead = *(*at)++;
  if (lead < 0x80) return lead;
  const int tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC0 || lead >= 0xF8 || end - *at < tails) return NONE;
  uint32_t c = lead & (0x3Fu >> tails);
  for (int i = 0; i < tails; ++i, ++*at) {
    if ((**at & 0xC0) != 0x80) return NONE;
    c = c << 6 | (**at & 0x3Fu);
  }
  return c < smallest[tails] || !is_character(c) ? NONE : c;
}

static bool write_utf8(uint32_t c, char** at, const char* end) {
  const int bytes = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  if (!is_character(c) || end - *at < bytes) return false;
  for (int i = bytes - 1; i > 0; --i, c >>= 6) (*at)[i] = (char)(0x80 | (c & 0x3F));
  **at = (char)(bytes == 1 ? c : (0xF00u >> bytes & 0xFF) | c);
  *at += bytes;
  return true;
}

static uint32_t read_utf16(const uint16_t** at, const uint16_t* end) {
  const uint32_t high = *(*at)++;
  if ((high & 0xF800) != 0xD800) return high;
  if (high >= 0xDC00 || *at == end || (**at & 0xFC00) != 0xDC00) return NONE;
  return 0x10000 + ((high - 0xD800) << 10) + (*(*at)++ - 0xDC00u);
}

/* ---- texts ------------------------------------------------------------------------------------*/

static uint32_t finish_wide(bool good, wchar_t* dst, size_t room, size_t written, uint32_t* count) {
  if (room != 0) dst[good ? written : 0] = L'\0';
  if (!good) return kRefused;
  *count = (uint32_t)written;
  return 0;
}

static uint32_t from_bytes(const void* text, int64_t bytes, wchar_t* dst, uint32_t dst_bytes,
                           uint32_t* count, const void* descriptor) {
  const Page page = page_of(descriptor);
  const size_t room = dst_bytes / sizeof *dst;
  bool good = bytes >= 0 && room != 0 && page != kUnknown;
  const unsigned char* at = text;
  const unsigned char* end = at + (good ? bytes : 0);
  size_t written = 0;
  while (good && at != end) {
    const uint32_t c = page == kUtf8 ? read_utf8(&at, end) : *at++;
    good = c != NONE && written + 1 < room;
    if (good) dst[written++] = (wchar_t)c;
  }
  return finish_wide(good, dst, room, written, count);
}

/* The text need not be aligned. */
static uint32_t from_wide(const void* text, int64_t bytes, wchar_t* dst, uint32_t dst_bytes,
                          uint32_t* count) {
  const size_t room = dst_bytes / sizeof *dst;
  bool good = bytes >= 0 && bytes % 4 == 0 && (size_t)bytes / 4 < room;
  size_t written = 0;
  for (; good && written < (size_t)bytes / 4; ++written) {
    uint32_t c;
    memcpy(&c, (const char*)text + written * 4, sizeof c);
    dst[written] = (wchar_t)c;
    good = is_character(c);
  }
  return finish_wide(good, dst, room, written, count);
}

static uint16_t length_before(const void* prefixed) {
  uint16_t length;
  memcpy(&length, prefixed, sizeof length);
  return length;
}
static const void* text_behind(const void* prefixed) {
  return (const char*)prefixed + 2;
}

uint32_t TAVOInitDataConversion(void) {
  return 0;
}
uint32_t TAVOTermDataConversion(void) {
  return 0;
}

uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                 uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  return from_bytes(text, *length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvVarcharToWVarcharSz(const void* prefixed, int32_t* length, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  (void)length;
  return from_bytes(text_behind(prefixed), length_before(prefixed), dst, dst_bytes, count,
                    descriptor);
}
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  (void)length;
  return from_bytes(text, (int64_t)strlen(text), dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count) {
  return from_wide(text, *length_bytes, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* prefixed, int32_t* length_bytes, wchar_t* dst,
                                     uint32_t dst_bytes, uint32_t* count) {
  (void)length_bytes;
  return from_wide(text_behind(prefixed), length_before(prefixed), dst, dst_bytes, count);
}

uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  const Page page = page_of(descriptor);
  bool good =
      dst_bytes != 0 && page != kUnknown && (length == NULL || (*length >= 0 && *length % 4 == 0));
  const size_t most = length == NULL || !good ? SIZE_MAX : (size_t)*length / 4;
  char* at = dst;
  const char* end = dst + dst_bytes - (good ? 1 : 0);
  for (size_t i = 0; good && i < most && text[i] != L'\0'; ++i) {
    if (page == kUtf8) {
      good = write_utf8((uint32_t)text[i], &at, end);
    } else {
      good = (uint32_t)text[i] < 0x100 && at != end;
      if (good) *at++ = (char)text[i];
    }
  }
  if (dst_bytes != 0) *(good ? at : dst) = '\0';
  if (!good) return kRefused;
  *count = (uint32_t)(at - dst);
  return 0;
}

uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  bool good = src_units >= 0;
  uint32_t written = 0;
  for (int32_t i = 0; good && i < src_units; ++i) {
    const uint32_t c = src[i];
    good = is_character(c) && dst_units - written >= (c < 0x10000 ? 1u : 2u);
    if (!good) break;
    if (c >= 0x10000) dst[written++] = (uint16_t)(0xD7C0 + (c >> 10));
    dst[written++] = (uint16_t)(c < 0x10000 ? c : 0xDC00 + (c & 0x3FF));
  }
  if (!good) written = 0;
  if (written < dst_units) dst[written] = 0;
  if (!good) return kRefused;
  *count = written;
  return 0;
}

uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  const uint16_t* end = src + src_units;
  bool good = true;
  uint32_t written = 0;
  while (good && src != end) {
    const uint32_t c = read_utf16(&src, end);
    good = c != NONE && written < dst_units;
    if (good) dst[written++] = c;
  }
  if (!good) written = 0;
  if (written < dst_units) dst[written] = 0;
  if (!good) return kRefused;
  *count = written;
  return 0;
}

uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced) {
  const uint16_t* end = src + src_units;
  char* at = dst;
  bool good = true;
  while (good && src != end) good = write_utf8(read_utf16(&src, end), &at, dst + dst_size);
  if (!good) at = dst;
  if (at != dst + dst_size) *at = '\0';
  if (!good) return kRefused;
  *produced = (uint32_t)(at - dst);
  return 0;
}

/* ---- numbers and times ------------------------------------------------------------------------*/

static uint32_t print_number(int64_t number, wchar_t* dst, uint32_t dst_bytes, uint32_t* count) {
  const size_t room = dst_bytes / sizeof *dst;
  const int characters = swprintf(dst, room, L"%" PRId64, number);
  return finish_wide(characters >= 0, dst, room, characters < 0 ? 0 : (size_t)characters, count);
}

uint32_t TAVOCnvIntToWVarcharSz1(const int32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  return print_number(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  return print_number(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count) {
  return print_number(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count) {
  return print_number(*number, dst, dst_bytes, count);
}

uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count) {
  const size_t room = dst_bytes / sizeof *dst;
  uint16_t f[6] = {0};
  uint32_t fraction = 0;
  int characters = -1;
  memcpy(f, value, data_type == 16 ? 12 : 6);
  if (data_type == 16) memcpy(&fraction, (const char*)value + 12, sizeof fraction);
  if (data_type == 14) characters = swprintf(dst, room, L"%04d-%02d-%02d", f[0], f[1], f[2]);
  if (data_type == 15) characters = swprintf(dst, room, L"%02d:%02d:%02d", f[0], f[1], f[2]);
  if (data_type == 16) {
    characters = swprintf(dst, room, L"%04d-%02d-%02d %02d:%02d:%02d.%09u", f[0], f[1], f[2], f[3],
                          f[4], f[5], fraction);
  }
  return finish_wide(characters >= 0, dst, room, characters < 0 ? 0 : (size_t)characters, count);
}

static bool read_number(const wchar_t* text, int64_t low, int64_t high, int64_t* number) {
  const wchar_t* digits = text + (*text == L'+' || (*text == L'-' && low < 0) ? 1 : 0);
  if (*digits == L'\0' || digits[wcsspn(digits, L"0123456789")] != L'\0') return false;
  const int before = errno;
  errno = 0;
  const int64_t read = wcstoll(text, NULL, 10);
  const bool good = errno == 0 && read >= low && read <= high;
  errno = before;
  if (good) *number = read;
  return good;
}

uint32_t TAVOCnvWVarcharSzToInt(const wchar_t* text, int32_t* number) {
  int64_t read;
  if (!read_number(text, INT32_MIN, INT32_MAX, &read)) return kRefused;
  *number = (int32_t)read;
  return 0;
}
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t* text, int64_t* number) {
  int64_t read;
  if (!read_number(text, INT64_MIN, INT64_MAX, &read)) return kRefused;
  *number = read;
  return 0;
}
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t* text, uint32_t* number) {
  int64_t read;
  if (!read_number(text, 0, UINT32_MAX, &read)) return kRefused;
  *number = (uint32_t)read;
  return 0;
}
