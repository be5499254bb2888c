#include "core/files.h"

#include <climits>
#include <cstdio>
#include <cstring>

#include "core/binary_io.h"
#include "platform/env.h"
#include "platform/file_times.h"
#include "platform/find.h"

namespace tq {
namespace {

constexpr uint32_t kAttributeFolder = 16;
constexpr uint32_t kAttributeNormal = 128;

TqFileTime Split(uint64_t ticks) {
  return TqFileTime{static_cast<uint32_t>(ticks), static_cast<uint32_t>(ticks >> 32)};
}

void Fill(const find::Found& f, TqFindData* d) {
  std::memset(d, 0, sizeof *d);
  d->attributes = f.directory ? kAttributeFolder : kAttributeNormal;
  d->creationTime = Split(f.times.creation);
  d->lastAccessTime = Split(f.times.access);
  d->lastWriteTime = Split(f.times.write);
  uint64_t size = f.directory ? 0 : static_cast<uint64_t>(f.size);
  d->sizeHigh = static_cast<uint32_t>(size >> 32);
  d->sizeLow = static_cast<uint32_t>(size);
  // A name too long for the record is cut, as the front ends' platform
  // never gives one longer.
  std::strncpy(d->fileName, f.name.c_str(), sizeof d->fileName - 1);
}

}  // namespace

bool FileExists(const char* pathOrPattern) {
  find::Found f;
  find::SearchId id = find::First(pathOrPattern, &f);
  if (id == 0) return false;
  find::Close(id);
  return true;
}

int FindNextName(FindFileState* record, char* name) {
  find::Found f;
  bool found;
  if (record->started == 0) {
    record->started = 1;
    // The caller's pattern may fill its field with no zero byte.
    char pattern[sizeof record->pattern + 1];
    std::memcpy(pattern, record->pattern, sizeof record->pattern);
    pattern[sizeof record->pattern] = '\0';
    record->findHandle = find::First(pattern, &f);
    found = record->findHandle != 0;
  } else {
    found = record->findHandle != 0 && find::Next(record->findHandle, &f);
  }
  if (!found) return 0;
  Fill(f, &record->findData);
  size_t n = std::strlen(record->findData.fileName);
  std::memcpy(name, record->findData.fileName, n + 1);
  return static_cast<int>(n);
}

int EndFind(FindFileState* record) {
  if (record->started == 0) return -1;
  // started stays as it is: the caller clears it for a new search. The
  // number is dropped, as it may soon name another search; a FindFile or a
  // close that follows answers 0, as on an ended search.
  bool closed = find::Close(record->findHandle);
  record->findHandle = 0;
  return closed ? 1 : 0;
}

int FileLengthOf(const char* path) {
  if (path == nullptr || env::IsDirectory(path)) return -1;
  std::FILE* f = env::Open(path, "rb");
  if (f == nullptr) return -1;
  long n = FileLength(f);
  std::fclose(f);
  return (n < 0 || n > INT_MAX) ? -1 : static_cast<int>(n);
}

bool CopyFileTimes(const char* source, const char* destination) {
  platform::FileTimes t;
  return platform::GetTimes(source, &t) && platform::SetTimes(destination, t);
}

bool SameWriteTime(const char* first, const char* second) {
  platform::FileTimes a, b;
  return platform::GetTimes(first, &a) && platform::GetTimes(second, &b) && a.write == b.write;
}

}  // namespace tq
