// Numbers and dates to wide text, and wide text to numbers.
#include <charconv>
#include <cstring>

#include "common/platform_status.h"
#include "platform/platform.h"

using namespace tavo::platform;

namespace {

// Copies ASCII text to wide text with its terminator.
uint32_t deliver(const char* text, uint32_t chars, wchar_t* dst, uint32_t dst_bytes,
                 uint32_t* count) noexcept {
  if (chars >= dst_bytes / sizeof(wchar_t)) {
    if (dst_bytes >= sizeof(wchar_t)) dst[0] = L'\0';
    return kBufferTooSmall;
  }
  for (uint32_t i = 0; i < chars; ++i) {
    dst[i] = static_cast<wchar_t>(text[i]);
  }
  dst[chars] = L'\0';
  *count = chars;
  return kOk;
}

template <typename Number>
uint32_t write_number(const Number* number, wchar_t* dst, uint32_t dst_bytes,
                      uint32_t* count) noexcept {
  if (number == nullptr || dst == nullptr || count == nullptr) return kArgumentInvalid;
  char text[24];
  const auto result = std::to_chars(text, text + sizeof text, *number);
  return deliver(text, static_cast<uint32_t>(result.ptr - text), dst, dst_bytes, count);
}

// Reads an optional sign and digits up to the terminator; the limits are the largest magnitudes of
// a positive and of a negative number. No blanks, and nothing after the digits.
uint32_t read_number(const wchar_t* text, bool takes_minus, uint64_t largest,
                     uint64_t largest_minus, bool& negative, uint64_t& magnitude) noexcept {
  negative = *text == L'-';
  if (negative && !takes_minus) return kNotANumber;
  if (*text == L'-' || *text == L'+') ++text;
  if (*text == L'\0') return kNotANumber;
  const uint64_t limit = negative ? largest_minus : largest;
  bool too_large = false;
  magnitude = 0;
  for (; *text != L'\0'; ++text) {
    const uint32_t digit = static_cast<uint32_t>(*text) - uint32_t{L'0'};
    if (digit > 9) return kNotANumber;
    too_large |= __builtin_mul_overflow(magnitude, 10, &magnitude);
    too_large |= __builtin_add_overflow(magnitude, digit, &magnitude);
  }
  return too_large || magnitude > limit ? kNumberOutOfRange : kOk;
}

template <typename Signed>
uint32_t read_signed(const wchar_t* text, uint64_t largest, Signed* number) noexcept {
  if (text == nullptr || number == nullptr) return kArgumentInvalid;
  bool negative = false;
  uint64_t magnitude = 0;
  const uint32_t status = read_number(text, true, largest, largest + 1, negative, magnitude);
  if (status != kOk) return status;
  *number = static_cast<Signed>(static_cast<int64_t>(negative ? 0 - magnitude : magnitude));
  return kOk;
}

}  // namespace

TAVO_PLATFORM_API uint32_t TAVOCnvIntToWVarcharSz1(const int32_t* number, wchar_t* dst,
                                                   uint32_t dst_bytes, uint32_t* count) {
  return write_number(number, dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t* number, wchar_t* dst,
                                                   uint32_t dst_bytes, uint32_t* count) {
  return write_number(number, dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t* number, wchar_t* dst,
                                                       uint32_t dst_bytes, uint32_t* count) {
  return write_number(number, dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t* number, wchar_t* dst,
                                                        uint32_t dst_bytes, uint32_t* count) {
  return write_number(number, dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWVarcharSzToInt(const wchar_t* text, int32_t* number) {
  return read_signed(text, INT32_MAX, number);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t* text, int64_t* number) {
  return read_signed(text, INT64_MAX, number);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t* text, uint32_t* number) {
  if (text == nullptr || number == nullptr) return kArgumentInvalid;
  bool negative = false;
  uint64_t magnitude = 0;
  const uint32_t status = read_number(text, false, UINT32_MAX, 0, negative, magnitude);
  if (status == kOk) *number = static_cast<uint32_t>(magnitude);
  return status;
}
