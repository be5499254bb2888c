// A progress bar for long work, drawn on the terminal's error stream and
// only when that is a terminal.
#pragma once

namespace tqcomm {

class ProgressBar {
 public:
  explicit ProgressBar(const char* what);
  ~ProgressBar();  // closes the line
  void Show(long done, long total);

 private:
  const char* what_;
  bool shown_ = false;
  int last_ = -1;
};

}  // namespace tqcomm
