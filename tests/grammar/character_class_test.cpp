// A second definition of the character classes, compared for every UTF-16 code unit and for some
// larger numbers.
#include "Grammar/lexer/character_class.h"

#include <gtest/gtest.h>

#include <cstring>

#include "text/utf16_characters.h"

namespace {

bool between(uint32_t c, char first, char last) {
  return c >= static_cast<uint32_t>(first) && c <= static_cast<uint32_t>(last);
}
bool is_one_of(uint32_t c, const char* characters) {
  return c != 0 && c < 128 && std::strchr(characters, static_cast<int>(c)) != nullptr;
}

void expect_classes_of(uint32_t c) {
  const bool digit = between(c, '0', '9');
  const bool upper = between(c, 'A', 'Z');
  const bool lower = between(c, 'a', 'z');
  const bool word = digit || upper || lower || is_one_of(c, "-.:_");
  const uint32_t in_upper_case = lower ? c - 'a' + 'A' : c;
  ASSERT_EQ(word, tavo::is_word(c)) << c;
  ASSERT_EQ(digit, tavo::is_digit(c)) << c;
  ASSERT_EQ(is_one_of(c, "+-"), tavo::is_sign(c)) << c;
  ASSERT_EQ(is_one_of(c, " \t\n\f\r"), tavo::is_blank(c)) << c;
  ASSERT_EQ(in_upper_case, tavo::to_upper(c)) << c;
  ASSERT_EQ(word ? static_cast<char>(in_upper_case) : '\0', tavo::folded_word(c)) << c;
  const uint8_t kinds = tavo::class_of(c);
  ASSERT_EQ(digit, (kinds & tavo::kDigit) != 0) << c;
  ASSERT_EQ(upper, (kinds & tavo::kUpper) != 0) << c;
  ASSERT_EQ(lower, (kinds & tavo::kLower) != 0) << c;
  ASSERT_EQ(c >= 0xD800 && c <= 0xDBFF, tavo::is_high_surrogate(c)) << c;
  ASSERT_EQ(c >= 0xDC00 && c <= 0xDFFF, tavo::is_low_surrogate(c)) << c;
}

TEST(CharacterClass, OfEveryCharacterIsWhatTheLanguageSays) {
  for (uint32_t c = 0; c <= 0x20000; ++c) expect_classes_of(c);
  for (const uint32_t c : {0x10FFFFu, 0x110000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    expect_classes_of(c);
  }
}

}  // namespace
