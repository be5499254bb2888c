// Regions: polygons and rectangles combined as the window system does, and
// the region of a window as tqHost_InRegion shows it.
#include <random>
#include <vector>

#include "platform/region.h"
#include "test_util.h"
#include "tqhost.h"

namespace {

using namespace tq::gdi;

// Whether the centre of pixel (x, y) is inside the polygon by the even-odd
// rule, worked out the plain way.
bool EvenOddInside(const std::vector<Point>& poly, int x, int y) {
  double px = x + 0.5, py = y + 0.5;
  bool inside = false;
  for (size_t i = 0, j = poly.size() - 1; i < poly.size(); j = i++) {
    double xi = poly[i].x, yi = poly[i].y, xj = poly[j].x, yj = poly[j].y;
    if ((yi > py) != (yj > py) && px < (xj - xi) * (py - yi) / (yj - yi) + xi) inside = !inside;
  }
  return inside;
}

TEST(HostRegion, PolygonsHoldThePixelsWhoseCentresTheyCover) {
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> coord(-3, 24);
  for (int round = 0; round < 200; ++round) {
    std::vector<Point> poly(3 + round % 9);
    for (Point& p : poly) p = {coord(rng), coord(rng)};
    int region = CreatePolygonRgn(poly.data(), static_cast<int>(poly.size()), kAlternate);
    ASSERT_GT(region, 0);
    for (int y = -4; y < 26; ++y) {
      for (int x = -4; x < 26; ++x) {
        ASSERT_EQ(PtInRegion(region, x, y), EvenOddInside(poly, x, y)) << "round " << round << " at " << x << ","
                                                                         << y;
      }
    }
    DeleteObject(region);
  }
}

TEST(HostRegion, ARectangularOutlineIsExactlyItsPixels) {
  // The corners as an outline scan gives them: left edge at x, right edge
  // one past the last pixel, bottom one past the last row.
  std::vector<Point> rect = {{10, 5}, {10, 15}, {20, 15}, {20, 5}};
  int r = CreatePolygonRgn(rect.data(), 4, kAlternate);
  int check = CreateRectRgn(10, 5, 20, 15);
  EXPECT_EQ(CombineRgn(check, check, r, kRgnXor), kNullRegion);
  EXPECT_EQ(GetRegionType(r), kSimpleRegion);
  // Too few points, or too tall, make no region.
  EXPECT_EQ(CreatePolygonRgn(rect.data(), 2, kAlternate), 0);
  std::vector<Point> tall = {{0, 0}, {1, 40000}, {2, 0}};
  EXPECT_EQ(CreatePolygonRgn(tall.data(), 3, kAlternate), 0);
}

TEST(HostRegion, CombiningAgreesWithPixelByPixelLogic) {
  std::mt19937 rng(11);
  std::uniform_int_distribution<int> coord(0, 16);
  for (int round = 0; round < 150; ++round) {
    int a = CreateRectRgn(0, 0, 0, 0), b = CreateRectRgn(0, 0, 0, 0), out = CreateRectRgn(0, 0, 0, 0);
    // Each side a union of three random rectangles (some given the wrong way round).
    for (int side : {a, b}) {
      for (int k = 0; k < 3; ++k) {
        int r = CreateRectRgn(coord(rng), coord(rng), coord(rng), coord(rng));
        CombineRgn(side, side, r, kRgnOr);
        DeleteObject(r);
      }
    }
    int mode = kRgnAnd + round % 5;
    int type = CombineRgn(out, a, b, mode);
    int count = 0;
    for (int y = -1; y < 18; ++y) {
      for (int x = -1; x < 18; ++x) {
        bool in_a = PtInRegion(a, x, y), in_b = PtInRegion(b, x, y);
        bool want = mode == kRgnAnd ? in_a && in_b
                    : mode == kRgnOr ? in_a || in_b
                    : mode == kRgnXor ? in_a != in_b
                    : mode == kRgnDiff ? in_a && !in_b
                                       : in_a;
        ASSERT_EQ(PtInRegion(out, x, y), want) << "round " << round << " mode " << mode << " at " << x << "," << y;
        count += want;
      }
    }
    EXPECT_EQ(type == kNullRegion, count == 0);
    for (int h : {a, b, out}) DeleteObject(h);
  }
  int r = CreateRectRgn(0, 0, 5, 5);
  EXPECT_EQ(CombineRgn(r, r, 123456789, kRgnOr), kError);
  EXPECT_EQ(CombineRgn(r, r, r, 9), kError);
  EXPECT_EQ(CombineRgn(123456789, r, r, kRgnOr), kError);
}

TEST(HostRegion, WindowsKeepACopyOfTheRegionGiven) {
  int w = tqHost_CreateWindow("shape", 40, 30);
  // With no region the whole client rectangle is in.
  EXPECT_EQ(tqHost_InRegion(w, 0, 0), 1);
  EXPECT_EQ(tqHost_InRegion(w, 39, 29), 1);
  EXPECT_EQ(tqHost_InRegion(w, 40, 0), 0);
  EXPECT_EQ(tqHost_InRegion(w, -1, 0), 0);
  int probe = CreateRectRgn(0, 0, 1, 1);
  EXPECT_EQ(GetWindowRgn(w, probe), kError);
  EXPECT_TRUE(PtInRegion(probe, 0, 0));  // untouched

  // An L of two rectangles; the handle is deleted after it is set, and the
  // window keeps its shape (the library deletes what it has set).
  int l = CreateRectRgn(0, 0, 10, 30);
  int foot = CreateRectRgn(0, 20, 40, 30);
  EXPECT_EQ(CombineRgn(l, l, foot, kRgnOr), kComplexRegion);
  EXPECT_NE(SetWindowRgn(w, l, true), 0);
  DeleteObject(l);
  EXPECT_EQ(tqHost_InRegion(w, 5, 5), 1);
  EXPECT_EQ(tqHost_InRegion(w, 20, 5), 0);
  EXPECT_EQ(tqHost_InRegion(w, 35, 25), 1);
  EXPECT_EQ(GetWindowRgn(w, probe), kComplexRegion);
  EXPECT_TRUE(PtInRegion(probe, 35, 25));
  EXPECT_FALSE(PtInRegion(probe, 20, 5));

  // A handle that is no region changes nothing; region 0 gives the whole
  // rectangle back.
  EXPECT_EQ(SetWindowRgn(w, 987654321, true), 0);
  EXPECT_EQ(tqHost_InRegion(w, 20, 5), 0);
  EXPECT_NE(SetWindowRgn(w, 0, true), 0);
  EXPECT_EQ(tqHost_InRegion(w, 20, 5), 1);

  EXPECT_EQ(SetWindowRgn(w + 1000, probe, true), 0);
  EXPECT_EQ(tqHost_InRegion(w + 1000, 0, 0), -1);
  tqHost_DestroyWindow(w);
  EXPECT_EQ(tqHost_InRegion(w, 0, 0), -1);
  EXPECT_EQ(GetWindowRgn(w, probe), kError);
}

}  // namespace
