// Region handles and the regions of windows.
#include "platform/region.h"

#include <map>
#include <mutex>

#include "platform/handles.h"
#include "platform/host.h"
#include "platform/region_shape.h"

namespace tq::gdi {
namespace {

struct Regions {
  std::mutex mutex;
  std::map<int, RegionShape> shapes;   // by region handle
  std::map<int, RegionShape> windows;  // by window; none = the whole client area
};

Regions& TheRegions() {
  static Regions* regions = new Regions;  // lives until exit
  return *regions;
}

int Add(RegionShape shape) {
  Regions& r = TheRegions();
  int handle = host::NewHandle();
  std::lock_guard<std::mutex> lock(r.mutex);
  r.shapes.emplace(handle, std::move(shape));
  return handle;
}

}  // namespace

int CreatePolygonRgn(const Point* points, int count, int fillMode) {
  RegionShape shape;
  if (!RegionShape::Polygon(points, count, fillMode == kWinding, &shape)) return 0;
  return Add(std::move(shape));
}

int CreateRectRgn(int left, int top, int right, int bottom) {
  return Add(RegionShape::Rect(left, top, right, bottom));
}

int CombineRgn(int dest, int src1, int src2, int mode) {
  if (mode < kRgnAnd || mode > kRgnCopy) return kError;
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  auto d = r.shapes.find(dest);
  auto a = r.shapes.find(src1);
  auto b = mode == kRgnCopy ? a : r.shapes.find(src2);
  if (d == r.shapes.end() || a == r.shapes.end() || b == r.shapes.end()) return kError;
  d->second = mode == kRgnCopy ? a->second : RegionShape::Combine(a->second, b->second, mode);
  return d->second.Type();
}

int GetRegionType(int region) {
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  auto it = r.shapes.find(region);
  return it == r.shapes.end() ? kError : it->second.Type();
}

bool PtInRegion(int region, int x, int y) {
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  auto it = r.shapes.find(region);
  return it != r.shapes.end() && it->second.Contains(x, y);
}

bool DeleteRegion(int region) {
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  return r.shapes.erase(region) > 0;
}

int GetWindowRgn(int window, int region) {
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  auto w = r.windows.find(window);
  auto d = r.shapes.find(region);
  if (w == r.windows.end() || d == r.shapes.end()) return kError;
  d->second = w->second;
  return d->second.Type();
}

int SetWindowRgn(int window, int region, bool /*redraw: nothing on the host to redraw*/) {
  if (!host::IsWindow(window)) return 0;
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  if (region == 0) {
    r.windows.erase(window);
    return 1;
  }
  auto it = r.shapes.find(region);
  if (it == r.shapes.end()) return 0;
  r.windows[window] = it->second;
  return 1;
}

int InWindowRegion(int window, int x, int y) {
  int width = 0, height = 0;
  if (!host::GetClientRect(window, &width, &height)) return -1;
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  auto w = r.windows.find(window);
  if (w == r.windows.end()) return x >= 0 && y >= 0 && x < width && y < height ? 1 : 0;
  return w->second.Contains(x, y) ? 1 : 0;
}

void DropWindowRegion(int window) {
  Regions& r = TheRegions();
  std::lock_guard<std::mutex> lock(r.mutex);
  r.windows.erase(window);
}

}  // namespace tq::gdi
