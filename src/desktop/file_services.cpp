#include "desktop/file_services.h"

#include <cstdio>
#include <cstring>
#include <mutex>
#include <vector>

#include "core/binary_io.h"
#include "core/files.h"
#include "core/streams.h"
#include "core/text.h"
#include "platform/env.h"
#include "platform/file_attributes.h"
#include "platform/file_times.h"
#include "platform/find.h"

namespace tq::desktop {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// The folder part of a pattern, with its separator; "" for a bare pattern.
// The second byte of a Chinese character is never taken for a separator.
std::string FolderOf(const std::string& pattern) {
  size_t cut = 0;
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (static_cast<unsigned char>(pattern[i]) >= 128) {
      ++i;
    } else if (IsSeparator(pattern[i])) {
      cut = i + 1;
    }
  }
  return pattern.substr(0, cut);
}

// The files (not folders) that match a pattern, as paths with the pattern's
// folder in front. Gathered first, so that deleting does not disturb the
// search.
std::vector<std::pair<std::string, std::string>> MatchingFiles(const char* pattern) {
  std::vector<std::pair<std::string, std::string>> files;  // path, name
  if (pattern == nullptr) return files;
  std::string folder = FolderOf(pattern);
  find::Found f;
  find::SearchId id = find::First(pattern, &f);
  if (id == 0) return files;
  do {
    if (!f.directory) files.emplace_back(folder + f.name, f.name);
  } while (find::Next(id, &f));
  find::Close(id);
  return files;
}

std::mutex g_temp_mutex;
std::FILE* g_temp = nullptr;

std::FILE* RecordStream(const FileForVb* record) {
  return record == nullptr ? nullptr : StreamFile(record->hFile);
}

}  // namespace

std::string JoinPath(const std::string& folder, const std::string& name) {
  if (folder.empty() || FolderOf(folder).size() == folder.size()) return folder + name;
  return folder + "\\" + name;
}

int CopyOneFile(const char* source, const char* destination) {
  if (source == nullptr || destination == nullptr) return 0;
  platform::ClearReadOnly(source);
  bool copied = platform::CopyFileKeepingAttributes(source, destination);
  platform::ClearReadOnly(destination);
  return copied ? 1 : 0;
}

int CopyMatching(const char* pattern, const char* folder) {
  if (folder == nullptr) return 0;
  int copied = 0;
  for (const auto& file : MatchingFiles(pattern)) {
    std::string target = JoinPath(folder, file.second);
    if (!platform::CopyFileKeepingAttributes(file.first.c_str(), target.c_str())) continue;
    platform::ClearReadOnly(target.c_str());
    ++copied;
  }
  return copied;
}

int CopyFolderFiles(const char* sourceFolder, const char* destinationFolder) {
  if (sourceFolder == nullptr) return 0;
  return CopyMatching(JoinPath(sourceFolder, "*.*").c_str(), destinationFolder);
}

int CopyIfNewer(const char* source, const char* destination) {
  platform::FileTimes from, to;
  if (source == nullptr || destination == nullptr || !platform::GetTimes(source, &from)) return 0;
  if (platform::GetTimes(destination, &to) && from.write <= to.write) return 0;
  return platform::CopyFileKeepingAttributes(source, destination) ? 1 : 0;
}

int AppendFileTo(const char* source, const char* destination) {
  if (source == nullptr || destination == nullptr) return -1;
  platform::ClearReadOnly(destination);
  std::FILE* in = env::Open(source, "rb");
  if (in == nullptr) return -1;
  std::FILE* out = env::Open(destination, "ab");
  if (out == nullptr) {
    std::fclose(in);
    return -1;
  }
  char buf[16 * 1024];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, in)) > 0) {
    if (std::fwrite(buf, 1, n, out) != n) break;
  }
  std::fclose(in);
  std::fclose(out);
  return 0;
}

bool DeleteOneFile(const char* path, bool clearMark) {
  if (path == nullptr || env::IsDirectory(path)) return false;
  if (clearMark) platform::ClearReadOnly(path);
  return env::Remove(path);
}

int DeleteMatching(const char* pattern, bool clearMark) {
  int deleted = 0;
  for (const auto& file : MatchingFiles(pattern)) {
    if (DeleteOneFile(file.first.c_str(), clearMark)) ++deleted;
  }
  return deleted;
}

int DeleteFolderAndFiles(const char* folder) {
  if (folder == nullptr) return 0;
  DeleteMatching(JoinPath(folder, "*.*").c_str(), true);
  return platform::RemoveFolder(folder) ? 1 : 0;
}

int OpenTempFile(const char* path) {
  std::lock_guard<std::mutex> lock(g_temp_mutex);
  if (g_temp != nullptr) std::fclose(g_temp);
  g_temp = env::Open(path, "wb");
  return g_temp != nullptr ? 1 : -1;
}

int WriteTempFile(const char* text) {
  std::lock_guard<std::mutex> lock(g_temp_mutex);
  if (g_temp == nullptr || text == nullptr) return -1;
  return std::fputs(text, g_temp) >= 0 ? 1 : -1;
}

int CloseTempFile() {
  std::lock_guard<std::mutex> lock(g_temp_mutex);
  if (g_temp == nullptr) return -1;
  int r = std::fclose(g_temp);
  g_temp = nullptr;
  return r == 0 ? 0 : -1;
}

int OpenRecordFile(FileForVb* record, const char* path, const char* mode) {
  if (record == nullptr || path == nullptr || mode == nullptr) return -1;
  std::string kept(path);
  CStrRtrim(kept.data(), static_cast<int>(sizeof record->path - 1));
  std::memset(record->path, 0, sizeof record->path);
  std::memcpy(record->path, kept.c_str(), std::strlen(kept.c_str()));
  record->hFile = StreamOpen(path, mode);
  return record->hFile != 0 ? 1 : -1;
}

int WriteRecordFile(FileForVb* record, const char* text, bool lineEnd) {
  std::FILE* f = RecordStream(record);
  if (f == nullptr || text == nullptr) return -1;
  bool ok = std::fputs(text, f) >= 0;
  if (lineEnd) ok = std::fputs("\r\n", f) >= 0 && ok;
  return ok ? 1 : -1;
}

int ReadRecordLine(FileForVb* record, char* buffer, int size, bool trimLeft, bool trimRight) {
  std::FILE* f = RecordStream(record);
  if (buffer == nullptr) return -1;
  if (size == 1) buffer[0] = '\0';
  if (f == nullptr || size < 2) return -1;
  if (std::fgets(buffer, size, f) == nullptr) return -1;
  if (trimLeft) Ltrim(buffer);
  if (trimRight) StrongRtrim(buffer);
  return static_cast<int>(std::strlen(buffer));
}

int WriteIntArray(const char* path, const int32_t* values, int count) {
  std::FILE* f = env::Open(path, "wb");
  if (f == nullptr) return 0;
  int written = 0;
  while (values != nullptr && written < count && WriteI32(f, values[written])) ++written;
  std::fclose(f);
  return written;
}

int ReadIntArray(const char* path, int32_t* values, int count) {
  std::FILE* f = env::Open(path, "rb");
  if (f == nullptr) return 0;
  int read = 0;
  while (values != nullptr && read < count && ReadI32(f, &values[read])) ++read;
  std::fclose(f);
  return read;
}

int IntArrayElements(const char* path) {
  int length = FileLengthOf(path);
  return length < 0 ? 0 : length / 4;
}

}  // namespace tq::desktop
