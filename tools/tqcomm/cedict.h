// CC-CEDICT, the community Chinese-English dictionary, turned round: for an
// English word, the Chinese words whose glosses name it.
//
// A CC-CEDICT line is "TRADITIONAL SIMPLIFIED [pin1 yin1] /gloss/gloss/";
// lines starting with "#" are comments. A gloss may hold several wordings
// of one sense split by "; " ("to eat; to consume"). A Chinese word answers
// an English word when one wording is the word itself, or "to WORD" for a
// verb. The words are kept in GBK; a word with a character that GBK lacks is
// left out whole, since a word shown without one of its characters would
// be another word.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <unordered_map>
#include <vector>

namespace tqcomm {

struct CedictEntry {
  std::string traditional, simplified, pinyin;
  std::vector<std::string> senses;  // the glosses between the slashes, in order
};

enum class CedictLine { kEntry, kSkip, kMalformed };

// One line (with or without its line end). kSkip for comments and blank
// lines; kMalformed for anything that is not an entry.
CedictLine ParseCedictLine(const std::string& line, CedictEntry* entry);

// A part of speech of an English headword as WordNet counts it.
struct PartOfSpeech {
  char pos;        // 'n', 'v', 'a', 'r'
  int senses;      // synsets
  int tagged;      // senses seen in WordNet's tagged texts: how common the use is
};

class ChineseMeanings {
 public:
  // Reads CC-CEDICT text. Lines that are not entries are skipped and
  // counted; false, with the reason, when the text is not CC-CEDICT at all
  // (no entry, or more broken lines than entries).
  bool Read(std::istream& in, std::string* error);
  // Word counts to rank the words one gloss names alike: "word count [tag]"
  // a line in UTF-8 (jieba's dictionary). Without them a word's commonness
  // is guessed from how many CC-CEDICT words are built on it.
  int ReadFrequencies(std::istream& in);

  // The meaning section of an English headword: one line a part of speech,
  // the commonest use first, "n. " and the Chinese words split by "；",
  // in GBK with CR LF between lines. Empty when no gloss names the word.
  std::string MeaningOf(const std::string& headword, const std::vector<PartOfSpeech>& parts) const;

  int entries() const { return entries_; }
  int malformed() const { return malformed_; }
  int words() const { return static_cast<int>(words_.size()); }

 private:
  struct Word {
    std::string gbk, utf8;
    int gbkClass = 0;      // 0 common characters, 1 rarer ones, 2 outside GB2312
    double commonness = 0;  // log scale
    std::string tag;       // part of speech in the frequency list
  };
  struct Hit {
    uint32_t word;
    uint16_t sense;
    bool verb;        // named as "to WORD"
    bool caseExact;   // the gloss is in small letters like the headword
  };
  double Score(const Hit& hit, char pos) const;
  void GuessCommonness();

  std::vector<Word> words_;
  std::unordered_map<std::string, uint32_t> wordIds_;       // UTF-8 simplified -> words_
  std::unordered_map<std::string, std::vector<Hit>> glosses_;  // folded wording -> words
  int entries_ = 0, malformed_ = 0;
  bool haveFrequencies_ = false;
};

}  // namespace tqcomm
