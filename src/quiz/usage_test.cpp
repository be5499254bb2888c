#include "quiz/usage_test.h"

#include <climits>
#include <cstdlib>

#include "core/text.h"
#include "platform/env.h"
#include "platform/host.h"

namespace tq::quiz {

UsageTest& TheUsageTest() {
  static UsageTest* test = new UsageTest;  // lives until exit
  return *test;
}

void UsageTest::ReadLine() {
  if (std::fgets(line_, kLineRead + 1, file_) != nullptr) StrongRtrim(line_);
}

int UsageTest::Open(const char* path) {
  Close();
  file_ = path != nullptr ? env::Open(path, "rb") : nullptr;
  if (file_ == nullptr) return -1;
  line_[0] = '\0';
  ReadLine();
  long n = std::strtol(line_, nullptr, 10);
  return n > INT_MAX ? INT_MAX : n < INT_MIN ? INT_MIN : static_cast<int>(n);
}

int UsageTest::Next(int question_window, const int option_windows[3]) {
  if (file_ == nullptr) return -1;
  ReadLine();
  host::SetWindowText(question_window, line_);
  // The last option marked counts; with none marked the answer is the
  // question window's own number, which callers take as no answer.
  int right = question_window;
  for (int i = 0; i < 3; ++i) {
    ReadLine();
    host::SetWindowText(option_windows[i], line_[0] != '\0' ? line_ + 1 : line_);
    if (line_[0] == '$') right = i;
  }
  return right;
}

void UsageTest::Close() {
  if (file_ != nullptr) std::fclose(file_);
  file_ = nullptr;
}

}  // namespace tq::quiz
