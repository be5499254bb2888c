// History files for the learning tests: records made by hand, written and
// read back whole.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

namespace tqtest {

inline LearningRecord Blank(int item) {
  LearningRecord r;
  std::memset(&r, 0, sizeof r);
  r.firstDate = 65535;
  r.lastDate = 65535;
  r.itemNo = item;
  return r;
}

// A word first learnt on `first`, at step 1, with its results newest first.
inline LearningRecord LearntOn(int item, int first, int shown, int right, const char* results = "Y",
                               int attr = 2) {
  LearningRecord r = Blank(item);
  r.firstDate = static_cast<uint16_t>(first);
  r.lastDate = static_cast<uint16_t>(first);
  r.reviewDates[0] = static_cast<uint16_t>(first);
  r.stepIndex = 1;
  r.shownCount = static_cast<int16_t>(shown);
  r.rightCount = static_cast<int16_t>(right);
  r.attr = static_cast<uint16_t>(attr);
  std::memcpy(r.results, results, strnlen(results, 8));
  return r;
}

inline void WriteHistory(const std::string& path, const std::vector<LearningRecord>& records) {
  WriteFile(path, std::string(reinterpret_cast<const char*>(records.data()), records.size() * 48));
}

inline std::vector<LearningRecord> ReadHistory(const std::string& path) {
  std::string bytes = ReadFile(path);
  std::vector<LearningRecord> out(bytes.size() / 48);
  if (!out.empty()) std::memcpy(out.data(), bytes.data(), out.size() * 48);
  return out;
}

inline std::vector<LearningRecord> Blanks(int n) {
  std::vector<LearningRecord> out;
  for (int i = 0; i < n; ++i) out.push_back(Blank(i));
  return out;
}

inline std::string Results(const LearningRecord& r) { return std::string(r.results, strnlen(r.results, 8)); }

// Every field of a record, to compare whole records with readable failures.
inline std::string Describe(const LearningRecord& r) {
  char out[256];
  const uint16_t* d = r.reviewDates;
  snprintf(out, sizeof out,
           "item %d attr %u first %u last %u step %d shown %d right %d flag %u skip %u pass %u reserved %u "
           "results %s reviews %u %u %u %u %u %u %u",
           r.itemNo, r.attr, r.firstDate, r.lastDate, r.stepIndex, r.shownCount, r.rightCount, r.hardOrNewFlag,
           r.skipDate, r.passCount, r.reserved, Results(r).c_str(), d[0], d[1], d[2], d[3], d[4], d[5], d[6]);
  return out;
}
inline std::string Describe(const std::vector<LearningRecord>& records) {
  std::string out;
  for (const LearningRecord& r : records) out += Describe(r) + "\n";
  return out;
}

}  // namespace tqtest
