#include "platform/file_times.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include "platform/env.h"

namespace tq::platform {
namespace {

// Seconds from 1601-01-01 to 1970-01-01.
constexpr int64_t kEpochGap = 11644473600LL;
constexpr uint64_t kTicksPerSecond = 10000000ULL;

uint64_t ToTicks(int64_t seconds, uint32_t nanoseconds) {
  if (seconds < -kEpochGap) return 0;
  return static_cast<uint64_t>(seconds + kEpochGap) * kTicksPerSecond + nanoseconds / 100;
}

uint64_t ToTicks(const struct statx_timestamp& t) { return ToTicks(t.tv_sec, t.tv_nsec); }

struct timespec FromTicks(uint64_t ticks) {
  struct timespec t;
  t.tv_sec = static_cast<time_t>(static_cast<int64_t>(ticks / kTicksPerSecond) - kEpochGap);
  t.tv_nsec = static_cast<long>((ticks % kTicksPerSecond) * 100);
  return t;
}

CivilTime FromTm(const struct tm& t) {
  CivilTime c;
  c.year = t.tm_year + 1900;
  c.month = t.tm_mon + 1;
  c.day = t.tm_mday;
  c.hour = t.tm_hour;
  c.minute = t.tm_min;
  return c;
}

time_t Seconds(uint64_t ticks) { return static_cast<time_t>(static_cast<int64_t>(ticks / kTicksPerSecond) - kEpochGap); }

}  // namespace

bool StatNative(const std::string& native, FileStatus* status) {
  struct statx sx;
  if (::statx(AT_FDCWD, native.c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &sx) != 0) return false;
  status->directory = S_ISDIR(sx.stx_mode);
  status->size = static_cast<int64_t>(sx.stx_size);
  status->times.access = ToTicks(sx.stx_atime);
  status->times.write = ToTicks(sx.stx_mtime);
  status->times.creation = ToTicks((sx.stx_mask & STATX_BTIME) ? sx.stx_btime : sx.stx_ctime);
  return true;
}

bool GetTimes(const char* path, FileTimes* times) {
  if (path == nullptr) return false;
  FileStatus s;
  if (!StatNative(env::NativePath(path), &s)) return false;
  *times = s.times;
  return true;
}

bool GetReadableFileTimes(const char* path, FileTimes* times) {
  if (path == nullptr) return false;
  std::string native = env::NativePath(path);
  // Not blocking on a pipe that has no writer.
  int fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return false;
  ::close(fd);
  FileStatus s;
  if (!StatNative(native, &s) || s.directory) return false;
  *times = s.times;
  return true;
}

bool SetTimes(const char* path, const FileTimes& times) {
  if (path == nullptr) return false;
  struct timespec t[2] = {FromTicks(times.access), FromTicks(times.write)};
  return ::utimensat(AT_FDCWD, env::NativePath(path).c_str(), t, 0) == 0;
}

uint64_t NowTicksSince1601() {
  struct timespec ts;
  clock_gettime(CLOCK_REALTIME, &ts);
  return ToTicks(ts.tv_sec, static_cast<uint32_t>(ts.tv_nsec));
}

CivilTime UtcCivil(uint64_t ticks) {
  time_t t = Seconds(ticks);
  struct tm out;
  if (gmtime_r(&t, &out) == nullptr) return CivilTime();
  return FromTm(out);
}

CivilTime LocalCivil(uint64_t ticks) {
  time_t t = Seconds(ticks);
  struct tm out;
  if (localtime_r(&t, &out) == nullptr) return CivilTime();
  return FromTm(out);
}

}  // namespace tq::platform
