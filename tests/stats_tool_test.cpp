// tqcomm stats on a history made by hand, where every figure of the report
// is known in advance: words falling due on known days, known answer days,
// known leeches and counts. Then damaged and missing input.
#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "learning_files.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::Blank;

namespace {

const int kToday = vcGetDaysFrom1900_1_1(2026, 3, 10) + 2;

// A word at step reviews.size() of its first pass, reviewed on these days
// (offsets from today); the last review is also its last learning. With the
// default curve 0,1,2,4,7,15,30 it falls due 1, 1, 2, 3, 8 or 15 days after
// its last review at steps 1 to 6.
LearningRecord Word(int item, std::vector<int> reviews, int shown, int right, int attr = 2) {
  LearningRecord r = Blank(item);
  for (size_t s = 0; s < reviews.size(); ++s) r.reviewDates[s] = static_cast<uint16_t>(kToday + reviews[s]);
  r.firstDate = r.reviewDates[0];
  r.lastDate = r.reviewDates[reviews.size() - 1];
  r.stepIndex = static_cast<int16_t>(reviews.size());
  r.shownCount = static_cast<int16_t>(shown);
  r.rightCount = static_cast<int16_t>(right);
  r.attr = static_cast<uint16_t>(attr);
  std::memcpy(r.results, "Y", 1);
  return r;
}

// The history of the main test; "due" is where the curve puts the next review.
std::vector<LearningRecord> KnownHistory() {
  return {
      Blank(0),
      Word(1, {-2}, 2, 2),                            // due -1: overdue
      Word(2, {-5, -4}, 3, 2),                        // due -3: overdue
      Word(3, {-4, -3, -2}, 3, 3),                    // due today
      Word(4, {0}, 1, 1),                             // due +1
      Word(5, {-1, 0}, 2, 2),                         // due +1
      Word(6, {-9, -8, -6, 0}, 8, 4),                 // due +3; 4 not right: a leech
      Word(7, {-20, -19, -18, -16, -5}, 7, 4),        // due +3; 3 not right
      Word(8, {-40, -39, -38, -36, -33, -12}, 6, 6),  // due +3
      Word(9, {-30, -29, -28, -26, -23, -5}, 6, 5),   // due +10
      Word(10, {-31, -30, -29, -27, -24, -1}, 6, 6),  // due +14, the forecast's last day
      Word(11, {-25, -24, -23, -21, -18, 0}, 6, 6),   // due +15, beyond it
      Word(12, {-12, -11, -10, -8, -3}, 10, 4),       // due +5, but right 40%: hard, offered daily
      Word(13, {-13, -12, -11, -9, -3}, 12, 5),       // due +5, right 41%: not hard
      Word(14, {-2, -1, 0}, 9, 4, 5),                 // due +2, relapsed: hard
      Word(15, {-2, -1, 0}, 3, 3, 3),                 // due +2, mastered: never offered
      Word(16, {-1}, 1, 1, 1),                        // due today, known: never offered
      Blank(17),
      Word(18, {-50}, 1, 1, 1),                       // known long ago
      Blank(19),
  };
}

class StatsTool : public tqtest::TempDirTest {
 protected:
  // A book of words "word0", "word1", ... at book.idx.
  void MakeBook(int words) {
    int book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, Path("book.idx").c_str(), nullptr);
    vcCOrvexBook_OpenLib(book, "ab");
    for (int i = 0; i < words; ++i) {
      vcCOrvexBook_AppendWord(book, 1, ("word" + std::to_string(i)).c_str(), "n.", "", "", "", 0);
    }
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    if (words == 0) tqtest::WriteFile(Path("book.idx"), "");
  }

  // Runs tqcomm stats on book.idx and book.his, on 2026-03-10 unless the
  // options name another day; its exit status, with standard output and
  // error in *out.
  int Stats(const std::string& options, std::string* out) {
    std::string date = options.find("--date") == std::string::npos ? " --date 2026-03-10" : "";
    return tqtest::Run("XDG_DATA_HOME='" + dir() + "' " + TQCOMM_BIN + " stats --book '" + Path("book.idx") + "'" +
                           date + " " + options + " 2>&1",
                       out);
  }

  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
  static void ExpectSays(const std::string& out, std::initializer_list<std::string> texts) {
    for (const std::string& t : texts) EXPECT_TRUE(Has(out, t)) << t << "\n---\n" << out;
  }
  // Every day's count from offset `from` to `to`: those in `counts`, 0 elsewhere.
  static void ExpectCounts(const std::string& out, int from, int to, const std::map<int, int>& counts) {
    for (int d = from; d <= to; ++d) {
      auto it = counts.find(d);
      EXPECT_EQ(CountOn(out, d), it == counts.end() ? 0 : it->second) << "day " << d << "\n" << out;
    }
  }

  // The count printed on the line of a day (an offset from today).
  static int CountOn(const std::string& out, int offset) {
    char date[32];
    vcGetDateStr(kToday + offset, date);
    size_t at = out.find("\n  " + std::string(date) + " ");
    if (at == std::string::npos) return -1;
    return std::atoi(out.c_str() + at + 3 + std::strlen(date) + 5);
  }
};

TEST_F(StatsTool, EveryFigureOfAKnownHistory) {
  MakeBook(20);
  tqtest::WriteHistory(Path("book.his"), KnownHistory());
  const std::string before = tqtest::ReadFile(Path("book.his"));
  std::string out;
  ASSERT_EQ(Stats("--days 14", &out), 0) << out;

  // Today and the next 14 days; the past 30 days, as the records show
  // each word answered; leeches worst first, by the book's words.
  ExpectSays(out, {"today: 5 words due by the curve: 2 overdue, 1 falling due today, 2 hard (offered every day)",
                   "coming due in the next 14 days (if nothing is learnt before): 8\n",
                   "words answered in the past 30 days (as far as the records tell): 51 on 25 days\n",
                   "words in their first week: 18 of 24 right (75%)\n", "older words: 41 of 62 right (66%)\n",
                   "leeches (wrong or unsure 4 times or more): 4\n      7 wrong of    12  word13\n"
                   "      6 wrong of    10  word12\n      5 wrong of     9  word14\n      4 wrong of     8  word6\n\n",
                   "words: 3 not met, 13 being learnt, 2 known, 1 mastered, 1 relapsed\n"});
  ExpectCounts(out, 1, 14, {{1, 2}, {3, 3}, {5, 1}, {10, 1}, {14, 1}});
  EXPECT_EQ(CountOn(out, 15), -1) << "the forecast ends after 14 days";
  ExpectCounts(out, -29, 0, {{0, 6},   {-1, 5},  {-2, 4},  {-3, 3},  {-4, 2},  {-5, 3},  {-6, 1},  {-8, 2},  {-9, 2},
                             {-10, 1}, {-11, 2}, {-12, 3}, {-13, 1}, {-16, 1}, {-18, 2}, {-19, 1}, {-20, 1}, {-21, 1},
                             {-23, 2}, {-24, 2}, {-25, 1}, {-26, 1}, {-27, 1}, {-28, 1}, {-29, 2}});
  EXPECT_EQ(CountOn(out, -30), -1) << "the past ends 30 days back";
  EXPECT_FALSE(Has(out, "note:")) << out;
  EXPECT_EQ(tqtest::ReadFile(Path("book.his")), before) << "the report writes nothing";
}

// A PNG file read back as RGB pixels.
struct Picture {
  int width = 0, height = 0;
  std::vector<uint8_t> rgb;

  bool Read(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return false;
    image.format = PNG_FORMAT_RGB;
    rgb.resize(PNG_IMAGE_SIZE(image));
    width = static_cast<int>(image.width);
    height = static_cast<int>(image.height);
    return png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr) != 0;
  }
  // Colours as 0xRRGGBB.
  uint32_t At(int x, int y) const {
    const uint8_t* p = &rgb[(static_cast<size_t>(y) * width + x) * 3];
    return static_cast<uint32_t>(p[0] << 16 | p[1] << 8 | p[2]);
  }
  int CountIn(int x, uint32_t colour) const {
    int n = 0;
    for (int y = 0; y < height; ++y) n += At(x, y) == colour;
    return n;
  }
  // Runs of columns holding a colour, left to right, each measured at its
  // middle column: bars, and the swatches of the key.
  struct Run {
    int middle, height, bottom;
  };
  std::vector<Run> Runs(uint32_t colour) const {
    std::vector<Run> runs;
    for (int x = 0; x < width; ++x) {  // a column without the colour ends each run
      if (CountIn(x, colour) == 0) continue;
      int from = x;
      while (x < width && CountIn(x, colour) > 0) ++x;
      Run run{(from + x) / 2, CountIn((from + x) / 2, colour), 0};
      for (int y = 0; y < height; ++y) {
        if (At(run.middle, y) == colour) run.bottom = y;
      }
      runs.push_back(run);
    }
    return runs;
  }
  // The heights of the bars of a colour that stand on the axis at row axis.
  std::vector<int> Bars(uint32_t colour, int axis) const {
    std::vector<int> heights;
    for (const Run& r : Runs(colour)) {
      if (r.bottom == axis) heights.push_back(r.height);
    }
    return heights;
  }
  // Pixels darker than mid grey in columns [from, to).
  int DarkIn(int from, int to) const {
    int n = 0;
    for (int x = from; x < to; ++x) {
      for (int y = 0; y < height; ++y) n += (At(x, y) >> 16) < 0x80 && ((At(x, y) >> 8) & 0xFF) < 0x80;
    }
    return n;
  }
};

// The picture's colours: bars of words coming due and answered, and today's
// words by why they are due.
constexpr uint32_t kComing = 0x3078C0, kAnswered = 0x48A048, kOverdue = 0xD02828, kFalling = 0xF09020, kHard = 0x8C3CA0;

// Bars stand for their counts: each as high as the tallest times its share
// of the tallest's count, to the pixel.
void ExpectBarsFor(const std::vector<int>& heights, const std::vector<int>& counts, const char* what) {
  ASSERT_EQ(heights.size(), counts.size()) << what;
  const int most = *std::max_element(counts.begin(), counts.end());
  const int tallest = *std::max_element(heights.begin(), heights.end());
  EXPECT_GE(tallest, 100) << what << ": bars tall enough to read";
  for (size_t i = 0; i < counts.size(); ++i) {
    EXPECT_NEAR(heights[i], static_cast<double>(counts[i]) * tallest / most, 1.0) << what << " bar " << i;
  }
}

TEST_F(StatsTool, PictureShowsTheBars) {
  MakeBook(20);
  tqtest::WriteHistory(Path("book.his"), KnownHistory());
  std::string out;
  ASSERT_EQ(Stats("--days 14 --png '" + Path("stats.png") + "'", &out), 0) << out;
  EXPECT_TRUE(Has(out, "picture: " + Path("stats.png") + "\n")) << out;
  Picture png;
  ASSERT_TRUE(png.Read(Path("stats.png")));
  EXPECT_GE(png.width, 600);

  // Today's bar, the first, stacks 2 overdue, 1 falling due and 2 hard
  // words; the coming days' bars (days without words have none) stand beside
  // it on the same axis and scale.
  ASSERT_FALSE(png.Runs(kOverdue).empty());
  const Picture::Run today = png.Runs(kOverdue)[0];
  std::vector<int> heights = {today.height, png.CountIn(today.middle, kFalling), png.CountIn(today.middle, kHard)};
  std::vector<int> coming = png.Bars(kComing, today.bottom);
  heights.insert(heights.end(), coming.begin(), coming.end());
  ExpectBarsFor(heights, {2, 1, 2, 2, 3, 1, 1, 1}, "coming");
  EXPECT_GT(png.DarkIn(0, today.middle - 12), 50) << "the value axis is numbered";

  // The past 30 days, oldest first.
  ASSERT_FALSE(png.Runs(kAnswered).empty());
  std::vector<int> answered = {2, 1, 1, 1, 1, 2, 2, 1, 1, 1, 2, 1, 1, 3, 2, 1, 2, 2, 1, 3, 2, 3, 4, 5, 6};
  ExpectBarsFor(png.Bars(kAnswered, png.Runs(kAnswered)[0].bottom), answered, "answered");
}

TEST_F(StatsTool, ManyLeechesListTheWorstAndCountTheRest) {
  std::vector<LearningRecord> history;
  for (int i = 0; i < 30; ++i) history.push_back(Word(i, {-3}, 4 + i, 0));  // wrong 4 + i times
  tqtest::WriteHistory(Path("book.his"), history);
  MakeBook(30);
  std::string out;
  ASSERT_EQ(Stats("", &out), 0) << out;
  // Each right 0 percent of the time: hard words, offered every day.
  ExpectSays(out, {"leeches (wrong or unsure 4 times or more): 30\n     33 wrong of    33  word29\n",
                   "     14 wrong of    14  word10\n  and 10 more\n",
                   "today: 30 words due by the curve: 0 overdue, 0 falling due today, 30 hard",
                   "coming due in the next 30 days (if nothing is learnt before): 0\n"});
}

TEST_F(StatsTool, DamagedInputSaysWhatItCan) {
  MakeBook(7);
  std::vector<LearningRecord> history = {Word(0, {-2, -1}, 2, 2), Word(1, {-3}, 5, 1)};
  LearningRecord future = Word(2, {5}, 1, 1);         // first learnt after today
  LearningRecord backwards = Word(3, {-1, -4}, 1, 1);  // a review before the first learning
  backwards.lastDate = static_cast<uint16_t>(kToday - 6);
  LearningRecord step = Word(4, {-1}, 1, 1);
  step.stepIndex = 300;
  LearningRecord counts = Word(5, {-1}, 2, 9);  // more right than shown
  LearningRecord skipped = Word(6, {-1}, 1, 1);  // done for the day two days from now
  skipped.skipDate = static_cast<uint16_t>(kToday + 2);
  history.insert(history.end(), {future, backwards, step, counts, skipped});
  std::string bytes(reinterpret_cast<const char*>(history.data()), history.size() * 48);
  tqtest::WriteFile(Path("book.his"), bytes + std::string(20, '\x7f'));  // and a cut-off record
  std::string out;
  ASSERT_EQ(Stats("", &out), 0) << out;
  // What comes due is still the wizard's answer, damaged records and all,
  // but the two sound records alone make the past and the shares.
  ExpectSays(out, {": 7 records\n", "note: the history file ends in 20 bytes that are not a whole record",
                   "note: 5 records have impossible dates or counts",
                   "today: 5 words due by the curve: 1 overdue, 3 falling due today, 1 hard",
                   "(as far as the records tell): 3 on 3 days\n",
                   "words in their first week: 3 of 7 right (43%)\nolder words: no answers\n",
                   "leeches (wrong or unsure 4 times or more): 1\n      4 wrong of     5  word1\n"});
  // The word skipped on day +2 is not offered then, and is again on day +3.
  EXPECT_EQ(CountOn(out, 2), 0) << out;
  EXPECT_EQ(CountOn(out, 3), 1) << out;
  EXPECT_EQ(CountOn(out, 6), 1) << out;
}

TEST_F(StatsTool, RecordsOutOfOrderAreAllSeen) {
  // Upkeep of a history can leave its records out of item order; a blank
  // record numbered high must not hide the learnt words after it.
  MakeBook(60);
  tqtest::WriteHistory(Path("book.his"), {Word(3, {-1}, 1, 1), Blank(50), Word(0, {0}, 1, 1), Blank(1),
                                          Word(9, {-2}, 1, 1), Blank(2)});
  std::string out;
  ASSERT_EQ(Stats("--days 3", &out), 0) << out;
  EXPECT_TRUE(Has(out, "today: 2 words due by the curve: 1 overdue, 1 falling due today, 0 hard")) << out;
  EXPECT_EQ(CountOn(out, 1), 1) << out;
}

TEST_F(StatsTool, EmptyOrMissingFiles) {
  struct Case {
    const char* name;
    int book_words;      // -1: no book at all
    int history_records;  // -1: no history file
    int status;
    const char* says;
  } cases[] = {
      {"empty book and history", 0, 0, 0, "words: 0 not met, 0 being learnt"},
      {"empty book", 0, 3, 0, "note: the book " /* ... has 0 words, its history 3 records */},
      {"no book", -1, 3, 0, "leeches are shown by item number"},
      {"no history", 3, -1, 1, "there is no history file"},
  };
  for (const Case& c : cases) {
    std::remove(Path("book.idx").c_str());
    std::remove(Path("book.idx.lib").c_str());
    std::remove(Path("book.his").c_str());
    if (c.book_words >= 0) MakeBook(c.book_words);
    if (c.history_records >= 0) {
      std::vector<LearningRecord> h;
      for (int i = 0; i < c.history_records; ++i) h.push_back(Word(i, {-1}, 6, 1));  // leeches
      tqtest::WriteHistory(Path("book.his"), h);
    }
    std::string out;
    EXPECT_EQ(Stats("", &out), c.status) << c.name << "\n" << out;
    EXPECT_TRUE(Has(out, c.says)) << c.name << "\n" << out;
    if (c.history_records > 0) {
      EXPECT_TRUE(Has(out, "      5 wrong of     6  (word 0)\n")) << c.name << "\n" << out;
    }
  }
}

TEST_F(StatsTool, UsageAndHelp) {
  MakeBook(1);
  tqtest::WriteHistory(Path("book.his"), {Blank(0)});
  const struct {
    const char* options;
    int status;
    const char* says;
  } cases[] = {
      {"--help", 0, "usage: tqcomm stats"},
      {"--days 0", 2, "--days wants a whole number from 1 to 365"},
      {"--days 366", 2, "--days wants"},
      {"--days x", 2, "--days wants"},
      {"--date 2026-02-30", 2, "--date wants"},
      {"--curve 0,1,2", 2, "--curve wants"},
      {"--frobnicate", 2, "usage: tqcomm stats"},
      {"--days 365", 0, "coming due in the next 365 days"},
      {"--date 2078-12-31 --days 365", 0, "coming due in the next 154 days (if nothing is learnt before): 0\n"
                                         "(the records hold no later day)"},
  };
  for (const auto& c : cases) {
    std::string out;
    EXPECT_EQ(Stats(c.options, &out), c.status) << c.options << "\n" << out;
    EXPECT_TRUE(Has(out, c.says)) << c.options << "\n" << out;
  }
}

}  // namespace
