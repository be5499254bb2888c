// The shape behind a region handle: a set of pixels kept as horizontal bands,
// each a run of rows with the same spans, as the window system keeps its
// regions. Pure logic with no drawing behind it.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/surface.h"

namespace tq::gdi {

class RegionShape {
 public:
  struct Span {
    int32_t left, right;  // [left, right)
    bool operator==(const Span& o) const { return left == o.left && right == o.right; }
  };
  struct Band {
    int32_t top, bottom;  // [top, bottom)
    std::vector<Span> spans;  // sorted, apart, none empty
  };

  RegionShape() = default;
  static RegionShape Rect(int32_t left, int32_t top, int32_t right, int32_t bottom);
  // The pixels whose centres lie inside the polygon, by the even-odd rule
  // (alternate) or by a nonzero winding number. False when the polygon spans
  // more than kMaxPolygonRows rows or has fewer than three points.
  static bool Polygon(const Point* points, int count, bool winding, RegionShape* out);
  static constexpr int64_t kMaxPolygonRows = 32768;

  // a op b, op as CombineRgn's mode: 1 and, 2 or, 3 xor, 4 difference.
  static RegionShape Combine(const RegionShape& a, const RegionShape& b, int op);

  bool Contains(int32_t x, int32_t y) const;
  bool Empty() const { return bands_.empty(); }
  // 1 empty, 2 a single rectangle, 3 anything else (CombineRgn's answers).
  int Type() const;
  const std::vector<Band>& bands() const { return bands_; }

 private:
  // Appends rows [top, bottom) with these spans, joining the last band when
  // it runs on with the same spans.
  void AppendBand(int32_t top, int32_t bottom, std::vector<Span> spans);
  const std::vector<Span>* SpansAt(int32_t y) const;

  std::vector<Band> bands_;  // sorted by top, apart
};

}  // namespace tq::gdi
