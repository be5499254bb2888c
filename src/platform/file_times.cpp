#include "platform/file_times.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <string>

#include "platform/env.h"

namespace tq::platform {
namespace {

CivilTime FromTm(const struct tm& t) {
  CivilTime c;
  c.year = t.tm_year + 1900;
  c.month = t.tm_mon + 1;
  c.day = t.tm_mday;
  c.hour = t.tm_hour;
  c.minute = t.tm_min;
  return c;
}

// The times are those of a file opened for reading: what cannot be opened
// so (a missing file, a folder) has none.
int OpenForTimes(const char* path) {
  if (path == nullptr) return -1;
  int fd = open(env::NativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return -1;
  struct stat st;
  if (fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    close(fd);
    return -1;
  }
  return fd;
}

}  // namespace

uint64_t NowTicksSince1601() {
  struct timespec ts;
  clock_gettime(CLOCK_REALTIME, &ts);
  return (static_cast<uint64_t>(ts.tv_sec) + kSeconds1601To1970) * 10000000ULL +
         static_cast<uint64_t>(ts.tv_nsec) / 100;
}

bool LastWriteTime(const char* path, int64_t* seconds) {
  int fd = OpenForTimes(path);
  if (fd < 0) return false;
  struct stat st;
  bool ok = fstat(fd, &st) == 0;
  if (ok) *seconds = st.st_mtime;
  close(fd);
  return ok;
}

bool CreationTime(const char* path, int64_t* seconds) {
  int fd = OpenForTimes(path);
  if (fd < 0) return false;
  bool ok = false;
#ifdef STATX_BTIME
  struct statx sx;
  if (statx(fd, "", AT_EMPTY_PATH, STATX_BTIME | STATX_CTIME, &sx) == 0) {
    *seconds = (sx.stx_mask & STATX_BTIME) ? sx.stx_btime.tv_sec : sx.stx_ctime.tv_sec;
    ok = true;
  }
#endif
  struct stat st;
  if (!ok && fstat(fd, &st) == 0) {
    *seconds = st.st_ctime;
    ok = true;
  }
  close(fd);
  return ok;
}

CivilTime UtcCivil(int64_t seconds) {
  time_t t = static_cast<time_t>(seconds);
  struct tm out;
  if (gmtime_r(&t, &out) == nullptr) return CivilTime();
  return FromTm(out);
}

CivilTime LocalCivil(int64_t seconds) {
  time_t t = static_cast<time_t>(seconds);
  struct tm out;
  if (localtime_r(&t, &out) == nullptr) return CivilTime();
  return FromTm(out);
}

}  // namespace tq::platform
