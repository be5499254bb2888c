// tqcomm quiz as a teacher uses it: banks of other quiz programs imported,
// compiled and made into exam pages with the right answers; the sample
// banks; the printable copy; wrong usage and broken input.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

class QuizTool : public tqtest::TempDirTest {
 protected:
  // Runs "tqcomm quiz ARGS"; its exit status, with both outputs in *out.
  int Quiz(const std::string& args, std::string* out = nullptr) {
    std::string o;
    int status = tqtest::Run(std::string(TQCOMM_BIN) + " quiz " + args + " 2>&1", &o);
    if (out != nullptr) *out = o;
    return status;
  }
  // Imports, builds and pages a bank; the right option of each question
  // as the page shows it (GBK), in page order.
  std::vector<std::string> ThroughThePage(const std::string& source, std::string* notes) {
    EXPECT_EQ(Quiz(source + " -o bank.txt", notes), 0) << *notes;
    std::string out;
    EXPECT_EQ(Quiz("build bank.txt -o bank.dat", &out), 0) << out;
    EXPECT_EQ(Quiz("page bank.dat -o exam.htm", &out), 0) << out;
    std::string page = ReadFile("exam.htm");
    std::vector<std::string> right;
    for (int d = 1;; ++d) {
      std::string mark = "<a id = \"answ" + std::to_string(d) + "\" name = \"";
      size_t at = page.find(mark);
      if (at == std::string::npos) break;
      char letter = page[at + mark.size()];
      std::string cell = "<td id=\"Choice" + std::to_string(d) + "-" + std::to_string(letter - 'A') + "\">";
      size_t c = page.find(cell);
      if (c == std::string::npos) {
        right.push_back(std::string("no option ") + letter);
        continue;
      }
      c += cell.size() + 4;  // "B)  "
      right.push_back(page.substr(c, page.find("</td>", c) - c));
    }
    return right;
  }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

TEST_F(QuizTool, GiftBankComesThroughWithItsRightAnswers) {
  WriteFile("moodle.gift",
            u8"// exported from a course\n$CATEGORY: grammar\n\n"
            u8"::Q1:: He {=goes ~go ~going} to school every day.\n\n"
            u8"::Q2:: Which word means \"quick\"? {\n"
            u8"  ~slow#No, the opposite.\n  =rapid#Yes.\n  ~calm\n  ####Rapid and quick mean the same.\n}\n\n"
            u8"The Great Wall is in China. {T}\n\n"
            u8"What is two plus two? {=4 =four}\n\n"
            u8"::Q5:: 哪个词的意思是“借入”？ {~lend =borrow ~return}\n\n"
            u8"Who wrote Hamlet\\? {~%50%Marlowe ~%100%Shakespeare ~Jonson}\n\n"
            u8"Match these. {=a -> 1 =b -> 2 =c -> 3}\n\n"
            u8"Unclosed {=a ~b\n");
  std::string notes;
  EXPECT_EQ(ThroughThePage("import moodle.gift", &notes),
            (std::vector<std::string>{"goes", "rapid", "True", "borrow", "Shakespeare"}));
  EXPECT_TRUE(Has(notes, "5 questions (gift) -> bank.txt")) << notes;
  for (const char* why : {"15: passed over: a short-answer question", "21: passed over: a matching question",
                          "23: passed over: \"{\" without its \"}\""}) {
    EXPECT_TRUE(Has(notes, why)) << why << "\n" << notes;
  }
  std::string bank = ReadFile("bank.txt");
  EXPECT_TRUE(Has(bank, "$ He _______ to school every day.\r\nA) goes\r\nB) go\r\nC) going\r\n#A\r\n")) << bank;
  EXPECT_TRUE(Has(bank, "#B\r\n// Yes. Rapid and quick mean the same.\r\n")) << bank;
  EXPECT_TRUE(Has(bank, G(u8"$ 哪个词的意思是“借入”？\r\n"))) << bank;
  EXPECT_TRUE(Has(bank, "$ Who wrote Hamlet?\r\n")) << bank;
  // The comment reached the record.
  int f = vcChoiceQtFile_Open("bank.dat", "rb");
  char comment[600];
  vcChoiceQtFile_GetComment(f, 1, comment, 0);
  EXPECT_STREQ(comment, "Yes. Rapid and quick mean the same.");
}

TEST_F(QuizTool, AikenBankComesThroughWithItsRightAnswers) {
  WriteFile("aiken.txt",
            u8"\xEF\xBB\xBFWhat is the capital of France?\r\nA. Berlin\r\nB. Paris\r\nC. Rome\r\nANSWER: B\r\n\r\n"
            u8"以下哪个是水果？\r\nA) 苹果\r\nB) 桌子\r\nANSWER: A\r\n"
            u8"3 + 4 = ?\r\nA. 6\r\nB. 7\r\nANSWER: B\r\n"
            u8"Too many options?\r\nA. 1\r\nB. 2\r\nC. 3\r\nD. 4\r\nE. 5\r\nF. 6\r\nANSWER: F\r\n"
            u8"No answer line\r\nA. x\r\n");
  std::string notes;
  EXPECT_EQ(ThroughThePage("import aiken.txt", &notes), (std::vector<std::string>{"Paris", G(u8"苹果"), "7"}));
  EXPECT_TRUE(Has(notes, "3 questions (aiken) -> bank.txt")) << notes;
  EXPECT_TRUE(Has(notes, "15: left out: 6 options (2 to 5 fit)")) << notes;
  EXPECT_TRUE(Has(notes, "23: passed over: no ANSWER line")) << notes;
  // A stem that begins with a digit keeps it behind a full-width blank.
  EXPECT_TRUE(Has(ReadFile("exam.htm"), "3. \xA1\xA1" "3 + 4 = ?</a>"));
  // The same file in GBK.
  std::string gbk = G(ReadFile("aiken.txt").substr(3));
  WriteFile("aiken-gbk.txt", gbk);
  EXPECT_EQ(ThroughThePage("import aiken-gbk.txt", &notes), (std::vector<std::string>{"Paris", G(u8"苹果"), "7"}));
}

TEST_F(QuizTool, SampleBanksBuildPageAndPrint) {
  const std::string data = std::string(TQ_SOURCE_DIR) + "/data/quiz/";
  std::string out;
  ASSERT_EQ(Quiz("build '" + data + "grammar.txt' -o grammar.dat", &out), 0) << out;
  EXPECT_EQ(out, "24 choice questions -> grammar.dat (24 in all)\n");  // and not one warning
  ASSERT_EQ(Quiz("page grammar.dat -o exam/grammar.htm --list 3,0,22", &out), 1) << out;  // no such folder
  ASSERT_EQ(Quiz("page grammar.dat --list 3,0,22 --delete-links", &out), 0) << out;
  EXPECT_EQ(out, "3 questions -> grammar.htm\nkey: 1.B 2.B 3.A\n");
  for (const char* image : {"savesample.jpg", "savesentence.jpg"}) EXPECT_FALSE(ReadFile(image).empty()) << image;

  WriteFile("fill.txt", ReadFile(data + "fill.txt"));
  ASSERT_EQ(Quiz("build fill.txt --fill", &out), 0) << out;
  EXPECT_EQ(out, "12 fill-blank questions -> fill.dat (12 in all)\n");
  ASSERT_EQ(Quiz("page fill.dat --fill --list 3,7", &out), 0) << out;
  EXPECT_EQ(out, "2 questions -> fill.htm\nkey:  1. has, finished  2. will, be\n");
  ASSERT_EQ(Quiz("print fill.htm", &out), 0) << out;
  EXPECT_EQ(out, "4 text boxes made blanks -> fill-print.htm\n");
  std::string print = ReadFile("fill-print.htm");
  // The boxes are gone; the answers' anchors stay, empty and unseen.
  EXPECT_TRUE(Has(print, "1. She [1]_____________<a id = \"answ001-000\" name=\"has\" style=\"color:#ff0000\"></a>"
                         " already [2]_____________")) << print;
  EXPECT_TRUE(Has(print, "1) has\r\n&nbsp;&nbsp&nbsp;&nbsp;2) finished\r\n")) << print;
  ASSERT_EQ(Quiz("print fill.htm --filled -o key.htm", &out), 0) << out;
  std::string key = ReadFile("key.htm");
  EXPECT_TRUE(Has(key, "2. The bridge <b><u>will</u></b><a id = ") && Has(key, "<b><u>be</u></b><a id = ")) << key;
}

TEST_F(QuizTool, WarningsUsageAndBrokenInput) {
  std::string out;
  EXPECT_EQ(Quiz("--help", &out), 0);
  EXPECT_TRUE(Has(out, "quiz import FILE.gift|FILE.txt")) << out;
  for (const char* usage : {"", "grade x", "build", "page bank.dat --list 1,x", "import a.gift --format csv"}) {
    EXPECT_EQ(Quiz(usage), 2) << usage;
  }
  EXPECT_EQ(Quiz("build missing.txt", &out), 1);

  // The traps of the question text are named with their lines.
  WriteFile("bank.txt", "1. Dropped\nA) a\n2. Kept\nA) a\nB) b\n#C\n3. Inherits\n" + std::string("A) ") +
                            std::string(100, 'o') + "\n#A\n");
  EXPECT_EQ(Quiz("build bank.txt", &out), 0) << out;
  for (const char* warning : {"bank.txt:1: dropped", "bank.txt:6: the answer names no option",
                              "bank.txt:8: the option is cut to 95 bytes"}) {
    EXPECT_TRUE(Has(out, warning)) << warning << "\n" << out;
  }
  EXPECT_TRUE(Has(out, "2 choice questions -> bank.dat")) << out;
  WriteFile("none.txt", "1. No answer line anywhere\nA) a\n");
  EXPECT_EQ(Quiz("build none.txt", &out), 1) << out;

  // A fill-blank file is not a choice file, and garbage is neither.
  WriteFile("f.txt", "He [goes.\n");
  EXPECT_EQ(Quiz("build f.txt --fill", &out), 0) << out;
  EXPECT_TRUE(Has(out, "f.txt:1: a \"[\" without its \"]\" stays as text")) << out;
  EXPECT_EQ(Quiz("page f.dat", &out), 1);
  EXPECT_TRUE(Has(out, "a fill-blank file wants --fill")) << out;
  WriteFile("garbage.gift", std::string("\x00\xff\xfe{{}}~=\x01", 10) + std::string(3000, '\x9c'));
  EXPECT_EQ(Quiz("import garbage.gift", &out), 1) << out;
}

}  // namespace
