// Between a word and its inflected forms, by rule. The rules are crude on
// purpose and their gaps are part of the behaviour the front ends know: a
// doubled consonant before "er" is never undone ("bigger" finds nothing),
// and a word ending in "ed" or "ing" is looked up as it stands when no
// doubling is found.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace tq::dict {

// The rules of the chain; each edits the buffer in place and answers
// whether the chain should look the buffer up now.
bool StripWordSuffix(char* buffer, const char* suffix);
bool StripDoubledSuffix(char* buffer, const char* suffix);
bool TrimEdToE(char* buffer);
bool TrimIngToE(char* buffer);

// The fifteen steps from an inflected word to a base form that `lookup`
// finds (it answers a record offset or -1). The input itself is not looked
// up first. Answers the offset of the hit and the step (1 to 15) in *step,
// or -1.
long OriginalFormChain(const char* word, const std::function<long(const char*)>& lookup, int* step = nullptr);

// The regular forms of a word, each followed by ",".
std::string AllWordVarys(const char* word);

}  // namespace tq::dict
