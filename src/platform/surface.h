// Device contexts: the drawing surfaces that the front ends hand the library
// (a window's client area, or a surface made for the purpose), and the GDI
// objects drawn with (pens, brushes, fonts).
//
// The operations are named and behave as the Windows GDI calls they stand
// for, so that drawing code reads the same on every platform. A device
// context, a pen, a brush, a font and a region are positive integer handles;
// 0 is none. Pens, brushes, fonts and regions share one handle space, so
// DeleteObject takes any of them.
//
// Coordinates are pixels of the surface, x to the right, y downwards.
// Colours are COLORREF values: 0x00BBGGRR.
#pragma once

#include <cstdint>
#include <string>

namespace tq::gdi {

using Colour = uint32_t;
constexpr Colour kInvalidColour = 0xFFFFFFFF;  // CLR_INVALID

constexpr Colour Rgb(int r, int g, int b) {
  return static_cast<Colour>((r & 0xFF) | (g & 0xFF) << 8 | (b & 0xFF) << 16);
}

struct Point {
  int32_t x, y;
};

struct Size {
  int32_t cx, cy;
};

// The fields of LOGFONTA. A height of 0 asks for the default size; above 0
// it is the cell height (ascent plus descent), below 0 the character height.
// A weight of 0 is the normal weight (400); 700 is bold.
struct LogFont {
  int32_t height = 0;
  int32_t width = 0;
  int32_t escapement = 0;
  int32_t orientation = 0;
  int32_t weight = 0;
  uint8_t italic = 0;
  uint8_t underline = 0;
  uint8_t strikeOut = 0;
  uint8_t charSet = 0;
  uint8_t outPrecision = 0;
  uint8_t clipPrecision = 0;
  uint8_t quality = 0;
  uint8_t pitchAndFamily = 0;
  char faceName[32] = {};
};

// SetBkMode.
enum BkMode : int { kTransparent = 1, kOpaque = 2 };

// CreatePen styles.
enum PenStyle : int { kPsSolid = 0, kPsDash = 1, kPsDot = 2, kPsDashDot = 3, kPsDashDotDot = 4, kPsNull = 5 };

// GetStockObject.
enum StockObject : int {
  kWhiteBrush = 0,
  kBlackBrush = 4,
  kNullBrush = 5,
  kWhitePen = 6,
  kBlackPen = 7,
  kNullPen = 8,
  kSystemFont = 13,
  kDefaultGuiFont = 17,
};

// The device context of a window's client area (0 for no such window), and
// its release (1). A window keeps one device context for its life, so what is
// selected into it stays selected between GetDC and GetDC.
int GetDC(int window);
int ReleaseDC(int window, int dc);

// Draws GBK text with its top-left corner at (x, y), in the selected font
// and the text colour; with the opaque background mode the text's box is
// first filled with the background colour. The current position is not
// moved. A font of face "pron" draws the pronunciation notation of the
// dictionaries as phonetic symbols (see tqhost.h).
bool TextOutA(int dc, int x, int y, const char* gbk, int length);
// The width and height in pixels of the text in the selected font. The height
// is the font's cell height, whatever the text.
bool GetTextExtentPoint32A(int dc, const char* gbk, int length, Size* size);

int CreatePen(int style, int width, Colour colour);
int CreateSolidBrush(Colour colour);
// A font as described; a face that the machine does not have is drawn in
// the default face. 0 for a null description.
int CreateFontIndirectA(const LogFont* font);
// A stock object (shared, never deleted), or 0 for an unknown number.
int GetStockObject(int which);
// Selects a pen, a brush or a font into the device context and answers the
// one of that kind selected before; 0 on failure (regions are not selected
// this way).
int SelectObject(int dc, int object);
// Deletes a pen, brush, font or region. A device context that has the object
// selected keeps drawing with it. Stock objects stay. False for no such
// object.
bool DeleteObject(int object);

// Moves the current position; the old one goes to previous when given.
bool MoveToEx(int dc, int x, int y, Point* previous);
// A line in the selected pen from the current position to (x, y), the end
// point itself excluded; the current position moves to (x, y).
bool LineTo(int dc, int x, int y);
// The outline in the selected pen, the inside filled with the selected brush;
// right and bottom are excluded.
bool Rectangle(int dc, int left, int top, int right, int bottom);
// 1 transparent, 2 opaque; answers the old mode, 0 on failure.
int SetBkMode(int dc, int mode);
// Answer the old colour, kInvalidColour on failure.
Colour SetTextColor(int dc, Colour colour);
Colour SetBkColor(int dc, Colour colour);
// The pixel at (x, y); kInvalidColour outside the surface.
Colour GetPixel(int dc, int x, int y);

// Host side: the surfaces a front end makes, fills and reads back (behind the
// tqHost_ exports).

// A white surface with the default font, black text, a black pen and a white
// brush; 0 when it cannot be made (sizes from 1 to 16384).
int CreateSurface(int width, int height);
// Deletes a surface made by CreateSurface; a window's own surface goes with
// its window.
void DeleteSurface(int dc);
// The window's surface (GetDC without a release).
int WindowSurface(int window);
// Forgets the surface of a window that is going away.
void DropWindowSurface(int window);
bool SurfaceSize(int dc, int* width, int* height);
// Fills [left, right) x [top, bottom) with the colour; not written to the
// journal.
bool FillRect(int dc, int left, int top, int right, int bottom, Colour colour);
// Writes the surface as a PNG file (the path as the front ends give it).
bool SavePng(int dc, const char* path);

// The journal of the drawing operations on a surface, one line each, ended
// by "\n": "TextOut X Y TEXT", "MoveTo X Y", "LineTo X Y", "Rectangle L T R
// B", "Pen STYLE WIDTH COLOUR" and "Font FACE HEIGHT WEIGHT CHARSET" when one
// is selected, "BkMode MODE". Colours in six upper-case hex digits, text as
// the GBK bytes drawn. False for no such surface.
bool GetDrawLog(int dc, std::string* log);
void ClearDrawLog(int dc);

}  // namespace tq::gdi
