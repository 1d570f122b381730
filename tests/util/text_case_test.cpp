#include <gtest/gtest.h>

#include "TAVOText.h"

namespace {

TEST(TextCase, ConvertsInPlaceAndReturnsTheText) {
  char text[] = "aZ1 {@`[";
  EXPECT_EQ(text, TAVO_StrToUpper(text));
  EXPECT_STREQ("AZ1 {@`[", text);
  EXPECT_EQ(text, TAVO_StrToLower(text));
  EXPECT_STREQ("az1 {@`[", text);
  wchar_t wide[] = L"aZ1 {@`[";
  EXPECT_EQ(wide, TAVO_StrToWUpper(wide));
  EXPECT_STREQ(L"AZ1 {@`[", wide);
  EXPECT_EQ(wide, TAVO_StrToWLower(wide));
  EXPECT_STREQ(L"az1 {@`[", wide);
}

TEST(TextCase, TakesBytesAboveAscii) {
  char text[] = "\xE4\xFF\x80";
  TAVO_StrToUpper(text);
  EXPECT_STREQ("\xE4\xFF\x80", text);
}

TEST(TextCase, ReturnsNullForNull) {
  EXPECT_EQ(nullptr, TAVO_StrToUpper(nullptr));
  EXPECT_EQ(nullptr, TAVO_StrToLower(nullptr));
  EXPECT_EQ(nullptr, TAVO_StrToWUpper(nullptr));
  EXPECT_EQ(nullptr, TAVO_StrToWLower(nullptr));
}

TEST(CharacterCase, MapsAsciiLettersAndNothingElse) {
  for (uint32_t c = 0; c < 0x300; ++c) {
    EXPECT_EQ(c >= 'a' && c <= 'z' ? c - 32 : c, tohrmwupper(c));
    EXPECT_EQ(c >= 'A' && c <= 'Z' ? c + 32 : c, tohrmwlower(c));
  }
  EXPECT_EQ(0xFFFFFF61u, tohrmwupper(0xFFFFFF61u));
  EXPECT_EQ(0xFFFFFF41u, tohrmwlower(0xFFFFFF41u));
}

}  // namespace
