// Choice-question files at the boundary: texts compiled into whole records,
// single records read and changed through the handle's held record,
// digests, deletion, and the exam page byte for byte.
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

struct Choice {
  std::string stem;
  std::vector<std::string> options;
  std::string comment;
  int answer = 0, difficulty = 0, count = 4, cls = 0, kno = 0;
};

std::string Record(const Choice& c) {
  ChoiceQtRecord r;
  std::memset(&r, 0, sizeof r);
  std::memcpy(r.stem, c.stem.data(), c.stem.size());
  for (size_t i = 0; i < c.options.size(); ++i) std::memcpy(r.options[i], c.options[i].data(), c.options[i].size());
  std::memcpy(r.comment, c.comment.data(), c.comment.size());
  r.answer = c.answer;
  r.difficulty = c.difficulty;
  r.optionCount = c.count;
  r.classBits = c.cls;
  r.knowledgeCode = c.kno;
  return std::string(reinterpret_cast<const char*>(&r), sizeof r);
}

std::string Records(const std::vector<Choice>& cs) {
  std::string out;
  for (const Choice& c : cs) out += Record(c);
  return out;
}

// A record file as readable lines, so that a difference shows where it is;
// bytes behind a field's end that are not zero are shown too.
std::string Describe(const std::string& bytes) {
  std::string out;
  auto field = [&](const char* p, size_t size) {
    size_t n = strnlen(p, size);
    std::string s(p, n);
    for (size_t at; (at = s.find('\n')) != std::string::npos;) s.replace(at, 1, "\\n");
    out += "[" + s + "]";
    for (size_t i = n; i < size; ++i) {
      if (p[i] != 0) return void(out += "(+garbage)");
    }
  };
  for (size_t at = 0; at + sizeof(ChoiceQtRecord) <= bytes.size(); at += sizeof(ChoiceQtRecord)) {
    ChoiceQtRecord r;
    std::memcpy(&r, bytes.data() + at, sizeof r);
    field(r.stem, sizeof r.stem);
    for (auto& o : r.options) field(o, sizeof o);
    field(r.comment, sizeof r.comment);
    out += " a" + std::to_string(r.answer) + " d" + std::to_string(r.difficulty) + " n" +
           std::to_string(r.optionCount) + " c" + std::to_string(r.classBits) + " k" + std::to_string(r.knowledgeCode) +
           "\n";
  }
  if (bytes.size() % sizeof(ChoiceQtRecord) != 0) out += "(partial record)\n";
  return out;
}

class ChoiceTest : public tqtest::TempDirTest {
 protected:
  void TearDown() override {
    tq::env::SetOpenFaultForTesting({});
    TempDirTest::TearDown();
  }
  // Compiles the lines (joined with CR LF) afresh; the file's bytes.
  std::string Compile(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& l : lines) text += l + "\r\n";
    WriteFile("bank.txt", text);
    EXPECT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "bank.txt", 1), 1);
    return ReadFile("bank.dat");
  }
  void ExpectCompiled(const std::vector<std::string>& lines, const std::vector<Choice>& want) {
    std::string got = Compile(lines);
    EXPECT_EQ(Describe(got), Describe(Records(want)));
    EXPECT_TRUE(got == Records(want));
  }
  // A file of n records whose comments are "c0", "c1", ... and difficulty i.
  void WriteBank(int n) {
    std::vector<Choice> cs(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) cs[i] = {"s" + std::to_string(i), {"a", "b"}, "c" + std::to_string(i), 0, i, 2};
    WriteFile("bank.dat", Records(cs));
  }
  static std::string Comment(int file, int index) {
    char buf[600] = "unchanged";
    vcChoiceQtFile_GetComment(file, index, buf, 0);
    return buf;
  }
};

TEST_F(ChoiceTest, RecordInHandIsNeverClearedBetweenQuestions) {
  ExpectCompiled(
      {
          "CMT lost: no question yet",
          "1. Dropped: the bank has had no answer line yet",
          "A) a1",
          "B) b1",
          "DGR 3",
          "2. He _______ to school.",
          "A) go",
          "B) goes",
          "C) going",
          "#B",
          "CLS x",
          "KNO 01.234",
          "// Third person.",
          "$ She _______ tea.",
          "A) like",
          "B) likes",
          "CLS cG",  // upper-case letters are passed over
          "3. No answer line, no DGR or KNO of its own",
      },
      {
          // The difficulty comes from the dropped question before it.
          {"He _______ to school.", {" go", " goes", " going"}, "Third person.", 1, 3, 3, 1, 1234},
          // Answer, count, difficulty and code from before; class bits add
          // up; the third option stays.
          {"She _______ tea.", {" like", " likes", " going"}, "", 1, 3, 3, 3, 1234},
          {"No answer line, no DGR or KNO of its own", {" like", " likes", " going"}, "", 1, 3, 3, 3, 1234},
      });
}

TEST_F(ChoiceTest, CommentPiecesInEveryForm) {
  struct Case {
    std::vector<std::string> lines;
    std::string comment;
  } cases[] = {
      {{"CMT text"}, "text"},
      {{"CMTtext"}, "text"},
      {{"CMT/* text */"}, "text"},
      {{"// text"}, "text"},
      {{"cmt\ttext"}, "text"},              // one tab goes, and the keyword has no case
      {{"CMT  two blanks"}, " two blanks"},  // only one blank goes
      {{"CMT", "//text", "/ / text"}, ""},   // nothing follows; not a comment; nor this
      {{"CMT/* unclosed"}, "unclosed"},
      {{"// a", "CMT b", "CMT/*c*/"}, "abc"},  // joined with nothing between
      {{"/*", "line one", "  line two", "*/"}, "line one\nline two\n"},
      {{"CMT/*", "first", "end of comment */ trailing", "// after"}, "first\nend of comment after"},
      {{"/*", "never closed", "#C"}, "never closed\n#C\n"},  // the rest of the text is comment
      {{"/*", "*/ at once"}, ""},
  };
  for (const Case& c : cases) {
    std::vector<std::string> lines = {"1. Q", "A) a", "#A"};
    lines.insert(lines.end(), c.lines.begin(), c.lines.end());
    ExpectCompiled(lines, {{"Q", {" a"}, c.comment, 0, 0, 1}});
    if (HasFailure()) FAIL() << "comment lines: " << c.lines[0];
  }
}

TEST_F(ChoiceTest, NumbersOptionsAndAnswerLines) {
  ExpectCompiled(
      {
          "1) Digits come first: this starts a question",
          "A) is",
          "B) are",
          "C) am",
          "D) be",
          "#) been",  // a second byte ")" makes an option even here
          "F) sixth: no room, dropped",
          "#b",       // lower case: 'b' - 'A'
          "dgr 5",
          "10. Ten keeps its zero.",
          "A) x",
          "#A",
          "19. Nineteen.",
          "#A",  // no options since the question started
          "20. Twenty.",
          "\t$ .\t9 Tabs, blanks, points.",
          "#C",
      },
      {
          {") Digits come first: this starts a question", {" is", " are", " am", " be", " been"}, "", 33, 5, 5},
          {"0. Ten keeps its zero.", {" x", " are", " am", " be", " been"}, "", 0, 5, 1},
          {"Nineteen.", {" x", " are", " am", " be", " been"}, "", 0, 5, 0},
          {"0. Twenty.", {" x", " are", " am", " be", " been"}, "", 0, 5, 0},
          {"Tabs, blanks, points.", {" x", " are", " am", " be", " been"}, "", 2, 5, 0},
      });
  // A bank without any answer line compiles to nothing, and that is a success.
  EXPECT_EQ(Compile({"1. Q", "A) a", "B) b"}), "");
}

TEST_F(ChoiceTest, KnowledgeCodeDifficultyAndClasses) {
  struct Case {
    std::string line;
    int difficulty, cls, kno;
  } cases[] = {
      {"KNO 01.234", 0, 0, 1234},   {"KNO \t 12-999", 0, 0, 12999}, {"kno 99.000", 0, 0, 99000},
      {"KNO 7", 0, 0, 7000},        {"KNO", 0, 0, 0},                {"DGR -2", -2, 0, 0},
      {"DGR 99999999999", 2147483647, 0, 0}, {"CLS xcgdt", 0, 31, 0}, {"CLS x, c or XCGDT", 0, 3, 0},
  };
  for (const Case& c : cases) {
    ExpectCompiled({"1. Q", c.line, "#A"}, {{"Q", {}, "", 0, c.difficulty, 0, c.cls, c.kno}});
    if (HasFailure()) FAIL() << c.line;
  }
}

TEST_F(ChoiceTest, TextsLongerThanTheirFieldsAreCutWithinThem) {
  const std::string chinese = G(u8"很长的题目");  // 10 bytes
  std::string long_chinese;
  while (long_chinese.size() < 400) long_chinese += chinese;
  std::vector<std::string> comment_lines;
  for (int i = 0; i < 30; ++i) comment_lines.push_back("// " + std::string(20, static_cast<char>('a' + i % 26)));
  std::vector<std::string> lines = {"1. " + std::string(300, 's'), "A) " + std::string(120, 'o'), "B) " + long_chinese,
                                    "#A"};
  lines.insert(lines.end(), comment_lines.begin(), comment_lines.end());
  lines.insert(lines.end(), {"$ " + long_chinese, "#B", "CMT " + std::string(600, 'x'),
                             "1. " + std::string(1500, 'p'),  // past one read: the rest is a line of its own
                             "#A"});
  std::string comment;
  for (int i = 0; i < 30; ++i) comment += std::string(20, static_cast<char>('a' + i % 26));
  ExpectCompiled(lines, {
                            {std::string(255, 's'), {" " + std::string(94, 'o'), " " + long_chinese.substr(0, 94)},
                             comment.substr(0, 508), 0, 0, 2},
                            // 255 bytes would split a character: 254 stay
                            {long_chinese.substr(0, 254), {" " + std::string(94, 'o'), " " + long_chinese.substr(0, 94)},
                             std::string(508, 'x'), 1, 0, 0},
                            {std::string(255, 'p'), {" " + std::string(94, 'o'), " " + long_chinese.substr(0, 94)},
                             "", 0, 0, 0},
                        });
}

TEST_F(ChoiceTest, CompilingAppendsOrReplacesAndFailsOnFiles) {
  WriteFile("a.txt", "1. A\r\nA) a\r\n#A\r\n");
  WriteFile("b.txt", "1. B\r\nA) b\r\n#A\r\n");
  ASSERT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "a.txt", 0), 1);  // made when missing
  ASSERT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "b.txt", 0), 1);
  EXPECT_EQ(ReadFile("bank.dat"), Records({{"A", {" a"}, "", 0, 0, 1}, {"B", {" b"}, "", 0, 0, 1}}));
  ASSERT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "b.txt", 1), 1);
  EXPECT_EQ(ReadFile("bank.dat"), Records({{"B", {" b"}, "", 0, 0, 1}}));
  // Paths in the front ends' form.
  EXPECT_EQ(vcChoiceQtFile_AddQtTextFile((dir() + "\\c.dat").c_str(), (dir() + "\\a.txt").c_str(), 1), 1);
  EXPECT_EQ(ReadFile("c.dat"), Records({{"A", {" a"}, "", 0, 0, 1}}));

  EXPECT_EQ(vcChoiceQtFile_AddQtTextFile("x.dat", "missing.txt", 1), -1);
  EXPECT_FALSE(tq::env::Exists("x.dat"));
  EXPECT_EQ(vcChoiceQtFile_AddQtTextFile("no/such/dir.dat", "a.txt", 1), -1);
  EXPECT_EQ(vcChoiceQtFile_AddQtTextFile(nullptr, "a.txt", 1), -1);
}

TEST_F(ChoiceTest, BinaryGarbageCompilesWithinTheFields) {
  std::mt19937 rng(7);
  std::string garbage;
  for (int i = 0; i < 200000; ++i) {
    // Mostly line starts that reach every rule.
    static const char* starts[] = {"1", "$", "A)", "#", "KNO ", "DGR ", "CLS ", "// ", "/*", "*/", "CMT", "\n", "\r"};
    garbage += rng() % 3 == 0 ? starts[rng() % 13] : std::string(1, static_cast<char>(rng()));
  }
  WriteFile("bank.txt", garbage);
  ASSERT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "bank.txt", 1), 1);
  std::string got = ReadFile("bank.dat");
  ASSERT_EQ(got.size() % sizeof(ChoiceQtRecord), 0u);
  EXPECT_GT(got.size(), 0u);
  EXPECT_EQ(Describe(got).find("garbage"), std::string::npos);  // every text ends inside its field
}

TEST_F(ChoiceTest, HandlesAreNineAndAFailedOpenKeepsItsHandle) {
  WriteBank(3);
  std::vector<int> handles;
  for (int i = 0; i < 9; ++i) handles.push_back(vcChoiceQtFile_Open("bank.dat", "rb"));
  EXPECT_EQ(handles, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(vcChoiceQtFile_Open("bank.dat", "rb"), -1);
  vcChoiceQtFile_Close(4);
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(4), -1);
  EXPECT_EQ(vcChoiceQtFile_Open("missing.dat", "rb"), -1);  // takes handle 4 for good
  EXPECT_EQ(vcChoiceQtFile_Open("bank.dat", "rb"), -1);
  vcChoiceQtFile_Close(9);
  EXPECT_EQ(vcChoiceQtFile_Open("bank.dat", "rb"), 9);
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(9), 3);
  // The fill-blank files have tables of their own.
  EXPECT_EQ(vcFillBlankQtFile_Open("bank.dat", "rb"), 1);
}

TEST_F(ChoiceTest, EmptyHandlesAndIndexesOutsideTheFileAnswerMinusOne) {
  WriteBank(2);
  for (int h : {0, 1, -1, 10}) {
    char buf[8] = "x";
    EXPECT_EQ(vcChoiceQtFile_GetRecordNum(h), -1);
    EXPECT_EQ(vcChoiceQtFile_GetComment(h, 0, buf, 8), -1);
    EXPECT_STREQ(buf, "");
    EXPECT_EQ(vcChoiceQtFile_SetComment(h, 0, "x"), -1);
    EXPECT_EQ(vcChoiceQtFile_GetDifficulty(h, 0), -1);
    EXPECT_EQ(vcChoiceQtFile_SetDifficulty(h, -1, 1), -1);
    EXPECT_EQ(vcChoiceQtFile_DigestQt(h, 0, "d.dat", 1), -1);
    EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(h, 0, nullptr), -1);
    EXPECT_EQ(vcChoiceQtFile_MakeHtml(h, "p.htm", 0, 0, nullptr, nullptr, 0, 0), -1);
    vcChoiceQtFile_Close(h);
  }
  EXPECT_FALSE(tq::env::Exists("d.dat") || tq::env::Exists("p.htm"));
  int f = vcChoiceQtFile_Open("bank.dat", "r+b");
  for (int index : {2, -2, 1 << 30}) {
    EXPECT_EQ(Comment(f, index), "");
    EXPECT_EQ(vcChoiceQtFile_GetDifficulty(f, index), -1);
    EXPECT_EQ(vcChoiceQtFile_SetDifficulty(f, index, 9), -1);
    EXPECT_EQ(vcChoiceQtFile_SetComment(f, index, "x"), -1);
    EXPECT_EQ(vcChoiceQtFile_DigestQt(f, index, "d.dat", 1), -1);
  }
  EXPECT_EQ(Comment(f, 1), "c1");
  EXPECT_EQ(ReadFile("bank.dat").size(), 2 * sizeof(ChoiceQtRecord));
  vcChoiceQtFile_Close(f);
}

TEST_F(ChoiceTest, ChangesGoToTheFileAndEachHandleHoldsOneRecord) {
  WriteBank(3);
  int a = vcChoiceQtFile_Open("bank.dat", "r+b"), b = vcChoiceQtFile_Open((dir() + "\\bank.dat").c_str(), "r+b");
  ASSERT_TRUE(a > 0 && b > 0);
  EXPECT_EQ(vcChoiceQtFile_GetDifficulty(a, 0), 0);
  EXPECT_EQ(vcChoiceQtFile_SetDifficulty(b, 0, 7), 1);
  EXPECT_EQ(vcChoiceQtFile_GetDifficulty(a, 0), 0);  // a still holds record 0 as it read it
  EXPECT_EQ(vcChoiceQtFile_GetDifficulty(a, 1), 1);
  EXPECT_EQ(vcChoiceQtFile_GetDifficulty(a, 0), 7);  // read again

  // Every record at once: 0, and a's next read of any record goes to the file.
  EXPECT_EQ(vcChoiceQtFile_SetDifficulty(a, -1, 5), 0);
  EXPECT_EQ(Comment(a, 0), "c0");
  EXPECT_EQ(Comment(a, 2), "c2");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(vcChoiceQtFile_GetDifficulty(a, i), 5);
  EXPECT_EQ(vcChoiceQtFile_GetDifficulty(b, 0), 7);  // b holds its own record 0

  std::string long_comment = std::string(507, 'x') + G(u8"长");  // 509 bytes: the character goes whole
  EXPECT_EQ(vcChoiceQtFile_SetComment(a, 1, long_comment.c_str()), 1);
  EXPECT_EQ(vcChoiceQtFile_SetComment(a, 2, std::string(600, 'y').c_str()), 1);
  vcChoiceQtFile_Close(a);
  vcChoiceQtFile_Close(b);
  std::vector<Choice> want = {{"s0", {"a", "b"}, "c0", 0, 5, 2},
                              {"s1", {"a", "b"}, std::string(507, 'x'), 0, 5, 2},
                              {"s2", {"a", "b"}, std::string(508, 'y'), 0, 5, 2}};
  EXPECT_EQ(Describe(ReadFile("bank.dat")), Describe(Records(want)));

  // A file open for reading only: nothing is written, and SetComment says so.
  int r = vcChoiceQtFile_Open("bank.dat", "rb");
  EXPECT_EQ(vcChoiceQtFile_SetComment(r, 0, "new"), 0);
  EXPECT_EQ(vcChoiceQtFile_SetDifficulty(r, 0, 1), 1);
  vcChoiceQtFile_Close(r);
  EXPECT_EQ(Describe(ReadFile("bank.dat")), Describe(Records(want)));

  // Every record of an empty file: nothing to change.
  WriteFile("empty.dat", "");
  int e = vcChoiceQtFile_Open("empty.dat", "r+b");
  EXPECT_EQ(vcChoiceQtFile_SetDifficulty(e, -1, 3), 0);
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(e), 0);
  EXPECT_EQ(ReadFile("empty.dat"), "");
}

TEST_F(ChoiceTest, DigestsHoldWholeRecordsOrNumbers) {
  WriteBank(3);
  std::string bank = ReadFile("bank.dat");
  int f = vcChoiceQtFile_Open("bank.dat", "rb");
  EXPECT_EQ(vcChoiceQtFile_DigestQt(f, 2, "whole.dat", 1), 1);
  EXPECT_EQ(vcChoiceQtFile_DigestQt(f, 0, "whole.dat", 0x7701), 1);
  EXPECT_EQ(ReadFile("whole.dat"), bank.substr(2 * 1276, 1276) + bank.substr(0, 1276));
  // Only the low byte asks for the whole record.
  EXPECT_EQ(vcChoiceQtFile_DigestQt(f, 2, "numbers.dat", 0), 1);
  EXPECT_EQ(vcChoiceQtFile_DigestQt(f, 1, "numbers.dat", 0x100), 1);
  EXPECT_EQ(tqtest::ReadInts("numbers.dat"), (std::vector<int32_t>{2, 1}));
  // A digest of whole records is a question file of its own.
  int d = vcChoiceQtFile_Open("whole.dat", "rb");
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(d), 2);
  EXPECT_EQ(Comment(d, 1), "c0");
  EXPECT_EQ(vcChoiceQtFile_DigestQt(f, 0, "no/such/dir/d.dat", 1), -1);
}

TEST_F(ChoiceTest, DeletionGoesThroughTheTemporaryFileAndKeepsTheHandle) {
  WriteBank(6);
  std::string bank = ReadFile("bank.dat");
  int f = vcChoiceQtFile_Open("bank.dat", "r+b");
  EXPECT_EQ(Comment(f, 1), "c1");
  const int32_t gone[] = {1, 3, 5};
  EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(f, 3, gone), 1);
  EXPECT_FALSE(tq::env::Exists("tmptmpdelete.dat"));
  EXPECT_EQ(ReadFile("bank.dat"), bank.substr(0, 1276) + bank.substr(2 * 1276, 1276) + bank.substr(4 * 1276, 1276));
  // Still open: record 1 is now the old record 2.
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(f), 3);
  EXPECT_EQ(Comment(f, 1), "c2");
  // A list out of order stops at the first number passed: only 2 goes.
  const int32_t unsorted[] = {2, 0};
  EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(f, 2, unsorted), 1);
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(f), 2);
  EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(f, 0, nullptr), 1);
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(f), 2);
  // No temporary file: the bank stays as it was.
  tq::env::SetOpenFaultForTesting([](const std::string& path, const char*) {
    return path.find("tmptmpdelete.dat") != std::string::npos;
  });
  EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(f, 1, gone), -1);
  tq::env::SetOpenFaultForTesting({});
  EXPECT_EQ(vcChoiceQtFile_GetRecordNum(f), 2);
  vcChoiceQtFile_Close(f);
  // A file open for writing only cannot be read through: kept whole.
  int w = vcChoiceQtFile_Open("bank.dat", "ab");
  EXPECT_EQ(vcChoiceQtFile_CloseAndDeleteQts(w, 1, gone), -1);
  EXPECT_EQ(ReadFile("bank.dat").size(), 2 * 1276u);
}

// The exam page as the front ends' scripts read it.
const std::string kHead =
    "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\r\n<title>" +
    G(u8"墨岭英语语法") + "</title>\r\n<link href=\"login.css\" rel=\"stylesheet\" type=\"text/css\"></head>\r\n";
const std::string kTail = "</body>\r\n</html>\r\n";

std::string Question(int d, int n, const std::string& stem, const std::vector<std::string>& options, int p,
                     bool del = false) {
  std::string D = std::to_string(d), N = std::to_string(n), P = std::to_string(p);
  std::string s = "<p><a id = \"Degree" + D + "\" name = \"" + N +
                  "-1000\" style=\"color:blue; text-decoration:underline; cursor:hand\"></a>\r\n"
                  "<a id=\"Problem" + N + "\">" + D + ". " + stem + "</a>\r\n"
                  "<table border=\"0\"  id=\"table" + D + "\">\r\n";
  for (size_t i = 0; i < options.size(); ++i) {
    std::string C(1, static_cast<char>('A' + i));
    s += "<tr>\r\n<td width=10> </td>\r\n<td width=30 align=center style=\"color: #000; font-family: " + G(u8"宋体") +
         "; font-size: 10px; margin: 0\"><input type=radio name=radio" + D + " value=" + C + "></td>\r\n"
         "<td id=\"Choice" + D + "-" + std::to_string(i) + "\">" + C + ") " + options[i] + "</td>\r\n</tr>\r\n";
  }
  s += "<tr>\r\n<td width=10> </td>\r\n<td width=30> </td>\r\n<td>"
       "<img id = \"Digest" + N + "-" + D + "-" + P +
       "\" style= \"cursor:hand\" border=\"0\" src=\"savesample.jpg\" width=\"11\" height=\"11\">&nbsp;"
       "<img id = \"ToSerlo" + N + "-" + D + "-" + P +
       "\" style= \"cursor:hand\" border=\"0\" src=\"savesentence.jpg\" width=\"11\" height=\"11\">&nbsp;";
  if (del) {
    s += "<img id = \"Delete" + N +
         "\" style= \"cursor:hand\" border=\"0\" src=\"savesample.jpg\" width=\"11\" height=\"11\">&nbsp;\r\n";
  }
  s += "</td>\r\n<tr>\r\n<td width=10> </td>\r\n<td width=30> </td>\r\n<td>"
       "<a id = \"answ" + D + "\" name = \"" + std::string(1, static_cast<char>('A' + p)) + "-" + N +
       "\" style=\"color:#ff0000\"></a></td>\r\n</table>\r\n";
  return s;
}

// Options past a record's count are stale and never shown.
const std::vector<Choice> kBank = {{G(u8"他每天 _______ 上学。"), {"go", "goes", "went", "gone"}, "", 1, 2, 4},
                                   {"Two options", {"yes", "no", "stale", "stale"}, "", 0, 0, 2},
                                   {"Five", {"a", "b", "c", "d", "e"}, "", 4, 9, 5}};

// Record n as question d of the page, options in the order perm gives.
std::string BankQuestion(int d, int n, bool del = false, const int32_t* perm = nullptr) {
  const Choice& c = kBank[n];
  std::vector<std::string> shown;
  int p = c.answer;
  for (int i = 0; i < c.count; ++i) {
    shown.push_back(c.options[perm ? perm[i] : i]);
    if (perm && perm[i] == c.answer) p = i;
  }
  return Question(d, n, c.stem, shown, p, del);
}

class ChoicePageTest : public ChoiceTest {
 protected:
  void SetUp() override {
    ChoiceTest::SetUp();
    WriteFile("bank.dat", Records(kBank));
    file_ = vcChoiceQtFile_Open("bank.dat", "rb");
  }
  std::string Page(int shuffle, const char* background, std::vector<int32_t> list, int random, int del,
                   int expect_count) {
    EXPECT_EQ(vcChoiceQtFile_MakeHtml(file_, "exam.htm", shuffle, 0, background, list.empty() ? nullptr : list.data(),
                                      random, del),
              expect_count);
    return ReadFile("exam.htm");
  }
  int file_ = 0;
};

TEST_F(ChoicePageTest, PageInFileOrderByteForByte) {
  EXPECT_EQ(Page(0, nullptr, {}, 0, 0, 3),
            kHead + "<body >\r\n" + BankQuestion(1, 0) + BankQuestion(2, 1) + BankQuestion(3, 2) + kTail);
  // A list: display numbers follow the list, record numbers stay; numbers
  // that are no record are passed over. The background and delete icons.
  EXPECT_EQ(Page(0, "bg.jpg", {4, 2, 7, -1, 0}, 0, 1, 2),
            kHead + "<body background='bg.jpg'> <!-------------------M----------------->\r\n" +
                BankQuestion(1, 2, true) + BankQuestion(2, 0, true) + kTail);
  EXPECT_EQ(Page(0, "", {0}, 0, 0, 0), kHead + "<body >\r\n" + kTail);
  EXPECT_EQ(vcChoiceQtFile_MakeHtml(file_, "no/such/dir/exam.htm", 0, 0, nullptr, nullptr, 0, 0), -1);
}

TEST_F(ChoicePageTest, ShuffledOptionsFollowTheSecondsShuffle) {
  // The page shuffles with the library's clock-seeded shuffle, so a shuffle
  // of the same length in the same second gives the page's order.
  std::string page;
  int32_t four[4], five[5], order[3];
  for (;;) {
    int64_t second = tq::env::NowSeconds();
    std::iota(four, four + 4, 0), std::iota(five, five + 5, 0), std::iota(order, order + 3, 0);
    vcRandomIntArray(four, 4);
    vcRandomIntArray(five, 5);
    vcRandomIntArray(order, 3);
    page = Page(1, nullptr, {}, 1, 0, 3);
    std::string again = (vcChoiceQtFile_MakeHtml(file_, "again.htm", 1, 0, nullptr, nullptr, 1, 0), ReadFile("again.htm"));
    if (tq::env::NowSeconds() == second) {
      EXPECT_EQ(again, page);  // pages made within one second shuffle alike
      break;
    }
  }
  std::string want = kHead + "<body >\r\n";
  for (int d = 1; d <= 3; ++d) {
    int n = order[d - 1];
    want += BankQuestion(d, n, false, n == 0 ? four : n == 2 ? five : nullptr);  // two options never move
  }
  EXPECT_EQ(page, want + kTail);
}

}  // namespace
