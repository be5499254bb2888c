// The compact dictionary: 96-byte index records behind a handle, the
// library of the classic form, and a search that reports how it ended.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "core/handle_table.h"
#include "dict/detail.h"
#include "platform/mapped_file.h"
#include "tqcomm2006.h"

namespace tq::dict {

class EcDict {
 public:
  static constexpr int kRecord = 96;
  static constexpr int kWordField = 64;
  static constexpr int kOwnBuffer = 6000;

  // Null when either file cannot be opened.
  static EcDict* Open(const char* idxPath, const char* libPath, char* workBuffer);
  ~EcDict();

  int Search(const char* word, int tryBaseForm, int acceptClosest);
  int SearchResult() const { return search_result_; }
  int WordGrade() const { return state_ == 1 ? static_cast<int>(grade_) : -1; }
  int GetResultWord(char* out) const;
  int GetMeanOrPron(char* mean, char* pron);
  int GetDetailLength(int index) const;
  int GetDetailLengthArray(uint32_t* lengths) const;
  int GetAllDetails(char* out);
  int GetOneDetail(char* out, int index);
  int FillListWithEnglish(int listWindow);
  int FillRelatedWordList(int synonymList, int antonymList);
  int WildSearch(char* pattern, char* outBuffer, int listWindow, int progressWindow);

  // The meaning of the current record as GetMeanOrPron gives it.
  std::string CurrentMeaning();

 private:
  EcDict() = default;
  // Lookups go to the mapped view when there is one; the file's position is
  // then brought to where stdio reads would have left it before the file
  // itself is next read.
  template <class Fn>
  auto WithRecords(Fn fn);
  void SettleIndex();
  // Brings the view up to date after this process rewrote a compact index.
  void CheckView();
  char* Buffer(char* out) { return out != nullptr ? out : work_buffer_; }
  uint64_t Room(char* out) const { return out == nullptr && owns_buffer_ ? kOwnBuffer - 1 : UINT64_MAX; }
  EntryRef Entry() const { return entry_; }

  std::FILE* idx_ = nullptr;
  std::FILE* lib_ = nullptr;
  env::MappedFile map_;
  long pending_position_ = -1;
  unsigned rewrites_seen_ = 0;
  char idx_path_[80] = {0};
  char lib_path_[80] = {0};
  char word_[kWordField] = {0};
  EntryRef entry_;
  char* work_buffer_ = nullptr;
  int search_result_ = 0;
  bool owns_buffer_ = false;
  uint32_t grade_ = 0;
  int state_ = -1;
};

using EcDicts = HandleTable<EcDict, 20, -1>;
EcDicts& EcDictTable();

int OpenEcDict(const char* idxPath, const char* libPath, char* workBuffer);

// Word list with meanings; see vcCmAppendMean.
int AppendMean(MeanLibObject* meanLib, EcDict* wordDict, EcDict* exprDict, const char* srcPath,
               const char* dstPath);

// The classic pairs below "dictlib\" into compact ones.
int OldDictToNew();

}  // namespace tq::dict
