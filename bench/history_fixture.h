// The 100,000-word history file of the learning benchmarks, made once per
// process, and the floor every pass over it is measured against: a plain
// sequential read of the same file (64 KB blocks through stdio).
#pragma once

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tqcomm2006.h"

namespace tqbench {

constexpr int kRecords = 100000;
constexpr int kLearnt = 60000;  // learnt words first, as a book is learnt in order
constexpr int kToday = 46000;
const int32_t kCurve[7] = {0, 1, 2, 4, 7, 15, 30};

struct HistoryFixture {
  std::string dir, history;

  HistoryFixture() {
    char tmpl[] = "/tmp/tqbench.XXXXXX";
    dir = mkdtemp(tmpl);
    history = dir + "/bench.his";
    std::vector<LearningRecord> recs(kRecords);
    for (int i = 0; i < kRecords; ++i) {
      LearningRecord& r = recs[static_cast<size_t>(i)];
      std::memset(&r, 0, sizeof r);
      r.itemNo = i;
      r.firstDate = 65535;
      r.lastDate = 65535;
      if (i >= kLearnt) continue;
      // Steps 3 to 6 (intervals 2, 3, 8 and 15 days) and a last review in
      // the past five days: about a quarter come out due today, some 14,000
      // words, a heavy backlog. One in eleven is mastered.
      int step = 3 + i % 4;
      r.firstDate = static_cast<uint16_t>(kToday - 60 - i % 30);
      r.stepIndex = static_cast<int16_t>(step);
      for (int s = 0; s < step; ++s) r.reviewDates[s] = static_cast<uint16_t>(kToday - 5 * (step - 1 - s) - i % 5);
      r.lastDate = r.reviewDates[step - 1];
      r.shownCount = 10;
      r.rightCount = static_cast<int16_t>(6 + i % 4);
      r.attr = static_cast<uint16_t>(i % 11 == 0 ? 3 : 2);
      std::memcpy(r.results, "YYNY", 4);
    }
    std::FILE* f = std::fopen(history.c_str(), "wb");
    std::fwrite(recs.data(), sizeof(LearningRecord), recs.size(), f);
    std::fclose(f);
  }
  // The folder goes with everything a benchmark put beside the history.
  ~HistoryFixture() {
    std::string cmd = "rm -rf '" + dir + "'";
    if (std::system(cmd.c_str()) != 0) std::fprintf(stderr, "left %s behind\n", dir.c_str());
  }

  int NewWizard() const {
    int w = vcCOrvexWizard_New();
    vcCOrvexWizard_SetFileNames(w, history.c_str());
    vcCOrvexWizard_SetForgetCurve(w, kCurve);
    vcCOrvexWizard_SetDate(w, kToday);
    return w;
  }
};

inline HistoryFixture& Fixture() {
  static HistoryFixture f;
  return f;
}

inline size_t SequentialRead(const std::string& path) {
  static char block[65536];
  std::FILE* f = std::fopen(path.c_str(), "rb");
  size_t total = 0;
  size_t got;
  while ((got = std::fread(block, 1, sizeof block, f)) > 0) total += got;
  std::fclose(f);
  return total;
}

// Seconds of one plain read of the history file: the best of many.
inline double ReadFloor() {
  static double floor = [] {
    double best = 1e9;
    for (int i = 0; i < 50; ++i) {
      auto t0 = std::chrono::steady_clock::now();
      benchmark::DoNotOptimize(SequentialRead(Fixture().history));
      best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());
    }
    return best;
  }();
  return floor;
}

// Times one call of op, adding it to *seconds.
template <class Op>
void Timed(double* seconds, Op op) {
  auto t0 = std::chrono::steady_clock::now();
  op();
  *seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

inline void ReportRatio(benchmark::State& state, double seconds) {
  if (state.iterations() > 0) state.counters["x_read"] = seconds / static_cast<double>(state.iterations()) / ReadFloor();
}

// The floor itself, for each benchmark program to register.
inline void BM_SequentialRead(benchmark::State& state) {
  double seconds = 0;
  for (auto _ : state) Timed(&seconds, [] { benchmark::DoNotOptimize(SequentialRead(Fixture().history)); });
  ReportRatio(state, seconds);
}

}  // namespace tqbench
