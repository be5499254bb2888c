// The MP3 encoder as the wave-to-MP3 conversion loads it: a library found
// by name at the moment of each conversion, whose six functions are fetched
// by name. The library built in is the encoder on LAME; tests load others.
#pragma once

#include <cstdint>
#include <memory>

namespace tq::sound {

// The configuration record handed to the encoder, and the version record.
constexpr int kEncoderConfigBytes = 331;
constexpr int kEncoderVersionBytes = 265;

// Offsets of the configuration record's 32-bit fields.
enum EncoderConfigField : int {
  kCfgKind = 0,  // 256: the encoder's own configuration form
  kCfgVersion = 4,
  kCfgSize = 8,
  kCfgSampleRate = 12,
  kCfgOutputRate = 16,  // 0: the encoder decides
  kCfgMode = 20,        // 0 stereo, 1 joint stereo, 2 dual channel, 3 mono
  kCfgBitrate = 24,
  kCfgMaxBitrate = 28,
  kCfgPreset = 32,  // 1 low quality, 2 high quality
  kCfgMpegVersion = 36,
  kCfgPsyModel = 40,
  kCfgEmphasis = 44,
  kCfgPrivate = 48,
  kCfgCrc = 52,
  kCfgCopyright = 56,
  kCfgOriginal = 60,
  kCfgWriteVbrHeader = 64,
  kCfgEnableVbr = 68,
  kCfgVbrQuality = 72,
  kCfgNoReservoir = 84,
};
constexpr uint32_t kConfigKind = 256;
constexpr uint32_t kModeJointStereo = 1;
constexpr uint32_t kModeMono = 3;

// The six functions. Results are 0 or an error number.
using EncInitStreamFn = uint32_t (*)(const unsigned char* config, uint32_t* chunkSamples, uint32_t* outCapacity,
                                     uint32_t* stream);
using EncodeChunkFn = uint32_t (*)(uint32_t stream, uint32_t samples, const int16_t* pcm, unsigned char* out,
                                   uint32_t* outBytes);
using DeinitStreamFn = uint32_t (*)(uint32_t stream, unsigned char* out, uint32_t* outBytes);
using CloseStreamFn = uint32_t (*)(uint32_t stream);
using VersionFn = void (*)(unsigned char* version);
using WriteVbrHeaderFn = uint32_t (*)(const char* mp3Path);

using AnyFunction = void (*)();

class EncoderLibrary {
 public:
  virtual ~EncoderLibrary() = default;
  // A function by name, or null when the library has none by that name.
  virtual AnyFunction Find(const char* name) = 0;
};

// Loads the library of that name (as the front ends' platform names it,
// "FrMp3Enc.dll" or "..\FrMp3Enc.dll"); null when there is none.
using EncoderLoader = std::unique_ptr<EncoderLibrary> (*)(const char* name);

// The built-in loader: the encoder on LAME, under "FrMp3Enc.dll".
std::unique_ptr<EncoderLibrary> LoadBuiltInEncoder(const char* name);
// Tests only: conversions load through loader (null: the built-in one).
void SetEncoderLoaderForTesting(EncoderLoader loader);

// progressBar 0: none. 1, or -1.
int EncodeWavToMp3(const char* wavePath, const char* mp3Path, int bitrate, int progressBar);

}  // namespace tq::sound
