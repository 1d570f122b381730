#include <gtest/gtest.h>

#include <vector>

#include "TAVOText.h"

namespace {

constexpr wchar_t kLastCodePoint = 0x10FFFF;

bool is_surrogate(wchar_t code_point) {
  return code_point >= 0xD800 && code_point <= 0xDFFF;
}

TEST(UtfRoundTrip, EveryCodePointComesBack) {
  for (wchar_t code_point = 0; code_point <= kLastCodePoint; ++code_point) {
    if (is_surrogate(code_point)) continue;
    uint16_t units[2] = {};
    uint32_t count = 0;
    ASSERT_EQ(0u, TAVO_Utf32ToUtf16(&code_point, 4, units, sizeof units, &count))
        << static_cast<uint32_t>(code_point);
    ASSERT_EQ(code_point < 0x10000 ? 1u : 2u, count) << static_cast<uint32_t>(code_point);
    wchar_t back = -1;
    ASSERT_EQ(0u, TAVO_Utf16ToUtf32(units, count * 2, &back, sizeof back, &count))
        << static_cast<uint32_t>(code_point);
    ASSERT_EQ(1u, count);
    ASSERT_EQ(code_point, back);
  }
}

TEST(UtfRoundTrip, AllCodePointsInOneTextComeBack) {
  std::vector<wchar_t> text;
  for (wchar_t code_point = 0; code_point <= kLastCodePoint; ++code_point) {
    if (!is_surrogate(code_point)) text.push_back(code_point);
  }
  std::vector<uint16_t> units(text.size() * 2);
  std::vector<wchar_t> back(text.size());
  uint32_t count = 0;
  ASSERT_EQ(0u, TAVO_Utf32ToUtf16(text.data(), static_cast<int32_t>(text.size() * 4), units.data(),
                                  static_cast<uint32_t>(units.size() * 2), &count));
  ASSERT_EQ(0u, TAVO_Utf16ToUtf32(units.data(), count * 2, back.data(),
                                  static_cast<uint32_t>(back.size() * 4), &count));
  EXPECT_EQ(text.size(), count);
  EXPECT_EQ(text, back);
}

TEST(UtfRoundTrip, WhatIsNoCodePointIsRefused) {
  uint16_t units[2] = {};
  uint32_t count = 99;
  for (const wchar_t bad : {0xD800, 0xDFFF, 0x110000, -1}) {
    EXPECT_NE(0u, TAVO_Utf32ToUtf16(&bad, 4, units, sizeof units, &count))
        << static_cast<uint32_t>(bad);
  }
  wchar_t back = 0;
  for (const uint16_t lone : {uint16_t{0xD800}, uint16_t{0xDC00}}) {
    EXPECT_NE(0u, TAVO_Utf16ToUtf32(&lone, 2, &back, sizeof back, &count)) << lone;
  }
  EXPECT_EQ(99u, count);
}

TEST(UtfRoundTrip, ADestinationTooSmallIsRefused) {
  uint16_t unit = 0;
  uint32_t count = 99;
  EXPECT_NE(0u, TAVO_Utf32ToUtf16(L"ab", 8, &unit, 2, &count));
  EXPECT_NE(0u, TAVO_Utf32ToUtf16(L"\U0001F600", 4, &unit, 2, &count));
  EXPECT_NE(0u, TAVO_Utf32ToUtf16(L"ab", -8, &unit, 2, &count));
  EXPECT_EQ(99u, count);
}

}  // namespace
