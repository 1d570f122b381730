#include "check.h"

#include <algorithm>

namespace tavo_fuzz {
namespace {

constexpr wchar_t kLoneSurrogate = 0xD800;
constexpr wchar_t kBehindTheLast = 0x110000;

bool is_character(uint32_t c) {
  return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

// The length of the UTF-8 sequence that begins with this byte; 1 for an invalid first byte.
size_t sequence_length(uint8_t lead) {
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 1;
}

// The code point of a sequence, or 0 if the bytes are invalid.
uint32_t decode(const uint8_t* data, size_t length) {
  constexpr uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  uint32_t character = data[0] & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((data[i] & 0xC0) != 0x80) return 0;
    character = character << 6 | (data[i] & 0x3Fu);
  }
  return character >= kLeast[length] && is_character(character) ? character : 0;
}

wchar_t untyped(uint8_t byte) {
  if (byte == 0xFF) return kLoneSurrogate;
  if (byte == 0xFE) return kBehindTheLast;
  return static_cast<wchar_t>(byte);
}

}  // namespace

std::wstring read_text(const uint8_t* data, size_t size) {
  std::wstring text;
  for (size_t i = 0; i < size;) {
    const size_t length = sequence_length(data[i]);
    const uint32_t character = length == 1 || size - i < length ? 0 : decode(data + i, length);
    text += character != 0 ? static_cast<wchar_t>(character) : untyped(data[i]);
    i += character != 0 ? length : 1;
  }
  return text;
}

bool is_valid(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](wchar_t c) { return is_character(static_cast<uint32_t>(c)); });
}

}  // namespace tavo_fuzz
