// Day numbers, the stopwatch and file dates at the boundary.
#include <sys/stat.h>
#include <time.h>
#include <utime.h>

#include <cstdio>
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

int Ymd(int y, int m, int d) { return y * 10000 + m * 100 + d; }

TEST(Calendar, DayNumbersToDates) {
  // Year and month boundaries, the leap days either side of 1900 (1900 has
  // no 29 February, 2000 has), and days before 1900, which are not handled
  // and keep their odd form.
  const struct { int day; const char* date; } kCases[] = {
      {2, "1900-01-01"},     {40000, "2009-07-06"}, {65535, "2079-06-04"}, {2 + 31, "1900-02-01"},
      {2 + 59, "1900-03-01"}, {2 + 364, "1900-12-31"}, {2 + 365, "1901-01-01"}, {36951, "2001-03-01"},
      {36950, "2001-02-28"}, {36585, "2000-02-29"}, {36891, "2000-12-31"}, {39812, "2008-12-30"},
      {0, "1900-01--1"},     {1, "1900-01-00"},
  };
  for (const auto& c : kCases) EXPECT_EQ(DateStr(c.day), c.date) << c.day;
}

TEST(Calendar, DaysFrom1900AreTwoShortOfDayNumbers) {
  // Years before 1900 add nothing; arguments are not checked.
  const struct { int y, m, d, days; } kCases[] = {
      {1900, 1, 1, 0}, {2009, 1, 1, 39812}, {1900, 3, 1, 59}, {1850, 1, 1, 0}, {1900, 13, 1, 365},
      {1000000, 1, 1, 364548539},
  };
  for (const auto& c : kCases) EXPECT_EQ(vcGetDaysFrom1900_1_1(c.y, c.m, c.d), c.days) << c.y;
  // Near and far years count the same leap days as the walk through the dates.
  const int kDates[][3] = {{2000, 3, 1}, {2001, 3, 1}, {2009, 7, 6}, {2100, 3, 1}, {2401, 3, 1}, {9999, 3, 1}};
  for (const auto& c : kDates) {
    char want[16];
    snprintf(want, sizeof want, "%d-%02d-%02d", c[0], c[1], c[2]);
    EXPECT_EQ(DateStr(vcGetDaysFrom1900_1_1(c[0], c[1], c[2]) + 2), want);
  }
}

TEST(Calendar, StopwatchCountsTicksSince1601) {
  double now = vcMyGetTime();
  EXPECT_NEAR(now / 1e7 - 11644473600.0, static_cast<double>(time(nullptr)), 2.0);
  int64_t passed = vcTimePassed(vcMyGetTime());
  EXPECT_TRUE(passed >= 0 && passed < 1000) << passed;
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
  EXPECT_EQ(Ymd(y, m, d), 20090706);

  // Creation is now (the file was just made), in local time; a changed
  // write time does not move it.
  time_t now = time(nullptr);
  struct tm local;
  localtime_r(&now, &local);
  vcGetFileTimeEx(Path("a.txt").c_str(), &y, &m, &d, &hh, &mm, 12345);
  EXPECT_EQ(Ymd(y, m, d), Ymd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday));
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
    EXPECT_EQ(Ymd(y, m, d), 16010101) << path;
    vcGetFileTimeEx(path, &y, &m, &d, &hh, &mm, 0);
    EXPECT_EQ(Ymd(y, m, d), Ymd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday)) << path;
    EXPECT_EQ(hh, local.tm_hour) << path;
  }
}

}  // namespace
