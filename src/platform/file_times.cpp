#include "platform/file_times.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>

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

}  // namespace

uint64_t NowTicksSince1601() {
  struct timespec ts;
  clock_gettime(CLOCK_REALTIME, &ts);
  return (static_cast<uint64_t>(ts.tv_sec) + kSeconds1601To1970) * 10000000ULL +
         static_cast<uint64_t>(ts.tv_nsec) / 100;
}

bool LastWriteTime(const char* path, int64_t* seconds) {
  if (path == nullptr) return false;
  struct stat st;
  if (stat(env::NativePath(path).c_str(), &st) != 0) return false;
  *seconds = st.st_mtime;
  return true;
}

bool CreationTime(const char* path, int64_t* seconds) {
  if (path == nullptr) return false;
  std::string native = env::NativePath(path);
#ifdef STATX_BTIME
  struct statx sx;
  if (statx(AT_FDCWD, native.c_str(), 0, STATX_BTIME | STATX_CTIME, &sx) == 0) {
    *seconds = (sx.stx_mask & STATX_BTIME) ? sx.stx_btime.tv_sec : sx.stx_ctime.tv_sec;
    return true;
  }
#endif
  struct stat st;
  if (stat(native.c_str(), &st) != 0) return false;
  *seconds = st.st_ctime;
  return true;
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
