// A word book held in a record that the front end owns: the index, library
// and tag file open in it as stream numbers, the separator, and the index
// path that names the sibling files. The reading here is the quick kind:
// fixed windows of the library (learning/book_window.h), not whole entries.
//
// The record's files are the caller's: opened here only when asked, and
// never closed behind its back. An open stores its stream over whatever
// the record held, since a record may start out uninitialised.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "tqcomm2006.h"

namespace tq {

class RecordBook {
 public:
  explicit RecordBook(BookRecord* record) : r_(record) {}

  // The word count, or -1. Stores the path as the record's name.
  int OpenIdx(const char* path);
  // The library's length, or -1. A null path means name + ".lib".
  int OpenLib(const char* path);
  // 0, or -2 when fewer than count offsets came.
  int ReadIndex(int32_t* dest, int count);
  int CloseIdx();
  int CloseLib();

  // The quick readers; see the boundary header for what each answers.
  int Word(int64_t offset, char* out);
  int WordByNo(int no, char* out);
  int Explanation(int64_t offset, char* out);
  // 0, or -3.
  int Export(const char* path);

  // Tags; a null path means the record's name.
  int OpenTags(const char* idx_path);
  int ReadTagsThenClose(int32_t* buffer);
  int ReadTagsOnce(int32_t* buffer, const char* idx_path);
  int WriteTags(const char* idx_path, const int32_t* buffer, int count);

  std::FILE* lib() const;
  int separator() const { return r_->separator; }
  // The given index path, else the record's name.
  std::string Stem(const char* idx_path) const;

 private:
  BookRecord* r_;
};

// The word count of an index file, 0 when it is missing.
int IndexWordCount(const char* idx_path);

}  // namespace tq
