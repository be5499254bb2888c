#include "sound/wave_convert.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/env.h"
#include "sound/wave_file.h"

namespace tq::sound {
namespace {

constexpr int kCopyBlock = 2048;

// A run of samples in a caller's buffer: 8-bit unsigned or 16-bit signed
// little-endian, read and written byte by byte so that any alignment and
// any overlap of source and target works.
class Samples {
 public:
  Samples(const void* base, int width)
      : p_(static_cast<unsigned char*>(const_cast<void*>(base))), width_(width) {}
  int Get(int64_t i) const {
    if (width_ == 1) return p_[i];
    return static_cast<int16_t>(static_cast<uint16_t>(p_[2 * i] | p_[2 * i + 1] << 8));
  }
  void Set(int64_t i, int v) const {
    if (width_ == 1) {
      p_[i] = static_cast<unsigned char>(v);
    } else {
      p_[2 * i] = static_cast<unsigned char>(v);
      p_[2 * i + 1] = static_cast<unsigned char>(static_cast<unsigned>(v) >> 8);
    }
  }
  unsigned char* bytes() const { return p_; }

 private:
  unsigned char* p_;
  int width_;
};

int Width(int bits) { return bits == 8 ? 1 : 2; }

// 8-bit sound is unsigned around 128; widened it is signed around 0.
int Widen(int byte) { return (byte - 128) * 256; }

}  // namespace

int ExtractSegment(const char* srcPath, const char* dstPath, int startMs, int endMs, void* buffer, int bufferSize) {
  TqWaveFormat format{};
  GetFormat(srcPath, &format);  // a source that fails here fails to open below
  WaveFileObj reader{}, writer{};
  SetWaveFileName(&reader, srcPath);
  SetWaveFileName(&writer, dstPath);
  reader.format = writer.format = format;
  // The limit goes through the time offset, so every cut carries its 64
  // bytes beyond the span asked for.
  const bool limited = endMs >= 0;
  const int64_t limit = limited ? TimeOffsetToByteOffset(format, endMs - startMs + 1) : 0;
  if (OpenWaveToRead(&reader) != 1) return -1;
  CreateWave(&writer);
  SeekByTime(&reader, startMs);
  std::vector<unsigned char> own;
  if (buffer == nullptr) {
    own.assign(kCopyBlock, 0);
    buffer = own.data();
    bufferSize = kCopyBlock;
  }
  int64_t total = 0;
  for (int n; (n = ReadWave(&reader, buffer, bufferSize)) > 0;) {
    if (limited && total + n > limit) {
      WriteWave(&writer, buffer, static_cast<int>(limit - total));
      break;
    }
    WriteWave(&writer, buffer, n);
    total += n;
    if (limited && total >= limit) break;
  }
  CloseWave(&reader);
  CloseWave(&writer);
  return 1;
}

int StereoToMono(const char* srcPath, const char* dstPath) {
  std::vector<unsigned char> buffer(kCopyBlock, 0);
  WaveFileObj reader{};
  SetWaveFileName(&reader, srcPath);
  if (OpenWaveToRead(&reader) != 1) return -1;
  if (reader.format.channels == 1) {
    CloseWave(&reader);
    env::CopyFile(srcPath, dstPath);
    return 2;
  }
  WaveFileObj writer = reader;
  SetWaveFileName(&writer, dstPath);
  writer.format.channels = 1;
  writer.format.averageBytesPerSecond /= 2;
  writer.format.blockAlign /= 2;
  CreateWave(&writer);
  const bool eight = reader.format.bitsPerSample == 8;
  // The whole block is mixed and half of it written whatever the read gave,
  // so the target grows by 1,024 bytes a read and the last write carries
  // bytes of the block before.
  while (ReadWave(&reader, buffer.data(), kCopyBlock) > 0) {
    Samples s(buffer.data(), eight ? 1 : 2);
    if (eight) {
      for (int k = 0; k < kCopyBlock / 2; ++k) s.Set(k, (s.Get(2 * k) + s.Get(2 * k + 1)) >> 1);
    } else {
      for (int i = 0; i < 1023; i += 2) s.Set(i / 2, (s.Get(i) + s.Get(i + 1)) / 2);
    }
    WriteWave(&writer, buffer.data(), kCopyBlock / 2);
  }
  CloseWave(&reader);
  return CloseWave(&writer);
}

void Buffer8To16(const uint8_t* src, int16_t* dst, int count) {
  Samples in(src, 1), out(dst, 2);
  // Element 0 is not converted.
  for (int i = count - 1; i >= 1; --i) out.Set(i, Widen(in.Get(i)));
}

void BufferMonoToStereo(int bits, const void* src, void* dst, int frames) {
  Samples in(src, Width(bits)), out(dst, Width(bits));
  for (int64_t i = 2 * static_cast<int64_t>(frames) - 1; i >= 1; --i) out.Set(i, in.Get(i / 2));
}

void BufferAmplifyRate(int bits, int channels, int factor, const void* src, void* dst, int frames) {
  const int64_t n = frames;
  if (bits == 16 && channels == 1 && factor == 2) {
    Samples in(src, 2), out(dst, 2);
    for (int64_t j = n - 1; j >= 1; --j) {
      out.Set(2 * j, in.Get(j));
      out.Set(2 * j + 1, (in.Get(j + 1) + in.Get(j)) / 2);
    }
  } else if ((bits == 8 || bits == 16) && channels == 2 && factor == 2) {
    Samples in(src, Width(bits)), out(dst, Width(bits));
    for (int64_t i = 4 * n - 1; i >= 1; --i) {
      if (i % 4 < 2) {
        out.Set(i, in.Get(i / 2 + i % 2));
      } else {
        int64_t m = (i + 1) / 2;
        out.Set(i, (in.Get(m - 1) + in.Get(m + 1)) / 2);
      }
    }
  } else if (bits == 16 && channels == 2 && factor == 4) {
    Samples in(src, 2), out(dst, 2);
    auto four = [&](int64_t e, int64_t first) {
      int s = in.Get(e), d = in.Get(e + 2) - s;
      out.Set(first, s);
      out.Set(first + 2, s + d / 4);
      out.Set(first + 4, s + d / 2);
      out.Set(first + 6, s + 3 * d / 4);
    };
    // The left pass stops before frame 0; the right one includes it.
    for (int64_t e = 2 * n - 2; e >= 2; e -= 2) four(e, 4 * e);
    for (int64_t e = 2 * n - 1; e >= 1; e -= 2) four(e, 4 * e - 3);
  }
}

int Resample(int bits, int channels, int rateIn, int rateOut, const void* src, void* dst, int frames) {
  const int64_t step = TruncateToInt(static_cast<double>(rateIn) / rateOut * 2048.0);
  const int64_t out_frames = TruncateToInt(static_cast<double>(rateOut) / rateIn * frames);
  const int result = static_cast<int>(out_frames * bits / 8 * channels);
  if (rateIn == rateOut || out_frames <= 0) return result;
  Samples in(src, Width(bits)), out(dst, Width(bits));
  if (static_cast<int64_t>(rateOut) == 20 * static_cast<int64_t>(rateIn)) {
    // Counted in elements, not frames, even in stereo: a settled factor.
    for (int64_t i = 0; i < out_frames; ++i) {
      const int64_t h = i / 2;
      int v;
      if (channels == 1) {
        v = i % 2 == 0 ? in.Get(h) : (in.Get(h) + in.Get(h + 1)) / 2;
      } else {
        switch (i % 4) {
          case 0: v = in.Get(h); break;
          case 1: v = in.Get(h + 1); break;
          case 2: v = (in.Get(h - 1) + in.Get(h + 1)) / 2; break;
          default: v = (in.Get(h) + in.Get(h + 2)) / 2; break;
        }
      }
      out.Set(i, v);
    }
    return result;
  }
  // Linear interpolation in 11-bit fixed point; the first output lies one
  // step into the input.
  int64_t pos = 0;
  for (int64_t o = 0; o < out_frames; ++o) {
    pos += step;
    const int64_t idx = pos >> 11;
    const int f = static_cast<int>(pos & 2047);
    for (int c = 0; c < channels; ++c) {
      const int s = in.Get(idx * channels + c), t = in.Get((idx + 1) * channels + c);
      out.Set(o * channels + c, (s * 2048 - (s - t) * f) >> 11);
    }
  }
  return result;
}

int BufferConvert(int srcBits, int srcChannels, int srcRate, int dstBits, int dstChannels, int dstRate,
                  const void* src, void* dst, int frames, int scratchSize) {
  if (srcBits == dstBits && srcChannels == dstChannels && srcRate == dstRate) return -1;
  auto sane = [](int bits, int channels, int rate) {
    return (bits == 8 || bits == 16) && (channels == 1 || channels == 2) && rate > 0;
  };
  if (!sane(srcBits, srcChannels, srcRate) || !sane(dstBits, dstChannels, dstRate) || frames < 0) return -1;
  const int width = Width(srcBits);
  const unsigned char* source = static_cast<const unsigned char*>(src);
  unsigned char* target = static_cast<unsigned char*>(dst);
  int64_t n = frames;
  int64_t bytes;
  const unsigned char* cur;
  unsigned char* other;
  std::vector<unsigned char> scratch;
  if (srcRate != dstRate) {
    bytes = Resample(srcBits, srcChannels, srcRate, dstRate, src, dst, frames);
    n = bytes / width / srcChannels;
    cur = target;
  } else {
    bytes = n;  // a count of frames, not of bytes; every later step sets its own
    cur = source;
  }
  // Room for the largest step and for the copy of its byte count below.
  scratch.assign(static_cast<size_t>(std::max<int64_t>(scratchSize, n * 8 + 16)), 0);
  other = cur == target ? scratch.data() : target;
  // After a step the buffers change places; src is never written, scratch
  // stands in for it.
  auto swap = [&]() {
    const unsigned char* done = other;
    other = cur == source ? scratch.data() : const_cast<unsigned char*>(cur);
    cur = done;
  };
  if (srcChannels != dstChannels) {
    Samples in(cur, width), out(other, width);
    if (srcChannels == 1) {
      for (int64_t i = 2 * n - 1; i >= 0; --i) out.Set(i, in.Get(i / 2));
    } else {
      for (int64_t i = 0; i < n; ++i) out.Set(i, in.Get(2 * i));  // the first channel, unmixed
    }
    bytes = n * dstChannels * width;
    swap();
  }
  if (srcBits != dstBits) {
    const int64_t count = n * dstChannels;
    if (srcBits == 8) {
      Samples in(cur, 1), out(other, 2);
      for (int64_t i = count - 1; i >= 0; --i) out.Set(i, Widen(in.Get(i)));
      bytes = dstChannels == 1 ? n * 2 : n * 4;
    } else {
      Samples in(cur, 2), out(other, 1);
      // The high byte as it is, without the 128 of unsigned 8-bit sound.
      for (int64_t i = 0; i < count; ++i) out.Set(i, static_cast<uint16_t>(in.Get(i)) >> 8);
      // More than was made; the copy below takes this many bytes all the same.
      bytes = dstChannels == 1 ? n * 2 : n * 8;
    }
    swap();
  }
  if (cur != target && bytes > 0) std::memmove(target, cur, static_cast<size_t>(bytes));
  return static_cast<int>(bytes);
}

}  // namespace tq::sound
