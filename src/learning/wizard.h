// The learning wizard: today's list of words, filled from the history file
// by the rules of selection, and the answer loop that writes every learnt
// record straight back to the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "learning/record.h"

namespace tq {

// For i from 1 to n-1, swaps element i with element r mod i, r a fresh draw
// of the shared random source, widened by 15 bits of ones while i is beyond
// its range. Does not reseed.
void ShuffleRecords(LearningRecord* records, size_t count);

// Today's list: a queue of record copies. Words leave at the front and go
// back by a few places, so it is kept as one array with a moving front: a
// move back is a rotation of the few records it passes, and filling the
// list from a selection is one append.
class RecordQueue {
 public:
  size_t size() const { return items_.size() - head_; }
  bool empty() const { return size() == 0; }
  LearningRecord& front() { return items_[head_]; }
  const LearningRecord& front() const { return items_[head_]; }
  const LearningRecord& at(size_t i) const { return items_[head_ + i]; }
  LearningRecord* data() { return items_.data() + head_; }
  const LearningRecord* begin() const { return items_.data() + head_; }
  const LearningRecord* end() const { return items_.data() + items_.size(); }

  void clear();
  void push_back(const LearningRecord& r) { items_.push_back(r); }
  LearningRecord& back() { return items_.back(); }
  void PopFront();
  // Moves the front record back so that `others` records come before it;
  // beyond the end of the queue means the end.
  void MoveFrontBack(size_t others);

 private:
  std::vector<LearningRecord> items_;
  size_t head_ = 0;
};

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
  // Appends the records that chosen accepts, stopping after stop_at of
  // them (0: no stop) or past the limit's item number.
  template <class Chosen>
  void Collect(RecordReader* reader, int limit, size_t stop_at, Chosen chosen);
  void WriteThrough(const LearningRecord& r) const;
  // Moves the front word back after a miss, by its distance of return.
  void MoveFrontBack();

  int32_t curve_[kCurveLength] = {0, 0, 0, 0, 0, 0, 0};
  int book_ = 0;
  int today_ = 0;
  RecordQueue list_;
  std::string history_path_;
};

}  // namespace tq
