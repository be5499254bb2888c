// tqcomm learn driven through a pipe on a fresh data folder, as a user at a
// terminal would drive it: two consecutive days, then an unfinished day.
#include <string>
#include <vector>

#include "learning_files.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::Describe;
using tqtest::LearntOn;
using tqtest::ReadHistory;
using tqtest::Results;

namespace {

class LearnTool : public tqtest::TempDirTest {
 protected:
  // Runs the tool with the given answers; its output.
  std::string Learn(const std::string& answers, const std::string& options) {
    std::string out;
    std::string cmd = "printf '" + answers + "' | XDG_DATA_HOME='" + dir() + "' " + TQCOMM_BIN + " learn " +
                      options + " 2>&1";
    EXPECT_EQ(tqtest::Run(cmd, &out), 0) << out;
    return out;
  }
  std::string Data(const std::string& name) const { return dir() + "/tqcomm/" + name; }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

TEST_F(LearnTool, TwoDaysFollowTheCurve) {
  const int day1 = vcGetDaysFrom1900_1_1(2026, 1, 5) + 2;
  // Day one: three new words; the second is missed once, then right three
  // times before it may leave.
  std::string out = Learn("1\\n2\\n1\\n1\\n1\\n1\\n", "--date 2026-01-05 --new 3");
  EXPECT_TRUE(Has(out, "0 words due by the curve, 3 new")) << out;
  EXPECT_TRUE(Has(out, "answered 6, left 0")) << out;
  std::vector<LearningRecord> h = ReadHistory(Data("sample.his"));
  ASSERT_EQ(h.size(), 98u);
  std::vector<LearningRecord> want = {LearntOn(0, day1, 1, 1), LearntOn(1, day1, 4, 3, "YYYN"),
                                      LearntOn(2, day1, 1, 1)};
  for (LearningRecord& r : want) r.hardOrNewFlag = 1;  // entered the day as a new word
  want.push_back(tqtest::Blank(3));
  EXPECT_EQ(Describe(std::vector<LearningRecord>(h.begin(), h.begin() + 4)), Describe(want));
  EXPECT_FALSE(tq::env::Exists(Data("sample.llr").c_str()));

  // Day two: yesterday's words are due by the curve, then three new ones;
  // every answer is "known".
  out = Learn("4\\n4\\n4\\n4\\n4\\n4\\n", "--date 2026-01-06 --new 3");
  EXPECT_TRUE(Has(out, "3 words due by the curve, 3 new")) << out;
  for (const char* word : {") able\n", ") about\n", ") accept\n"}) EXPECT_TRUE(Has(out, word)) << word;
  EXPECT_TRUE(Has(out, "3 known, 3 mastered")) << out;
  h = ReadHistory(Data("sample.his"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(h[i].attr, 3) << i;  // learnt before, known now: mastered
    EXPECT_EQ(h[i].stepIndex, 2) << i;
    EXPECT_EQ(h[i].reviewDates[1], day1 + 1) << i;
  }
  for (int i = 3; i < 6; ++i) {
    EXPECT_EQ(h[i].attr, 1) << i;  // known at first sight
    EXPECT_EQ(h[i].firstDate, day1 + 1) << i;
  }
  EXPECT_EQ(h[6].firstDate, 65535);
}

TEST_F(LearnTool, EndOfInputKeepsTheRestForLater) {
  // A wrong answer line gets a hint; the end of input saves and exits.
  std::string out = Learn("1\\nmaybe\\n", "--date 2026-02-01 --new 4");
  EXPECT_TRUE(Has(out, "answer 1 to 5")) << out;
  EXPECT_TRUE(Has(out, "answered 1, left 3")) << out;
  EXPECT_EQ(tqtest::ReadInts(Data("sample.llr")), std::vector<int32_t>({1, 2, 3}));
  // The next run starts from the saved list and can finish it.
  out = Learn("5\\n5\\nq\\n", "--date 2026-02-01");
  EXPECT_TRUE(Has(out, "3 words left from a day not finished")) << out;
  EXPECT_TRUE(Has(out, "answered 2, left 1")) << out;
  EXPECT_EQ(tqtest::ReadInts(Data("sample.llr")), std::vector<int32_t>({3}));
  out = Learn("4\\n", "--date 2026-02-01");
  EXPECT_TRUE(Has(out, "left 0")) << out;
  EXPECT_FALSE(tq::env::Exists(Data("sample.llr").c_str()));
  std::string bad;
  EXPECT_EQ(tqtest::Run("XDG_DATA_HOME='" + dir() + "' " + TQCOMM_BIN + " learn --date 2026-02-30 </dev/null 2>&1", &bad),
            2);
}

TEST_F(LearnTool, MasteryQuestionIsAskedInTheTerminal) {
  // With a flat curve every showing is a due review, so one word runs
  // through the whole curve in a day: the seventh showing completes a pass.
  std::string out = Learn("2\\n3\\n3\\n3\\n1\\n1\\nmaybe\\n1\\ny\\n", "--date 2026-03-01 --new 1 --curve 0,0,0,0,0,0,0");
  EXPECT_TRUE(Has(out, "(y/n)")) << out;
  EXPECT_TRUE(Has(out, "answered 7, left 0")) << out;
  LearningRecord r = ReadHistory(Data("sample.his"))[0];
  EXPECT_EQ(r.passCount, 1u);
  EXPECT_EQ(r.stepIndex, 1);
  EXPECT_EQ(r.attr, 3);  // mastered for good
  EXPECT_EQ(Results(r), "YYYUUUN");
}

}  // namespace
