// Dates of the proleptic Gregorian calendar: leap days, day numbers, differences.
#include <cstdint>
#include <limits>

#include "TAVODates.h"
#include "util/util_common.h"

namespace {

constexpr uint16_t kFebruary = 2;
constexpr uint16_t kLastSafeDay = 28;

constexpr int64_t kDaysIn400Years = 146097;
constexpr int64_t kDaysIn4Years = 1461;
constexpr int64_t kDaysIn5Months = 153;   // from March on
constexpr int64_t kEpochOffset = 693902;  // from 0000-02-29, day 0, to 1900-01-01

constexpr int64_t floor_div(int64_t value, int64_t by) {
  return value / by - (value % by < 0 ? 1 : 0);
}

constexpr bool is_leap_year(int32_t year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

struct CivilDate {
  int64_t year;
  int64_t month;
  int64_t day;
};

// Years begin in March, so that the leap day is the last of its year; divisions round down, so that
// the calendar continues before year 0.
constexpr CivilDate civil_from_day(int64_t day_number) {
  const int64_t quarters = 4 * (day_number + kEpochOffset) - 1;
  const int64_t century = floor_div(quarters, kDaysIn400Years);
  const int64_t day_of_century = (quarters - kDaysIn400Years * century) / 4;
  const int64_t year_quarters = 4 * day_of_century + 3;
  const int64_t year = year_quarters / kDaysIn4Years;
  const int64_t day_of_year = (year_quarters % kDaysIn4Years + 4) / 4;
  const int64_t month_fifths = 5 * day_of_year - 3;
  const int64_t month = month_fifths / kDaysIn5Months;
  const int64_t day = (month_fifths % kDaysIn5Months + 5) / 5;
  const int64_t march_year = 100 * century + year;
  return month < 10 ? CivilDate{march_year, month + 3, day}
                    : CivilDate{march_year + 1, month - 9, day};
}

constexpr int64_t day_from_civil(int64_t year, int64_t month, int64_t day) {
  year += floor_div(month - 1, 12);
  month -= 12 * floor_div(month - 1, 12);
  if (month <= 2) {  // months 13 and 14 of the year before
    month += 12;
    --year;
  }
  const int64_t days_of_years = floor_div(kDaysIn400Years * floor_div(year, 100), 4) +
                                kDaysIn4Years * (year - 100 * floor_div(year, 100)) / 4;
  const int64_t days_of_months = (kDaysIn5Months * (month - 3) + 2) / 5;
  return days_of_years + days_of_months + day - kEpochOffset;
}

static_assert(day_from_civil(1900, 1, 1) == 0 && day_from_civil(2000, 1, 1) == 36524);
static_assert(civil_from_day(59).month == 3 && civil_from_day(59).day == 1);

uint16_t days_in_month(const DateRecord& date) {
  constexpr uint16_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (date.month == kFebruary && is_leap_year(date.year)) return kLastSafeDay + 1;
  return kDays[date.month - 1];
}

bool is_valid(const DateRecord& date) {
  return date.month >= 1 && date.month <= 12 && date.day >= 1 && date.day <= days_in_month(date);
}

int64_t day_number(const DateRecord& date) {
  return day_from_civil(date.year, date.month, date.day);
}

}  // namespace

extern "C" {

void FixLeapYearDay(DateRecord* date) noexcept {
  if (date == nullptr || date->month != kFebruary || date->day <= kLastSafeDay) return;
  // Deliberate: in a leap year the day is kept, even above 29; callers check it.
  if (!is_leap_year(date->year)) date->day = kLastSafeDay;
}

DateRecord* TAVOIntSYBToODBC(int32_t day, DateRecord* date) noexcept {
  if (date == nullptr) return nullptr;
  const CivilDate civil = civil_from_day(day);
  // A year that wrapped would give a different date.
  if (civil.year < std::numeric_limits<int16_t>::min() ||
      civil.year > std::numeric_limits<int16_t>::max()) {
    return nullptr;
  }
  date->year = static_cast<int16_t>(civil.year);
  date->month = static_cast<uint16_t>(civil.month);
  date->day = static_cast<uint16_t>(civil.day);
  return date;
}

uint32_t TAVOIntODBCToSYB(const DateRecord* date, int64_t* day) noexcept {
  if (date == nullptr || day == nullptr) return tavo::kFailed;
  *day = day_number(*date);
  return 0;
}

uint32_t TAVOGetDiffDays(const DateRecord* from, const DateRecord* to, int64_t* days) noexcept {
  if (from == nullptr || to == nullptr || days == nullptr) return tavo::kFailed;
  if (!is_valid(*from) || !is_valid(*to)) return tavo::kFailed;
  *days = day_number(*to) - day_number(*from);
  return 0;
}

}  // extern "C"
