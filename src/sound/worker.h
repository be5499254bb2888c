// What the worker jobs of the sound subsystem share: the 200-byte path
// fields, the detached start, and the decoder that every MP3 decoding starts
// the same way.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <system_error>
#include <thread>

#include "mpeg/decoder.h"

namespace tq::sound {

constexpr int kJobPathBytes = 200;

// Cut to a worker's 200-byte field; a null path is empty.
inline void CopyJobPath(char* field, const char* path) {
  int n = 0;
  for (; path != nullptr && n < kJobPathBytes - 1 && path[n] != '\0'; ++n) field[n] = path[n];
  field[n] = '\0';
}

// Runs job on a thread of its own, detached at once; running counts the
// jobs under way (for tests that must wait for a job that never reports).
// False when no thread could be made.
inline bool StartDetached(void (*job)(), std::atomic<int32_t>* running) {
  running->fetch_add(1);
  try {
    std::thread([job, running] {
      job();
      running->fetch_sub(1);
    }).detach();
  } catch (const std::system_error&) {
    running->fetch_sub(1);
    return false;
  }
  return true;
}

// A pass that brought no frame while the stream goes on.
inline bool Retry(int result) { return result == mpeg::kNoFrame || result == mpeg::kFormatChanged; }

// A decoder with the codec and the file input registered, its input open
// and its stream started: the start every decoding shares. Stopped, closed
// and destroyed when it goes.
class Mp3Input {
 public:
  bool Open(const char* path) {
    if (mpeg::Decoder::Create(&decoder_) != mpeg::kOk) return false;
    decoder_->RegisterCodec(mpeg::MpegAudioCodec());
    decoder_->RegisterInput(mpeg::FileInput());
    if (decoder_->Open(path, mpeg::kAutomatic) != mpeg::kOk || decoder_->Start() != mpeg::kOk) {
      End();
      return false;
    }
    return true;
  }
  mpeg::Decoder& operator*() { return *decoder_; }
  void End() {
    if (decoder_ == nullptr) return;
    decoder_->Stop();
    decoder_->Close();
    decoder_.reset();
  }
  ~Mp3Input() { End(); }

 private:
  std::unique_ptr<mpeg::Decoder> decoder_;
};

}  // namespace tq::sound
