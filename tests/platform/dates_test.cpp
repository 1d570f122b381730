#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

// The records as bytes: year, month, day, then hour, minute, second, then the fraction.
struct Record {
  int16_t year;
  uint16_t month, day, hour, minute, second;
  uint32_t fraction;
};

std::wstring text_of(const void* value, int16_t type, uint32_t expected_status = kOk) {
  wchar_t dst[50];
  uint32_t count = 99;
  EXPECT_EQ(TAVOGetStringFromTS(value, type, dst, sizeof dst, &count), expected_status);
  if (expected_status != kOk) {
    EXPECT_EQ(dst[0], L'\0');
    EXPECT_EQ(count, 99U);
    return {};
  }
  EXPECT_EQ(std::wcslen(dst), count);
  return dst;
}

TEST(DateText, IsWrittenFromTheLargestUnitToTheSmallest) {
  const Record record = {2024, 2, 29, 7, 5, 9, 1234567};
  EXPECT_EQ(text_of(&record, 14), L"2024-02-29");
  EXPECT_EQ(text_of(&record.hour, 15), L"07:05:09");
  EXPECT_EQ(text_of(&record, 16), L"2024-02-29 07:05:09.001234567");
}

TEST(DateText, IsRefusedForADayThatDoesNotExist) {
  for (const Record& record : {Record{2023, 2, 29, 0, 0, 0, 0},
                               {1900, 2, 29, 0, 0, 0, 0},
                               {2024, 0, 1, 0, 0, 0, 0},
                               {2024, 13, 1, 0, 0, 0, 0},
                               {2024, 1, 0, 0, 0, 0, 0},
                               {2024, 4, 31, 0, 0, 0, 0},
                               {-1, 1, 1, 0, 0, 0, 0}}) {
    text_of(&record, 14, kNotADate);
    text_of(&record, 16, kNotADate);
  }
  const Record leap = {2000, 2, 29, 0, 0, 0, 0};
  EXPECT_EQ(text_of(&leap, 14), L"2000-02-29");
}

TEST(DateText, IsRefusedForATimeThatDoesNotExist) {
  for (const Record& record :
       {Record{2024, 1, 1, 24, 0, 0, 0}, {2024, 1, 1, 0, 60, 0, 0}, {2024, 1, 1, 0, 0, 62, 0}}) {
    text_of(&record.hour, 15, kNotADate);
    text_of(&record, 16, kNotADate);
  }
  const Record fraction = {2024, 1, 1, 0, 0, 0, 1'000'000'000};
  text_of(&fraction, 16, kNotADate);
}

TEST(DateText, RefusesAnotherTypeASmallBufferAndNull) {
  const Record record = {2024, 2, 29, 7, 5, 9, 0};
  text_of(&record, 13, kDataTypeUnknown);
  text_of(&record, 17, kDataTypeUnknown);
  uint32_t count = 99;
  for (uint32_t bytes = 0; bytes < 11 * sizeof(wchar_t); ++bytes) {
    std::vector<wchar_t> dst(bytes / sizeof(wchar_t) + 1, L'x');
    EXPECT_EQ(TAVOGetStringFromTS(&record, 14, dst.data(), bytes, &count), kBufferTooSmall);
    EXPECT_EQ(dst.back(), L'x');
  }
  wchar_t dst[11];
  EXPECT_EQ(TAVOGetStringFromTS(&record, 14, dst, sizeof dst, &count), kOk);
  EXPECT_EQ(TAVOGetStringFromTS(nullptr, 14, dst, sizeof dst, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOGetStringFromTS(&record, 14, nullptr, 44, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOGetStringFromTS(&record, 14, dst, sizeof dst, nullptr), kArgumentInvalid);
}

}  // namespace
