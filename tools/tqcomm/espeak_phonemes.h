// English phonemes from libespeak-ng, for the pronunciations the dictionary
// builder writes. The library is set up once per process, with its British
// English voice: the notation has letters for the vowels of "hot" and
// "bird" that a British reading keeps apart.
#pragma once

#include <string>

namespace tqcomm {

class EspeakPhonemes {
 public:
  // Sets espeak-ng up (or takes it as the library's speech left it) with
  // the English voice; false, with the reason, when its data is missing.
  // Speech through the library changes the voice: open again after it.
  bool Open(std::string* error);
  // The IPA of a word or phrase in UTF-8 (ASCII text), or empty.
  std::string Ipa(const std::string& text) const;

 private:
  bool open_ = false;
};

}  // namespace tqcomm
