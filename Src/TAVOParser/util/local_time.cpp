// The current local time as text and as a record.
#include <ctime>

#include "TAVODates.h"

namespace {

// Returns false when the system cannot tell the local time.
bool local_now(std::tm& now) {
  const std::time_t seconds = std::time(nullptr);
  tzset();  // localtime_r alone need not see that the environment names another time zone by now
  return localtime_r(&seconds, &now) != nullptr;
}

}  // namespace

extern "C" {

char* TAVOGetLocalTime(char* buffer, uint32_t size) noexcept {
  if (buffer == nullptr || size == 0) return buffer;
  std::tm now{};
  // When the text does not fit, strftime leaves the buffer unspecified.
  if (!local_now(now) || std::strftime(buffer, size, "%d/%b/%Y %H:%M:%S", &now) == 0) {
    *buffer = '\0';
  }
  return buffer;
}

TimestampRecord* TAVOGetCurLocalTimeTS(TimestampRecord* timestamp, int32_t dateOnly) noexcept {
  if (timestamp == nullptr) return nullptr;
  std::tm now{};
  local_now(now);
  const bool with_time = dateOnly == 0;
  timestamp->year = static_cast<int16_t>(now.tm_year + 1900);
  timestamp->month = static_cast<uint16_t>(now.tm_mon + 1);
  timestamp->day = static_cast<uint16_t>(now.tm_mday);
  timestamp->hour = static_cast<uint16_t>(with_time ? now.tm_hour : 0);
  timestamp->minute = static_cast<uint16_t>(with_time ? now.tm_min : 0);
  timestamp->second = static_cast<uint16_t>(with_time ? now.tm_sec : 0);
  timestamp->fraction = 0;
  return timestamp;
}

}  // extern "C"
