// Fill-blank files at the boundary: one question a line compiled into
// 260-byte records, degrees kept through the handle's held record, and the
// page with a text box and a hidden answer for every bracket pair.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

std::string Fill(const std::string& text, int degree = 0) {
  FillBlankQtRecord r;
  std::memset(&r, 0, sizeof r);
  std::memcpy(r.text, text.data(), text.size());
  r.degree = degree;
  return std::string(reinterpret_cast<const char*>(&r), sizeof r);
}

const std::string kHead = "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\r\n"
                          "<title>" + G(u8"墨岭英语语法") + "</title>\r\n</head>\r\n";
const std::string kTail = "</body>\r\n</html>\r\n";

std::string Degree(int d, int n, int g, bool show) {
  std::string gs = std::to_string(g);
  return "<p><a id = \"Degree" + std::to_string(d) + "\" name = \"" + std::to_string(n) + "-" + gs +
         "\" style=\"color:blue; text-decoration:underline; cursor:hand\">" + (show ? "[" + gs + "]" : "") + "</a>\r\n" +
         std::to_string(d) + ". ";
}

std::string Blank(const std::string& id, const std::string& answer) {
  return "<input type=\"text\" id=\"Blk" + id + "\" size=\"12\" style=\"border: 1px solid #008000\"><a id = \"answ" +
         id + "\" name=\"" + answer + "\" style=\"color:#ff0000\"></a>";
}

class FillTest : public tqtest::TempDirTest {
 protected:
  std::string Compile(const std::string& text, int overwrite = 1) {
    WriteFile("fill.txt", text);
    EXPECT_EQ(vcFillBlankQtFile_AddQtTextFile("fill.dat", "fill.txt", overwrite), 1);
    return ReadFile("fill.dat");
  }
  std::string Page(int file, int show, int min, int max, std::vector<int32_t> list, int random, int expect_count) {
    EXPECT_EQ(vcFillBlankQtFile_MakeHtml(file, "fill.htm", show, min, max, 0, nullptr,
                                         list.empty() ? nullptr : list.data(), random),
              expect_count);
    return ReadFile("fill.htm");
  }
};

TEST_F(FillTest, EveryLineIsAQuestionWithItsNumberDropped) {
  std::string got = Compile("1. He [goes] to school.\r\n\r\n  \t\r\n$\t.He [a] and [b]\r\n10. Ten keeps [its] zero\n" +
                            G(u8"这本书是[借]来的。") + "\r\n" + std::string(300, 'x') + "\r\n3.\r\n");
  EXPECT_EQ(got, Fill("He [goes] to school.") + Fill("He [a] and [b]") + Fill("0. Ten keeps [its] zero") +
                     Fill(G(u8"这本书是[借]来的。")) + Fill(std::string(255, 'x')) + Fill(""));
  // Appended unless overwriting; the texts are cut to their field without
  // splitting a character.
  std::string chinese;
  while (chinese.size() < 300) chinese += G(u8"句子");
  EXPECT_EQ(Compile(chinese, 0), got + Fill(chinese.substr(0, 254)));
  EXPECT_EQ(Compile("", 1), "");
  EXPECT_EQ(vcFillBlankQtFile_AddQtTextFile("fill.dat", "missing.txt", 1), -1);
  EXPECT_EQ(vcFillBlankQtFile_AddQtTextFile("no/dir/fill.dat", "fill.txt", 1), -1);
}

TEST_F(FillTest, DegreesThroughTheHeldRecord) {
  WriteFile("fill.dat", Fill("a") + Fill("b", 1) + Fill("c", 2) + "partial");
  int f = vcFillBlankQtFile_Open("fill.dat", "r+b"), g = vcFillBlankQtFile_Open("fill.dat", "r+b");
  ASSERT_EQ(f, 1);
  EXPECT_EQ(vcFillBlankQtFile_GetRecordNum(f), 3);
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 1), 1);
  EXPECT_EQ(vcFillBlankQtFile_SetDegree(g, 1, 8), 1);
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 1), 1);  // held
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 0), 0);
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 1), 8);
  EXPECT_EQ(vcFillBlankQtFile_SetDegree(f, -1, 4), 0);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, i), 4);
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 3), -1);  // the partial record is no record
  EXPECT_EQ(vcFillBlankQtFile_SetDegree(f, 3, 1), -1);
  EXPECT_EQ(ReadFile("fill.dat"), Fill("a", 4) + Fill("b", 4) + Fill("c", 4) + "partial");
  vcFillBlankQtFile_Close(f);
  EXPECT_EQ(vcFillBlankQtFile_GetDegree(f, 0), -1);
  EXPECT_EQ(vcFillBlankQtFile_Open("missing.dat", "rb"), -1);
  EXPECT_EQ(vcFillBlankQtFile_Open("fill.dat", "rb"), 3);  // 1 is free again, but the failed open kept it
}

TEST_F(FillTest, PageByteForByte) {
  WriteFile("fill.dat", Fill("[a] and [b]") + Fill("No blanks here.", 1) + Fill(G(u8"这是[借]的") + "[]", 2) +
                            Fill("Unclosed [x] and [y", 3) + Fill("Nested [a[b] ] end]", -5));
  int f = vcFillBlankQtFile_Open("fill.dat", "rb");
  const std::string body[] = {
      Blank("001-000", "a") + " and " + Blank("001-001", "b") + "\r\n",
      "No blanks here.\r\n",
      G(u8"这是") + Blank("003-000", G(u8"借")) + G(u8"的") + Blank("003-001", "") + "\r\n",
      "Unclosed " + Blank("004-000", "x") + " and [y\r\n",
      "Nested " + Blank("005-000", "a[b") + " ] end]\r\n",
  };
  EXPECT_EQ(Page(f, 0, -10, 10, {}, 0, 5),
            kHead + "<body >\r\n" + Degree(1, 0, 0, false) + body[0] + Degree(2, 1, 1, false) + body[1] +
                Degree(3, 2, 2, false) + body[2] + Degree(4, 3, 3, false) + body[3] + Degree(5, 4, -5, false) +
                body[4] + kTail);
  // Degrees 1 to 2 only, shown: display numbers without gaps, record
  // numbers the records' own.
  EXPECT_EQ(Page(f, 1, 1, 2, {}, 0, 2), kHead + "<body >\r\n" + Degree(1, 1, 1, true) + body[1] +
                                            Degree(2, 2, 2, true) +
                                            G(u8"这是") + Blank("002-000", G(u8"借")) + G(u8"的") + Blank("002-001", "") +
                                            "\r\n" + kTail);
  // A listed record is shown whatever its degree.
  EXPECT_EQ(Page(f, 0, 1, 1, {2, 3, 0}, 0, 2), kHead + "<body >\r\n" + Degree(1, 3, 3, false) + "Unclosed " +
                                                   Blank("001-000", "x") + " and [y\r\n" + Degree(2, 0, 0, false) +
                                                   Blank("002-000", "a") + " and " + Blank("002-001", "b") + "\r\n" +
                                                   kTail);
  const std::string body_tag = "<body background='paper.jpg'> <!-------------------M----------------->\r\n";
  EXPECT_EQ(vcFillBlankQtFile_MakeHtml(f, "fill.htm", 0, 0, 9, 0, "paper.jpg", nullptr, 0), 4);
  EXPECT_EQ(ReadFile("fill.htm").substr(kHead.size(), body_tag.size()), body_tag);
  EXPECT_EQ(vcFillBlankQtFile_MakeHtml(f, "no/dir/fill.htm", 0, 0, 9, 0, nullptr, nullptr, 0), -1);
  EXPECT_EQ(vcFillBlankQtFile_MakeHtml(9, "fill.htm", 0, 0, 9, 0, nullptr, nullptr, 0), -1);
}

TEST_F(FillTest, RandomOrderFollowsTheSecondsShuffleAndKeepsTheDegreeTest) {
  std::string bank;
  for (int i = 0; i < 8; ++i) bank += Fill("Q" + std::to_string(i) + " [x]", i % 2);
  WriteFile("fill.dat", bank);
  int f = vcFillBlankQtFile_Open("fill.dat", "rb");
  std::string page;
  int32_t order[8];
  for (;;) {
    int64_t second = tq::env::NowSeconds();
    for (int i = 0; i < 8; ++i) order[i] = i;
    vcRandomIntArray(order, 8);
    page = Page(f, 0, 1, 1, {}, 1, 4);
    if (tq::env::NowSeconds() == second) break;
  }
  std::string want = kHead + "<body >\r\n";
  int d = 0;
  for (int n : order) {
    if (n % 2 == 0) continue;  // without a list the degree test stays
    ++d;
    char id[16];
    std::snprintf(id, sizeof id, "%03d-000", d);
    want += Degree(d, n, 1, false) + "Q" + std::to_string(n) + " " + Blank(id, "x") + "\r\n";
  }
  EXPECT_EQ(page, want + kTail);
}

}  // namespace
