#include <gtest/gtest.h>

#include "TAVOText.h"
#include "support/util_platform_double.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;

class Utf : public testing::Test {
 protected:
  void SetUp() override {
    util_platform::reset();
  }
};

TEST_F(Utf, TurnsBytesIntoUnits) {
  const uint16_t src[3] = {'a', 'b', 'c'};
  wchar_t dst[8] = {};
  uint32_t count = 99;
  EXPECT_EQ(0u, TAVO_Utf16ToUtf32(src, 6, dst, sizeof dst, &count));
  EXPECT_EQ(3u, count);
  EXPECT_STREQ(L"abc", dst);
  ASSERT_EQ(1u, util_platform::platform().conversions.size());
  EXPECT_EQ(3, util_platform::platform().conversions[0].src_units);
  EXPECT_EQ(8u, util_platform::platform().conversions[0].dst_units);
}

TEST_F(Utf, TurnsBytesIntoUnitsOnTheWayBack) {
  uint16_t dst[8] = {};
  uint32_t count = 99;
  EXPECT_EQ(0u, TAVO_Utf32ToUtf16(L"abc", 12, dst, sizeof dst, &count));
  EXPECT_EQ(3u, count);
  EXPECT_EQ('c', dst[2]);
  ASSERT_EQ(1u, util_platform::platform().conversions.size());
  EXPECT_EQ(3, util_platform::platform().conversions[0].src_units);
  EXPECT_EQ(8u, util_platform::platform().conversions[0].dst_units);
}

TEST_F(Utf, IgnoresARestOfLessThanAUnit) {
  const uint16_t src[3] = {'a', 'b', 'c'};
  wchar_t dst[8] = {};
  uint32_t count = 99;
  EXPECT_EQ(0u, TAVO_Utf16ToUtf32(src, 5, dst, 31, &count));
  EXPECT_EQ(2u, count);
  EXPECT_EQ(7u, util_platform::platform().conversions[0].dst_units);
}

TEST_F(Utf, HandsANegativeLengthOnAsANegativeCount) {
  uint16_t dst[8] = {};
  uint32_t count = 99;
  EXPECT_NE(0u, TAVO_Utf32ToUtf16(L"abc", -9, dst, sizeof dst, &count));
  EXPECT_EQ(-2, util_platform::platform().conversions[0].src_units);
  EXPECT_EQ(99u, count);
}

TEST_F(Utf, ReturnsAFailureUnchangedAndStoresNoCount) {
  util_platform::platform().conversion_status = 4711;
  const uint16_t src[1] = {'a'};
  uint16_t back[1];
  wchar_t dst[1];
  uint32_t count = 99;
  EXPECT_EQ(4711u, TAVO_Utf16ToUtf32(src, 2, dst, 4, &count));
  EXPECT_EQ(4711u, TAVO_Utf32ToUtf16(L"a", 4, back, 2, &count));
  EXPECT_EQ(99u, count);
}

TEST_F(Utf, NeverFollowsANull) {
  const uint16_t src[1] = {'a'};
  uint16_t back[1];
  wchar_t dst[1];
  uint32_t count = 0;
  EXPECT_EQ(kFailed, TAVO_Utf16ToUtf32(nullptr, 2, dst, 4, &count));
  EXPECT_EQ(kFailed, TAVO_Utf16ToUtf32(src, 2, nullptr, 4, &count));
  EXPECT_EQ(kFailed, TAVO_Utf16ToUtf32(src, 2, dst, 4, nullptr));
  EXPECT_EQ(kFailed, TAVO_Utf32ToUtf16(nullptr, 4, back, 2, &count));
  EXPECT_EQ(kFailed, TAVO_Utf32ToUtf16(L"a", 4, nullptr, 2, &count));
  EXPECT_EQ(kFailed, TAVO_Utf32ToUtf16(L"a", 4, back, 2, nullptr));
  EXPECT_TRUE(util_platform::platform().conversions.empty());
}

}  // namespace
