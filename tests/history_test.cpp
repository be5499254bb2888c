// History file upkeep by path: blank files, growth, renumbering on insert
// and delete (by stored item number), carrying progress between books, and
// the summaries.
#include <string>
#include <vector>

#include "learning_files.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::Blank;
using tqtest::Blanks;
using tqtest::Ints;
using tqtest::LearntOn;
using tqtest::ReadFile;
using tqtest::ReadHistory;
using tqtest::ReadInts;
using tqtest::WriteFile;
using tqtest::WriteHistory;

namespace {

class HistoryTest : public tqtest::TempDirTest {
 protected:
  void TearDown() override {
    tq::env::SetOpenFaultForTesting({});
    TempDirTest::TearDown();
  }
  std::vector<int32_t> Items(const std::string& path) {
    std::vector<int32_t> out;
    for (const LearningRecord& r : ReadHistory(path)) out.push_back(r.itemNo);
    return out;
  }
  // Three records told apart by their shown count.
  void MakeThree() { WriteHistory("h.his", {LearntOn(0, 40000, 10, 1), LearntOn(1, 40000, 11, 1), LearntOn(2, 40000, 12, 1)}); }
};

bool IsBlank(const LearningRecord& r) {
  return r.firstDate == 65535 && r.lastDate == 65535 && r.stepIndex == 0 && r.shownCount == 0 && r.rightCount == 0 &&
         r.attr == 0 && r.passCount == 0 && r.hardOrNewFlag == 0 && r.results[0] == 0;
}

TEST_F(HistoryTest, BlankFileAndGrowth) {
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("h.his", 3), 1);
  EXPECT_EQ(ReadFile("h.his").size(), 144u);
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({0, 1, 2}));
  for (const LearningRecord& r : ReadHistory("h.his")) EXPECT_TRUE(IsBlank(r));
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("h.his", 2), 1);
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({0, 1, 2, 3, 4}));
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("h.his", 0), 1);
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("e.his", 0), 1);
  EXPECT_EQ(ReadFile("e.his").size(), 0u);
  EXPECT_EQ(vcCOrvexWizard_GenBlankHistoryFile("no-dir/h.his", 3), -1);
  // A file that cannot be counted numbers from -1.
  EXPECT_EQ(vcCOrvexWizard_AppendHistoryFile("new.his", 2), 1);
  EXPECT_EQ(Items("new.his"), std::vector<int32_t>({-1, 0}));
}

TEST_F(HistoryTest, InsertRenumbersByStoredItemNumber) {
  MakeThree();
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 1), 1);
  std::vector<LearningRecord> h = ReadHistory("h.his");
  ASSERT_EQ(h.size(), 4u);
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({0, 1, 2, 3}));
  EXPECT_TRUE(IsBlank(h[1]));
  EXPECT_EQ(h[2].shownCount, 11);
  EXPECT_FALSE(tq::env::Exists("tmptmp.his"));

  MakeThree();
  std::string before = ReadFile("h.his");
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 3), 1);  // meets no record
  EXPECT_EQ(ReadFile("h.his"), before);
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", -1), 1);  // appends
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({0, 1, 2, 3}));
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("missing.his", 1), -1);

  // Stored numbers, not places, decide.
  WriteHistory("h.his", {Blank(5), Blank(2)});
  EXPECT_EQ(vcCOrvexWizard_InsertWordInAll("h.his", 2), 1);
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({6, 2, 3}));
}

TEST_F(HistoryTest, DeleteDropsAndRenumbers) {
  MakeThree();
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll("h.his", 1), 1);
  std::vector<LearningRecord> h = ReadHistory("h.his");
  ASSERT_EQ(h.size(), 2u);
  EXPECT_EQ(Items("h.his"), std::vector<int32_t>({0, 1}));
  EXPECT_EQ(h[1].shownCount, 12);  // the old third
  EXPECT_EQ(vcCOrvexWizard_DeleteWordInAll("missing.his", 1), -1);
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
  for (int i = 0; i < 8; ++i) src.push_back(LearntOn(i, 40000, 10 + i, 1));
  WriteHistory("src.his", src);
  const int32_t items[2] = {5, 2};
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("src.his", "sub.his", items, 2), 2);
  std::vector<LearningRecord> sub = ReadHistory("sub.his");
  ASSERT_EQ(sub.size(), 2u);
  EXPECT_EQ(sub[0].shownCount, 12);  // record 2 first: source order
  EXPECT_EQ(sub[0].itemNo, 0);
  EXPECT_EQ(sub[1].shownCount, 15);
  EXPECT_EQ(sub[1].itemNo, 1);
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("src.his", "none.his", items, 0), 0);
  EXPECT_FALSE(tq::env::Exists("none.his"));
  EXPECT_EQ(vcCOrvexWizard_ExtractHistoryFile("missing.his", "x.his", items, 2), -1);

  WriteHistory("dest.his", Blanks(10));
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("src.his", "dest.his", items, 2), 2);
  std::vector<LearningRecord> dest = ReadHistory("dest.his");
  ASSERT_EQ(dest.size(), 12u);
  EXPECT_EQ(dest[10].shownCount, 12);
  EXPECT_EQ(dest[10].itemNo, 11);  // numbered by its place in items
  EXPECT_EQ(dest[11].shownCount, 15);
  EXPECT_EQ(dest[11].itemNo, 10);
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("src.his", "dest.his", items, -1), 0);
  EXPECT_EQ(vcCOrvexWizard_MergeHistoryFile("missing.his", "dest.his", items, 2), -1);
}

TEST_F(HistoryTest, SettingAttributesFromOutside) {
  WriteHistory("h.his", {LearntOn(0, 40000, 3, 2), Blank(1), Blank(2)});
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 0, 3), 1);
  std::vector<LearningRecord> h = ReadHistory("h.his");
  EXPECT_EQ(h[0].attr, 3);
  EXPECT_EQ(h[0].shownCount, 3);
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 0, 0), 1);  // reset, detached
  h = ReadHistory("h.his");
  EXPECT_TRUE(IsBlank(h[0]));
  EXPECT_EQ(h[0].itemNo, -1);

  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFileEx("h.his", 1, 3, 40010), 1);
  h = ReadHistory("h.his");
  EXPECT_EQ(h[1].attr, 2);  // learnt right on that day
  EXPECT_EQ(h[1].firstDate, 40010);
  EXPECT_EQ(h[1].shownCount, 1);
  EXPECT_EQ(h[1].rightCount, 1);
  EXPECT_EQ(tqtest::Results(h[1]), "Y");
  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFileEx("h.his", 2, 3, -1), 1);
  EXPECT_EQ(ReadHistory("h.his")[2].attr, 3);
  EXPECT_EQ(ReadHistory("h.his")[2].firstDate, 65535);

  EXPECT_EQ(vcCOrvexWizard_SetItemAttrInFile("h.his", 4, 1), 1);  // past the end: the file grows
  h = ReadHistory("h.his");
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
  EXPECT_EQ(c0, 1);
  EXPECT_EQ(c2, 3);
  EXPECT_EQ(c1, 2);
  EXPECT_EQ(c3, 14);  // 4 and 5 are counted nowhere
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
