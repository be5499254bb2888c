// Drawing surfaces: what the library draws through the GDI seam lands as
// pixels and journal lines that a front end reads back with the tqHost_
// exports.
#include <string>
#include <vector>

#include "platform/surface.h"
#include "platform/text_pango.h"
#include "test_util.h"
#include "tqhost.h"

namespace {

using namespace tq::gdi;
using tqtest::G;

constexpr unsigned kWhite = 0xFFFFFF;
constexpr unsigned kRed = 0x0000FF;  // COLORREF: blue in the high byte
constexpr unsigned kGrey = 0x808080;

std::string Journal(int dc) {
  std::string log(static_cast<size_t>(tqHost_GetDrawLog(dc, nullptr, 0)) + 1, '\0');
  log.resize(static_cast<size_t>(tqHost_GetDrawLog(dc, log.data(), static_cast<int>(log.size()))));
  return log;
}

// The pixels of one row (or column) of the surface, as 'x' for colour and
// '.' for anything else.
std::string Row(int dc, int y, int from, int to, unsigned colour) {
  std::string s;
  for (int x = from; x < to; ++x) s.push_back(tqHost_GetPixel(dc, x, y) == colour ? 'x' : '.');
  return s;
}
std::string Column(int dc, int x, int from, int to, unsigned colour) {
  std::string s;
  for (int y = from; y < to; ++y) s.push_back(tqHost_GetPixel(dc, x, y) == colour ? 'x' : '.');
  return s;
}

Size Extent(int dc, const std::string& text) {
  Size size{-1, -1};
  EXPECT_TRUE(GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size));
  return size;
}

int Font(const char* face, int height = 0, int weight = 400) {
  LogFont lf;
  lf.height = height;
  lf.weight = weight;
  lf.charSet = 134;
  std::snprintf(lf.faceName, sizeof lf.faceName, "%s", face);
  return CreateFontIndirectA(&lf);
}

TEST(HostSurface, NewSurfaceIsWhiteAndBoundedAndFillsExcludeRightAndBottom) {
  int dc = tqHost_CreateDC(40, 30);
  ASSERT_GT(dc, 0);
  for (auto [x, y] : std::vector<std::pair<int, int>>{{0, 0}, {39, 0}, {0, 29}, {39, 29}, {20, 15}}) {
    EXPECT_EQ(tqHost_GetPixel(dc, x, y), kWhite) << x << "," << y;
  }
  for (auto [x, y] : std::vector<std::pair<int, int>>{{-1, 0}, {0, -1}, {40, 0}, {0, 30}}) {
    EXPECT_EQ(tqHost_GetPixel(dc, x, y), 0xFFFFFFFFu) << x << "," << y;
  }
  tqHost_FillRect(dc, 2, 3, 6, 5, kRed);
  EXPECT_EQ(Row(dc, 3, 0, 8, kRed), "..xxxx..");
  EXPECT_EQ(Column(dc, 2, 0, 7, kRed), "...xx..");
  tqHost_FillRect(dc, -10, -10, 1, 1, kGrey);  // clipped to the surface
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), kGrey);

  for (auto [w, h] : std::vector<std::pair<int, int>>{{0, 10}, {10, 0}, {-5, 5}, {16385, 1}}) {
    EXPECT_EQ(tqHost_CreateDC(w, h), 0) << w << "x" << h;
  }
  tqHost_DeleteDC(dc);
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), 0xFFFFFFFFu);
  EXPECT_EQ(tqHost_GetDrawLog(dc, nullptr, 0), -1);
}

TEST(HostSurface, LinesLeaveOutTheirEndPointAndMoveThePosition) {
  int dc = tqHost_CreateDC(12, 12);
  SelectObject(dc, CreatePen(kPsSolid, 1, kRed));
  struct Case {
    int x0, y0, x1, y1;
    int row_or_col;  // y of a level line, x of an upright one
    bool level;
    const char* pixels;
  } cases[] = {
      {2, 1, 7, 1, 1, true, "..xxxxx....."},   // left to right: 7 is left out
      {7, 3, 2, 3, 3, true, "...xxxxx...."},   // right to left: 2 is left out
      {5, 2, 5, 6, 5, false, "..xxxx......"},  // down
      {9, 9, 9, 4, 9, false, ".....xxxxx.."},  // up: 4 is left out
  };
  for (const Case& c : cases) {
    tqHost_FillRect(dc, 0, 0, 12, 12, kWhite);
    MoveToEx(dc, c.x0, c.y0, nullptr);
    LineTo(dc, c.x1, c.y1);
    EXPECT_EQ(c.level ? Row(dc, c.row_or_col, 0, 12, kRed) : Column(dc, c.row_or_col, 0, 12, kRed), c.pixels)
        << c.x0 << "," << c.y0 << " -> " << c.x1 << "," << c.y1;
  }
  // A diagonal covers one pixel a step, the end excluded.
  tqHost_FillRect(dc, 0, 0, 12, 12, kWhite);
  MoveToEx(dc, 0, 0, nullptr);
  LineTo(dc, 4, 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(tqHost_GetPixel(dc, i, i), kRed) << i;
  EXPECT_EQ(tqHost_GetPixel(dc, 4, 4), kWhite);
  // The position moved to the end: the next line goes on from there.
  Point previous{};
  MoveToEx(dc, 1, 1, &previous);
  EXPECT_EQ(previous.x, 4);
  EXPECT_EQ(previous.y, 4);
  // A line from far off the surface costs nothing and still arrives.
  tqHost_FillRect(dc, 0, 0, 12, 12, kWhite);
  MoveToEx(dc, -2000000000, 6, nullptr);
  LineTo(dc, 3, 6);
  EXPECT_EQ(Row(dc, 6, 0, 12, kRed), "xxx.........");
  // The null pen draws nothing.
  SelectObject(dc, GetStockObject(kNullPen));
  MoveToEx(dc, 0, 10, nullptr);
  LineTo(dc, 12, 10);
  EXPECT_EQ(Row(dc, 10, 0, 12, kRed), "............");
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, RectanglesOutlineWithThePenAndFillWithTheBrush) {
  int dc = tqHost_CreateDC(10, 10);
  tqHost_FillRect(dc, 0, 0, 10, 10, kGrey);
  SelectObject(dc, CreatePen(kPsSolid, 1, kRed));
  Rectangle(dc, 1, 1, 6, 5);  // pixels 1..5 x 1..4
  EXPECT_EQ(Row(dc, 1, 0, 8, kRed), ".xxxxx..");
  EXPECT_EQ(Row(dc, 2, 0, 8, kRed), ".x...x..");
  EXPECT_EQ(Row(dc, 4, 0, 8, kRed), ".xxxxx..");
  EXPECT_EQ(tqHost_GetPixel(dc, 3, 2), kWhite);  // the default brush is white
  EXPECT_EQ(tqHost_GetPixel(dc, 3, 5), kGrey);

  // A hollow brush leaves the inside; a null pen fills a pixel short.
  tqHost_FillRect(dc, 0, 0, 10, 10, kGrey);
  SelectObject(dc, GetStockObject(kNullBrush));
  Rectangle(dc, 1, 1, 6, 5);
  EXPECT_EQ(tqHost_GetPixel(dc, 3, 2), kGrey);
  SelectObject(dc, CreateSolidBrush(kRed));
  SelectObject(dc, GetStockObject(kNullPen));
  tqHost_FillRect(dc, 0, 0, 10, 10, kGrey);
  Rectangle(dc, 1, 1, 6, 5);
  EXPECT_EQ(Row(dc, 1, 0, 8, kRed), ".xxxx...");
  EXPECT_EQ(Column(dc, 1, 0, 6, kRed), ".xxx..");
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, ChineseTextIsDrawnAsGlyphsInsideItsMeasuredBox) {
  int dc = tqHost_CreateDC(200, 60);
  std::string wo = G("我");
  Size box = Extent(dc, wo);
  ASSERT_GT(box.cx, 8);
  ASSERT_GT(box.cy, 8);
  TextOutA(dc, 10, 20, wo.data(), static_cast<int>(wo.size()));
  int dark = 0, outside = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 200; ++x) {
      unsigned p = tqHost_GetPixel(dc, x, y);
      bool is_dark = (p & 0xFF) < 96 && ((p >> 8) & 0xFF) < 96 && ((p >> 16) & 0xFF) < 96;
      bool inside = x >= 10 && x < 10 + box.cx && y >= 20 && y < 20 + box.cy;
      dark += is_dark && inside;
      outside += p != kWhite && !inside;
    }
  }
  // A glyph has many strokes; a missing-glyph box has a thin frame only.
  EXPECT_GT(dark, box.cx * box.cy / 8);
  EXPECT_EQ(outside, 0);
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, WidthsAreThoseOfTheFontDrawn) {
  int dc = tqHost_CreateDC(10, 10);
  Size empty = Extent(dc, "");
  EXPECT_EQ(empty.cx, 0);
  EXPECT_GT(empty.cy, 0);  // a cell height even for no text
  Size one = Extent(dc, G("我")), two = Extent(dc, G("我们")), latin = Extent(dc, "ABClp");
  EXPECT_EQ(two.cx, 2 * one.cx);
  EXPECT_EQ(two.cy, one.cy);
  EXPECT_LT(Extent(dc, "i").cx, Extent(dc, "W").cx);
  EXPECT_EQ(Extent(dc, G("ABClp我们")).cx, latin.cx + two.cx);
  // A byte that starts no whole character still has a width.
  std::string half = G("我").substr(0, 1);
  EXPECT_GT(Extent(dc, "a" + half).cx, Extent(dc, "a").cx);

  // Sizes: a larger cell is wider; a face the machine lacks is the default;
  // a face it has is itself.
  int old = SelectObject(dc, Font("NoSuchFace", 32));
  EXPECT_GT(old, 0);
  Size big = Extent(dc, G("我"));
  EXPECT_GT(big.cx, one.cx);
  EXPECT_NEAR(big.cy, 32, 2);
  SelectObject(dc, Font("NoSuchFace"));
  int unknown = Extent(dc, "Hello, world").cx;
  SelectObject(dc, old);
  EXPECT_EQ(Extent(dc, "Hello, world").cx, unknown);
  SelectObject(dc, Font("DejaVu Sans Mono"));
  EXPECT_EQ(Extent(dc, "iiii").cx, Extent(dc, "WWWW").cx);
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, PronunciationFaceDrawsPhoneticSymbols) {
  // The notation the dictionaries store, each stand-in once, and what the
  // face "pron" shows for it; other bytes stay themselves.
  EXPECT_EQ(text::Decode("IUEQAORCa:',SZTDN", 17, true), "ɪʊəʌæɔɜɒɑːˈˌʃʒθðŋ");
  std::string apple = "['Ap(E)l]";
  EXPECT_EQ(text::Decode(apple.data(), int(apple.size()), true), "[ˈæp(ə)l]");
  EXPECT_EQ(text::Decode(apple.data(), int(apple.size()), false), apple);
  std::string mixed = G("中") + "S";
  EXPECT_EQ(text::Decode(mixed.data(), int(mixed.size()), true), "中ʃ");

  int dc = tqHost_CreateDC(10, 10);
  int plain = Extent(dc, "TTTT").cx;
  SelectObject(dc, Font("pron", 0, 700));
  int pron = Extent(dc, "TTTT").cx;  // θ in DejaVu Sans Bold
  EXPECT_NE(pron, plain);
  SelectObject(dc, Font("PRON", 0, 700));  // faces are named without regard to case
  EXPECT_EQ(Extent(dc, "TTTT").cx, pron);
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, BackgroundModeDecidesWhetherTheTextBoxIsFilled) {
  int dc = tqHost_CreateDC(100, 40);
  std::string text = "x";
  for (int mode : {kOpaque, kTransparent}) {
    tqHost_FillRect(dc, 0, 0, 100, 40, kGrey);
    SetBkMode(dc, mode);
    TextOutA(dc, 0, 0, text.data(), 1);
    // The top-left corner of the box holds no ink of an "x".
    EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), mode == kOpaque ? kWhite : kGrey) << mode;
  }
  EXPECT_EQ(SetBkMode(dc, 7), 0);  // no such mode
  EXPECT_EQ(SetBkMode(dc, kOpaque), kTransparent);
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, TheJournalListsWhatWasDrawnLineByLine) {
  int dc = tqHost_CreateDC(50, 50);
  int pen = CreatePen(kPsSolid, 1, 0x808080);
  int old_pen = SelectObject(dc, pen);
  EXPECT_EQ(SetBkMode(dc, kTransparent), kOpaque);
  MoveToEx(dc, 0, 22, nullptr);
  LineTo(dc, 600, 22);
  Rectangle(dc, -1, -1, 400, 400);
  std::string text = G("正在生成：a");
  TextOutA(dc, 2, 2, text.data(), static_cast<int>(text.size()));
  int font = Font("pron", 0, 700);
  int old_font = SelectObject(dc, font);
  SelectObject(dc, old_font);
  SelectObject(dc, old_pen);
  EXPECT_TRUE(DeleteObject(pen));
  EXPECT_TRUE(DeleteObject(font));
  std::string expected = "Pen 0 1 808080\n"
                         "BkMode 1\n"
                         "MoveTo 0 22\n"
                         "LineTo 600 22\n"
                         "Rectangle -1 -1 400 400\n"
                         "TextOut 2 2 " + text + "\n"
                         "Font pron 0 700 134\n"
                         "Font System 16 400 134\n"
                         "Pen 0 1 000000\n";
  EXPECT_EQ(Journal(dc), expected);

  // A short buffer gets what fits and a NUL; the answer is the whole length.
  char small[8] = "#######";
  EXPECT_EQ(tqHost_GetDrawLog(dc, small, 5), static_cast<int>(expected.size()));
  EXPECT_STREQ(small, "Pen ");
  tqHost_ClearDrawLog(dc);
  EXPECT_EQ(Journal(dc), "");
  // The front end's own fills are not the library's drawing.
  tqHost_FillRect(dc, 0, 0, 5, 5, kRed);
  EXPECT_EQ(Journal(dc), "");
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, ObjectsAreHandlesOfOneSpace) {
  int dc = tqHost_CreateDC(8, 8);
  int red = CreatePen(kPsSolid, 1, kRed);
  int brush = CreateSolidBrush(kGrey);
  int region = tqHost_CreateRectRgn(0, 0, 2, 2);
  EXPECT_EQ(SelectObject(dc, red), GetStockObject(kBlackPen));
  EXPECT_EQ(SelectObject(dc, brush), GetStockObject(kWhiteBrush));
  EXPECT_EQ(SelectObject(dc, region), 0);     // regions are not selected so
  EXPECT_EQ(SelectObject(dc, dc), 0);         // a surface is no object
  EXPECT_EQ(SelectObject(9999999, red), 0);   // no such surface
  // Deleting a selected pen leaves the surface drawing with it.
  EXPECT_TRUE(DeleteObject(red));
  EXPECT_FALSE(DeleteObject(red));
  EXPECT_EQ(SelectObject(dc, red), 0);
  MoveToEx(dc, 0, 0, nullptr);
  LineTo(dc, 3, 0);
  EXPECT_EQ(tqHost_GetPixel(dc, 1, 0), kRed);
  EXPECT_EQ(tqHost_DeleteObject(region), 1);
  EXPECT_EQ(tqHost_DeleteObject(region), 0);
  // Stock objects stay whatever is done to them.
  EXPECT_TRUE(DeleteObject(GetStockObject(kBlackPen)));
  EXPECT_GT(SelectObject(dc, GetStockObject(kBlackPen)), 0);
  EXPECT_EQ(GetStockObject(99), 0);
  tqHost_DeleteDC(dc);
}

class HostSurfaceFiles : public tqtest::TempDirTest {};

TEST_F(HostSurfaceFiles, SurfacesSaveAsPng) {
  int dc = tqHost_CreateDC(16, 8);
  tqHost_FillRect(dc, 0, 0, 8, 8, kRed);
  EXPECT_EQ(tqHost_SavePng(dc, "shot.png"), 1);
  std::string png = tqtest::ReadFile(Path("shot.png"));
  ASSERT_GT(png.size(), 24u);
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\0\x10\0\0\0\x08", 8));  // 16 x 8
  EXPECT_EQ(tqHost_SavePng(dc, "no\\such\\folder\\shot.png"), -1);
  EXPECT_EQ(tqHost_SavePng(0, "zero.png"), -1);
  tqHost_DeleteDC(dc);
}

TEST(HostSurface, AWindowHasOneSurfaceForItsClientArea) {
  int w = tqHost_CreateWindow("pad", 30, 20);
  int dc = tqHost_GetWindowDC(w);
  ASSERT_GT(dc, 0);
  EXPECT_EQ(tqHost_GetWindowDC(w), dc);
  EXPECT_EQ(GetDC(w), dc);
  EXPECT_EQ(ReleaseDC(w, dc), 1);
  EXPECT_EQ(tqHost_GetPixel(dc, 29, 19), kWhite);
  EXPECT_EQ(tqHost_GetPixel(dc, 30, 19), 0xFFFFFFFFu);
  // What is selected stays selected between GetDC calls.
  int pen = CreatePen(kPsSolid, 1, kRed);
  SelectObject(GetDC(w), pen);
  EXPECT_EQ(SelectObject(GetDC(w), GetStockObject(kBlackPen)), pen);
  tqHost_DeleteDC(dc);  // a window's surface goes with its window only
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), kWhite);
  tqHost_DestroyWindow(w);
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), 0xFFFFFFFFu);
  EXPECT_EQ(tqHost_GetWindowDC(w), 0);
  EXPECT_EQ(tqHost_GetWindowDC(0), 0);
}

}  // namespace
