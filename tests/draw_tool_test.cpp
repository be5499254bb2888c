// Chinese drawn as glyphs, through the long-text drawing and through
// "tqcomm draw", whose PNG is read back as a viewer would.
#include <cairo.h>

#include <string>

#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

using tqtest::G;

bool Dark(uint32_t rgb) { return (rgb & 0xFF) < 96 && ((rgb >> 8) & 0xFF) < 96 && ((rgb >> 16) & 0xFF) < 96; }

struct Ink {
  int inside = 0;
  int outside = 0;
};

// Dark pixels inside and outside the box [x0, x1) x [y0, y1) of a picture
// read by pixel(x, y) as 0x00RRGGBB (or COLORREF: darkness is the same).
template <class Pixel>
Ink CountInk(int width, int height, int x0, int y0, int x1, int y1, Pixel pixel) {
  Ink ink;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (!Dark(pixel(x, y))) continue;
      (x >= x0 && x < x1 && y >= y0 && y < y1 ? ink.inside : ink.outside)++;
    }
  }
  return ink;
}

TEST(DrawPicture, AChineseCharacterIsDrawnAsAGlyphInItsBox) {
  int dc = tqHost_CreateDC(80, 50);
  std::string wo = G("我");
  DrawTextObj obj{};
  obj.dc = dc;
  vcInitDrawTextObj(&obj, wo.c_str());
  obj.width = 80;
  obj.x = 20;
  obj.y = 10;
  obj.lineHeight = 24;
  vcDrawLongText(&obj);
  EXPECT_EQ(obj.height, 24);
  int w = vcGetTextWidth(dc, wo.c_str()), h = vcGetStringHeight(dc, wo.c_str());
  Ink ink = CountInk(80, 50, 20, 10, 20 + w, 10 + h, [&](int x, int y) { return tqHost_GetPixel(dc, x, y); });
  // The strokes of the character, not the frame of a missing-glyph box.
  EXPECT_GT(ink.inside, w * h / 8);
  EXPECT_EQ(ink.outside, 0);
  tqHost_DeleteDC(dc);
}

class DrawTool : public tqtest::TempDirTest {
 protected:
  int Draw(const std::string& args, std::string* out) {
    return tqtest::Run(std::string(TQCOMM_BIN) + " draw " + args + " 2>&1", out);
  }
};

TEST_F(DrawTool, WritesAViewablePictureOfTheBrokenLines) {
  std::string out;
  ASSERT_EQ(Draw("--width 100 --line-height 30 '我们 study English 很好，the quick brown fox' -o mixed.png", &out), 0)
      << out;
  EXPECT_NE(out.find("mixed.png: 116 x "), std::string::npos) << out;
  cairo_surface_t* png = cairo_image_surface_create_from_png(Path("mixed.png").c_str());
  ASSERT_EQ(cairo_surface_status(png), CAIRO_STATUS_SUCCESS);
  int width = cairo_image_surface_get_width(png), height = cairo_image_surface_get_height(png);
  EXPECT_EQ(width, 116);
  EXPECT_EQ((height - 16) % 30, 0);  // whole lines of 30 pixels, 8 above and below
  EXPECT_GE(height - 16, 3 * 30);    // too long for one or two lines at 100 pixels
  cairo_surface_destroy(png);

  // One character: dark strokes in its box at the margin, nothing elsewhere
  // but the grey rule at the width.
  ASSERT_EQ(Draw("--width 60 我 -o one.png", &out), 0) << out;
  png = cairo_image_surface_create_from_png(Path("one.png").c_str());
  ASSERT_EQ(cairo_surface_status(png), CAIRO_STATUS_SUCCESS);
  cairo_surface_flush(png);
  const unsigned char* data = cairo_image_surface_get_data(png);
  int stride = cairo_image_surface_get_stride(png);
  auto pixel = [&](int x, int y) { return *reinterpret_cast<const uint32_t*>(data + y * stride + 4 * x) & 0xFFFFFF; };
  int dc = tqHost_CreateDC(1, 1);
  int w = vcGetTextWidth(dc, G("我").c_str()), h = vcGetStringHeight(dc, nullptr);
  tqHost_DeleteDC(dc);
  Ink ink = CountInk(cairo_image_surface_get_width(png), cairo_image_surface_get_height(png), 8, 8, 8 + w, 8 + h,
                     pixel);
  EXPECT_GT(ink.inside, w * h / 8);
  EXPECT_EQ(ink.outside, 0);
  EXPECT_EQ(pixel(68, 3), 0xD0D0D0u);
  cairo_surface_destroy(png);
}

TEST_F(DrawTool, SaysWhatIsWrong) {
  std::string out;
  EXPECT_EQ(Draw("--help", &out), 0);
  EXPECT_NE(out.find("usage: tqcomm draw"), std::string::npos);
  EXPECT_EQ(Draw("words -o x.png", &out), 2);             // no width
  EXPECT_EQ(Draw("--width wide words -o x.png", &out), 2);
  EXPECT_EQ(Draw("--width 100 words", &out), 2);          // no output
  EXPECT_EQ(Draw("--width 100 -o no/such/dir/x.png words", &out), 1);
  EXPECT_NE(out.find("cannot write"), std::string::npos) << out;
  // Text from standard input, line feeds as line ends.
  EXPECT_EQ(tqtest::Run("printf 'one\\ntwo\\nthree\\n' | " + std::string(TQCOMM_BIN) + " draw --width 200 - -o in.png",
                        &out),
            0);
  EXPECT_NE(out.find(", 3 lines"), std::string::npos) << out;
}

}  // namespace
