#include "lesson/pattern.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "sound/wave_file.h"

namespace tq::lesson {
namespace {

constexpr size_t kBareNumberBytes = 16;
constexpr size_t kPauseNumberBytes = 15;

bool IsNumberByte(char c) { return (c >= '0' && c <= '9') || c == '.'; }

void AddPause(const std::string& digits, std::vector<PatternStep>* steps) {
  const int32_t ms = PauseMs(digits);
  if (ms != 0) steps->push_back({PatternStep::kPause, ms});
}

}  // namespace

bool TakeECTextPrefix(std::string* pattern) {
  const size_t n = std::strlen(kECTextPrefix);
  if (pattern->compare(0, n, kECTextPrefix) != 0) return false;
  pattern->erase(0, n);
  return true;
}

int32_t PauseMs(const std::string& seconds) {
  // Read without the locale: a point is the decimal point whatever the
  // user's language.
  double value = 0;
  const char* first = seconds.data();
  const char* last = first + seconds.size();
  if (std::from_chars(first, last, value, std::chars_format::fixed).ec != std::errc()) value = 0;
  return sound::TruncateToInt(value * 1000.0);
}

std::vector<PatternStep> ParsePattern(const std::string& p) {
  std::vector<PatternStep> steps;
  const size_t n = p.size();
  size_t i = 0;
  while (i < n) {
    switch (p[i]) {
      case 'A': steps.push_back({PatternStep::kWord, 0}); ++i; break;
      case 'B': steps.push_back({PatternStep::kExplanation, 0}); ++i; break;
      case 'C': steps.push_back({PatternStep::kSpell, 0}); ++i; break;
      case 'S': steps.push_back({PatternStep::kSentences, 0}); ++i; break;
      case 'N': {
        const size_t start = ++i;
        while (i < n && IsNumberByte(p[i])) ++i;
        AddPause(p.substr(start, std::min(i - start, kPauseNumberBytes)), &steps);
        // Digits that end the pattern are read once more as a bare number.
        if (i == n) i = start;
        break;
      }
      default:
        if (IsNumberByte(p[i])) {
          const size_t start = i;
          while (i < n && IsNumberByte(p[i]) && i - start < kBareNumberBytes) ++i;
          AddPause(p.substr(start, i - start), &steps);
        } else {
          ++i;  // "H" and anything unknown
        }
        break;
    }
  }
  return steps;
}

}  // namespace tq::lesson
