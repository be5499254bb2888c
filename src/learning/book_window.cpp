#include "learning/book_window.h"

#include <climits>

#include "learning/book.h"

namespace tq {
namespace {

constexpr size_t kLongWord = 31;     // a word this long or longer is cut ...
constexpr size_t kLongWordCut = 29;  // ... to this
constexpr size_t kPronCloseLimit = 62;
constexpr size_t kPaintedTextEnd = 188;

bool Is(char c, int value) { return static_cast<unsigned char>(c) == value; }

size_t Find(const LibraryWindow& w, char c, size_t from) {
  for (size_t i = from; i < w.size(); ++i) {
    if (w.data()[i] == c) return i;
  }
  return std::string::npos;
}

// Bytes [begin, end) of the window as a C string would hold them.
std::string Text(const LibraryWindow& w, size_t begin, size_t end) {
  if (end <= begin) return std::string();
  std::string s(w.data() + begin, end - begin);
  return s.substr(0, s.find('\0'));
}

void DropHighTail(std::string* s) {
  while (!s->empty() && static_cast<unsigned char>(s->back()) >= 128) s->pop_back();
}

}  // namespace

LibraryWindow::LibraryWindow(std::FILE* lib, int64_t pos, size_t size) : bytes_(size, '\0') {
  if (lib == nullptr || pos < 0 || pos > LONG_MAX || std::fseek(lib, static_cast<long>(pos), SEEK_SET) != 0) return;
  read_ = std::fread(&bytes_[0], 1, size, lib);
}

std::string ListWord(const LibraryWindow& w) {
  size_t end = Find(w, '[', 0);
  if (end == std::string::npos) end = w.size();
  if (end >= kLongWord) end = kLongWordCut;
  std::string word = Text(w, 0, end);
  DropHighTail(&word);
  return word;
}

std::string PaintedWord(const LibraryWindow& w) {
  size_t end = Find(w, '[', 0);
  if (end == std::string::npos) end = w.size();
  std::string word = Text(w, 1, end);
  DropHighTail(&word);
  return word;
}

bool ListExplanation(const LibraryWindow& w, int separator, std::string* text) {
  size_t close = Find(w, ']', 0);
  if (close == std::string::npos) return false;
  size_t end = close + 1;
  while (end < w.size() && !Is(w.data()[end], separator)) ++end;
  *text = Text(w, close + 1, end);
  int32_t ignored;
  SplitClassMark(text, &ignored);
  return true;
}

bool PaintedPronunciation(const LibraryWindow& w, int separator, std::string* text) {
  size_t open = std::string::npos;
  for (size_t i = 1; i < w.size(); ++i) {
    if (w.data()[i] == '[') {
      open = i;
      break;
    }
    if (Is(w.data()[i], separator)) return false;
  }
  if (open == std::string::npos) return false;
  size_t close = open + 1;
  while (close < kPronCloseLimit && close < w.size() && w.data()[close] != ']') ++close;
  // The "]" is put in place whether it was found or the window ran out.
  *text = Text(w, open, close) + "]";
  return true;
}

bool PaintedExplanation(const LibraryWindow& w, int separator, std::string* text) {
  size_t close = Find(w, ']', 0);
  if (close == std::string::npos) return false;
  size_t begin = close + 1;
  if (begin < w.size() && w.data()[begin] == '~') ++begin;
  size_t end = begin;
  while (end < kPaintedTextEnd && end < w.size()) {
    char c = w.data()[end];
    if (Is(c, separator) || c == '*' || c == '~') break;
    ++end;
  }
  *text = Text(w, begin, end);
  return true;
}

size_t ClassMarkLength(const std::string& text) {
  std::string copy = text;
  int32_t ignored;
  return SplitClassMark(&copy, &ignored) ? 4 : 0;
}

}  // namespace tq
