// The usage test: a small three-option quiz in a text file, fed straight
// into the front end's windows a question at a time. One test is open per
// process.
//
//   2                       the number of questions
//   He ___ to school.       a question, shown whole
//   Xgo                     three options, each behind a marker byte;
//   $goes                   "$" marks the right one
//   Xgoing
#pragma once

#include <cstdio>

namespace tq::quiz {

class UsageTest {
 public:
  // Lines are read this many bytes at a time; a longer line arrives in
  // pieces, as several lines.
  static constexpr int kLineRead = 997;

  // Opens the test, closing one open before: the number of questions, 0
  // when the first line is no number, or -1 when the file will not open.
  int Open(const char* path);
  // The next question into the four windows: the place of the last option
  // marked "$", or question_window when none is marked, -1 with no test
  // open.
  int Next(int question_window, const int option_windows[3]);
  void Close();

 private:
  // Past the end of the file the line stays as it was.
  void ReadLine();

  std::FILE* file_ = nullptr;
  char line_[kLineRead + 3] = "";
};

UsageTest& TheUsageTest();

}  // namespace tq::quiz
