#include "sound/digest.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/files.h"
#include "mpeg/decoder.h"
#include "platform/env.h"
#include "platform/host.h"
#include "sound/wave_file.h"
#include "sound/worker.h"

namespace tq::sound {
namespace {

constexpr int32_t kJobEnded = 1000;
constexpr int32_t kWholeFile = -1;  // the end of an interval that is the end of the file
constexpr int kMaxBlockMs = 1000;
// The immediate form reads a block at a time through 2,000 bytes; the
// worker through 4 bytes a sample and 100 to spare. A larger block is read
// in pieces, which gives the same bytes.
constexpr int64_t kImmediateBuffer = 2000;
constexpr int64_t kWorkerSpare = 100;
constexpr int64_t kLargestBuffer = 1 << 20;
constexpr int64_t kBarBlocks = 1024;
constexpr int kProgressStep = 10;

// The job's state. The caller and the worker share only 32-bit words; the
// paths are written before the worker starts and copied as it begins.
char g_source[kJobPathBytes];
char g_target[kJobPathBytes];
std::atomic<int32_t> g_blockMs{0};
std::atomic<int32_t> g_startMs{0};
std::atomic<int32_t> g_endMs{kWholeFile};
std::atomic<int32_t> g_cancel{0};
std::atomic<int32_t> g_percent{0};
std::atomic<int32_t> g_running{0};
std::atomic<void (*)(int)> g_observer{nullptr};

void SetPercent(int32_t percent) {
  g_percent.store(percent);
  if (auto observer = g_observer.load()) observer(percent);
}

// What a job works on, copied from the module's state as it begins.
struct JobSettings {
  char source[kJobPathBytes];
  char target[kJobPathBytes];
  int32_t blockMs, startMs, endMs;
};

JobSettings TakeSettings() {
  JobSettings s;
  std::memcpy(s.source, g_source, sizeof s.source);
  std::memcpy(s.target, g_target, sizeof s.target);
  s.blockMs = g_blockMs.load();
  s.startMs = g_startMs.load();
  s.endMs = g_endMs.load();
  return s;
}

// The end of a job that ran: a cancelled digest goes, a finished one takes
// the source's file times. 1000 comes last, once the digest is final, so
// that a caller who sees it may use the file (or find it gone) at once.
void FinishJob(const JobSettings& job, bool cancelled) {
  if (cancelled) {
    env::Remove(job.target);
  } else {
    CopyFileTimes(job.source, job.target);
  }
  SetPercent(kJobEnded);
}

// The amplitude of the sample at p: 8-bit, else the top two bytes as a
// signed 16-bit sample (the whole of a 16-bit one).
int AmplitudeAt(const unsigned char* p, int sampleBytes) {
  if (sampleBytes == 1) return Amplitude8(*p);
  const unsigned char* top = p + sampleBytes - 2;
  return Amplitude16(static_cast<int16_t>(top[0] | top[1] << 8));
}

// The blocks of an open wave, one after the other, read through a buffer
// of the size the caller gives.
class WaveBlocks {
 public:
  // False when the wave's samples or blockMs make no block.
  bool Init(const TqWaveFormat& format, int64_t blockSamples, int64_t bufferBytes) {
    sample_bytes_ = format.bitsPerSample / 8;
    if (blockSamples < 1 || sample_bytes_ < 1) return false;
    const int64_t frame = static_cast<int64_t>(sample_bytes_) * format.channels;
    block_bytes_ = blockSamples * frame;
    // Pieces of whole frames, so that a sample never straddles two.
    int64_t piece = std::max(frame, std::min(bufferBytes, kLargestBuffer) / frame * frame);
    buffer_.resize(static_cast<size_t>(std::min(piece, block_bytes_)));
    return true;
  }

  // The bytes of the next block (the last may be short; 0 at the end), and
  // in *amplitude that of the last whole sample among them (0 for none).
  int64_t Next(WaveFileObj* wave, int* amplitude) {
    int64_t got = 0;
    *amplitude = 0;
    while (got < block_bytes_) {
      const int want = static_cast<int>(std::min<int64_t>(static_cast<int64_t>(buffer_.size()), block_bytes_ - got));
      const int n = ReadWave(wave, buffer_.data(), want);
      if (n <= 0) break;
      // Pieces before this one were whole samples: a short piece without
      // a whole sample leaves the last one where it was.
      if (n >= sample_bytes_) *amplitude = AmplitudeAt(&buffer_[static_cast<size_t>(n / sample_bytes_ - 1) * sample_bytes_], sample_bytes_);
      got += n;
      if (n < want) break;
    }
    return got;
  }

 private:
  int sample_bytes_ = 0;
  int64_t block_bytes_ = 0;
  std::vector<unsigned char> buffer_;
};

// Where a wave digest tells its progress: a progress bar every 1,024
// blocks, or the worker's percentage on each block (which brings the
// cancel word along).
struct Reporting {
  int bar = 0;
  bool worker = false;
};

// The digest of a whole wave: the number of blocks, or -1 when the wave
// will not open, makes no block, or the digest can't be made.
int64_t DigestOfWave(const char* wavePath, const char* digestPath, int blockMs, const Reporting& report,
                     bool* cancelled) {
  *cancelled = false;
  WaveFileObj wave{};
  SetWaveFileName(&wave, wavePath);
  if (OpenWaveToRead(&wave) != 1) return -1;
  const int64_t block_samples = BlockSamples(wave.format.samplesPerSecond, blockMs);
  const int64_t buffer = report.worker ? block_samples * 4 + kWorkerSpare : kImmediateBuffer;
  WaveBlocks blocks;
  std::FILE* digest = nullptr;
  if (!blocks.Init(wave.format, block_samples, buffer) || (digest = env::Open(digestPath, "wb")) == nullptr) {
    CloseWave(&wave);
    return -1;
  }
  int64_t bytes_read = 0, count = 0, shown = 0;
  int amplitude = 0;
  for (int64_t n; (n = blocks.Next(&wave, &amplitude)) > 0;) {
    bytes_read += n;
    ++count;
    // A block was read, so the data size is above 0.
    if (report.worker) {
      const int32_t percent = TruncateToInt(bytes_read * 100.0 / wave.dataSize);
      if (percent > g_percent.load()) SetPercent(percent);
    } else if (count % kBarBlocks == 0) {
      const int64_t percent = bytes_read * 100 / wave.dataSize;
      if (percent > shown && report.bar != 0) {
        shown = percent;
        host::SendMessage(report.bar, host::kProgressSetPos, static_cast<intptr_t>(percent), 0);
      }
    }
    std::fputc(amplitude, digest);
    if (report.worker && g_cancel.load() != 0) {
      *cancelled = true;
      break;
    }
  }
  std::fclose(digest);
  CloseWave(&wave);
  return count;
}

bool EndsWithWav(const char* path) {
  const size_t n = std::strlen(path);
  if (n < 4) return false;
  const char* tail = path + n - 4;
  const char wav[] = ".wav";
  for (int i = 0; i < 4; ++i) {
    char c = tail[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != wav[i]) return false;
  }
  return true;
}

// An MP3 digest cut into blocks of blockSamples across frames: pending is
// how many samples of the current block earlier frames brought.
class Mp3Blocks {
 public:
  Mp3Blocks(std::FILE* digest, int blockMs) : digest_(digest), block_ms_(blockMs) {}

  // Appends a byte for each block that this frame completes; false when the
  // frame's rate makes no block.
  bool Add(const mpeg::FrameInfo& f) {
    const int64_t block_samples = BlockSamples(f.sampleRate, block_ms_);
    if (block_samples < 1 || f.samplesPerChannel < 0 || f.bytesPerSample < 1 || f.channels < 1) return false;
    const int64_t total = pending_ + f.samplesPerChannel;
    const auto* samples = static_cast<const unsigned char*>(f.samples);
    const int64_t frame_bytes = static_cast<int64_t>(f.bytesPerSample) * f.channels;
    for (int64_t j = 1; j <= total / block_samples; ++j) {
      // The block's last sample, of the first channel. A frame of another
      // rate may leave more pending than a block now holds: its blocks end
      // at this frame's first sample.
      const int64_t at = std::max<int64_t>(0, j * block_samples - pending_ - 1);
      std::fputc(AmplitudeAt(samples + at * frame_bytes, f.bytesPerSample), digest_);
    }
    pending_ = total % block_samples;
    return true;
  }

 private:
  std::FILE* digest_;
  int block_ms_;
  int64_t pending_ = 0;
};

void RunWaveJob() { WaveDigestJob(); }
void RunMp3Job() { Mp3DigestJob(); }

}  // namespace

int Amplitude8(uint8_t sample) { return sample <= 128 ? 128 - sample : sample - 128; }

int Amplitude16(int16_t sample) {
  // The shift rounds toward minus infinity: -1 gives 1, +1 gives 0.
  const int shifted = sample >> 8;
  return shifted < 0 ? -shifted : shifted;
}

int64_t BlockSamples(int64_t rate, int blockMs) {
  if (blockMs < 1 || blockMs > kMaxBlockMs || rate < 0) return 0;
  return rate / (kMaxBlockMs / blockMs);
}

int MakeWaveDigest(const char* wavePath, const char* digestPath, int blockMs, int progressBar) {
  Reporting report;
  report.bar = progressBar;
  bool cancelled = false;
  const int64_t blocks = DigestOfWave(wavePath, digestPath, blockMs, report, &cancelled);
  if (blocks < 0) return -1;
  return static_cast<int>(std::min<int64_t>(blocks * blockMs, INT32_MAX));
}

int InitDigestJob(const char* sourcePath, const char* digestPath, int blockMs) {
  CopyJobPath(g_source, sourcePath);
  CopyJobPath(g_target, digestPath);
  g_blockMs.store(blockMs);
  g_cancel.store(0);
  g_percent.store(0);
  g_startMs.store(0);
  g_endMs.store(kWholeFile);
  return 0;
}

int SetDigestInterval(int startMs, int endMs) {
  g_startMs.store(startMs);
  g_endMs.store(endMs);
  return startMs;
}

int StartDigestThread() {
  // The last four characters decide: ".wav" in either case is a wave job,
  // anything else an MP3 job.
  void (*job)() = EndsWithWav(g_source) ? RunWaveJob : RunMp3Job;
  return StartDetached(job, &g_running) ? 1 : 0;
}

int WaveDigestJob() {
  const JobSettings job = TakeSettings();
  Reporting report;
  report.worker = true;
  bool cancelled = false;
  // A wave that will not open leaves the percentage at 0. The interval
  // plays no part: a wave digest covers the whole file.
  if (DigestOfWave(job.source, job.target, job.blockMs, report, &cancelled) < 0) return -1;
  FinishJob(job, cancelled);
  return 1;
}

int Mp3DigestJob() {
  const JobSettings job = TakeSettings();
  // A block length that makes no block is refused before anything is made.
  if (BlockSamples(INT32_MAX, job.blockMs) < 1) return -1;
  Mp3Input input;
  if (!input.Open(job.source)) return -1;
  std::FILE* digest = env::Open(job.target, "wb");
  if (digest == nullptr) return -1;
  mpeg::Decoder& decoder = *input;
  // The duration is known after the first frame.
  decoder.NextFrame();
  const int64_t span = job.endMs == kWholeFile ? decoder.Stream().durationMs
                                               : static_cast<int64_t>(job.endMs) - job.startMs;
  decoder.Seek(static_cast<float>(job.startMs * 0.001f));

  Mp3Blocks blocks(digest, job.blockMs);
  int32_t processed_ms = 0;
  int next_step = kProgressStep;
  bool cancelled = false;
  for (;;) {
    const int r = decoder.NextFrame();
    if (Retry(r)) continue;
    if (r != mpeg::kOk) break;
    const mpeg::FrameInfo& f = decoder.Frame();
    if (!blocks.Add(f)) break;
    processed_ms = TruncateToInt(static_cast<double>(f.samplesPerChannel) / f.sampleRate * 1000 + processed_ms);
    if (job.endMs != kWholeFile && static_cast<int64_t>(job.startMs) + processed_ms >= job.endMs) break;
    // Steps of ten, never beyond 100; a span that is unknown moves nothing.
    while (span > 0 && next_step <= 100 && processed_ms * 100.0 / static_cast<double>(span) >= next_step) {
      SetPercent(next_step);
      next_step += kProgressStep;
    }
    if (g_cancel.load() != 0) {
      cancelled = true;
      break;
    }
  }
  input.End();
  std::fclose(digest);
  FinishJob(job, cancelled);
  return 0;
}

int DigestPercentage() { return g_percent.load(); }

void CancelDigest() { g_cancel.store(1); }

bool DigestThreadRunningForTesting() { return g_running.load() > 0; }

void SetDigestObserverForTesting(void (*observer)(int percent)) { g_observer.store(observer); }

}  // namespace tq::sound
