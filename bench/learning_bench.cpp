// Selection of today's words from a 100,000-word history file, and the cost
// of one answer. Each selection also reports "x_read": its mean time over the
// best time of a plain sequential read of the same file (64 KB blocks through
// stdio), the floor that a single pass cannot beat.
#include <benchmark/benchmark.h>

#include "history_fixture.h"
#include "tqcomm2006.h"

namespace {

using namespace tqbench;

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
