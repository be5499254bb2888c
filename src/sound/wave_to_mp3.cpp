#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <new>
#include <vector>

#include "core/binary_io.h"
#include "platform/env.h"
#include "platform/host.h"
#include "sound/mp3_encoder.h"
#include "sound/wave_file.h"

namespace tq::sound {
namespace {

// The reader starts here whatever the wave's header: with the usual 44
// bytes the first 20 bytes of sound are not encoded, and anything behind
// the data is.
constexpr long kSkippedHeader = 64;
constexpr intptr_t kPercentRange = 100 << 16;
constexpr uint32_t kQualityHigh = 2;
constexpr uint32_t kMpeg1 = 1;

std::atomic<EncoderLoader> g_loader{nullptr};

struct EncoderFunctions {
  EncInitStreamFn init = nullptr;
  EncodeChunkFn encode = nullptr;
  DeinitStreamFn deinit = nullptr;
  CloseStreamFn close = nullptr;
  VersionFn version = nullptr;
  WriteVbrHeaderFn writeVbrHeader = nullptr;
};

template <class Fn>
bool Fetch(EncoderLibrary& library, const char* name, Fn* fn) {
  *fn = reinterpret_cast<Fn>(library.Find(name));
  return *fn != nullptr;
}

bool FetchAll(EncoderLibrary& lib, EncoderFunctions* f) {
  return Fetch(lib, "FrMp3EncInitStream", &f->init) && Fetch(lib, "FrMp3EncodeChunk", &f->encode) &&
         Fetch(lib, "FrMp3DeinitStream", &f->deinit) && Fetch(lib, "FrMp3CloseStream", &f->close) &&
         Fetch(lib, "FrMp3Version", &f->version) && Fetch(lib, "FrMp3WriteVBRHeader", &f->writeVbrHeader);
}

// The encoder's reports go to the standard streams, where a windowed front
// end loses them; the caller sees -1.
int Report(std::FILE* stream, const char* text, unsigned long number = 0) {
  std::fprintf(stream, text, number);
  std::fflush(stream);
  return -1;
}

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

void FillConfig(unsigned char* c, const TqWaveFormat& format, int bitrate) {
  std::fill(c, c + kEncoderConfigBytes, 0);
  auto put = [&](int offset, uint32_t value) { PutI32(c + offset, static_cast<int32_t>(value)); };
  put(kCfgKind, kConfigKind);
  put(kCfgVersion, 1);
  put(kCfgSize, kEncoderConfigBytes);
  put(kCfgSampleRate, format.samplesPerSecond);
  put(kCfgMode, format.channels == 1 ? kModeMono : kModeJointStereo);
  put(kCfgBitrate, static_cast<uint32_t>(bitrate));
  put(kCfgPreset, kQualityHigh);
  put(kCfgMpegVersion, kMpeg1);
  put(kCfgOriginal, 1);
  put(kCfgNoReservoir, 1);
}

// 8-bit samples read into the front of the buffer become 16-bit ones in
// place, from the last to the first.
void Widen(std::vector<int16_t>* buffer, size_t count) {
  const unsigned char* bytes = reinterpret_cast<const unsigned char*>(buffer->data());
  for (size_t i = count; i-- > 0;) (*buffer)[i] = static_cast<int16_t>((bytes[i] - 128) * 256);
}

// One conversion with the functions fetched: steps from the opening of the
// files on.
int Encode(const EncoderFunctions& fn, const char* wavePath, const char* mp3Path, int bitrate, int bar) {
  File in(env::Open(wavePath, "rb"));
  if (!in) return -1;
  File out(env::Open(mp3Path, "wb"));
  if (!out) return -1;
  TqWaveFormat format{};
  if (GetFormat(wavePath, &format) != 1) return -1;
  unsigned char config[kEncoderConfigBytes];
  FillConfig(config, format, bitrate);
  uint32_t chunk_samples = 0, out_capacity = 0, stream = 0;
  if (uint32_t err = fn.init(config, &chunk_samples, &out_capacity, &stream)) {
    return Report(stderr, "Error opening encoding stream (%lu)", err);
  }
  std::vector<unsigned char> encoded;
  std::vector<int16_t> samples;
  try {
    encoded.resize(out_capacity);
    samples.resize(chunk_samples);
  } catch (const std::bad_alloc&) {
    fn.close(stream);
    return Report(stdout, "Out of memory");
  }
  const long length = FileLength(in.get());
  std::fseek(in.get(), kSkippedHeader, SEEK_SET);
  host::SendMessage(bar, host::kProgressSetRange, 0, kPercentRange);
  host::SendMessage(bar, host::kProgressSetPos, 0, 0);
  const size_t width = format.bitsPerSample == 8 ? 1 : 2;
  uint64_t done = 0;
  int64_t shown = 0;
  uint32_t out_bytes = 0;
  auto write_out = [&]() { return std::fwrite(encoded.data(), 1, out_bytes, out.get()) == out_bytes; };
  for (size_t n; (n = std::fread(samples.data(), width, chunk_samples, in.get())) > 0;) {
    done += width * n;
    const int64_t percent = length > 0 ? std::min<int64_t>(100, static_cast<int64_t>(done * 100 / length)) : 100;
    // The bar moves in steps of ten.
    if (percent % 10 == 0 && percent > 0 && percent > shown) {
      host::SendMessage(bar, host::kProgressSetPos, static_cast<intptr_t>(percent), 0);
      shown = percent;
    }
    if (width == 1) Widen(&samples, n);
    out_bytes = 0;
    if (uint32_t err = fn.encode(stream, static_cast<uint32_t>(n), samples.data(), encoded.data(), &out_bytes)) {
      fn.close(stream);
      return Report(stderr, "FrMp3EncodeChunk() failed (%lu)", err);
    }
    if (!write_out()) {
      fn.close(stream);
      return Report(stderr, "Output file write error");
    }
  }
  out_bytes = 0;
  if (uint32_t err = fn.deinit(stream, encoded.data(), &out_bytes)) {
    fn.close(stream);
    // The text keeps the function's older name.
    return Report(stderr, "beExitStream failed (%lu)", err);
  }
  if (out_bytes != 0 && !write_out()) {
    fn.close(stream);
    return Report(stderr, "Output file write error");
  }
  fn.close(stream);
  in.reset();
  out.reset();
  fn.writeVbrHeader(mp3Path);
  return 1;
}

}  // namespace

void SetEncoderLoaderForTesting(EncoderLoader loader) { g_loader.store(loader); }

int EncodeWavToMp3(const char* wavePath, const char* mp3Path, int bitrate, int progressBar) {
  EncoderLoader load = g_loader.load();
  if (load == nullptr) load = LoadBuiltInEncoder;
  // Loaded for this call from the working directory, else its parent, and
  // released at its end.
  std::unique_ptr<EncoderLibrary> library = load("FrMp3Enc.dll");
  if (library == nullptr) library = load("..\\FrMp3Enc.dll");
  if (library == nullptr) return Report(stderr, "Error loading FrMp3Enc.dll");
  EncoderFunctions fn;
  if (!FetchAll(*library, &fn)) return Report(stdout, "Mp3 Dll Load Error");
  unsigned char version[kEncoderVersionBytes] = {0};
  fn.version(version);
  return Encode(fn, wavePath, mp3Path, bitrate, progressBar);
}

}  // namespace tq::sound
