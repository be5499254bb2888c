// Making dictionary files: the entries of a source, sorted in the order the
// library searches, written as the classic, expression and compact pairs, a
// mean library and "vary.idx". Everything is enciphered through the
// library's own DecodeExplain, so the files carry the key the library reads.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tqcomm {

class BaseFormTable;
class ChineseMeanings;
class EspeakPhonemes;

struct DictEntry {
  std::string word;
  std::string sections[7];  // as stored: section 0 begins "[pronunciation]\r\n"
  std::string meanLine;     // the short meaning for the mean library
  std::string pron;         // "[...]" or empty
  std::string forms;        // irregular forms, for vary.idx
  int grade = 0;            // 0: the default grade
};

// A tab-separated source in GBK (see cmd_dict.cpp for the fields).
bool ReadTabSource(const std::string& path, std::vector<DictEntry>* entries, std::string* error);
// What a dictionary from WordNet gets beyond WordNet's own text; each may
// be missing.
struct WordNetExtras {
  const ChineseMeanings* chinese = nullptr;  // Chinese meanings, else English ones
  const EspeakPhonemes* speech = nullptr;    // pronunciations, else "[]"
  BaseFormTable* forms = nullptr;            // gets the irregular and regular forms
  std::function<void(long done, long total)> progress;
};
// WordNet's database folder (data.*, index.*, *.exc).
bool ReadWordNet(const std::string& dir, const WordNetExtras& extras, std::vector<DictEntry>* entries,
                 std::string* error);

struct BuildCounts {
  int words = 0, expressions = 0, classicWords = 0, classicExpressions = 0, vary = 0;
};
// Writes DIR/dictlib/{hmorec,hmorexp,vlkdictec,vlkdictexp}.{idx,lib},
// DIR/dictlib/meanlib.dat and DIR/vary.idx. With finish_sections every
// stored line is closed by CR LF and sample lines get their tags; without,
// the sections are stored exactly as the entries hold them.
bool WriteDictionaries(std::vector<DictEntry> entries, const std::string& dir, bool finish_sections,
                       BuildCounts* counts, std::string* error);

}  // namespace tqcomm

namespace tqcomm {
// The stored related-words section: the synonyms' label and words, then on
// a line of its own the antonyms' label and words (either list may be
// empty; both empty gives an empty section).
std::string RelatedSection(const std::string& synonyms, const std::string& antonyms);
}  // namespace tqcomm
