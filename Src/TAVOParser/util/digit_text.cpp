// Fixed-width decimal digit fields: writers and readers.
#include <type_traits>

#include "TAVONumericText.h"
#include "util/util_common.h"

namespace {

constexpr uint32_t kBase = 10;
constexpr int32_t kMaxBlanks = 256;

enum class Terminator { kNone, kWritten };

template <typename Char>
constexpr Char digit_character(uint64_t digit) {
  return static_cast<Char>(static_cast<Char>('0') + static_cast<Char>(digit));
}

template <typename Char>
uint32_t write_digits(int64_t value, int16_t width, Char* out, Terminator terminator) {
  if (out == nullptr || width < 0) return tavo::kFailed;
  // Unsigned, so that the smallest integer has a magnitude.
  uint64_t rest = value < 0 ? 0u - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  for (int32_t i = width - 1; i >= 0; --i) {
    out[i] = digit_character<Char>(rest % kBase);
    rest /= kBase;
  }
  if (terminator == Terminator::kWritten) out[width] = Char{};
  return rest == 0 ? 0 : tavo::kFailed;
}

template <typename Char>
bool is_digit(Char character) {
  return character >= static_cast<Char>('0') && character <= static_cast<Char>('9');
}

template <typename Char>
bool all_blank(const Char* text, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    if (text[i] != static_cast<Char>(' ')) return false;
  }
  return true;
}

template <typename Char, typename Value>
uint32_t read_digits(const Char* text, int16_t digits, int16_t field, Value* result) {
  static_assert(std::is_unsigned_v<Value>, "the value wraps");
  if (text == nullptr || result == nullptr || digits < 0) return tavo::kFailed;
  Value value = 0;
  for (int32_t i = 0; i < digits; ++i) {
    if (!is_digit(text[i])) return tavo::kFailed;
    value = value * kBase + static_cast<Value>(text[i] - static_cast<Char>('0'));
  }
  const int32_t trailing = field - digits;
  if (trailing > kMaxBlanks || !all_blank(text + digits, trailing)) return tavo::kFailed;
  *result = value;
  return 0;
}

}  // namespace

extern "C" {

// Deliberate: no terminator here, while the three functions below write one; callers give a buffer
// without space for it.
uint32_t PXLongToNum(int64_t value, int16_t width, char* out) noexcept {
  return write_digits(value, width, out, Terminator::kNone);
}

uint32_t PXLongToNumW(int64_t value, int16_t width, wchar_t* out) noexcept {
  return write_digits(value, width, out, Terminator::kWritten);
}

uint32_t PXIntToNum(int32_t value, int16_t width, char* out) noexcept {
  return write_digits(value, width, out, Terminator::kWritten);
}

uint32_t PXIntToNumW(int32_t value, int16_t width, wchar_t* out) noexcept {
  return write_digits(value, width, out, Terminator::kWritten);
}

uint32_t PXNumToLong(const char* text, int16_t digits, int16_t field, uint64_t* result) noexcept {
  return read_digits(text, digits, field, result);
}

uint32_t PXNumToLongW(const wchar_t* text, int16_t digits, int16_t field,
                      uint64_t* result) noexcept {
  return read_digits(text, digits, field, result);
}

uint32_t TAVOCharNumToInt(const char* text, int16_t digits, int16_t field,
                          uint32_t* result) noexcept {
  return read_digits(text, digits, field, result);
}

}  // extern "C"
