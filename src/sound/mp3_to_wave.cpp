#include "sound/mp3_to_wave.h"

#include <atomic>
#include <cstring>
#include <vector>

#include "core/files.h"
#include "mpeg/decoder.h"
#include "platform/env.h"
#include "platform/file_times.h"
#include "platform/host.h"
#include "sound/worker.h"
#include "sound/wave_file.h"

namespace tq::sound {
namespace {

constexpr uint32_t kProgressFrames = 1024;
constexpr int32_t kJobEnded = 1000;
constexpr int kThinnedRateLimit = 11030;
constexpr intptr_t kPercentRange = 100 << 16;

// The worker's state. The caller and the worker share only the two 32-bit
// words; the paths are written before the worker starts.
std::atomic<int32_t> g_cancel{0};
std::atomic<int32_t> g_percent{0};
char g_source[kJobPathBytes];
char g_target[kJobPathBytes];
std::atomic<int32_t> g_running{0};
std::atomic<void (*)(int)> g_observer{nullptr};

// Where the whole-file loop tells its progress: a progress bar, or the
// worker's percentage word (which also brings the cancel word along).
struct Reporting {
  int bar = 0;
  bool worker = false;
};

void SetPercent(int32_t percent) {
  g_percent.store(percent);
  if (auto observer = g_observer.load()) observer(percent);
}

// Decodes to the end into a new wave made at the first frame; true when the
// worker's job was cancelled.
bool DecodeAll(mpeg::Decoder& decoder, const char* wavePath, const Reporting& report) {
  WaveFileObj wave{};
  bool created = false, cancelled = false;
  const void* samples = nullptr;
  int block_bytes = 0;
  uint32_t frames = 0, shown = 0;
  for (;;) {
    const int r = decoder.NextFrame();
    if (Retry(r)) continue;
    if (r != mpeg::kOk) break;
    if (!created) {
      // The shape is read once: every block after is taken to be the same.
      const mpeg::FrameInfo& f = decoder.Frame();
      InitWave(&wave, f.sampleRate, f.bytesPerSample * 8, f.channels, wavePath);
      CreateWave(&wave);
      created = true;
      samples = f.samples;
      block_bytes = f.samplesPerChannel * f.bytesPerSample * f.channels;
    }
    WriteWave(&wave, samples, block_bytes);
    if ((report.bar == 0 && !report.worker) || ++frames % kProgressFrames != 0) continue;
    const mpeg::InputStatus s = decoder.Status();
    const uint32_t percent = s.total == 0 ? 0 : s.position * 100u / s.total;
    if (percent > shown) {
      shown = percent;
      host::SendMessage(report.bar, host::kProgressSetPos, static_cast<intptr_t>(percent), 0);
      if (report.worker) SetPercent(static_cast<int32_t>(percent));
    }
    if (report.worker && g_cancel.load() != 0) {
      cancelled = true;
      break;
    }
  }
  // With no frame there is no wave, and closing the empty record does nothing.
  CloseWave(&wave);
  return cancelled;
}

void WorkerJob() {
  char source[kJobPathBytes], target[kJobPathBytes];
  std::memcpy(source, g_source, sizeof source);
  std::memcpy(target, g_target, sizeof target);
  Mp3Input input;
  // A source that can't be decoded leaves the percentage at 0.
  if (input.Open(source)) {
    Reporting report;
    report.worker = true;
    if (DecodeAll(*input, target, report)) {
      env::Remove(target);
    } else {
      CopyFileTimes(source, target);
    }
    input.End();
    // 1000 comes last, once the target is final, so that a caller who sees
    // it may use the wave (or find it gone) at once.
    SetPercent(kJobEnded);
  }
}

}  // namespace

int32_t RoughSeconds(uint64_t startTicks, uint64_t endTicks) {
  const uint32_t low = static_cast<uint32_t>(endTicks) - static_cast<uint32_t>(startTicks);
  const uint32_t high = static_cast<uint32_t>(endTicks >> 32) - static_cast<uint32_t>(startTicks >> 32);
  return static_cast<int32_t>(low / 10000000u + 430u * high);
}

int Mp3ToWav(const char* mp3Path, const char* wavePath, int progressBar, int32_t* secondsOut) {
  const uint64_t start = platform::NowTicksSince1601();
  Mp3Input input;
  if (!input.Open(mp3Path)) return -1;
  host::SendMessage(progressBar, host::kProgressSetRange, 0, kPercentRange);
  host::SendMessage(progressBar, host::kProgressSetPos, 0, 0);
  Reporting report;
  report.bar = progressBar;
  DecodeAll(*input, wavePath, report);
  CopyFileTimes(mp3Path, wavePath);
  input.End();
  if (secondsOut != nullptr) *secondsOut = RoughSeconds(start, platform::NowTicksSince1601());
  return 0;
}

int StartMp3ToWavThread(const char* mp3Path, const char* wavePath) {
  // A second start overwrites the first job's paths and words: one job at
  // a time.
  CopyJobPath(g_source, mp3Path);
  CopyJobPath(g_target, wavePath);
  g_cancel.store(0);
  g_percent.store(0);
  return StartDetached(WorkerJob, &g_running) ? 1 : 0;
}

int Mp3ToWavPercentage() { return g_percent.load(); }

void CancelMp3ToWav() { g_cancel.store(1); }

int Mp3LengthInTime(const char* mp3Path) {
  Mp3Input input;
  if (!input.Open(mp3Path)) return 0;
  (*input).NextFrame();  // the duration is known after the first frame, whatever it gave
  return (*input).Stream().durationMs;
}

int ExtractMp3ToWav(const char* mp3Path, const char* wavePath, int startMs, int endMs, int thin) {
  Mp3Input input;
  if (!input.Open(mp3Path)) return -1;
  mpeg::Decoder& decoder = *input;
  // The block decoded before the seek stays and is the first one written:
  // the piece opens with a block of the beginning of the file.
  int r = decoder.NextFrame();
  decoder.Seek(static_cast<float>(startMs * 0.001f));
  WaveFileObj wave{};
  bool created = false;
  const unsigned char* samples = nullptr;
  int n = 0, bytes = 0, channels = 0, shift = 0;
  std::vector<unsigned char> thinned;
  int32_t elapsed = 0;
  for (; Retry(r) || r == mpeg::kOk; r = decoder.NextFrame()) {
    if (Retry(r)) continue;
    const mpeg::FrameInfo& f = decoder.Frame();
    if (!created) {
      samples = static_cast<const unsigned char*>(f.samples);
      n = f.samplesPerChannel;
      bytes = f.bytesPerSample;
      channels = f.channels;
      int rate = f.sampleRate;
      if (thin != 0) {
        while (rate > kThinnedRateLimit) {
          rate /= 2;
          n /= 2;
          ++shift;
        }
        if (channels == 2) ++shift;
      }
      InitWave(&wave, rate, bytes * 8, channels, wavePath);
      CreateWave(&wave);
      thinned.assign(static_cast<size_t>(n) * bytes, 0);
      created = true;
    }
    if (shift == 0) {
      WriteWave(&wave, samples, n * bytes * channels);
    } else if (channels == 1) {
      // Plain decimation, no filter.
      for (int i = 0; i < n; ++i) {
        std::memcpy(&thinned[static_cast<size_t>(i) * bytes], samples + (static_cast<size_t>(i) << shift) * bytes,
                    static_cast<size_t>(bytes));
      }
      WriteWave(&wave, thinned.data(), n * bytes);
    }
    // A thinned stereo piece gets no samples at all.
    elapsed = TruncateToInt(static_cast<double>(f.samplesPerChannel) / f.sampleRate * 1000 + elapsed);
    if (endMs >= 0 && static_cast<int64_t>(elapsed) + startMs >= endMs) break;
  }
  input.End();
  CloseWave(&wave);
  return 0;
}

bool Mp3ThreadRunningForTesting() { return g_running.load() > 0; }

void SetProgressObserverForTesting(void (*observer)(int percent)) { g_observer.store(observer); }

}  // namespace tq::sound
