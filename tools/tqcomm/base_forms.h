// Inflected forms and their base words. The dictionary builder writes
// "base.idx" beside "vary.idx", in the same record form: 100-byte records
// sorted by word as every index of the suite, an inflected form in the
// first 20 bytes and its base words in the other 80, split by commas
// ("went" -> "go", "axes" -> "ax,axis"). The forms are WordNet's irregular
// ones and the regular forms of every headword, kept only where the form is
// not a headword of its own. Forms that are headwords too ("stopped", "saw")
// go to "formof.idx", of the same form, so that the entry of such a word
// can name the word it is a form of.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "pron_notation.h"

namespace tqcomm {

// The regular forms of a word by English spelling rules: plurals of nouns;
// -s, -ed and -ing forms of verbs; -er and -est of adjectives short enough
// to take them. The sound decides whether a final consonant doubles
// (stop -> stopped, prefer -> preferred, but visit -> visited); a final l
// after one vowel gives both spellings (travelled, traveled).
struct WordUse {
  bool noun = false, verb = false, adjective = false;
};
std::vector<std::string> RegularForms(const std::string& word, const WordUse& use, const PronShape& shape);
// A guess of the shape from the spelling, for a word without a pronunciation.
PronShape SpellingShape(const std::string& word);

class BaseFormTable {
 public:
  void Add(const std::string& form, const std::string& base);
  // Writes the forms for which keep() holds; the number written, or -1.
  int Write(const std::string& path, const std::function<bool(const std::string&)>& keep) const;

 private:
  std::map<std::string, std::vector<std::string>> bases_;
};

// "base.idx" on disk, searched by bisection on a mapped view.
class BaseFormFile {
 public:
  BaseFormFile() = default;
  BaseFormFile(const BaseFormFile&) = delete;
  BaseFormFile& operator=(const BaseFormFile&) = delete;
  ~BaseFormFile();
  bool Open(const std::string& path);
  // The base words of an inflected form, or none.
  std::vector<std::string> Find(const std::string& form) const;

 private:
  const unsigned char* data_ = nullptr;
  size_t size_ = 0;
};

}  // namespace tqcomm
