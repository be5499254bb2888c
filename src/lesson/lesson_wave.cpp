#include "lesson/lesson_wave.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "lesson/lyrics.h"
#include "platform/env.h"
#include "sound/wave_convert.h"
#include "sound/wave_file.h"

namespace tq::lesson {
namespace {

// Larger frames would not fit the reading buffer behind its block.
constexpr int kMaxFrameBytes = kReadBuffer - kReadBlock;
// The reading buffer is followed by zeros that the conversion may read:
// interpolation looks two frames past a piece, and a rate raised exactly
// twentyfold reads ten times as far as the piece it converts.
constexpr int kReadArea = kReadBuffer + 4 * kReadBlock;
// Bytes a converted frame may take at most: 16-bit stereo to 8 bits counts
// eight.
constexpr int kMaxBytesPerOutFrame = 8;
// Silence is written from here.
constexpr unsigned char kZeros[4096] = {};

bool Sane(int bits, int channels, int rate) {
  return (bits == 8 || bits == 16) && (channels == 1 || channels == 2) && rate > 0;
}

}  // namespace

ChunkConverter::ChunkConverter(int srcBits, int srcChannels, int srcRate, const LessonFormat& to)
    : srcBits_(srcBits), srcChannels_(srcChannels), srcRate_(srcRate), to_(to) {
  if (!Sane(srcBits, srcChannels, srcRate) || !Sane(to.bits, to.channels, to.rate)) return;
  frameBytes_ = srcBits / 8 * srcChannels;
  // Frames of a piece whose output, even rounded up, fits the buffer.
  const double ratio = static_cast<double>(to.rate) / srcRate;
  const double frames = (kOutputBuffer / kMaxBytesPerOutFrame - 2) / std::max(ratio, 1.0);
  piece_ = static_cast<int>(std::min<double>(frames, kReadBlock));
}

int ChunkConverter::Piece(const unsigned char* src, int frames, unsigned char* out) const {
  return sound::BufferConvert(srcBits_, srcChannels_, srcRate_, to_.bits, to_.channels, to_.rate, src, out, frames,
                              0);
}

bool LessonWave::Create(const std::string& wavePath, const std::string& captionPath, const LessonFormat& format) {
  Close();
  format_ = format;
  bytesWritten_ = 0;
  out_ = WaveFileObj{};
  sound::InitWave(&out_, format.rate, format.bits, format.channels, wavePath.c_str());
  if (sound::CreateWave(&out_) != 1) {
    sound::CloseWave(&out_);
    return false;
  }
  captions_ = env::Open(captionPath.c_str(), "wb");
  return true;
}

void LessonWave::Close() {
  sound::CloseWave(&out_);
  if (captions_ != nullptr) std::fclose(captions_);
  captions_ = nullptr;
}

int32_t LessonWave::Now() const {
  return sound::ByteLenToTimeLen(out_.format, static_cast<int>(bytesWritten_));
}

bool LessonWave::Put(const void* bytes, int64_t count) {
  const int64_t room = kMaxLessonBytes - bytesWritten_;
  const int64_t n = std::min(count, room);
  if (n <= 0) return count <= 0;
  const int written = sound::WriteWave(&out_, bytes, static_cast<int>(n));
  if (written > 0) bytesWritten_ += written;
  return written == count;
}

int LessonWave::Append(const char* path, const std::string& caption) {
  if (path == nullptr) {
    if (!caption.empty()) WriteCaption(captions_, kNoTime, caption);
    return 1;
  }
  WaveFileObj in{};
  sound::SetWaveFileName(&in, path);
  if (sound::OpenWaveToRead(&in) != 1) return -1;
  const TqWaveFormat f = in.format;
  const int frame = f.bitsPerSample / 8 * f.channels;
  const bool same = f.bitsPerSample == format_.bits && static_cast<int64_t>(f.samplesPerSecond) == format_.rate &&
                    f.channels == format_.channels;
  const ChunkConverter converter(f.bitsPerSample, f.channels, static_cast<int>(f.samplesPerSecond), format_);
  if (f.bitsPerSample == 0 || frame < 1 || frame > kMaxFrameBytes || (!same && !converter.ok())) {
    sound::CloseWave(&in);
    return -1;
  }
  if (!caption.empty()) WriteCaption(captions_, Now(), caption);
  std::unique_ptr<unsigned char[]> read(new (std::nothrow) unsigned char[kReadArea]());
  std::unique_ptr<unsigned char[]> out(same ? nullptr : new (std::nothrow) unsigned char[kOutputBuffer]);
  if (read == nullptr || (!same && out == nullptr)) {
    sound::CloseWave(&in);
    return -1;
  }
  // One frame is held back at the buffer's start: the reading stays a frame
  // ahead of the writing, and the file's last frame is never written.
  sound::ReadWave(&in, read.get(), frame);
  int count = sound::ReadWave(&in, read.get() + frame, kReadBlock);
  bool writing = true;
  while (count > 0 && writing) {
    if (same) {
      writing = Put(read.get(), count);
    } else {
      converter.Convert(read.get(), count / frame, out.get(), [&](const unsigned char* bytes, int n) {
        return writing = Put(bytes, n);
      });
    }
    std::memmove(read.get(), read.get() + count, static_cast<size_t>(frame));
    count = sound::ReadWave(&in, read.get() + frame, kReadBlock);
  }
  sound::CloseWave(&in);
  return 1;
}

void LessonWave::AppendSilence(int32_t ms) {
  if (ms == 0) return;
  const int32_t samples = sound::TruncateToInt(static_cast<double>(format_.rate) * static_cast<double>(ms) *
                                               static_cast<double>(0.001f));
  // In floating point: the header's numbers may be anything, and the lesson
  // stops at its limit anyway.
  const double bytes = static_cast<double>(samples) * (format_.bits / 8) * format_.channels;
  int64_t left = bytes > 0 ? static_cast<int64_t>(std::min<double>(bytes, kMaxLessonBytes)) : 0;
  while (left > 0) {
    const int64_t n = std::min<int64_t>(left, sizeof kZeros);
    if (!Put(kZeros, n)) return;
    left -= n;
  }
}

}  // namespace tq::lesson
