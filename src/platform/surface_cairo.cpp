// Device contexts as Cairo image surfaces, and the pens, brushes and fonts
// drawn with.
//
// Lines and rectangles are set pixel by pixel, as the window system draws
// them without smoothing: a one-pixel line covers exactly the pixels from
// its start to before its end, which the digests and ruled lines count on.
// Text goes through the font engine (text_pango.h).
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <variant>

#include "platform/env.h"
#include "platform/handles.h"
#include "platform/host.h"
#include "platform/region.h"
#include "platform/surface.h"
#include "platform/text_pango.h"

namespace tq::gdi {
namespace {

constexpr int kMaxSide = 16384;
constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kBlack = 0x000000;

struct Pen {
  int style;
  int width;
  Colour colour;
};
struct Brush {
  bool hollow;
  Colour colour;
};
using Object = std::variant<Pen, Brush, LogFont>;

struct Dc {
  std::mutex mutex;
  cairo_surface_t* surface = nullptr;
  int width = 0;
  int height = 0;
  int window = 0;  // the window whose client area this is, or 0
  Pen pen{kPsSolid, 1, kBlack};
  Brush brush{false, kWhite};
  LogFont font;
  int pen_handle = 0, brush_handle = 0, font_handle = 0;
  int bk_mode = kOpaque;
  Colour bk_colour = kWhite;
  Colour text_colour = kBlack;
  Point pos{0, 0};
  std::string log;

  ~Dc() {
    if (surface != nullptr) cairo_surface_destroy(surface);
  }
};

struct Stock {
  int white_brush, black_brush, null_brush, white_pen, black_pen, null_pen, system_font;
};

struct Gdi {
  std::mutex mutex;
  std::map<int, std::shared_ptr<Dc>> dcs;
  std::map<int, int> window_dcs;  // window -> its device context
  std::map<int, Object> objects;  // pens, brushes and fonts
  Stock stock{};

  Gdi() {
    auto add = [&](Object o) {
      int h = host::NewHandle();
      objects.emplace(h, o);
      return h;
    };
    stock.white_brush = add(Brush{false, kWhite});
    stock.black_brush = add(Brush{false, kBlack});
    stock.null_brush = add(Brush{true, kWhite});
    stock.white_pen = add(Pen{kPsSolid, 1, kWhite});
    stock.black_pen = add(Pen{kPsSolid, 1, kBlack});
    stock.null_pen = add(Pen{kPsNull, 1, kBlack});
    stock.system_font = add(text::DefaultFont());
  }

  bool IsStock(int h) const {
    return h == stock.white_brush || h == stock.black_brush || h == stock.null_brush || h == stock.white_pen ||
           h == stock.black_pen || h == stock.null_pen || h == stock.system_font;
  }
};

Gdi& TheGdi() {
  static Gdi* gdi = new Gdi;  // lives until exit
  return *gdi;
}

std::shared_ptr<Dc> FindDc(int dc) {
  Gdi& g = TheGdi();
  std::lock_guard<std::mutex> lock(g.mutex);
  auto it = g.dcs.find(dc);
  return it == g.dcs.end() ? nullptr : it->second;
}

// Runs op on the device context under its own lock; none for no such one.
template <class T, class F>
T WithDc(int dc, T none, F op) {
  std::shared_ptr<Dc> d = FindDc(dc);
  if (!d) return none;
  std::lock_guard<std::mutex> lock(d->mutex);
  return op(*d);
}

int NewDc(int width, int height, int window) {
  auto d = std::make_shared<Dc>();
  d->surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  if (cairo_surface_status(d->surface) != CAIRO_STATUS_SUCCESS) return 0;
  d->width = width;
  d->height = height;
  d->window = window;
  d->font = text::DefaultFont();
  Gdi& g = TheGdi();
  int handle = host::NewHandle();
  std::lock_guard<std::mutex> lock(g.mutex);
  d->pen_handle = g.stock.black_pen;
  d->brush_handle = g.stock.white_brush;
  d->font_handle = g.stock.system_font;
  g.dcs.emplace(handle, d);
  if (window != 0) g.window_dcs[window] = handle;
  return handle;
}

// Raw pixel access. Callers hold the Dc's lock and bracket their writes with
// Begin and End so that Cairo sees them.
void Begin(Dc& d) { cairo_surface_flush(d.surface); }
void End(Dc& d) { cairo_surface_mark_dirty(d.surface); }

uint32_t* Row(Dc& d, int y) {
  unsigned char* data = cairo_image_surface_get_data(d.surface);
  return reinterpret_cast<uint32_t*>(data + static_cast<ptrdiff_t>(y) * cairo_image_surface_get_stride(d.surface));
}

// COLORREF 0x00BBGGRR <-> Cairo's 0x00RRGGBB.
uint32_t ToPixel(Colour c) { return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF); }
Colour FromPixel(uint32_t p) { return ((p >> 16) & 0xFF) | (p & 0xFF00) | ((p & 0xFF) << 16); }

void Fill(Dc& d, int left, int top, int right, int bottom, Colour c) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, d.width);
  bottom = std::min(bottom, d.height);
  uint32_t p = ToPixel(c);
  for (int y = top; y < bottom; ++y) std::fill(Row(d, y) + left, Row(d, y) + std::max(left, right), p);
}

// On and off runs of the dashed pen styles, in pixels.
const std::vector<int>& DashPattern(int style) {
  static const std::vector<int> kNone, kDash{18, 6}, kDot{3, 3}, kDashDot{9, 6, 3, 6},
      kDashDotDot{9, 3, 3, 3, 3, 3};
  switch (style) {
    case kPsDash: return kDash;
    case kPsDot: return kDot;
    case kPsDashDot: return kDashDot;
    case kPsDashDotDot: return kDashDotDot;
    default: return kNone;
  }
}

// Moves a start point that lies more than kNear pixels off the box to where
// the line enters the box, and counts the steps skipped (for the dashes).
// False when the line never enters the box.
bool ClipStart(int* x0, int* y0, int x1, int y1, int xmin, int ymin, int xmax, int ymax, int64_t* skipped) {
  constexpr int64_t kNear = 1 << 16;
  if (*x0 >= xmin - kNear && *x0 <= xmax + kNear && *y0 >= ymin - kNear && *y0 <= ymax + kNear) return true;
  double dx = double(x1) - *x0, dy = double(y1) - *y0;
  double p[4] = {-dx, dx, -dy, dy};
  double q[4] = {double(*x0) - xmin, xmax - double(*x0), double(*y0) - ymin, ymax - double(*y0)};
  double t0 = 0, t1 = 1;
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    double t = q[i] / p[i];
    if (p[i] < 0) {
      t0 = std::max(t0, t);
    } else {
      t1 = std::min(t1, t);
    }
  }
  if (t0 > t1) return false;
  *skipped = static_cast<int64_t>(t0 * std::max(std::abs(dx), std::abs(dy)));
  *x0 = static_cast<int>(std::lround(*x0 + t0 * dx));
  *y0 = static_cast<int>(std::lround(*y0 + t0 * dy));
  return true;
}

// The pixels of a line from (x0, y0) up to but not including (x1, y1), in
// the pen; gaps of a dashed pen take the background colour when it is
// opaque. A pen wider than one pixel is a square of that side at each point.
void Line(Dc& d, int x0, int y0, int x1, int y1) {
  if (d.pen.style == kPsNull) return;
  const std::vector<int>& dashes = d.pen.width <= 1 ? DashPattern(d.pen.style) : DashPattern(kPsSolid);
  int period = 0;
  for (int n : dashes) period += n;
  int half = (std::max(d.pen.width, 1) - 1) / 2;
  int side = std::max(d.pen.width, 1);
  int64_t step = 0;
  // A start far off the surface is moved to where the line comes near it,
  // so that no time goes on points that cannot be seen.
  if (!ClipStart(&x0, &y0, x1, y1, -side - 1, -side - 1, d.width + side + 1, d.height + side + 1, &step)) return;
  int64_t dx = std::abs(int64_t{x1} - x0), dy = -std::abs(int64_t{y1} - y0);
  int sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
  int64_t err = dx + dy;
  int64_t x = x0, y = y0;
  for (; x != x1 || y != y1; ++step) {
    // Points far off the surface are skipped quickly but still counted.
    bool on = true;
    if (period > 0) {
      int64_t at = step % period;
      for (size_t i = 0; i < dashes.size(); ++i) {
        if (at < dashes[i]) {
          on = i % 2 == 0;
          break;
        }
        at -= dashes[i];
      }
    }
    if (on || d.bk_mode == kOpaque) {
      Colour c = on ? d.pen.colour : d.bk_colour;
      if (side == 1) {
        if (x >= 0 && y >= 0 && x < d.width && y < d.height) Row(d, static_cast<int>(y))[x] = ToPixel(c);
      } else {
        Fill(d, static_cast<int>(x) - half, static_cast<int>(y) - half, static_cast<int>(x) - half + side,
             static_cast<int>(y) - half + side, c);
      }
    }
    int64_t e2 = 2 * err;
    if (e2 >= dy) {
      err += dy;
      x += sx;
    }
    if (e2 <= dx) {
      err += dx;
      y += sy;
    }
    // A line running far outside the surface stops once it cannot come back.
    if ((sx > 0 && x > d.width + side) || (sx < 0 && x < -side) || (sy > 0 && y > d.height + side) ||
        (sy < 0 && y < -side)) {
      break;
    }
  }
}

void Log(Dc& d, const std::string& line) {
  d.log += line;
  d.log.push_back('\n');
}

std::string Hex6(Colour c) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%06X", c);
  return buf;
}

}  // namespace

int GetDC(int window) { return WindowSurface(window); }

int ReleaseDC(int /*window*/, int /*dc*/) { return 1; }

bool TextOutA(int dc, int x, int y, const char* gbk, int length) {
  if (gbk == nullptr || length < 0) return false;
  return WithDc(dc, false, [&](Dc& d) {
    Log(d, "TextOut " + std::to_string(x) + " " + std::to_string(y) + " " + std::string(gbk, size_t(length)));
    text::Draw(d.surface, d.font, x, y, gbk, length, d.text_colour, d.bk_mode == kOpaque, d.bk_colour);
    return true;
  });
}

bool GetTextExtentPoint32A(int dc, const char* gbk, int length, Size* size) {
  if (size == nullptr || length < 0 || (gbk == nullptr && length > 0)) return false;
  return WithDc(dc, false, [&](Dc& d) {
    *size = text::Measure(d.font, gbk, length);
    return true;
  });
}

int CreatePen(int style, int width, Colour colour) {
  if (style < kPsSolid || style > 6) return 0;  // 6, inside frame, draws as solid
  Gdi& g = TheGdi();
  int h = host::NewHandle();
  std::lock_guard<std::mutex> lock(g.mutex);
  g.objects.emplace(h, Pen{style == 6 ? kPsSolid : style, std::max(width, 0), colour & 0xFFFFFF});
  return h;
}

int CreateSolidBrush(Colour colour) {
  Gdi& g = TheGdi();
  int h = host::NewHandle();
  std::lock_guard<std::mutex> lock(g.mutex);
  g.objects.emplace(h, Brush{false, colour & 0xFFFFFF});
  return h;
}

int CreateFontIndirectA(const LogFont* font) {
  if (font == nullptr) return 0;
  Gdi& g = TheGdi();
  int h = host::NewHandle();
  std::lock_guard<std::mutex> lock(g.mutex);
  LogFont copy = *font;
  copy.faceName[sizeof copy.faceName - 1] = '\0';
  g.objects.emplace(h, copy);
  return h;
}

int GetStockObject(int which) {
  const Stock& s = TheGdi().stock;
  switch (which) {
    case kWhiteBrush: return s.white_brush;
    case kBlackBrush: return s.black_brush;
    case kNullBrush: return s.null_brush;
    case kWhitePen: return s.white_pen;
    case kBlackPen: return s.black_pen;
    case kNullPen: return s.null_pen;
    case kSystemFont:
    case kDefaultGuiFont: return s.system_font;
    default: return 0;
  }
}

int SelectObject(int dc, int object) {
  Object value;
  {
    Gdi& g = TheGdi();
    std::lock_guard<std::mutex> lock(g.mutex);
    auto it = g.objects.find(object);
    if (it == g.objects.end()) return 0;
    value = it->second;
  }
  return WithDc(dc, 0, [&](Dc& d) {
    int old = 0;
    if (auto* pen = std::get_if<Pen>(&value)) {
      old = d.pen_handle;
      d.pen = *pen;
      d.pen_handle = object;
      Log(d, "Pen " + std::to_string(pen->style) + " " + std::to_string(pen->width) + " " + Hex6(pen->colour));
    } else if (auto* brush = std::get_if<Brush>(&value)) {
      old = d.brush_handle;
      d.brush = *brush;
      d.brush_handle = object;
    } else if (auto* font = std::get_if<LogFont>(&value)) {
      old = d.font_handle;
      d.font = *font;
      d.font_handle = object;
      Log(d, std::string("Font ") + font->faceName + " " + std::to_string(font->height) + " " +
                 std::to_string(font->weight) + " " + std::to_string(font->charSet));
    }
    return old;
  });
}

bool DeleteObject(int object) {
  {
    Gdi& g = TheGdi();
    std::lock_guard<std::mutex> lock(g.mutex);
    if (g.IsStock(object)) return true;
    if (g.objects.erase(object) > 0) return true;
  }
  return DeleteRegion(object);
}

bool MoveToEx(int dc, int x, int y, Point* previous) {
  return WithDc(dc, false, [&](Dc& d) {
    if (previous != nullptr) *previous = d.pos;
    d.pos = {x, y};
    Log(d, "MoveTo " + std::to_string(x) + " " + std::to_string(y));
    return true;
  });
}

bool LineTo(int dc, int x, int y) {
  return WithDc(dc, false, [&](Dc& d) {
    Log(d, "LineTo " + std::to_string(x) + " " + std::to_string(y));
    Begin(d);
    Line(d, d.pos.x, d.pos.y, x, y);
    End(d);
    d.pos = {x, y};
    return true;
  });
}

bool Rectangle(int dc, int left, int top, int right, int bottom) {
  return WithDc(dc, false, [&](Dc& d) {
    Log(d, "Rectangle " + std::to_string(left) + " " + std::to_string(top) + " " + std::to_string(right) + " " +
               std::to_string(bottom));
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    Begin(d);
    bool outline = d.pen.style != kPsNull;
    // Without an outline the fill stops a pixel short on the right and bottom.
    if (!d.brush.hollow) Fill(d, left, top, outline ? right : right - 1, outline ? bottom : bottom - 1, d.brush.colour);
    if (outline && right > left && bottom > top) {
      int r = right - 1, b = bottom - 1;
      Line(d, left, top, r, top);
      Line(d, r, top, r, b);
      Line(d, r, b, left, b);
      Line(d, left, b, left, top);
    }
    End(d);
    return true;
  });
}

int SetBkMode(int dc, int mode) {
  if (mode != kTransparent && mode != kOpaque) return 0;
  return WithDc(dc, 0, [&](Dc& d) {
    int old = d.bk_mode;
    d.bk_mode = mode;
    Log(d, "BkMode " + std::to_string(mode));
    return old;
  });
}

Colour SetTextColor(int dc, Colour colour) {
  return WithDc(dc, kInvalidColour, [&](Dc& d) {
    Colour old = d.text_colour;
    d.text_colour = colour & 0xFFFFFF;
    return old;
  });
}

Colour SetBkColor(int dc, Colour colour) {
  return WithDc(dc, kInvalidColour, [&](Dc& d) {
    Colour old = d.bk_colour;
    d.bk_colour = colour & 0xFFFFFF;
    return old;
  });
}

Colour GetPixel(int dc, int x, int y) {
  return WithDc(dc, kInvalidColour, [&](Dc& d) {
    if (x < 0 || y < 0 || x >= d.width || y >= d.height) return kInvalidColour;
    Begin(d);
    return FromPixel(Row(d, y)[x] & 0xFFFFFF);
  });
}

int CreateSurface(int width, int height) {
  if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide) return 0;
  int dc = NewDc(width, height, 0);
  if (dc != 0) {
    WithDc(dc, false, [](Dc& d) {
      Begin(d);
      Fill(d, 0, 0, d.width, d.height, kWhite);
      End(d);
      return true;
    });
  }
  return dc;
}

void DeleteSurface(int dc) {
  Gdi& g = TheGdi();
  std::shared_ptr<Dc> gone;  // freed outside the lock
  std::lock_guard<std::mutex> lock(g.mutex);
  auto it = g.dcs.find(dc);
  if (it == g.dcs.end() || it->second->window != 0) return;
  gone = std::move(it->second);
  g.dcs.erase(it);
}

int WindowSurface(int window) {
  {
    Gdi& g = TheGdi();
    std::lock_guard<std::mutex> lock(g.mutex);
    auto it = g.window_dcs.find(window);
    if (it != g.window_dcs.end()) return it->second;
  }
  int width = 0, height = 0;
  if (window == 0 || !host::GetClientRect(window, &width, &height)) return 0;
  width = std::clamp(width, 0, kMaxSide);
  height = std::clamp(height, 0, kMaxSide);
  int dc = NewDc(width, height, window);
  if (dc == 0) return 0;
  WithDc(dc, false, [](Dc& d) {
    Begin(d);
    Fill(d, 0, 0, d.width, d.height, kWhite);
    End(d);
    return true;
  });
  // Two threads may have made one at once: the first one registered wins.
  Gdi& g = TheGdi();
  std::shared_ptr<Dc> spare;
  std::lock_guard<std::mutex> lock(g.mutex);
  int first = g.window_dcs[window];
  if (first != dc) {
    spare = g.dcs[dc];
    g.dcs.erase(dc);
  }
  return first;
}

void DropWindowSurface(int window) {
  Gdi& g = TheGdi();
  std::shared_ptr<Dc> gone;
  std::lock_guard<std::mutex> lock(g.mutex);
  auto it = g.window_dcs.find(window);
  if (it == g.window_dcs.end()) return;
  auto dc = g.dcs.find(it->second);
  if (dc != g.dcs.end()) {
    gone = std::move(dc->second);
    g.dcs.erase(dc);
  }
  g.window_dcs.erase(it);
}

bool SurfaceSize(int dc, int* width, int* height) {
  return WithDc(dc, false, [&](Dc& d) {
    if (width) *width = d.width;
    if (height) *height = d.height;
    return true;
  });
}

bool FillRect(int dc, int left, int top, int right, int bottom, Colour colour) {
  return WithDc(dc, false, [&](Dc& d) {
    Begin(d);
    Fill(d, left, top, right, bottom, colour & 0xFFFFFF);
    End(d);
    return true;
  });
}

bool SavePng(int dc, const char* path) {
  if (path == nullptr) return false;
  std::string native = env::NativePath(path);
  return WithDc(dc, false, [&](Dc& d) {
    if (d.width == 0 || d.height == 0) return false;
    return cairo_surface_write_to_png(d.surface, native.c_str()) == CAIRO_STATUS_SUCCESS;
  });
}

bool GetDrawLog(int dc, std::string* log) {
  return WithDc(dc, false, [&](Dc& d) {
    *log = d.log;
    return true;
  });
}

void ClearDrawLog(int dc) {
  WithDc(dc, false, [](Dc& d) {
    d.log.clear();
    return true;
  });
}

}  // namespace tq::gdi
