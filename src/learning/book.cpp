#include "learning/book.h"

#include <cstring>
#include <string>
#include <vector>

#include "core/binary_io.h"
#include "platform/env.h"

namespace tq {
namespace {

constexpr int kWordLimit = 196;         // characters of a headword a reader keeps
constexpr size_t kExtra2Limit = 3000;   // past this a byte 6 also ends the second extra
constexpr char kTempIndex[] = "tmpidx.idx";
constexpr char kTempTag[] = "tmptag.tag";

void CopyPath(char* dest, size_t room, const char* src) {
  std::strncpy(dest, src ? src : "", room - 1);
  dest[room - 1] = '\0';
}

// Reads one text field: up to the separator, a "$" or the end of the file,
// consuming the byte that ends it. With a limit, a byte 6 also ends the field
// once more than that many characters are stored.
void ReadField(std::FILE* f, std::string* field, size_t six_limit) {
  int c;
  while ((c = std::fgetc(f)) != EOF) {
    if (c == Book::kSeparator || c == '$') break;
    if (six_limit != 0 && c == 6 && field->size() > six_limit) break;
    field->push_back(static_cast<char>(c));
  }
}

void Store(char* out, const std::string& value) {
  if (out != nullptr) std::memcpy(out, value.c_str(), value.size() + 1);
}

bool ReadAllOffsets(const char* path, std::vector<int32_t>* offsets) {
  std::FILE* f = env::Open(path, "rb");
  if (f == nullptr) return false;
  int32_t v;
  while (ReadI32(f, &v)) offsets->push_back(v);
  std::fclose(f);
  return true;
}

// Copies up to count 32-bit entries from one file to the other, stopping
// early at the end of the input.
void CopyInts(std::FILE* in, std::FILE* out, long count) {
  int32_t v;
  for (long i = 0; i < count && ReadI32(in, &v); ++i) WriteI32(out, v);
}

void CopyRest(std::FILE* in, std::FILE* out) {
  int32_t v;
  while (ReadI32(in, &v)) WriteI32(out, v);
}

int EditTag(const char* tag_path, int position, bool insert) {
  std::FILE* in = env::Open(tag_path, "rb");
  if (in == nullptr) return -1;
  std::FILE* out = env::Open(kTempTag, "wb");
  if (out == nullptr) {
    std::fclose(in);
    return -1;
  }
  CopyInts(in, out, static_cast<long>(position) + kTagHeaderInts);
  int32_t dropped;
  if (insert) {
    WriteI32(out, 0);
  } else {
    ReadI32(in, &dropped);
  }
  CopyRest(in, out);
  std::fclose(in);
  std::fclose(out);
  return ReplaceWithTemp(kTempTag, tag_path) ? 1 : -1;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

bool SplitClassMark(std::string* explanation, int32_t* word_class) {
  const std::string& s = *explanation;
  if (s.size() < 4 || s[0] != '{' || !IsDigit(s[1]) || !IsDigit(s[2]) || s[3] != '}') return false;
  *word_class = (s[1] - '0') * 10 + (s[2] - '0');
  explanation->erase(0, 4);
  return true;
}

std::string ExplanationToStore(const char* explanation, bool first_line_only) {
  std::string text = explanation ? explanation : "";
  if (first_line_only) text = text.substr(0, text.find_first_of("\r\n"));
  return text;
}

bool ReplaceWithTemp(const char* temp, const char* target) {
  bool ok = env::CopyFile(temp, target);
  env::Remove(temp);
  return ok;
}

bool WriteZeros(std::FILE* f, long count) {
  for (long i = 0; i < count; ++i) {
    if (!WriteI32(f, 0)) return false;
  }
  return true;
}

bool MoveOver(const char* temp, const char* target) {
  return env::Rename(temp, target) || ReplaceWithTemp(temp, target);
}

void ReadBookEntry(std::FILE* lib, long offset, const BookEntryOut& out) {
  for (char* field : {out.word, out.explanation, out.pronunciation, out.extra1, out.extra2}) {
    if (field != nullptr) field[0] = '\0';
  }
  if (lib == nullptr || std::fseek(lib, offset + 1, SEEK_SET) != 0) return;

  std::string word;
  int c = EOF;
  while (static_cast<int>(word.size()) < kWordLimit && (c = std::fgetc(lib)) != EOF && c != '[') {
    word.push_back(static_cast<char>(c));
  }
  Store(out.word, word);
  if (c == EOF) return;

  // The pronunciation runs through "]". The "[" itself is consumed by the
  // word loop, or is still to come when the word was cut at its limit.
  std::string pron = "[";
  while ((c = std::fgetc(lib)) != EOF) {
    pron.push_back(static_cast<char>(c));
    if (c == ']') break;
  }
  Store(out.pronunciation, pron);
  if (c == EOF) return;

  std::string explanation;
  ReadField(lib, &explanation, 0);
  if (out.word_class != nullptr) {
    SplitClassMark(&explanation, out.word_class);
  } else {
    int32_t ignored;
    SplitClassMark(&explanation, &ignored);
  }
  Store(out.explanation, explanation);

  if (std::fgetc(lib) != Book::kExtensionMark) return;
  std::string extra1;
  ReadField(lib, &extra1, 0);
  Store(out.extra1, extra1);
  if (out.extra2 == nullptr) return;
  std::string extra2;
  ReadField(lib, &extra2, kExtra2Limit);
  Store(out.extra2, extra2);
}

int InsertTag(const char* tag_path, int position) {
  if (position == -1) {
    std::FILE* f = env::Open(tag_path, "ab");
    if (f == nullptr) return -1;
    WriteI32(f, 0);
    std::fclose(f);
    return 1;
  }
  return EditTag(tag_path, position, true);
}

int DeleteTag(const char* tag_path, int position) { return EditTag(tag_path, position, false); }

Book::Book() = default;

int Book::SetFileNames(const char* idx_path, const char* lib_path) {
  CopyPath(idx_path_, sizeof idx_path_, idx_path);
  if (lib_path != nullptr) {
    CopyPath(lib_path_, sizeof lib_path_, lib_path);
  } else {
    std::string lib = std::string(idx_path_) + ".lib";
    CopyPath(lib_path_, sizeof lib_path_, lib.c_str());
  }
  return 1;
}

void Book::CloseSlot(std::FILE** slot) {
  if (*slot != nullptr) std::fclose(*slot);
  *slot = nullptr;
}

int Book::OpenIdx(const char* mode) {
  CloseSlot(&idx_);
  idx_ = env::Open(idx_path_, mode);
  if (idx_ == nullptr) return -1;
  long length = FileLength(idx_);
  return length < 0 ? -1 : static_cast<int>(length >> 2);
}

int Book::CloseIdx() {
  if (idx_ == nullptr) return 0;
  int r = std::fclose(idx_);
  idx_ = nullptr;
  return r;
}

int Book::ReadWholeIdx(int32_t* dest) {
  std::vector<int32_t> offsets;
  if (!ReadAllOffsets(idx_path_, &offsets)) return 0;
  if (!offsets.empty()) std::memcpy(dest, offsets.data(), offsets.size() * sizeof(int32_t));
  return static_cast<int>(offsets.size());
}

int Book::WriteWholeIdx(const int32_t* src, int count) {
  std::FILE* f = env::Open(idx_path_, "wb");
  if (f == nullptr) return 0;
  int written = 0;
  while (written < count && WriteI32(f, src[written])) ++written;
  std::fclose(f);
  return written;
}

int Book::OpenLib(const char* mode) {
  CloseSlot(&lib_);
  lib_ = env::Open(lib_path_, mode);
  if (lib_ == nullptr) return -1;
  long length = FileLength(lib_);
  return length < 0 ? -1 : static_cast<int>(length);
}

int Book::CloseLib() {
  if (lib_ == nullptr) return 0;
  int r = std::fclose(lib_);
  lib_ = nullptr;
  return r;
}

void Book::GetWord(const int32_t* offset, const BookEntryOut& out) {
  ReadBookEntry(lib_, offset != nullptr ? *offset : 0, out);
}

void Book::GetWordByNo(int no, const BookEntryOut& out) {
  int32_t offset;
  if (idx_ == nullptr || no < 0 || std::fseek(idx_, static_cast<long>(no) * 4, SEEK_SET) != 0 ||
      !ReadI32(idx_, &offset)) {
    ReadBookEntry(nullptr, 0, out);  // empties the outputs
    return;
  }
  ReadBookEntry(lib_, offset, out);
}

bool Book::OpenLibForWrite(int lib_open) {
  if ((lib_open & 0xFF) != 0) return lib_ != nullptr;  // the caller holds it open
  CloseSlot(&lib_);
  lib_ = env::Open(lib_path_, "ab");
  return lib_ != nullptr;
}

long Book::AppendEntry(const BookEntryIn& in) {
  if (std::fseek(lib_, 0, SEEK_END) != 0) return -1;
  long offset = std::ftell(lib_);
  if (offset < 0) return -1;

  const char* pron = in.pronunciation ? in.pronunciation : "";
  size_t pron_len = std::strlen(pron);
  std::string explanation = ExplanationToStore(in.explanation, in.first_line_only);

  std::string entry(1, static_cast<char>(kSeparator));
  entry += in.word ? in.word : "";
  if (pron[0] != '[') entry.push_back('[');
  entry += pron;
  if (pron_len == 0 || pron[pron_len - 1] != ']') entry.push_back(']');
  entry += explanation;
  entry.push_back(static_cast<char>(kSeparator));
  entry.push_back(static_cast<char>(kExtensionMark));
  entry += in.extra1 ? in.extra1 : "";
  entry.push_back(static_cast<char>(kSeparator));
  entry += in.extra2 ? in.extra2 : "";
  entry.push_back(static_cast<char>(kSeparator));
  entry.push_back(static_cast<char>(kTerminator));
  if (std::fwrite(entry.data(), 1, entry.size(), lib_) != entry.size() || std::fflush(lib_) != 0) return -1;
  return offset;
}

int Book::AppendWord(int lib_open, const BookEntryIn& in) {
  bool caller_owns_lib = (lib_open & 0xFF) != 0;
  if (!OpenLibForWrite(lib_open)) return -1;
  CloseSlot(&idx_);
  idx_ = env::Open(idx_path_, "ab");
  if (idx_ == nullptr) {
    if (!caller_owns_lib) CloseSlot(&lib_);
    return -1;
  }
  long offset = AppendEntry(in);
  if (offset >= 0) WriteI32(idx_, static_cast<int32_t>(offset));
  CloseSlot(&idx_);
  if (!caller_owns_lib) CloseSlot(&lib_);
  return offset >= 0 ? 1 : -1;
}

int Book::AddWord(int lib_open, int position, const BookEntryIn& in) {
  bool caller_owns_lib = (lib_open & 0xFF) != 0;
  if (!OpenLibForWrite(lib_open)) return -1;
  std::FILE* temp = nullptr;
  if (position >= 0) {
    temp = env::Open(kTempIndex, "wb");
    if (temp == nullptr) return -1;  // the library stays open in the book
  }
  CloseSlot(&idx_);
  idx_ = env::Open(idx_path_, position < 0 ? "ab" : "rb");
  if (idx_ == nullptr) {
    if (temp != nullptr) {
      std::fclose(temp);
      env::Remove(kTempIndex);
    }
    if (!caller_owns_lib) CloseSlot(&lib_);
    return -1;
  }

  long offset = AppendEntry(in);
  if (position < 0) {
    // Appending through here is not the way to add a word (AppendWord is),
    // but the index still gets the entry's real offset.
    if (offset >= 0) WriteI32(idx_, static_cast<int32_t>(offset));
    CloseSlot(&idx_);
  } else {
    CopyInts(idx_, temp, position);
    if (offset >= 0) WriteI32(temp, static_cast<int32_t>(offset));
    CopyRest(idx_, temp);
    CloseSlot(&idx_);
    std::fclose(temp);
    if (!ReplaceWithTemp(kTempIndex, idx_path_)) offset = -1;
  }
  if (!caller_owns_lib) CloseSlot(&lib_);
  return offset < 0 ? -1 : static_cast<int>(offset);
}

int Book::IfWordInBook(const char* word) {
  CloseSlot(&idx_);
  CloseSlot(&lib_);
  idx_ = env::Open(idx_path_, "rb");
  if (idx_ == nullptr) return 0;
  lib_ = env::Open(lib_path_, "rb");
  if (lib_ == nullptr) {
    CloseSlot(&idx_);
    return -1;
  }
  std::vector<int32_t> offsets;
  int32_t v;
  while (ReadI32(idx_, &v)) offsets.push_back(v);
  int found = 0;
  char stored[kWordLimit + 4];
  BookEntryOut out;
  out.word = stored;
  for (int32_t offset : offsets) {
    ReadBookEntry(lib_, offset, out);
    if (std::strcmp(stored, word ? word : "") == 0) {
      found = 1;
      break;
    }
  }
  CloseSlot(&idx_);
  CloseSlot(&lib_);
  return found;
}

int Book::DeleteWord(int position) {
  std::vector<int32_t> offsets;
  if (!ReadAllOffsets(idx_path_, &offsets)) return -1;
  if (!offsets.empty()) {
    size_t at = position < 0 ? 0 : static_cast<size_t>(position);
    if (at >= offsets.size()) at = offsets.size() - 1;
    offsets.erase(offsets.begin() + static_cast<std::ptrdiff_t>(at));
  }
  std::FILE* f = env::Open(idx_path_, "wb");
  if (f == nullptr) return -1;
  for (int32_t v : offsets) WriteI32(f, v);
  std::fclose(f);
  return 1;
}

int Book::GetWordCount() {
  if (idx_ != nullptr) {
    long length = FileLength(idx_);
    return length < 0 ? -1 : static_cast<int>(length >> 2);
  }
  std::FILE* f = env::Open(idx_path_, "rb");
  if (f == nullptr) return -1;
  long length = FileLength(f);
  std::fclose(f);
  return length < 0 ? -1 : static_cast<int>(length >> 2);
}

}  // namespace tq
