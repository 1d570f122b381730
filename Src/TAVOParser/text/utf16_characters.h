// Characters in UTF-16 text: one code unit, or two that are a surrogate pair.
#pragma once

#include <cstdint>

namespace tavo {

constexpr bool is_high_surrogate(uint32_t unit) {
  return (unit & 0xFFFFFC00u) == 0xD800u;
}
constexpr bool is_low_surrogate(uint32_t unit) {
  return (unit & 0xFFFFFC00u) == 0xDC00u;
}

// One past the character at text, which is before end. An unpaired surrogate is a character, too.
constexpr const uint16_t* next_character(const uint16_t* text, const uint16_t* end) {
  const bool pair = is_high_surrogate(*text) && text + 1 != end && is_low_surrogate(text[1]);
  return text + (pair ? 2 : 1);
}

constexpr uint32_t count_characters(const uint16_t* from, const uint16_t* to) {
  uint32_t count = 0;
  for (; from < to; from = next_character(from, to)) ++count;
  return count;
}

}  // namespace tavo
