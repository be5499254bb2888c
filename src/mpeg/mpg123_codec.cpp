// The "MPEG Audio Codec" module on libmpg123. This file is the only one
// that knows libmpg123: its codes are turned into the engine's here.
#include <mpg123.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "mpeg/decoder.h"
#include "mpeg/frame_header.h"

namespace tq::mpeg {
namespace {

constexpr int kBytesPerSample = 2;  // always decoded to 16 bits
constexpr int kMaxEmptyPasses = 1000;

int FromMpg123(int code) {
  switch (code) {
    case MPG123_OK: return kOk;
    case MPG123_DONE: return kEndOfStream;
    case MPG123_NEW_FORMAT: return kFormatChanged;
    case MPG123_NEED_MORE: return kNoFrame;
    case MPG123_OUT_OF_MEM: return kOutOfMemory;
    default: return kFailed;
  }
}

struct Reader {
  const InputModule* input;
  void* source;
};

mpg123_ssize_t ReadFromInput(void* handle, void* buffer, size_t bytes) {
  Reader* r = static_cast<Reader*>(handle);
  return static_cast<mpg123_ssize_t>(r->input->read(r->source, buffer, bytes));
}

off_t SeekInInput(void* handle, off_t offset, int whence) {
  Reader* r = static_cast<Reader*>(handle);
  return static_cast<off_t>(r->input->seek(r->source, offset, whence));
}

class Mpg123Stream : public CodecStream {
 public:
  Mpg123Stream(const InputModule& input, void* source) : reader_{&input, source} {}
  ~Mpg123Stream() override {
    if (mh_ != nullptr) {
      mpg123_close(mh_);
      mpg123_delete(mh_);
    }
  }

  int Open() {
    static std::once_flag once;
    std::call_once(once, [] { mpg123_init(); });
    int error = MPG123_OK;
    mh_ = mpg123_new(nullptr, &error);
    if (mh_ == nullptr) return FromMpg123(error);
    // Quiet, with the encoder's delay and padding trimmed where the stream
    // tells them, and 16-bit samples in the stream's own rate and channels.
    mpg123_param(mh_, MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_GAPLESS, 0);
    mpg123_format_none(mh_);
    const long* rates = nullptr;
    size_t count = 0;
    mpg123_rates(&rates, &count);
    for (size_t i = 0; i < count; ++i) {
      mpg123_format(mh_, rates[i], MPG123_MONO | MPG123_STEREO, MPG123_ENC_SIGNED_16);
    }
    int r = mpg123_replace_reader_handle(mh_, ReadFromInput, SeekInInput, nullptr);
    if (r == MPG123_OK) r = mpg123_open_handle(mh_, &reader_);
    return FromMpg123(r);
  }

  int Start() override {
    int r = TakeFormat();
    if (r != kOk) return r;
    const int spf = mpg123_spf(mh_);
    if (spf <= 0) return kFailed;
    // Frames are handed out in blocks of one MPEG frame each, all alike,
    // whatever the trimming at either end does to the frames themselves.
    block_.assign(static_cast<size_t>(spf) * frame_.channels * kBytesPerSample, 0);
    frame_.samples = block_.data();
    frame_.samplesPerChannel = spf;
    return kOk;
  }

  int NextFrame(FrameInfo* frame) override {
    if (ended_) return kEndOfStream;
    size_t fill = 0;
    while (fill < block_.size()) {
      size_t done = 0;
      const int r = mpg123_read(mh_, block_.data() + fill, block_.size() - fill, &done);
      fill += done;
      if (r == MPG123_OK && done > 0) continue;
      if (r == MPG123_NEW_FORMAT) {
        TakeFormat();
        if (fill == 0) return Empty(kFormatChanged, frame);
        continue;
      }
      if (r == MPG123_OK || r == MPG123_NEED_MORE) {
        if (fill == 0) return Empty(kNoFrame, frame);
        break;
      }
      // The end, or a stream that can't go on: a last short block goes out
      // filled up with silence.
      ended_ = true;
      if (fill == 0) return FromMpg123(r);
      break;
    }
    std::memset(block_.data() + fill, 0, block_.size() - fill);
    empty_passes_ = 0;
    *frame = frame_;
    return kOk;
  }

  // 0 when unknown. A damaged tag may claim any frame count: what lies
  // beyond 32 bits of milliseconds counts as unknown.
  int32_t DurationMs() override {
    const off_t samples = mpg123_length(mh_);
    if (samples < 0 || frame_.sampleRate <= 0) return 0;
    const int64_t ms = static_cast<int64_t>(samples) / frame_.sampleRate * 1000 +
                       static_cast<int64_t>(samples) % frame_.sampleRate * 1000 / frame_.sampleRate;
    return ms > INT32_MAX ? 0 : static_cast<int32_t>(ms);
  }

  int Seek(double seconds) override {
    const off_t r = mpg123_seek(mh_, static_cast<off_t>(seconds * frame_.sampleRate), SEEK_SET);
    if (r < 0) return FromMpg123(static_cast<int>(r));
    ended_ = false;
    return kOk;
  }

 private:
  int TakeFormat() {
    long rate = 0;
    int channels = 0, encoding = 0;
    const int r = mpg123_getformat(mh_, &rate, &channels, &encoding);
    if (r != MPG123_OK) return FromMpg123(r);
    frame_.sampleRate = static_cast<int32_t>(rate);
    frame_.channels = channels;
    frame_.bytesPerSample = kBytesPerSample;
    if (!block_.empty()) {
      frame_.samplesPerChannel = static_cast<int32_t>(block_.size() / (kBytesPerSample * channels));
    }
    return kOk;
  }

  // A pass without a frame; a stream that gives nothing for too long is
  // taken to have failed, so that no caller waits for ever.
  int Empty(int result, FrameInfo* frame) {
    *frame = frame_;
    if (++empty_passes_ > kMaxEmptyPasses) {
      ended_ = true;
      return kFailed;
    }
    return result;
  }

  Reader reader_;
  mpg123_handle* mh_ = nullptr;
  std::vector<unsigned char> block_;
  FrameInfo frame_;
  bool ended_ = false;
  int empty_passes_ = 0;
};

bool Recognizes(const InputModule& input, void* source) {
  return LooksLikeMpegAudio([&](int64_t offset, void* buffer, size_t n) -> size_t {
    if (input.seek(source, offset, SEEK_SET) != offset) return 0;
    return input.read(source, buffer, n);
  });
}

std::unique_ptr<CodecStream> OpenStream(const InputModule& input, void* source, int* result) {
  auto stream = std::make_unique<Mpg123Stream>(input, source);
  *result = stream->Open();
  if (*result != kOk) stream.reset();
  return stream;
}

const char* const kTypes[] = {"audio/mpeg", "audio/x-mpeg", "audio/mp3", "audio/x-mp3", nullptr};

}  // namespace

const CodecModule& MpegAudioCodec() {
  static const CodecModule module = {"MPEG Audio Codec", "MP1, MP2, MP3", kTypes, Recognizes, OpenStream};
  return module;
}

}  // namespace tq::mpeg
