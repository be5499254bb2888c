#include "platform/store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "platform/env.h"

namespace tq::store {

std::string Variable(const char* name) {
  const char* v = std::getenv(name);
  return v != nullptr ? std::string(v) : std::string();
}

std::string UserDataFolder() {
  std::string xdg = Variable("XDG_DATA_HOME");
  if (!xdg.empty()) return xdg;
  std::string home = Variable("HOME");
  return (home.empty() ? std::string(".") : home) + "/.local/share";
}

bool IsFolder(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool MakeFolders(const std::string& path) {
  if (path.empty()) return false;
  for (size_t i = 1; i <= path.size(); ++i) {
    if (i < path.size() && path[i] != '/') continue;
    std::string part = path.substr(0, i);
    if (::mkdir(part.c_str(), 0755) != 0 && errno != EEXIST) return false;
  }
  return IsFolder(path);
}

FileLock::FileLock(const std::string& path) {
  fd_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd_ < 0) return;
  int r;
  do {
    r = ::flock(fd_, LOCK_EX);
  } while (r != 0 && errno == EINTR);
  if (r != 0) {
    ::close(fd_);
    fd_ = -1;
  }
}

FileLock::~FileLock() {
  if (fd_ >= 0) ::close(fd_);  // closing releases the lock
}

bool WriteFileSafely(const std::string& path, const std::string& bytes) {
  static std::atomic<unsigned> counter{0};
  std::string temp = path + ".tmp." + std::to_string(::getpid()) + "." + std::to_string(counter++);
  std::FILE* f = env::Open(temp.c_str(), "wb");
  if (f == nullptr) return false;
  bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  ok = std::fflush(f) == 0 && ok;
  ok = ::fsync(::fileno(f)) == 0 && ok;
  ok = std::fclose(f) == 0 && ok;
  if (ok) ok = env::Rename(temp.c_str(), path.c_str());
  if (!ok) env::Remove(temp.c_str());
  return ok;
}

}  // namespace tq::store
