// The printable copy of a quiz page: text boxes, which print badly, become
// underlined answers or blanks to fill in by hand, with an optional list of
// all answers at the foot.
#pragma once

namespace tq::html {

// Lines of the quiz page and of the answer list are read to this many bytes.
constexpr int kPrintableLine = 9999;
// An answer put in place of a box is read to this many bytes.
constexpr int kFilledAnswer = 98;

// blankMode 0 fills the boxes from the answer file (one answer a line, in
// the order of the boxes); otherwise they become blanks, numbered from 1 if
// numbered is set, and an answer file, if given, is listed at the foot.
// 1, or -1 when the page cannot be read or the copy cannot be created.
int GenPrintablePage(const char* srcPath, const char* dstPath, const char* answerPath, int blankMode,
                     int numbered);

}  // namespace tq::html
