// WordNet's database as a dictionary source: English explanations, samples,
// synonyms and antonyms for its lemmas, and the irregular forms of its
// exception lists. WordNet has no pronunciations and no Chinese meanings:
// those come from espeak-ng and CC-CEDICT when the builder has them, and
// otherwise section 0 carries "[]" and the first sense of each part of
// speech. The lemmas' inflected forms go to the table of base forms.
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "base_forms.h"
#include "cedict.h"
#include "dict_build.h"
#include "espeak_phonemes.h"
#include "pron_notation.h"

namespace tqcomm {
namespace {

struct Pointer {
  char pos;
  long offset;
  int source, target;  // word numbers, 0 for the whole synset
};

struct Synset {
  std::vector<std::string> words;
  std::string definition;
  std::vector<std::string> examples;
  std::vector<Pointer> antonyms;
};

const char* const kPosNames[] = {"noun", "verb", "adj", "adv"};
const char kPosChars[] = {'n', 'v', 'a', 'r'};
const char* const kPosLabels[] = {"n.", "v.", "adj.", "adv."};

std::string Lemma(std::string w) {
  size_t paren = w.find('(');  // adjective markers: "(a)", "(p)", "(ip)"
  if (paren != std::string::npos) w.resize(paren);
  for (char& c : w) {
    if (c == '_') c = ' ';
  }
  return w;
}

std::string Lower(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(" ;");
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(" ;");
  return s.substr(b, e - b + 1);
}

void ParseGloss(const std::string& gloss, Synset* s) {
  size_t quote = gloss.find('"');
  s->definition = Trim(gloss.substr(0, quote));
  while (quote != std::string::npos) {
    size_t end = gloss.find('"', quote + 1);
    if (end == std::string::npos) break;
    s->examples.push_back(gloss.substr(quote + 1, end - quote - 1));
    quote = gloss.find('"', end + 1);
  }
}

bool ReadData(const std::string& path, char posChar, std::unordered_map<long, Synset>* synsets) {
  std::ifstream in(path);
  if (!in) return false;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == ' ') continue;  // the licence at the top
    size_t bar = line.find(" | ");
    std::istringstream ss(line.substr(0, bar));
    long offset;
    std::string lex, type, count_hex;
    ss >> offset >> lex >> type >> count_hex;
    Synset s;
    int words = static_cast<int>(std::strtol(count_hex.c_str(), nullptr, 16));
    for (int i = 0; i < words; ++i) {
      std::string w, lex_id;
      ss >> w >> lex_id;
      s.words.push_back(Lemma(w));
    }
    int pointers = 0;
    ss >> pointers;
    for (int i = 0; i < pointers; ++i) {
      std::string symbol, pos, st;
      long target;
      ss >> symbol >> target >> pos >> st;
      if (symbol == "!" && st.size() == 4 && !pos.empty()) {
        int source = static_cast<int>(std::strtol(st.substr(0, 2).c_str(), nullptr, 16));
        int to = static_cast<int>(std::strtol(st.substr(2).c_str(), nullptr, 16));
        s.antonyms.push_back({pos[0] == 's' ? 'a' : pos[0], target, source, to});
      }
    }
    if (bar != std::string::npos) ParseGloss(line.substr(bar + 3), &s);
    (void)posChar;
    (*synsets)[offset] = std::move(s);
  }
  return true;
}

void AppendList(std::string* list, const std::string& word) {
  if (word.empty()) return;
  if (!list->empty()) list->push_back(',');
  *list += word;
}

}  // namespace

namespace {
// One part of speech of a lemma in WordNet's index: its senses, commonest
// first, and how often they were met in WordNet's tagged texts.
struct LemmaPart {
  int pos;  // index into kPosChars
  std::vector<long> offsets;
  int tagged;
};
}  // namespace

bool ReadWordNet(const std::string& dir, const WordNetExtras& extras, std::vector<DictEntry>* entries,
                 std::string* error) {
  std::unordered_map<long, Synset> synsets[4];
  for (int p = 0; p < 4; ++p) {
    if (!ReadData(dir + "/data." + kPosNames[p], kPosChars[p], &synsets[p])) {
      *error = "cannot read " + dir + "/data." + kPosNames[p];
      return false;
    }
  }
  auto find = [&](char pos, long offset) -> const Synset* {
    for (int p = 0; p < 4; ++p) {
      if (kPosChars[p] == pos) {
        auto it = synsets[p].find(offset);
        return it == synsets[p].end() ? nullptr : &it->second;
      }
    }
    return nullptr;
  };
  // Irregular forms: base -> its forms; and each form with all its bases.
  std::map<std::string, std::string> forms;
  std::vector<std::pair<std::string, std::string>> irregular;  // form, base
  for (int p = 0; p < 4; ++p) {
    std::ifstream in(dir + "/" + kPosNames[p] + ".exc");
    std::string inflected, base;
    std::string line;
    while (std::getline(in, line)) {
      std::istringstream ss(line);
      if (!(ss >> inflected >> base)) continue;
      std::string& list = forms[Lemma(base)];
      if (("," + list + ",").find("," + Lemma(inflected) + ",") == std::string::npos) AppendList(&list, Lemma(inflected));
      do {
        irregular.push_back({Lemma(inflected), Lemma(base)});
      } while (ss >> base);
    }
  }
  // Lemmas in the order of the index files, their senses most frequent first.
  std::map<std::string, std::vector<LemmaPart>> lemmas;
  for (int p = 0; p < 4; ++p) {
    std::ifstream in(dir + "/index." + kPosNames[p]);
    std::string line;
    while (std::getline(in, line)) {
      if (line.empty() || line[0] == ' ') continue;
      std::istringstream ss(line);
      std::string lemma, pos;
      int synset_count = 0, pointer_count = 0, sense_count = 0, tagged = 0;
      ss >> lemma >> pos >> synset_count >> pointer_count;
      for (int i = 0; i < pointer_count; ++i) {
        std::string symbol;
        ss >> symbol;
      }
      ss >> sense_count >> tagged;
      std::vector<long> offsets;
      for (int i = 0; i < synset_count; ++i) {
        long o;
        if (ss >> o) offsets.push_back(o);
      }
      lemmas[Lemma(lemma)].push_back({p, offsets, tagged});
    }
  }
  if (extras.forms != nullptr) {
    for (const auto& [form, base] : irregular) {
      if (lemmas.count(base)) extras.forms->Add(form, base);
    }
  }
  long done = 0;
  for (const auto& [lemma, parts] : lemmas) {
    if (extras.progress && ++done % 2000 == 0) extras.progress(done, static_cast<long>(lemmas.size()));
    DictEntry e;
    e.word = lemma;
    std::string notation = extras.speech != nullptr ? IpaToNotation(extras.speech->Ipa(lemma)) : std::string();
    e.pron = "[" + notation + "]";
    std::vector<PartOfSpeech> uses;
    WordUse use;
    for (const LemmaPart& part : parts) {
      uses.push_back({kPosChars[part.pos], static_cast<int>(part.offsets.size()), part.tagged});
      use.noun |= part.pos == 0;
      use.verb |= part.pos == 1;
      use.adjective |= part.pos == 2;
    }
    if (extras.forms != nullptr) {
      PronShape shape = notation.empty() ? SpellingShape(lemma) : ShapeOf(notation);
      for (const std::string& form : RegularForms(lemma, use, shape)) extras.forms->Add(form, lemma);
    }
    std::string meaning, explanation, samples, synonyms, antonyms;
    int sample_count = 0, synonym_count = 0;
    for (const LemmaPart& part : parts) {
      int p = part.pos;
      std::string first;
      int sense = 0;
      for (long offset : part.offsets) {
        const Synset* s = find(kPosChars[p], offset);
        if (s == nullptr) continue;
        ++sense;
        if (sense == 1) first = s->definition;
        if (sense <= 8) {
          explanation += std::string(kPosLabels[p]) + " " + std::to_string(sense) + ". " + s->definition + "\r\n";
        }
        for (const std::string& x : s->examples) {
          if (sample_count < 10) samples += x + "\r\n", ++sample_count;
        }
        for (size_t w = 0; w < s->words.size(); ++w) {
          const std::string& other = s->words[w];
          if (Lower(other) != lemma && sense <= 3 && synonym_count < 10 &&
              ("," + synonyms + ",").find("," + other + ",") == std::string::npos) {
            AppendList(&synonyms, other);
            ++synonym_count;
          }
          if (Lower(other) != lemma) continue;
          for (const Pointer& a : s->antonyms) {
            if (a.source != 0 && a.source != static_cast<int>(w) + 1) continue;
            const Synset* t = find(a.pos, a.offset);
            if (t == nullptr || t->words.empty()) continue;
            size_t k = a.target > 0 ? static_cast<size_t>(a.target - 1) : 0;
            if (k < t->words.size() && ("," + antonyms + ",").find("," + t->words[k] + ",") == std::string::npos) {
              AppendList(&antonyms, t->words[k]);
            }
          }
        }
      }
      if (!first.empty()) {
        meaning += std::string(kPosLabels[p]) + " " + first + "\r\n";
        if (!e.meanLine.empty()) e.meanLine += "; ";
        e.meanLine += std::string(kPosLabels[p]) + " " + first;
      }
    }
    while (!meaning.empty() && (meaning.back() == '\r' || meaning.back() == '\n')) meaning.pop_back();
    std::string chinese = extras.chinese != nullptr ? extras.chinese->MeaningOf(lemma, uses) : std::string();
    if (!chinese.empty()) {
      // WordNet's definitions stay in the English explanation.
      meaning = chinese;
      e.meanLine.clear();
      for (char c : chinese) {
        if (c == '\n') e.meanLine += ' ';
        else if (c != '\r') e.meanLine += c;
      }
    }
    e.sections[0] = e.pron + "\r\n" + meaning;
    e.sections[1] = explanation;
    e.sections[2] = samples;
    auto f = forms.find(lemma);
    if (f != forms.end()) e.forms = e.sections[4] = f->second;
    e.sections[6] = RelatedSection(synonyms, antonyms);
    entries->push_back(std::move(e));
  }
  return true;
}

}  // namespace tqcomm
