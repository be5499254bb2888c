#include "core/word_text.h"

#include <climits>
#include <cstring>

#include "core/streams.h"
#include "core/text.h"
#include "platform/env.h"

namespace tq {
namespace {

bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 128; }

// Copies the bytes [from, to) of s into out.
void CopyRange(const char* s, size_t from, size_t to, char* out) {
  std::memcpy(out, s + from, to - from);
  out[to - from] = '\0';
}

// A line trimmed at both ends, as every reader here takes it.
void TrimBoth(char* s) {
  Ltrim(s);
  StrongRtrim(s);
}

}  // namespace

EnglishTextFileTable& EnglishTextFiles() {
  static EnglishTextFileTable table;
  return table;
}

EnglishTextFile::~EnglishTextFile() {
  if (file_ != nullptr) std::fclose(file_);
}

bool EnglishTextFile::Open(const char* path) {
  file_ = env::Open(path, "rb");
  return file_ != nullptr;
}

bool EnglishTextFile::NextTextLine() {
  if (file_ == nullptr) return false;
  do {
    if (std::fgets(line_, kLineBuffer - 1, file_) == nullptr) return false;
    TrimBoth(line_);
  } while (line_[0] == '\0');
  return true;
}

int EnglishTextFile::NextItem(char* english, char* chinese) {
  english[0] = '\0';
  chinese[0] = '\0';
  if (split_lines_) {
    if (!NextTextLine()) return -1;
    SplitLine(english, chinese);
    return 1;
  }
  return NextAlternate(english, chinese);
}

int EnglishTextFile::NextAlternate(char* english, char* chinese) {
  if (!pending_) {
    // Chinese lines with no English line before them are passed over.
    do {
      if (!NextTextLine()) return -1;
    } while (!IsEnglishWord(line_));
  }
  std::strcpy(english, line_);
  if (!NextTextLine()) {
    pending_ = false;
    return 1;
  }
  if (IsEnglishWord(line_)) {
    pending_ = true;  // an item with no meaning; this line is the next one
    return 1;
  }
  std::strcpy(chinese, line_);
  pending_ = false;
  return 1;
}

void EnglishTextFile::SplitLine(char* english, char* chinese) {
  char* s = line_;
  HalfWidthPunctuation(s);
  TrimBoth(s);
  size_t c = 0;
  while (s[c] != '\0' && !IsHigh(s[c])) ++c;
  if (s[c] == '\0') {
    std::strcpy(english, s);
    return;
  }
  size_t d = c;
  while (d > 0 && s[d - 1] != '.') --d;
  if (d == 0) {
    // No mark: the meaning starts at the first Chinese character.
    CopyRange(s, 0, c, english);
    StrongRtrim(english);
    std::strcpy(chinese, s + c);
    return;
  }
  --d;  // the dot
  if ((d >= 3 && std::strncmp(s + d - 3, "sth", 3) == 0) || (d >= 2 && std::strncmp(s + d - 2, "sb", 2) == 0)) {
    // "do sth." and "tell sb.": the dot closes the English phrase.
    CopyRange(s, 0, d + 1, english);
    std::strcpy(chinese, s + d + 1);
    Ltrim(chinese);
    return;
  }
  // The dot closes a part-of-speech mark, which stays with the meaning.
  size_t b = d;
  while (b > 0 && s[b - 1] != ' ' && s[b - 1] != '\t') --b;
  if (b == 0) return;  // nothing but the mark before the meaning
  CopyRange(s, 0, b, english);
  StrongRtrim(english);
  std::strcpy(chinese, s + b);
  Ltrim(chinese);
}

int OpenEnglishTextFile(const char* path, bool splitLines) {
  EnglishTextFileTable& table = EnglishTextFiles();
  int h = table.New(splitLines);
  if (h == EnglishTextFileTable::kFull) return h;
  EnglishTextFile* f = table.Get(h);
  if (f == nullptr || path == nullptr || !f->Open(path)) {
    table.Spend(h);
    return -1;
  }
  return h;
}

int InitWordFile(WordFileObj* obj, const char* path, char* buffer, uint32_t bufferSize) {
  obj->buffer = buffer;
  obj->bufferSize = bufferSize;
  obj->hFile = StreamOpen(path, "rb");
  return obj->hFile != 0 ? 1 : -1;
}

int NextWordFromWordFile(WordFileObj* obj, char* word, char* mean) {
  word[0] = '\0';
  mean[0] = '\0';
  std::FILE* f = StreamFile(obj->hFile);
  char* line = obj->buffer;
  // A buffer too small for one byte and its end would never move on.
  if (f == nullptr || line == nullptr || obj->bufferSize < 2) return -1;
  int size = obj->bufferSize > INT_MAX ? INT_MAX : static_cast<int>(obj->bufferSize);
  if (std::fgets(line, size, f) == nullptr) return -1;
  TrimBoth(line);
  if (line[0] == '\0' || !IsEnglishWord(line)) return 0;
  std::strcpy(word, line);
  long mark = std::ftell(f);
  if (std::fgets(line, size, f) == nullptr) return -1;
  TrimBoth(line);
  if (IsEnglishWord(line)) {
    // The next word, or an empty line: read it again on the next call.
    std::fseek(f, mark, SEEK_SET);
  } else {
    std::strcpy(mean, line);
  }
  return static_cast<int>(std::strlen(word));
}

int CloseLeadingStream(TqStream* stream) {
  if (*stream == 0) return -1;
  int r = StreamClose(*stream);
  *stream = 0;
  return r;
}

}  // namespace tq
