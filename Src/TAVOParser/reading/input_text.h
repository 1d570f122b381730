// The text that a read function is handed, in any encoding, and its way into the forms that a pass
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

// What has to be known of a text before memory for it can be measured.
struct InputMeasure {
  size_t equals = 0;  // equals signs: at most so many options
  bool has_parenthesis = false;
  bool is_ascii = false;
  bool may_have_pairs = false;  // characters above U+FFFF
};

InputMeasure measure(const InputText& input);

// A text in both forms.
struct ConvertedText {
  uint32_t unit_count = 0;
  uint32_t characters = 0;
  // The text is no valid Unicode from here on; else no place.
  bool is_valid = true;
  uint32_t invalid_at = 0;         // in characters
  uint32_t invalid_character = 0;  // what a wide text has there, or half a surrogate pair
};

// Units after a converted text that are 0.
inline constexpr size_t kZerosAfter = 16;
// A text is converted in steps, so that more may be written than it has.
inline constexpr size_t kConvertedStep = 16;
constexpr size_t unit_room(size_t units) {
  return units + kConvertedStep + kZerosAfter;
}
constexpr size_t wide_room(size_t characters) {
  return characters + kConvertedStep;
}

// Converts a whole text. units: unit_room of as many units as the input has, of twice that for wide
// text with pairs; wide: wide_room of as many characters as the input has units.
ConvertedText convert(const InputText& input, bool is_ascii, uint16_t* units, wchar_t* wide);

// UTF-16 without lone halves of pairs to wide text.
void to_wide(const uint16_t* units, uint32_t count, wchar_t* wide);

// Wide text of ASCII to bytes.
void narrow(const wchar_t* text, size_t characters, char* bytes);

// Writes wide text, which has valid characters only, as UTF-8. Returns one past what was written.
char* to_utf8(const wchar_t* text, size_t characters, char* bytes);
constexpr uint32_t utf8_length(uint32_t c) {
  return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

}  // namespace tavo
