// The data conversion of the demonstration platform: UTF-8, ISO 8859-1 and -15, and Windows 1252.
// Nothing is substituted: text that cannot be converted is refused.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "demo_status.h"
#include "platform/platform.h"

namespace {

constexpr uint32_t kNone = 0xFFFFFFFF;  // no character

bool is_surrogate(uint32_t c) {
  return c >= 0xD800 && c < 0xE000;
}
bool is_character(uint32_t c) {
  return c <= 0x10FFFF && !is_surrogate(c);
}

// ---- 8-bit text, character by character --------------------------------------------------------

enum class Page { kUtf8, kLatin1, kLatin9, kWindows1252, kUnknown };

Page page_of(const void* descriptor) {
  if (descriptor == nullptr) return Page::kUtf8;
  const auto& given = *static_cast<const ConversionDescriptor*>(descriptor);
  if (given.code_page == 0) return Page::kUtf8;
  if (given.kind > 2) return Page::kUnknown;
  switch (given.code_page) {
    case 1208:
    case 65001: return Page::kUtf8;
    case 819:
    case 28591: return Page::kLatin1;
    case 923:
    case 28605: return Page::kLatin9;
    case 1252: return Page::kWindows1252;
    default: return Page::kUnknown;
  }
}

// The character of a byte in a single-byte code page.
uint32_t character_of(Page page, uint8_t byte) {
  constexpr uint16_t kOf1252[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                  0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
  if (page == Page::kWindows1252 && byte >= 0x80 && byte < 0xA0) {
    const uint16_t c = kOf1252[byte - 0x80];
    return c == 0 ? kNone : c;
  }
  if (page != Page::kLatin9) return byte;
  switch (byte) {
    case 0xA4: return 0x20AC;
    case 0xA6: return 0x0160;
    case 0xA8: return 0x0161;
    case 0xB4: return 0x017D;
    case 0xB8: return 0x017E;
    case 0xBC: return 0x0152;
    case 0xBD: return 0x0153;
    case 0xBE: return 0x0178;
    default: return byte;
  }
}

// Reads a character and advances past it.
uint32_t read_utf8(const char*& at, const char* end) {
  constexpr uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  const auto lead = static_cast<uint8_t>(*at++);
  if (lead < 0x80) return lead;
  const int tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC0 || lead >= 0xF8 || end - at < tails) return kNone;
  uint32_t c = lead & (0x3FU >> tails);
  for (int i = 0; i < tails; ++i, ++at) {
    if ((*at & 0xC0) != 0x80) return kNone;
    c = (c << 6) | (static_cast<uint8_t>(*at) & 0x3FU);
  }
  return c < kSmallest[tails] || !is_character(c) ? kNone : c;
}

// Writes a character. Returns the bytes written, 0 when there is no space or no such character.
uint32_t write_utf8(uint32_t c, char* dst, uint32_t room) {
  const uint32_t bytes = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  if (!is_character(c) || room < bytes) return 0;
  if (bytes == 1) {
    *dst = static_cast<char>(c);
    return 1;
  }
  for (uint32_t i = bytes - 1; i > 0; --i, c >>= 6) dst[i] = static_cast<char>(0x80 | (c & 0x3F));
  *dst = static_cast<char>((0xF00U >> bytes) | c);
  return bytes;
}

uint32_t write_character(Page page, uint32_t c, char* dst, uint32_t room) {
  if (page == Page::kUtf8) return write_utf8(c, dst, room);
  for (uint32_t byte = 0; byte < 0x100 && room != 0; ++byte) {
    if (character_of(page, static_cast<uint8_t>(byte)) != c) continue;
    *dst = static_cast<char>(byte);
    return 1;
  }
  return 0;
}

// ---- complete texts ----------------------------------------------------------------------------

// Terminated when there is space, and empty after a failure.
template <typename Unit>
uint32_t finish(bool good, Unit* dst, uint32_t room, uint32_t written, uint32_t* count) {
  if (!good) written = 0;
  if (written < room) dst[written] = 0;
  if (!good) return kRefused;
  *count = written;
  return 0;
}

constexpr uint32_t kWide = sizeof(wchar_t);

uint32_t from_bytes(const char* text, int64_t bytes, wchar_t* dst, uint32_t dst_bytes,
                    uint32_t* count, const void* descriptor) {
  const Page page = page_of(descriptor);
  const uint32_t room = dst_bytes / kWide;
  bool good = bytes >= 0 && room != 0 && page != Page::kUnknown;
  uint32_t written = 0;
  for (const char *at = text, *end = text + (good ? bytes : 0); good && at != end;) {
    const uint32_t c =
        page == Page::kUtf8 ? read_utf8(at, end) : character_of(page, static_cast<uint8_t>(*at++));
    good = c != kNone && written + 1 < room;
    if (good) dst[written++] = static_cast<wchar_t>(c);
  }
  return finish(good, dst, room, written, count);
}

// text need not be aligned.
uint32_t from_wide(const char* text, int64_t bytes, wchar_t* dst, uint32_t dst_bytes,
                   uint32_t* count) {
  const uint32_t room = dst_bytes / kWide;
  bool good = bytes >= 0 && bytes % kWide == 0 && bytes / kWide < room;
  uint32_t written = 0;
  for (; good && written < bytes / kWide; ++written) {
    uint32_t c = 0;
    std::memcpy(&c, text + written * kWide, sizeof c);
    dst[written] = static_cast<wchar_t>(c);
    good = is_character(c);
  }
  return finish(good, dst, room, written, count);
}

uint16_t length_before(const void* prefixed) {
  uint16_t length = 0;
  std::memcpy(&length, prefixed, sizeof length);
  return length;
}
const char* text_after(const void* prefixed) {
  return static_cast<const char*>(prefixed) + sizeof(uint16_t);
}

// ---- numbers -----------------------------------------------------------------------------------

uint32_t print(long long number, wchar_t* dst, uint32_t dst_bytes, uint32_t* count) {
  const uint32_t room = dst_bytes / kWide;
  const int chars = std::swprintf(dst, room, L"%lld", number);
  return finish(chars >= 0, dst, room, static_cast<uint32_t>(chars), count);
}

template <typename Number>
uint32_t scan(const wchar_t* text, long long low, long long high, Number* number) {
  const wchar_t* digits = text + (*text == L'+' || (*text == L'-' && low < 0) ? 1 : 0);
  if (*digits == L'\0' || digits[std::wcsspn(digits, L"0123456789")] != L'\0') return kRefused;
  const int caller_errno = errno;
  errno = 0;
  const long long read = std::wcstoll(text, nullptr, 10);
  const bool good = errno == 0 && read >= low && read <= high;
  errno = caller_errno;
  if (!good) return kRefused;
  *number = static_cast<Number>(read);
  return 0;
}

}  // namespace

extern "C" {

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
uint32_t TAVOCnvVarcharToWVarcharSz(const void* prefixed, int32_t*, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  return from_bytes(text_after(prefixed), length_before(prefixed), dst, dst_bytes, count,
                    descriptor);
}
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t*, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count, const void* descriptor) {
  return from_bytes(text, static_cast<int64_t>(std::strlen(text)), dst, dst_bytes, count,
                    descriptor);
}
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count) {
  return from_wide(reinterpret_cast<const char*>(text), *length_bytes, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* prefixed, int32_t*, wchar_t* dst,
                                     uint32_t dst_bytes, uint32_t* count) {
  return from_wide(text_after(prefixed), length_before(prefixed), dst, dst_bytes, count);
}

uint32_t TAVOCnvIntToWVarcharSz1(const int32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  return print(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  return print(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count) {
  return print(*number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count) {
  return print(*number, dst, dst_bytes, count);
}

uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count) {
  const uint32_t room = dst_bytes / kWide;
  const auto field = [value](size_t i) {
    uint16_t number = 0;
    std::memcpy(&number, static_cast<const char*>(value) + i * sizeof number, sizeof number);
    return int{number};
  };
  int chars = -1;
  if (data_type == 14) {
    chars = std::swprintf(dst, room, L"%04d-%02d-%02d", field(0), field(1), field(2));
  } else if (data_type == 15) {
    chars = std::swprintf(dst, room, L"%02d:%02d:%02d", field(0), field(1), field(2));
  } else if (data_type == 16) {
    uint32_t fraction = 0;
    std::memcpy(&fraction, static_cast<const char*>(value) + 12, sizeof fraction);
    chars = std::swprintf(dst, room, L"%04d-%02d-%02d %02d:%02d:%02d.%09u", field(0), field(1),
                          field(2), field(3), field(4), field(5), fraction);
  }
  return finish(chars >= 0, dst, room, static_cast<uint32_t>(chars), count);
}

uint32_t TAVOCnvWVarcharSzToInt(const wchar_t* text, int32_t* number) {
  return scan(text, INT32_MIN, INT32_MAX, number);
}
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t* text, int64_t* number) {
  return scan(text, INT64_MIN, INT64_MAX, number);
}
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t* text, uint32_t* number) {
  return scan(text, 0, UINT32_MAX, number);
}

uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  const Page page = page_of(descriptor);
  bool good = dst_bytes != 0 && page != Page::kUnknown &&
              (length == nullptr || (*length >= 0 && *length % int{kWide} == 0));
  const size_t most = length == nullptr || !good ? SIZE_MAX : static_cast<size_t>(*length) / kWide;
  uint32_t written = 0;
  for (size_t i = 0; good && i < most && text[i] != L'\0'; ++i) {
    const uint32_t bytes = write_character(page, static_cast<uint32_t>(text[i]), dst + written,
                                           dst_bytes - 1 - written);
    good = bytes != 0;
    written += bytes;
  }
  return finish(good, dst, dst_bytes, written, count);
}

uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  bool good = src_units >= 0;
  uint32_t written = 0;
  for (int32_t i = 0; good && i < src_units; ++i) {
    const uint32_t c = src[i];
    const uint32_t units = c < 0x10000 ? 1 : 2;
    good = is_character(c) && dst_units - written >= units;
    if (!good) break;
    if (units == 1) {
      dst[written++] = static_cast<uint16_t>(c);
    } else {
      dst[written++] = static_cast<uint16_t>(0xD7C0 + (c >> 10));
      dst[written++] = static_cast<uint16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  return finish(good, dst, dst_units, written, count);
}

namespace {

// Reads a character of UTF-16 and advances past it.
uint32_t read_utf16(const uint16_t*& at, const uint16_t* end) {
  const uint32_t high = *at++;
  if (!is_surrogate(high)) return high;
  if (high >= 0xDC00 || at == end || (*at & 0xFC00) != 0xDC00) return kNone;
  return 0x10000 + ((high - 0xD800) << 10) + (*at++ - 0xDC00U);
}

}  // namespace

uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  bool good = true;
  uint32_t written = 0;
  for (const uint16_t* end = src + src_units; good && src != end;) {
    const uint32_t c = read_utf16(src, end);
    good = c != kNone && written < dst_units;
    if (good) dst[written++] = c;
  }
  return finish(good, dst, dst_units, written, count);
}
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced) {
  bool good = true;
  uint32_t written = 0;
  for (const uint16_t* end = src + src_units; good && src != end;) {
    const uint32_t bytes = write_utf8(read_utf16(src, end), dst + written, dst_size - written);
    good = bytes != 0;
    written += bytes;
  }
  return finish(good, dst, dst_size, written, produced);
}

}  // extern "C"
