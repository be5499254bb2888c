// Windows cut to the shape of what they show, and rectangles added to and
// taken out of that shape.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/surface.h"

namespace tq::desktop {

// The outline of everything in a client area that differs from colour (and
// is not CLR_INVALID), as a polygon to fill by the even-odd rule. Rows 0 to
// bottom and columns 0 to right are read, both ends included: down the left
// edges, the first differing pixel of a row gives (x, y); up the right
// edges, the last one gives (x + 1, y). Where the two runs meet, the lowest
// row is pushed one down so that the polygon keeps it.
std::vector<gdi::Point> OutlinePoints(int right, int bottom, const std::function<gdi::Colour(int x, int y)>& pixel,
                                      gdi::Colour colour);

// Cuts the window to the outline of what differs from colour; 1, or -1 when
// no region can be made of it (nothing differs) or set.
int MakeIrregularWindow(int window, gdi::Colour colour);
// The whole client rectangle again; nonzero on success.
int RestoreWindowRegion(int window);
// The window's region united with the rectangle. A window without a region
// of its own ends up with just the rectangle.
int AddRectToWindowRegion(int window, int left, int top, int right, int bottom);
// The window's region less the rectangle. The difference is written into
// the region whose handle is bottom (the rectangle's bottom edge as well),
// which is then set on the window and deleted: callers pass a region handle
// there. A window without a region starts from (0, 0, 20, 20).
int SubtractRectFromWindowRegion(int window, int left, int top, int right, int bottom);

}  // namespace tq::desktop
