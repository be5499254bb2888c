#include "desktop/text_lines.h"

#include <cstring>

namespace tq::desktop {
namespace {

bool IsWordByte(unsigned char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '\'';
}

// The most bytes from start, up to end, that fit. The literal way is to
// measure the whole line and then give back one byte at a time; since widths
// grow with the text, the same answer comes from measuring growing pieces
// (16, 32, 64 ... bytes) until one does not fit and halving the gap, which
// never measures much more than a line's worth of a long paragraph. It then
// steps on while one byte more still fits, for fonts whose widths do not
// quite grow byte by byte.
template <class Fits>
size_t FitLength(size_t start, size_t end, const Fits& fits) {
  const size_t total = end - start;
  size_t lo = 0, hi = total;  // lo fits (or is 0), hi is not yet known to fit
  bool hi_known = false;
  for (size_t probe = 16; probe < total; probe *= 2) {
    if (!fits(start, probe)) {
      hi = probe;
      hi_known = true;
      break;
    }
    lo = probe;
  }
  if (!hi_known) {
    if (fits(start, total)) return total;
  }
  while (hi - lo > 1) {
    size_t mid = lo + (hi - lo) / 2;
    if (fits(start, mid)) {
      lo = mid;
    } else {
      hi = mid;
    }
  }
  while (lo + 1 < total && fits(start, lo + 1)) ++lo;
  return lo;
}

}  // namespace

LongTextLayout BreakLongText(const char* text, int32_t y, int32_t width, int32_t lineHeight,
                             const MeasureText& measure) {
  LongTextLayout out;
  if (text == nullptr) text = "";
  const auto* t = reinterpret_cast<const unsigned char*>(text);
  const size_t n = std::strlen(text);
  // The pen wraps as 32-bit arithmetic does, whatever the caller's numbers.
  uint32_t pen = static_cast<uint32_t>(y);
  auto fits = [&](size_t from, size_t length) { return measure(text + from, length) <= width; };
  auto line = [&](size_t from, size_t length) { out.lines.push_back({from, length, static_cast<int32_t>(pen)}); };
  auto down = [&] { pen += static_cast<uint32_t>(lineHeight); };

  size_t start = 0, i = 0;
  for (;;) {
    while (i < n && t[i] != '\r' && t[i] != '\n') ++i;
    size_t fit = i == start ? 0 : FitLength(start, i, fits);
    if (i == start || fit == i - start) {  // an empty line fits any width
      line(start, i - start);
      i += 2;
      start = i;
      if (start >= n) break;
      down();
      continue;
    }
    // Too long: give bytes back until it fits. The mark tells whether an odd
    // run of high bytes was passed last, which puts i on a character's first
    // byte.
    size_t end = i;
    i = fit > 0 ? start + fit - 1 : start;  // the last byte that fits
    bool mark = false;
    for (size_t passed = end; passed > i; --passed) mark = t[passed] >= 0x80 ? !mark : false;
    if (mark && i > start) {
      line(start, i - start);
      down();
      if (i >= n) break;
      start = i;
      continue;
    }
    if (mark) {
      ++i;  // a character wider than the line stands alone on it
    } else if (t[i] < 0x80) {
      size_t fallback = i;
      size_t j = i;
      while (j > start && IsWordByte(t[j])) --j;
      if (j > start) {
        line(start, j - start + 1);
        start = j + 1;
      } else if (fallback > start) {  // a word longer than the line
        line(start, fallback - start);
        start = fallback;
      } else {  // not one byte fits: it goes alone
        line(start, 1);
        start += 1;
      }
      i = start;
      down();
      if (start >= n) break;
      continue;
    }
    // The cut falls after a whole Chinese character.
    line(start, i - start + 1);
    start = i + 1;
    down();
    ++i;
    if (i >= n) break;
  }
  out.height = static_cast<int32_t>(pen - static_cast<uint32_t>(y) + static_cast<uint32_t>(lineHeight));
  return out;
}

}  // namespace tq::desktop
