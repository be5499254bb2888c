#include "core/text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/random.h"

namespace tq {
namespace {

inline bool IsHigh(unsigned char c) { return c >= 128; }
inline bool IsAsciiLetter(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
inline char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
inline bool IsBlankOrTab(char c) { return c == ' ' || c == '\t'; }
inline bool IsTrailingWhite(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string LowerCopy(const char* s) {
  std::string out(s);
  for (char& c : out) c = Lower(c);
  return out;
}

}  // namespace

void Ltrim(char* s) {
  size_t skip = 0;
  while (IsBlankOrTab(s[skip])) ++skip;
  if (skip > 0) std::memmove(s, s + skip, std::strlen(s + skip) + 1);
}

void Rtrim(char* s) {
  size_t n = std::strlen(s);
  while (n > 1 && s[n - 1] == ' ') --n;  // the first byte is left standing
  s[n] = '\0';
}

void StrongRtrim(char* s) {
  size_t n = std::strlen(s);
  while (n > 0 && IsTrailingWhite(s[n - 1])) --n;
  s[n] = '\0';
}

void NoBlankAndReturnChar(char* s) {
  size_t skip = 0;
  while (s[skip] == ' ') ++skip;
  if (skip > 0) std::memmove(s, s + skip, std::strlen(s + skip) + 1);
  size_t n = std::strlen(s);
  while (n > 1 && IsTrailingWhite(s[n - 1])) --n;
  s[n] = '\0';
}

void CStrRtrim(char* s, int n) {
  if (n < 0) n = 0;
  size_t len = std::strlen(s);
  if (len <= static_cast<size_t>(n)) return;
  // Walk from the start so that we know which half of a pair s[n] is.
  bool prev_first = false;
  bool second_at_n = false;
  for (int i = 0; i <= n; ++i) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    bool second = prev_first && IsHigh(c);
    if (i == n) second_at_n = second;
    prev_first = !second && IsHigh(c);
  }
  s[second_at_n ? n - 1 : n] = '\0';
}

int AdjustCrLf(char* s) {
  int i = 0;
  for (; s[i] != '\0'; ++i) {
    char c = s[i];
    if (c == '\r') {
      char next = s[i + 1];
      if (next == '\n' || next == '\r' || next == ' ' || next == '\t') {
        s[i + 1] = '\n';
        ++i;
      } else if (i > 0 && (s[i - 1] == '\r' || s[i - 1] == ' ' || s[i - 1] == '\t')) {
        s[i - 1] = '\r';
        s[i] = '\n';
      }
    } else if (c == '\n') {
      s[i] = ' ';
    }
  }
  return i;
}

int BreakLine(char* s, int width) {
  if (s == nullptr || s[0] == '\0') return 0;
  size_t len = std::strlen(s);
  std::string out;
  out.reserve(len * 2);
  int column = 0;
  bool second_half = false;
  // Widths come from the caller unchecked; the margin is taken in 64 bits
  // so that the lowest width cannot overflow.
  const int64_t margin = static_cast<int64_t>(width) - 2;
  for (size_t i = 0; i < len; ++i) {
    char c = s[i];
    unsigned char u = static_cast<unsigned char>(c);
    if (c == '\r' || c == '\n') {
      out.push_back(c);
      column = 0;
      second_half = false;
    } else if (!IsHigh(u) && c != ' ') {
      out.push_back(c);
      ++column;
      second_half = false;
    } else if (c == ' ') {
      // A blank takes no column of its own; it is where English may break.
      if (column < margin) {
        out.push_back(c);
      } else {
        out += "\r\n";
        column = 0;
      }
    } else if (!second_half) {
      out.push_back(c);
      ++column;
      second_half = true;
    } else {
      second_half = false;
      out.push_back(c);
      if (column < margin || s[i + 1] == '\r') {
        ++column;
      } else {
        out += "\r\n";
        column = 0;
      }
    }
  }
  std::memcpy(s, out.c_str(), out.size() + 1);
  return static_cast<int>(out.size());
}

bool IsEnglishWord(const char* s) {
  for (; *s; ++s) {
    if (IsHigh(static_cast<unsigned char>(*s))) return false;
  }
  return true;
}

bool IsChinese(const char* s) { return IsHigh(static_cast<unsigned char>(s[0])); }

bool IsExpress(const char* s) {
  std::vector<char> copy(s, s + std::strlen(s) + 1);
  Rtrim(copy.data());
  return std::strchr(copy.data(), ' ') != nullptr;
}

bool IsValidFileName(const char* s) { return std::strpbrk(s, "\\/:?|<>\"*") == nullptr; }

bool IsWordInSentence(const char* sentence, const char* word, int* position) {
  std::string text = LowerCopy(sentence);
  std::string w = LowerCopy(word);
  if (w.empty()) return false;
  size_t scan = 0;
  for (;;) {
    size_t at = text.find(w, scan);
    if (at == std::string::npos) return false;
    size_t end = at + w.size();
    bool after_ok = end >= text.size() || !IsAsciiLetter(static_cast<unsigned char>(text[end]));
    bool before_ok = at == 0 || !IsAsciiLetter(static_cast<unsigned char>(text[at - 1]));
    // At the scan position itself only the byte behind is tested.
    if (after_ok && (at == scan || before_ok)) {
      if (position) *position = static_cast<int>(at);
      return true;
    }
    scan = end;
  }
}

int RemoveChineseTail(const char* src, char* out) {
  size_t n = 0;
  while (src[n] != '\0' && !IsHigh(static_cast<unsigned char>(src[n]))) ++n;
  std::memcpy(out, src, n);
  out[n] = '\0';
  StrongRtrim(out);
  return static_cast<int>(std::strlen(out));
}

int TtsChineseText(const char* src, char* out) {
  int n = 0;
  for (const char* p = src; *p; ++p) {
    unsigned char c = static_cast<unsigned char>(*p);
    if (IsHigh(c) || (c >= '0' && c <= '9') || std::strchr(",;?!'\"", c) != nullptr) {
      out[n++] = static_cast<char>(c);
    } else if (c == '(' || c == '[' || c == ']' || c == '.') {
      out[n++] = ',';
    }
  }
  out[n] = '\0';
  return n;
}

int SentenceToFileName(const char* src, char* out) {
  int n = 0;
  for (const char* p = src; *p; ++p) {
    switch (*p) {
      case 1:
      case 2:
        break;
      case '?': out[n++] = '@'; break;
      case '"': out[n++] = '^'; break;
      case ':': out[n++] = '#'; break;
      case '/': out[n++] = '&'; break;
      default: out[n++] = *p; break;
    }
  }
  out[n] = '\0';
  return n;
}

void RestoreUrlSentence(char* s) {
  for (; *s; ++s) {
    if (*s == '#') *s = '?';
    else if (*s == '~') *s = '"';
  }
}

void StrEqualReplace(char* text, const char* from, const char* to) {
  size_t n = std::strlen(from);
  if (n == 0 || n != std::strlen(to)) return;
  for (char* p = std::strstr(text, from); p != nullptr; p = std::strstr(p + n, from)) std::memcpy(p, to, n);
}

int FileNameFromPath(const char* path, char* out) {
  const char* slash = std::strrchr(path, '\\');
  if (slash == nullptr || slash == path) return 0;
  std::strcpy(out, slash + 1);
  return static_cast<int>(std::strlen(out));
}

int FileExtName(char* path, char* out) {
  const char* dot = std::strrchr(path, '.');
  if (dot == nullptr) {
    path[0] = '\0';  // the caller's path, not out, is cleared
    return 0;
  }
  std::strcpy(out, dot);
  return static_cast<int>(std::strlen(out));
}

void HalfWidthPunctuation(char* s) {
  struct Pair {
    unsigned char first, second;
    char ascii;
  };
  static const Pair kPairs[] = {{0xA1, 0xA1, ' '}, {0xA1, 0xA3, '.'}, {0xA1, 0xAF, '\''},
                                {0xA3, 0xA1, '!'}, {0xA3, 0xAC, ','}, {0xA3, 0xAE, '.'},
                                {0xA3, 0xBA, ':'}, {0xA3, 0xBB, ';'}, {0xA3, 0xBF, '?'}};
  for (size_t i = 0; s[i] != '\0'; ++i) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    if (!IsHigh(c)) continue;
    if (s[i + 1] == '\0') break;
    unsigned char d = static_cast<unsigned char>(s[i + 1]);
    for (const Pair& p : kPairs) {
      if (p.first == c && p.second == d) {
        s[i] = p.ascii;
        s[i + 1] = ' ';
        break;
      }
    }
    ++i;
  }
}

int CharLength(const char* s) {
  int bytes = 0;
  int high = 0;
  for (; s[bytes] != '\0'; ++bytes) {
    if (IsHigh(static_cast<unsigned char>(s[bytes]))) ++high;
  }
  return bytes - high / 2 + (high % 2);
}

int FoldCompare(const char* a, const char* b) {
  for (;; ++a, ++b) {
    unsigned char x = static_cast<unsigned char>(Lower(*a));
    unsigned char y = static_cast<unsigned char>(Lower(*b));
    if (x != y || x == 0) return static_cast<int>(x) - static_cast<int>(y);
  }
}

void AsciiUpper(char* s) {
  for (; *s; ++s) {
    if (*s >= 'a' && *s <= 'z') *s = static_cast<char>(*s - 'a' + 'A');
  }
}

void AsciiLower(char* s) {
  for (; *s; ++s) *s = Lower(*s);
}

int MemoryNextLine(const char* text, int32_t* position, char* out) {
  const char* p = text + *position;
  if (*p == '\0') return -1;
  int n = 0;
  while (p[n] != '\0' && p[n] != '\r' && p[n] != '\n') {
    out[n] = p[n];
    ++n;
  }
  out[n] = '\0';
  int32_t next = *position + n;
  if (p[n] != '\0') {
    // Any two line-end bytes in a row make one line end.
    next += (p[n + 1] == '\r' || p[n + 1] == '\n') ? 2 : 1;
  }
  *position = next;
  return n;
}

int MemoryNextWord(const char* text, int32_t* position, char* out) {
  const char* p = text + *position;
  int skip = 0;
  while (p[skip] != '\0' && !IsAsciiLetter(static_cast<unsigned char>(p[skip]))) ++skip;
  int n = 0;
  while (IsAsciiLetter(static_cast<unsigned char>(p[skip + n]))) {
    out[n] = p[skip + n];
    ++n;
  }
  out[n] = '\0';
  *position += skip + n;
  return n;
}

void SortInts(int32_t* a, int count) {
  if (count > 1) std::sort(a, a + count);
}

int FindFirstInt(const int32_t* a, int count, int32_t value) {
  if (count <= 0) return -1;
  const int32_t* it = std::lower_bound(a, a + count, value);
  return (it != a + count && *it == value) ? static_cast<int>(it - a) : -1;
}

void SortUints(uint32_t* a, int count) {
  if (count <= 1) return;
  // Ordered by the sign of the 32-bit difference, as the suite always has:
  // values more than 2^31 apart compare the other way round.
  std::qsort(a, static_cast<size_t>(count), sizeof(uint32_t), [](const void* x, const void* y) {
    uint32_t d = *static_cast<const uint32_t*>(x) - *static_cast<const uint32_t*>(y);
    return d == 0 ? 0 : (d & 0x80000000u) ? -1 : 1;
  });
}

int RemoveSameUints(uint32_t* a, int count) {
  if (count <= 0) return 0;
  return static_cast<int>(std::unique(a, a + count) - a);
}

void ShuffleInts(int32_t* a, int count) {
  SeedRandomFromClock();
  for (int i = count - 1; i >= 2; --i) {
    uint32_t r = static_cast<uint32_t>(Random15());
    uint32_t j = (r * r) % static_cast<uint32_t>(i);
    std::swap(a[i], a[j]);
  }
}

int NextPatternSegment(const char* pattern, int pos, std::string* segment) {
  int stars = 0;
  while (pattern[pos] == '*') {
    ++pos;
    ++stars;
  }
  if (pattern[pos] == '\0') return stars > 0 ? -1 : -2;
  segment->clear();
  while (pattern[pos] != '\0' && pattern[pos] != '*') segment->push_back(pattern[pos++]);
  return stars;
}

int FindPatternSegment(const char* word, int from, const std::string& segment) {
  int len = static_cast<int>(std::strlen(word));
  int n = static_cast<int>(segment.size());
  for (int at = from; at + n <= len; ++at) {
    int k = 0;
    while (k < n && (segment[k] == '?' || segment[k] == word[at + k])) ++k;
    if (k == n) return at;
  }
  return -10000;
}

bool WildMatch(const char* word_in, char* pattern) {
  if (std::strlen(word_in) >= 39) return false;
  AsciiLower(pattern);
  std::string word = LowerCopy(word_in);
  if (std::strlen(pattern) >= 30) return false;

  int word_pos = 0;
  int pat_pos = 0;
  std::string last_segment;
  std::string segment;
  if (pattern[0] != '*') {
    segment.clear();
    while (pattern[pat_pos] != '\0' && pattern[pat_pos] != '*') segment.push_back(pattern[pat_pos++]);
    if (FindPatternSegment(word.c_str(), 0, segment) != 0) return false;
    word_pos = static_cast<int>(segment.size());
  }
  for (;;) {
    int stars = NextPatternSegment(pattern, pat_pos, &segment);
    if (stars == -1) return true;
    if (stars == -2) {
      if (word_pos == static_cast<int>(word.size())) return true;
      if (last_segment.empty()) return false;
      // The first place a final segment stands need not be the last: the
      // word must then end in it, "?" taken literally here.
      return word.size() >= last_segment.size() &&
             word.compare(word.size() - last_segment.size(), last_segment.size(), last_segment) == 0;
    }
    int at = FindPatternSegment(word.c_str(), word_pos, segment);
    if (at < 0) return false;
    pat_pos += stars + static_cast<int>(segment.size());
    word_pos = at + static_cast<int>(segment.size());
    last_segment = segment;
  }
}

int LineReader::Next(char* out) {
  if (std::fgets(out, kBufferSize - 1, file_) == nullptr) return -1;
  StrongRtrim(out);
  Ltrim(out);
  return static_cast<int>(std::strlen(out));
}

int LineReader::Next(std::string* out) {
  char buf[kBufferSize];
  int n = Next(buf);
  if (n < 0) return -1;
  out->assign(buf, static_cast<size_t>(n));
  return n;
}

}  // namespace tq
