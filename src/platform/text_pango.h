// The font engine behind the device contexts: Pango over Cairo, with the
// fonts that fontconfig knows. GBK text is turned into Unicode here, at the
// engine's edge, and nowhere else.
//
// Faces: "pron" is the dictionaries' pronunciation notation, drawn as
// phonetic symbols in DejaVu Sans; a face the machine has is drawn in that
// face; every other face (the default one included) in WenQuanYi Micro Hei,
// which has both Chinese and Latin letters.
#pragma once

#include <cairo.h>

#include <string>

#include "platform/surface.h"

namespace tq::gdi::text {

// The default font of a new device context.
LogFont DefaultFont();

// Width and cell height in pixels of the text in the font.
Size Measure(const LogFont& font, const char* gbk, int length);

// Draws the text with its top-left corner at (x, y); with opaque set, its box
// is first filled with background.
void Draw(cairo_surface_t* surface, const LogFont& font, int x, int y, const char* gbk, int length,
          Colour colour, bool opaque, Colour background);

// The Unicode (UTF-8) of GBK bytes; a byte that starts no GBK character
// becomes "?". With pron set, ASCII bytes go through the notation table.
std::string Decode(const char* gbk, int length, bool pron);

}  // namespace tq::gdi::text
