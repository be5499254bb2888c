// The learning wizard at the boundary: selection by mode, today's additions,
// the answer loop with its write-through, and list files.
#include <algorithm>
#include <string>
#include <vector>

#include "learning_files.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

constexpr int kToday = 40000;
const int32_t kCurve[7] = {0, 1, 2, 4, 7, 15, 30};

class WizardTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    wiz_ = vcCOrvexWizard_New();
    ASSERT_GT(wiz_, 0);
    history_ = Path("book.his");
    vcCOrvexWizard_SetFileNames(wiz_, history_.c_str());
    vcCOrvexWizard_SetForgetCurve(wiz_, kCurve);
    vcCOrvexWizard_SetDate(wiz_, kToday);
  }
  void TearDown() override {
    vcCOrvexWizard_Delete(wiz_);
    tqHost_SetMessageBoxHandler(nullptr);
    TempDirTest::TearDown();
  }
  std::vector<int32_t> List() {
    std::vector<int32_t> items(vcCOrvexWizard_GetListLength(wiz_) + 1);
    items.resize(vcCOrvexWizard_ExportList(wiz_, items.data()));
    return items;
  }
  std::vector<int32_t> Sorted() {
    std::vector<int32_t> items = List();
    std::sort(items.begin(), items.end());
    return items;
  }
  int Select(int mode, int limit = 0) { return vcCOrvexWizard_GetWordsToLearn(wiz_, mode, limit); }

  int wiz_ = 0;
  std::string history_;
};

std::vector<int32_t> Range(int from, int to) {
  std::vector<int32_t> v;
  for (int i = from; i <= to; ++i) v.push_back(i);
  return v;
}

TEST(WizardHandles, TableAndEmptyHandleAnswers) {
  for (int expected = 1; expected <= 29; ++expected) EXPECT_EQ(vcCOrvexWizard_New(), expected);
  EXPECT_EQ(vcCOrvexWizard_New(), -1);  // the thirtieth
  vcCOrvexWizard_Delete(5);
  char text[64] = "keep";
  int32_t shown = -9;
  // An empty handle answers 5 or 0 by the export, and touches no output.
  EXPECT_EQ(std::vector<int>({vcCOrvexWizard_LearnItem(5, 1), vcCOrvexWizard_GetWordsToLearn(5, 0, 0),
                              vcCOrvexWizard_AddTodayList(5, 0, 0, nullptr), vcCOrvexWizard_SaveList(5, "x.llr"),
                              vcCOrvexWizard_SetForgetCurve(5, kCurve), vcCOrvexWizard_GetListLength(5),
                              vcCOrvexWizard_GetItemAttr(5, &shown, nullptr), vcCOrvexWizard_SetDate(5, kToday)}),
            std::vector<int>({5, 5, 5, 5, 5, 0, 0, 0}));
  vcCOrvexWizard_GetItemEnglish(5, text, 0);
  EXPECT_STREQ(text, "keep");
  EXPECT_EQ(shown, -9);
  EXPECT_EQ(vcCOrvexWizard_New(), 5);
  for (int h = 1; h <= 29; ++h) vcCOrvexWizard_Delete(h);
}

TEST_F(WizardTest, NewWordsModeTakesTheFirst21InOrder) {
  WriteHistory(history_, Blanks(100));
  EXPECT_EQ(Select(0), 21);
  EXPECT_EQ(List(), Range(0, 20));
  EXPECT_EQ(Select(2), 0);  // mode 2 empties the list
  EXPECT_EQ(Select(9), 0);
  EXPECT_EQ(Select(0, 3), 5);  // the record just past the limit is in
  // A missing history leaves the list alone.
  vcCOrvexWizard_SetFileNames(wiz_, "missing.his");
  EXPECT_EQ(Select(1), -1);
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 0, 0, nullptr), -1);
  EXPECT_EQ(vcCOrvexWizard_GetListLength(wiz_), 5);
}

TEST_F(WizardTest, DueWordsModeLimitAndShuffle) {
  std::vector<LearningRecord> recs;
  for (int i = 0; i < 100; ++i) recs.push_back(LearntOn(i, kToday - 1, 1, 1));  // all due today
  WriteHistory(history_, recs);
  EXPECT_EQ(Select(1, 50), 52);  // items 0..51
  EXPECT_NE(List(), Range(0, 51));  // shuffled
  EXPECT_EQ(Sorted(), Range(0, 51));
  EXPECT_EQ(Select(6), 100);
  EXPECT_EQ(List(), Range(0, 99));  // mode 6 keeps file order
}

TEST_F(WizardTest, DueOrHardSelection) {
  std::vector<LearningRecord> recs = {
      LearntOn(0, kToday, 1, 1),            // learnt today: next due tomorrow
      LearntOn(1, kToday - 1, 1, 1),        // due today
      LearntOn(2, kToday, 100, 40),         // not due but right only 40%
      LearntOn(3, kToday, 100, 41),         // 41%: left alone
      LearntOn(4, kToday - 1, 1, 1),        // due, but done for today
      LearntOn(5, kToday - 5, 1, 1, "Y", 3),  // mastered
      LearntOn(6, kToday, 1, 1, "N", 5),    // relapsed
      LearntOn(7, kToday, 1, 1),            // stalled past the last step
      Blank(8),
  };
  recs[4].skipDate = kToday;
  recs[7].stepIndex = 7;
  WriteHistory(history_, recs);
  ASSERT_EQ(Select(1), 4);
  EXPECT_EQ(Sorted(), std::vector<int32_t>({1, 2, 6, 7}));
  EXPECT_EQ(Select(6), 4);
  EXPECT_EQ(List(), std::vector<int32_t>({1, 2, 6, 7}));
  // Mode 5: first met today, open and not skipped.
  recs[0].skipDate = kToday;
  WriteHistory(history_, recs);
  EXPECT_EQ(Select(5), 4);
  EXPECT_EQ(List(), std::vector<int32_t>({2, 3, 6, 7}));
  // Mode 3: being learnt or relapsed; mode 4: everything, and no more.
  EXPECT_EQ(Select(3), 7);
  EXPECT_EQ(Select(4), 9);
}

TEST_F(WizardTest, NewWordAllowanceFallsWithTheOldLoad) {
  std::vector<LearningRecord> recs;
  for (int i = 0; i < 40; ++i) recs.push_back(LearntOn(i, kToday - 1, 1, 1));
  for (int i = 40; i < 140; ++i) recs.push_back(Blank(i));
  WriteHistory(history_, recs);
  ASSERT_EQ(Select(1), 40);
  int32_t added = -1;
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 0, 0, &added), 50);
  EXPECT_EQ(added, 10);
  std::vector<int32_t> got = List();
  EXPECT_EQ(std::vector<int32_t>(got.begin() + 40, got.end()), Range(40, 49));  // file order
  // Added new words are marked; the selected due words are not.
  ASSERT_EQ(vcCOrvexWizard_SaveList(wiz_, "l.llr"), 50);
  std::vector<LearningRecord> disk = ReadHistory(history_);
  EXPECT_EQ(disk[40].hardOrNewFlag, 1);
  EXPECT_EQ(disk[0].hardOrNewFlag, 0);

  // Five new words already in the list: at most 25 more, none twice.
  WriteHistory(history_, Blanks(100));
  ASSERT_EQ(Select(0, 3), 5);
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 0, 0, &added), 30);
  EXPECT_EQ(added, 25);
  EXPECT_EQ(List(), Range(0, 29));
  // Only the flag's low byte asks for new words, but any flag shuffles.
  ASSERT_EQ(Select(2), 0);
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 0x100, 0, &added), 30);
  EXPECT_NE(List(), Range(0, 29));
  EXPECT_EQ(Sorted(), Range(0, 29));
}

TEST_F(WizardTest, AddingOldWords) {
  std::vector<LearningRecord> recs = {
      LearntOn(0, kToday - 1, 1, 1),          // due
      LearntOn(1, kToday, 10, 3),             // weak
      LearntOn(2, kToday, 10, 9),             // neither
      LearntOn(8, kToday - 1, 1, 1, "Y", 1),  // known: skipped before the limit test
      LearntOn(3, kToday - 1, 1, 1),          // stored after a higher number
      Blank(5),
      LearntOn(6, kToday - 1, 1, 1),
  };
  WriteHistory(history_, recs);
  int32_t added = 0;
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 1, 100, &added), 4);
  EXPECT_EQ(Sorted(), std::vector<int32_t>({0, 1, 3, 6}));
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 1, 100, &added), 4);  // nothing twice
  EXPECT_EQ(added, 0);
  // A due word is taken plainly, a weak one as a hard word.
  ASSERT_EQ(vcCOrvexWizard_SaveList(wiz_, "l.llr"), 4);
  std::vector<LearningRecord> disk = ReadHistory(history_);
  EXPECT_EQ(disk[0].hardOrNewFlag, 0);
  EXPECT_EQ(disk[1].hardOrNewFlag, 1);
  WriteHistory(history_, recs);
  // The known word numbered past the limit does not end the pass; the
  // blank one does.
  ASSERT_EQ(Select(2), 0);
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 1, 3, &added), 3);
  EXPECT_EQ(Sorted(), std::vector<int32_t>({0, 1, 3}));
  ASSERT_EQ(Select(2), 0);
  EXPECT_EQ(vcCOrvexWizard_AddTodayList(wiz_, 1, 0, &added), 5);  // limit 0: every learnt word
}

TEST_F(WizardTest, AnswersMoveWordsAndReachTheFileAtOnce) {
  // Wrong in a list of five: two to four others come before it again.
  for (int round = 0; round < 10; ++round) {
    WriteHistory(history_, Blanks(10));
    ASSERT_EQ(Select(0, 3), 5);  // items 0..4
    EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 2), 5);
    std::vector<int32_t> got = List();
    size_t at = std::find(got.begin(), got.end(), 0) - got.begin();
    EXPECT_TRUE(at >= 2 && at <= 4) << at;
    EXPECT_EQ(got[0], 1);
  }
  EXPECT_EQ(Results(ReadHistory(history_)[0]), "N");
  // Right at the first showing: off the list, and on disk.
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 1), 4);
  EXPECT_EQ(Describe(ReadHistory(history_)[1]), Describe(LearntOn(1, kToday, 1, 1)));
  // Known: off the list. Done for today: off the list, skip date set.
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 4), 3);
  EXPECT_EQ(ReadHistory(history_)[2].attr, 1);
  int front = List()[0];
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 5), 2);
  EXPECT_EQ(ReadHistory(history_)[front].skipDate, kToday);
  // Not a result: nothing moves, but the showing is counted.
  front = List()[0];
  int shown = ReadHistory(history_)[front].shownCount;
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 8), 2);
  EXPECT_EQ(List()[0], front);
  EXPECT_EQ(ReadHistory(history_)[front].shownCount, shown + 1);
}

TEST_F(WizardTest, ADetachedRecordIsWrittenAtTheStart) {
  // A record reset from outside carries item -1; learning it cannot place
  // it, and it lands on the first record. The library leaves that be.
  WriteHistory(history_, Blanks(3));
  ASSERT_EQ(vcCOrvexWizard_SetItemAttrInFile(history_.c_str(), 2, 0), 1);
  ASSERT_EQ(Select(0), 3);
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 1), 2);
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 1), 1);
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 4), 0);
  EXPECT_EQ(Describe(ReadHistory(history_)),
            Describe({LearntOn(-1, kToday, 1, 1, "Y", 1), LearntOn(1, kToday, 1, 1), Blank(-1)}));
}

TEST_F(WizardTest, TheLastWordStaysUntilFinished) {
  WriteHistory(history_, Blanks(1));
  ASSERT_EQ(Select(0), 1);
  // After "YUN" not yet; then three rights in four, two running. An empty
  // list is left alone.
  const int kAnswers[][2] = {{2, 1}, {3, 1}, {1, 1}, {1, 1}, {1, 0}, {1, 0}};
  for (const auto& a : kAnswers) EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, a[0]), a[1]);
  EXPECT_EQ(Describe(ReadHistory(history_)[0]), Describe(LearntOn(0, kToday, 5, 3, "YYYUN")));
}

// The front end's message box: what it was asked, and the button it answers.
std::string g_box;
int g_box_answer = 6;
int Box(const char* text, const char* title, unsigned type) {
  g_box = std::string(text) + "|" + title + "|" + std::to_string(type);
  return g_box_answer;
}

TEST_F(WizardTest, CompletedPassAsksAboutMastery) {
  tqHost_SetMessageBoxHandler(Box);
  LearningRecord r = LearntOn(0, kToday - 40, 6, 6, "YYYYYY");
  r.stepIndex = 6;
  r.reviewDates[5] = kToday - 15;  // due today
  LearningRecord r2 = r;
  r2.itemNo = 1;
  WriteHistory(history_, {r, r2});
  ASSERT_EQ(Select(6), 2);
  g_box_answer = 6;  // Yes
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 1), 1);
  const std::string question =
      G(u8"该单词已经完成全部复习。将该单词算做永久掌握吗？") + "|" + G(u8"青砚记词智能大师") + "|4";
  EXPECT_EQ(g_box, question);  // 4: Yes and No
  std::vector<LearningRecord> disk = ReadHistory(history_);
  EXPECT_EQ(disk[0].attr, 3);
  EXPECT_EQ(disk[0].passCount, 1u);
  EXPECT_EQ(disk[0].stepIndex, 1);
  g_box_answer = 7;  // No
  g_box.clear();
  EXPECT_EQ(vcCOrvexWizard_LearnItem(wiz_, 1), 0);
  EXPECT_EQ(g_box, question);
  EXPECT_EQ(ReadHistory(history_)[1].attr, 2);
}

TEST_F(WizardTest, ListFiles) {
  WriteHistory(history_, Blanks(30));
  EXPECT_EQ(vcCOrvexWizard_SaveList(wiz_, "today.llr"), 0);  // empty: no file
  EXPECT_FALSE(tqtest::ReadFile("today.llr").size() > 0);
  ASSERT_EQ(Select(0, 3), 5);
  vcCOrvexWizard_LearnItem(wiz_, 2);  // item 0 moves back, in memory and on disk
  std::vector<int32_t> order = List();
  EXPECT_EQ(vcCOrvexWizard_SaveList(wiz_, "today.llr"), 5);
  EXPECT_EQ(tqtest::ReadInts("today.llr"), order);
  EXPECT_EQ(vcCOrvexWizard_SaveList(wiz_, "no-dir/x.llr"), -1);

  int other = vcCOrvexWizard_New();
  vcCOrvexWizard_SetFileNames(other, history_.c_str());
  EXPECT_EQ(vcCOrvexWizard_LoadList(other, "today.llr"), 5);
  EXPECT_EQ(vcCOrvexWizard_LoadList(other, "today.llr"), 10);  // loading appends
  int32_t shown = -1, first = -1;
  vcCOrvexWizard_GetItemAttr(other, &shown, &first);
  EXPECT_EQ(first, order[0] == 0 ? kToday : 65535);
  EXPECT_EQ(vcCOrvexWizard_LoadList(other, "missing.llr"), -1);
  // An item past the history's end repeats the record read before it.
  tqtest::WriteFile("odd.llr", tqtest::Ints({3, 500}));
  ASSERT_EQ(vcCOrvexWizard_GetWordsToLearn(other, 2, 0), 0);
  EXPECT_EQ(vcCOrvexWizard_LoadList(other, "odd.llr"), 2);
  int32_t items[2];
  vcCOrvexWizard_ExportList(other, items);
  EXPECT_EQ(items[1], 3);
  vcCOrvexWizard_Delete(other);
}

TEST_F(WizardTest, AttrStringText) {
  LearningRecord learnt = LearntOn(1, 40000, 5, 3, "YNY");
  learnt.stepIndex = 2;
  learnt.reviewDates[1] = 40001;
  learnt.hardOrNewFlag = 1;
  WriteHistory(history_, {Blank(0), learnt});
  ASSERT_EQ(Select(3), 1);
  tqtest::WriteFile("two.llr", tqtest::Ints({0}));
  ASSERT_EQ(vcCOrvexWizard_LoadList(wiz_, "two.llr"), 2);  // list: learnt, blank
  char out[1024];
  vcCOrvexWizard_GetItemAttrString(wiz_, 1, out);
  EXPECT_EQ(std::string(out), G(u8"初记日期：2079-06-04\r\n复习次数：0\r\n最近次学习状态：\r\n总出现次数：0\r\n"
                                u8"总会的次数：0\r\n是否难词新词：0\r\n属性：0\r\n"));
  vcCOrvexWizard_GetItemAttrString(wiz_, 0, out);
  EXPECT_EQ(std::string(out), G(u8"初记日期：2009-07-06\r\n复习次数：2\r\n2009-07-06\r\n2009-07-07\r\n"
                                u8"最近次学习状态：YNY\r\n总出现次数：5\r\n总会的次数：3\r\n是否难词新词：3\r\n属性：2\r\n"));
}

TEST_F(WizardTest, Mp3ListTakesUnlearntWordsFirst) {
  WriteHistory(history_, {LearntOn(0, kToday, 1, 1), Blank(1), LearntOn(2, kToday, 1, 1, "Y", 3), Blank(3),
                          LearntOn(4, kToday, 1, 1)});
  int32_t items[8] = {4};
  EXPECT_EQ(vcCOrvexWizard_AppendMp3List(wiz_, items, 1), 4);
  EXPECT_EQ(std::vector<int32_t>(items, items + 4), std::vector<int32_t>({4, 1, 3, 0}));
  vcCOrvexWizard_SetFileNames(wiz_, "missing.his");
  EXPECT_EQ(vcCOrvexWizard_AppendMp3List(wiz_, items, 2), 2);
}

TEST_F(WizardTest, WordTextComesFromTheBook) {
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, "w.idx", nullptr);
  ASSERT_EQ(vcCOrvexBook_AppendWord(book, 0, "able", G(u8"能够的").c_str(), "eibl", nullptr, nullptr, 0), 1);
  ASSERT_EQ(vcCOrvexBook_AppendWord(book, 0, "about", G(u8"关于").c_str(), "[e'baut]", nullptr, nullptr, 0), 1);
  vcCOrvexBook_OpenIdx(book, "rb");
  vcCOrvexBook_OpenLib(book, "rb");
  vcCOrvexWizard_SetLearningBook(wiz_, book);
  vcCOrvexWizard_SetLearningBook(wiz_, 17);  // an empty book handle changes nothing
  WriteHistory(history_, {LearntOn(0, kToday, 1, 1), Blank(1)});
  char word[256], expl[256], pron[256];
  vcCOrvexWizard_GetItemEnglish(wiz_, word, 0);  // empty list: empty text
  EXPECT_STREQ(word, "");
  ASSERT_EQ(Select(0), 1);
  vcCOrvexWizard_GetItemEnglish(wiz_, word, 0);
  vcCOrvexWizard_GetItemChinese(wiz_, expl, 0);
  vcCOrvexWizard_GetItemPron(wiz_, pron, 0);
  EXPECT_STREQ(word, "about");
  EXPECT_EQ(std::string(expl), G(u8"关于"));
  EXPECT_STREQ(pron, "[e'baut]");
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
}


// Records of arbitrary bytes (item numbers kept near the book, so that
// write-throughs stay small) and a partial record at the end go through
// every path without leaving them; the partial record is no word.
TEST_F(WizardTest, ArbitraryRecordBytesStayInside) {
  uint32_t seed = 12345;
  auto next = [&seed] {
    seed = seed * 1103515245u + 12345u;
    return static_cast<unsigned char>(seed >> 16);
  };
  std::vector<LearningRecord> recs(40);
  for (size_t i = 0; i < recs.size(); ++i) {
    unsigned char* bytes = reinterpret_cast<unsigned char*>(&recs[i]);
    for (int b = 0; b < 48; ++b) bytes[b] = next();
    recs[i].itemNo = static_cast<int32_t>(next() % 42) - 1;
    if (i % 3 == 0) recs[i].firstDate = static_cast<uint16_t>(kToday);
  }
  WriteHistory(history_, recs);
  tqtest::WriteFile(history_, tqtest::ReadFile(history_) + std::string(20, '\x7f'));
  int32_t out[64];
  EXPECT_EQ(vcCOrvexWizard_ReadAllDegrees(history_.c_str(), out), 40);
  EXPECT_LE(vcCOrvexWizard_AppendMp3List(wiz_, out, 0), 40);
  int32_t added = 0;
  char text[1024];
  for (int mode = 0; mode <= 6; ++mode) {
    Select(mode, mode == 1 ? 20 : 0);
    vcCOrvexWizard_AddTodayList(wiz_, mode & 1, mode, &added);
    for (int pos = 0; pos < vcCOrvexWizard_GetListLength(wiz_); ++pos) {
      vcCOrvexWizard_GetItemAttrString(wiz_, pos, text);
      EXPECT_LT(std::string(text).size(), 512u);
    }
    for (int answers = 0; answers < 60 && vcCOrvexWizard_GetListLength(wiz_) > 0; ++answers) {
      vcCOrvexWizard_LearnItem(wiz_, 1 + answers % 5);
    }
  }
  int n = vcCOrvexWizard_ReadAllDegrees(history_.c_str(), out);  // item 40 may have completed the last
  ASSERT_TRUE(n == 40 || n == 41) << n;
  for (int i = 0; i < n; ++i) EXPECT_TRUE(out[i] >= 0 && out[i] <= 9) << out[i];
  int32_t c[4] = {0, 0, 0, 0};
  EXPECT_EQ(vcCOrvexWizard_GetBookInfo(history_.c_str(), &c[0], &c[1], &c[2], &c[3]), 1);
  EXPECT_LE(c[0] + c[1] + c[2] + c[3], n);
  ASSERT_EQ(vcCOrvexWizard_InsertWordInAll(history_.c_str(), -1), 1);
  tqtest::WriteFile(history_, tqtest::ReadFile(history_) + "tail");
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll(history_.c_str(), 0), 1);
  EXPECT_EQ(tqtest::ReadFile(history_).size() % 48, 0u);  // a rewrite drops the partial record
}

}  // namespace
