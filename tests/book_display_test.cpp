// The list painters at the boundary, on host surfaces: what each draws is
// read back from the surface's journal (texts, positions, the line and its
// pen) and, for the line, from its pixels.
#include <cstring>
#include <string>
#include <vector>

#include "platform/surface.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

// The list's line as every painter ends: the grey pen, the fixed line, the
// old pen back.
const std::string kLine = "Pen 0 1 808080\nMoveTo 0 22\nLineTo 600 22\nPen 0 1 000000\n";

class BookDisplay : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    std::memset(&rec_, 0, sizeof rec_);
    dc_ = tqHost_CreateDC(640, 24);
    ASSERT_GT(dc_, 0);
  }
  void TearDown() override {
    vcCloseBookIdx(&rec_);
    vcCloseBookLib(&rec_);
    tqHost_DeleteDC(dc_);
    TempDirTest::TearDown();
  }
  // A notebook of the given entries (word, pronunciation as stored,
  // explanation); their offsets.
  std::vector<int32_t> Notebook(const std::vector<std::vector<std::string>>& entries) {
    for (const auto& e : entries) {
      EXPECT_EQ(vcFullAppendNotebook("nb.idx", e[0].c_str(), e[2].c_str(), e[1].c_str(), 0), 0);
    }
    return OpenRecord();
  }
  std::vector<int32_t> OpenRecord() {
    int n = vcOpenBookIdxAndReturnNum(&rec_, "nb.idx");
    EXPECT_GE(vcOpenBookLib(&rec_, nullptr), 0);
    std::vector<int32_t> offsets(n > 0 ? n : 0);
    EXPECT_EQ(vcReadBookIndex(&rec_, offsets.data(), n), 0);
    return offsets;
  }
  // What was drawn since the last call.
  std::string Drawn() {
    int n = tqHost_GetDrawLog(dc_, nullptr, 0);
    std::vector<char> log(n + 1);
    tqHost_GetDrawLog(dc_, log.data(), n + 1);
    tqHost_ClearDrawLog(dc_);
    return std::string(log.data(), n);
  }
  int Width(const std::string& text) {
    tq::gdi::Size size{0, 0};
    EXPECT_TRUE(tq::gdi::GetTextExtentPoint32A(dc_, text.data(), static_cast<int>(text.size()), &size));
    return size.cx;
  }

  BookRecord rec_;
  int dc_ = 0;
};

TEST_F(BookDisplay, ARowOfTheList) {
  std::vector<int32_t> at = Notebook({{"able", "['eibl]", "{12}" + G("能够的")}});
  vcDispWord(&rec_, at[0], dc_, 4, 3);
  EXPECT_EQ(Drawn(), "TextOut 4 3 able\n" + kLine);
  vcDispPronun(&rec_, at[0], dc_, 150, 3);
  std::string pron = Drawn();
  EXPECT_EQ(pron.substr(0, pron.find("Font", 1)), "Font pron 0 700 1\nTextOut 150 3 ['eibl]\n");
  EXPECT_EQ(pron.substr(pron.size() - kLine.size()), kLine);

  // The class mark is not drawn, but the width is measured with it.
  int width = vcDispExplain(&rec_, at[0], dc_, 290, 5);
  EXPECT_EQ(Drawn(), "TextOut 290 5 " + G("能够的") + "\n" + kLine);
  EXPECT_EQ(width, Width("{12}" + G("能够的")));
  EXPECT_GT(width, Width(G("能够的")));

  // The line stays where it is whatever the position; the text does not.
  vcDispWord(&rec_, at[0], dc_, 40, 300);
  EXPECT_EQ(Drawn(), "TextOut 40 300 able\n" + kLine);
  for (int x : {0, 300, 599}) EXPECT_EQ(tqHost_GetPixel(dc_, x, 22), 0x808080u) << x;
  EXPECT_EQ(tqHost_GetPixel(dc_, 600, 22), 0xFFFFFFu);  // the end point is left out
  EXPECT_EQ(tqHost_GetPixel(dc_, 300, 23), 0xFFFFFFu);

  vcDrawUnderLine(dc_, 0x0000FF);
  EXPECT_EQ(Drawn(), "Pen 0 1 0000FF\nMoveTo 0 22\nLineTo 600 22\nPen 0 1 000000\n");
  EXPECT_EQ(tqHost_GetPixel(dc_, 10, 22), 0x0000FFu);
  DrawPronStr(dc_, "[Q]", 7, 8);
  EXPECT_EQ(Drawn().substr(0, 34), "Font pron 0 700 1\nTextOut 7 8 [Q]\n");
}

TEST_F(BookDisplay, WhatEachPainterLeavesOut) {
  std::vector<int32_t> at = Notebook({{"cat", "[]", G("猫")},
                                      {"dog", "", G("狗")},  // no "[" before its separator
                                      {"a", "[p]", "x*y"},
                                      {"b", "[p]", "~xy~z"},
                                      {"c", "[p]", "~~xy"},
                                      {"d", "[p]", "{5x}y"}});
  vcDispPronun(&rec_, at[0], dc_, 1, 1);
  EXPECT_EQ(Drawn(), kLine);
  vcDispPronun(&rec_, at[1], dc_, 1, 1);
  EXPECT_EQ(Drawn(), "");
  vcDispWord(&rec_, -1, dc_, 1, 1);
  EXPECT_EQ(Drawn(), kLine);
  EXPECT_EQ(vcDispExplain(&rec_, -1, dc_, 1, 1), 0);
  EXPECT_EQ(Drawn(), kLine);

  const std::vector<std::string> drawn = {"x", "xy", "", "{5x}y"};
  for (size_t i = 0; i < drawn.size(); ++i) {
    int width = vcDispExplain(&rec_, at[2 + i], dc_, 9, 2);
    EXPECT_EQ(Drawn(), (drawn[i].empty() ? "" : "TextOut 9 2 " + drawn[i] + "\n") + kLine) << i;
    EXPECT_EQ(width, drawn[i].empty() ? 0 : Width(drawn[i])) << i;
  }
}

TEST_F(BookDisplay, HostileEntriesDrawOnlyFromTheirWindows) {
  // A word with no "[" in reach, a pronunciation with no "]", an
  // explanation longer than its window, and a library cut short.
  const std::string lib = std::string(1, '\0') + std::string(100, 'w') + "[p]m" + std::string(1, '\0') + "v[" +
                          std::string(100, 'p') + "]m" + std::string(1, '\0') + "u[p]" + std::string(300, 'e') +
                          std::string(1, '\0') + "ab[c";
  const int32_t word = 0, pron = 105, expl = 210, cut = 515;
  WriteFile("nb.idx.lib", lib);
  WriteFile("nb.idx", Ints({word, pron, expl, cut}));
  OpenRecord();

  vcDispWord(&rec_, word, dc_, 0, 0);
  EXPECT_EQ(Drawn(), "TextOut 0 0 " + std::string(39, 'w') + "\n" + kLine);
  vcDispPronun(&rec_, pron, dc_, 0, 0);
  std::string drawn = Drawn();
  EXPECT_NE(drawn.find("TextOut 0 0 [" + std::string(59, 'p') + "]\n"), std::string::npos) << drawn;
  vcDispExplain(&rec_, expl, dc_, 0, 0);
  EXPECT_EQ(Drawn(), "TextOut 0 0 " + std::string(183, 'e') + "\n" + kLine);

  vcDispWord(&rec_, cut, dc_, 0, 0);
  EXPECT_EQ(Drawn(), "TextOut 0 0 ab\n" + kLine);
  vcDispPronun(&rec_, cut, dc_, 0, 0);
  EXPECT_NE(Drawn().find("TextOut 0 0 [c]\n"), std::string::npos);
  EXPECT_EQ(vcDispExplain(&rec_, cut, dc_, 0, 0), 0);  // no "]"
  EXPECT_EQ(Drawn(), kLine);

  // Past the end of the library, and with no library open.
  vcDispWord(&rec_, 100000, dc_, 0, 0);
  vcDispPronun(&rec_, 100000, dc_, 0, 0);
  EXPECT_EQ(vcDispExplain(&rec_, 100000, dc_, 0, 0), 0);
  EXPECT_EQ(Drawn(), kLine + kLine);
  vcCloseBookLib(&rec_);
  vcDispWord(&rec_, word, dc_, 0, 0);
  EXPECT_EQ(Drawn(), kLine);
  vcDispWord(nullptr, word, dc_, 0, 0);
  EXPECT_EQ(Drawn(), "");
}

}  // namespace
