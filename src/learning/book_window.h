// The text that the quick readers and the list painters take out of a word
// book's library.
//
// They do not parse an entry: each reads a small fixed window of the
// library at the entry and cuts its text out by the delimiters it finds
// there, which keeps a list of words cheap to paint. Whatever the library
// holds, nothing outside the window is ever taken: an entry whose delimiter
// lies beyond it is cut at the window's end. Bytes of the window past the
// end of the file read as 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace tq {

// Window sizes, in bytes.
constexpr size_t kWordWindow = 40;      // the word, for reading and for painting
constexpr size_t kPronWindow = 64;      // the pronunciation, for painting
constexpr size_t kExplainWindow = 98;   // the explanation, for reading
constexpr size_t kPaintWindow = 190;    // the explanation, for painting

// A window of the library read at pos; the bytes past the end of the file
// are 0. read() is how many bytes came, 0 when pos cannot be reached.
class LibraryWindow {
 public:
  LibraryWindow(std::FILE* lib, int64_t pos, size_t size);
  const char* data() const { return bytes_.data(); }
  size_t size() const { return bytes_.size(); }
  size_t read() const { return read_; }

 private:
  std::string bytes_;
  size_t read_ = 0;
};

// The word of an entry, from a window read just past its leading separator:
// up to the "[" (a word of 31 bytes or more is cut to 29), then up to its
// first 0, with trailing bytes of 128 or above dropped so that no half (or
// whole) Chinese character running into the cut is kept.
std::string ListWord(const LibraryWindow& w);

// The word as a list paints it, from a window read at the separator itself:
// the bytes after the separator up to the "[", trailing bytes of 128 or
// above dropped.
std::string PaintedWord(const LibraryWindow& w);

// The explanation, from a window read just past the leading separator: from
// the first "]" to the separator after it, a class mark dropped. False when
// there is no "]" in the window.
bool ListExplanation(const LibraryWindow& w, int separator, std::string* text);

// The pronunciation as painted, from a window read at the separator: the
// first "[" after the separator's byte (false when the separator or the
// window's end comes first), through its "]", or cut with a "]" of its own
// where the window runs out.
bool PaintedPronunciation(const LibraryWindow& w, int separator, std::string* text);

// The explanation as painted, from a window read at the separator: after the
// first "]" (and one "~" behind it), up to the separator, "*", "~" or byte
// 188. The text keeps its class mark: it is measured with it. False when
// there is no "]" in the window.
bool PaintedExplanation(const LibraryWindow& w, int separator, std::string* text);

// The length of a text's opening class mark "{nn}", 4, or 0 when it has none.
size_t ClassMarkLength(const std::string& text);

}  // namespace tq
