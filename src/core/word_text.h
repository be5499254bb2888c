// Users' own word lists as plain text, delivered as English items with
// their Chinese meanings.
//
// Two layouts are met in the wild: the English item on one line and its
// meaning on the next ("alternate lines"), or both on one line ("one
// line"), the meaning starting at its part-of-speech mark (n., adj.), after
// an English phrase ending in "sth." or "sb.", or at its first Chinese
// character. EnglishTextFile reads both; the word file reader, which works
// on a record the caller owns, knows the alternate layout only.
#pragma once

#include <cstdio>
#include <string>

#include "core/handle_table.h"
#include "tqcomm2006.h"

namespace tq {

class EnglishTextFile {
 public:
  static constexpr int kLineBuffer = 4000;  // lines take up to 3,998 bytes

  explicit EnglishTextFile(bool splitLines) : split_lines_(splitLines) {}
  ~EnglishTextFile();
  EnglishTextFile(const EnglishTextFile&) = delete;
  EnglishTextFile& operator=(const EnglishTextFile&) = delete;

  bool Open(const char* path);
  // The next item: 1, or -1 at the end of the file. Both outputs are
  // emptied first; each needs room for a whole line (4,000 bytes).
  int NextItem(char* english, char* chinese);

 private:
  // The next line that is not empty once trimmed, into line_; false at the end.
  bool NextTextLine();
  int NextAlternate(char* english, char* chinese);
  void SplitLine(char* english, char* chinese);

  std::FILE* file_ = nullptr;
  char line_[kLineBuffer] = {};
  bool pending_ = false;  // line_ already holds the next item's English line
  bool split_lines_;
};

// Handles 1 to 19, each used once in the life of the process: a closed
// handle's slot stays taken, so the twentieth open fails with -1.
using EnglishTextFileTable = HandleTable<EnglishTextFile, 20, -1>;
EnglishTextFileTable& EnglishTextFiles();

// Opens a reader in a fresh slot: its handle, or -1 when the table is full
// or the file will not open (the slot is spent all the same).
int OpenEnglishTextFile(const char* path, bool splitLines);

// The word file reader over the caller's record.
int InitWordFile(WordFileObj* obj, const char* path, char* buffer, uint32_t bufferSize);
// -1 at the end of the file (word may still be filled: the last word of a
// file with no meaning behind it), 0 when the line is no English word, else
// the length of word.
int NextWordFromWordFile(WordFileObj* obj, char* word, char* mean);
// Closes the stream at the head of a record; the result of the close, or
// -1 when none is open.
int CloseLeadingStream(TqStream* stream);

}  // namespace tq
