#include <gtest/gtest.h>

#include <cstdint>
#include <cwchar>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

template <typename Number>
std::wstring written(uint32_t (*convert)(const Number*, wchar_t*, uint32_t, uint32_t*),
                     Number number) {
  wchar_t dst[12];
  std::wmemset(dst, L'x', 12);
  uint32_t count = 99;
  EXPECT_EQ(convert(&number, dst, sizeof dst, &count), kOk);
  EXPECT_EQ(std::wcslen(dst), count);
  return dst;
}

TEST(NumberToText, WritesEveryExtreme) {
  EXPECT_EQ(written(TAVOCnvIntToWVarcharSz1, int32_t{0}), L"0");
  EXPECT_EQ(written(TAVOCnvIntToWVarcharSz1, INT32_MIN), L"-2147483648");
  EXPECT_EQ(written(TAVOCnvIntToWVarcharSz1, INT32_MAX), L"2147483647");
  EXPECT_EQ(written(TAVOCnvUIntToWVarcharSz, uint32_t{0}), L"0");
  EXPECT_EQ(written(TAVOCnvUIntToWVarcharSz, UINT32_MAX), L"4294967295");
  EXPECT_EQ(written(TAVOCnvSmallIntToWVarcharSz, int16_t{INT16_MIN}), L"-32768");
  EXPECT_EQ(written(TAVOCnvSmallIntToWVarcharSz, int16_t{0}), L"0");
  EXPECT_EQ(written(TAVOCnvSmallUIntToWVarcharSz, uint16_t{UINT16_MAX}), L"65535");
}

TEST(NumberToText, RefusesABufferWithoutRoomForTheTerminator) {
  const int32_t number = -123;
  uint32_t count = 99;
  for (uint32_t bytes = 0; bytes < 20; ++bytes) {
    // One more element than stated, which must stay untouched.
    std::vector<wchar_t> dst(bytes / sizeof(wchar_t) + 1, L'x');
    EXPECT_EQ(TAVOCnvIntToWVarcharSz1(&number, dst.data(), bytes, &count), kBufferTooSmall);
    EXPECT_EQ(dst.back(), L'x') << bytes;
    if (bytes >= sizeof(wchar_t)) {
      EXPECT_EQ(dst[0], L'\0');
    }
    EXPECT_EQ(count, 99U);
  }
  wchar_t dst[5];
  EXPECT_EQ(TAVOCnvIntToWVarcharSz1(&number, dst, sizeof dst, &count), kOk);
  EXPECT_EQ(count, 4U);
}

TEST(NumberToText, RefusesNullArguments) {
  const int32_t number = 1;
  wchar_t dst[8];
  uint32_t count = 0;
  EXPECT_EQ(TAVOCnvIntToWVarcharSz1(nullptr, dst, sizeof dst, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvIntToWVarcharSz1(&number, nullptr, 32, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvIntToWVarcharSz1(&number, dst, sizeof dst, nullptr), kArgumentInvalid);
}

constexpr int64_t kUntouched = 0x5A5A;

int64_t as_int(const wchar_t* text, uint32_t expected_status = kOk) {
  int32_t number = kUntouched;
  EXPECT_EQ(TAVOCnvWVarcharSzToInt(text, &number), expected_status) << text;
  return number;
}
int64_t as_long(const wchar_t* text, uint32_t expected_status = kOk) {
  int64_t number = kUntouched;
  EXPECT_EQ(TAVOCnvWVarcharSzToLongLong(text, &number), expected_status) << text;
  return number;
}
int64_t as_uint(const wchar_t* text, uint32_t expected_status = kOk) {
  uint32_t number = kUntouched;
  EXPECT_EQ(TAVOCnvWVarcharSzToUInt(text, &number), expected_status) << text;
  return number;
}

TEST(TextToNumber, TakesAnOptionalSignAndDigits) {
  EXPECT_EQ(as_int(L"0"), 0);
  EXPECT_EQ(as_int(L"+17"), 17);
  EXPECT_EQ(as_int(L"-17"), -17);
  EXPECT_EQ(as_int(L"-0"), 0);
  EXPECT_EQ(as_int(L"0000000000000000000000000000042"), 42);
  EXPECT_EQ(as_long(L"-9000000000"), -9000000000);
  EXPECT_EQ(as_uint(L"+4000000000"), 4000000000);
}

TEST(TextToNumber, HoldsTheRangeOfItsType) {
  EXPECT_EQ(as_int(L"2147483647"), INT32_MAX);
  EXPECT_EQ(as_int(L"-2147483648"), INT32_MIN);
  EXPECT_EQ(as_int(L"2147483648", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_int(L"-2147483649", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_long(L"9223372036854775807"), INT64_MAX);
  EXPECT_EQ(as_long(L"-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(as_long(L"9223372036854775808", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_long(L"-9223372036854775809", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_uint(L"4294967295"), 4294967295);
  EXPECT_EQ(as_uint(L"4294967296", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_long(L"18446744073709551617", kNumberOutOfRange), kUntouched);
  EXPECT_EQ(as_int(L"99999999999999999999999999999999999999", kNumberOutOfRange), kUntouched);
}

TEST(TextToNumber, RefusesEverythingElse) {
  for (const wchar_t* text :
       {L"", L"+", L"-", L" 1", L"1 ", L"1x", L"x", L"+-1", L"--1", L"1.0", L"0x10", L"1e3",
        L"\u0661", L"\uFF11", L"1-", L"\t1", L"1\n", L"99999999999999999999x"}) {
    EXPECT_EQ(as_int(text, kNotANumber), kUntouched);
    EXPECT_EQ(as_long(text, kNotANumber), kUntouched);
    EXPECT_EQ(as_uint(text, kNotANumber), kUntouched);
  }
}

TEST(TextToNumber, RefusesAMinusWhereThereIsNone) {
  EXPECT_EQ(as_uint(L"-1", kNotANumber), kUntouched);
  EXPECT_EQ(as_uint(L"-0", kNotANumber), kUntouched);
}

TEST(TextToNumber, RefusesNullArguments) {
  int32_t number = 0;
  EXPECT_EQ(TAVOCnvWVarcharSzToInt(nullptr, &number), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharSzToInt(L"1", nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharSzToLongLong(nullptr, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharSzToUInt(nullptr, nullptr), kArgumentInvalid);
}

}  // namespace
