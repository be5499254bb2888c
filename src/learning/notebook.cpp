#include "learning/notebook.h"

#include <utility>

#include "core/binary_io.h"
#include "core/sound_key.h"
#include "learning/book.h"
#include "learning/book_record.h"
#include "platform/env.h"

namespace tq {
namespace {

constexpr char kTempIdx[] = "tmp.idx";
constexpr char kTempTag[] = "tmp.tag";
constexpr char kTempLib[] = "tmp.lib";

// Copies one entry of a notebook library: its leading separator, then every
// byte through the separator that ends it. The number of bytes copied, or
// -1 when the entry cannot be reached or the file ends inside it.
long CopyEntry(std::FILE* lib, int32_t offset, int separator, std::FILE* out) {
  if (lib == nullptr || offset < 0 || std::fseek(lib, offset, SEEK_SET) != 0) return -1;
  int c = std::fgetc(lib);
  if (c == EOF || std::fputc(c, out) == EOF) return -1;
  long copied = 1;
  while ((c = std::fgetc(lib)) != EOF) {
    if (std::fputc(c, out) == EOF) return -1;
    ++copied;
    if (c == separator) return copied;
  }
  return -1;
}

// The three temporaries of a rewrite, removed unless kept.
class RewriteFiles {
 public:
  bool Open() {
    idx = env::Open(kTempIdx, "wb");
    tag = env::Open(kTempTag, "wb");
    lib = env::Open(kTempLib, "wb");
    return idx != nullptr && tag != nullptr && lib != nullptr;
  }
  bool Close() {
    bool ok = true;
    for (std::FILE** f : {&idx, &tag, &lib}) {
      if (*f != nullptr && std::fclose(*f) != 0) ok = false;
      *f = nullptr;
    }
    return ok;
  }
  ~RewriteFiles() {
    Close();
    if (!kept_) {
      for (const char* name : {kTempIdx, kTempTag, kTempLib}) env::Remove(name);
    }
  }
  // Puts the temporaries in place of the notebook's files.
  bool MoveTo(const std::string& idx_path, const std::string& tag_path, const std::string& lib_path) {
    kept_ = true;
    bool ok = MoveOver(kTempIdx, idx_path.c_str());
    ok = MoveOver(kTempTag, tag_path.c_str()) && ok;
    return MoveOver(kTempLib, lib_path.c_str()) && ok;
  }

  std::FILE* idx = nullptr;
  std::FILE* tag = nullptr;
  std::FILE* lib = nullptr;

 private:
  bool kept_ = false;
};

}  // namespace

Notebook::Notebook(std::string idx_path)
    : idx_(std::move(idx_path)), lib_(idx_ + ".lib"), tag_(idx_ + ".tag") {}

void Notebook::Clear() {
  env::Remove(idx_.c_str());
  env::Remove(tag_.c_str());
  MakeBlankNotebookLibrary(lib_.c_str());
}

int Notebook::KeepWords(BookRecord* record, const int32_t* offsets, const int32_t* tags, const int32_t* flags,
                        int n) {
  if (idx_.empty() || n < 0 || (n > 0 && (offsets == nullptr || flags == nullptr))) return -1;
  RewriteFiles out;
  if (!out.Open()) return -1;
  RecordBook book(record);
  struct LibCloser {
    RecordBook& book;
    ~LibCloser() { book.CloseLib(); }
  } closer{book};
  std::FILE* lib = book.lib();
  const int separator = book.separator();
  if (!WriteZeros(out.tag, kTagHeaderInts)) return -1;
  int32_t written = 0;
  int kept = 0;
  for (int i = 0; i < n; ++i) {
    if (flags[i] != 0) continue;
    ++kept;
    int32_t tag = tags ? tags[kTagHeaderInts + i] : 0;
    if (!WriteI32(out.idx, written) || !WriteI32(out.tag, tag)) return -1;
    long copied = CopyEntry(lib, offsets[i], separator, out.lib);
    if (copied < 0 || copied > INT32_MAX - written) return -1;
    written += static_cast<int32_t>(copied);
  }
  bool closed = out.Close();
  book.CloseLib();  // before its file is replaced
  if (!closed) return -1;
  if (kept == 0) {
    Clear();
    return 0;
  }
  return out.MoveTo(idx_, tag_, lib_) ? 0 : -1;
}

int MakeBlankNotebookLibrary(const char* lib_path) {
  std::FILE* f = env::Open(lib_path, "wb");
  if (f == nullptr) return -1;
  bool ok = std::fputc(Book::kSeparator, f) != EOF;
  return (std::fclose(f) == 0 && ok) ? 1 : -1;
}

int CopyWithSoundKey(const char* src, const char* dst) {
  std::FILE* in = env::Open(src, "rb");
  if (in == nullptr) return -1;
  std::FILE* out = env::Open(dst, "wb");
  if (out == nullptr) {
    std::fclose(in);
    return -1;
  }
  unsigned char buf[64 * 1024];
  uint64_t pos = 0;
  bool ok = true;
  size_t n;
  while (ok && (n = std::fread(buf, 1, sizeof buf, in)) > 0) {
    ApplySoundKey(buf, n, pos);
    pos += n;
    ok = std::fwrite(buf, 1, n, out) == n;
  }
  ok = !std::ferror(in) && ok;
  std::fclose(in);
  return (std::fclose(out) == 0 && ok) ? 1 : -1;
}

}  // namespace tq
