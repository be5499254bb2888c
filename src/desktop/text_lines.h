// Long mixed Chinese and English text broken into lines of a width, as the
// front ends' explanation panes break it. Pure logic over a measuring
// function, so it runs without a device context.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace tq::desktop {

// One line of a long text: bytes [start, start + length) drawn at pen y.
struct TextLine {
  size_t start;
  size_t length;
  int32_t y;
};

struct LongTextLayout {
  std::vector<TextLine> lines;
  int32_t height;  // pen at the end less the top, plus one line
};

// The width in pixels of text[0, length).
using MeasureText = std::function<int32_t(const char* text, size_t length)>;

// Breaks a NUL-terminated GBK text, whose lines end with CR LF, into lines
// no wider than width where it can:
//  - a line that fits is drawn whole, and the two bytes of its line end are
//    passed over;
//  - a longer one is cut at the last byte that still fits, counting back:
//    where that falls on a Chinese character's first byte (an odd run of
//    high bytes after it) the character starts the next line; where it
//    falls in Latin text the cut goes back to the last byte that is not a
//    letter, digit, hyphen or apostrophe, and a word longer than the line is
//    cut where the line is full; after a whole Chinese character it is cut
//    there;
//  - the pen moves down lineHeight after every line, but for the last line
//    of the text when that line fitted whole.
// Something goes on every line, so the text always comes to an end, even
// when not one character fits the width.
LongTextLayout BreakLongText(const char* text, int32_t y, int32_t width, int32_t lineHeight,
                             const MeasureText& measure);

}  // namespace tq::desktop
