#include "learning/wizard.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
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

void ShuffleRecords(LearningRecord* a, size_t count) {
  if (count < 2) return;
  std::vector<int> draws(count - 1);
  Random15Fill(draws.data(), draws.size());
  for (size_t i = 1; i < count; ++i) {
    uint64_t r = static_cast<uint64_t>(draws[i - 1]);
    uint64_t bound = 0x7FFF;
    while (bound < i) {
      r = (r << 15) | 0x7FFF;
      bound = (bound << 15) | 0x7FFF;
    }
    std::swap(a[i], a[r % i]);
  }
}

void RecordQueue::clear() {
  items_.clear();
  head_ = 0;
}

void RecordQueue::PopFront() {
  ++head_;
  if (head_ == items_.size()) {
    clear();
  } else if (head_ >= 4096 && head_ * 2 >= items_.size()) {
    // Words sent to the end keep the array growing; give back the front.
    items_.erase(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(head_));
    head_ = 0;
  }
}

void RecordQueue::MoveFrontBack(size_t others) {
  if (others + 1 >= size()) {
    LearningRecord copy = front();
    items_.push_back(copy);
    PopFront();
    return;
  }
  LearningRecord* first = data();
  std::rotate(first, first + 1, first + others + 1);
}

void Wizard::SetLearningBook(int book_handle) {
  if (Books().Get(book_handle) != nullptr) book_ = book_handle;
}

void Wizard::SetForgetCurve(const int32_t* curve) {
  if (curve != nullptr) std::memcpy(curve_, curve, sizeof curve_);
}

void Wizard::SetFileName(const char* history_path) { history_path_ = history_path ? history_path : ""; }

namespace {

// Due or hard, for the review modes: chosen when (due or weak, or stalled,
// or relapsed) and open and not skipped today; the cheap tests go first.
struct DueOrHard {
  int today;
  int32_t curve[kCurveLength];

  bool operator()(const LearningRecord& r) const {
    if (r.firstDate == kNeverLearnt || IsOutOfRotation(r) || r.skipDate == static_cast<uint16_t>(today)) return false;
    if (IsRelapsed(r) || (r.stepIndex == kCurveLength && r.attr == kAttrLearning)) return true;
    return DueDate(r, curve) <= today || RightAtMost40Percent(r);
  }
};

}  // namespace

template <class Chosen>
void Wizard::Collect(RecordReader* reader, int limit, size_t stop_at, Chosen chosen) {
  while (const LearningRecord* r = reader->Next()) {
    if (chosen(*r)) {
      list_.push_back(*r);
      if (list_.size() == stop_at) break;
    }
    // limit is the highest item number considered; the record just past it
    // has been tested already.
    if (limit >= 1 && r->itemNo > limit) break;
  }
}

int Wizard::GetWordsToLearn(int mode, int limit) {
  FileCloser file{env::Open(history_path_.c_str(), "rb")};
  if (file.f == nullptr) return -1;
  list_.clear();
  // The list is empty, so the candidates are gathered in its own array.
  RecordReader reader(file.f);
  const uint16_t today = static_cast<uint16_t>(today_);
  const size_t no_stop = 0;
  switch (mode) {
    case kModeNew:
      Collect(&reader, limit, kNewWordsPerDay, [](const LearningRecord& r) { return r.firstDate == kNeverLearnt; });
      break;
    case kModeDue:
    case kModeDueInOrder:
      {
        // A copy, so that the pass keeps date and curve in registers.
        DueOrHard due{today_, {}};
        std::memcpy(due.curve, curve_, sizeof due.curve);
        Collect(&reader, limit, no_stop, due);
      }
      break;
    case kModeOpen:
      Collect(&reader, limit, no_stop,
              [](const LearningRecord& r) { return r.attr == kAttrLearning || IsRelapsed(r); });
      break;
    case kModeAll:
      Collect(&reader, limit, no_stop, [](const LearningRecord&) { return true; });
      break;
    case kModeToday:
      Collect(&reader, limit, no_stop, [today](const LearningRecord& r) {
        return r.firstDate == today && !IsOutOfRotation(r) && r.skipDate != today;
      });
      break;
    default:
      break;  // chooses nothing; the pass reads nothing that matters
  }
  if (mode == kModeDue || mode == kModeOpen || mode == kModeAll) ShuffleRecords(list_.data(), list_.size());
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
  // Taken records go straight to the end of the list; the set only holds
  // what was there before.
  const size_t before = list_.size();
  auto fresh = [&in_list](int32_t item) { return in_list.empty() || in_list.count(item) == 0; };
  auto take = [this](const LearningRecord& r, uint16_t hard_or_new) {
    list_.push_back(r);
    list_.back().hardOrNewFlag = hard_or_new;
  };
  int32_t curve[kCurveLength];  // copies, kept in registers through the pass
  std::memcpy(curve, curve_, sizeof curve);
  const int today = today_;
  RecordReader reader(file.f);
  while (const LearningRecord* next = reader.Next()) {
    const LearningRecord& r = *next;
    if (IsOutOfRotation(r)) continue;  // before the limit test: these never stop the pass
    if (limit >= 1 && r.itemNo > limit) break;
    if (add_new) {
      if (r.firstDate != kNeverLearnt) continue;
      if (new_in_list >= allowance) break;  // nothing more can be taken
      if (fresh(r.itemNo)) {
        take(r, 1);
        ++new_in_list;
      }
    } else {
      if (r.firstDate == kNeverLearnt) continue;
      if (limit == 0 || DueDate(r, curve) <= today) {
        if (fresh(r.itemNo)) take(r, 0);
      } else if (RightAtMost40Percent(r)) {
        if (fresh(r.itemNo)) take(r, 1);  // a hard word
      }
    }
  }
  const size_t taken = list_.size() - before;
  if (added != nullptr) *added = static_cast<int32_t>(taken);
  if (mode_flag != 0) ShuffleRecords(list_.data() + before, taken);  // new words keep file order
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
  int distance = ReturnDistance(list_.front());
  if (list_.size() == 1) return;  // the last word stays in front
  list_.MoveFrontBack(distance < 0 ? list_.size() : static_cast<size_t>(distance));
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
        list_.PopFront();
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
      list_.PopFront();
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
  const LearningRecord& r = list_.at(static_cast<size_t>(position));
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
