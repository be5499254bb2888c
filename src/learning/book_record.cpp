#include "learning/book_record.h"

#include <cstring>
#include <vector>

#include "core/binary_io.h"
#include "core/streams.h"
#include "learning/book.h"
#include "learning/book_window.h"
#include "platform/env.h"

namespace tq {
namespace {

constexpr char kTempTags[] = "tqplsxht.apy";
constexpr long kTagHeaderBytes = 4L * kTagHeaderInts;

int CopyOut(char* out, const std::string& text) {
  std::memcpy(out, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}

// The whole tag file into the buffer, as whole integers: never more than
// the header and the number of tags that the open answered. 0, or -2.
int ReadTagFile(std::FILE* f, int32_t* buffer) {
  long length = std::fseek(f, 0, SEEK_SET) == 0 ? FileLength(f) : -1;
  if (length < 0) return -2;
  for (long i = 0; i < length / 4; ++i) {
    if (!ReadI32(f, &buffer[i])) return -2;
  }
  return 0;
}

int CloseStream(TqStream* stream) {
  if (*stream == 0) return 0;
  int r = StreamClose(*stream);
  *stream = 0;
  return r;
}

}  // namespace

std::string RecordBook::Stem(const char* idx_path) const {
  if (idx_path != nullptr) return idx_path;
  return std::string(r_->name, strnlen(r_->name, sizeof r_->name));
}

std::FILE* RecordBook::lib() const { return StreamFile(r_->libFile); }

int RecordBook::OpenIdx(const char* path) {
  r_->separator = Book::kSeparator;
  std::strncpy(r_->name, path ? path : "", sizeof r_->name - 1);
  r_->name[sizeof r_->name - 1] = '\0';
  r_->idxFile = StreamOpen(path, "rb");
  std::FILE* f = StreamFile(r_->idxFile);
  long length = f ? FileLength(f) : -1;
  return length < 0 ? -1 : static_cast<int>(length / 4);
}

int RecordBook::OpenLib(const char* path) {
  r_->separator = Book::kSeparator;
  std::string lib_path = path ? std::string(path) : Stem(nullptr) + ".lib";
  r_->libFile = StreamOpen(lib_path.c_str(), "rb");
  std::FILE* f = lib();
  long length = f ? FileLength(f) : -1;
  return length < 0 ? -1 : static_cast<int>(length);
}

int RecordBook::ReadIndex(int32_t* dest, int count) {
  std::FILE* f = StreamFile(r_->idxFile);
  if (f == nullptr) return -2;
  for (int i = 0; i < count; ++i) {
    if (!ReadI32(f, &dest[i])) return -2;
  }
  return 0;
}

int RecordBook::CloseIdx() { return CloseStream(&r_->idxFile); }

int RecordBook::CloseLib() { return CloseStream(&r_->libFile); }

int RecordBook::Word(int64_t offset, char* out) {
  out[0] = '\0';
  if (lib() == nullptr) return -1;
  return CopyOut(out, ListWord(LibraryWindow(lib(), offset + 1, kWordWindow)));
}

int RecordBook::WordByNo(int no, char* out) {
  out[0] = '\0';
  std::FILE* idx = StreamFile(r_->idxFile);
  int32_t offset;
  if (idx == nullptr || no < 0 || std::fseek(idx, static_cast<long>(no) * 4, SEEK_SET) != 0 ||
      !ReadI32(idx, &offset)) {
    return -1;
  }
  return Word(offset, out);
}

int RecordBook::Explanation(int64_t offset, char* out) {
  out[0] = '\0';
  std::string text;
  if (lib() == nullptr || !ListExplanation(LibraryWindow(lib(), offset + 1, kExplainWindow), separator(), &text)) {
    return 0;
  }
  return CopyOut(out, text) + 1;
}

int RecordBook::Export(const char* path) {
  std::FILE* idx = StreamFile(r_->idxFile);
  if (idx == nullptr || lib() == nullptr) return -3;
  std::FILE* out = env::Open(path, "wb");
  if (out == nullptr) return -3;
  char word[kWordWindow + 1];
  char explanation[kExplainWindow + 1];
  int32_t offset;
  bool ok = true;
  while (ok && ReadI32(idx, &offset)) {
    Word(offset, word);
    Explanation(offset, explanation);
    std::string line = std::string(word) + "\r\n" + explanation + "\r\n";
    ok = std::fwrite(line.data(), 1, line.size(), out) == line.size();
  }
  return (std::fclose(out) == 0 && ok) ? 0 : -3;
}

int RecordBook::OpenTags(const char* idx_path) {
  std::string stem = Stem(idx_path);
  std::string tag_path = stem + ".tag";
  if (!env::Exists(tag_path.c_str())) {
    int64_t idx_length = env::FileSize(stem.c_str());
    std::FILE* f = env::Open(tag_path.c_str(), "wb");
    if (f == nullptr) return -1;
    bool ok = WriteZeros(f, kTagHeaderInts + (idx_length > 0 ? static_cast<long>(idx_length / 4) : 0));
    if (std::fclose(f) != 0 || !ok) return -1;
  }
  r_->tagFile = StreamOpen(tag_path.c_str(), "rb");
  std::FILE* f = StreamFile(r_->tagFile);
  long length = f ? FileLength(f) : -1;
  if (length < 0) return -1;
  // A file shorter than its header holds no tags.
  return length < kTagHeaderBytes ? 0 : static_cast<int>((length - kTagHeaderBytes) / 4);
}

int RecordBook::ReadTagsThenClose(int32_t* buffer) {
  std::FILE* f = StreamFile(r_->tagFile);
  if (f == nullptr) return -2;
  int r = ReadTagFile(f, buffer);
  StreamClose(r_->tagFile);
  // After a short read the closed stream's number stays in the record.
  if (r == 0) r_->tagFile = 0;
  return r;
}

int RecordBook::ReadTagsOnce(int32_t* buffer, const char* idx_path) {
  std::FILE* f = env::Open((Stem(idx_path) + ".tag").c_str(), "rb");
  if (f == nullptr) return -1;
  int r = ReadTagFile(f, buffer);
  std::fclose(f);
  return r;
}

int RecordBook::WriteTags(const char* idx_path, const int32_t* buffer, int count) {
  if (buffer == nullptr || count < 0) return -3;
  std::FILE* f = env::Open(kTempTags, "wb");
  if (f == nullptr) return -3;
  bool ok = true;
  for (long i = 0; ok && i < static_cast<long>(count) + kTagHeaderInts; ++i) ok = WriteI32(f, buffer[i]);
  ok = std::fclose(f) == 0 && ok;
  if (!ok) {
    env::Remove(kTempTags);
    return -3;
  }
  return MoveOver(kTempTags, (Stem(idx_path) + ".tag").c_str()) ? 0 : -3;
}

int IndexWordCount(const char* idx_path) {
  int64_t length = env::FileSize(idx_path);
  return length < 0 ? 0 : static_cast<int>(length / 4);
}

}  // namespace tq
