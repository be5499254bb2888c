// MP3 in both directions beside the programs of the libraries we stand on:
// vcMp3ToWav against "mpg123 -w" and vcEncodeWavToMp3 against "lame" at
// the same bit rate and quality, on the same 10-minute sound; and the peak
// memory of vcMp3ToWav on a 1-hour MP3. Digests: the MP3 digest job on
// the same 10-minute MP3 against "mpg123 -s" to /dev/null, and pictures
// drawn from the digest of an hour.
//
// The sounds are made by bench/sound_bench.sh, which runs this and prints
// the ratios; it names their folder in TQ_BENCH_AUDIO. Outputs go there too.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "bench_timing.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

using benchtiming::Least;
using benchtiming::ResetPeakKb;
using benchtiming::StatusKb;
using benchtiming::Timed;

std::string Audio(const char* name) {
  const char* dir = std::getenv("TQ_BENCH_AUDIO");
  return std::string(dir ? dir : ".") + "/" + name;
}

bool Present(benchmark::State& state, const std::string& path) {
  if (vcIfFileExist(path.c_str()) == 1) return true;
  state.SkipWithError(("no " + path + ": run bench/sound_bench.sh").c_str());
  return false;
}

void Program(benchmark::State& state, const std::string& command) {
  Timed(state, RUSAGE_CHILDREN, [&] { return std::system(command.c_str()) == 0; });
}

void BM_Mp3ToWav(benchmark::State& state) {
  const std::string in = Audio("ten.mp3"), out = Audio("out_ours.wav");
  if (Present(state, in)) Timed(state, RUSAGE_SELF, [&] { return vcMp3ToWav(in.c_str(), out.c_str(), nullptr) == 0; });
}

void BM_Mpg123Program(benchmark::State& state) {
  if (Present(state, Audio("ten.mp3"))) {
    Program(state, "mpg123 -q -w '" + Audio("out_mpg123.wav") + "' '" + Audio("ten.mp3") + "'");
  }
}

void BM_EncodeWavToMp3(benchmark::State& state) {
  const std::string in = Audio("ten.wav"), out = Audio("out_ours.mp3");
  if (Present(state, in)) Timed(state, RUSAGE_SELF, [&] { return vcEncodeWavToMp3(in.c_str(), out.c_str(), 128) == 1; });
}

// The encoder's settings: 128 kbit/s constant, quality 2, joint stereo, no
// bit reservoir.
void BM_LameProgram(benchmark::State& state) {
  if (Present(state, Audio("ten.wav"))) {
    Program(state, "lame --quiet -b 128 -q 2 -m j --nores '" + Audio("ten.wav") + "' '" + Audio("out_lame.mp3") + "'");
  }
}

// Peak resident memory above the process's size at the start of the
// conversion: the kernel's high-water mark is reset first.
void BM_Mp3ToWavPeakMemory(benchmark::State& state) {
  const std::string in = Audio("hour.mp3"), out = Audio("out_hour.wav");
  if (!Present(state, in)) return;
  double above = 0;
  for (auto _ : state) {
    const long start = ResetPeakKb();
    vcMp3ToWav(in.c_str(), out.c_str(), nullptr);
    above = (StatusKb("VmHWM:") - start) / 1024.0;
  }
  std::remove(out.c_str());
  state.counters["peak_above_start_MB"] = above;
}

// The digest job's body on the caller's thread, in blocks of 10 ms.
void BM_Mp3Digest(benchmark::State& state) {
  const std::string in = Audio("ten.mp3"), out = Audio("out_ten.dig");
  if (!Present(state, in)) return;
  Timed(state, RUSAGE_SELF, [&] {
    vcInitMakingDigestProcess(in.c_str(), out.c_str(), 10);
    return vcMakeMp3DigestThread(nullptr) == 0;
  });
}

void BM_Mpg123Decode(benchmark::State& state) {
  if (Present(state, Audio("ten.mp3"))) Program(state, "mpg123 -q -s '" + Audio("ten.mp3") + "' >/dev/null");
}

// An hour in blocks of 10 ms: 360,000 bytes of a loudness that comes and
// goes as speech does.
std::string HourDigest() {
  const std::string path = Audio("out_hour.dig");
  if (vcGetFileLength(path.c_str()) != 360000) {
    std::string bytes(360000, '\0');
    uint32_t seed = 12345;
    for (size_t i = 0; i < bytes.size(); ++i) {
      seed = seed * 1103515245u + 12345u;
      const bool word = (i / 37) % 3 != 0;
      bytes[i] = static_cast<char>(word ? (seed >> 16) % 100 : (seed >> 16) % 3);
    }
    std::ofstream(path, std::ios::binary) << bytes;
  }
  return path;
}

// One picture 2,000 pixels wide: the whole hour (360 blocks a point) or
// ten seconds from the middle (one block a point).
void DrawHour(benchmark::State& state, int startMs, int blocksPerPoint) {
  const std::string digest = HourDigest();
  const int dc = tqHost_CreateDC(2000, 200);
  const int reader = vcDigestFile_Open(digest.c_str());
  for (auto _ : state) {
    vcDigestFile_Draw(reader, dc, 200, 2000, startMs, blocksPerPoint, 10);
    tqHost_ClearDrawLog(dc);
  }
  vcDigestFile_Close(reader);
  tqHost_DeleteDC(dc);
}
void BM_DrawWholeHour(benchmark::State& state) { DrawHour(state, 0, 360); }
void BM_DrawTenSeconds(benchmark::State& state) { DrawHour(state, 1800000, 1); }

// The best of several runs: what the machine's other work took least from.
#define TQ_SOUND_BENCH(fn, runs)                                                                     \
  BENCHMARK(fn)->Iterations(1)->Repetitions(runs)->ComputeStatistics("least", Least)->UseManualTime() \
      ->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond)
TQ_SOUND_BENCH(BM_Mp3ToWav, 5);
TQ_SOUND_BENCH(BM_Mpg123Program, 5);
TQ_SOUND_BENCH(BM_EncodeWavToMp3, 3);
TQ_SOUND_BENCH(BM_LameProgram, 3);
TQ_SOUND_BENCH(BM_Mp3Digest, 5);
TQ_SOUND_BENCH(BM_Mpg123Decode, 5);
BENCHMARK(BM_DrawWholeHour)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DrawTenSeconds)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Mp3ToWavPeakMemory)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
