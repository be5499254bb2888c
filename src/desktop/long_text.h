// Text measured and drawn straight into a device context: heights and
// widths through the font engine, long text broken into lines of a width
// (text_lines.h), and ruled lines to write on.
#pragma once

#include <cstdint>

#include "platform/surface.h"

namespace tq::desktop {

// The height of the text in the device context's font; with no text, that of
// the sample "ABClp我们".
int32_t StringHeight(int dc, const char* text);
int32_t StringWidth(int dc, const char* text);
// Breaks and draws the text at x, from the top y; answers the height drawn.
int32_t DrawLongText(int dc, const char* text, int32_t x, int32_t y, int32_t width, int32_t lineHeight);
// Solid one-pixel lines in the colour from x = 0 to width at y = step,
// 2 step, ... while y is at most bottom; the selected pen stays.
void DrawRuledLines(int dc, int32_t width, int32_t bottom, int32_t step, gdi::Colour colour);

}  // namespace tq::desktop
