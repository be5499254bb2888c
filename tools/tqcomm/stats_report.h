// The figures of tqcomm stats, gathered from a history file the way a front
// end would: what comes due is asked of the wizard's own selection, the
// past is read from the records' documented fields.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "learning_options.h"

namespace tqcomm {

constexpr int kPastDays = 30;
constexpr int kLeechWrong = 4;     // answers not right that make a leech
constexpr int kLeechesShown = 20;  // the worst ones listed by name

struct StatsInput {
  std::string history;
  int day = 0;
  int32_t curve[7] = {0, 1, 2, 4, 7, 15, 30};
  int days = 30;          // days of the forecast after today
  int book = 0;           // a book open for reading, for the words' text
  int book_words = -1;    // its word count; -1 when it could not be opened
  std::string book_path;  // for the report's heading
};

struct Leech {
  int32_t item = 0;
  int wrong = 0, shown = 0;
  std::string word;  // GBK; empty when the book has no such word
};

struct StatsReport {
  // Today's words by the wizard's selection, split by why they are due.
  int due_today = 0, overdue = 0, falling_due = 0, hard = 0;
  std::vector<int> coming;    // [i]: words falling due on day + 1 + i
  std::vector<int> answered;  // [i]: words answered on day - 29 + i
  int64_t right_first_week = 0, shown_first_week = 0;  // words met in the last 7 days
  int64_t right_older = 0, shown_older = 0;
  int leech_count = 0;
  std::vector<Leech> leeches;  // the worst, up to kLeechesShown
  WordTotals totals;
  int64_t records = 0;      // whole records in the history file
  int64_t stray_bytes = 0;  // bytes after the last whole record
  int64_t impossible = 0;   // records whose dates or counts cannot be
};

// Gathers every figure; false, with the reason in *error, when the history
// file cannot be read.
bool GatherStats(const StatsInput& in, StatsReport* out, std::string* error);
// The report as text for a UTF-8 or GBK terminal (words pass through
// ForTerminal).
std::string FormatStats(const StatsInput& in, const StatsReport& r);

}  // namespace tqcomm
