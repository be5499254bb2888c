#include "platform/named_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace tq::platform {

NamedLock::NamedLock(const std::string& lockFile) {
  fd_ = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
}

NamedLock::~NamedLock() {
  if (fd_ >= 0) ::close(fd_);  // closing drops a lock still held
}

bool NamedLock::Wait(int milliseconds) {
  if (fd_ < 0) return false;
  if (owner_.load() == std::this_thread::get_id()) {
    ++depth_;
    return true;
  }
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(milliseconds < 0 ? 0 : milliseconds);
  if (!threads_.try_lock_until(deadline)) return false;
  auto pause = std::chrono::milliseconds(1);
  for (;;) {
    if (::flock(fd_, LOCK_EX | LOCK_NB) == 0) break;
    if (errno != EWOULDBLOCK && errno != EINTR) {
      threads_.unlock();
      return false;
    }
    Clock::time_point now = Clock::now();
    if (now >= deadline) {
      threads_.unlock();
      return false;
    }
    std::this_thread::sleep_for(std::min<Clock::duration>(pause, deadline - now));
    if (pause < std::chrono::milliseconds(8)) pause *= 2;
  }
  owner_.store(std::this_thread::get_id());
  depth_ = 1;
  return true;
}

bool NamedLock::Release() {
  if (fd_ < 0 || owner_.load() != std::this_thread::get_id()) return false;
  if (--depth_ > 0) return true;
  owner_.store(std::thread::id());
  ::flock(fd_, LOCK_UN);
  threads_.unlock();
  return true;
}

}  // namespace tq::platform
