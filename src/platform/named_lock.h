// A lock that holds across processes, as a named mutex of the front ends'
// platform does, for files that several programs read and rewrite.
//
// It stands on a lock file and flock(2): any process that opens the same
// file and locks it waits for the holder, whatever program it is (a shell
// script can take it with flock(1)). The kernel drops the lock when the
// holder ends, so a program that dies while holding it blocks no one: the
// next waiter simply gets it, as a waiter gets an abandoned mutex. A named
// semaphore would outlive a holder that dies and keep every later waiter
// out until it timed out. flock has no timed wait, so a wait tries again
// every few milliseconds until its time is up.
//
// Within one process the lock belongs to the thread that took it, and that
// thread may take it again (it then releases it as often), as with a mutex.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace tq::platform {

class NamedLock {
 public:
  // Opens (making when missing) the lock file at a native path. held()
  // says nothing yet; ok() says whether the file could be opened.
  explicit NamedLock(const std::string& lockFile);
  ~NamedLock();
  NamedLock(const NamedLock&) = delete;
  NamedLock& operator=(const NamedLock&) = delete;

  bool ok() const { return fd_ >= 0; }
  // Waits at most this long for the lock; true when the calling thread
  // holds it.
  bool Wait(int milliseconds);
  // Gives the lock up when the calling thread holds it; false otherwise.
  bool Release();

 private:
  int fd_ = -1;
  std::timed_mutex threads_;  // between the threads of this process
  std::atomic<std::thread::id> owner_{};
  int depth_ = 0;  // touched by the owner only
};

}  // namespace tq::platform
