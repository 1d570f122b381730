#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

#include "TAVONumericText.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;

template <typename Char>
std::basic_string<Char> untouched() {
  return std::basic_string<Char>(40, static_cast<Char>('~'));
}

TEST(Blanks, AreTwoHundredFiftySixAndATerminator) {
  static_assert(sizeof(PXSpaces) == 257);
  static_assert(sizeof(PXSpacesW) == 257 * sizeof(wchar_t));
  EXPECT_EQ(std::string(256, ' '), PXSpaces);
  EXPECT_EQ(std::wstring(256, L' '), PXSpacesW);
}

TEST(NumberToDigits, PadsWithZerosAndTerminates) {
  auto out = untouched<char>();
  EXPECT_EQ(0u, PXIntToNum(42, 5, out.data()));
  EXPECT_STREQ("00042", out.c_str());
  EXPECT_EQ('~', out[6]);
  auto wide = untouched<wchar_t>();
  EXPECT_EQ(0u, PXIntToNumW(42, 5, wide.data()));
  EXPECT_STREQ(L"00042", wide.c_str());
  EXPECT_EQ(L'~', wide[6]);
}

TEST(NumberToDigits, LeavesTheLowOrderDigitsOfAValueTooLong) {
  auto out = untouched<char>();
  EXPECT_EQ(kFailed, PXIntToNum(123456, 5, out.data()));
  EXPECT_STREQ("23456", out.c_str());
  EXPECT_EQ(kFailed, PXLongToNum(123456, 5, out.data()));
  EXPECT_EQ("23456", out.substr(0, 5));
  auto wide = untouched<wchar_t>();
  EXPECT_EQ(kFailed, PXLongToNumW(123456, 5, wide.data()));
  EXPECT_STREQ(L"23456", wide.c_str());
}

TEST(NumberToDigits, LongToNumWritesNoTerminatorAndThatIsMeant) {
  auto out = untouched<char>();
  EXPECT_EQ(0u, PXLongToNum(42, 5, out.data()));
  EXPECT_EQ("00042~", out.substr(0, 6));
}

TEST(NumberToDigits, LongToNumWWritesATerminator) {
  auto wide = untouched<wchar_t>();
  EXPECT_EQ(0u, PXLongToNumW(42, 5, wide.data()));
  EXPECT_STREQ(L"00042", wide.c_str());
}

TEST(NumberToDigits, TakesTheMagnitudeOfANegativeValue) {
  auto out = untouched<char>();
  EXPECT_EQ(0u, PXIntToNum(-42, 5, out.data()));
  EXPECT_STREQ("00042", out.c_str());
  EXPECT_EQ(0u, PXIntToNum(std::numeric_limits<int32_t>::min(), 10, out.data()));
  EXPECT_STREQ("2147483648", out.c_str());
  EXPECT_EQ(0u, PXLongToNum(std::numeric_limits<int64_t>::min(), 19, out.data()));
  EXPECT_EQ("9223372036854775808", out.substr(0, 19));
}

TEST(NumberToDigits, RefusesANegativeWidthAndWritesNothing) {
  auto out = untouched<char>();
  auto wide = untouched<wchar_t>();
  // In the middle of a buffer, so that a write before it shows.
  for (const int32_t value : {0, 1}) {
    EXPECT_EQ(kFailed, PXIntToNum(value, -1, out.data() + 20));
    EXPECT_EQ(kFailed, PXLongToNum(value, -1, out.data() + 20));
    EXPECT_EQ(kFailed, PXIntToNumW(value, -1, wide.data() + 20));
    EXPECT_EQ(kFailed, PXLongToNumW(value, -20, wide.data() + 20));
    EXPECT_EQ(kFailed, PXLongToNumW(value, std::numeric_limits<int16_t>::min(), wide.data() + 20));
  }
  EXPECT_EQ(untouched<char>(), out);
  EXPECT_EQ(untouched<wchar_t>(), wide);
}

TEST(NumberToDigits, WidthZeroHoldsOnlyZero) {
  auto out = untouched<char>();
  EXPECT_EQ(0u, PXIntToNum(0, 0, out.data()));
  EXPECT_STREQ("", out.c_str());
  EXPECT_EQ(kFailed, PXIntToNum(7, 0, out.data()));
}

TEST(NumberToDigits, RefusesANullBuffer) {
  EXPECT_EQ(kFailed, PXIntToNum(1, 1, nullptr));
  EXPECT_EQ(kFailed, PXIntToNumW(1, 1, nullptr));
  EXPECT_EQ(kFailed, PXLongToNum(1, 1, nullptr));
  EXPECT_EQ(kFailed, PXLongToNumW(1, 1, nullptr));
}

TEST(DigitsToNumber, ReadsTheDigitsAndSkipsTrailingBlanks) {
  uint64_t value = 99;
  EXPECT_EQ(0u, PXNumToLong("12 ", 2, 3, &value));
  EXPECT_EQ(12u, value);
  EXPECT_EQ(0u, PXNumToLongW(L"0345  ", 4, 6, &value));
  EXPECT_EQ(345u, value);
  uint32_t small = 99;
  EXPECT_EQ(0u, TAVOCharNumToInt("12 ", 2, 3, &small));
  EXPECT_EQ(12u, small);
}

TEST(DigitsToNumber, RefusesALetterAmongTheDigits) {
  uint64_t value = 99;
  uint32_t small = 99;
  EXPECT_EQ(kFailed, PXNumToLong("1X ", 2, 3, &value));
  EXPECT_EQ(kFailed, PXNumToLongW(L"1X ", 2, 3, &value));
  EXPECT_EQ(kFailed, TAVOCharNumToInt("1X ", 2, 3, &small));
  EXPECT_EQ(99u, value);
  EXPECT_EQ(99u, small);
}

TEST(DigitsToNumber, RefusesANeighbourOfTheDigits) {
  uint64_t value = 99;
  EXPECT_EQ(kFailed, PXNumToLong("/", 1, 1, &value));
  EXPECT_EQ(kFailed, PXNumToLong(":", 1, 1, &value));
  EXPECT_EQ(kFailed, PXNumToLong("-", 1, 1, &value));
  EXPECT_EQ(kFailed, PXNumToLong("\xB2", 1, 1, &value));
}

TEST(DigitsToNumber, RefusesAShorterRunOfDigits) {
  uint64_t value = 99;
  EXPECT_EQ(kFailed, PXNumToLong("12", 3, 3, &value));
  EXPECT_EQ(99u, value);
}

TEST(DigitsToNumber, RefusesARestThatIsNotBlank) {
  uint64_t value = 99;
  EXPECT_EQ(kFailed, PXNumToLong("123", 2, 3, &value));
  EXPECT_EQ(kFailed, PXNumToLong("12\t", 2, 3, &value));
  EXPECT_EQ(99u, value);
}

TEST(DigitsToNumber, ReadsNothingAfterTheDigitsOfAShortField) {
  uint64_t value = 99;
  EXPECT_EQ(0u, PXNumToLong("12X", 2, 2, &value));
  EXPECT_EQ(12u, value);
  EXPECT_EQ(0u, PXNumToLong("34X", 2, 0, &value));
  EXPECT_EQ(34u, value);
}

TEST(DigitsToNumber, CountZeroReadsZero) {
  uint64_t value = 99;
  EXPECT_EQ(0u, PXNumToLong("  ", 0, 2, &value));
  EXPECT_EQ(0u, value);
}

TEST(DigitsToNumber, RefusesANegativeCountAndNulls) {
  uint64_t value = 99;
  EXPECT_EQ(kFailed, PXNumToLong("12", -1, 2, &value));
  EXPECT_EQ(99u, value);
  EXPECT_EQ(kFailed, PXNumToLong(nullptr, 1, 1, &value));
  EXPECT_EQ(kFailed, PXNumToLong("1", 1, 1, nullptr));
  EXPECT_EQ(kFailed, PXNumToLongW(nullptr, 1, 1, &value));
  EXPECT_EQ(kFailed, TAVOCharNumToInt("1", 1, 1, nullptr));
}

TEST(DigitsToNumber, TwoHundredFiftySixTrailingBlanksAreTheMost) {
  uint64_t value = 99;
  EXPECT_EQ(0u, PXNumToLong(("7" + std::string(256, ' ')).c_str(), 1, 257, &value));
  EXPECT_EQ(7u, value);
  EXPECT_EQ(kFailed, PXNumToLong(("8" + std::string(257, ' ')).c_str(), 1, 258, &value));
  EXPECT_EQ(7u, value);
}

TEST(DigitsToNumber, WrapsWithoutNotice) {
  uint64_t value = 0;
  EXPECT_EQ(0u, PXNumToLong("18446744073709551617", 20, 20, &value));
  EXPECT_EQ(1u, value);
  uint32_t small = 0;
  EXPECT_EQ(0u, TAVOCharNumToInt("4294967298", 10, 10, &small));
  EXPECT_EQ(2u, small);
}

}  // namespace
