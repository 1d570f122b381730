// Fixed words, compared without regard to case: ASCII letters only, whatever the process's locale.
#pragma once

namespace tavo::platform {

constexpr char ascii_lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

constexpr bool is_ascii_letter(char c) noexcept {
  return ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z';
}

constexpr bool same_word(const char* a, const char* b) noexcept {
  while (*a != '\0' && ascii_lower(*a) == ascii_lower(*b)) {
    ++a;
    ++b;
  }
  return ascii_lower(*a) == ascii_lower(*b);
}

}  // namespace tavo::platform
