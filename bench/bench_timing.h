// Timing shared by the benchmarks that set the library beside a program:
// each run by the clock (the benchmark's own time) and by processor time,
// of this process or of the program it started, as cpu_ms. On a shared
// machine the processor time is the steadier measure, and the least of
// several runs the one the machine's other work took least from.
#pragma once

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace benchtiming {

inline double CpuSeconds(int who) {
  rusage u;
  getrusage(who, &u);
  return u.ru_utime.tv_sec + u.ru_stime.tv_sec + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

// who: RUSAGE_SELF for work in the process, RUSAGE_CHILDREN for a program.
template <class F>
void Timed(benchmark::State& state, int who, F run) {
  double cpu = 0;
  for (auto _ : state) {
    const double cpuStart = CpuSeconds(who);
    const auto start = std::chrono::steady_clock::now();
    if (!run()) state.SkipWithError("the run failed");
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    cpu += CpuSeconds(who) - cpuStart;
  }
  state.counters["cpu_ms"] = benchmark::Counter(cpu * 1000, benchmark::Counter::kAvgIterations);
}

inline double Least(const std::vector<double>& v) { return *std::min_element(v.begin(), v.end()); }

}  // namespace benchtiming
