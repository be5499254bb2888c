// The user's notebook: a word book of short entries that grows by appending
// and shrinks by rewriting.
//
// Library: one 0 byte, then per word "word[pron]explanation" and a 0, so
// each entry's index offset is the 0 that ends the entry before it. A
// rewrite gives every kept entry a 0 on both sides; readers start at
// offset + 1 and take both forms alike. The tag file beside it has the
// usual 100-integer header.
#pragma once

#include <cstdint>
#include <string>

#include "tqcomm2006.h"

namespace tq {

class Notebook {
 public:
  // The index path; library and tag file are the same path plus ".lib" and
  // ".tag".
  explicit Notebook(std::string idx_path);

  // Appends one entry, its offset and a zero tag. 0; -1 after telling the
  // user what failed in a message box.
  int Append(const char* word, const char* explanation, const char* pronunciation, bool first_line_only);
  // n zero tags, after a zero header when the tag file is new. 0, or -1.
  int AppendBlankTags(int n);
  // Removes index and tag file; the library is reset to its one 0 byte.
  void Clear();

  // Rewrites the notebook keeping word i (at offsets[i] of the record's
  // library) when flags[i] is 0, with its tag tags[100 + i]. Once the
  // temporaries are made the record's library is closed, whatever follows.
  // 0, or -1 with the notebook as it was.
  int KeepWords(BookRecord* record, const int32_t* offsets, const int32_t* tags, const int32_t* flags, int n);

  static constexpr char kTitle[] = "\xc4\xab\xc1\xeb\xd3\xa2\xd3\xef";
  static constexpr char kLibOpenFailed[] = "\xb1\xca\xbc\xc7\xb1\xbe\xb4\xca\xbf\xe2\xb4\xf2\xb2\xbb\xbf\xaa.";
  static constexpr char kIdxOpenFailed[] = "\xb1\xca\xbc\xc7\xb1\xbe\xce\xc4\xbc\xfe\xb4\xf2\xb2\xbb\xbf\xaa.";
  static constexpr char kLibWriteFailed[] = "\xb1\xca\xbc\xc7\xb1\xbe\xb4\xca\xbf\xe2\xd0\xb4\xb4\xed\xce\xf3.";
  static constexpr char kIdxWriteFailed[] = "\xb1\xca\xbc\xc7\xb1\xbe\xce\xc4\xbc\xfe\xd0\xb4\xb4\xed\xce\xf3.";
  static constexpr char kTagWriteFailed[] =
      "\xb1\xca\xbc\xc7\xb1\xbe\xb1\xea\xd6\xbe\xce\xc4\xbc\xfe\xd0\xb4\xca\xa7\xb0\xdc";

 private:
  std::string idx_, lib_, tag_;
};

// A new notebook library of one 0 byte at the path as given. 1, or -1.
int MakeBlankNotebookLibrary(const char* lib_path);

// Copies src to dst with every byte XORed with the sound key, from the
// key's start. 1, or -1.
int CopyWithSoundKey(const char* src, const char* dst);

}  // namespace tq
