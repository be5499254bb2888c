// Regions: sets of pixels behind GDI handles (the handle space of pens,
// brushes and fonts, so DeleteObject frees them), and the region of a
// window, which cuts its shape. A window without a region is its whole
// client rectangle.
#pragma once

#include <cstdint>

#include "platform/surface.h"

namespace tq::gdi {

// Polygon fill modes.
enum FillMode : int { kAlternate = 1, kWinding = 2 };
// CombineRgn modes.
enum CombineMode : int { kRgnAnd = 1, kRgnOr = 2, kRgnXor = 3, kRgnDiff = 4, kRgnCopy = 5 };
// What CombineRgn, GetWindowRgn and GetRegionType answer.
enum RegionType : int { kError = 0, kNullRegion = 1, kSimpleRegion = 2, kComplexRegion = 3 };

// The pixels whose centres lie inside the polygon; 0 on failure (fewer than
// three points, or a polygon over 32768 rows high).
int CreatePolygonRgn(const Point* points, int count, int fillMode);
// The pixels [left, right) x [top, bottom); a rectangle given the wrong way
// round is turned the right way.
int CreateRectRgn(int left, int top, int right, int bottom);
// dest = src1 op src2 (src2 is not read for kRgnCopy); the type of the result,
// or kError when a handle is not a region.
int CombineRgn(int dest, int src1, int src2, int mode);
// kError, or the type of the region.
int GetRegionType(int region);
bool PtInRegion(int region, int x, int y);
// What DeleteObject does for a region; false for no such region.
bool DeleteRegion(int region);

// Copies the window's region into region and answers its type; kError (and
// region untouched) when the window has none or a handle is wrong.
int GetWindowRgn(int window, int region);
// Gives the window a copy of the region's shape (the handle stays the
// caller's), or its whole rectangle again for region 0. Nonzero on success.
int SetWindowRgn(int window, int region, bool redraw);
// 1 inside the window's shape, 0 outside, -1 for no such window.
int InWindowRegion(int window, int x, int y);
// Forgets the region of a window that is going away.
void DropWindowRegion(int window);

}  // namespace tq::gdi
