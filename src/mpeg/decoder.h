// The MPEG audio decoding engine, as the sound conversions use it.
//
// A decoder object knows its modules by name: an input module that brings
// the bytes ("Input From File") and a codec module that turns them into
// sound ("MPEG Audio Codec", for MP1, MP2 and MP3). The caller registers
// both, opens a location and lets the engine choose the modules, starts the
// stream and asks for one frame after another: one block of interleaved
// 16-bit samples, always of the same shape, in one buffer that stays put.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tq::mpeg {

// Results of the engine's calls.
enum Result : int {
  kOk = 0,
  kEndOfStream = -1,     // no more frames
  kFailed = -2,          // the stream or the engine gave up
  kNotOpen = -3,         // no input is open, or it is not started
  kNoModule = -4,        // no registered module takes this input
  kCannotOpen = -5,      // the input would not open
  kOutOfMemory = -100,
  kNoFrame = -104,       // this pass delivered nothing; the stream goes on
  kFormatChanged = -700, // the stream changed its format; nothing delivered
};

// Let the engine choose the module.
constexpr int kAutomatic = -1;

// The block of the last frame.
struct FrameInfo {
  const void* samples = nullptr;
  int32_t samplesPerChannel = 0;
  int32_t bytesPerSample = 0;
  int32_t channels = 0;
  int32_t sampleRate = 0;
};

struct StreamInfo {
  int32_t durationMs = 0;
};

// How far the input has been read: position x 100 / total runs from 0 to
// 100, also in 32-bit arithmetic.
struct InputStatus {
  uint32_t position = 0;
  uint32_t total = 0;
};

// An input module: a source of bytes by location.
struct InputModule {
  const char* name;
  bool (*accepts)(const char* location);
  void* (*open)(const char* location);  // null on failure
  size_t (*read)(void* source, void* buffer, size_t bytes);
  int64_t (*seek)(void* source, int64_t offset, int origin);  // the new position, or -1
  int64_t (*size)(void* source);
  void (*close)(void* source);
};

// One open stream of a codec.
class CodecStream {
 public:
  virtual ~CodecStream() = default;
  // Reads the stream's beginning, up to its format.
  virtual int Start() = 0;
  // Fills the block; kOk, kNoFrame, kFormatChanged, kEndOfStream or kFailed.
  virtual int NextFrame(FrameInfo* frame) = 0;
  virtual int32_t DurationMs() = 0;
  virtual int Seek(double seconds) = 0;
};

// A codec module: what it decodes, how it tells its streams from others,
// and how it opens one over an input.
struct CodecModule {
  const char* name;
  const char* extensions;
  const char* const* types;  // null-terminated
  bool (*recognizes)(const InputModule& input, void* source);
  std::unique_ptr<CodecStream> (*open)(const InputModule& input, void* source, int* result);
};

const InputModule& FileInput();
const CodecModule& MpegAudioCodec();

class Decoder {
 public:
  // kOk and the decoder in *out, or kOutOfMemory.
  static int Create(std::unique_ptr<Decoder>* out);
  ~Decoder();

  // The module's number among those of its kind.
  int RegisterInput(const InputModule& module);
  int RegisterCodec(const CodecModule& module);

  // Opens location through the input module that accepts it and the codec
  // given by number, or with kAutomatic the codec that recognizes the start
  // of the stream.
  int Open(const char* location, int codec);
  int Start();
  int NextFrame();
  const FrameInfo& Frame() const { return frame_; }
  StreamInfo Stream() const;
  InputStatus Status() const;
  // Below zero counts as zero; a stream of no known duration goes to its
  // beginning.
  int Seek(float seconds);
  int Stop();
  int Close();

 private:
  Decoder() = default;

  std::vector<const InputModule*> inputs_;
  std::vector<const CodecModule*> codecs_;
  const InputModule* input_ = nullptr;
  void* source_ = nullptr;
  std::unique_ptr<CodecStream> stream_;
  bool started_ = false;
  FrameInfo frame_;
};

}  // namespace tq::mpeg
