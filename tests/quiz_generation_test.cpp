// Quizzes made from banks: sentences from choice questions, the choice of
// questions from a question index, the diagnostic message boxes, and the
// usage test fed into host windows.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using tqtest::G;
using tqtest::WriteFile;

namespace {

TEST(ChoiceSentence, OptionsFillTheBlanks) {
  struct Case {
    std::string question, option, sentence;
  } cases[] = {
      {"3. It is _______.", "A) cold", "It is [cold]."},
      {"1. _______ and _______", "C) salt, pepper", "[salt] and [pepper]"},
      {"1. He _______ to school every day.", "B) goes", "He [goes] to school every day."},
      {"  12.   spaced _______   ", "D)\t word  ", "spaced [word]"},
      {"1. _______ and _______", "A) a ,   b", "[a ] and [b]"},     // the first answer ends at the comma
      {"1. Only _______ here.", "A) x, y", "Only [x] here."},        // no blank left for y
      {"1. _______ _______", "A) x", "[x] _______"},                 // one answer, one blank
      {"1. A ________ b", "A) x", "A [x]_ b"},                       // seven underscores make a blank
      {"1. No blank.", "A) x", "No blank."},
      {"No point _______", ") x", "No point [x]"},                   // no point: the whole question
      {"1. _______!", "no bracket", "[no bracket]!"},                // no ")": the whole option
      {"1. ", "A)   ", ""},
      {G(u8"1. 我每天_______学校。"), G(u8"B) 去"), G(u8"我每天[去]学校。")},
  };
  for (const Case& c : cases) {
    char out[512];
    std::memset(out, 'z', sizeof out);
    int n = vcGenChoiceQtSentence(c.question.c_str(), c.option.c_str(), out, 0);
    EXPECT_EQ(std::string(out), c.sentence) << c.question << " | " << c.option;
    EXPECT_EQ(n, static_cast<int>(c.sentence.size()));
  }
}

class ChoseTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    // rangeValueA, rangeValueB, knowledge code
    WriteFile("index.dat", tqtest::Ints({1, 10, 12000, 3, 2, 12998, 5, 4, 12999, 2, 7, 13000, 4, 4, 1234}));
  }
  static std::vector<int32_t> Chose(const char* path, int low, int high, std::vector<int32_t> codes, int second_low,
                                    int second_high, std::vector<int32_t> included, int expect = -2) {
    std::vector<int32_t> result(8, -7);
    int n = vcChoseQts(path, 0, low, high, static_cast<int>(codes.size()), codes.data(), 0, second_low, second_high,
                       included.empty() ? nullptr : included.data(), result.data());
    if (expect != -2) {
      EXPECT_EQ(n, expect);
    }
    result.resize(n < 0 ? 0 : static_cast<size_t>(n));
    return result;
  }
};

TEST_F(ChoseTest, RangesCodesAndIncludedQuestions) {
  using V = std::vector<int32_t>;
  struct Case {
    int low, high;
    V codes;
    int second_low, second_high;
    V included, want;
  } cases[] = {
      {-1, -1, {}, -1, -1, {}, {0, 1, 2, 3, 4}},
      {2, 4, {}, -1, -1, {}, {1, 3, 4}},
      {-1, 5, {}, -1, -1, {}, {0, 1, 2, 3, 4}},  // one end -1: no range test
      {2, 4, {}, 0, 0, {}, {1, 4}},               // the second pair switches on B within 2..4
      {2, 4, {}, 5, -1, {}, {1, 3, 4}},
      {-1, -1, {12999}, -1, -1, {}, {0, 1, 2}},   // a wildcard for 12000 to 12999
      {-1, -1, {13000, 1234}, -1, -1, {}, {3, 4}},
      {-1, -1, {1999}, -1, -1, {}, {4}},
      {-1, -1, {12000}, -1, -1, {}, {0}},
      {-1, -1, {}, -1, -1, {3, 1, 3, 4}, {1, 3, 4}},
      {2, 4, {}, -1, -1, {2, 0, 1}, {1}},
      {-1, -1, {}, -1, -1, {0}, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Chose("index.dat", c.low, c.high, c.codes, c.second_low, c.second_high, c.included), c.want)
        << c.low << ".." << c.high << " codes " << c.codes.size() << " included " << c.included.size();
  }
  // A negative count fits no code.
  int32_t code = 12000, result[5];
  EXPECT_EQ(vcChoseQts("index.dat", 0, -1, -1, -1, &code, 0, -1, -1, nullptr, result), 0);
  EXPECT_EQ(vcChoseQts("index.dat", 0, -1, -1, 0, nullptr, 0, -1, -1, nullptr, nullptr), 5);
}

TEST_F(ChoseTest, ShortEmptyAndMissingIndexes) {
  WriteFile("one.dat", tqtest::Ints({0, 0, 5}));
  EXPECT_EQ(Chose("one.dat", -1, -1, {}, -1, -1, {1, 0}, 1), (std::vector<int32_t>{0}));
  EXPECT_EQ(Chose("one.dat", -1, -1, {}, -1, -1, {1, 1}, 0), std::vector<int32_t>{});
  WriteFile("empty.dat", "");
  EXPECT_EQ(Chose("empty.dat", -1, -1, {}, -1, -1, {}, 0), std::vector<int32_t>{});
  WriteFile("short.dat", std::string(11, '\x01'));
  EXPECT_EQ(Chose("short.dat", -1, -1, {}, -1, -1, {}, 0), std::vector<int32_t>{});
  WriteFile("tail.dat", tqtest::Ints({0, 0, 5}) + "\x01\x02");
  EXPECT_EQ(Chose("tail.dat", -1, -1, {}, -1, -1, {}, 1), (std::vector<int32_t>{0}));
  EXPECT_EQ(Chose("missing.dat", -1, -1, {}, -1, -1, {}, -1), std::vector<int32_t>{});
}

std::vector<std::string> g_boxes;

int RecordBox(const char* text, const char* title, unsigned type) {
  g_boxes.push_back(std::string(text) + "|" + title + "|" + std::to_string(type));
  return 1;
}

TEST(TestStringArray, EachTextInABoxOfItsOwn) {
  tqHost_SetMessageBoxHandler(RecordBox);
  const char* texts[] = {"one", "", "three"};
  vcTestStringArray(texts, 3);
  vcTestStringArray(texts, 0);
  vcTestStringArray(texts, -4);
  tqHost_SetMessageBoxHandler(nullptr);
  EXPECT_EQ(g_boxes, (std::vector<std::string>{"one||0", "||0", "three||0"}));
}

class UsageTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    // The answer for no marked option is the question window's number:
    // keep it clear of 0 to 2.
    while ((windows_[0] = tqHost_CreateWindow("", 200, 20)) < 3) {
    }
    for (int& w : windows_) w = tqHost_CreateWindow("", 200, 20);
    none_ = std::to_string(windows_[0]);
  }
  void TearDown() override {
    vcCloseUsageTest();
    TempDirTest::TearDown();
  }
  // The answer and what the four windows show.
  std::string Next() {
    int answer = vcGetUsageQt(windows_[0], windows_[1], windows_[2], windows_[3]);
    std::string shown = std::to_string(answer);
    for (int w : windows_) {
      char text[2000];
      tqHost_GetWindowText(w, text);
      shown += "|" + std::string(text);
    }
    return shown;
  }
  int windows_[4];
  std::string none_;
};

TEST_F(UsageTest, QuestionsGoIntoTheWindows) {
  EXPECT_EQ(vcGetUsageQt(windows_[0], windows_[1], windows_[2], windows_[3]), -1);  // nothing open
  WriteFile("usage.txt", "3 questions\r\n" + G(u8"他每天 ___ 上学。") + "\r\nXgo\r\n$goes \t\r\nXgoing\r\n"
                         "Two marked\nXa\n$b\n$c\n"
                         "None marked\nXa\nYb\n\n");
  EXPECT_EQ(vcOpenUsageTest("usage.txt"), 3);
  EXPECT_EQ(Next(), "1|" + G(u8"他每天 ___ 上学。") + "|go|goes|going");
  EXPECT_EQ(Next(), "2|Two marked|a|b|c");  // the last marked counts
  EXPECT_EQ(Next(), none_ + "|None marked|a|b|");
  // Past the end the last line stays in the buffer.
  EXPECT_EQ(Next(), none_ + "||||");

  WriteFile("other.txt", "not a number\nQ\n$x\nXy\n" + std::string(1500, 'L') + "\n");
  EXPECT_EQ(vcOpenUsageTest("other.txt"), 0);  // replaces the test open before
  EXPECT_EQ(Next(), "0|Q|x|y|" + std::string(996, 'L'));  // a line is read 997 bytes at a time
  EXPECT_EQ(Next(), none_ + "|" + std::string(503, 'L') + "|" + std::string(502, 'L') + "|" + std::string(502, 'L') + "|" +
                        std::string(502, 'L'));
  EXPECT_EQ(vcOpenUsageTest("missing.txt"), -1);
  EXPECT_EQ(vcGetUsageQt(windows_[0], windows_[1], windows_[2], windows_[3]), -1);
}

}  // namespace
