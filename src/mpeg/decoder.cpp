#include "mpeg/decoder.h"

#include <climits>
#include <cstdio>
#include <new>

#include "core/binary_io.h"
#include "platform/env.h"

namespace tq::mpeg {
namespace {

// Both numbers are scaled down together until position x 100 fits in 32
// bits, so callers that work in 32-bit arithmetic get 0 to 100 from files
// of any size.
InputStatus Scaled(int64_t position, int64_t total) {
  if (position < 0) position = 0;
  if (total < 0) total = 0;
  while (total > static_cast<int64_t>(UINT32_MAX / 100)) {
    total >>= 1;
    position >>= 1;
  }
  InputStatus s;
  s.total = static_cast<uint32_t>(total);
  s.position = static_cast<uint32_t>(position < total ? position : total);
  return s;
}

bool FileAccepts(const char* location) { return location != nullptr && *location != '\0'; }
void* FileOpen(const char* location) { return env::Open(location, "rb"); }
size_t FileRead(void* source, void* buffer, size_t bytes) {
  return std::fread(buffer, 1, bytes, static_cast<std::FILE*>(source));
}
int64_t FileSeek(void* source, int64_t offset, int origin) {
  std::FILE* f = static_cast<std::FILE*>(source);
  if (offset < LONG_MIN || offset > LONG_MAX || std::fseek(f, static_cast<long>(offset), origin) != 0) return -1;
  return std::ftell(f);
}
int64_t FileSize(void* source) { return FileLength(static_cast<std::FILE*>(source)); }
void FileClose(void* source) { std::fclose(static_cast<std::FILE*>(source)); }

}  // namespace

const InputModule& FileInput() {
  static const InputModule module = {"Input From File", FileAccepts, FileOpen, FileRead,
                                     FileSeek,          FileSize,    FileClose};
  return module;
}

int Decoder::Create(std::unique_ptr<Decoder>* out) {
  out->reset(new (std::nothrow) Decoder);
  return *out ? kOk : kOutOfMemory;
}

Decoder::~Decoder() { Close(); }

int Decoder::RegisterInput(const InputModule& module) {
  inputs_.push_back(&module);
  return static_cast<int>(inputs_.size()) - 1;
}

int Decoder::RegisterCodec(const CodecModule& module) {
  codecs_.push_back(&module);
  return static_cast<int>(codecs_.size()) - 1;
}

int Decoder::Open(const char* location, int codec) {
  Close();
  for (const InputModule* m : inputs_) {
    if (m->accepts(location)) {
      input_ = m;
      break;
    }
  }
  if (input_ == nullptr) return kNoModule;
  source_ = input_->open(location);
  if (source_ == nullptr) {
    input_ = nullptr;
    return kCannotOpen;
  }
  const CodecModule* chosen = nullptr;
  if (codec == kAutomatic) {
    for (const CodecModule* m : codecs_) {
      bool yes = m->recognizes(*input_, source_);
      input_->seek(source_, 0, SEEK_SET);
      if (yes) {
        chosen = m;
        break;
      }
    }
  } else if (codec >= 0 && static_cast<size_t>(codec) < codecs_.size()) {
    chosen = codecs_[static_cast<size_t>(codec)];
  }
  int result = kNoModule;
  if (chosen != nullptr) stream_ = chosen->open(*input_, source_, &result);
  if (stream_ == nullptr) {
    Close();
    return result;
  }
  return kOk;
}

int Decoder::Start() {
  if (stream_ == nullptr) return kNotOpen;
  int result = stream_->Start();
  started_ = result == kOk;
  return result;
}

int Decoder::NextFrame() { return started_ ? stream_->NextFrame(&frame_) : kNotOpen; }

StreamInfo Decoder::Stream() const {
  StreamInfo info;
  if (started_) info.durationMs = stream_->DurationMs();
  return info;
}

InputStatus Decoder::Status() const {
  if (source_ == nullptr) return InputStatus();
  return Scaled(input_->seek(source_, 0, SEEK_CUR), input_->size(source_));
}

int Decoder::Seek(float seconds) {
  if (!started_) return kNotOpen;
  double to = seconds < 0 ? 0.0 : static_cast<double>(seconds);
  if (stream_->DurationMs() == 0) to = 0.0;
  return stream_->Seek(to);
}

int Decoder::Stop() {
  stream_.reset();
  started_ = false;
  return kOk;
}

int Decoder::Close() {
  Stop();
  if (source_ != nullptr) input_->close(source_);
  source_ = nullptr;
  input_ = nullptr;
  return kOk;
}

}  // namespace tq::mpeg
