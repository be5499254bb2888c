#include "learning/book_painter.h"

#include <cstring>
#include <string>

#include "learning/book_window.h"

namespace tq {
namespace {

constexpr int kLineY = 22;
constexpr int kLineEnd = 600;
constexpr int32_t kPronWeight = 700;
constexpr uint8_t kDefaultCharset = 1;

}  // namespace

void ListPainter::Underline(gdi::Colour colour) {
  int pen = gdi::CreatePen(gdi::kPsSolid, 1, colour);
  int old = pen != 0 ? gdi::SelectObject(dc_, pen) : 0;
  gdi::MoveToEx(dc_, 0, kLineY, nullptr);
  gdi::LineTo(dc_, kLineEnd, kLineY);
  if (old != 0) gdi::SelectObject(dc_, old);
  if (pen != 0) gdi::DeleteObject(pen);
}

void ListPainter::PronText(const char* text, int x, int y) {
  gdi::LogFont face;
  face.weight = kPronWeight;
  face.charSet = kDefaultCharset;
  std::strncpy(face.faceName, "pron", sizeof face.faceName - 1);
  int font = gdi::CreateFontIndirectA(&face);
  int old = font != 0 ? gdi::SelectObject(dc_, font) : 0;
  gdi::TextOutA(dc_, x, y, text, static_cast<int>(std::strlen(text)));
  if (old != 0) gdi::SelectObject(dc_, old);
  if (font != 0) gdi::DeleteObject(font);
}

void ListPainter::Word(std::FILE* lib, int64_t offset, int x, int y) {
  if (offset != -1) {
    std::string word = PaintedWord(LibraryWindow(lib, offset, kWordWindow));
    if (!word.empty()) gdi::TextOutA(dc_, x, y, word.data(), static_cast<int>(word.size()));
  }
  Underline();
}

void ListPainter::Pronunciation(std::FILE* lib, int separator, int64_t offset, int x, int y) {
  std::string pron;
  if (!PaintedPronunciation(LibraryWindow(lib, offset, kPronWindow), separator, &pron)) return;
  if (pron != "[]") PronText(pron.c_str(), x, y);
  Underline();
}

int ListPainter::Explanation(std::FILE* lib, int separator, int64_t offset, int x, int y) {
  int width = 0;
  std::string text;
  if (offset != -1 && PaintedExplanation(LibraryWindow(lib, offset, kPaintWindow), separator, &text)) {
    // The class mark is not shown, but the width is the whole text's.
    size_t mark = ClassMarkLength(text);
    if (text.size() > mark) {
      gdi::TextOutA(dc_, x, y, text.data() + mark, static_cast<int>(text.size() - mark));
    }
    gdi::Size size{0, 0};
    if (!text.empty() && gdi::GetTextExtentPoint32A(dc_, text.data(), static_cast<int>(text.size()), &size)) {
      width = size.cx;
    }
  }
  Underline();
  return width;
}

}  // namespace tq
