// `tqcomm book import` makes a book from a user's word list in either
// layout, which the book exports read back word by word. (The bundled
// sample is imported by the learn tool's tests.)
#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;
using tqtest::WriteFile;

namespace {

class BookImport : public tqtest::TempDirTest {
 protected:
  // Runs the tool with its data folder in the scratch folder; the exit
  // status, with standard output and error in *out.
  int Tool(const std::string& args, std::string* out = nullptr) {
    std::string text;
    int r = tqtest::Run("XDG_DATA_HOME='" + dir() + "' " + TQCOMM_BIN + " " + args + " 2>&1", &text);
    if (out) *out = text;
    return r;
  }

  struct Word {
    std::string word, explanation, pronunciation;
    bool operator==(const Word& o) const {
      return word == o.word && explanation == o.explanation && pronunciation == o.pronunciation;
    }
  };
  friend void PrintTo(const Word& w, std::ostream* os) { *os << w.word << "|" << w.explanation << "|" << w.pronunciation; }

  std::vector<Word> ReadBook(const std::string& idx) {
    std::vector<Word> words;
    int book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
    int count = vcCOrvexBook_OpenIdx(book, "rb");
    EXPECT_GE(vcCOrvexBook_OpenLib(book, "rb"), 0);
    for (int i = 0; i < count; ++i) {
      std::vector<char> w(4000), e(4000), p(4000);
      vcCOrvexBook_GetWordByNo(book, i, w.data(), e.data(), p.data(), nullptr, nullptr, nullptr);
      words.push_back({w.data(), e.data(), p.data()});
    }
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    return words;
  }
};

TEST_F(BookImport, EachLayoutMakesABookWithItsHistoryFile) {
  using W = std::vector<Word>;
  const W want = {{"apple", G(u8"n. 苹果"), "[]"},
                  {"able", G(u8"adj. 能够的"), "['eibl]"},
                  {"do sth.", G(u8"做某事"), "[]"},
                  {"pear", "", "[]"}};

  WriteFile("alternate.txt", G(u8"单词表\r\napple\r\nn. 苹果\r\n\r\nable ['eibl]\r\nadj. 能够的\r\ndo sth.\r\n做某事\r\npear\r\n"));
  std::string out;
  ASSERT_EQ(Tool("book import alternate.txt --book " + Path("a.idx"), &out), 0) << out;
  EXPECT_EQ(ReadBook("a.idx"), want);
  vcCOrvexWizard_GenBlankHistoryFile("blank.his", 4);  // never learnt, numbered 0 up
  EXPECT_EQ(tqtest::ReadFile("a.his"), tqtest::ReadFile("blank.his"));
  EXPECT_EQ(tqtest::ReadFile("a.his").size(), 4u * 48);
  EXPECT_EQ(tqtest::ReadFile("a.idx.tag").size(), 400u + 4 * 4);
  ASSERT_EQ(Tool("book list --book " + Path("a.idx"), &out), 0);
  EXPECT_NE(out.find("able             ['eibl]"), std::string::npos) << out;

  WriteFile("oneline.txt", G(u8"apple n. 苹果\nable ['eibl] adj. 能够的\n\ndo sth. 做某事\npear\n"));
  ASSERT_EQ(Tool("book import oneline.txt --book " + Path("o.idx"), &out), 0) << out;
  EXPECT_EQ(ReadBook("o.idx"), want);
  EXPECT_EQ(tqtest::ReadFile("o.his").size(), 4u * 48);

  // Asked for the other layout, each list gives what that layout finds in it.
  ASSERT_EQ(Tool("book import oneline.txt --layout alternate --book " + Path("x.idx"), &out), 0) << out;
  EXPECT_EQ(ReadBook("x.idx"), (W{{"pear", "", "[]"}}));

  // A second import replaces the book rather than adding to it.
  ASSERT_EQ(Tool("book import alternate.txt --book " + Path("o.idx"), &out), 0) << out;
  EXPECT_EQ(ReadBook("o.idx").size(), 4u);
  EXPECT_EQ(tqtest::ReadFile("o.his").size(), 4u * 48);
}

TEST_F(BookImport, SaysWhyAListCannotBeUsed) {
  std::string out;
  EXPECT_EQ(Tool("book import missing.txt --book " + Path("m.idx"), &out), 1);
  EXPECT_NE(out.find("there is no file missing.txt"), std::string::npos) << out;
  WriteFile("chinese.txt", G(u8"苹果\n香蕉\n"));
  EXPECT_EQ(Tool("book import chinese.txt --book " + Path("c.idx"), &out), 1);
  EXPECT_NE(out.find("holds no English item"), std::string::npos) << out;
  WriteFile("empty.txt", "");
  EXPECT_EQ(Tool("book import empty.txt --book " + Path("e.idx"), &out), 1);
  EXPECT_NE(out.find("holds no English item"), std::string::npos) << out;
  EXPECT_EQ(Tool("book import empty.txt --layout sideways", &out), 2);
}

}  // namespace
