#include "core/streams.h"

#include <mutex>
#include <vector>

#include "platform/env.h"

namespace tq {
namespace {

// Slot 0 is never used. The table grows on demand and reuses the lowest free
// number, so numbers stay small however long the process runs.
struct StreamTable {
  std::mutex mutex;
  std::vector<std::FILE*> files = std::vector<std::FILE*>(1, nullptr);
};

StreamTable& Table() {
  static StreamTable* table = new StreamTable;  // never destroyed: used until exit
  return *table;
}

}  // namespace

StreamId StreamAdopt(std::FILE* file) {
  if (file == nullptr) return 0;
  StreamTable& t = Table();
  std::lock_guard<std::mutex> lock(t.mutex);
  for (size_t i = 1; i < t.files.size(); ++i) {
    if (t.files[i] == nullptr) {
      t.files[i] = file;
      return static_cast<StreamId>(i);
    }
  }
  if (t.files.size() >= UINT32_MAX) {
    std::fclose(file);
    return 0;
  }
  t.files.push_back(file);
  return static_cast<StreamId>(t.files.size() - 1);
}

StreamId StreamOpen(const char* path, const char* mode) {
  return StreamAdopt(env::Open(path, mode));
}

std::FILE* StreamFile(StreamId id) {
  StreamTable& t = Table();
  std::lock_guard<std::mutex> lock(t.mutex);
  return id < t.files.size() ? t.files[id] : nullptr;
}

int StreamClose(StreamId id) {
  std::FILE* file = nullptr;
  {
    StreamTable& t = Table();
    std::lock_guard<std::mutex> lock(t.mutex);
    if (id == 0 || id >= t.files.size() || t.files[id] == nullptr) return EOF;
    file = t.files[id];
    t.files[id] = nullptr;
  }
  return std::fclose(file);
}

}  // namespace tq
