#include "desktop/long_text.h"

#include <cstring>

#include "desktop/text_lines.h"

namespace tq::desktop {
namespace {

// "ABClp我们"
const char kHeightSample[] = "ABClp\xce\xd2\xc3\xc7";

}  // namespace

int32_t StringHeight(int dc, const char* text) {
  if (text == nullptr || *text == '\0') text = kHeightSample;
  gdi::Size size{0, 0};
  gdi::GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &size);
  return size.cy;
}

int32_t StringWidth(int dc, const char* text) {
  if (text == nullptr) return 0;
  gdi::Size size{0, 0};
  gdi::GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &size);
  return size.cx;
}

int32_t DrawLongText(int dc, const char* text, int32_t x, int32_t y, int32_t width, int32_t lineHeight) {
  LongTextLayout layout = BreakLongText(text, y, width, lineHeight, [dc](const char* s, size_t length) {
    gdi::Size size{0, 0};
    gdi::GetTextExtentPoint32A(dc, s, static_cast<int>(length), &size);
    return size.cx;
  });
  for (const TextLine& line : layout.lines) {
    gdi::TextOutA(dc, x, line.y, text + line.start, static_cast<int>(line.length));
  }
  return layout.height;
}

void DrawRuledLines(int dc, int32_t width, int32_t bottom, int32_t step, gdi::Colour colour) {
  if (step <= 0) return;  // no lines to step through
  int pen = gdi::CreatePen(gdi::kPsSolid, 1, colour);
  int old = gdi::SelectObject(dc, pen);
  for (int64_t y = step; y <= bottom; y += step) {
    gdi::MoveToEx(dc, 0, static_cast<int>(y), nullptr);
    gdi::LineTo(dc, width, static_cast<int>(y));
  }
  gdi::SelectObject(dc, old);
  gdi::DeleteObject(pen);
}

}  // namespace tq::desktop
