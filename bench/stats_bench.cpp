// The whole report of tqcomm stats on the 100,000-word history of the
// learning benchmarks (with a book of as many words beside it), run as the
// user runs it: the tool as a process of its own, output to /dev/null.
// "x_read" is its time over a plain sequential read of the history file;
// "cpu_ms" the processor time the tool took (user and system), which a
// machine busy with other work does not inflate. The tool's start alone
// (its help text) is measured beside it.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "history_fixture.h"
#include "tqcomm2006.h"

extern char** environ;

namespace {

using namespace tqbench;

struct StatsFixture {
  std::string idx;
  std::string date;

  StatsFixture() {
    HistoryFixture& h = Fixture();
    idx = h.dir + "/bench.idx";
    int book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
    vcCOrvexBook_OpenLib(book, "ab");
    for (int i = 0; i < kRecords; ++i) {
      std::string word = "word" + std::to_string(i);
      vcCOrvexBook_AppendWord(book, 1, word.c_str(), "n. a meaning", "", "", "", 0);
    }
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    char text[32];
    vcGetDateStr(kToday, text);
    date = text;
  }
};

StatsFixture& Stats() {
  static StatsFixture f;
  return f;
}

// Runs tqcomm with these arguments, its output to /dev/null; its status,
// with the processor seconds it took added to *cpu.
int RunTool(std::vector<std::string> args, double* cpu) {
  args.insert(args.begin(), TQCOMM_BIN);
  std::vector<char*> argv;
  for (std::string& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t pid;
  int status = -1;
  rusage usage;
  if (posix_spawn(&pid, TQCOMM_BIN, &actions, nullptr, argv.data(), environ) == 0 &&
      wait4(pid, &status, 0, &usage) == pid) {
    *cpu += static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
            static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  }
  posix_spawn_file_actions_destroy(&actions);
  return status;
}

void Report(benchmark::State& state, const std::vector<std::string>& args) {
  ReadFloor();  // measured before, not inside, the timing
  double seconds = 0, cpu = 0;
  int status = 0;
  for (auto _ : state) Timed(&seconds, [&] { status = RunTool(args, &cpu); });
  if (status != 0) state.SkipWithError("tqcomm stats failed");
  ReportRatio(state, seconds);
  if (state.iterations() > 0) state.counters["cpu_ms"] = cpu * 1000 / static_cast<double>(state.iterations());
}

void BM_StatsReport(benchmark::State& state) {
  Report(state, {"stats", "--book", Stats().idx, "--history", Fixture().history, "--date", Stats().date});
}
BENCHMARK(BM_StatsReport)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StatsReportWithPicture(benchmark::State& state) {
  Report(state, {"stats", "--book", Stats().idx, "--history", Fixture().history, "--date", Stats().date, "--png",
                 Fixture().dir + "/stats.png"});
}
BENCHMARK(BM_StatsReportWithPicture)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ToolStart(benchmark::State& state) { Report(state, {"stats", "--help"}); }
BENCHMARK(BM_ToolStart)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK(BM_SequentialRead)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
