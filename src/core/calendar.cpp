#include "core/calendar.h"

#include <cmath>
#include <cstdio>

#include "platform/file_times.h"

namespace tq {
namespace {

constexpr int kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

int YearLength(int year) { return IsLeapYear(year) ? 366 : 365; }

int MonthLength(int year, int month) {  // month 1..12
  return month == 2 && IsLeapYear(year) ? 29 : kMonthDays[month - 1];
}

FileDate ToFileDate(const platform::CivilTime& c) { return FileDate{c.year, c.month, c.day, c.hour, c.minute}; }

}  // namespace

bool IsLeapYear(int year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

int FormatDayNumber(int day, char* out) {
  // The walk subtracts whole years, then whole months. Landing exactly on 0
  // means the first day of the next year (month); going negative means the
  // date lies inside the current one.
  int64_t v = static_cast<int64_t>(day) - kDayNumberOf1900;
  int year = 1900;
  for (;;) {
    int len = YearLength(year);
    v -= len;
    if (v < 0) {
      v += len;
      break;
    }
    ++year;
    if (v == 0) break;
  }
  int month = 1;
  for (; month <= 12; ++month) {
    int len = MonthLength(year, month);
    v -= len;
    if (v < 0) {
      v += len;
      break;
    }
    if (v == 0) {
      ++month;
      break;
    }
  }
  return std::sprintf(out, "%d-%02d-%02lld", year, month, static_cast<long long>(v + 1));
}

int DaysFrom1900(int year, int month, int day) {
  // The lengths of the years 1900 to year - 1, counted rather than walked,
  // so that no year argument makes the call slow.
  auto leap_years_to = [](int64_t y) { return y / 4 - y / 100 + y / 400; };
  int64_t days = 0;
  if (year > 1900) days = 365 * (static_cast<int64_t>(year) - 1900) + leap_years_to(year - 1) - leap_years_to(1899);
  for (int m = 1; m < month && m <= 12; ++m) days += MonthLength(year, m);
  days += static_cast<int64_t>(day) - 1;
  return static_cast<int>(days);
}

double SystemTimeValue() {
  uint64_t ticks = platform::NowTicksSince1601();
  uint32_t high = static_cast<uint32_t>(ticks >> 32);
  uint32_t low = static_cast<uint32_t>(ticks);
  return high * 4294967296.0 + low;
}

int64_t MillisecondsSince(double earlier) {
  double now = SystemTimeValue();
  double ms = (now * 1e-7 - earlier * 1e-7) * 1000.0;
  // A value from elsewhere may be anything; keep the conversion defined.
  if (!std::isfinite(ms) || std::fabs(ms) >= 9.2e18) return 0;
  return static_cast<int64_t>(ms);
}

// A file that cannot be opened for reading (a folder cannot) keeps its
// times at zero: 1601-01-01.
FileDate FileWriteDateUtc(const char* path) {
  platform::FileTimes t;
  platform::GetReadableFileTimes(path, &t);
  return ToFileDate(platform::UtcCivil(t.write));
}

FileDate FileCreationDateLocal(const char* path) {
  platform::FileTimes t;
  platform::GetReadableFileTimes(path, &t);
  return ToFileDate(platform::LocalCivil(t.creation));
}

}  // namespace tq
