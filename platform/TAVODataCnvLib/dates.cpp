// Dates, times and timestamps to wide text, in ISO 8601 format with a space between date and time.
#include <cstdio>
#include <cstring>

#include "common/platform_status.h"
#include "platform/platform.h"

using namespace tavo::platform;

namespace {

struct Date {
  int16_t year;
  uint16_t month, day;
};
struct Time {
  uint16_t hour, minute, second;
};
struct Timestamp {
  Date date;
  Time time;
  uint32_t fraction;  // nanoseconds
};
static_assert(sizeof(Date) == 6 && sizeof(Time) == 6 && sizeof(Timestamp) == 16);

enum DataType : int16_t { kDate = 14, kTime = 15, kTimestamp = 16 };

bool is_valid(const Date& date) noexcept {
  constexpr uint8_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (date.year < 0 || date.month < 1 || date.month > 12 || date.day < 1) return false;
  const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
  return date.day <= kDays[date.month - 1] + (leap && date.month == 2 ? 1 : 0);
}

// 60 and 61 are leap seconds.
bool is_valid(const Time& time) noexcept {
  return time.hour < 24 && time.minute < 60 && time.second < 62;
}

template <typename Record>
Record read(const void* value) noexcept {
  Record record;
  std::memcpy(&record, value, sizeof record);
  return record;
}

}  // namespace

TAVO_PLATFORM_API uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst,
                                               uint32_t dst_bytes, uint32_t* count) {
  if (value == nullptr || dst == nullptr || count == nullptr) return kArgumentInvalid;
  const uint32_t room = dst_bytes / static_cast<uint32_t>(sizeof(wchar_t));
  if (room != 0) dst[0] = L'\0';
  char text[64];
  int chars = 0;
  if (data_type == kDate) {
    const auto date = read<Date>(value);
    if (!is_valid(date)) return kNotADate;
    chars = std::snprintf(text, sizeof text, "%04d-%02u-%02u", date.year, date.month, date.day);
  } else if (data_type == kTime) {
    const auto time = read<Time>(value);
    if (!is_valid(time)) return kNotADate;
    chars = std::snprintf(text, sizeof text, "%02u:%02u:%02u", time.hour, time.minute, time.second);
  } else if (data_type == kTimestamp) {
    const auto [date, time, fraction] = read<Timestamp>(value);
    if (!is_valid(date) || !is_valid(time) || fraction > 999'999'999) return kNotADate;
    chars = std::snprintf(text, sizeof text, "%04d-%02u-%02u %02u:%02u:%02u.%09u", date.year,
                          date.month, date.day, time.hour, time.minute, time.second, fraction);
  } else {
    return kDataTypeUnknown;
  }
  if (static_cast<uint32_t>(chars) >= room) return kBufferTooSmall;
  for (int i = 0; i <= chars; ++i) {
    dst[i] = static_cast<wchar_t>(text[i]);
  }
  *count = static_cast<uint32_t>(chars);
  return kOk;
}
