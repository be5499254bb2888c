// The learning wizard: today's list of words, filled from the history file
// by the rules of selection, and the answer loop that writes every learnt
// record straight back to the file.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "learning/record.h"

namespace tq {

// For i from 1 to n-1, swaps element i with element r mod i, r a fresh draw
// of the shared random source, widened by 15 bits of ones while i is beyond
// its range. Does not reseed.
void ShuffleRecords(std::vector<LearningRecord>* records);

class Wizard {
 public:
  // The message box asked when a word completes a pass of the curve.
  static const char kMasteryQuestion[];
  static const char kMasteryTitle[];
  static constexpr int kNewWordsPerDay = 21;  // mode 0's selection

  Wizard() = default;

  void SetLearningBook(int book_handle);
  void SetForgetCurve(const int32_t* curve);
  void SetFileName(const char* history_path);
  void SetDate(int today) { today_ = today; }

  int GetWordsToLearn(int mode, int limit);
  int AddTodayList(int mode_flag, int limit, int32_t* added);
  int LearnItem(int result);
  int ListLength() const { return static_cast<int>(list_.size()); }

  // The front word's text, read from the book; empty without a book or a word.
  void GetItemEnglish(char* out) const;
  void GetItemChinese(char* out) const;
  void GetItemPron(char* out) const;
  void GetItemAttr(int32_t* shown, int32_t* first_date) const;
  void GetItemAttrString(int position, char* out) const;

  int SaveList(const char* path);
  int LoadList(const char* path);
  int ExportList(int32_t* out) const;
  int AppendMp3List(int32_t* items, int count) const;

 private:
  enum class Field { kWord, kExplanation, kPronunciation };
  void ReadFrontField(Field field, char* out) const;
  bool Chosen(int mode, const LearningRecord& r) const;
  bool DueOrHard(const LearningRecord& r) const;
  void WriteThrough(const LearningRecord& r) const;
  // Moves the front word back after a miss, by its distance of return.
  void MoveFrontBack();

  int32_t curve_[kCurveLength] = {0, 0, 0, 0, 0, 0, 0};
  int book_ = 0;
  int today_ = 0;
  std::list<LearningRecord> list_;
  std::string history_path_;
};

}  // namespace tq
