// Day numbers, the stopwatch and file dates at the boundary.
#include <sys/stat.h>
#include <time.h>
#include <utime.h>

#include <string>

#include "test_util.h"
#include "tqcomm2006.h"

namespace {

std::string DateStr(int day) {
  char out[64];
  int n = vcGetDateStr(day, out);
  EXPECT_EQ(n, static_cast<int>(std::string(out).size()));
  return out;
}

TEST(Calendar, DayNumbersToDates) {
  EXPECT_EQ(DateStr(2), "1900-01-01");
  EXPECT_EQ(DateStr(40000), "2009-07-06");
  EXPECT_EQ(DateStr(65535), "2079-06-04");
  // Year and month boundaries, and the leap days either side of 1900.
  EXPECT_EQ(DateStr(2 + 31), "1900-02-01");
  EXPECT_EQ(DateStr(2 + 59), "1900-03-01");  // 1900 has no 29 February
  EXPECT_EQ(DateStr(2 + 364), "1900-12-31");
  EXPECT_EQ(DateStr(2 + 365), "1901-01-01");
  EXPECT_EQ(DateStr(36951), "2001-03-01");
  EXPECT_EQ(DateStr(36950), "2001-02-28");
  EXPECT_EQ(DateStr(36585), "2000-02-29");  // 2000 is a leap year
  EXPECT_EQ(DateStr(36891), "2000-12-31");
  // Days before 1900 are not handled and keep their odd form.
  EXPECT_EQ(DateStr(0), "1900-01--1");
  EXPECT_EQ(DateStr(1), "1900-01-00");
}

TEST(Calendar, DaysFrom1900AreTwoShortOfDayNumbers) {
  EXPECT_EQ(vcGetDaysFrom1900_1_1(1900, 1, 1), 0);
  EXPECT_EQ(vcGetDaysFrom1900_1_1(2009, 1, 1), 39812);
  EXPECT_EQ(DateStr(vcGetDaysFrom1900_1_1(2009, 1, 1)), "2008-12-30");
  EXPECT_EQ(DateStr(vcGetDaysFrom1900_1_1(2009, 7, 6) + 2), "2009-07-06");
  EXPECT_EQ(vcGetDaysFrom1900_1_1(1900, 3, 1), 59);
  EXPECT_EQ(vcGetDaysFrom1900_1_1(2000, 3, 1) - vcGetDaysFrom1900_1_1(2000, 2, 28), 2);
  // Years before 1900 add nothing; arguments are not checked.
  EXPECT_EQ(vcGetDaysFrom1900_1_1(1850, 1, 1), 0);
  EXPECT_EQ(vcGetDaysFrom1900_1_1(1900, 13, 1), 365);
  // Far years count the same leap days as the walk through the dates.
  for (int year : {2001, 2100, 2401, 9999}) {
    EXPECT_EQ(DateStr(vcGetDaysFrom1900_1_1(year, 3, 1) + 2), std::to_string(year) + "-03-01") << year;
  }
  EXPECT_EQ(vcGetDaysFrom1900_1_1(1000000, 1, 1), 364548539);
}

TEST(Calendar, StopwatchCountsTicksSince1601) {
  double now = vcMyGetTime();
  double unix_seconds = now / 1e7 - 11644473600.0;
  EXPECT_NEAR(unix_seconds, static_cast<double>(time(nullptr)), 2.0);
  int64_t passed = vcTimePassed(vcMyGetTime());
  EXPECT_GE(passed, 0);
  EXPECT_LT(passed, 1000);
  EXPECT_NEAR(static_cast<double>(vcTimePassed(now - 5e7)), 5000.0, 1000.0);  // five seconds ago
}

class FileDates : public tqtest::TempDirTest {};

TEST_F(FileDates, LastWriteIsUtcAndCreationIsLocal) {
  tqtest::WriteFile(Path("a.txt"), "x");
  // 2009-07-06 23:30:00 UTC: the day is the 6th in UTC whatever the zone.
  struct utimbuf t = {1246923000, 1246923000};
  ASSERT_EQ(utime(Path("a.txt").c_str(), &t), 0);
  int32_t y = 0, m = 0, d = 0, hh = -1, mm = -1;
  vcGetFileTime("a.txt", &y, &m, &d);
  EXPECT_EQ(y * 10000 + m * 100 + d, 20090706);

  // Creation is now (the file was just made), in local time; a changed
  // write time does not move it.
  time_t now = time(nullptr);
  struct tm local;
  localtime_r(&now, &local);
  vcGetFileTimeEx(Path("a.txt").c_str(), &y, &m, &d, &hh, &mm, 12345);
  EXPECT_EQ(y, local.tm_year + 1900);
  EXPECT_EQ(m, local.tm_mon + 1);
  EXPECT_EQ(d, local.tm_mday);
  EXPECT_EQ(hh, local.tm_hour);
  EXPECT_NEAR(mm, local.tm_min, 1);
  vcGetFileTimeEx(Path("a.txt").c_str(), &y, &m, &d, nullptr, nullptr, 0);  // hour and minute optional
}

TEST_F(FileDates, WhatCannotBeOpenedGivesThe1601Origin) {
  time_t origin = static_cast<time_t>(-11644473600LL);
  struct tm local;
  ASSERT_NE(localtime_r(&origin, &local), nullptr);
  ASSERT_EQ(mkdir(Path("folder").c_str(), 0755), 0);
  for (const char* path : {"no such file", "folder"}) {
    int32_t y = 0, m = 0, d = 0, hh = 0, mm = 0;
    vcGetFileTime(path, &y, &m, &d);
    EXPECT_EQ(y * 10000 + m * 100 + d, 16010101) << path;
    vcGetFileTimeEx(path, &y, &m, &d, &hh, &mm, 0);
    EXPECT_EQ(y * 10000 + m * 100 + d, (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday)
        << path;
    EXPECT_EQ(hh, local.tm_hour) << path;
  }
}

}  // namespace
