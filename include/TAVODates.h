/*
 * Dates: leap days, day numbers, local time. The calendar is the proleptic Gregorian calendar, with
 * a year 0 before the year 1. Compiles as C11 and as C++20; every function may be called from any
 * thread.
 */
#ifndef TAVO_DATES_H
#define TAVO_DATES_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

typedef struct DateRecord {
  int16_t year;
  uint16_t month; /* 1 to 12 */
  uint16_t day;   /* 1 to 31 */
} DateRecord;

TAVO_ASSERT_SIZE(DateRecord, 6);
TAVO_ASSERT_OFFSET(DateRecord, month, 2);
TAVO_ASSERT_OFFSET(DateRecord, day, 4);

typedef struct TimestampRecord {
  int16_t year;
  uint16_t month; /* 1 to 12 */
  uint16_t day;   /* 1 to 31 */
  uint16_t hour;
  uint16_t minute;
  uint16_t second;
  uint32_t fraction;
} TimestampRecord;

TAVO_ASSERT_SIZE(TimestampRecord, 16);
TAVO_ASSERT_OFFSET(TimestampRecord, month, 2);
TAVO_ASSERT_OFFSET(TimestampRecord, day, 4);
TAVO_ASSERT_OFFSET(TimestampRecord, hour, 6);
TAVO_ASSERT_OFFSET(TimestampRecord, minute, 8);
TAVO_ASSERT_OFFSET(TimestampRecord, second, 10);
TAVO_ASSERT_OFFSET(TimestampRecord, fraction, 12);

/* Sets a day of 29 or more in February to 28 when the year is not a leap year. In a leap year the
 * day is unchanged, even above 29. A null argument is ignored. */
TAVO_API void FixLeapYearDay(DateRecord* date) TAVO_NOEXCEPT;

/* Converts a day number (0 is 1900-01-01) to a date. Returns the record; null, with the record
 * untouched, when the record is null or the year does not fit in it (day numbers below -12662227 or
 * above 11274304). */
TAVO_API DateRecord* TAVOIntSYBToODBC(int32_t day, DateRecord* date) TAVO_NOEXCEPT;

/* Converts a date to its day number. A month or day out of range carries over: April 31 is May 1.
 * Returns 0, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TAVOIntODBCToSYB(const DateRecord* date, int64_t* day) TAVO_NOEXCEPT;

/* Days from one date to another: positive when `to` is later, 0 on the same day.
 * days: out, untouched on failure.
 * Returns 0, or 0xFFFFFFFF for a null argument or a date that the calendar does not have. */
TAVO_API uint32_t TAVOGetDiffDays(const DateRecord* from, const DateRecord* to,
                                  int64_t* days) TAVO_NOEXCEPT;

/* Writes the current local time as "%d/%b/%Y %H:%M:%S" (strftime, so the month name follows the
 * process's locale). size: bytes of the buffer; it is left empty when the text does not fit.
 * Returns the buffer. A null buffer or a size of 0 writes nothing. */
TAVO_API char* TAVOGetLocalTime(char* buffer, uint32_t size) TAVO_NOEXCEPT;

/* Fills a timestamp from the current local time; the fraction is 0, and with a non-zero dateOnly
 * so are hour, minute and second. Returns the record; null for a null one. */
TAVO_API TimestampRecord* TAVOGetCurLocalTimeTS(TimestampRecord* timestamp,
                                                int32_t dateOnly) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_DATES_H */
