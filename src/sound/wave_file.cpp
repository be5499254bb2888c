#include "sound/wave_file.h"

#include <climits>
#include <cmath>
#include <cstring>

#include "core/streams.h"
#include "platform/env.h"
#include "sound/riff.h"

namespace tq::sound {
namespace {

constexpr int kFormatBytes = 16;
// Time seeks take the samples to begin here, whatever the real header.
constexpr int kAssumedDataStart = 64;
// Created waves are written in large blocks: the decoders hand over a frame
// at a time.
constexpr size_t kWriteBuffer = 64 * 1024;

void PutFormat(const TqWaveFormat& f, unsigned char* p) {
  auto put16 = [&](int at, uint16_t v) {
    p[at] = static_cast<unsigned char>(v);
    p[at + 1] = static_cast<unsigned char>(v >> 8);
  };
  auto put32 = [&](int at, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[at + i] = static_cast<unsigned char>(v >> (8 * i));
  };
  put16(0, f.formatTag);
  put16(2, f.channels);
  put32(4, f.samplesPerSecond);
  put32(8, f.averageBytesPerSecond);
  put16(12, f.blockAlign);
  put16(14, f.bitsPerSample);
}

TqWaveFormat TakeFormat(const unsigned char* p) {
  auto get16 = [&](int at) { return static_cast<uint16_t>(p[at] | p[at + 1] << 8); };
  auto get32 = [&](int at) {
    return static_cast<uint32_t>(p[at]) | static_cast<uint32_t>(p[at + 1]) << 8 |
           static_cast<uint32_t>(p[at + 2]) << 16 | static_cast<uint32_t>(p[at + 3]) << 24;
  };
  TqWaveFormat f;
  f.formatTag = get16(0);
  f.channels = get16(2);
  f.samplesPerSecond = get32(4);
  f.averageBytesPerSecond = get32(8);
  f.blockAlign = get16(12);
  f.bitsPerSample = get16(14);
  return f;
}

std::FILE* File(const WaveFileObj* wave) { return StreamFile(wave->handle); }

int SeekAndTell(WaveFileObj* wave, int64_t offset, int origin) {
  std::FILE* f = File(wave);
  if (f == nullptr || offset < LONG_MIN || offset > LONG_MAX) return -1;
  if (std::fseek(f, static_cast<long>(offset), origin) != 0) return -1;
  long at = std::ftell(f);
  return at < 0 || at > INT_MAX ? -1 : static_cast<int>(at);
}

// The checks of a wave being opened; false leaves the file to be closed.
bool FindChunks(std::FILE* f, WaveFileObj* wave) {
  if (!DescendHere(f, &wave->riffChunk) || wave->riffChunk.id != kRiff || wave->riffChunk.formType != kWave) {
    return false;
  }
  if (!DescendTo(f, &wave->dataChunk, kFmt) || wave->dataChunk.size < kFormatBytes) return false;
  unsigned char block[kFormatBytes];
  if (std::fread(block, 1, kFormatBytes, f) != kFormatBytes) return false;
  wave->format = TakeFormat(block);
  // Only the channels are checked: a compressed wave passes.
  if (wave->format.channels != 1 && wave->format.channels != 2) return false;
  if (!Ascend(f, &wave->dataChunk) || !DescendTo(f, &wave->dataChunk, kData)) return false;
  wave->dataSize = static_cast<int32_t>(wave->dataChunk.size);
  wave->dataOffset = static_cast<int32_t>(wave->dataChunk.dataOffset);
  return true;
}

// A record of our own for the whole-file queries, open on path.
bool OpenTemporary(const char* path, WaveFileObj* wave) {
  std::memset(wave, 0, sizeof *wave);
  SetWaveFileName(wave, path);
  return OpenWaveToRead(wave) == 1;
}

}  // namespace

void SetWaveFileName(WaveFileObj* wave, const char* path) {
  size_t n = path == nullptr ? 0 : std::strlen(path);
  if (n >= sizeof wave->fileName) n = sizeof wave->fileName - 1;
  if (n > 0) std::memmove(wave->fileName, path, n);
  wave->fileName[n] = '\0';
}

int32_t TruncateToInt(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return INT32_MIN;
  return static_cast<int32_t>(value);
}

int32_t BytesPerSecond(const TqWaveFormat& f) {
  uint32_t product = static_cast<uint32_t>(f.channels) * f.samplesPerSecond * f.bitsPerSample;
  return static_cast<int32_t>(product) / 8;
}

int InitWave(WaveFileObj* wave, int samplesPerSecond, int bits, int channels, const char* fileName) {
  SetWaveFileName(wave, fileName);
  TqWaveFormat& f = wave->format;
  f.formatTag = 1;
  f.channels = static_cast<uint16_t>(channels);
  f.samplesPerSecond = static_cast<uint32_t>(samplesPerSecond);
  f.averageBytesPerSecond = static_cast<uint32_t>(bits / 8) * static_cast<uint32_t>(samplesPerSecond) *
                            static_cast<uint32_t>(channels);
  f.blockAlign = static_cast<uint16_t>((bits / 8) * channels);
  f.bitsPerSample = static_cast<uint16_t>(bits);
  return f.blockAlign;
}

int CreateWave(WaveFileObj* wave) {
  std::memset(&wave->dataChunk, 0, sizeof wave->dataChunk);
  std::memset(&wave->riffChunk, 0, sizeof wave->riffChunk);
  wave->handle = StreamOpen(wave->fileName, "w+b");
  std::FILE* f = File(wave);
  if (f == nullptr) return 0;
  std::setvbuf(f, nullptr, _IOFBF, kWriteBuffer);
  wave->riffChunk.id = kRiff;
  wave->riffChunk.formType = kWave;
  if (!CreateChunk(f, &wave->riffChunk)) return 0;
  wave->dataChunk.id = kFmt;
  wave->dataChunk.size = kFormatBytes;
  unsigned char block[kFormatBytes];
  PutFormat(wave->format, block);
  if (!CreateChunk(f, &wave->dataChunk) || std::fwrite(block, 1, kFormatBytes, f) != kFormatBytes ||
      !Ascend(f, &wave->dataChunk)) {
    return 0;
  }
  wave->dataChunk = TqChunkInfo{kData, 0, 0, 0, 0};
  if (!CreateChunk(f, &wave->dataChunk)) return 0;
  // The header reaches the disk now, so that a wave whose writer never
  // closes it still opens, with sizes 0.
  std::fflush(f);
  return 1;
}

int OpenWaveToRead(WaveFileObj* wave) {
  wave->handle = StreamOpen(wave->fileName, "rb");
  std::FILE* f = File(wave);
  if (f == nullptr) return -1;
  if (FindChunks(f, wave)) return 1;
  // The number stays in handle, stale: callers know not to close it.
  StreamClose(wave->handle);
  return -1;
}

int ReadWave(WaveFileObj* wave, void* buffer, int count) {
  std::FILE* f = File(wave);
  if (f == nullptr || buffer == nullptr) return 0;
  long at = std::ftell(f);
  if (at < 0) return 0;
  // The limit compares the absolute position with the data size; the data
  // offset is not added, and every reader of waves here counts on that.
  int64_t n = count;
  if (static_cast<int64_t>(at) + n > wave->dataSize) n = static_cast<int64_t>(wave->dataSize) - at;
  if (n < 1) return 0;
  return static_cast<int>(std::fread(buffer, 1, static_cast<size_t>(n), f));
}

int WriteWave(WaveFileObj* wave, const void* buffer, int count) {
  std::FILE* f = File(wave);
  if (f == nullptr || count < 0 || (buffer == nullptr && count > 0)) return -1;
  return static_cast<int>(std::fwrite(buffer, 1, static_cast<size_t>(count), f));
}

int CloseWave(WaveFileObj* wave) {
  if (wave->handle == 0) return 0;
  if (std::FILE* f = File(wave)) {
    Ascend(f, &wave->dataChunk);
    Ascend(f, &wave->riffChunk);
  }
  int result = StreamClose(wave->handle);
  wave->handle = 0;
  return result;
}

int CurrentTimePos(const WaveFileObj* wave) {
  std::FILE* f = File(wave);
  long at = f == nullptr ? 0 : std::ftell(f);
  int32_t from_data = static_cast<int32_t>(static_cast<uint32_t>(at) - static_cast<uint32_t>(wave->dataOffset));
  return TruncateToInt(from_data * 1000.0 / BytesPerSecond(wave->format));
}

int SeekByTime(WaveFileObj* wave, int ms) {
  return SeekAndTell(wave, TimeOffsetToByteOffset(wave->format, ms), SEEK_SET);
}

int SeekByByte(WaveFileObj* wave, int offset) {
  return SeekAndTell(wave, static_cast<int64_t>(wave->dataOffset) + offset, SEEK_SET);
}

int SeekByBytes(WaveFileObj* wave, int offset, int origin) {
  if (origin == 0) return SeekByByte(wave, offset);
  // Any origin but 0 and 1 is the end of the whole file, not of the data.
  return SeekAndTell(wave, offset, origin == 1 ? SEEK_CUR : SEEK_END);
}

int ByteLenToTimeLen(const TqWaveFormat& format, int bytes) {
  return TruncateToInt(bytes * 1000.0 / BytesPerSecond(format));
}

int TimeLenToByteLen(const TqWaveFormat& format, int ms) {
  int32_t bytes = TruncateToInt(BytesPerSecond(format) * 0.001 * ms);
  // Even, for whole 16-bit mono samples.
  if (bytes % 2 != 0) bytes += bytes > 0 ? -1 : 1;
  return bytes;
}

int TimeOffsetToByteOffset(const TqWaveFormat& format, int ms) {
  return static_cast<int32_t>(static_cast<uint32_t>(TimeLenToByteLen(format, ms)) + kAssumedDataStart);
}

int GetFormat(const char* path, TqWaveFormat* format) {
  WaveFileObj wave;
  if (!OpenTemporary(path, &wave)) return -1;
  *format = wave.format;
  CloseWave(&wave);
  return 1;
}

int GetParameters(const char* path, int32_t* para) {
  std::FILE* plain = env::Open(path, "rb");
  if (plain == nullptr) return -1;
  std::fclose(plain);
  WaveFileObj wave;
  if (!OpenTemporary(path, &wave)) return -1;
  const TqWaveFormat& f = wave.format;
  para[0] = f.channels;
  para[1] = f.bitsPerSample;
  para[2] = static_cast<int32_t>(f.samplesPerSecond);
  para[3] = wave.dataSize;
  para[4] = TruncateToInt(wave.dataSize * 1000.0 / BytesPerSecond(f));
  CloseWave(&wave);
  return 1;
}

int LengthInTime(const char* path) {
  int32_t para[5];
  return GetParameters(path, para) == 1 ? para[4] : -1;
}

}  // namespace tq::sound
