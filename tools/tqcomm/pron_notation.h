// The suite's ASCII notation of pronunciations. Dictionaries store a
// pronunciation as plain ASCII between brackets, and the host's "pron" font
// face draws each letter of it as a phonetic symbol:
//
//   I ɪ   U ʊ   E ə   Q ʌ   A æ   O ɔ   R ɜ   C ɒ   a ɑ   : ː
//   ' ˈ (primary stress)   , ˌ (secondary stress)
//   S ʃ   Z ʒ   T θ   D ð   N ŋ   (tS and dZ for tʃ and dʒ)
//
// Every other ASCII letter stands for itself. Symbols that have no letter of
// their own are folded onto the nearest one (ɛ e, ɐ E, ɹ r, ɡ g, ɾ t, ᵻ I,
// ɚ Er, ɫ l, ...), and marks without a sound (glottal stop, syllabic and
// tie marks, half-length) are dropped. The stress marks stand in front of
// their syllable as dictionaries print them, and a word of one syllable
// carries none.
#pragma once

#include <string>

namespace tqcomm {

// IPA in UTF-8 (as espeak-ng gives it, marks in front of the vowel) to the
// notation, without brackets.
std::string IpaToNotation(const std::string& ipa);

// The notation back to IPA, in UTF-8 for a terminal, or as HTML character
// references that a page in any character set shows.
std::string NotationToIpa(const std::string& notation);
std::string NotationToIpaHtml(const std::string& notation);

// What the spelling rules of inflection need to know of a word's sound.
struct PronShape {
  int syllables = 0;
  bool finalStressed = false;  // the last syllable carries the primary stress
};
PronShape ShapeOf(const std::string& notation);

}  // namespace tqcomm
