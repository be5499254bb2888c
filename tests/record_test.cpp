// The learning record's judgements, below the boundary: they carry all of
// the scheduling, so each rule is pinned here on hand-made records.
#include <cstring>
#include <set>
#include <string>

#include "learning/record.h"
#include "learning_files.h"
#include "learning/wizard.h"
#include "test_util.h"

namespace {

using namespace tq;

const int32_t kCurve[7] = {0, 1, 2, 4, 7, 15, 30};

using namespace tqtest;

// A word first learnt on day `first`, with results newest first.
LearningRecord Learnt(int first, const char* results, int shown, int right, int attr = tq::kAttrLearning) {
  return tqtest::LearntOn(7, first, shown, right, results, attr);
}

TEST(LearningRecord, FirstRightAnswerAndDueDate) {
  LearningRecord r = BlankRecord(5);
  EXPECT_EQ(DueDate(r, kCurve), tq::kNeverDue);
  EXPECT_FALSE(ApplyResult(&r, 40000, tq::kRight, kCurve));
  EXPECT_EQ(Describe(r), Describe(tqtest::LearntOn(5, 40000, 1, 1)));
  EXPECT_EQ(DueDate(r, kCurve), 40001);
  const int32_t other[7] = {3, 5, 9, 9, 9, 9, 9};
  EXPECT_EQ(DueDate(r, other), 40002);  // only differences count
  EXPECT_TRUE(FinishedForToday(r, 40000));  // right at the very first showing
  r.stepIndex = 7;
  EXPECT_EQ(DueDate(r, kCurve), tq::kNeverDue);

  LearningRecord wrong = BlankRecord(5);
  ApplyResult(&wrong, 40000, tq::kWrong, kCurve);
  EXPECT_EQ(Describe(wrong), Describe(tqtest::LearntOn(5, 40000, 1, 0, "N")));
  EXPECT_FALSE(FinishedForToday(wrong, 40000));
}

TEST(LearningRecord, KnownAtFirstSightOrLater) {
  LearningRecord r = BlankRecord(0);
  ApplyResult(&r, 40000, tq::kKnown, kCurve);
  EXPECT_EQ(r.attr, tq::kAttrKnownFromStart);
  EXPECT_EQ(r.rightCount, 1);
  LearningRecord later = Learnt(39990, "Y", 1, 1);
  ApplyResult(&later, 40000, tq::kKnown, kCurve);
  EXPECT_EQ(later.attr, tq::kAttrMastered);
}

TEST(LearningRecord, EarlyReviewGetsNoStep) {
  LearningRecord r = Learnt(40000, "Y", 1, 1);
  r.stepIndex = 2;
  r.reviewDates[1] = 40009;  // due 40009 + 2 - 1
  EXPECT_EQ(DueDate(r, kCurve), 40010);
  ApplyResult(&r, 40005, tq::kWrong, kCurve);
  EXPECT_EQ(r.stepIndex, 2);
  EXPECT_EQ(r.shownCount, 2);
  EXPECT_EQ(r.lastDate, 40005);
  EXPECT_EQ(Results(r), "NY");
  // Without a curve the step moves whatever the date.
  ApplyResult(&r, 40005, tq::kRight, nullptr);
  EXPECT_EQ(r.stepIndex, 3);
  EXPECT_EQ(r.reviewDates[2], 40005);
}

TEST(LearningRecord, DueReviewAdvancesAndLastStepCompletesAPass) {
  LearningRecord r = Learnt(40000, "YY", 2, 2);
  ApplyResult(&r, 40001, tq::kRight, kCurve);
  EXPECT_EQ(r.stepIndex, 2);
  EXPECT_EQ(r.reviewDates[1], 40001);
  EXPECT_EQ(DueDate(r, kCurve), 40002);
  // A late review delays the following ones.
  ApplyResult(&r, 40010, tq::kRight, kCurve);
  EXPECT_EQ(DueDate(r, kCurve), 40012);
  // The last step completes a pass (and starts the next) only when due.
  r.stepIndex = 6;
  r.reviewDates[5] = 40015;  // due 40015 + 30 - 15
  EXPECT_FALSE(ApplyResult(&r, 40029, tq::kRight, kCurve));
  EXPECT_TRUE(ApplyResult(&r, 40030, tq::kRight, kCurve));
  EXPECT_EQ(r.stepIndex, 1);
  EXPECT_EQ(r.reviewDates[0], 40030);
  EXPECT_EQ(r.passCount, 1u);
}

TEST(LearningRecord, RelapseAndRecovery) {
  LearningRecord r = Learnt(40000, "YY", 2, 2, tq::kAttrMastered);
  ApplyResult(&r, 40100, tq::kWrong, nullptr);
  EXPECT_EQ(r.attr, tq::kAttrRelapsedMastered);
  ApplyResult(&r, 40101, tq::kRight, nullptr);
  ApplyResult(&r, 40102, tq::kRight, nullptr);
  EXPECT_EQ(r.attr, tq::kAttrRelapsedMastered);  // two rights are not enough
  ApplyResult(&r, 40103, tq::kRight, nullptr);
  EXPECT_EQ(r.attr, tq::kAttrMastered);

  LearningRecord k = Learnt(40000, "Y", 1, 1, tq::kAttrKnownFromStart);
  ApplyResult(&k, 40100, tq::kWrong, nullptr);
  EXPECT_EQ(k.attr, tq::kAttrRelapsedKnown);
  ApplyResult(&k, 40101, tq::kKnown, nullptr);  // result 4 recovers at once
  EXPECT_EQ(k.attr, tq::kAttrKnownFromStart);
}

TEST(LearningRecord, DoneForTodayAndUnknownResults) {
  LearningRecord r = Learnt(40000, "Y", 1, 1);
  ApplyResult(&r, 40002, tq::kRightDoneToday, nullptr);
  EXPECT_EQ(r.skipDate, 40002);
  EXPECT_EQ(r.rightCount, 2);
  EXPECT_EQ(Results(r), "YY");
  ApplyResult(&r, 40003, tq::kUnsure, nullptr);
  EXPECT_EQ(Results(r), "UYY");
  EXPECT_EQ(r.rightCount, 2);
  ApplyResult(&r, 40003, 9, nullptr);  // not a result: the newest letter doubles
  EXPECT_EQ(Results(r), "UUYY");
  EXPECT_EQ(r.shownCount, 4);
  // The ninth result pushes the oldest out.
  for (int i = 0; i < 8; ++i) ApplyResult(&r, 40004, tq::kWrong, nullptr);
  EXPECT_EQ(Results(r), "NNNNNNNN");
}

TEST(LearningRecord, FortyPercentIsTheStrictSide) {
  const int L = tq::kAttrLearning, M = tq::kAttrMastered;
  const struct { int first; const char* results; int shown, right, attr; bool finished; } kCases[] = {
      // An older word, right twice running after a miss: at 40% it needs
      // three rights in four, at 50% two running suffice.
      {39000, "YYN", 10, 4, L, false}, {39000, "YYN", 10, 5, L, true}, {39000, "YYNY", 10, 4, L, true},
      // A word first met today always takes the strict side; seen twice and
      // never missed is enough.
      {40000, "YYN", 3, 2, L, false}, {40000, "YY", 3, 2, L, true}, {40000, "NY", 3, 2, L, false},
      // Mastered and relapsed words leave on any right.
      {39000, "YN", 10, 1, M, true}, {39000, "UY", 10, 9, M, false},
      {39000, "YN", 10, 1, tq::kAttrRelapsedKnown, true},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(FinishedForToday(Learnt(c.first, c.results, c.shown, c.right, c.attr), 40000), c.finished)
        << c.results << " " << c.right << "/" << c.shown << " attr " << c.attr;
  }
}

TEST(LearningRecord, ReturnDistances) {
  // Right once: leaves now (0); right twice running: not returned (-1).
  const struct { const char* results; int right, lo, hi; } kCases[] = {
      {"U", 0, 10, 14}, {"NY", 0, 2, 4}, {"YN", 0, 9, 13}, {"YU", 0, 14, 18}, {"Y", 1, 0, 0}, {"YY", 1, -1, -1},
  };
  for (int i = 0; i < 200; ++i) {
    for (const auto& c : kCases) {
      int d = tq::ReturnDistance(Learnt(1, c.results, 1, c.right));
      ASSERT_TRUE(d >= c.lo && d <= c.hi) << c.results << " " << d;
    }
  }
}

TEST(LearningRecord, Degrees) {
  EXPECT_EQ(tq::Degree(BlankRecord(0)), 0);
  const struct { int shown, right, attr, degree; } kCases[] = {
      {10, 7, tq::kAttrLearning, 3}, {10, 9, tq::kAttrLearning, 1}, {10, 1, tq::kAttrLearning, 9},
      {10, 2, tq::kAttrLearning, 8}, {10, 0, tq::kAttrMastered, 1},  {0, 0, tq::kAttrLearning, 0},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(tq::Degree(Learnt(1, "Y", c.shown, c.right, c.attr)), c.degree) << c.right << "/" << c.shown;
  }
}

TEST(LearningRecord, DamagedStepsStayInsideTheRecord) {
  for (int step : {-5, 0, 7, 300}) {
    LearningRecord r = Learnt(40000, "Y", 1, 1);
    r.stepIndex = static_cast<int16_t>(step);
    DueDate(r, kCurve);
    ApplyResult(&r, 40100, tq::kRight, kCurve);
    ApplyResult(&r, 40100, tq::kRight, nullptr);
    EXPECT_EQ(r.itemNo, 7);
  }
  // Never shown but marked right: the percentage is infinite, not a trap.
  EXPECT_TRUE(FinishedForToday(Learnt(39000, "YY", 0, 3), 40001));
}

TEST(Shuffle, SwapsEachElementWithAnEarlierOne) {
  std::vector<LearningRecord> two = {BlankRecord(0), BlankRecord(1)};
  tq::ShuffleRecords(two.data(), two.size());
  EXPECT_EQ(two[0].itemNo, 1);  // element 1 always trades with element 0
  std::vector<LearningRecord> many;
  for (int i = 0; i < 40000; ++i) many.push_back(BlankRecord(i));
  tq::ShuffleRecords(many.data(), many.size());
  std::set<int> items;
  for (const LearningRecord& r : many) items.insert(r.itemNo);
  EXPECT_EQ(items.size(), 40000u);
  EXPECT_NE(many.back().itemNo, 39999);
}

// The 40-percent tests use whole numbers; they must agree with the
// floating-point division everywhere, signs, zero counts and extremes included.
TEST(LearningRecord, FortyPercentTestsMatchTheDivision) {
  LearningRecord r = tq::BlankRecord(0);
  auto check = [&r](int shown, int right) {
    r.shownCount = static_cast<int16_t>(shown);
    r.rightCount = static_cast<int16_t>(right);
    double pct = static_cast<double>(right) / static_cast<double>(shown) * 100.0;
    ASSERT_EQ(tq::RightAtMost40Percent(r), pct <= 40.0) << right << "/" << shown;
    ASSERT_EQ(tq::RightAbove40Percent(r), pct > 40.0) << right << "/" << shown;
  };
  for (int shown = -120; shown <= 300; ++shown) {
    for (int right = -50; right <= 320 && !HasFailure(); ++right) check(shown, right);
  }
  for (int shown : {32767, 32765, -32768}) {
    for (int right : {13106, 13107, 13108, -32768, 32767}) check(shown, right);
  }
}

}  // namespace
