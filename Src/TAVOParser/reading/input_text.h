// The input of a read function, in any encoding, and its conversion into the forms that a pass
// works on.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavo {

// Text in the caller's memory.
struct InputText {
  const void* text = nullptr;
  size_t count = 0;       // units: bytes, wide characters or UTF-16 units
  uint32_t encoding = 0;  // TAVO_TEXT_UTF8, TAVO_TEXT_WIDE or TAVO_TEXT_UTF16
};

// What determines how much memory a text needs.
struct InputMeasure {
  size_t equals = 0;  // equals signs: an upper bound for the number of options
  bool has_parenthesis = false;
  bool is_ascii = false;
  bool may_have_pairs = false;  // characters above U+FFFF
};

InputMeasure measure(const InputText& input);

// A text in both forms, UTF-16 and wide.
struct ConvertedText {
  uint32_t unit_count = 0;
  uint32_t characters = 0;
  // If the text is not valid Unicode: its first invalid place.
  bool is_valid = true;
  uint32_t invalid_at = 0;         // in characters
  uint32_t invalid_character = 0;  // the wide character there, or a lone surrogate
};

// Zero units after a converted text.
inline constexpr size_t kZerosAfter = 16;
// Text is converted in steps, which may write past its end.
inline constexpr size_t kConvertedStep = 16;
constexpr size_t unit_room(size_t units) {
  return units + kConvertedStep + kZerosAfter;
}
constexpr size_t wide_room(size_t characters) {
  return characters + kConvertedStep;
}

// Converts a whole text. units: space for unit_room(n) units if the input has n, or unit_room(2n)
// for wide text with surrogate pairs; wide: space for wide_room(n) characters.
ConvertedText convert(const InputText& input, bool is_ascii, uint16_t* units, wchar_t* wide);

// Converts UTF-16 without lone surrogates to wide text.
void to_wide(const uint16_t* units, uint32_t count, wchar_t* wide);

// Converts ASCII wide text to bytes.
void narrow(const wchar_t* text, size_t characters, char* bytes);

// Writes wide text, whose characters must be valid, as UTF-8. Returns one past the last byte.
char* to_utf8(const wchar_t* text, size_t characters, char* bytes);
constexpr uint32_t utf8_length(uint32_t c) {
  return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

}  // namespace tavo
