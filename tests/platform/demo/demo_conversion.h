// The data conversion of the demonstration platform: UTF-8 whatever the code page, its decoder
// checked no further than the length of each sequence.
#include <cstdio>

namespace {

uint32_t decode(const char* text, size_t bytes, wchar_t* dst, uint32_t dst_bytes, uint32_t* count) {
  uint32_t chars = 0;
  for (size_t i = 0; i < bytes; ++chars) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    const int tails = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    uint32_t c = tails == 0 ? lead : lead & (0x3FU >> tails);
    for (int k = 0; k < tails; ++k) {
      if (i == bytes || (text[i] & 0xC0) != 0x80) return kRefused;
      c = (c << 6) | (static_cast<unsigned char>(text[i++]) & 0x3FU);
    }
    if ((chars + 1) * sizeof(wchar_t) >= dst_bytes) return kRefused;
    dst[chars] = static_cast<wchar_t>(c);
  }
  if (dst_bytes < sizeof(wchar_t)) return kRefused;
  dst[chars] = L'\0';
  *count = chars;
  return 0;
}

uint32_t encode(uint32_t c, char* dst, uint32_t room) {
  const uint32_t bytes = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  if (room < bytes) return 0;
  if (bytes == 1) {
    dst[0] = static_cast<char>(c);
    return 1;
  }
  for (uint32_t k = bytes - 1; k > 0; --k, c >>= 6) {
    dst[k] = static_cast<char>(0x80 | (c & 0x3F));
  }
  dst[0] = static_cast<char>((0xF00U >> bytes) | c);
  return bytes;
}

uint32_t copy_wide(const char* text, uint32_t bytes, wchar_t* dst, uint32_t dst_bytes,
                   uint32_t* count) {
  if (bytes + sizeof(wchar_t) > dst_bytes) return kRefused;
  std::memcpy(dst, text, bytes);
  *count = bytes / static_cast<uint32_t>(sizeof(wchar_t));
  dst[*count] = L'\0';
  return 0;
}

uint32_t print(long long number, wchar_t* dst, uint32_t dst_bytes, uint32_t* count) {
  const int chars = std::swprintf(dst, dst_bytes / sizeof(wchar_t), L"%lld", number);
  if (chars < 0) return kRefused;
  *count = static_cast<uint32_t>(chars);
  return 0;
}

uint32_t scan(const wchar_t* text, long long low, long long high, long long& number) {
  const wchar_t* digits = text + (*text == L'-' || *text == L'+' ? 1 : 0);
  if (*digits == L'\0' || std::wcsspn(digits, L"0123456789") != std::wcslen(digits))
    return kRefused;
  if (std::wcslen(digits) > 18) return kRefused;
  number = std::wcstoll(text, nullptr, 10);
  return number < low || number > high ? kRefused : 0;
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
                                 uint32_t dst_bytes, uint32_t* count, const void*) {
  return decode(text, static_cast<size_t>(*length), dst, dst_bytes, count);
}
uint32_t TAVOCnvVarcharToWVarcharSz(const void* prefixed, int32_t*, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void*) {
  uint16_t length = 0;
  std::memcpy(&length, prefixed, sizeof length);
  return decode(static_cast<const char*>(prefixed) + 2, length, dst, dst_bytes, count);
}
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t*, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count, const void*) {
  return decode(text, std::strlen(text), dst, dst_bytes, count);
}
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count) {
  return copy_wide(reinterpret_cast<const char*>(text), static_cast<uint32_t>(*length_bytes), dst,
                   dst_bytes, count);
}
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* prefixed, int32_t*, wchar_t* dst,
                                     uint32_t dst_bytes, uint32_t* count) {
  uint16_t length = 0;
  std::memcpy(&length, prefixed, sizeof length);
  return copy_wide(static_cast<const char*>(prefixed) + 2, length, dst, dst_bytes, count);
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
uint32_t TAVOGetStringFromTS(const void*, int16_t, wchar_t*, uint32_t, uint32_t*) {
  return kRefused;
}
uint32_t TAVOCnvWVarcharSzToInt(const wchar_t* text, int32_t* number) {
  long long read = 0;
  const uint32_t status = scan(text, INT32_MIN, INT32_MAX, read);
  if (status == 0) *number = static_cast<int32_t>(read);
  return status;
}
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t* text, int64_t* number) {
  long long read = 0;
  const uint32_t status = scan(text, INT64_MIN, INT64_MAX, read);
  if (status == 0) *number = read;
  return status;
}
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t* text, uint32_t* number) {
  long long read = 0;
  const uint32_t status = *text == L'-' ? kRefused : scan(text, 0, UINT32_MAX, read);
  if (status == 0) *number = static_cast<uint32_t>(read);
  return status;
}
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void*) {
  const size_t chars = length == nullptr
                           ? std::wcslen(text)
                           : wcsnlen(text, static_cast<size_t>(*length) / sizeof(wchar_t));
  uint32_t written = 0;
  for (size_t i = 0; i < chars; ++i) {
    const uint32_t bytes =
        encode(static_cast<uint32_t>(text[i]), dst + written, dst_bytes - written);
    if (bytes == 0) return kRefused;
    written += bytes;
  }
  if (written == dst_bytes) return kRefused;
  dst[written] = '\0';
  *count = written;
  return 0;
}
uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  uint32_t written = 0;
  for (int32_t i = 0; i < src_units; ++i) {
    const uint32_t c = src[i];
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return kRefused;
    if (dst_units - written < (c < 0x10000 ? 1U : 2U)) return kRefused;
    if (c < 0x10000) {
      dst[written++] = static_cast<uint16_t>(c);
    } else {
      dst[written++] = static_cast<uint16_t>(0xD7C0 + (c >> 10));
      dst[written++] = static_cast<uint16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  if (written < dst_units) dst[written] = 0;
  *count = written;
  return 0;
}
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  uint32_t written = 0;
  for (uint32_t i = 0; i < src_units; ++i) {
    uint32_t c = src[i];
    if (c >= 0xD800 && c < 0xE000) {
      if (c >= 0xDC00 || i + 1 == src_units || (src[i + 1] & 0xFC00) != 0xDC00) return kRefused;
      c = 0x10000 + ((c - 0xD800) << 10) + (src[++i] - 0xDC00U);
    }
    if (written == dst_units) return kRefused;
    dst[written++] = c;
  }
  if (written < dst_units) dst[written] = 0;
  *count = written;
  return 0;
}
// Characters of the first plane only.
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced) {
  uint32_t written = 0;
  for (uint32_t i = 0; i < src_units; ++i) {
    const bool surrogate = src[i] >= 0xD800 && src[i] < 0xE000;
    const uint32_t bytes = surrogate ? 0 : encode(src[i], dst + written, dst_size - written);
    if (bytes == 0) return kRefused;
    written += bytes;
  }
  if (written < dst_size) dst[written] = '\0';
  *produced = written;
  return 0;
}

}  // extern "C"
