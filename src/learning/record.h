// The learning record: one 48-byte record per word in a history file, at
// item number x 48, and the four judgements the scheduler makes on it.
// Everything here is pure and knows nothing of files, apart from the two
// small readers and writers of a record at the end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "tqcomm2006.h"

namespace tq {

// The record's layout is the history file's, declared with its offsets in
// the public header; it is read and written as it stands.
using LearningRecord = ::LearningRecord;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "history files are little-endian and records are read as they stand"
#endif

constexpr int kRecordSize = 48;
constexpr uint16_t kNeverLearnt = 65535;
constexpr int kNeverDue = 100000000;
constexpr int kCurveLength = 7;

// What a word's attribute says about it.
enum Attr : uint16_t {
  kAttrNotMet = 0,
  kAttrKnownFromStart = 1,
  kAttrLearning = 2,
  kAttrMastered = 3,
  kAttrRelapsedKnown = 4,     // from 1
  kAttrRelapsedMastered = 5,  // from 3
};

// Results of one showing.
enum Result : int { kRight = 1, kWrong = 2, kUnsure = 3, kKnown = 4, kRightDoneToday = 5 };

// A record for a word never met.
LearningRecord BlankRecord(int32_t item_no);

// Words with these attributes are out of the daily rotation.
inline bool IsOutOfRotation(const LearningRecord& r) {
  return r.attr == kAttrKnownFromStart || r.attr == kAttrMastered;
}
inline bool IsRelapsed(const LearningRecord& r) {
  return r.attr == kAttrRelapsedKnown || r.attr == kAttrRelapsedMastered;
}

// rightCount / shownCount * 100 against 40, as a floating-point division
// decides it (x/0 is infinite, 0/0 compares false both ways). With counts of
// 16 bits the quotient never lies near enough to 40 percent to round across
// it, and exactly 40 percent comes out as exactly 40, so whole numbers give
// the same answers without a division per record.
inline bool RightAtMost40Percent(const LearningRecord& r) {
  const int shown = r.shownCount;
  const int right = r.rightCount;
  if (shown > 0) return 5 * right <= 2 * shown;
  if (shown < 0) return 5 * right >= 2 * shown;
  return right < 0;
}
inline bool RightAbove40Percent(const LearningRecord& r) {
  const int shown = r.shownCount;
  const int right = r.rightCount;
  if (shown > 0) return 5 * right > 2 * shown;
  if (shown < 0) return 5 * right < 2 * shown;
  return right > 0;
}

// The day the next review falls due: the last review plus the next interval
// of the curve; kNeverDue for a word never learnt or past its last step.
// (Inline: selection asks it of every record of a history file.)
inline int DueDate(const LearningRecord& r, const int32_t* curve) {
  if (r.firstDate == kNeverLearnt || r.stepIndex >= kCurveLength) return kNeverDue;
  // A learnt record always has a step of 1 or more; one that does not (a
  // damaged file) is due again from the start of its pass.
  if (r.stepIndex < 1) return r.reviewDates[0];
  int s = r.stepIndex;
  return static_cast<int>(static_cast<int64_t>(curve[s]) - curve[s - 1] + r.reviewDates[s - 1]);
}

// Applies one result given on day today. With a curve, a review before the
// due date gets no step. True when this update completed a pass of the curve.
bool ApplyResult(LearningRecord* r, int today, int result, const int32_t* curve);

// After an update: may the word leave today's list?
bool FinishedForToday(const LearningRecord& r, int today);

// How many other words come before a word that stays in today's list; -1
// for the end of the list. Reseeds the shared random source from the clock.
int ReturnDistance(const LearningRecord& r);

// Difficulty for display, 0 (never met) to 9 (hardest).
int Degree(const LearningRecord& r);

// Whole records at the file's current position; false on a short read.
bool ReadRecord(std::FILE* f, LearningRecord* r);
bool WriteRecord(std::FILE* f, const LearningRecord& r);
// Positions a file at an item's record.
bool SeekRecord(std::FILE* f, int32_t item_no);

// Reads the records of a file from its current position in large blocks,
// for passes over a whole history file. A trailing partial record ends the
// pass, so a truncated file reads as a shorter book.
class RecordReader {
 public:
  explicit RecordReader(std::FILE* f) : f_(f), block_(new LearningRecord[kBlockRecords]) {}
  // The next record, valid until the following call; null at the end.
  const LearningRecord* Next() {
    if (next_ == have_ && !Refill()) return nullptr;
    return &block_[next_++];
  }
  bool Next(LearningRecord* r) {
    const LearningRecord* next = Next();
    if (next != nullptr) *r = *next;
    return next != nullptr;
  }

 private:
  static constexpr size_t kBlockRecords = 2048;  // 192 KB
  bool Refill();
  std::FILE* f_;
  std::unique_ptr<LearningRecord[]> block_;
  size_t have_ = 0;  // records in block_
  size_t next_ = 0;
  bool ended_ = false;
};

}  // namespace tq
