#include "stats_chart.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

// Colours as the host takes them, 0x00BBGGRR.
constexpr unsigned kRule = 0xC8C8C8;
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
constexpr int kPlotRight = kWidth - 48;
constexpr int kPlotHeight = 220;
constexpr int kComingTop = 56;
constexpr int kPastTop = kComingTop + kPlotHeight + 80;

// The labels, in GBK.
const char kToday[] = "\xbd\xf1\xcc\xec";                                     // 今天
const char kComingTitle1[] = "\xbd\xf1\xcc\xec\xba\xcd\xbd\xf1\xba\xf3";      // 今天和今后
const char kComingTitle2[] = "\xcc\xec\xb5\xbd\xc6\xda\xb5\xc4\xb5\xa5\xb4\xca";  // 天到期的单词
const char kPastTitle1[] = "\xb9\xfd\xc8\xa5";                                 // 过去
// 天每天答过的单词（按记录推知）
const char kPastTitle2[] =
    "\xcc\xec\xc3\xbf\xcc\xec\xb4\xf0\xb9\xfd\xb5\xc4\xb5\xa5\xb4\xca"
    "\xa3\xa8\xb0\xb4\xbc\xc7\xc2\xbc\xcd\xc6\xd6\xaa\xa3\xa9";
const char kOverdueName[] = "\xd3\xe2\xc6\xda";                        // 逾期
const char kFallingName[] = "\xbd\xf1\xcc\xec\xb5\xbd\xc6\xda";        // 今天到期
const char kHardName[] = "\xc4\xd1\xb4\xca";                           // 难词
const char kComingName[] = "\xd2\xd4\xba\xf3\xb5\xbd\xc6\xda";        // 以后到期
const char kWordsAxis[] = "\xb5\xa5\xb4\xca\xca\xfd";                 // 单词数
const char kDaysAxis[] = "\xc8\xd5\xc6\xda";                           // 日期

// Text on the surface in its font (black), through the library's drawing
// of long text; the left edge at x, the top at y.
void Text(int dc, int x, int y, const std::string& text) {
  DrawTextObj t = {};
  t.dc = dc;
  vcInitDrawTextObj(&t, text.c_str());
  t.width = kWidth;
  t.x = x;
  t.y = y;
  t.lineHeight = vcGetStringHeight(dc, text.c_str());
  vcDrawLongText(&t);
}
int TextWidth(int dc, const std::string& text) { return vcGetTextWidth(dc, text.c_str()); }
int TextHeight(int dc) { return vcGetStringHeight(dc, nullptr); }

std::string Number(int n) { return std::to_string(n); }

// "3-11": a day short enough to stand under a bar.
std::string ShortDate(int day) {
  int y = 0, m = 0, d = 0;
  std::sscanf(DateText(day).c_str(), "%d-%d-%d", &y, &m, &d);
  return Number(m) + "-" + Number(d);
}

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

  // The value axis with its steps numbered, the day axis, the title above.
  void DrawAxes(const std::string& title) const {
    const int half = TextHeight(dc_) / 2;
    for (int v = 0; v <= scale_.top; v += scale_.step) {
      int y = bottom() - scale_.Pixels(v);
      if (v > 0) tqHost_FillRect(dc_, kPlotLeft, y, right(), y + 1, kGrid);
      tqHost_FillRect(dc_, kPlotLeft - 5, y, kPlotLeft, y + 1, kAxis);
      Text(dc_, kPlotLeft - 8 - TextWidth(dc_, Number(v)), y - half, Number(v));
    }
    tqHost_FillRect(dc_, kPlotLeft - 1, top_ - 4, kPlotLeft, bottom() + 1, kAxis);
    tqHost_FillRect(dc_, kPlotLeft - 1, bottom(), right() + 4, bottom() + 1, kAxis);
    Text(dc_, 8, top_ - 2 * half - 8, kWordsAxis);
    Text(dc_, right() + 8, bottom() - half, kDaysAxis);
    Text(dc_, kPlotLeft, top_ - 4 * half - 12, title);
  }

  // Names a slot under the day axis, with a tick.
  void DrawSlotName(int slot, const std::string& name) const {
    tqHost_FillRect(dc_, SlotMiddle(slot), bottom(), SlotMiddle(slot) + 1, bottom() + 5, kAxis);
    Text(dc_, SlotMiddle(slot) - TextWidth(dc_, name) / 2, bottom() + 6, name);
  }
  // Every how many slots a name fits: names as wide as this one.
  int NameEvery(const std::string& widest) const { return (TextWidth(dc_, widest) + 12 + slot_ - 1) / slot_; }

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

// A key to the colours: a swatch and a name each, from x to the right.
void DrawKey(int dc, int x, int y, const std::vector<std::pair<unsigned, const char*>>& entries) {
  const int h = TextHeight(dc);
  for (const auto& [colour, name] : entries) {
    tqHost_FillRect(dc, x, y + h / 2 - 5, x + 10, y + h / 2 + 5, colour);
    Text(dc, x + 14, y, name);
    x += 14 + TextWidth(dc, name) + 16;
  }
}

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
  Panel coming(dc, kComingTop, days + 1, Most(r.coming, r.due_today));
  coming.DrawAxes(kComingTitle1 + Number(days) + kComingTitle2);
  DrawKey(dc, kPlotRight - 330, kComingTop - TextHeight(dc) - 14,
          {{kOverdue, kOverdueName}, {kFalling, kFallingName}, {kHard, kHardName}, {kComing, kComingName}});
  coming.DrawBar(0, {{r.overdue, kOverdue}, {r.falling_due, kFalling}, {r.hard, kHard}});
  for (int i = 0; i < days; ++i) coming.DrawBar(i + 1, {{r.coming[static_cast<size_t>(i)], kComing}});
  const int coming_every = coming.NameEvery("12-31");
  coming.DrawSlotName(0, kToday);
  for (int i = coming_every; i <= days; i += coming_every) coming.DrawSlotName(i, ShortDate(in.day + i));

  // A rule between the two charts.
  const int rule = (coming.bottom() + kPastTop) / 2 - 8;
  vcDrawLineBackground(dc, kWidth, rule, rule, kRule);

  // The past days, today last.
  const int past = static_cast<int>(r.answered.size());
  Panel answered(dc, kPastTop, past, Most(r.answered, 0));
  answered.DrawAxes(kPastTitle1 + Number(past) + kPastTitle2);
  for (int i = 0; i < past; ++i) answered.DrawBar(i, {{r.answered[static_cast<size_t>(i)], kAnswered}});
  const int past_every = answered.NameEvery("12-31");
  answered.DrawSlotName(past - 1, kToday);
  for (int i = past - 1 - past_every; i >= 0; i -= past_every) {
    answered.DrawSlotName(i, ShortDate(in.day - (past - 1 - i)));
  }

  bool saved = tqHost_SavePng(dc, path.c_str()) == 1;
  tqHost_DeleteDC(dc);
  if (!saved) *error = "cannot write the picture " + path;
  return saved;
}

}  // namespace tqcomm
