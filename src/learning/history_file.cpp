#include "learning/history_file.h"

#include <cstdio>
#include <functional>
#include <unordered_map>

#include "core/binary_io.h"
#include "learning/record.h"
#include "platform/env.h"

namespace tq::history {
namespace {

struct FileCloser {
  std::FILE* f;
  ~FileCloser() { Close(); }
  void Close() {
    std::FILE* open = f;
    f = nullptr;
    if (open != nullptr) std::fclose(open);
  }
};

constexpr int kNoDay = -1;

// Position of each item number's first appearance in the caller's array.
std::unordered_map<int32_t, int> FirstPositions(const int32_t* items, int count) {
  std::unordered_map<int32_t, int> at;
  for (int i = 0; i < count; ++i) at.emplace(items[i], i);
  return at;
}

int WriteBlanks(std::FILE* f, int first_item, int count) {
  for (int i = 0; i < count; ++i) {
    if (!WriteRecord(f, BlankRecord(first_item + i))) return -1;
  }
  return 1;
}

// Passes every whole record of the file through edit into the temporary
// file, then copies the temporary over the file. The original is only
// overwritten after a full pass.
int RewriteRecords(const char* path, const std::function<void(LearningRecord&, std::FILE*)>& edit) {
  FileCloser in{env::Open(path, "rb")};
  if (in.f == nullptr) return -1;
  FileCloser out{env::Open(kTempFile, "wb")};
  if (out.f == nullptr) return -1;
  RecordReader reader(in.f);
  LearningRecord r;
  while (reader.Next(&r)) edit(r, out.f);
  in.Close();
  bool ok = std::fflush(out.f) == 0;
  out.Close();
  if (!ok || !env::CopyFile(kTempFile, path)) return -1;
  env::Remove(kTempFile);
  return 1;
}

// Passes the item numbers of a list file through edit (which answers whether
// to keep the entry) into the temporary file; the number kept, or -1.
int RewriteList(const char* path, const std::function<bool(int32_t*)>& edit) {
  FileCloser in{env::Open(path, "rb")};
  if (in.f == nullptr) return -1;
  FileCloser out{env::Open(kTempFile, "wb")};
  if (out.f == nullptr) return -1;
  int kept = 0;
  int32_t item;
  while (ReadI32(in.f, &item)) {
    if (!edit(&item)) continue;
    WriteI32(out.f, item);
    ++kept;
  }
  return kept;
}

template <class Visit>
int ForEachRecord(const char* path, Visit visit) {
  FileCloser f{env::Open(path, "rb")};
  if (f.f == nullptr) return -1;
  RecordReader reader(f.f);
  LearningRecord r;
  int n = 0;
  while (reader.Next(&r)) {
    visit(r);
    ++n;
  }
  return n;
}

}  // namespace

int GenBlank(const char* path, int count) {
  FileCloser f{env::Open(path, "wb")};
  if (f.f == nullptr) return -1;
  return WriteBlanks(f.f, 0, count);
}

int Append(const char* path, int count) {
  if (count <= 0) return 1;
  int64_t size = env::FileSize(path);
  int existing = size < 0 ? -1 : static_cast<int>(size / kRecordSize);
  FileCloser f{env::Open(path, "ab")};
  if (f.f == nullptr) return -1;
  return WriteBlanks(f.f, existing, count);
}

int Extract(const char* source, const char* dest, const int32_t* items, int count) {
  if (count == 0) return 0;
  FileCloser in{env::Open(source, "rb")};
  if (in.f == nullptr) return -1;
  FileCloser out{env::Open(dest, "wb")};
  if (out.f == nullptr) return -1;
  auto wanted = FirstPositions(items, count);
  RecordReader reader(in.f);
  LearningRecord r;
  int written = 0;
  while (reader.Next(&r)) {
    if (wanted.count(r.itemNo) == 0) continue;
    r.itemNo = written;
    if (!WriteRecord(out.f, r)) break;
    ++written;
  }
  return written;
}

int Merge(const char* source, const char* dest, const int32_t* items, int count) {
  if (count <= 0) return 0;
  FileCloser in{env::Open(source, "rb")};
  if (in.f == nullptr) return -1;
  FileCloser out{env::Open(dest, "ab")};
  if (out.f == nullptr) return -1;
  long length = FileLength(out.f);
  const int base = length < 0 ? 0 : static_cast<int>(length / kRecordSize);
  auto position = FirstPositions(items, count);
  RecordReader reader(in.f);
  LearningRecord r;
  int written = 0;
  while (reader.Next(&r)) {
    auto it = position.find(r.itemNo);
    if (it == position.end()) continue;
    // The item number follows the place in items; the place in the file
    // follows the source's order.
    r.itemNo = base + it->second;
    if (!WriteRecord(out.f, r)) break;
    ++written;
  }
  return written;
}

int InsertWord(const char* path, int position) {
  if (position < 0) {
    FileCloser f{env::Open(path, "ab")};
    if (f.f == nullptr) return -1;
    long length = FileLength(f.f);
    return WriteBlanks(f.f, static_cast<int>((length < 0 ? 0 : length) / kRecordSize), 1);
  }
  // Renumbered by the stored item number, not by place: a position equal to
  // the record count meets no record and inserts nothing.
  return RewriteRecords(path, [position](LearningRecord& r, std::FILE* out) {
    if (r.itemNo == position) WriteRecord(out, BlankRecord(position));
    if (r.itemNo >= position) ++r.itemNo;
    WriteRecord(out, r);
  });
}

int DeleteWord(const char* path, int position) {
  return RewriteRecords(path, [position](LearningRecord& r, std::FILE* out) {
    if (r.itemNo == position) return;
    if (r.itemNo > position) --r.itemNo;
    WriteRecord(out, r);
  });
}

int InsertInList(const char* path, int position) {
  if (position == -1) return 1;
  // The new word does not join the saved list; later items move up.
  int kept = RewriteList(path, [position](int32_t* item) {
    if (*item >= position) ++*item;
    return true;
  });
  if (kept < 0) return -1;
  if (!env::CopyFile(kTempFile, path)) return -1;
  env::Remove(kTempFile);
  return 1;
}

int DeleteInList(const char* path, int position) {
  int kept = RewriteList(path, [position](int32_t* item) {
    if (*item == position) return false;
    if (*item > position) --*item;
    return true;
  });
  if (kept < 0) return -1;
  if (kept == 0) {
    // An emptied list is no list; the empty temporary stays behind.
    env::Remove(path);
    return 1;
  }
  if (!env::CopyFile(kTempFile, path)) return -1;
  env::Remove(kTempFile);
  return 1;
}

int SetItemAttr(const char* path, int item, int attr, int day) {
  if (item < 0) return -1;
  FileCloser f{env::Open(path, "r+b")};
  if (f.f == nullptr) return -1;
  // Past the end of the file the blank record in hand is written there,
  // which extends the file.
  LearningRecord r = BlankRecord(item);
  if (SeekRecord(f.f, item)) ReadRecord(f.f, &r);
  if (attr == 0) {
    // A reset record is detached from its place on purpose.
    r = BlankRecord(-1);
  } else {
    r.attr = static_cast<uint16_t>(attr);
    if (r.firstDate == kNeverLearnt && day != kNoDay) ApplyResult(&r, day, kRight, nullptr);
  }
  if (!SeekRecord(f.f, item) || !WriteRecord(f.f, r)) return -1;
  return 1;
}

int GetBookInfo(const char* path, int32_t* not_met, int32_t* learning, int32_t* known, int32_t* mastered) {
  int32_t* counter[4] = {not_met, known, learning, mastered};  // by attr 0..3
  int n = ForEachRecord(path, [&](const LearningRecord& r) {
    if (r.attr < 4 && counter[r.attr] != nullptr) ++*counter[r.attr];
  });
  return n < 0 ? -1 : 1;
}

int ReadWordListByAttr(const char* path, int attr, int32_t* out) {
  int stored = 0;
  int n = ForEachRecord(path, [&](const LearningRecord& r) {
    if (r.attr == attr) out[stored++] = r.itemNo;
  });
  return n < 0 ? -1 : stored;
}

int ReadAllDegrees(const char* path, int32_t* out) {
  int i = 0;
  return ForEachRecord(path, [&](const LearningRecord& r) { out[i++] = Degree(r); });
}

}  // namespace tq::history
