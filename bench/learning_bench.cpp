// Selection of today's words from a 100,000-word history file, and the cost
// of one answer. Each selection also reports "x_read": its mean time over the
// best time of a plain sequential read of the same file (64 KB blocks through
// stdio), the floor that a single pass cannot beat.
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

namespace {

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
      r.shownCount = 10;
      r.rightCount = static_cast<int16_t>(6 + i % 4);
      r.attr = static_cast<uint16_t>(i % 11 == 0 ? 3 : 2);
      std::memcpy(r.results, "YYNY", 4);
    }
    std::FILE* f = std::fopen(history.c_str(), "wb");
    std::fwrite(recs.data(), sizeof(LearningRecord), recs.size(), f);
    std::fclose(f);
  }
  ~HistoryFixture() {
    std::remove(history.c_str());
    rmdir(dir.c_str());
  }

  int NewWizard() const {
    int w = vcCOrvexWizard_New();
    vcCOrvexWizard_SetFileNames(w, history.c_str());
    vcCOrvexWizard_SetForgetCurve(w, kCurve);
    vcCOrvexWizard_SetDate(w, kToday);
    return w;
  }
};

HistoryFixture& Fixture() {
  static HistoryFixture f;
  return f;
}

size_t SequentialRead(const std::string& path) {
  static char block[65536];
  std::FILE* f = std::fopen(path.c_str(), "rb");
  size_t total = 0;
  size_t got;
  while ((got = std::fread(block, 1, sizeof block, f)) > 0) total += got;
  std::fclose(f);
  return total;
}

// Seconds of one plain read of the history file: the best of many.
double ReadFloor() {
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

void ReportRatio(benchmark::State& state, double seconds) {
  if (state.iterations() > 0) state.counters["x_read"] = seconds / static_cast<double>(state.iterations()) / ReadFloor();
}

void BM_SequentialRead(benchmark::State& state) {
  double seconds = 0;
  for (auto _ : state) Timed(&seconds, [] { benchmark::DoNotOptimize(SequentialRead(Fixture().history)); });
  ReportRatio(state, seconds);
}
BENCHMARK(BM_SequentialRead)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SelectNewWords(benchmark::State& state) {
  int w = Fixture().NewWizard();
  double seconds = 0;
  for (auto _ : state) Timed(&seconds, [w] { benchmark::DoNotOptimize(vcCOrvexWizard_GetWordsToLearn(w, 0, 0)); });
  ReportRatio(state, seconds);
  vcCOrvexWizard_Delete(w);
}
BENCHMARK(BM_SelectNewWords)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SelectDueWords(benchmark::State& state) {
  int w = Fixture().NewWizard();
  int n = 0;
  double seconds = 0;
  for (auto _ : state) Timed(&seconds, [w, &n] { benchmark::DoNotOptimize(n = vcCOrvexWizard_GetWordsToLearn(w, 1, 0)); });
  state.counters["words"] = n;
  ReportRatio(state, seconds);
  vcCOrvexWizard_Delete(w);
}
BENCHMARK(BM_SelectDueWords)->Unit(benchmark::kMillisecond)->UseRealTime();

// AddTodayList on an empty list: the list is emptied outside the timing.
void AddToday(benchmark::State& state, int mode_flag, int limit) {
  int w = Fixture().NewWizard();
  int32_t added = 0;
  double seconds = 0;
  for (auto _ : state) {
    state.PauseTiming();
    vcCOrvexWizard_SetFileNames(w, "/nonexistent");
    vcCOrvexWizard_Delete(w);
    w = Fixture().NewWizard();
    state.ResumeTiming();
    Timed(&seconds, [&] { benchmark::DoNotOptimize(vcCOrvexWizard_AddTodayList(w, mode_flag, limit, &added)); });
  }
  state.counters["words"] = added;
  ReportRatio(state, seconds);
  vcCOrvexWizard_Delete(w);
}

void BM_AddTodayNewWords(benchmark::State& state) { AddToday(state, 0, 0); }
BENCHMARK(BM_AddTodayNewWords)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_AddTodayOldWords(benchmark::State& state) { AddToday(state, 1, kRecords); }
BENCHMARK(BM_AddTodayOldWords)->Unit(benchmark::kMillisecond)->UseRealTime();

// One answer: the record update, its write to the file, the move in the list.
void BM_LearnItem(benchmark::State& state) {
  int w = Fixture().NewWizard();
  vcCOrvexWizard_GetWordsToLearn(w, 1, 0);
  for (auto _ : state) benchmark::DoNotOptimize(vcCOrvexWizard_LearnItem(w, 3));  // unsure: stays in the list
  vcCOrvexWizard_Delete(w);
}
BENCHMARK(BM_LearnItem)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
