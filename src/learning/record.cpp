#include "learning/record.h"

#include <cstring>
#include <limits>

#include "core/random.h"

namespace tq {
namespace {

constexpr char kYes = 'Y';
constexpr char kNo = 'N';
constexpr char kUnsureMark = 'U';

int16_t Plus1(int16_t v) { return static_cast<int16_t>(static_cast<uint16_t>(v) + 1u); }

bool AddRight(LearningRecord* r) {
  r->rightCount = Plus1(r->rightCount);
  r->results[0] = kYes;
  return true;
}

// A relapsed word comes back after three rights in a row.
void RecoverAfterRun(LearningRecord* r) {
  bool run = r->results[1] == kYes && r->results[2] == kYes;
  if (!run) return;
  if (r->attr == kAttrRelapsedMastered) {
    r->attr = kAttrMastered;
  } else if (r->attr == kAttrRelapsedKnown) {
    r->attr = kAttrKnownFromStart;
  }
}

}  // namespace

LearningRecord BlankRecord(int32_t item_no) {
  LearningRecord r;
  std::memset(&r, 0, sizeof r);
  r.firstDate = kNeverLearnt;
  r.lastDate = kNeverLearnt;
  r.itemNo = item_no;
  return r;
}

bool ApplyResult(LearningRecord* r, int today, int result, const int32_t* curve) {
  const uint16_t day = static_cast<uint16_t>(today);
  bool completed_pass = false;
  bool first_sight = false;
  r->shownCount = Plus1(r->shownCount);
  r->lastDate = day;
  if (r->firstDate == kNeverLearnt) {
    r->stepIndex = Plus1(r->stepIndex);
    r->firstDate = day;
    r->reviewDates[0] = day;
    for (int i = 1; i < kCurveLength; ++i) r->reviewDates[i] = 0;
    r->attr = kAttrLearning;
    r->skipDate = 0;
    std::memset(r->results, 0, sizeof r->results);
    r->passCount = 0;
    r->shownCount = 1;
    r->rightCount = 0;
    first_sight = true;
  } else {
    // A word reviewed before it is due gets no credit for it.
    bool early = curve != nullptr && DueDate(*r, curve) > today;
    if (!early && r->stepIndex >= 0 && r->stepIndex < kCurveLength) {
      r->reviewDates[r->stepIndex] = day;
      r->stepIndex = Plus1(r->stepIndex);
      if (r->stepIndex == kCurveLength) {
        r->stepIndex = 1;
        r->reviewDates[0] = day;
        ++r->passCount;
        completed_pass = true;
      }
    }
    if (r->attr == kAttrNotMet) r->attr = kAttrLearning;
  }
  std::memmove(r->results + 1, r->results, sizeof r->results - 1);
  switch (result) {
    case kRight:
      AddRight(r);
      RecoverAfterRun(r);
      break;
    case kWrong:
      r->results[0] = kNo;
      if (r->attr == kAttrKnownFromStart) {
        r->attr = kAttrRelapsedKnown;
      } else if (r->attr == kAttrMastered) {
        r->attr = kAttrRelapsedMastered;
      }
      break;
    case kUnsure:
      r->results[0] = kUnsureMark;
      break;
    case kKnown:
      AddRight(r);
      if (r->attr == kAttrRelapsedMastered) {
        r->attr = kAttrMastered;
      } else if (r->attr == kAttrRelapsedKnown) {
        r->attr = kAttrKnownFromStart;
      } else {
        r->attr = first_sight ? kAttrKnownFromStart : kAttrMastered;
      }
      break;
    case kRightDoneToday:
      AddRight(r);
      r->skipDate = day;
      RecoverAfterRun(r);
      break;
    default:
      break;  // the shift has doubled the last letter
  }
  return completed_pass;
}

bool FinishedForToday(const LearningRecord& r, int today) {
  const char* res = r.results;
  if (res[0] == kNo || res[0] == kUnsureMark || res[0] == 0) return false;
  if (res[0] == kYes && res[1] == 0) return true;  // right at the very first showing
  if (IsOutOfRotation(r)) return true;
  if (IsRelapsed(r) && res[0] == kYes) return true;
  const bool both_right = res[0] == kYes && res[1] == kYes;
  if (r.firstDate != static_cast<uint16_t>(today) && r.firstDate != kNeverLearnt && RightAbove40Percent(r)) {
    // An older word with a good record leaves after two rights running.
    int yes = 0;
    for (int i = 0; i < 3; ++i) yes += res[i] == kYes;
    return yes >= 2 && both_right;
  }
  // A word met today, or one right no more than 40 percent of the time.
  int yes = 0;
  int misses = 0;
  for (int i = 0; i < 4; ++i) {
    yes += res[i] == kYes;
    misses += res[i] == kNo || res[i] == kUnsureMark;
  }
  if (yes >= 3 && both_right) return true;
  return misses == 0;
}

int ReturnDistance(const LearningRecord& r) {
  SeedRandomFromClock();
  const char r0 = r.results[0];
  const char r1 = r.results[1];
  // An unsure word waits longer than a wrong one, and a right answer after
  // an unsure one longest of all.
  if (r0 == kUnsureMark) return 10 + Random15() % 5;
  if (r0 == kNo) return 2 + Random15() % 3;
  if (r0 == kYes) {
    if (r1 == 0) return 0;
    if (r1 == kNo) return 9 + Random15() % 5;
    if (r1 == kUnsureMark) return 14 + Random15() % 5;
  }
  return -1;
}

int Degree(const LearningRecord& r) {
  if (r.firstDate == kNeverLearnt || r.shownCount == 0) return 0;
  if (IsOutOfRotation(r)) return 1;
  int ratio = r.rightCount * 10 / r.shownCount;
  if (ratio >= 9) return 1;
  if (ratio <= 1) return 9;
  return 10 - ratio;
}

bool ReadRecord(std::FILE* f, LearningRecord* r) {
  LearningRecord tmp;
  if (std::fread(&tmp, 1, sizeof tmp, f) != sizeof tmp) return false;
  *r = tmp;
  return true;
}

bool WriteRecord(std::FILE* f, const LearningRecord& r) { return std::fwrite(&r, 1, sizeof r, f) == sizeof r; }

bool SeekRecord(std::FILE* f, int32_t item_no) {
  // Where a long has 32 bits, a large item number has no position either.
  const int64_t offset = static_cast<int64_t>(item_no) * kRecordSize;
  if (item_no < 0 || offset > std::numeric_limits<long>::max()) return false;
  return std::fseek(f, static_cast<long>(offset), SEEK_SET) == 0;
}

bool RecordReader::Refill() {
  if (ended_) return false;
  size_t got = std::fread(block_.get(), 1, kBlockRecords * kRecordSize, f_);
  if (got < kBlockRecords * kRecordSize) ended_ = true;
  have_ = got / kRecordSize;
  next_ = 0;
  return have_ != 0;
}

}  // namespace tq
