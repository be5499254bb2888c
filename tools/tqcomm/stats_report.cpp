#include "stats_report.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

constexpr uint16_t kNeverLearnt = 65535;
constexpr int kLastDay = 65534;

// The item numbers the wizard would put on the list on one day (due by the
// curve, or hard words that it offers every day), sorted. Selection mode 6
// keeps file order, so the list is usually sorted already.
class DaySelection {
 public:
  explicit DaySelection(const StatsInput& in) : wizard_(vcCOrvexWizard_New()) {
    if (wizard_ <= 0) return;
    vcCOrvexWizard_SetFileNames(wizard_, in.history.c_str());
    vcCOrvexWizard_SetForgetCurve(wizard_, in.curve);
  }
  ~DaySelection() {
    if (wizard_ > 0) vcCOrvexWizard_Delete(wizard_);
  }
  bool ok() const { return wizard_ > 0; }

  // How many; -1 when the history cannot be read. limit: the highest item
  // number the wizard need read up to (0: all).
  int Count(int day, int limit) {
    vcCOrvexWizard_SetDate(wizard_, day);
    return vcCOrvexWizard_GetWordsToLearn(wizard_, 6, limit);
  }
  // Which.
  bool On(int day, int limit, std::vector<int32_t>* items) {
    int n = Count(day, limit);
    if (n < 0) return false;
    items->resize(static_cast<size_t>(n));
    vcCOrvexWizard_ExportList(wizard_, items->data());
    if (!std::is_sorted(items->begin(), items->end())) std::sort(items->begin(), items->end());
    return true;
  }

 private:
  int wizard_;
};

int64_t CountCommon(const std::vector<int32_t>& a, const std::vector<int32_t>& b) {
  int64_t n = 0;
  auto i = a.begin();
  auto j = b.begin();
  while (i != a.end() && j != b.end()) {
    if (*i < *j) {
      ++i;
    } else if (*j < *i) {
      ++j;
    } else {
      ++n, ++i, ++j;
    }
  }
  return n;
}

std::vector<int32_t> Without(const std::vector<int32_t>& a, const std::vector<int32_t>& b) {
  std::vector<int32_t> out;
  std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(out));
  return out;
}

// Words picked on the coming days, into picked[1..] (picked[0], today's, is
// known). With no word skipped on a coming day, a word once picked stays
// picked, so the days from lo to hi pick no new word when both ends pick as
// many: a stretch with nothing falling due costs the wizard no pass.
bool CountComing(DaySelection* select, int limit, int today, int lo, int hi, std::vector<int>* picked) {
  int& at_hi = (*picked)[static_cast<size_t>(hi)];
  if (at_hi < 0 && (at_hi = select->Count(today + hi, limit)) < 0) return false;
  if (hi - lo <= 1) return true;
  if ((*picked)[static_cast<size_t>(lo)] == at_hi) {
    std::fill(picked->begin() + lo + 1, picked->begin() + hi, at_hi);
    return true;
  }
  int mid = lo + (hi - lo) / 2;
  return CountComing(select, limit, today, lo, mid, picked) && CountComing(select, limit, today, mid, hi, picked);
}

// The forecast. A word falls due on day d when the wizard picks it on d and
// not on the day before. Day 1 (1899-12-31) lies before any learning, so
// what is picked then is picked every day: the hard words (right 40 percent
// of the time or less, relapsed, or past the curve's end). The wizard need
// not read past the last word ever learnt: the blank records after it are
// never due.
bool GatherDue(const StatsInput& in, int days, int limit, bool skipped_ahead, StatsReport* out) {
  DaySelection select(in);
  std::vector<int32_t> always, before, today;
  if (!select.ok() || !select.On(1, limit, &always) || !select.On(in.day - 1, limit, &before) ||
      !select.On(in.day, limit, &today)) {
    return false;
  }
  out->due_today = static_cast<int>(today.size());
  out->hard = static_cast<int>(CountCommon(today, always));
  std::vector<int32_t> by_curve = Without(today, always);
  out->overdue = static_cast<int>(CountCommon(by_curve, before));
  out->falling_due = static_cast<int>(by_curve.size()) - out->overdue;
  out->coming.assign(static_cast<size_t>(days), 0);
  if (!skipped_ahead) {
    std::vector<int> picked(static_cast<size_t>(days) + 1, -1);
    picked[0] = out->due_today;
    if (!CountComing(&select, limit, in.day, 0, days, &picked)) return false;
    for (int i = 0; i < days; ++i) out->coming[static_cast<size_t>(i)] = picked[i + 1] - picked[i];
    return true;
  }
  // A record (a damaged one) skipped on a coming day drops out of that
  // day's pick: compare the words day by day.
  std::vector<int32_t> next;
  for (int i = 0; i < days; ++i) {
    if (!select.On(in.day + 1 + i, limit, &next)) return false;
    out->coming[static_cast<size_t>(i)] = static_cast<int>(next.size() - CountCommon(next, today));
    today.swap(next);
  }
  return true;
}

// A learnt record whose days and counts could have come from learning up to
// today: first learning, reviews and last learning in order, no later than
// today, and no more right answers than showings.
bool Possible(const LearningRecord& r, int today) {
  if (r.firstDate > today || r.lastDate > today || r.lastDate < r.firstDate || r.skipDate > today) return false;
  if (r.stepIndex < 1 || r.stepIndex > 7) return false;
  for (int s = 0; s < r.stepIndex; ++s) {
    if (r.reviewDates[s] < r.firstDate || r.reviewDates[s] > r.lastDate) return false;
  }
  return r.shownCount >= 1 && r.rightCount >= 0 && r.rightCount <= r.shownCount;
}

// The days a record shows the word answered: its first learning, the
// reviews of the present pass and its last learning, each day once.
void AddAnswerDays(const LearningRecord& r, int first_day, std::vector<int>* answered) {
  uint16_t days[9];
  int n = 0;
  days[n++] = r.firstDate;
  days[n++] = r.lastDate;
  for (int s = 0; s < r.stepIndex; ++s) days[n++] = r.reviewDates[s];
  std::sort(days, days + n);
  for (int i = 0; i < n; ++i) {
    if (i > 0 && days[i] == days[i - 1]) continue;
    int slot = days[i] - first_day;
    if (slot >= 0 && slot < static_cast<int>(answered->size())) ++(*answered)[static_cast<size_t>(slot)];
  }
}

bool WorseLeech(const Leech& a, const Leech& b) { return a.wrong != b.wrong ? a.wrong > b.wrong : a.item < b.item; }

// One pass over the records as the history file lays them out: the past
// answers, the shares right, the leeches. *limit gets the item number a
// pass of the wizard may stop at and still see every learnt word: the
// highest up to the last learnt record (the wizard stops after the first
// record numbered above its limit).
bool GatherPast(const StatsInput& in, StatsReport* out, int* limit, bool* skipped_ahead) {
  std::FILE* f = std::fopen(in.history.c_str(), "rb");
  if (f == nullptr) return false;
  out->answered.assign(kPastDays, 0);
  const int first_day = in.day - (kPastDays - 1);
  std::vector<Leech> leeches;
  int32_t highest = 1;
  *limit = 1;
  *skipped_ahead = false;
  constexpr size_t kBlock = 4096;
  std::unique_ptr<unsigned char[]> block(new unsigned char[kBlock * 48]);
  size_t got;
  while ((got = std::fread(block.get(), 1, kBlock * 48, f)) > 0) {
    size_t whole = got / 48;
    out->stray_bytes = static_cast<int64_t>(got % 48);  // only the last read can end short
    out->records += static_cast<int64_t>(whole);
    for (size_t i = 0; i < whole; ++i) {
      LearningRecord r;
      std::memcpy(&r, block.get() + i * 48, 48);
      highest = std::max(highest, r.itemNo);
      if (r.firstDate == kNeverLearnt) continue;
      *limit = highest;
      if (r.skipDate > in.day) *skipped_ahead = true;
      if (!Possible(r, in.day)) {
        ++out->impossible;
        continue;
      }
      AddAnswerDays(r, first_day, &out->answered);
      if (in.day - r.firstDate < 7) {
        out->right_first_week += r.rightCount;
        out->shown_first_week += r.shownCount;
      } else {
        out->right_older += r.rightCount;
        out->shown_older += r.shownCount;
      }
      int wrong = r.shownCount - r.rightCount;
      if (wrong >= kLeechWrong) leeches.push_back(Leech{r.itemNo, wrong, r.shownCount, {}});
    }
  }
  std::fclose(f);
  out->leech_count = static_cast<int>(leeches.size());
  size_t shown = std::min(leeches.size(), static_cast<size_t>(kLeechesShown));
  std::partial_sort(leeches.begin(), leeches.begin() + static_cast<std::ptrdiff_t>(shown), leeches.end(), WorseLeech);
  leeches.resize(shown);
  static char word[4096];
  for (Leech& l : leeches) {
    if (l.item < 0 || l.item >= in.book_words) continue;
    word[0] = '\0';
    vcCOrvexBook_GetWordByNo(in.book, l.item, word, nullptr, nullptr, nullptr, nullptr, nullptr);
    l.word = word;
  }
  out->leeches = std::move(leeches);
  return true;
}

std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Format(const char* format, ...) {
  char line[512];
  va_list args;
  va_start(args, format);
  std::vsnprintf(line, sizeof line, format, args);
  va_end(args);
  return line;
}

const char* WeekDay(int day) {
  static const char* const kNames[7] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  return kNames[(day % 7 + 6) % 7];  // day 0, 1899-12-30, was a Saturday
}

// One line a day: the date, the count and a bar of up to 40 marks.
std::string DayLines(const std::vector<int>& counts, int first_day) {
  int most = counts.empty() ? 0 : *std::max_element(counts.begin(), counts.end());
  std::string out;
  for (size_t i = 0; i < counts.size(); ++i) {
    int day = first_day + static_cast<int>(i);
    int marks = most > 0 ? (counts[i] * 40 + most - 1) / most : 0;
    out += Format("  %s %s %5d", DateText(day).c_str(), WeekDay(day), counts[i]);
    out += marks > 0 ? "  " + std::string(static_cast<size_t>(marks), '#') + "\n" : "\n";
  }
  return out;
}

std::string Share(int64_t right, int64_t shown) {
  if (shown == 0) return "no answers";
  return Format("%lld of %lld right (%lld%%)", static_cast<long long>(right), static_cast<long long>(shown),
                static_cast<long long>((right * 100 + shown / 2) / shown));
}

int Sum(const std::vector<int>& v) {
  int n = 0;
  for (int x : v) n += x;
  return n;
}

}  // namespace

bool GatherStats(const StatsInput& in, StatsReport* out, std::string* error) {
  *out = StatsReport();
  if (FileLengthOf(in.history) < 0) {
    *error = "there is no history file " + in.history + " (tqcomm learn makes one)";
    return false;
  }
  // Days are kept in 16 bits: the forecast ends before day 65535.
  const int days = std::max(0, std::min(in.days, kLastDay - in.day));
  int limit = 0;
  bool skipped_ahead = false;
  if (!GatherPast(in, out, &limit, &skipped_ahead) || !GatherDue(in, days, limit, skipped_ahead, out) ||
      !CountWordTotals(in.history, &out->totals)) {
    *error = "cannot read the history file " + in.history;
    return false;
  }
  return true;
}

std::string FormatStats(const StatsInput& in, const StatsReport& r) {
  std::string out;
  out += Format("%s %s, %s: %lld records\n", DateText(in.day).c_str(), WeekDay(in.day), in.history.c_str(),
                static_cast<long long>(r.records));
  out += Format("\ntoday: %d words due by the curve: %d overdue, %d falling due today, %d hard (offered every day)\n",
                r.due_today, r.overdue, r.falling_due, r.hard);
  const int days = static_cast<int>(r.coming.size());
  out += Format("coming due in the next %d day%s (if nothing is learnt before): %d\n", days, days == 1 ? "" : "s",
                Sum(r.coming));
  if (days < in.days) out += "(the records hold no later day)\n";
  out += DayLines(r.coming, in.day + 1);

  const int first_day = in.day - (kPastDays - 1);
  int active = static_cast<int>(std::count_if(r.answered.begin(), r.answered.end(), [](int n) { return n > 0; }));
  out += Format("\nwords answered in the past %d days (as far as the records tell): %d on %d day%s\n",
                kPastDays, Sum(r.answered), active, active == 1 ? "" : "s");
  out += DayLines(r.answered, first_day);
  out += "words in their first week: " + Share(r.right_first_week, r.shown_first_week) + "\n";
  out += "older words: " + Share(r.right_older, r.shown_older) + "\n";

  out += Format("\nleeches (wrong or unsure %d times or more): %d\n", kLeechWrong, r.leech_count);
  for (const Leech& l : r.leeches) {
    std::string word = l.word.empty() ? Format("(word %d)", l.item) : ForTerminal(l.word);
    out += Format("  %5d wrong of %5d  %s\n", l.wrong, l.shown, word.c_str());
  }
  if (r.leech_count > static_cast<int>(r.leeches.size())) {
    out += Format("  and %d more\n", r.leech_count - static_cast<int>(r.leeches.size()));
  }

  out += "\n" + WordTotalsLine(r.totals) + "\n";

  // What the files could not tell.
  if (r.stray_bytes > 0) {
    out += Format("note: the history file ends in %lld bytes that are not a whole record; they are left out\n",
                  static_cast<long long>(r.stray_bytes));
  }
  if (r.impossible > 0) {
    out += Format("note: %lld records have impossible dates or counts; the past, the shares and the leeches "
                  "leave them out\n",
                  static_cast<long long>(r.impossible));
  }
  if (in.book_words < 0) {
    out += "note: cannot open the book " + in.book_path + "; leeches are shown by item number\n";
  } else if (in.book_words != r.records) {
    out += Format("note: the book %s has %d words, its history %lld records\n", in.book_path.c_str(), in.book_words,
                  static_cast<long long>(r.records));
  }
  return out;
}

}  // namespace tqcomm
