#include "learning/wizard.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "core/binary_io.h"
#include "core/calendar.h"
#include "core/random.h"
#include "learning/tables.h"
#include "platform/env.h"
#include "platform/host.h"

namespace tq {
namespace {

enum Mode { kModeNew = 0, kModeDue = 1, kModeNone = 2, kModeOpen = 3, kModeAll = 4, kModeToday = 5, kModeDueInOrder = 6 };

// The allowance of new words falls as the load of old words rises.
int NewWordAllowance(int old_in_list) {
  if (old_in_list <= 10) return 30;
  if (old_in_list <= 30) return 20;
  if (old_in_list <= 50) return 10;
  if (old_in_list <= 80) return 5;
  return 3;
}

struct FileCloser {
  std::FILE* f;
  ~FileCloser() {
    if (f != nullptr) std::fclose(f);
  }
};

}  // namespace

const char Wizard::kMasteryQuestion[] =
    "\xb8\xc3\xb5\xa5\xb4\xca\xd2\xd1\xbe\xad\xcd\xea\xb3\xc9\xc8\xab\xb2\xbf\xb8\xb4\xcf\xb0\xa1\xa3"
    "\xbd\xab\xb8\xc3\xb5\xa5\xb4\xca\xcb\xe3\xd7\xf6\xd3\xc0\xbe\xc3\xd5\xc6\xce\xd5\xc2\xf0\xa3\xbf";
const char Wizard::kMasteryTitle[] = "\xc7\xe0\xd1\xe2\xbc\xc7\xb4\xca\xd6\xc7\xc4\xdc\xb4\xf3\xca\xa6";

void ShuffleRecords(std::vector<LearningRecord>* records) {
  std::vector<LearningRecord>& a = *records;
  for (size_t i = 1; i < a.size(); ++i) {
    uint64_t r = static_cast<uint64_t>(Random15());
    uint64_t bound = 0x7FFF;
    while (bound < i) {
      r = (r << 15) | 0x7FFF;
      bound = (bound << 15) | 0x7FFF;
    }
    std::swap(a[i], a[r % i]);
  }
}

void Wizard::SetLearningBook(int book_handle) {
  if (Books().Get(book_handle) != nullptr) book_ = book_handle;
}

void Wizard::SetForgetCurve(const int32_t* curve) {
  if (curve != nullptr) std::memcpy(curve_, curve, sizeof curve_);
}

void Wizard::SetFileName(const char* history_path) { history_path_ = history_path ? history_path : ""; }

bool Wizard::DueOrHard(const LearningRecord& r) const {
  if (r.firstDate == kNeverLearnt) return false;
  bool due_or_weak = DueDate(r, curve_) <= today_ || RightPercent(r) <= 40.0;
  bool stalled = r.stepIndex == kCurveLength && r.attr == kAttrLearning;
  bool skipped = r.skipDate == static_cast<uint16_t>(today_);
  return (due_or_weak || stalled || IsRelapsed(r)) && !IsOutOfRotation(r) && !skipped;
}

bool Wizard::Chosen(int mode, const LearningRecord& r) const {
  switch (mode) {
    case kModeNew:
      return r.firstDate == kNeverLearnt;
    case kModeDue:
    case kModeDueInOrder:
      return DueOrHard(r);
    case kModeOpen:
      return r.attr == kAttrLearning || IsRelapsed(r);
    case kModeAll:
      return true;
    case kModeToday:
      return r.firstDate == static_cast<uint16_t>(today_) && !IsOutOfRotation(r) &&
             r.skipDate != static_cast<uint16_t>(today_);
    default:
      return false;
  }
}

int Wizard::GetWordsToLearn(int mode, int limit) {
  FileCloser file{env::Open(history_path_.c_str(), "rb")};
  if (file.f == nullptr) return -1;
  list_.clear();
  std::vector<LearningRecord> candidates;
  RecordReader reader(file.f);
  LearningRecord r;
  while (reader.Next(&r)) {
    if (Chosen(mode, r)) {
      candidates.push_back(r);
      if (mode == kModeNew && candidates.size() == kNewWordsPerDay) break;
    }
    // limit is the highest item number considered; the record just past it
    // has been tested already.
    if (limit >= 1 && r.itemNo > limit) break;
  }
  if (mode == kModeDue || mode == kModeOpen || mode == kModeAll) ShuffleRecords(&candidates);
  list_.insert(list_.end(), candidates.begin(), candidates.end());
  return ListLength();
}

int Wizard::AddTodayList(int mode_flag, int limit, int32_t* added) {
  int new_in_list = 0;
  int old_in_list = 0;
  std::unordered_set<int32_t> in_list;
  for (const LearningRecord& r : list_) {
    if (r.firstDate == kNeverLearnt) {
      ++new_in_list;
    } else {
      ++old_in_list;
    }
    in_list.insert(r.itemNo);
  }
  FileCloser file{env::Open(history_path_.c_str(), "rb")};
  if (file.f == nullptr) return -1;
  const int allowance = NewWordAllowance(old_in_list);
  const bool add_new = (mode_flag & 0xFF) == 0;
  std::vector<LearningRecord> taken;
  RecordReader reader(file.f);
  LearningRecord r;
  while (reader.Next(&r)) {
    if (IsOutOfRotation(r)) continue;  // before the limit test: these never stop the pass
    if (limit >= 1 && r.itemNo > limit) break;
    r.hardOrNewFlag = 0;
    bool fresh = in_list.count(r.itemNo) == 0;
    if (add_new) {
      if (r.firstDate != kNeverLearnt) continue;
      if (new_in_list >= allowance) break;  // nothing more can be taken
      r.hardOrNewFlag = 1;
      if (fresh) {
        taken.push_back(r);
        ++new_in_list;
      }
    } else {
      if (r.firstDate == kNeverLearnt || !fresh) continue;
      if (limit == 0 || DueDate(r, curve_) <= today_) {
        taken.push_back(r);
      } else if (RightPercent(r) <= 40.0) {
        r.hardOrNewFlag = 1;
        taken.push_back(r);
      }
    }
  }
  if (added != nullptr) *added = static_cast<int32_t>(taken.size());
  if (mode_flag != 0) ShuffleRecords(&taken);  // new words keep file order
  list_.insert(list_.end(), taken.begin(), taken.end());
  return ListLength();
}

void Wizard::WriteThrough(const LearningRecord& r) const {
  // Every answer is on disk at once. A detached record (item -1) cannot be
  // placed and lands at the start of the file; that is the caller's making.
  FileCloser file{env::Open(history_path_.c_str(), "r+b")};
  if (file.f == nullptr) return;
  std::fseek(file.f, 0, SEEK_SET);
  SeekRecord(file.f, r.itemNo);
  WriteRecord(file.f, r);
}

void Wizard::MoveFrontBack() {
  const LearningRecord& front = list_.front();
  int distance = ReturnDistance(front);
  if (list_.size() == 1) return;  // the last word stays in front
  if (distance < 0) {
    list_.push_back(front);
  } else {
    auto place = list_.begin();
    for (int step = 0; step <= distance && place != list_.end(); ++step) ++place;
    list_.insert(place, front);
  }
  list_.pop_front();
}

int Wizard::LearnItem(int result) {
  if (list_.empty()) return 0;
  LearningRecord& front = list_.front();
  const int day = today_ & 0xFFFF;
  bool completed_pass = ApplyResult(&front, day, result, curve_);
  if (completed_pass && (result == kRight || result == kRightDoneToday)) {
    if (host::MessageBox(0, kMasteryQuestion, kMasteryTitle, host::kMbYesNo) == host::kIdYes) {
      front.attr = kAttrMastered;
    }
  }
  WriteThrough(front);
  switch (result) {
    case kRight:
      if (FinishedForToday(front, day)) {
        list_.pop_front();
      } else {
        MoveFrontBack();
      }
      break;
    case kWrong:
    case kUnsure:
      MoveFrontBack();
      break;
    case kKnown:
    case kRightDoneToday:
      list_.pop_front();
      break;
    default:
      break;
  }
  return ListLength();
}

void Wizard::ReadFrontField(Field field, char* out) const {
  if (out == nullptr) return;
  out[0] = '\0';
  Book* book = Books().Get(book_);
  if (book == nullptr || list_.empty()) return;
  BookEntryOut entry;
  switch (field) {
    case Field::kWord:
      entry.word = out;
      break;
    case Field::kExplanation:
      entry.explanation = out;
      break;
    case Field::kPronunciation:
      entry.pronunciation = out;
      break;
  }
  book->GetWordByNo(list_.front().itemNo, entry);
}

void Wizard::GetItemEnglish(char* out) const { ReadFrontField(Field::kWord, out); }
void Wizard::GetItemChinese(char* out) const { ReadFrontField(Field::kExplanation, out); }
void Wizard::GetItemPron(char* out) const { ReadFrontField(Field::kPronunciation, out); }

void Wizard::GetItemAttr(int32_t* shown, int32_t* first_date) const {
  if (list_.empty()) return;
  const LearningRecord& r = list_.front();
  if (shown != nullptr) *shown = r.shownCount;
  if (first_date != nullptr) *first_date = r.firstDate;
}

void Wizard::GetItemAttrString(int position, char* out) const {
  if (out == nullptr) return;
  out[0] = '\0';
  if (position < 0 || position >= ListLength()) return;
  const LearningRecord& r = *std::next(list_.begin(), position);
  static const char kFirstDate[] = "\xb3\xf5\xbc\xc7\xc8\xd5\xc6\xda\xa3\xba";
  static const char kReviews[] = "\xb8\xb4\xcf\xb0\xb4\xce\xca\xfd\xa3\xba";
  static const char kRecent[] = "\xd7\xee\xbd\xfc\xb4\xce\xd1\xa7\xcf\xb0\xd7\xb4\xcc\xac\xa3\xba";
  static const char kShown[] = "\xd7\xdc\xb3\xf6\xcf\xd6\xb4\xce\xca\xfd\xa3\xba";
  static const char kRight[] = "\xd7\xdc\xbb\xe1\xb5\xc4\xb4\xce\xca\xfd\xa3\xba";
  static const char kHardOrNew[] = "\xca\xc7\xb7\xf1\xc4\xd1\xb4\xca\xd0\xc2\xb4\xca\xa3\xba";
  static const char kAttribute[] = "\xca\xf4\xd0\xd4\xa3\xba";
  char date[32];
  char* p = out;
  FormatDayNumber(r.firstDate, date);
  p += std::sprintf(p, "%s%s\r\n%s%d\r\n", kFirstDate, date, kReviews, r.stepIndex);
  int steps = r.stepIndex < kCurveLength ? r.stepIndex : kCurveLength;
  for (int i = 0; i < steps; ++i) {
    FormatDayNumber(r.reviewDates[i], date);
    p += std::sprintf(p, "%s\r\n", date);
  }
  p += std::sprintf(p, "%s%.*s\r\n", kRecent, static_cast<int>(strnlen(r.results, sizeof r.results)), r.results);
  // The hard-or-new line repeats the right count: the front ends expect it.
  std::sprintf(p, "%s%d\r\n%s%d\r\n%s%d\r\n%s%d\r\n", kShown, r.shownCount, kRight, r.rightCount, kHardOrNew,
               r.rightCount, kAttribute, r.attr);
}

int Wizard::SaveList(const char* path) {
  if (list_.empty()) return 0;
  FileCloser list_file{env::Open(path, "wb")};
  if (list_file.f == nullptr) return -1;
  FileCloser history{env::Open(history_path_.c_str(), "r+b")};
  if (history.f == nullptr) return -1;
  for (const LearningRecord& r : list_) {
    WriteI32(list_file.f, r.itemNo);
    std::fseek(history.f, 0, SEEK_SET);
    SeekRecord(history.f, r.itemNo);
    WriteRecord(history.f, r);
  }
  return ListLength();
}

int Wizard::LoadList(const char* path) {
  FileCloser list_file{env::Open(path, "rb")};
  if (list_file.f == nullptr) return -1;
  FileCloser history{env::Open(history_path_.c_str(), "rb")};
  if (history.f == nullptr) return -1;
  // An item past the history's end keeps the bytes of the one before.
  LearningRecord r = BlankRecord(-1);
  int32_t item;
  while (ReadI32(list_file.f, &item)) {
    if (SeekRecord(history.f, item)) ReadRecord(history.f, &r);
    list_.push_back(r);
  }
  return ListLength();
}

int Wizard::ExportList(int32_t* out) const {
  if (out != nullptr) {
    for (const LearningRecord& r : list_) *out++ = r.itemNo;
  }
  return ListLength();
}

int Wizard::AppendMp3List(int32_t* items, int count) const {
  std::unordered_set<int32_t> chosen;
  for (int i = 0; i < count; ++i) chosen.insert(items[i]);
  FileCloser file{env::Open(history_path_.c_str(), "rb")};
  if (file.f == nullptr) return count;
  // Unlearnt words first, then every other word still in rotation, each
  // group in file order.
  for (int pass = 0; pass < 2; ++pass) {
    std::fseek(file.f, 0, SEEK_SET);
    RecordReader reader(file.f);
    LearningRecord r;
    while (reader.Next(&r)) {
      if (IsOutOfRotation(r)) continue;
      if (pass == 0 && r.firstDate != kNeverLearnt) continue;
      if (!chosen.insert(r.itemNo).second) continue;
      items[count++] = r.itemNo;
    }
  }
  return count;
}

}  // namespace tq
