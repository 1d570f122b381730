// Every month has its days and not one more.
#include <gtest/gtest.h>

#include <initializer_list>

#include "TAVODates.h"

namespace {

uint32_t days_from(const DateRecord& from, const DateRecord& to, int64_t* days) {
  return TAVOGetDiffDays(&from, &to, days);
}

void expect_length(int16_t year, uint16_t month, uint16_t length) {
  const DateRecord first = {year, month, 1};
  int64_t days = -1;
  for (uint16_t day = 1; day <= length; ++day) {
    EXPECT_EQ(0u, days_from(first, {year, month, day}, &days)) << year << " " << month;
    EXPECT_EQ(day - 1, days) << year << " " << month;
  }
  days = 4711;
  for (const uint16_t day : {uint16_t{0}, static_cast<uint16_t>(length + 1), uint16_t{65535}}) {
    EXPECT_EQ(0xFFFFFFFFu, days_from(first, {year, month, day}, &days))
        << year << " " << month << " " << day;
    EXPECT_EQ(0xFFFFFFFFu, days_from({year, month, day}, first, &days));
  }
  EXPECT_EQ(4711, days) << "left alone";
}

TEST(DayLimits, OfEveryMonth) {
  constexpr uint16_t kLengths[] = {31, 0, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (uint16_t month = 1; month <= 12; ++month) {
    if (month == 2) continue;
    for (const int16_t year : {int16_t{1999}, int16_t{2000}}) {
      expect_length(year, month, kLengths[month - 1]);
    }
  }
}

TEST(DayLimits, OfFebruary) {
  for (const int16_t year : std::initializer_list<int16_t>{1600, 1996, 2000, 2004, 2400, -4, 0})
    expect_length(year, 2, 29);
  for (const int16_t year : std::initializer_list<int16_t>{1700, 1800, 1900, 2001, 2002, 2003, 2100,
                                                           101, 99, -1, -100}) {
    expect_length(year, 2, 28);
  }
}

TEST(DayLimits, OfTheMonthsThemselves) {
  const DateRecord date = {2024, 1, 1};
  int64_t days = 0;
  for (const uint16_t month : {uint16_t{0}, uint16_t{13}, uint16_t{65535}}) {
    EXPECT_EQ(0xFFFFFFFFu, days_from(date, {2024, month, 1}, &days)) << month;
    EXPECT_EQ(0xFFFFFFFFu, days_from({2024, month, 1}, date, &days)) << month;
  }
}

}  // namespace
