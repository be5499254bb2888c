// The clock and file times, in the unit the front ends' platform keeps them
// in: 100-nanosecond ticks since 1601-01-01 UTC. The file-basics exports
// compare and copy these ticks; the calendar exports turn them into dates.
#pragma once

#include <cstdint>
#include <string>

namespace tq::platform {

struct FileTimes {
  uint64_t creation = 0;
  uint64_t access = 0;
  uint64_t write = 0;
};

// What the file system tells of a path: its kind, size and times. Where it
// keeps no creation time, the time of the last change of the file's status
// stands for it.
struct FileStatus {
  bool directory = false;
  int64_t size = 0;
  FileTimes times;
};

// For a path already in native form, as the directory search has it; false
// when it cannot be read.
bool StatNative(const std::string& native, FileStatus* status);

// The three times of a file or folder; false (and times untouched) when it
// cannot be read.
bool GetTimes(const char* path, FileTimes* times);
// The times of a file that can be opened for reading, as the calendar's
// file dates want them: false for a folder, or what cannot be opened.
bool GetReadableFileTimes(const char* path, FileTimes* times);
// Gives a file the access and write times. The creation time of a file
// cannot be set here and is left alone.
bool SetTimes(const char* path, const FileTimes& times);

// Now.
uint64_t NowTicksSince1601();

// Broken-down time, months and days from 1.
struct CivilTime {
  int year = 1601, month = 1, day = 1, hour = 0, minute = 0;
};
CivilTime UtcCivil(uint64_t ticks);
CivilTime LocalCivil(uint64_t ticks);

}  // namespace tq::platform
