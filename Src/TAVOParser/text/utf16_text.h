// A UTF-16 copy of wide text, followed by zeros.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "TAVOParser.h"
#include "TAVOText.h"

namespace tavo {

// Short texts need no allocation.
class Utf16Text {
 public:
  // Code units after the text that may be read; they are 0.
  static constexpr size_t kZeros = 16;

  Utf16Text() = default;
  Utf16Text(const Utf16Text&) = delete;
  Utf16Text& operator=(const Utf16Text&) = delete;
  ~Utf16Text() {
    if (units_ != short_) std::free(units_);
  }

  // Returns 0, TAVO_STATUS_NO_MEMORY_FOR_TEXT or TAVO_STATUS_TEXT_NOT_CONVERTIBLE.
  uint32_t convert(const wchar_t* text, uint32_t characters) {
    constexpr uint32_t kLongest = INT32_MAX / sizeof(wchar_t);  // lengths in bytes have 32 bits
    if (characters > kLongest) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
    // A character above U+FFFF needs two units; most texts have none.
    size_t room = kShort;
    if (characters >= kShort / 2) {
      room = size_t{characters} + count_above_bmp(text, characters) + 1;
      if (room > kShort) {
        units_ = static_cast<uint16_t*>(std::malloc((room + kZeros) * sizeof(uint16_t)));
      }
      if (units_ == nullptr) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
    }
    converter_code_ =
        TAVO_Utf32ToUtf16(text, static_cast<int32_t>(characters * sizeof(wchar_t)), units_,
                          static_cast<uint32_t>(room * sizeof(uint16_t)), &count_);
    if (converter_code_ != 0) return TAVO_STATUS_TEXT_NOT_CONVERTIBLE;
    std::memset(units_ + count_, 0, kZeros * sizeof(uint16_t));
    return 0;
  }

  uint16_t* units() {
    return units_;
  }
  uint32_t count() const {
    return count_;
  }
  // The converter's code after TAVO_STATUS_TEXT_NOT_CONVERTIBLE.
  uint32_t converter_code() const {
    return converter_code_;
  }

 private:
  static constexpr size_t kShort = 512;

  static size_t count_above_bmp(const wchar_t* text, uint32_t characters) {
    size_t count = 0;
    for (uint32_t i = 0; i < characters; ++i) count += static_cast<uint32_t>(text[i]) > 0xFFFF;
    return count;
  }

  uint16_t short_[kShort + kZeros];
  uint16_t* units_ = short_;
  uint32_t count_ = 0;
  uint32_t converter_code_ = 0;
};

}  // namespace tavo
