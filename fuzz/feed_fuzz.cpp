// Fuzzes the message feed's reader on hostile message and last-seen files,
// with the feed's lock held around each open as in use.
//
// Input: the last-seen file's bytes up to the first zero byte, then the
// message file's bytes.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "desktop/message_feed.h"

namespace {

std::string ScratchFolder() {
  static const std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  return dir;
}

void WriteBytes(const std::string& path, const uint8_t* data, size_t size) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) std::abort();
  std::fwrite(data, 1, size, f);
  std::fclose(f);
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string stem = ScratchFolder() + "/tq_feed_fuzz." + std::to_string(::getpid());
  static const bool guarded = tq::desktop::StartFeedGuard(ScratchFolder(), "tq_feed_fuzz") > 0;
  Check(guarded);
  const uint8_t* zero = static_cast<const uint8_t*>(std::memchr(data, 0, size));
  size_t seen = zero != nullptr ? static_cast<size_t>(zero - data) : size;
  size_t rest = zero != nullptr ? size - seen - 1 : 0;
  WriteBytes(stem + ".no", data, seen);
  WriteBytes(stem + ".txt", zero != nullptr ? zero + 1 : data, rest);

  int count = tq::desktop::CountNewMessages(stem + ".txt", stem + ".no");
  // Every counted message is a line (or a piece of a long one) of its own.
  Check(count >= 0 && static_cast<size_t>(count) <= rest);
  if (rest > 0 && seen == 0) {
    // Nothing seen: a first line that starts with a digit from 1 counts.
    int first = data[1];
    if (first >= '1' && first <= '9') Check(count >= 1);
  }
  return 0;
}
