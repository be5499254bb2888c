// Fuzzes the in-place text operations that take whatever a file or a
// caller gives them: WildMatch, BreakLine and AdjustCrLf.
//
// Input: one byte choosing the operation, four bytes of width for
// BreakLine, then the text (for WildMatch, word and pattern split at the
// first zero byte). Buffers are exactly as large as each operation
// promises to need, so that a write past the promise is caught.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/text.h"

namespace {

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  uint8_t op = data[0] % 3;
  int32_t width;
  std::memcpy(&width, data + 1, 4);
  const char* text = reinterpret_cast<const char*>(data + 5);
  size_t n = size - 5;

  if (op == 0) {
    const char* zero = static_cast<const char*>(std::memchr(text, 0, n));
    size_t wordLen = zero ? static_cast<size_t>(zero - text) : n;
    std::vector<char> word(text, text + wordLen);
    word.push_back('\0');
    std::vector<char> pattern;
    if (zero) pattern.assign(zero + 1, text + n);
    pattern.push_back('\0');
    size_t patternLen = std::strlen(pattern.data());
    bool matched = tq::WildMatch(word.data(), pattern.data());
    Check(std::strlen(pattern.data()) == patternLen);  // lower-cased, never cut
    // A pattern without wildcards matches exactly its own word, case aside.
    if (wordLen < 39 && patternLen < 30 && patternLen > 0 && std::strchr(pattern.data(), '*') == nullptr &&
        std::strchr(pattern.data(), '?') == nullptr && std::strlen(word.data()) == wordLen) {
      std::vector<char> lower(word);
      tq::AsciiLower(lower.data());
      Check(matched == (std::strcmp(lower.data(), pattern.data()) == 0));
    }
    // A lone star matches every word short enough.
    char star[] = "*";
    if (std::strlen(word.data()) < 39) Check(tq::WildMatch(word.data(), star));
    return 0;
  }

  std::vector<char> s(text, text + n);
  s.push_back('\0');
  size_t len = std::strlen(s.data());
  if (op == 1) {
    // BreakLine may double the text; the caller gives that room and no more.
    s.resize(2 * len + 1);
    int out = tq::BreakLine(s.data(), width);
    Check(out >= 0 && static_cast<size_t>(out) == std::strlen(s.data()));
    Check(static_cast<size_t>(out) <= 2 * len);
  } else {
    int reached = tq::AdjustCrLf(s.data());
    Check(std::strlen(s.data()) == len);  // the length stays
    Check(reached >= 0 && static_cast<size_t>(reached) <= len + 1);
  }
  return 0;
}
