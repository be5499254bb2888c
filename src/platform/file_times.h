// Clock and file times in the forms the calendar functions hand out.
#pragma once

#include <cstdint>

namespace tq::platform {

// Broken-down time, months and days from 1.
struct CivilTime {
  int year = 1601, month = 1, day = 1, hour = 0, minute = 0;
};

// Seconds from 1601-01-01 to 1970-01-01.
constexpr int64_t kSeconds1601To1970 = 11644473600LL;

// Now, in 100-nanosecond ticks since 1601-01-01 UTC.
uint64_t NowTicksSince1601();

// Last-write time of a file, in seconds since 1970 (UTC). False when the
// file cannot be opened for reading (a folder cannot).
bool LastWriteTime(const char* path, int64_t* seconds);
// Creation time: the birth time where the file system keeps one, else the
// time of the last status change.
bool CreationTime(const char* path, int64_t* seconds);

CivilTime UtcCivil(int64_t seconds);
CivilTime LocalCivil(int64_t seconds);

}  // namespace tq::platform
