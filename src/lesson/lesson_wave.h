// The wave of a lesson being written, with its caption file: sound files
// appended one after another in the lesson's format, silence, and the
// caption of each sound at the moment it begins.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "tqcomm2006.h"

namespace tq::lesson {

// Bytes of the reading and output buffers of an append: a block of 8192
// bytes behind the frame held back, and room for it converted.
constexpr int kReadBlock = 8192;
constexpr int kReadBuffer = kReadBlock + 8;
constexpr int kOutputBuffer = 196612;
// The lesson stops growing here: the wave readers count data in 32 bits.
constexpr int64_t kMaxLessonBytes = INT32_MAX;

// The lesson's format as the script's header gives it: the wave's header
// takes 16-bit fields, silence is counted in the header's own numbers.
struct LessonFormat {
  int32_t bits = 0;
  int32_t rate = 0;
  int32_t channels = 0;
};

class LessonWave {
 public:
  LessonWave() = default;
  LessonWave(const LessonWave&) = delete;
  LessonWave& operator=(const LessonWave&) = delete;
  ~LessonWave() { Close(); }

  // Creates the wave; false when it can't be created. The caption file is
  // created beside it; whether it could be is not looked at.
  bool Create(const std::string& wavePath, const std::string& captionPath, const LessonFormat& format);
  // Appends a wave file converted to the lesson's format, the caption (if
  // not empty) timed at its start. One frame is read ahead of the writing,
  // so the file's last frame is never written. With no file the caption
  // goes in with no time. 1, or -1 when the file won't open as a wave or
  // holds samples of no size or of more than 8 bytes a frame, or of a
  // format that can't be converted to the lesson's (nothing is written).
  int Append(const char* path, const std::string& caption);
  // Zero bytes for the milliseconds (rate x ms x the single-precision
  // 0.001, truncated; times bytes a sample and channels). Nothing for a
  // count of 0 or below.
  void AppendSilence(int32_t ms);
  void Close();

  int64_t bytesWritten() const { return bytesWritten_; }

 private:
  // Writes to the lesson, at most up to its limit; false on a short write.
  bool Put(const void* bytes, int64_t count);
  int32_t Now() const;

  WaveFileObj out_{};
  LessonFormat format_;
  std::FILE* captions_ = nullptr;
  int64_t bytesWritten_ = 0;
};

// Converts frames of samples in one format to another with the sound
// library's buffer conversion, in pieces small enough for the output
// buffer. The source must stay readable for the conversion's look-ahead:
// see kReadArea in lesson_wave.cpp.
class ChunkConverter {
 public:
  ChunkConverter(int srcBits, int srcChannels, int srcRate, const LessonFormat& to);
  // Whether both formats are 8- or 16-bit mono or stereo PCM at positive
  // rates and one frame converted fits the output buffer.
  bool ok() const { return piece_ > 0; }
  // Converts frames frames from src, handing each piece to sink(bytes, n).
  template <class Sink>
  void Convert(const unsigned char* src, int frames, unsigned char* out, Sink sink) const;

 private:
  int Piece(const unsigned char* src, int frames, unsigned char* out) const;

  int srcBits_, srcChannels_, srcRate_;
  LessonFormat to_;
  int frameBytes_ = 0;
  int piece_ = 0;  // frames a piece
};

template <class Sink>
void ChunkConverter::Convert(const unsigned char* src, int frames, unsigned char* out, Sink sink) const {
  for (int done = 0; done < frames; done += piece_) {
    const int n = frames - done < piece_ ? frames - done : piece_;
    const int bytes = Piece(src + static_cast<size_t>(done) * frameBytes_, n, out);
    if (bytes > 0 && !sink(out, bytes)) return;
  }
}

}  // namespace tq::lesson
