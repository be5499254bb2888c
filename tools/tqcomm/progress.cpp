#include "progress.h"

#include <unistd.h>

#include <cstdio>

namespace tqcomm {

ProgressBar::ProgressBar(const char* what) : what_(what) {}

ProgressBar::~ProgressBar() {
  if (shown_) std::fputs("\n", stderr);
}

void ProgressBar::Show(long done, long total) {
  if (total <= 0 || !isatty(2)) return;
  int percent = static_cast<int>(done * 100 / total);
  if (percent == last_) return;
  last_ = percent;
  const int width = 30;
  int filled = percent * width / 100;
  std::fprintf(stderr, "\r%-16s [%.*s%*s] %3d%%", what_, filled, "##############################", width - filled, "",
               percent);
  std::fflush(stderr);
  shown_ = true;
}

}  // namespace tqcomm
