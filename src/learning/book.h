// A word book: the index of library offsets, the library of delimited
// entries, and the tag file beside them.
//
// Library entry as written here:
//   0, word, "[" pronunciation "]", explanation, 0, 1, extra1, 0, extra2, 0, 255
// The index points at the leading 0, so a reader seeks to offset + 1.
// Notebook entries (word, pronunciation, explanation, 0) lack the 1 after the
// explanation, and the same reader stops there.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace tq {

// The tag file opens with this many 32-bit integers of header; word i's tag
// follows at 4 * (kTagHeaderInts + i).
constexpr int kTagHeaderInts = 100;

// The fields of one library entry. Every pointer may be null: the field is
// then read past but not stored.
struct BookEntryOut {
  char* word = nullptr;
  char* explanation = nullptr;
  char* pronunciation = nullptr;
  char* extra1 = nullptr;
  char* extra2 = nullptr;
  int32_t* word_class = nullptr;
};

struct BookEntryIn {
  const char* word = nullptr;
  const char* explanation = nullptr;
  const char* pronunciation = nullptr;
  const char* extra1 = nullptr;
  const char* extra2 = nullptr;
  bool first_line_only = false;
};

// Reads the library entry whose leading separator stands at offset. The
// reader never goes past the end of the file, whatever the entry holds.
void ReadBookEntry(std::FILE* lib, long offset, const BookEntryOut& out);

// An explanation opening with "{nn}" (two ASCII digits) carries a class
// number: true, with the number stored and the four characters removed.
// Any other opening stays as text.
bool SplitClassMark(std::string* explanation, int32_t* word_class);

// The explanation as a writer stores it: whole, or up to its first line end.
std::string ExplanationToStore(const char* explanation, bool first_line_only);

// Puts a finished temporary file in place of the target and removes the
// temporary; false when the target could not be written.
bool ReplaceWithTemp(const char* temp, const char* target);
// The same by renaming, which replaces the target whole; by copying when
// the two lie on different file systems.
bool MoveOver(const char* temp, const char* target);

// Writes count zero integers (blank tags, a tag header); false when a write
// fails.
bool WriteZeros(std::FILE* f, long count);

// Tag file edits, on the path alone. 1, or -1.
int InsertTag(const char* tag_path, int position);
int DeleteTag(const char* tag_path, int position);

class Book {
 public:
  static constexpr int kSeparator = 0;
  static constexpr int kTerminator = 255;
  static constexpr int kExtensionMark = 1;

  Book();
  ~Book() = default;  // open files are the caller's to close
  Book(const Book&) = delete;
  Book& operator=(const Book&) = delete;

  int SetFileNames(const char* idx_path, const char* lib_path);
  int OpenIdx(const char* mode);
  int CloseIdx();
  int ReadWholeIdx(int32_t* dest);
  int WriteWholeIdx(const int32_t* src, int count);
  int OpenLib(const char* mode);
  int CloseLib();
  void GetWord(const int32_t* offset, const BookEntryOut& out);
  void GetWordByNo(int no, const BookEntryOut& out);
  int AppendWord(int lib_open, const BookEntryIn& in);
  int AddWord(int lib_open, int position, const BookEntryIn& in);
  int IfWordInBook(const char* word);
  int DeleteWord(int position);
  int GetWordCount();

  const char* idx_path() const { return idx_path_; }
  const char* lib_path() const { return lib_path_; }

 private:
  // Opens the library for append unless the caller holds it open (low byte
  // of lib_open set). False when there is no library to write to.
  bool OpenLibForWrite(int lib_open);
  // Writes the entry at the end of the open library; its offset, or -1.
  long AppendEntry(const BookEntryIn& in);
  void CloseSlot(std::FILE** slot);

  std::FILE* idx_ = nullptr;
  std::FILE* lib_ = nullptr;
  char idx_path_[256] = {};
  char lib_path_[260] = {};
};

}  // namespace tq
