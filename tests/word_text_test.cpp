// Word lists in plain text: how each layout pairs English items with their
// meanings, the word file reader's seek-back, and the spent handles.
#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;
using tqtest::WriteFile;

namespace {

using Items = std::vector<std::pair<std::string, std::string>>;

class WordText : public tqtest::TempDirTest {
 protected:
  // Every item of a file through a fresh handle.
  Items ReadAll(const std::string& text, bool split) {
    WriteFile("list.txt", text);
    int h = vcCEnglishTxtFile_OpenEx("list.txt", split ? 1 : 0);
    EXPECT_GT(h, 0);
    Items items;
    std::vector<char> en(4000, 'x'), zh(4000, 'x');
    while (vcCEnglishTxtFile_GetNextItem(h, en.data(), zh.data()) == 1) {
      items.emplace_back(en.data(), zh.data());
      if (items.size() > 1000) break;
    }
    EXPECT_EQ(en[0], '\0');  // emptied at the end as well
    EXPECT_EQ(zh[0], '\0');
    vcCEnglishTxtFile_Close(h);
    return items;
  }
};

TEST_F(WordText, AlternateLinesPairEnglishWithTheLineBelow) {
  const std::string a(3998, 'a');
  const std::pair<std::string, Items> cases[] = {
      {G(u8"apple\r\n苹果\r\npear\r\nbanana\r\n香蕉\r\n"), {{"apple", G(u8"苹果")}, {"pear", ""}, {"banana", G(u8"香蕉")}}},
      // Chinese lines before the first English line, blank lines, blanks and
      // tabs around lines, LF-only ends and a last line with no end.
      {G(u8"词表\n第一课\n\n  apple pie \t\n\n\t苹果派  \n\n pear\n\n\n梨\n伪\nplum"),
       {{"apple pie", G(u8"苹果派")}, {"pear", G(u8"梨")}, {"plum", ""}}},
      // The first Chinese line is the meaning; a second is passed over.
      {G(u8"go\n去\n走\ncome\n来\n"), {{"go", G(u8"去")}, {"come", G(u8"来")}}},
      // A one-line entry is not English, so the alternate reader skips it.
      {G(u8"apple n. 苹果\npear\n梨\n"), {{"pear", G(u8"梨")}}},
      // A line longer than 3,998 bytes arrives as two.
      {a + "bbbbb\n" + G(u8"长") + "\n", {{a, ""}, {"bbbbb", G(u8"长")}}},
      {"", {}},
      {G(u8"只有中文\n"), {}}};
  for (const auto& c : cases) EXPECT_EQ(ReadAll(c.first, false), c.second) << c.first.substr(0, 60);
}

TEST_F(WordText, OneLineEntriesSplitAtTheMark) {
  // Each line is one item; blank lines never count.
  const char* lines[][3] = {
      {u8"apple n. 苹果", "apple", u8"n. 苹果"},
      {u8"do sth. 做某事", "do sth.", u8"做某事"},
      {u8"tell sb.告诉某人", "tell sb.", u8"告诉某人"},
      {u8"apple 苹果", "apple", u8"苹果"},
      {u8"apple", "apple", ""},
      {u8"look after vt.照顾", "look after", u8"vt.照顾"},
      {u8"e.g. adj.\t例如", "e.g.", u8"adj.\t例如"},
      // A dot with no blank before it leaves nothing to split at.
      {u8"n.苹果", "", ""},
      {u8"  U.S.A.  美国 ", "", ""},
      {u8"Mr。 Smith 史密斯先生", "", ""},  // the full stop is a dot by then
      // Full-width punctuation becomes ASCII and a blank, also in the meaning.
      {u8"apple，pear 苹果；梨", "apple, pear", u8"苹果; 梨"},
      // Dots inside the meaning are not looked at.
      {u8"cat 猫 n. 一种动物", "cat", u8"猫 n. 一种动物"},
      {u8"take care of sb. 照顾某人", "take care of sb.", u8"照顾某人"},
  };
  std::string text = "\r\n";
  Items want;
  for (auto& l : lines) {
    text += G(l[0]) + "\r\n\r\n";
    want.emplace_back(l[1], G(l[2]));
  }
  EXPECT_EQ(ReadAll(text, true), want);
}

TEST_F(WordText, HandlesAreSpentOnCloseAndTheTwentiethOpenFails) {
  char en[4000] = "x", zh[4000] = "y";
  for (int empty : {0, -1, 20, 1000}) {
    EXPECT_EQ(vcCEnglishTxtFile_GetNextItem(empty, en, zh), -1);
    vcCEnglishTxtFile_Close(empty);
  }
  EXPECT_STREQ(en, "");
  EXPECT_STREQ(zh, "");

  // Every handle is new, and a file that will not open spends one too;
  // after handle 19 none is left, closed or not.
  WriteFile("w.txt", "a\n");
  int h = vcCEnglishTxtFile_Open("w.txt");
  ASSERT_GT(h, 0);
  vcCEnglishTxtFile_Close(h);
  ASSERT_EQ(vcCEnglishTxtFile_Open("missing.txt"), -1);
  int last = h + 1;
  while ((h = vcCEnglishTxtFile_Open("w.txt")) != -1) {
    ASSERT_EQ(h, last + 1);
    EXPECT_EQ(vcCEnglishTxtFile_GetNextItem(h, en, zh), 1);
    vcCEnglishTxtFile_Close(h);
    EXPECT_EQ(vcCEnglishTxtFile_GetNextItem(h, en, zh), -1);
    last = h;
  }
  EXPECT_EQ(last, 19);
  EXPECT_EQ(vcCEnglishTxtFile_OpenEx("w.txt", 1), -1);
}

class WordFile : public tqtest::TempDirTest {
 protected:
  using Step = std::tuple<int, std::string, std::string>;  // answer, word, meaning
  std::vector<Step> Steps(const std::string& text, uint32_t size = 256) {
    WriteFile("w.txt", text);
    std::vector<char> buffer(size);
    WordFileObj obj;
    EXPECT_EQ(vcInitWordFileObj(&obj, "w.txt", buffer.data(), size), 1);
    std::vector<Step> steps;
    std::vector<char> word(size + 1), mean(size + 1);
    for (int r = 0; r != -1 && steps.size() <= 100;) {
      r = vcGetNextWordFromWordFile(&obj, word.data(), mean.data());
      steps.emplace_back(r, word.data(), mean.data());
    }
    EXPECT_EQ(vcCloseWordFileObj(&obj), 0);
    EXPECT_EQ(obj.hFile, 0u);
    return steps;
  }
};

TEST_F(WordFile, ReadsPairsAndSeeksBackOverEnglishOrBlankLines) {
  using V = std::vector<Step>;
  EXPECT_EQ(Steps(G(u8"apple\r\n苹果\r\npear\r\nbanana\r\n 香蕉 \r\n")),
            (V{{5, "apple", G(u8"苹果")}, {4, "pear", ""}, {6, "banana", G(u8"香蕉")}, {-1, "", ""}}));
  // A word before an empty line: no meaning, and the empty line answers 0 next.
  EXPECT_EQ(Steps(G(u8"cat\n\n猫\ndog\n狗")),
            (V{{3, "cat", ""}, {0, "", ""}, {0, "", ""}, {3, "dog", G(u8"狗")}, {-1, "", ""}}));
  // The last word of a file with no meaning behind it comes with -1; a line
  // longer than the buffer arrives in pieces.
  EXPECT_EQ(Steps("one\ntwo"), (V{{3, "one", ""}, {-1, "two", ""}}));
  EXPECT_EQ(Steps(""), (V{{-1, "", ""}}));
  EXPECT_EQ(Steps("abcdefgh\n", 5), (V{{4, "abcd", ""}, {4, "efgh", ""}, {0, "", ""}, {-1, "", ""}}));
}

TEST_F(WordFile, RefusesWhatCannotBeRead) {
  WordFileObj obj;
  char buf[16];
  EXPECT_EQ(vcInitWordFileObj(&obj, "missing.txt", buf, sizeof buf), -1);
  EXPECT_EQ(obj.hFile, 0u);
  char w[16] = "x", m[16] = "y";
  EXPECT_EQ(vcGetNextWordFromWordFile(&obj, w, m), -1);
  EXPECT_STREQ(w, "");
  EXPECT_EQ(vcCloseWordFileObj(&obj), -1);

  // A buffer too small to hold a byte never loops forever.
  WriteFile("w.txt", "abc\n");
  ASSERT_EQ(vcInitWordFileObj(&obj, "w.txt", buf, 1), 1);
  EXPECT_EQ(vcGetNextWordFromWordFile(&obj, w, m), -1);
  // The same routine closes any record that starts with its stream.
  EXPECT_EQ(vcCloseFileForVb(&obj.hFile), 0);
  EXPECT_EQ(vcCloseFileForVb(&obj.hFile), -1);
}

}  // namespace
