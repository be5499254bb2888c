#include "learning/learning_status.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "core/binary_io.h"
#include "core/files.h"
#include "platform/env.h"

namespace tq {
namespace {

constexpr size_t kDayField = 14;
constexpr unsigned kNoDay = 65535;

}  // namespace

int RecordFileSpan(const char* path, size_t record_size) {
  std::FILE* f = env::Open(path, "rb");
  if (f == nullptr) return 0;
  std::string record(record_size, '\0');
  unsigned first = kNoDay, last = 0;
  while (std::fread(&record[0], 1, record_size, f) == record_size) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(record.data()) + kDayField;
    unsigned day = p[0] | p[1] << 8;
    if (day == kNoDay) continue;
    first = std::min(first, day);
    last = std::max(last, day);
  }
  std::fclose(f);
  return first == kNoDay ? kNoSpan : static_cast<int>(last - first);
}

int WidestSpan(const char* pattern, size_t record_size) {
  FindFileState search;
  std::memset(&search, 0, sizeof search);
  std::strncpy(search.pattern, pattern, sizeof search.pattern - 1);
  char name[sizeof search.findData.fileName + 1];
  int widest = 0;
  while (FindNextName(&search, name) > 0) widest = std::max(widest, RecordFileSpan(name, record_size));
  EndFind(&search);
  return widest;
}

int LearningStatus() { return std::max(WidestSpan("*.pag", kPagRecord), WidestSpan("*.dir", kDirRecord)); }

}  // namespace tq
