// The small text and array operations everything else stands on.
//
// Strings are NUL-terminated GBK: a byte below 128 is a character of its own,
// a byte of 128 or above begins or continues a double-byte character. Only
// BreakLine, CStrRtrim, HalfWidthPunctuation and CharLength follow that
// structure; the others look at single bytes, and a high byte simply counts
// as "not English". Most work in place and trust the caller for room.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace tq {

// Trimming, in place.
void Ltrim(char* s);                 // leading blanks and tabs; CR and LF stay
void Rtrim(char* s);                 // trailing blanks; an all-blank string keeps one
void StrongRtrim(char* s);           // trailing blanks, tabs, CR and LF
void NoBlankAndReturnChar(char* s);  // leading blanks, trailing white, never the first byte
void CStrRtrim(char* s, int n);      // at most n bytes, never half a character
int AdjustCrLf(char* s);             // repairs line ends; answers the index reached
int BreakLine(char* s, int width);   // wraps; answers the new length (s needs room to grow)

// Tests.
bool IsEnglishWord(const char* s);  // no byte of 128 or above
bool IsChinese(const char* s);      // first byte of 128 or above
bool IsExpress(const char* s);      // several words
bool IsValidFileName(const char* s);
bool IsWordInSentence(const char* sentence, const char* word, int* position);

// Conversions; those with an output answer its length.
int RemoveChineseTail(const char* src, char* out);
int TtsChineseText(const char* src, char* out);
int SentenceToFileName(const char* src, char* out);
void RestoreUrlSentence(char* s);  // "#" -> "?", "~" -> double quote
void StrEqualReplace(char* text, const char* from, const char* to);
int FileNameFromPath(const char* path, char* out);
int FileExtName(char* path, char* out);
void HalfWidthPunctuation(char* s);

// Length in characters as the front ends count them.
int CharLength(const char* s);
// Compares with the letters A to Z folded to lower case.
int FoldCompare(const char* a, const char* b);
void AsciiUpper(char* s);
void AsciiLower(char* s);

// Memory text: a cursor over a NUL-terminated text.
int MemoryNextLine(const char* text, int32_t* position, char* out);
int MemoryNextWord(const char* text, int32_t* position, char* out);

// Arrays.
void SortInts(int32_t* a, int count);
int FindFirstInt(const int32_t* a, int count, int32_t value);
void SortUints(uint32_t* a, int count);
int RemoveSameUints(uint32_t* a, int count);
// The library's shuffle: reseeds from the clock, then from the last element
// down to element 2 swaps each with element r*r mod i. Element 1 is never
// the start of a swap, and arrays shorter than three stay as they are.
void ShuffleInts(int32_t* a, int count);

// "*" any run, "?" any byte, letters case-blind. Lower-cases the pattern in
// place. Words of 39 bytes or more and patterns of 30 or more never match.
bool WildMatch(const char* word, char* pattern);
// Pieces of WildMatch. NextPatternSegment skips stars from *pos: -2 when
// nothing is left, -1 when only stars are left, else the number of stars
// skipped with the segment behind them in *segment. FindPatternSegment
// answers where the segment first stands in word from `from` ("?" matches
// any byte), or -10000.
int NextPatternSegment(const char* pattern, int pos, std::string* segment);
int FindPatternSegment(const char* word, int from, const std::string& segment);

// Reads an open text file a line at a time through a 1000-byte buffer: at
// most 998 bytes a line (a longer one arrives in pieces), trailing CR, LF,
// tabs and blanks and leading tabs and blanks removed.
class LineReader {
 public:
  static constexpr int kBufferSize = 1000;
  explicit LineReader(std::FILE* file) : file_(file) {}
  // The next line into out (room for kBufferSize bytes) and its length, or
  // -1 at the end of the file.
  int Next(char* out);
  int Next(std::string* out);

 private:
  std::FILE* file_;
};

}  // namespace tq
