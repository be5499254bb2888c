// The library's worker jobs as their tests watch them: polled as a front
// end polls them, waited for when they never report, and the percentages
// they store, as a test observer is told them.
#pragma once

#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

namespace tqtest {

// Polls until the job reports its end (1000) or a minute passes; every
// value seen on the way.
inline std::vector<int> PollToEnd(int (*percentage)()) {
  std::vector<int> polled;
  for (auto give_up = std::chrono::steady_clock::now() + std::chrono::seconds(60);
       std::chrono::steady_clock::now() < give_up;) {
    const int p = percentage();
    if (polled.empty() || polled.back() != p) polled.push_back(p);
    if (p == 1000) break;
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  return polled;
}

// Waits while running() says a job is under way, at most a minute.
inline void WaitWhile(bool (*running)()) {
  for (auto give_up = std::chrono::steady_clock::now() + std::chrono::seconds(60);
       running() && std::chrono::steady_clock::now() < give_up;) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

// The percentages stored by a worker, in order: Seen is the observer.
struct StoredPercentages {
  static void Seen(int percent) {
    std::lock_guard<std::mutex> lock(mutex);
    values.push_back(percent);
  }
  static std::vector<int> Get() {
    std::lock_guard<std::mutex> lock(mutex);
    return values;
  }
  static void Clear() {
    std::lock_guard<std::mutex> lock(mutex);
    values.clear();
  }
  static inline std::mutex mutex;
  static inline std::vector<int> values;
};

}  // namespace tqtest
