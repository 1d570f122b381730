// Character classes of the parameter language. Everything outside ASCII is kOther.
#pragma once

#include <array>
#include <cstdint>

namespace tavo {

enum CharacterClass : uint8_t {
  kOther = 0,
  kWord = 0x01,   // may occur in an unquoted string
  kDigit = 0x02,  // also kWord
  kUpper = 0x04,  // also kWord
  kLower = 0x08,  // also kWord
  kBlank = 0x10,  // white space
};

namespace detail {

constexpr std::array<uint8_t, 128> make_character_classes() {
  std::array<uint8_t, 128> table{};
  for (unsigned c = '0'; c <= '9'; ++c) table[c] = kWord | kDigit;
  for (unsigned c = 'A'; c <= 'Z'; ++c) table[c] = kWord | kUpper;
  for (unsigned c = 'a'; c <= 'z'; ++c) table[c] = kWord | kLower;
  for (unsigned c : {0x2Du, 0x2Eu, 0x3Au, 0x5Fu}) table[c] = kWord;  // - . : _
  for (unsigned c : {0x09u, 0x0Au, 0x0Cu, 0x0Du, 0x20u}) table[c] = kBlank;
  return table;
}

inline constexpr std::array<uint8_t, 128> kCharacterClasses = make_character_classes();

constexpr std::array<char, 128> make_folded_words() {
  std::array<char, 128> table{};
  for (unsigned c = 0; c < 128; ++c) {
    const bool lower = (kCharacterClasses[c] & kLower) != 0;
    if ((kCharacterClasses[c] & kWord) != 0) table[c] = static_cast<char>(lower ? c - 0x20 : c);
  }
  return table;
}

inline constexpr std::array<char, 128> kFoldedWords = make_folded_words();

}  // namespace detail

constexpr uint8_t class_of(uint32_t c) {
  if (c >= 128) [[unlikely]] {
    return kOther;
  }
  return detail::kCharacterClasses[c];
}
constexpr bool is_word(uint32_t c) {
  return (class_of(c) & kWord) != 0;
}
// The character in uppercase if it may occur in an unquoted string, else 0.
constexpr char folded_word(uint32_t c) {
  return c < 128 ? detail::kFoldedWords[c] : '\0';
}
constexpr bool is_digit(uint32_t c) {
  return c - '0' < 10u;
}
constexpr bool is_sign(uint32_t c) {
  return c == '+' || c == '-';
}
constexpr bool is_blank(uint32_t c) {
  return (class_of(c) & kBlank) != 0;
}
// ASCII only, whatever the locale: other letters never match a keyword letter.
constexpr uint32_t to_upper(uint32_t c) {
  return c - 'a' < 26u ? c - 0x20 : c;
}

}  // namespace tavo
