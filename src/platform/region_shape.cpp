#include "platform/region_shape.h"

#include <algorithm>
#include <cmath>

namespace tq::gdi {
namespace {

using Span = RegionShape::Span;

bool Apply(int op, bool a, bool b) {
  switch (op) {
    case 1: return a && b;
    case 2: return a || b;
    case 3: return a != b;
    case 4: return a && !b;
    default: return a;
  }
}

bool Covers(const std::vector<Span>& spans, size_t* at, int32_t x) {
  while (*at < spans.size() && spans[*at].right <= x) ++*at;
  return *at < spans.size() && spans[*at].left <= x;
}

std::vector<Span> CombineSpans(const std::vector<Span>& a, const std::vector<Span>& b, int op) {
  std::vector<int32_t> edges;
  edges.reserve(2 * (a.size() + b.size()));
  for (const auto* list : {&a, &b}) {
    for (const Span& s : *list) {
      edges.push_back(s.left);
      edges.push_back(s.right);
    }
  }
  std::sort(edges.begin(), edges.end());
  edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
  std::vector<Span> out;
  size_t ia = 0, ib = 0;
  for (size_t i = 0; i + 1 < edges.size(); ++i) {
    int32_t x = edges[i];
    if (!Apply(op, Covers(a, &ia, x), Covers(b, &ib, x))) continue;
    if (!out.empty() && out.back().right == x) {
      out.back().right = edges[i + 1];
    } else {
      out.push_back({x, edges[i + 1]});
    }
  }
  return out;
}

// An edge of a polygon, from its upper end to its lower end.
struct Edge {
  double x0, y0, x1, y1;
  int direction;  // +1 going down in the point order, -1 going up
};

}  // namespace

RegionShape RegionShape::Rect(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
  RegionShape shape;
  if (left < right && top < bottom) shape.bands_.push_back({top, bottom, {{left, right}}});
  return shape;
}

bool RegionShape::Polygon(const Point* points, int count, bool winding, RegionShape* out) {
  if (points == nullptr || count < 3) return false;
  std::vector<Edge> edges;
  int64_t min_y = points[0].y, max_y = points[0].y;
  for (int i = 0; i < count; ++i) {
    const Point& p = points[i];
    const Point& q = points[(i + 1) % count];
    min_y = std::min<int64_t>(min_y, p.y);
    max_y = std::max<int64_t>(max_y, p.y);
    if (p.y == q.y) continue;  // a level edge crosses no row centre
    if (p.y < q.y) {
      edges.push_back({double(p.x), double(p.y), double(q.x), double(q.y), 1});
    } else {
      edges.push_back({double(q.x), double(q.y), double(p.x), double(p.y), -1});
    }
  }
  if (max_y - min_y > kMaxPolygonRows) return false;
  std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.y0 < b.y0; });

  RegionShape shape;
  std::vector<const Edge*> active;
  std::vector<std::pair<double, int>> crossings;
  size_t next = 0;
  for (int64_t row = min_y; row < max_y; ++row) {
    double yc = static_cast<double>(row) + 0.5;  // rows are sampled at pixel centres
    while (next < edges.size() && edges[next].y0 < yc) active.push_back(&edges[next++]);
    active.erase(std::remove_if(active.begin(), active.end(), [&](const Edge* e) { return e->y1 < yc; }),
                 active.end());
    crossings.clear();
    for (const Edge* e : active) {
      double x = e->x0 + (yc - e->y0) * (e->x1 - e->x0) / (e->y1 - e->y0);
      crossings.push_back({x, e->direction});
    }
    std::sort(crossings.begin(), crossings.end());
    std::vector<Span> spans;
    int wind = 0;
    for (size_t i = 0; i + 1 < crossings.size(); ++i) {
      wind += winding ? crossings[i].second : 1;
      bool inside = winding ? wind != 0 : (wind & 1) != 0;
      if (!inside) continue;
      // Pixel x is inside when its centre x + 0.5 lies in [from, to).
      auto left = static_cast<int32_t>(std::ceil(crossings[i].first - 0.5));
      auto right = static_cast<int32_t>(std::ceil(crossings[i + 1].first - 0.5));
      if (left >= right) continue;
      if (!spans.empty() && spans.back().right >= left) {
        spans.back().right = std::max(spans.back().right, right);
      } else {
        spans.push_back({left, right});
      }
    }
    if (!spans.empty()) {
      shape.AppendBand(static_cast<int32_t>(row), static_cast<int32_t>(row + 1), std::move(spans));
    }
  }
  *out = std::move(shape);
  return true;
}

RegionShape RegionShape::Combine(const RegionShape& a, const RegionShape& b, int op) {
  std::vector<int32_t> rows;
  for (const auto* shape : {&a, &b}) {
    for (const Band& band : shape->bands_) {
      rows.push_back(band.top);
      rows.push_back(band.bottom);
    }
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  static const std::vector<Span> kNone;
  RegionShape out;
  for (size_t i = 0; i + 1 < rows.size(); ++i) {
    const std::vector<Span>* sa = a.SpansAt(rows[i]);
    const std::vector<Span>* sb = b.SpansAt(rows[i]);
    std::vector<Span> spans = CombineSpans(sa ? *sa : kNone, sb ? *sb : kNone, op);
    if (!spans.empty()) out.AppendBand(rows[i], rows[i + 1], std::move(spans));
  }
  return out;
}

bool RegionShape::Contains(int32_t x, int32_t y) const {
  const std::vector<Span>* spans = SpansAt(y);
  if (spans == nullptr) return false;
  auto it = std::upper_bound(spans->begin(), spans->end(), x,
                             [](int32_t v, const Span& s) { return v < s.right; });
  return it != spans->end() && it->left <= x;
}

int RegionShape::Type() const {
  if (bands_.empty()) return 1;
  return bands_.size() == 1 && bands_[0].spans.size() == 1 ? 2 : 3;
}

void RegionShape::AppendBand(int32_t top, int32_t bottom, std::vector<Span> spans) {
  if (!bands_.empty() && bands_.back().bottom == top && bands_.back().spans == spans) {
    bands_.back().bottom = bottom;
    return;
  }
  bands_.push_back({top, bottom, std::move(spans)});
}

const std::vector<Span>* RegionShape::SpansAt(int32_t y) const {
  auto it = std::upper_bound(bands_.begin(), bands_.end(), y,
                             [](int32_t v, const Band& b) { return v < b.bottom; });
  if (it == bands_.end() || it->top > y) return nullptr;
  return &it->spans;
}

}  // namespace tq::gdi
