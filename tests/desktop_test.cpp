// Window shaping, text measurement and window procedures, called as a front
// end calls them, on host windows and surfaces.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "desktop/window_shape.h"
#include "platform/host.h"
#include "platform/surface.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

using tqtest::G;

constexpr unsigned kWhite = 0xFFFFFF;
constexpr unsigned kBlue = 0xFF0000;
constexpr unsigned kRed = 0x0000FF;

// ---- Window shapes ----

// The window's region as text: '#' inside, '.' outside, one row a line.
std::string Shape(int window, int width, int height) {
  std::string s;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) s.push_back(tqHost_InRegion(window, x, y) == 1 ? '#' : '.');
    s.push_back('\n');
  }
  return s;
}

// What the shape should be: [left, right) x [top, bottom) rectangles.
std::string Expected(int width, int height, std::vector<std::vector<int>> rects) {
  std::string s;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      bool in = false;
      for (auto& r : rects) in = in || (x >= r[0] && x < r[2] && y >= r[1] && y < r[3]);
      s.push_back(in ? '#' : '.');
    }
    s.push_back('\n');
  }
  return s;
}

TEST(DesktopShape, APaintedWindowIsCutToWhatDiffersFromItsBackground) {
  // A T in two colours on white: a bar over a stem.
  int w = tqHost_CreateWindow("T", 30, 24);
  int dc = tqHost_GetWindowDC(w);
  tqHost_FillRect(dc, 4, 2, 26, 10, kBlue);
  tqHost_FillRect(dc, 11, 10, 17, 22, kRed);
  EXPECT_EQ(vcMakeNoRegularWin(0, w, kWhite), 1);
  // The outline runs down the left edges and up the right ones, so the step
  // from the bar to the stem is a slanted edge, which takes the outer part of
  // the bar's lowest row off: [4, 26) becomes [7, 21) in row 9.
  EXPECT_EQ(Shape(w, 30, 24), Expected(30, 24, {{4, 2, 26, 9}, {7, 9, 21, 10}, {11, 10, 17, 22}}));
  // Against the other colour, the white around the T differs in every row
  // from edge to edge: the whole client area.
  EXPECT_EQ(vcMakeNoRegularWin(0, w, kBlue), 1);
  EXPECT_EQ(Shape(w, 30, 24), Expected(30, 24, {{0, 0, 30, 24}}));
  vcMakeNoRegularWin(0, w, kWhite);
  EXPECT_NE(vcRestoreWinRgn(w), 0);
  EXPECT_EQ(Shape(w, 30, 24), Expected(30, 24, {{0, 0, 30, 24}}));
  tqHost_DestroyWindow(w);
}

TEST(DesktopShape, AWindowOfOneColourOrNoWindowFails) {
  int w = tqHost_CreateWindow("blank", 20, 10);
  EXPECT_EQ(vcMakeNoRegularWin(0, w, kWhite), -1);
  EXPECT_EQ(tqHost_InRegion(w, 15, 5), 1);  // left as it was
  EXPECT_EQ(vcMakeNoRegularWin(0, w + 1000, kWhite), -1);
  // One pixel is no polygon either.
  tqHost_FillRect(tqHost_GetWindowDC(w), 3, 3, 4, 4, kRed);
  EXPECT_EQ(vcMakeNoRegularWin(0, w, kWhite), -1);
  tqHost_DestroyWindow(w);
}

TEST(DesktopShape, TheOutlineScanTakesEdgesInItsOrder) {
  // Rows 1 and 2 painted at [2, 5) and [1, 3); read through column 6 and
  // row 4 (both past the edge, as the client rectangle's right and bottom).
  std::vector<std::string> rows = {"......", "..###.", ".##...", "......"};
  auto pixel = [&](int x, int y) -> tq::gdi::Colour {
    if (y >= 4 || x >= 6) return tq::gdi::kInvalidColour;
    return rows[y][x] == '#' ? 0 : kWhite;
  };
  std::vector<tq::gdi::Point> points = tq::desktop::OutlinePoints(6, 4, pixel, kWhite);
  std::string got;
  for (auto p : points) got += std::to_string(p.x) + "," + std::to_string(p.y) + " ";
  // Left edges down, right edges (one past) up; the meeting rows pushed down.
  EXPECT_EQ(got, "2,1 1,3 3,3 5,1 ");
}

TEST(DesktopShape, RectanglesAreAddedAndTakenOut) {
  int w = tqHost_CreateWindow("pad", 30, 20);
  // A window without a region of its own is cut to the rectangle alone.
  EXPECT_NE(vcAddRectRgn(w, 2, 2, 6, 5), 0);
  EXPECT_EQ(Shape(w, 30, 20), Expected(30, 20, {{2, 2, 6, 5}}));
  EXPECT_NE(vcAddRectRgn(w, 20, 10, 25, 12), 0);
  EXPECT_EQ(Shape(w, 30, 20), Expected(30, 20, {{2, 2, 6, 5}, {20, 10, 25, 12}}));

  // The last argument is the region that receives the difference, and the
  // rectangle's bottom edge as well: it is deleted afterwards.
  vcRestoreWinRgn(w);
  vcAddRectRgn(w, 0, 0, 30, 20);
  int target = tqHost_CreateRectRgn(0, 0, 0, 0);
  EXPECT_NE(vcSubstractRectRgn(w, 4, 3, 9, target), 0);
  int cut_bottom = target < 20 ? target : 20;
  EXPECT_EQ(Shape(w, 30, 20), Expected(30, 20, {{0, 0, 30, 3}, {0, 3, 4, 20}, {9, 3, 30, 20}, {4, cut_bottom, 9, 20}}));
  EXPECT_EQ(tqHost_DeleteObject(target), 0);  // already deleted
  // A bottom that is no region changes nothing.
  std::string before = Shape(w, 30, 20);
  EXPECT_EQ(vcSubstractRectRgn(w, 0, 0, 30, w), 0);  // a window, not a region
  EXPECT_EQ(Shape(w, 30, 20), before);
  // Without a region of its own the window starts from (0, 0)-(20, 20).
  vcRestoreWinRgn(w);
  int second = tqHost_CreateRectRgn(0, 0, 0, 0);
  vcSubstractRectRgn(w, 0, 0, 10, second);
  EXPECT_EQ(Shape(w, 30, 20), Expected(30, 20, {{10, 0, 20, 20}, {0, second, 10, 20}}));
  tqHost_DestroyWindow(w);
}

// ---- Text ----

int Width(int dc, const std::string& text) { return vcGetTextWidth(dc, text.c_str()); }

TEST(DesktopText, HeightsAndWidthsComeFromTheFont) {
  int dc = tqHost_CreateDC(10, 10);
  int sample = vcGetStringHeight(dc, ("ABClp" + G("我们")).c_str());
  EXPECT_GT(sample, 10);
  EXPECT_EQ(vcGetStringHeight(dc, nullptr), sample);
  EXPECT_EQ(vcGetStringHeight(dc, ""), sample);
  EXPECT_EQ(Width(dc, G("我们")), 2 * Width(dc, G("我")));
  EXPECT_EQ(vcGetStringWidth(dc, "word"), Width(dc, "word"));
  EXPECT_GT(Width(dc, "word"), Width(dc, "wor"));
  EXPECT_EQ(vcGetTextWidth(dc, nullptr), 0);
  EXPECT_EQ(vcGetTextWidth(dc + 1000, "word"), 0);
  tqHost_DeleteDC(dc);
}

struct Drawn {
  std::vector<std::string> lines;  // the text of each TextOut
  std::vector<int> ys;
  int height;
};

std::string Journal(int dc) {
  std::string log(static_cast<size_t>(tqHost_GetDrawLog(dc, nullptr, 0)) + 1, '\0');
  log.resize(static_cast<size_t>(tqHost_GetDrawLog(dc, log.data(), static_cast<int>(log.size()))));
  return log;
}

// Draws the text with vcDrawLongText and reads back the TextOut lines.
Drawn DrawLong(int dc, const std::string& text, int width, int line_height = 20, int x = 3, int y = 5) {
  tqHost_ClearDrawLog(dc);
  DrawTextObj obj{};
  obj.dc = dc;
  EXPECT_EQ(vcInitDrawTextObj(&obj, text.c_str()), text.c_str());
  obj.width = width;
  obj.x = x;
  obj.y = y;
  obj.lineHeight = line_height;
  EXPECT_EQ(vcDrawLongText(&obj), &obj);
  Drawn d{{}, {}, obj.height};
  const std::string log = Journal(dc);
  std::string prefix = "TextOut " + std::to_string(x) + " ";
  for (size_t at = 0; at < log.size();) {
    size_t end = log.find('\n', at);
    std::string line = log.substr(at, end - at);
    at = end + 1;
    EXPECT_EQ(line.compare(0, prefix.size(), prefix), 0) << line;
    size_t space = line.find(' ', prefix.size());
    d.ys.push_back(std::stoi(line.substr(prefix.size(), space - prefix.size())));
    d.lines.push_back(line.substr(space + 1));
  }
  return d;
}

TEST(DesktopText, LongTextBreaksAtItsOwnPlaces) {
  int dc = tqHost_CreateDC(400, 200);
  std::string chinese = G("我们是中国人");
  struct Case {
    const char* what;
    std::string text;
    int width;
    std::vector<std::string> lines;
  } cases[] = {
      {"fits", "one line", Width(dc, "one line"), {"one line"}},
      {"own lines", "first\r\nsecond\r\n\r\nlast", 400, {"first", "second", "", "last"}},
      // The cut lands on the last byte that fits; in a word it goes back to
      // the blank, which stays at the end of the line.
      {"at a blank", "the quick brown fox", Width(dc, "the quick brown "), {"the quick brown ", "fox"}},
      {"word that just fits", "the quick brown fox", Width(dc, "the quick brown"), {"the quick ", "brown fox"}},
      {"hyphen belongs to the word", "xxxxxx e-mail", Width(dc, "xxxxxx e-"), {"xxxxxx ", "e-mail"}},
      {"apostrophe too", "xxxxxx it's", Width(dc, "xxxxxx it'"), {"xxxxxx ", "it's"}},
      // A word longer than the line is cut where the line is full, one byte
      // short of what fits.
      {"long word", "unbelievable", Width(dc, "unbeliev"), {"unbelie", "vable"}},
      // Chinese: after a whole character, whether the cut falls after one or
      // on the first byte of the next.
      {"after a character", chinese, Width(dc, G("我们是")), {G("我们是"), G("中国人")}},
      {"inside a character", chinese, Width(dc, G("我们是") + G("中").substr(0, 1)), {G("我们是"), G("中国人")}},
      {"English after Chinese", G("我们的") + "computer", Width(dc, G("我们的") + "comp"), {G("我们的"), "computer"}},
  };
  for (const Case& c : cases) {
    Drawn d = DrawLong(dc, c.text, c.width);
    EXPECT_EQ(d.lines, c.lines) << c.what;
    std::vector<int> ys;
    for (size_t i = 0; i < c.lines.size(); ++i) ys.push_back(5 + 20 * static_cast<int>(i));
    EXPECT_EQ(d.ys, ys) << c.what;
    EXPECT_EQ(d.height, 20 * static_cast<int>(c.lines.size())) << c.what;
  }
  tqHost_DeleteDC(dc);
}

// Whether a line starts and ends on whole GBK characters.
bool WholeCharacters(const std::string& s) {
  for (size_t i = 0; i < s.size(); ++i) {
    if (static_cast<unsigned char>(s[i]) >= 0x80 && ++i == s.size()) return false;
  }
  return true;
}

bool WordByte(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '\''; }

TEST(DesktopText, MixedTextNeverBreaksInsideACharacterAtAnyWidth) {
  int dc = tqHost_CreateDC(10, 10);
  std::string text = G("我们学习English单词，") + "the quick brown fox " + G("跳过了") + "lazy dogs" +
                     G("。中文和English混排的句子") + " internationalization " + G("结束");
  for (int width = 12; width < 400; width += 5) {
    Drawn d = DrawLong(dc, text, width, 17, 0, 0);
    std::string joined;
    for (size_t i = 0; i < d.lines.size(); ++i) {
      const std::string& line = d.lines[i];
      joined += line;
      EXPECT_TRUE(WholeCharacters(line)) << "width " << width << " line " << i;
      bool last = i + 1 == d.lines.size();
      // A line ends inside a word only when it is all that word (after the
      // blank it may start with), and the word with the byte after it does
      // not fit.
      if (!last && !line.empty() && WordByte(line.back()) && WordByte(text[joined.size()])) {
        size_t begin = joined.size() - line.size(), end = joined.size();
        while (end < text.size() && WordByte(text[end])) ++end;
        EXPECT_TRUE(std::all_of(line.begin() + (line[0] == ' ' ? 1 : 0), line.end(), WordByte))
            << "width " << width << " line " << i;
        EXPECT_LT(width, Width(dc, text.substr(begin, end - begin + 1))) << "width " << width << " line " << i;
      }
      // Only a single character or byte may be wider than the line.
      bool wider = Width(dc, line) > width;
      if (wider) {
        EXPECT_LE(line.size(), 2u) << "width " << width << " line " << i;
      }
      EXPECT_EQ(d.ys[i], 17 * static_cast<int>(i));
      // A last line that had to be cut has already moved the pen on.
      if (last) {
        EXPECT_EQ(d.height, 17 * static_cast<int>(d.lines.size() + (wider ? 1 : 0))) << "width " << width;
      }
    }
    EXPECT_EQ(joined, text) << "width " << width;
  }
  // Not even one character fits: each goes alone, and the drawing ends.
  Drawn narrow = DrawLong(dc, G("中文") + "ab", 1);
  EXPECT_EQ(narrow.lines, (std::vector<std::string>{G("中"), G("文"), "a", "b"}));
  tqHost_DeleteDC(dc);
}

TEST(DesktopText, RuledLinesStepDownFromTheFirstStep) {
  int dc = tqHost_CreateDC(60, 50);
  tq::gdi::SelectObject(dc, tq::gdi::CreatePen(tq::gdi::kPsSolid, 1, 0x00FF00));  // the caller's pen
  tqHost_ClearDrawLog(dc);
  vcDrawLineBackground(dc, 40, 30, 10, kRed);
  EXPECT_EQ(Journal(dc), "Pen 0 1 0000FF\nMoveTo 0 10\nLineTo 40 10\nMoveTo 0 20\nLineTo 40 20\nMoveTo 0 30\nLineTo 40 30\n"
                 "Pen 0 1 00FF00\n");
  for (int y : {0, 9, 11, 29, 31, 40}) EXPECT_NE(tqHost_GetPixel(dc, 5, y), kRed) << y;
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 10), kRed);
  EXPECT_EQ(tqHost_GetPixel(dc, 39, 30), kRed);
  EXPECT_EQ(tqHost_GetPixel(dc, 40, 30), kWhite);  // the end is left out
  // The caller's pen is selected again; a step of 0 draws nothing.
  tqHost_ClearDrawLog(dc);
  vcDrawLineBackground(dc, 40, 30, 0, kRed);
  EXPECT_EQ(tqHost_GetDrawLog(dc, nullptr, 0), 0);
  tqHost_DeleteDC(dc);
}

TEST(DesktopKeys, AltAndCtrlAsTheHostKnowsThem) {
  struct {
    int key, down, alt, ctrl;
  } steps[] = {{18, 1, 1, 0}, {17, 1, 1, 1}, {18, 0, 0, 1}, {17, 0, 0, 0}};
  EXPECT_EQ(vcIfAltPressed() + vcIfCtrlPressed(), 0);
  for (auto s : steps) {
    tqHost_SetKeyState(s.key, s.down);
    EXPECT_EQ(vcIfAltPressed(), s.alt);
    EXPECT_EQ(vcIfCtrlPressed(), s.ctrl);
  }
}

}  // namespace
