#include "dict/word_forms.h"

#include <cstring>

namespace tq::dict {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether buffer ends in suffix, letters folded.
bool EndsWith(const char* buffer, const char* suffix) {
  size_t n = std::strlen(buffer);
  size_t k = std::strlen(suffix);
  if (k > n) return false;
  for (size_t i = 0; i < k; ++i) {
    if (Lower(buffer[n - k + i]) != Lower(suffix[i])) return false;
  }
  return true;
}

}  // namespace

bool StripWordSuffix(char* buffer, const char* suffix) {
  if (!EndsWith(buffer, suffix)) return false;
  size_t n = std::strlen(buffer);
  if (std::strcmp(suffix, "s") == 0) {
    buffer[n - 1] = '\0';
  } else if (std::strcmp(suffix, "ed") == 0 || std::strcmp(suffix, "es") == 0 || std::strcmp(suffix, "er") == 0) {
    buffer[n - 2] = '\0';
  } else if (std::strcmp(suffix, "ing") == 0 || std::strcmp(suffix, "est") == 0) {
    buffer[n - 3] = '\0';
  } else if (std::strcmp(suffix, "ied") == 0 || std::strcmp(suffix, "ies") == 0) {
    buffer[n - 3] = 'y';
    buffer[n - 2] = '\0';
  } else if (std::strcmp(suffix, "r") == 0) {
    if (n < 2 || buffer[n - 2] != 'e') return false;
    buffer[n - 1] = '\0';
  } else {
    return false;  // "d" among them: no edit is known for it
  }
  return true;
}

bool StripDoubledSuffix(char* buffer, const char* suffix) {
  if (!EndsWith(buffer, suffix)) return false;
  long n = static_cast<long>(std::strlen(buffer));
  if (std::strcmp(suffix, "ed") == 0 || std::strcmp(suffix, "er") == 0) {
    if (n >= 4 && buffer[n - 3] == buffer[n - 4]) buffer[n - 3] = '\0';
  } else if (std::strcmp(suffix, "ing") == 0) {
    if (n >= 5 && buffer[n - 4] == buffer[n - 5]) buffer[n - 4] = '\0';
  }
  // Undoubled or not, the buffer is worth a look as it stands.
  return true;
}

bool TrimEdToE(char* buffer) {
  size_t n = std::strlen(buffer);
  if (n < 3) return false;
  if ((buffer[n - 1] == 'd' || buffer[n - 1] == 'D') && (buffer[n - 2] == 'e' || buffer[n - 2] == 'E')) {
    buffer[n - 1] = '\0';
    return true;
  }
  return false;
}

bool TrimIngToE(char* buffer) {
  if (!EndsWith(buffer, "ing")) return false;
  size_t n = std::strlen(buffer);
  buffer[n - 3] = 'e';
  buffer[n - 2] = '\0';
  return true;
}

long OriginalFormChain(const char* word, const std::function<long(const char*)>& lookup, int* step) {
  enum Kind { kStrip, kDoubled, kEdToE, kIngToE };
  struct Step {
    bool refresh;
    Kind kind;
    const char* suffix;
  };
  // The refresh column has gaps: steps 10, 11, 13, 14 and 15 work on what
  // the step before them left.
  static const Step kSteps[15] = {
      {true, kStrip, "s"},    {true, kStrip, "ed"},    {true, kStrip, "d"},    {true, kStrip, "es"},
      {true, kStrip, "ing"},  {true, kStrip, "ied"},   {true, kStrip, "er"},   {true, kStrip, "est"},
      {true, kStrip, "ies"},  {false, kDoubled, "ed"}, {false, kDoubled, "ing"}, {true, kStrip, "r"},
      {false, kDoubled, "er"}, {false, kEdToE, ""},    {false, kIngToE, ""},
  };
  char trial[128];
  size_t n = std::strlen(word);
  if (n >= sizeof trial) n = sizeof trial - 1;
  std::memcpy(trial, word, n);
  trial[n] = '\0';
  for (int i = 0; i < 15; ++i) {
    const Step& s = kSteps[i];
    if (s.refresh) {
      std::memcpy(trial, word, n);
      trial[n] = '\0';
    }
    bool search = false;
    switch (s.kind) {
      case kStrip: search = StripWordSuffix(trial, s.suffix); break;
      case kDoubled: search = StripDoubledSuffix(trial, s.suffix); break;
      case kEdToE: search = TrimEdToE(trial); break;
      case kIngToE: search = TrimIngToE(trial); break;
    }
    if (!search) continue;
    long hit = lookup(trial);
    if (hit >= 0) {
      if (step != nullptr) *step = i + 1;
      return hit;
    }
  }
  return -1;
}

std::string AllWordVarys(const char* word) {
  std::string w(word);
  std::string stem = w.empty() ? w : w.substr(0, w.size() - 1);
  char last = w.empty() ? '\0' : w.back();
  bool ch_sh = w.size() >= 2 && (Lower(w[w.size() - 2]) == 'c' || Lower(w[w.size() - 2]) == 's') &&
               Lower(last) == 'h';
  std::string out;
  auto add = [&out](const std::string& form) { out += form + ","; };
  if (last == 'e' || last == 'E') {
    add(w + "s"), add(w + "d"), add(stem + "ing"), add(w + "r"), add(w + "st");
  } else if (last == 'y' || last == 'Y') {
    add(stem + "ies"), add(stem + "ied"), add(w + "ing"), add(stem + "ier"), add(stem + "iest");
  } else if (last == 's' || last == 'S' || ch_sh) {
    add(w + "es"), add(w + "ed"), add(w + "ing"), add(w + "er"), add(w + "est");
  } else {
    add(w + "ed"), add(w + "ing"), add(w + "er"), add(w + "est");
  }
  return out;
}

}  // namespace tq::dict
