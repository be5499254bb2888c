// The sound centre's two costs beside their yardsticks:
//
// - speech of one word by the adapter in the process, against the
//   espeak-ng program writing the same word to a wave ("espeak-ng -w");
// - a lookup in a sound library of 100,000 records by the halving walk on
//   the open index file, against bisection of the same index held in memory.
//
// bench/sndcentre_bench.sh runs this and prints the two ratios.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench_timing.h"
#include "sound/sound_library.h"
#include "sound/speech.h"

namespace {

using benchtiming::Least;
using benchtiming::Timed;

constexpr int kRecords = 100000;
const char kWord[] = "vocabulary";

std::string Scratch(const char* name) {
  const char* dir = std::getenv("TQ_BENCH_DIR");
  return std::string(dir != nullptr ? dir : "/tmp") + "/" + name;
}

void BM_SpeakWord(benchmark::State& state) {
  const int session = tq::sound::vcInitTts();
  if (session <= 0) {
    state.SkipWithError("espeak-ng is not installed");
    return;
  }
  const std::string out = Scratch("tq_bench_speech.wav");
  // espeak-ng's own rate and format: nothing to resample, as for the program.
  Timed(state, RUSAGE_SELF,
        [&] { return tq::sound::vcTtsSpeakToFileAnsi(session, kWord, out.c_str(), 22050, 1, 16, 0) == 1; });
  tq::sound::vcUnInitTts(session);
  std::remove(out.c_str());
}

void BM_EspeakProgram(benchmark::State& state) {
  const std::string out = Scratch("tq_bench_espeak.wav");
  const std::string command = "espeak-ng -w '" + out + "' " + kWord;
  Timed(state, RUSAGE_CHILDREN, [&] { return std::system(command.c_str()) == 0; });
  std::remove(out.c_str());
}

// Keys "w0000000" and on, in steps of two so that half the keys between
// are absent; the index as the library builder writes it.
std::string Key(int i) {
  char key[16];
  std::snprintf(key, sizeof key, "w%07d", 2 * i);
  return key;
}

const std::string& IndexPath() {
  static const std::string path = [] {
    const std::string p = Scratch("tq_bench_sndlib.idx");
    std::FILE* f = std::fopen(p.c_str(), "wb");
    unsigned char record[tq::sound::kSndRecordBytes];
    for (int i = 0; i < kRecords; ++i) {
      SndLibRecord r{};
      std::memcpy(r.key, Key(i).c_str(), Key(i).size());
      r.offset = static_cast<uint32_t>(i) * 4000u;
      r.length = 4000;
      std::memcpy(r.dataFile, "words000.dat", 12);
      tq::sound::EncodeSndRecord(r, record);
      std::fwrite(record, 1, sizeof record, f);
    }
    std::fclose(f);
    return p;
  }();
  return path;
}

// The same random keys for both walks, present ones only.
std::vector<std::string> Wanted() {
  std::mt19937 random(7);
  std::vector<std::string> keys;
  for (int i = 0; i < 1024; ++i) keys.push_back(Key(static_cast<int>(random() % kRecords)));
  return keys;
}

void BM_LookupHalvingOnDisk(benchmark::State& state) {
  std::FILE* index = std::fopen(IndexPath().c_str(), "rb");
  const std::vector<std::string> keys = Wanted();
  size_t next = 0;
  SndLibRecord found;
  for (auto _ : state) {
    const long at = tq::sound::LookupSndKey(index, keys[next++ % keys.size()].c_str(), &found);
    if (at < 0) state.SkipWithError("a key was not found");
    benchmark::DoNotOptimize(at);
  }
  std::fclose(index);
}

void BM_LookupBisectInMemory(benchmark::State& state) {
  // The whole index read once, its keys lowered as the lookup compares them.
  std::vector<SndLibRecord> records;
  {
    std::FILE* index = std::fopen(IndexPath().c_str(), "rb");
    unsigned char bytes[tq::sound::kSndRecordBytes];
    while (std::fread(bytes, 1, sizeof bytes, index) == sizeof bytes) {
      records.push_back(tq::sound::DecodeSndRecord(bytes));
      const std::string folded = tq::sound::FoldSndKey(records.back().key);
      std::memset(records.back().key, 0, sizeof records.back().key);
      std::memcpy(records.back().key, folded.c_str(), folded.size());
    }
    std::fclose(index);
  }
  const std::vector<std::string> keys = Wanted();
  size_t next = 0;
  for (auto _ : state) {
    const std::string key = tq::sound::FoldSndKey(keys[next++ % keys.size()].c_str());
    auto it = std::lower_bound(records.begin(), records.end(), key, [](const SndLibRecord& r, const std::string& k) {
      return std::strcmp(r.key, k.c_str()) < 0;
    });
    if (it == records.end() || key != it->key) state.SkipWithError("a key was not found");
    benchmark::DoNotOptimize(it);
  }
}

// The best of several runs: what the machine's other work took least from.
BENCHMARK(BM_SpeakWord)->Iterations(10)->Repetitions(5)->ComputeStatistics("least", Least)->UseManualTime()
    ->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EspeakProgram)->Iterations(10)->Repetitions(5)->ComputeStatistics("least", Least)->UseManualTime()
    ->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LookupHalvingOnDisk)->Repetitions(5)->ComputeStatistics("least", Least)->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LookupBisectInMemory)->Repetitions(5)->ComputeStatistics("least", Least)->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
