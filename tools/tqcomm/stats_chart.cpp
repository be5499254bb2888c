#include "stats_chart.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "tqhost.h"

namespace tqcomm {
namespace {

// Colours as the host takes them, 0x00BBGGRR.
constexpr unsigned kWhite = 0xFFFFFF;
constexpr unsigned kAxis = 0x404040;
constexpr unsigned kGrid = 0xE4E4E4;
constexpr unsigned kOverdue = 0x2828D0;   // red
constexpr unsigned kFalling = 0x2090F0;   // orange
constexpr unsigned kHard = 0xA03C8C;      // purple
constexpr unsigned kComing = 0xC07830;    // blue
constexpr unsigned kAnswered = 0x48A048;  // green

constexpr int kWidth = 800;
constexpr int kHeight = 620;
constexpr int kPlotLeft = 64;
constexpr int kPlotRight = kWidth - 24;
constexpr int kPlotHeight = 220;

// A value axis that ends on a round number: 1, 2 or 5 times a power of ten
// per step, at most five steps.
struct Scale {
  int top = 1, step = 1;
  explicit Scale(int most) {
    for (int unit = 1;; unit *= 10) {
      for (int k : {1, 2, 5}) {
        step = k * unit;
        if (most <= step * 5) {
          top = std::max(step, (most + step - 1) / step * step);
          return;
        }
      }
    }
  }
  // Pixels of a value, counted up from the axis.
  int Pixels(int64_t value) const { return static_cast<int>((value * kPlotHeight + top / 2) / top); }
};

// One bar chart: a slot per day, the value axis on the left.
class Panel {
 public:
  Panel(int dc, int top, int slots, int most) : dc_(dc), top_(top), slots_(slots), scale_(most) {
    slot_ = std::max(1, (kPlotRight - kPlotLeft) / slots);
    bar_ = std::max(1, slot_ * 2 / 3);
  }

  int bottom() const { return top_ + kPlotHeight; }
  int right() const { return kPlotLeft + slot_ * slots_; }
  const Scale& scale() const { return scale_; }
  // Left edge of a slot's bar, and its middle.
  int BarLeft(int slot) const { return kPlotLeft + slot * slot_ + (slot_ - bar_) / 2; }
  int SlotMiddle(int slot) const { return kPlotLeft + slot * slot_ + slot_ / 2; }

  void DrawAxes() const {
    for (int v = scale_.step; v <= scale_.top; v += scale_.step) {
      int y = bottom() - scale_.Pixels(v);
      tqHost_FillRect(dc_, kPlotLeft, y, right(), y + 1, kGrid);
      tqHost_FillRect(dc_, kPlotLeft - 5, y, kPlotLeft, y + 1, kAxis);
    }
    tqHost_FillRect(dc_, kPlotLeft - 1, top_ - 4, kPlotLeft, bottom() + 1, kAxis);
    tqHost_FillRect(dc_, kPlotLeft - 1, bottom(), right() + 4, bottom() + 1, kAxis);
  }

  // A bar of values stacked from the axis up, each in its colour.
  void DrawBar(int slot, const std::vector<std::pair<int, unsigned>>& parts) const {
    int64_t below = 0;
    for (const auto& [value, colour] : parts) {
      if (value <= 0) continue;
      int from = bottom() - scale_.Pixels(below);
      below += value;
      int to = bottom() - scale_.Pixels(below);
      tqHost_FillRect(dc_, BarLeft(slot), to, BarLeft(slot) + bar_, from, colour);
    }
  }

 private:
  int dc_, top_, slots_;
  Scale scale_;
  int slot_, bar_;
};

int Most(const std::vector<int>& v, int at_least) {
  return v.empty() ? at_least : std::max(at_least, *std::max_element(v.begin(), v.end()));
}

}  // namespace

bool DrawStatsPng(const StatsInput& in, const StatsReport& r, const std::string& path, std::string* error) {
  int dc = tqHost_CreateDC(kWidth, kHeight);
  if (dc <= 0) {
    *error = "cannot make a drawing surface";
    return false;
  }
  // Today and the coming days: today's words stacked by why they are due.
  const int days = static_cast<int>(r.coming.size());
  Panel coming(dc, 56, days + 1, Most(r.coming, r.due_today));
  coming.DrawAxes();
  coming.DrawBar(0, {{r.overdue, kOverdue}, {r.falling_due, kFalling}, {r.hard, kHard}});
  for (int i = 0; i < days; ++i) coming.DrawBar(i + 1, {{r.coming[static_cast<size_t>(i)], kComing}});

  // The past days, today last.
  const int past = static_cast<int>(r.answered.size());
  Panel answered(dc, 56 + kPlotHeight + 80, past, Most(r.answered, 0));
  answered.DrawAxes();
  for (int i = 0; i < past; ++i) answered.DrawBar(i, {{r.answered[static_cast<size_t>(i)], kAnswered}});

  bool saved = tqHost_SavePng(dc, path.c_str()) == 1;
  tqHost_DeleteDC(dc);
  if (!saved) *error = "cannot write the picture " + path;
  (void)in;
  return saved;
}

}  // namespace tqcomm
