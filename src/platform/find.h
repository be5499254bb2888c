// Directory search, as the front ends know it from their own platform.
//
// A search is a pattern whose last part may hold "*" (any run) and "?" (any
// one byte), letters matched without regard to case; "*.*" stands for every
// name. A last part without either is the one file of that exact name, so
// that what is found also opens on a file system that tells case apart. The
// folder part is taken as it stands. A folder matches as a file does. An
// open search is a small 32-bit number from one process-wide table (0 =
// none), so that a caller-owned record can hold it in any build.
#pragma once

#include <cstdint>
#include <string>

#include "platform/file_times.h"

namespace tq::find {

// A match: its name alone, without its folder, with its kind, size and times.
struct Found : platform::FileStatus {
  std::string name;
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

}  // namespace tq::find
