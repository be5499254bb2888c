// What the learning commands (learn, stats) share: the book and history
// they work on, the day and the forgetting curve, the sample book used when
// no book is named, and the totals of words by attribute.
#pragma once

#include <cstdint>
#include <string>

#include "commands.h"

namespace tqcomm {

struct LearningOptions {
  std::string idx, history;
  int day = 0;  // today's day number
  int32_t curve[7];
  bool sample_book = false;  // no --book: the bundled sample in the data folder
};

// The options' lines of a help text.
extern const char kLearningOptionsHelp[];

// Takes --book, --history, --date and --curve out of args, with the
// defaults for those missing. False, with a message, on a bad value.
bool TakeLearningOptions(Args* args, LearningOptions* o);
// True when args ask for help.
bool WantsHelp(const Args& args);
// Takes "--name N" out of args into *value when present. False, with a
// message, when N is not a whole number from low to high.
bool TakeNumberOption(Args* args, const std::string& name, int low, int high, int* value);

// Makes the sample book (and its blank history) on the first use of the
// default book; 0, or 1 with a message.
int PrepareSampleBook(const LearningOptions& o);
// A book handle with its index and library open for reading; *words is the
// word count, or -1 when the book cannot be opened (the handle is still to
// be closed with CloseBook).
int OpenBook(const std::string& idx, int* words);
void CloseBook(int book);

// Days as the user reads them: "2026-03-01".
std::string DateText(int day);
// The length of a file in bytes, -1 when it cannot be opened.
long FileLengthOf(const std::string& path);
// The path without its extension.
std::string Stem(const std::string& path);

// Words of a history file by attribute, as the library counts them; the
// relapsed ones are the records that none of its four counters takes.
struct WordTotals {
  int32_t not_met = 0, learning = 0, known = 0, mastered = 0, relapsed = 0;
};
bool CountWordTotals(const std::string& history, WordTotals* totals);
// "words: 80 not met, 10 being learnt, 3 known, 4 mastered, 1 relapsed"
std::string WordTotalsLine(const WordTotals& t);

}  // namespace tqcomm
