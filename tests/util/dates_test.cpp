#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>

#include "TAVODates.h"

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr uint32_t kFailed = 0xFFFFFFFFu;
constexpr int32_t kFirstDay = -12662227;  // -32768-01-01
constexpr int32_t kLastDay = 11274304;    // 32767-12-31

constexpr sys_days kEpoch = std::chrono::year{1900} / 1 / 1;

DateRecord date(int year, unsigned month, unsigned day) {
  return {static_cast<int16_t>(year), static_cast<uint16_t>(month), static_cast<uint16_t>(day)};
}

std::string text(const DateRecord& record) {
  return std::to_string(record.year) + "-" + std::to_string(record.month) + "-" +
         std::to_string(record.day);
}

int64_t number_of(const DateRecord& record) {
  int64_t day = 0;
  EXPECT_EQ(0u, TAVOIntODBCToSYB(&record, &day));
  return day;
}

DateRecord date_of(int32_t day) {
  DateRecord record{};
  EXPECT_EQ(&record, TAVOIntSYBToODBC(day, &record)) << day;
  return record;
}

// Both directions of one day against the standard library.
void expect_as_chrono(int32_t day) {
  const year_month_day expected{kEpoch + std::chrono::days{day}};
  const DateRecord record = date_of(day);
  ASSERT_EQ(int{expected.year()}, record.year) << day;
  ASSERT_EQ(unsigned{expected.month()}, record.month) << day;
  ASSERT_EQ(unsigned{expected.day()}, record.day) << day;
  ASSERT_EQ(day, number_of(record));
}

TEST(LeapDay, BecomesTheTwentyEighthWhereThereIsNone) {
  DateRecord record = date(1900, 2, 29);
  FixLeapYearDay(&record);
  EXPECT_EQ("1900-2-28", text(record));
  record = date(2023, 2, 31);
  FixLeapYearDay(&record);
  EXPECT_EQ("2023-2-28", text(record));
}

TEST(LeapDay, StaysInALeapYear) {
  DateRecord record = date(2000, 2, 29);
  FixLeapYearDay(&record);
  EXPECT_EQ("2000-2-29", text(record));
}

TEST(LeapDay, ADayAboveTwentyNineStaysInALeapYearAndThatIsMeant) {
  DateRecord record = date(2024, 2, 30);
  FixLeapYearDay(&record);
  EXPECT_EQ("2024-2-30", text(record));
}

TEST(LeapDay, OtherDaysStay) {
  for (const DateRecord& given : {date(1900, 2, 28), date(1900, 3, 31), date(1900, 1, 29)}) {
    DateRecord record = given;
    FixLeapYearDay(&record);
    EXPECT_EQ(text(given), text(record));
  }
  FixLeapYearDay(nullptr);
}

TEST(DayNumber, OfTheNamedDays) {
  EXPECT_EQ("1900-1-1", text(date_of(0)));
  EXPECT_EQ("1900-1-2", text(date_of(1)));
  EXPECT_EQ("1899-12-31", text(date_of(-1)));
  EXPECT_EQ("2000-1-1", text(date_of(36524)));
  EXPECT_EQ(36524, number_of(date(2000, 1, 1)));
}

TEST(DayNumber, FiftyNineIsTheFirstOfMarchSince1900IsNoLeapYear) {
  EXPECT_EQ("1900-3-1", text(date_of(59)));
}

TEST(DayNumber, AgreesWithChronoForEveryDayOfTheYears1To9999) {
  const auto first = static_cast<int32_t>(number_of(date(1, 1, 1)));
  const auto last = static_cast<int32_t>(number_of(date(9999, 12, 31)));
  EXPECT_EQ(3652059, last - first + 1);
  for (int32_t day = first; day <= last; ++day) expect_as_chrono(day);
}

TEST(DayNumber, AgreesWithChronoForRandomDaysBeyond) {
  std::mt19937 random(20240229);
  std::uniform_int_distribution<int32_t> any_day(kFirstDay + 366, kLastDay);
  for (int i = 0; i < 200000; ++i) expect_as_chrono(any_day(random));
}

TEST(DayNumber, GoesOnBeforeTheYearZero) {
  expect_as_chrono(static_cast<int32_t>(number_of(date(0, 2, 29))));
  expect_as_chrono(static_cast<int32_t>(number_of(date(-1, 12, 31))));
  expect_as_chrono(static_cast<int32_t>(number_of(date(-400, 2, 29))));
}

TEST(DayNumber, RefusesAYearThatTheRecordCannotHold) {
  EXPECT_EQ("-32768-1-1", text(date_of(kFirstDay)));
  EXPECT_EQ("32767-12-31", text(date_of(kLastDay)));
  DateRecord record = date(1, 2, 3);
  for (const int32_t day : {kFirstDay - 1, kLastDay + 1, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(nullptr, TAVOIntSYBToODBC(day, &record)) << day;
  }
  EXPECT_EQ("1-2-3", text(record));
}

TEST(DayNumber, CarriesAMonthOrDayOutOfRange) {
  EXPECT_EQ(number_of(date(2024, 5, 1)), number_of(date(2024, 4, 31)));
  EXPECT_EQ(number_of(date(2024, 3, 31)), number_of(date(2024, 4, 0)));
  EXPECT_EQ(number_of(date(2025, 1, 7)), number_of(date(2024, 13, 7)));
  EXPECT_EQ(number_of(date(2026, 4, 7)), number_of(date(2024, 28, 7)));
  EXPECT_EQ(number_of(date(2023, 12, 7)), number_of(date(2024, 0, 7)));
}

TEST(DayNumber, NeverFollowsANull) {
  DateRecord record = date(1, 2, 3);
  int64_t day = 99;
  EXPECT_EQ(nullptr, TAVOIntSYBToODBC(0, nullptr));
  EXPECT_EQ(kFailed, TAVOIntODBCToSYB(nullptr, &day));
  EXPECT_EQ(kFailed, TAVOIntODBCToSYB(&record, nullptr));
  EXPECT_EQ(99, day);
}

int64_t difference(const DateRecord& from, const DateRecord& to) {
  int64_t days = -77;
  EXPECT_EQ(0u, TAVOGetDiffDays(&from, &to, &days));
  return days;
}

TEST(DiffDays, IsPositiveWhenTheSecondDateIsLater) {
  EXPECT_EQ(0, difference(date(2024, 2, 29), date(2024, 2, 29)));
  EXPECT_EQ(1, difference(date(2024, 2, 29), date(2024, 3, 1)));
  EXPECT_EQ(-366, difference(date(2024, 12, 31), date(2023, 12, 31)));
  EXPECT_EQ(kLastDay - int64_t{kFirstDay}, difference(date(-32768, 1, 1), date(32767, 12, 31)));
}

TEST(DiffDays, RefusesDatesThatTheCalendarDoesNotHave) {
  const DateRecord good = date(2024, 2, 29);
  int64_t days = 99;
  for (const DateRecord& bad : {date(2023, 2, 29), date(2024, 0, 1), date(2024, 13, 1),
                                date(2024, 1, 0), date(2024, 4, 31), date(2024, 65535, 65535)}) {
    EXPECT_EQ(kFailed, TAVOGetDiffDays(&good, &bad, &days)) << text(bad);
    EXPECT_EQ(kFailed, TAVOGetDiffDays(&bad, &good, &days)) << text(bad);
  }
  EXPECT_EQ(kFailed, TAVOGetDiffDays(nullptr, &good, &days));
  EXPECT_EQ(kFailed, TAVOGetDiffDays(&good, nullptr, &days));
  EXPECT_EQ(kFailed, TAVOGetDiffDays(&good, &good, nullptr));
  EXPECT_EQ(99, days);
}

// Reads what TAVOGetLocalTime wrote.
std::time_t read_back(const char* written) {
  std::tm time{};
  EXPECT_NE(nullptr, strptime(written, "%d/%b/%Y %H:%M:%S", &time)) << written;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

TEST(LocalTime, IsWrittenAsDayMonthYearAndTime) {
  char buffer[32] = {};
  const std::time_t before = std::time(nullptr);
  EXPECT_EQ(buffer, TAVOGetLocalTime(buffer, sizeof buffer));
  const std::time_t after = std::time(nullptr);
  EXPECT_EQ(20u, std::string(buffer).size());
  EXPECT_LE(before, read_back(buffer));
  EXPECT_GE(after, read_back(buffer));
}

// Sets the time zone of the process for a test.
class TimeZone {
 public:
  TimeZone() : had_one_(std::getenv("TZ") != nullptr), before_(had_one_ ? std::getenv("TZ") : "") {}
  ~TimeZone() {
    had_one_ ? setenv("TZ", before_.c_str(), 1) : unsetenv("TZ");
    tzset();
  }
  static void set(const char* zone) {
    setenv("TZ", zone, 1);
  }

 private:
  bool had_one_;
  std::string before_;
};

// Nobody else calls tzset in between: both functions have to see the change themselves.
TEST(LocalTime, FollowsATimeZoneThatTheProcessChanged) {
  const TimeZone zone;
  const std::time_t now = std::time(nullptr);
  for (const int hours : {9, -7, 3}) {
    TimeZone::set(
        ("TAVO" + std::to_string(-hours)).c_str());  // east of Greenwich is negative there
    const std::time_t shown = now + hours * 3600;
    std::tm time{};
    gmtime_r(&shown, &time);
    char buffer[32] = {};
    TAVOGetLocalTime(buffer, sizeof buffer);
    std::tm read{};
    ASSERT_NE(nullptr, strptime(buffer, "%d/%b/%Y %H:%M:%S", &read)) << buffer;
    EXPECT_LE(timegm(&read) - shown, 60) << hours;
    EXPECT_GE(timegm(&read) - shown, 0) << hours;
  }
}

TEST(LocalTimestamp, FollowsATimeZoneThatTheProcessChanged) {
  const TimeZone zone;
  const std::time_t now = std::time(nullptr);
  for (const int hours : {-8, 5}) {
    TimeZone::set(("TAVO" + std::to_string(-hours)).c_str());
    TimestampRecord record{};
    TAVOGetCurLocalTimeTS(&record, 0);
    std::tm read{};
    read.tm_year = record.year - 1900;
    read.tm_mon = record.month - 1;
    read.tm_mday = record.day;
    read.tm_hour = record.hour;
    read.tm_min = record.minute;
    read.tm_sec = record.second;
    EXPECT_LE(timegm(&read) - now - hours * 3600, 60) << hours;
    EXPECT_GE(timegm(&read) - now - hours * 3600, 0) << hours;
  }
}

TEST(LocalTime, ThatDoesNotFitLeavesAnEmptyText) {
  char buffer[32] = "~~~~~~~~~~~~~~~~~~~~~~";
  EXPECT_EQ(buffer, TAVOGetLocalTime(buffer, 20));
  EXPECT_STREQ("", buffer);
  EXPECT_EQ('~', buffer[20]);
  EXPECT_EQ(buffer, TAVOGetLocalTime(buffer, 21));
  EXPECT_EQ(20u, std::string(buffer).size());
}

TEST(LocalTime, WritesNothingIntoNothing) {
  char buffer[2] = "~";
  EXPECT_EQ(buffer, TAVOGetLocalTime(buffer, 0));
  EXPECT_STREQ("~", buffer);
  EXPECT_EQ(nullptr, TAVOGetLocalTime(nullptr, 32));
}

std::time_t seconds_of(const TimestampRecord& record) {
  std::tm time{};
  time.tm_year = record.year - 1900;
  time.tm_mon = record.month - 1;
  time.tm_mday = record.day;
  time.tm_hour = record.hour;
  time.tm_min = record.minute;
  time.tm_sec = record.second;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

TEST(LocalTimestamp, HoldsTheLocalTimeAndNoFraction) {
  TimestampRecord record{};
  record.fraction = 77;
  const std::time_t before = std::time(nullptr);
  EXPECT_EQ(&record, TAVOGetCurLocalTimeTS(&record, 0));
  EXPECT_LE(before, seconds_of(record));
  EXPECT_GE(std::time(nullptr), seconds_of(record));
  EXPECT_EQ(0u, record.fraction);
}

TEST(LocalTimestamp, DateOnlyHasNoTime) {
  TimestampRecord record{};
  record.hour = record.minute = record.second = 77;
  record.fraction = 77;
  EXPECT_EQ(&record, TAVOGetCurLocalTimeTS(&record, 1));
  EXPECT_GE(record.year, 2024);
  EXPECT_EQ(0, record.hour);
  EXPECT_EQ(0, record.minute);
  EXPECT_EQ(0, record.second);
  EXPECT_EQ(0u, record.fraction);
  EXPECT_EQ(nullptr, TAVOGetCurLocalTimeTS(nullptr, 0));
}

}  // namespace
