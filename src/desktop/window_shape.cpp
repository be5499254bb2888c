#include "desktop/window_shape.h"

#include "platform/host.h"
#include "platform/region.h"

namespace tq::desktop {

std::vector<gdi::Point> OutlinePoints(int right, int bottom, const std::function<gdi::Colour(int x, int y)>& pixel,
                                      gdi::Colour colour) {
  auto shows = [&](int x, int y) {
    gdi::Colour c = pixel(x, y);
    return c != gdi::kInvalidColour && c != colour;
  };
  std::vector<gdi::Point> points;
  for (int y = 0; y <= bottom; ++y) {
    for (int x = 0; x <= right; ++x) {
      if (shows(x, y)) {
        points.push_back({x, y});
        break;
      }
    }
  }
  size_t last_left = points.size();  // one past the last left-edge point
  for (int y = bottom; y >= 0; --y) {
    for (int x = right; x >= 0; --x) {
      if (shows(x, y)) {
        points.push_back({x + 1, y});
        break;
      }
    }
  }
  if (last_left > 0 && last_left < points.size() && points[last_left - 1].y >= points[last_left].y) {
    points[last_left - 1].y += 1;
    points[last_left].y += 1;
  }
  return points;
}

int MakeIrregularWindow(int window, gdi::Colour colour) {
  int width = 0, height = 0;
  if (!host::GetClientRect(window, &width, &height)) return -1;
  int dc = gdi::GetDC(window);
  std::vector<gdi::Point> points =
      OutlinePoints(width, height, [dc](int x, int y) { return gdi::GetPixel(dc, x, y); }, colour);
  int region = gdi::CreatePolygonRgn(points.data(), static_cast<int>(points.size()), gdi::kAlternate);
  if (region == 0 || gdi::SetWindowRgn(window, region, true) == 0) {
    gdi::DeleteObject(region);
    gdi::ReleaseDC(window, dc);
    return -1;
  }
  gdi::DeleteObject(region);
  gdi::ReleaseDC(window, dc);
  return 1;
}

int RestoreWindowRegion(int window) { return gdi::SetWindowRgn(window, 0, true); }

int AddRectToWindowRegion(int window, int left, int top, int right, int bottom) {
  int rect = gdi::CreateRectRgn(left, top, right, bottom);
  int current = gdi::CreateRectRgn(0, 0, 0, 0);
  int united = gdi::CreateRectRgn(0, 0, 0, 0);
  gdi::GetWindowRgn(window, current);
  gdi::CombineRgn(united, current, rect, gdi::kRgnOr);
  int result = gdi::SetWindowRgn(window, united, true);
  for (int r : {rect, current, united}) gdi::DeleteObject(r);
  return result;
}

int SubtractRectFromWindowRegion(int window, int left, int top, int right, int bottom) {
  int scratch = gdi::CreateRectRgn(0, 0, 20, 20);
  int rect = gdi::CreateRectRgn(left, top, right, bottom);
  gdi::GetWindowRgn(window, scratch);
  gdi::CombineRgn(bottom, scratch, rect, gdi::kRgnDiff);
  int result = gdi::SetWindowRgn(window, bottom, true);
  for (int r : {bottom, scratch, rect}) gdi::DeleteObject(r);
  return result;
}

}  // namespace tq::desktop
