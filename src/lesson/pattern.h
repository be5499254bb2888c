// The playing pattern of a lesson: single-letter commands and pauses, run
// from left to right once for every word.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tq::lesson {

// A pattern that begins so plays the word with its explanation as one
// caption, and its "B" does nothing.
constexpr char kECTextPrefix[] = "ECText#";

struct PatternStep {
  enum Kind : int { kWord, kExplanation, kSpell, kSentences, kPause };
  Kind kind;
  int32_t ms;  // of a pause; never 0
};

// Takes the ECText prefix off the pattern; true when it was there.
bool TakeECTextPrefix(std::string* pattern);

// The steps of a pattern. "A" the word, "B" the explanation, "C" the
// spelling, "S" the sentences, "H" nothing, a number a pause of that many
// seconds (digits and points, cut at 16 bytes), "N" and a number the same
// (only its first 15 bytes count, though the whole run is passed over).
// An "N" number that runs to the very end of the pattern is read a second
// time as a bare number, so the pause comes twice; anything else is
// ignored, and so is a pause that comes to 0 ms.
std::vector<PatternStep> ParsePattern(const std::string& pattern);

// Seconds as digits and points ("1.5") to milliseconds, truncated; what
// follows a second point is not read. Text that holds no number is 0, a
// number beyond 32 bits of milliseconds INT32_MIN (a pause that never
// plays).
int32_t PauseMs(const std::string& seconds);

}  // namespace tq::lesson
