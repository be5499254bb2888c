// The lesson maker beside sox: assembling a lesson whose sounds already
// exist as wave files (the sample words, spoken once by espeak-ng, as the
// user's own recordings) against "sox" concatenating the same files with
// the same pauses; and the peak memory of making a 5-minute and a 60-minute
// lesson, compression included.
//
// The sounds are made by bench/lesson_bench.sh, which runs this and prints
// the ratio; it names their folder in TQ_BENCH_LESSON. Outputs go there too.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "bench_timing.h"
#include "tqcomm2006.h"

namespace {

using benchtiming::Least;
using benchtiming::ResetPeakKb;
using benchtiming::StatusKb;
using benchtiming::Timed;

constexpr int kRate = 22050;

std::string Dir(const std::string& name) {
  const char* dir = std::getenv("TQ_BENCH_LESSON");
  return std::string(dir ? dir : ".") + "/" + name;
}

std::vector<std::string> Words() {
  std::ifstream in(Dir("words.txt"));
  std::vector<std::string> words;
  for (std::string w; std::getline(in, w);) {
    if (!w.empty()) words.push_back(w);
  }
  return words;
}

bool Present(benchmark::State& state, const std::vector<std::string>& words) {
  if (!words.empty()) return true;
  state.SkipWithError("no words: run bench/lesson_bench.sh");
  return false;
}

// A script of blocks words (the list over and over), played by pattern.
std::string WriteScript(const std::vector<std::string>& words, const std::string& pattern, int blocks) {
  const std::string header[] = {Dir("letters/"), Dir("tmp/word"), Dir("tmp/expl"), Dir("tmp/sent"), Dir("tmp/cn"),
                                Dir("user/"), Dir("user/"), "0", "0", "1", "0", "0", "1", "2", "0", "1000", "500",
                                "0", "16", std::to_string(kRate), "1", "48", pattern};
  std::string s;
  for (const std::string& line : header) s += line + "\r\n";
  for (int i = 0; i < blocks; ++i) s += "A " + words[static_cast<size_t>(i) % words.size()] + "\r\n####\r\n";
  const std::string path = Dir("script.txt");
  std::ofstream(path, std::ios::binary) << s;
  return path;
}

int MakeLesson(const std::string& script, const std::string& wave, int blocks, int compress) {
  const int centre = vcSndCenter_Open(0, 16, kRate, 1);
  const int maker = vcMp3Maker_Open(script.c_str(), centre);
  const int made = vcMp3Maker_MakeWaveFile(maker, wave.c_str(), blocks, compress, 0, 0);
  vcMp3Maker_Close(maker);
  vcSndCenter_Close(centre);
  return made;
}

// Each word said twice, with a pause of one and of two seconds behind it.
void BM_LessonAssembly(benchmark::State& state) {
  const std::vector<std::string> words = Words();
  if (!Present(state, words)) return;
  const int n = static_cast<int>(words.size());
  const std::string script = WriteScript(words, "A1A2", n);
  Timed(state, RUSAGE_SELF, [&] { return MakeLesson(script, Dir("out_ours.wav"), n, 0) == n; });
  state.counters["lesson_s"] = vcGetWaveFileLenInTime(Dir("out_ours.wav").c_str()) / 1000.0;
}

void BM_SoxConcatenation(benchmark::State& state) {
  const std::vector<std::string> words = Words();
  if (!Present(state, words)) return;
  std::string command = "sox";
  for (const std::string& w : words) {
    const std::string file = " '" + Dir("user/" + w + ".wav") + "'";
    command += file + " '" + Dir("pause1.wav") + "'" + file + " '" + Dir("pause2.wav") + "'";
  }
  command += " '" + Dir("out_sox.wav") + "'";
  Timed(state, RUSAGE_CHILDREN, [&] { return std::system(command.c_str()) == 0; });
  state.counters["lesson_s"] = vcGetWaveFileLenInTime(Dir("out_sox.wav").c_str()) / 1000.0;
}

// A lesson of about state.range(0) minutes, made and compressed: blocks of
// a word and a pause, five seconds each. The kernel's high-water mark is
// reset first.
void BM_LessonPeakMemory(benchmark::State& state) {
  const std::vector<std::string> words = Words();
  if (!Present(state, words)) return;
  double wordMs = 0;
  for (const std::string& w : words) wordMs += vcGetWaveFileLenInTime(Dir("user/" + w + ".wav").c_str());
  wordMs /= static_cast<double>(words.size());
  char pause[32];
  std::snprintf(pause, sizeof pause, "A%.2f", std::max(0.0, 5000 - wordMs) / 1000);
  const int blocks = static_cast<int>(state.range(0) * 12);
  const std::string script = WriteScript(words, pause, blocks);
  const std::string wave = Dir("out_peak.wav"), mp3 = Dir("out_peak.mp3");
  double above = 0, peak = 0;
  for (auto _ : state) {
    const long start = ResetPeakKb();
    if (MakeLesson(script, wave, blocks, 1) != blocks) state.SkipWithError("the lesson failed");
    above = (StatusKb("VmHWM:") - start) / 1024.0;
    peak = StatusKb("VmHWM:") / 1024.0;
  }
  state.counters["lesson_min"] = vcGetMp3FileLengthInTime(mp3.c_str()) / 60000.0;
  state.counters["peak_above_start_MB"] = above;
  state.counters["peak_MB"] = peak;
  std::remove(mp3.c_str());
  std::remove(Dir("out_peak.lrc").c_str());
}

#define TQ_LESSON_BENCH(fn, runs)                                                                    \
  BENCHMARK(fn)->Iterations(1)->Repetitions(runs)->ComputeStatistics("least", Least)->UseManualTime() \
      ->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond)
TQ_LESSON_BENCH(BM_LessonAssembly, 7);
TQ_LESSON_BENCH(BM_SoxConcatenation, 7);
BENCHMARK(BM_LessonPeakMemory)->Arg(5)->Arg(60)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
