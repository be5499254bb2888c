// Directory search and file times, as the front ends know them from their
// own platform.
//
// A search is a pattern whose last part may hold "*" (any run) and "?" (any
// one byte), letters matched without regard to case; "*.*" stands for every
// name. A last part without either is the one file of that exact name, so
// that what is found also opens on a file system that tells case apart. The folder part is taken as it stands. A folder matches as a file
// does. An open search is a small 32-bit number from one process-wide table
// (0 = none), so that a caller-owned record can hold it in any build.
//
// Times are 100-nanosecond ticks since 1601-01-01 UTC, the unit the front
// ends' platform keeps file times in.
#pragma once

#include <cstdint>
#include <string>

namespace tq::find {

struct FileTimes {
  uint64_t creation = 0;
  uint64_t access = 0;
  uint64_t write = 0;
};

struct Found {
  std::string name;  // the name alone, without its folder
  bool directory = false;
  int64_t size = 0;
  FileTimes times;
};

using SearchId = uint32_t;

// Starts a search and gives the first match; 0 when nothing matches (no
// search is left open then).
SearchId First(const char* pattern, Found* found);
// The next match; false at the end.
bool Next(SearchId search, Found* found);
// Ends a search; false for an unknown number.
bool Close(SearchId search);

// True when a name fits a pattern's last part, by the rules above.
bool NameMatches(const std::string& name, const std::string& pattern);

// The three times of a file or folder; false when it cannot be read. Where
// the file system keeps no creation time, the time of the last change of
// the file's status stands for it.
bool GetTimes(const char* path, FileTimes* times);
// Gives a file the access and write times. The creation time of a file
// cannot be set here and is left alone.
bool SetTimes(const char* path, const FileTimes& times);

}  // namespace tq::find
