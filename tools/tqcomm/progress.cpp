#include "progress.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

constexpr int kJobEnded = 1000;
constexpr auto kPoll = std::chrono::milliseconds(50);
constexpr auto kStartLimit = std::chrono::seconds(10);

std::atomic<bool> g_interrupted{false};
void OnInterrupt(int) { g_interrupted = true; }

}  // namespace

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

JobEnd FollowJob(const char* what, int(TQ_CALL* percentage)(void), void(TQ_CALL* cancel)(void),
                 const std::string& output) {
  g_interrupted = false;
  std::signal(SIGINT, OnInterrupt);
  ProgressBar bar(what);
  const auto start = std::chrono::steady_clock::now();
  bool cancelled = false, ended = false;
  for (int p; !(ended = (p = percentage()) == kJobEnded);) {
    if (g_interrupted && !cancelled) {
      cancel();
      cancelled = true;
    }
    if (p == 0 && vcIfFileExist(output.c_str()) != 1 && std::chrono::steady_clock::now() - start > kStartLimit) {
      break;
    }
    bar.Show(p, 100);
    std::this_thread::sleep_for(kPoll);
  }
  std::signal(SIGINT, SIG_DFL);
  if (!ended) return JobEnd::kNeverStarted;
  if (cancelled) return JobEnd::kCancelled;
  bar.Show(100, 100);
  return JobEnd::kFinished;
}

}  // namespace tqcomm
