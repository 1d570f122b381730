#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

#include "TAVODataTypes.h"

namespace {

constexpr uint32_t kUnset = 0xABCDEF01u;

TAVOFieldType field(int code, uint32_t length = 10) {
  TAVOFieldType result{};
  result.dataType = static_cast<int16_t>(code);
  result.length = length;
  return result;
}

struct Answer {
  uint32_t status;
  uint32_t stored;
  bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
  return out << answer.status << "/" << answer.stored;
}

Answer bytes_of(int code, uint32_t length = 10) {
  const TAVOFieldType definition = field(code, length);
  uint32_t stored = kUnset;
  const uint32_t status = GetDataTypeBytes(&definition, &stored);
  return {status, stored};
}

Answer length_of(int code) {
  const TAVOFieldType definition = field(code);
  uint32_t stored = kUnset;
  const uint32_t status = GetDataTypeLengths(&definition, &stored);
  return {status, stored};
}

constexpr const char* kNames[29] = {nullptr,
                                    "CHAR",
                                    "VARCHAR",
                                    "VARCHAR_SZ",
                                    "WCHAR",
                                    "WVARCHAR",
                                    "WVARCHAR_SZ",
                                    "LONG_LONG",
                                    "U_LONG_LONG",
                                    "INTEGER",
                                    "U_INTEGER",
                                    "11",
                                    "12",
                                    "DECIMAL_K48",
                                    "ODBC_DATE",
                                    "ODBC_TIME",
                                    "ODBC_TIMESTAMP",
                                    "DATETIME_SZ",
                                    "DATETIME_WSZ",
                                    "DOUBLE",
                                    "FLOAT",
                                    "SMALLINT",
                                    "USMALLINT",
                                    "TINYINT",
                                    "UTINYINT",
                                    "DATETIME_CHAR",
                                    "DATETIME_VARCHAR",
                                    "DATETIME_WCHAR",
                                    "DATETIME_WVARCHAR"};

TEST(DataTypeName, OfEachCode) {
  for (int code = 1; code < 29; ++code) {
    EXPECT_STREQ(kNames[code], TAVOGetDataTypeName(static_cast<int16_t>(code))) << code;
  }
}

TEST(DataTypeName, ZeroAndTwentyNineHaveNone) {
  for (const int code : {0, 29, 101, -1, -32768, 32767}) {
    EXPECT_EQ(nullptr, TAVOGetDataTypeName(static_cast<int16_t>(code))) << code;
  }
}

TEST(DataTypeName, ThePlaceholdersAreTheirOwnDigitsAndThatIsMeant) {
  EXPECT_STREQ("11", TAVOGetDataTypeName(11));
  EXPECT_STREQ("12", TAVOGetDataTypeName(12));
}

TEST(DataTypeBytes, OfEveryCode) {
  const std::map<int, uint32_t> expected = {
      {1, 10}, {2, 10},  {3, 10},  {4, 40},  {5, 40},  {6, 40},  {7, 8},    {8, 8},    {9, 4},
      {10, 4}, {13, 16}, {14, 16}, {15, 16}, {16, 24}, {17, 50}, {18, 200}, {19, 8},   {20, 4},
      {21, 2}, {22, 2},  {23, 1},  {24, 1},  {25, 50}, {26, 50}, {27, 200}, {28, 200}, {101, 50}};
  for (int code = -32768; code <= 32767; ++code) {
    const auto found = expected.find(code);
    const Answer answer = found == expected.end() ? Answer{49, kUnset} : Answer{0, found->second};
    ASSERT_EQ(answer, bytes_of(code)) << code;
  }
}

TEST(DataTypeBytes, AWvarcharOfTenCharactersHasForty) {
  EXPECT_EQ((Answer{0, 40}), bytes_of(TAVO_TYPE_WVARCHAR, 10));
}

TEST(DataTypeBytes, CodeTwelveIsUnknown) {
  EXPECT_EQ((Answer{49, kUnset}), bytes_of(12));
}

TEST(DataTypeBytes, TellsAnAbsentFieldDefinition) {
  uint32_t stored = kUnset;
  EXPECT_EQ(48u, GetDataTypeBytes(nullptr, &stored));
  EXPECT_EQ(kUnset, stored);
  const TAVOFieldType definition = field(1);
  EXPECT_EQ(48u, GetDataTypeBytes(&definition, nullptr));
}

TEST(DataTypeBytes, AWideLengthNeverWraps) {
  EXPECT_EQ((Answer{0, 0xFFFFFFFCu}), bytes_of(TAVO_TYPE_WCHAR, 0x3FFFFFFFu));
  EXPECT_EQ((Answer{49, kUnset}), bytes_of(TAVO_TYPE_WCHAR, 0x40000001u));
  EXPECT_EQ((Answer{0, 0xFFFFFFFFu}), bytes_of(TAVO_TYPE_CHAR, 0xFFFFFFFFu));
}

TEST(DisplayLength, OfEveryCode) {
  std::map<int, Answer> expected = {{101, {0, 51}}, {13, {0, 42}}};
  for (const int code : {1, 2, 3, 4, 5, 6}) expected[code] = {50, kUnset};
  for (const int code : {7, 8}) expected[code] = {0, 21};
  for (const int code : {9, 10}) expected[code] = {0, 11};
  for (const int code : {14, 15, 16}) expected[code] = {0, 50};
  for (const int code : {17, 18, 25, 26, 27, 28}) expected[code] = {65, 50};
  for (const int code : {19, 20}) expected[code] = {0, 32};
  for (const int code : {21, 22}) expected[code] = {0, 6};
  for (const int code : {23, 24}) expected[code] = {0, 4};
  for (int code = -32768; code <= 32767; ++code) {
    const auto found = expected.find(code);
    ASSERT_EQ(found == expected.end() ? (Answer{49, kUnset}) : found->second, length_of(code))
        << code;
  }
}

TEST(DisplayLength, ADateAsTextStoresFiftyAndAnswersSixtyFiveAndThatIsMeant) {
  EXPECT_EQ((Answer{65, 50}), length_of(TAVO_TYPE_DATETIME_SZ));
}

TEST(DisplayLength, TellsAnAbsentFieldDefinition) {
  uint32_t stored = kUnset;
  EXPECT_EQ(48u, GetDataTypeLengths(nullptr, &stored));
  EXPECT_EQ(kUnset, stored);
  const TAVOFieldType definition = field(9);
  EXPECT_EQ(48u, GetDataTypeLengths(&definition, nullptr));
}

TEST(WideType, IsOneOfSix) {
  for (int code = -32768; code <= 32767; ++code) {
    const bool wide = code == 4 || code == 5 || code == 6 || code == 18 || code == 27 || code == 28;
    ASSERT_EQ(wide ? 0 : -1, TAVO_IsWideCharacterDatatype(static_cast<int16_t>(code))) << code;
  }
}

TEST(DigitCount, AddsTheDigitsOfTheMagnitude) {
  uint32_t counter = 0;
  EXPECT_EQ(0u, TAVOGetIntDigitCount(-12345, &counter));
  EXPECT_EQ(5u, counter);
  EXPECT_EQ(0u, TAVOGetIntDigitCount(10, &counter));
  EXPECT_EQ(7u, counter);
  EXPECT_EQ(0u, TAVOGetLongLongDigitCount(1234567890123, &counter));
  EXPECT_EQ(20u, counter);
}

TEST(DigitCount, ZeroAddsNothing) {
  uint32_t counter = 3;
  EXPECT_EQ(0u, TAVOGetIntDigitCount(0, &counter));
  EXPECT_EQ(0u, TAVOGetLongLongDigitCount(0, &counter));
  EXPECT_EQ(3u, counter);
}

TEST(DigitCount, OfTheSmallestIntegers) {
  uint32_t counter = 0;
  TAVOGetIntDigitCount(std::numeric_limits<int32_t>::min(), &counter);
  EXPECT_EQ(10u, counter);
  counter = 0;
  TAVOGetLongLongDigitCount(std::numeric_limits<int64_t>::min(), &counter);
  EXPECT_EQ(19u, counter);
}

TEST(DigitCount, AgreesWithTheWrittenNumber) {
  for (int64_t value = 1; value > 0 && value < std::numeric_limits<int64_t>::max() / 10;
       value *= 10) {
    for (const int64_t near : {value - 1, value, -value}) {
      if (near == 0) continue;
      uint32_t counter = 0;
      TAVOGetLongLongDigitCount(near, &counter);
      EXPECT_EQ(std::to_string(near < 0 ? -near : near).size(), counter) << near;
    }
  }
}

TEST(DigitCount, RefusesANullCounter) {
  EXPECT_EQ(0xFFFFFFFFu, TAVOGetIntDigitCount(1, nullptr));
  EXPECT_EQ(0xFFFFFFFFu, TAVOGetLongLongDigitCount(1, nullptr));
}

}  // namespace
