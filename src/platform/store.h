// Small files kept safely: the user's data folder, folders made on demand,
// a lock that serialises writers across processes, and a whole-file write
// that a crash cannot leave half done. The registry store stands on these.
#pragma once

#include <string>

namespace tq::store {

// An environment variable, or "" when it is not set.
std::string Variable(const char* name);
// $XDG_DATA_HOME, else ~/.local/share.
std::string UserDataFolder();
// Makes a folder and every missing folder above it. True when it is there.
bool MakeFolders(const std::string& path);
bool IsFolder(const std::string& path);

// Holds an exclusive lock on a lock file (made when missing) for its life.
// Other processes, and other locks in this process, wait for it.
class FileLock {
 public:
  explicit FileLock(const std::string& path);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  bool held() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

// Writes bytes to a temporary file beside path, flushes it to the disk and
// renames it over path: a reader sees the old file or the new one, never a
// part. False (and path untouched) on any failure.
bool WriteFileSafely(const std::string& path, const std::string& bytes);

}  // namespace tq::store
