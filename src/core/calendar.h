// Day numbers: day 0 is 1899-12-30, the origin of the front ends' Basic
// dates, so 1900-01-01 is day 2. The learning records keep them in 16 bits.
#pragma once

#include <cstdint>

namespace tq {

constexpr int kDayNumberOf1900 = 2;

bool IsLeapYear(int year);

// Writes the date of a day number as "%d-%02d-%02d"; the characters
// written. Days before 1900 are not handled and come out as "1900-01--1"
// and the like. Needs 11 bytes for the days of years 1900 to 9999.
int FormatDayNumber(int day, char* out);

// Days from 1900-01-01 (which is 0) to the date. Two less than the day
// number of the same date: the two counts are not interchangeable.
int DaysFrom1900(int year, int month, int day);

// Now as 100-nanosecond ticks since 1601-01-01 UTC, in floating point.
double SystemTimeValue();
// Milliseconds from an earlier SystemTimeValue to now, truncated.
int64_t MillisecondsSince(double earlier);

struct FileDate {
  int year, month, day, hour, minute;
};
// The last-write time of a file in UTC; 1601-01-01 when it cannot be read.
FileDate FileWriteDateUtc(const char* path);
// The creation time of a file in local time; 1601-01-01 moved by the local
// zone when it cannot be read.
FileDate FileCreationDateLocal(const char* path);

}  // namespace tq
