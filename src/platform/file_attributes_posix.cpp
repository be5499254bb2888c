#include "platform/file_attributes.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/env.h"
#include "platform/file_times.h"

namespace tq::platform {

bool ClearReadOnly(const char* path) {
  if (path == nullptr) return false;
  std::string native = env::NativePath(path);
  struct stat st;
  if (::stat(native.c_str(), &st) != 0) return false;
  if (st.st_mode & S_IWUSR) return true;
  return ::chmod(native.c_str(), (st.st_mode & 07777) | S_IWUSR) == 0;
}

bool CopyFileKeepingAttributes(const char* from, const char* to) {
  if (from == nullptr || to == nullptr) return false;
  struct stat st;
  std::string source = env::NativePath(from);
  // A folder is not a file to copy, though it would open for reading here.
  if (::stat(source.c_str(), &st) != 0 || S_ISDIR(st.st_mode)) return false;
  // A file copied onto itself would be emptied by the open for writing.
  struct stat target;
  if (::stat(env::NativePath(to).c_str(), &target) == 0 && target.st_dev == st.st_dev && target.st_ino == st.st_ino) {
    return false;
  }
  FileTimes times;
  if (!GetTimes(from, &times) || !env::CopyFile(from, to)) return false;
  ::chmod(env::NativePath(to).c_str(), st.st_mode & 07777);
  SetTimes(to, times);
  return true;
}

bool RemoveFolder(const char* path) {
  return path != nullptr && ::rmdir(env::NativePath(path).c_str()) == 0;
}

}  // namespace tq::platform
