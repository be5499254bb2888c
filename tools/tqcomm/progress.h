// A progress bar for long work, drawn on the terminal's error stream and
// only when that is a terminal.
#pragma once

#include <string>

#include "tqcomm2006.h"

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

// How a worker job of the library ended, as FollowJob saw it.
enum class JobEnd { kFinished, kCancelled, kNeverStarted };

// Polls a worker job's percentage with a bar until the job reports its end
// (1000); Ctrl-C calls cancel once and the job ends as cancelled. A job
// never reports on a file it can't read or write: one still at 0 with no
// output after ten seconds never started.
JobEnd FollowJob(const char* what, int(TQ_CALL* percentage)(void), void(TQ_CALL* cancel)(void),
                 const std::string& output);

}  // namespace tqcomm
