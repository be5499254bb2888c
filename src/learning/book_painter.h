// Paints the words of a word book into the rows of a front end's list: the
// word, the pronunciation in the pronunciation font, the explanation, and
// under each the list's grey line.
//
// Each painter reads its fixed window of the library at the entry's offset
// (the separator itself, not the byte after it) and cuts its text there
// (learning/book_window.h). The line is fixed at (0, 22)-(600, 22), one row's
// height in the front ends' lists, whatever x and y the text is drawn at.
#pragma once

#include <cstdint>
#include <cstdio>

#include "platform/surface.h"

namespace tq {

constexpr gdi::Colour kUnderlineColour = 0x808080;

class ListPainter {
 public:
  explicit ListPainter(int dc) : dc_(dc) {}

  // The word; offset -1 draws the line alone.
  void Word(std::FILE* lib, int64_t offset, int x, int y);
  // "[pronunciation]" in the pronunciation font; "[]" draws the line alone.
  // An entry with no "[" before its separator draws nothing at all.
  void Pronunciation(std::FILE* lib, int separator, int64_t offset, int x, int y);
  // The explanation without its class mark; answers the width measured with
  // the mark. Offset -1 draws the line alone and answers 0.
  int Explanation(std::FILE* lib, int separator, int64_t offset, int x, int y);

  // Text in the face "pron", bold; in the current font when that face
  // cannot be made.
  void PronText(const char* text, int x, int y);
  void Underline(gdi::Colour colour = kUnderlineColour);

 private:
  int dc_;
};

}  // namespace tq
