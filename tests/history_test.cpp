// History file upkeep by path: blank files, growth, renumbering on insert
// and delete (by stored item number), carrying progress between books, and
// the summaries.
#include <string>
#include <vector>

#include "learning_files.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

class HistoryTest : public tqtest::TempDirTest {
 protected:
  void TearDown() override {
    tq::env::SetOpenFaultForTesting({});
    TempDirTest::TearDown();
  }
  static std::string Held(const std::string& path) { return Describe(ReadHistory(path)); }
  // Records told apart by their shown count.
  static LearningRecord Shown(int item, int shown) { return LearntOn(item, 40000, shown, 1); }
  void MakeThree() { WriteHistory("h.his", {Shown(0, 10), Shown(1, 11), Shown(2, 12)}); }
};

TEST_F(HistoryTest, BlankFileAndGrowth) {
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("h.his", 3), 1);
  EXPECT_EQ(ReadFile("h.his").size(), 144u);
  EXPECT_EQ(Held("h.his"), Describe(Blanks(3)));
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("h.his", 2), 1);
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("h.his", 0), 1);
  EXPECT_EQ(Held("h.his"), Describe(Blanks(5)));
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("e.his", 0), 1);
  EXPECT_EQ(ReadFile("e.his").size(), 0u);
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("no-dir/h.his", 3), -1);
  // A file that cannot be counted numbers from -1.
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("new.his", 2), 1);
  EXPECT_EQ(Held("new.his"), Describe({Blank(-1), Blank(0)}));
}

TEST_F(HistoryTest, InsertAndDeleteRenumberByStoredItemNumber) {
  MakeThree();
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 1), 1);
  EXPECT_EQ(Held("h.his"), Describe({Shown(0, 10), Blank(1), Shown(2, 11), Shown(3, 12)}));
  EXPECT_FALSE(tq::env::Exists("tmptmp.his"));

  MakeThree();
  std::string before = ReadFile("h.his");
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 3), 1);  // meets no record
  EXPECT_EQ(ReadFile("h.his"), before);
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", -1), 1);  // appends
  EXPECT_EQ(Held("h.his"), Describe({Shown(0, 10), Shown(1, 11), Shown(2, 12), Blank(3)}));
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("missing.his", 1), -1);

  MakeThree();
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll("h.his", 1), 1);
  EXPECT_EQ(Held("h.his"), Describe({Shown(0, 10), Shown(1, 12)}));
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll("missing.his", 1), -1);

  // Stored numbers, not places, decide.
  WriteHistory("h.his", {Blank(5), Blank(2)});
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 2), 1);
  EXPECT_EQ(Held("h.his"), Describe({Blank(6), Blank(2), Blank(3)}));
}

TEST_F(HistoryTest, AFailedTemporaryLeavesTheFileIntact) {
  MakeThree();
  std::string before = ReadFile("h.his");
  tq::env::SetOpenFaultForTesting(
      [](const std::string& path, const char*) { return path.find("tmptmp.his") != std::string::npos; });
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 1), -1);
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll("h.his", 1), -1);
  EXPECT_EQ(ReadFile("h.his"), before);
  WriteFile("l.llr", Ints({1, 2}));
  EXPECT_EQ(vcCOrvexWizard_InsertWordInLlr("l.llr", 0), -1);
  EXPECT_EQ(ReadInts("l.llr"), std::vector<int32_t>({1, 2}));
}

TEST_F(HistoryTest, ListFileEdits) {
  WriteFile("l.llr", Ints({4, 1, 7}));
  EXPECT_EQ(vcCOrvexWizard_InsertWordInLlr("l.llr", -1), 1);
  EXPECT_EQ(vcCOrvexWizard_InsertWordInLlr("l.llr", 4), 1);
  EXPECT_EQ(ReadInts("l.llr"), std::vector<int32_t>({5, 1, 8}));  // no entry added
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInLlr("l.llr", 5), 1);
  EXPECT_EQ(ReadInts("l.llr"), std::vector<int32_t>({1, 7}));
  EXPECT_FALSE(tq::env::Exists("tmptmp.his"));
  WriteFile("one.llr", Ints({3}));
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInLlr("one.llr", 3), 1);
  EXPECT_FALSE(tq::env::Exists("one.llr"));  // an emptied list is removed
  EXPECT_TRUE(tq::env::Exists("tmptmp.his"));  // and its empty temporary stays
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInLlr("one.llr", 3), -1);
  EXPECT_EQ(vcCOrvexWizard_InsertWordInLlr("one.llr", 3), -1);
}

TEST_F(HistoryTest, ExtractAndMergeCarryProgress) {
  std::vector<LearningRecord> src;
  for (int i = 0; i < 8; ++i) src.push_back(Shown(i, 10 + i));
  WriteHistory("src.his", src);
  const int32_t items[2] = {5, 2};
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("src.his", "sub.his", items, 2), 2);
  EXPECT_EQ(Held("sub.his"), Describe({Shown(0, 12), Shown(1, 15)}));  // record 2 first: source order
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("src.his", "none.his", items, 0), 0);
  EXPECT_FALSE(tq::env::Exists("none.his"));
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("missing.his", "x.his", items, 2), -1);

  // Merged records are numbered by their place in items.
  std::vector<LearningRecord> dest = Blanks(10);
  WriteHistory("dest.his", dest);
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("src.his", "dest.his", items, 2), 2);
  dest.push_back(Shown(11, 12));
  dest.push_back(Shown(10, 15));
  EXPECT_EQ(Held("dest.his"), Describe(dest));
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("src.his", "dest.his", items, -1), 0);
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("missing.his", "dest.his", items, 2), -1);
}

TEST_F(HistoryTest, SettingAttributesFromOutside) {
  WriteHistory("h.his", {LearntOn(0, 40000, 3, 2), Blank(1), Blank(2)});
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 0, 3), 1);
  EXPECT_EQ(Describe(ReadHistory("h.his")[0]), Describe(LearntOn(0, 40000, 3, 2, "Y", 3)));
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 0, 0), 1);  // reset, detached
  // Learnt right on the day given; without a day, only the attribute.
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFileEx("h.his", 1, 3, 40010), 1);
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFileEx("h.his", 2, 3, -1), 1);
  LearningRecord attr_only = Blank(2);
  attr_only.attr = 3;
  EXPECT_EQ(Held("h.his"), Describe({Blank(-1), LearntOn(1, 40010, 1, 1), attr_only}));

  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 4, 1), 1);  // past the end: the file grows
  std::vector<LearningRecord> h = ReadHistory("h.his");
  ASSERT_EQ(h.size(), 5u);
  EXPECT_EQ(h[4].attr, 1);
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("missing.his", 0, 1), -1);
}

TEST_F(HistoryTest, Summaries) {
  // One word of attr 0, two of 1, three of 2, four of 3: each counter has
  // its own total.
  std::vector<LearningRecord> recs;
  for (int attr : {0, 4, 5, 1, 1, 2, 2, 2, 3, 3, 3, 3}) {
    recs.push_back(attr == 0 ? Blank(0) : LearntOn(static_cast<int>(recs.size()), 40000, 10, 7, "Y", attr));
  }
  WriteHistory("h.his", recs);
  int32_t c0 = 0, c2 = 0, c1 = 0, c3 = 10;  // only added to
  EXPECT_EQ(vcCOrvexWizard_GetBookInfo("h.his", &c0, &c2, &c1, &c3), 1);
  EXPECT_EQ(std::vector<int32_t>({c0, c1, c2, c3}), std::vector<int32_t>({1, 2, 3, 14}));  // 4 and 5 count nowhere
  EXPECT_EQ(vcCOrvexWizard_GetBookInfo("missing.his", &c0, &c2, &c1, &c3), -1);

  int32_t out[12];
  EXPECT_EQ(vcCOrvexWizard_ReadWordListByAttr("h.his", 1, out), 2);
  EXPECT_EQ(std::vector<int32_t>(out, out + 2), std::vector<int32_t>({3, 4}));
  EXPECT_EQ(vcCOrvexWizard_ReadWordListByAttr("missing.his", 2, out), -1);
  WriteHistory("d.his", {Blank(0), LearntOn(1, 40000, 10, 7), LearntOn(2, 40000, 10, 7, "Y", 3)});
  EXPECT_EQ(vcCOrvexWizard_ReadAllDegrees("d.his", out), 3);
  EXPECT_EQ(std::vector<int32_t>(out, out + 3), std::vector<int32_t>({0, 3, 1}));
  EXPECT_EQ(vcCOrvexWizard_ReadAllDegrees("missing.his", out), -1);
}

}  // namespace
