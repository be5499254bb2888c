#include "cedict.h"

#include <iconv.h>

#include <algorithm>
#include <cstdlib>
#include <cmath>
#include <map>
#include <unordered_set>

namespace tqcomm {
namespace {

const size_t kMaxWordsPerPart = 5;
const int kMaxSense = 40;
// How a gloss's place and a word's make weigh against its commonness, which
// is a natural logarithm of a count: a gloss one sense later needs a word
// about 4.5 times as common to stand level.
const double kSensePenalty = 1.5;
const double kRareCharacterPenalty = 2.0;   // per class of character set
const double kCapitalPenalty = 1.0;         // "China" answering "china"
const double kFunctionWordPenalty = 4.6;    // a particle or pronoun answering a content word

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(" \t");
  if (b == std::string::npos) return std::string();
  size_t e = s.find_last_not_of(" \t");
  return s.substr(b, e - b + 1);
}

std::string FoldAscii(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

// UTF-8 to GBK through iconv; false when a character has no GBK form.
class ToGbk {
 public:
  ToGbk() : cd_(iconv_open("GBK", "UTF-8")) {}
  ~ToGbk() {
    if (ok()) iconv_close(cd_);
  }
  bool ok() const { return cd_ != reinterpret_cast<iconv_t>(-1); }
  bool Convert(const std::string& utf8, std::string* gbk) {
    if (!ok()) return false;
    iconv(cd_, nullptr, nullptr, nullptr, nullptr);
    std::string in = utf8;
    std::string out(in.size() * 2 + 4, '\0');
    char* src = in.data();
    size_t left = in.size();
    char* dst = out.data();
    size_t room = out.size();
    if (iconv(cd_, &src, &left, &dst, &room) == static_cast<size_t>(-1) || left != 0) return false;
    out.resize(out.size() - room);
    *gbk = out;
    return true;
  }

 private:
  iconv_t cd_;
};

// 0 for the common characters of GB2312, 1 for its rarer ones, 2 for the
// characters GBK adds.
int GbkClass(const std::string& gbk) {
  int worst = 0;
  for (size_t i = 0; i < gbk.size(); ++i) {
    unsigned char lead = static_cast<unsigned char>(gbk[i]);
    if (lead < 0x80) continue;
    int c = lead >= 0xB0 && lead <= 0xD7 ? 0 : lead >= 0xD8 && lead <= 0xF7 ? 1 : lead >= 0xA1 && lead <= 0xA9 ? 0 : 2;
    worst = std::max(worst, c);
    ++i;
  }
  return worst;
}

// The UTF-8 characters of s, each as its own string.
std::vector<std::string> Characters(const std::string& s) {
  std::vector<std::string> out;
  for (size_t i = 0; i < s.size();) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    size_t n = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 1;
    out.push_back(s.substr(i, n));
    i += n;
  }
  return out;
}

const char* PartLabel(char pos) {
  switch (pos) {
    case 'n': return "n.";
    case 'v': return "v.";
    case 'a': return "adj.";
    default: return "adv.";
  }
}

int PartOrder(char pos) {
  switch (pos) {
    case 'n': return 0;
    case 'v': return 1;
    case 'a': return 2;
    default: return 3;
  }
}

}  // namespace

CedictLine ParseCedictLine(const std::string& raw, CedictEntry* entry) {
  std::string line = raw;
  if (line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);  // a byte-order mark
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n' || line.back() == ' ' || line.back() == '\t')) {
    line.pop_back();
  }
  if (line.empty() || line[0] == '#') return CedictLine::kSkip;
  size_t sp1 = line.find(' ');
  if (sp1 == 0 || sp1 == std::string::npos) return CedictLine::kMalformed;
  size_t sp2 = line.find(' ', sp1 + 1);
  if (sp2 == std::string::npos || sp2 == sp1 + 1) return CedictLine::kMalformed;
  size_t open = sp2 + 1;
  if (open >= line.size() || line[open] != '[') return CedictLine::kMalformed;
  size_t close = line.find(']', open);
  if (close == std::string::npos) return CedictLine::kMalformed;
  size_t slash = line.find_first_not_of(' ', close + 1);
  if (slash == std::string::npos || line[slash] != '/' || line.back() != '/' || slash == line.size() - 1) {
    return CedictLine::kMalformed;
  }
  CedictEntry e;
  e.traditional = line.substr(0, sp1);
  e.simplified = line.substr(sp1 + 1, sp2 - sp1 - 1);
  e.pinyin = line.substr(open + 1, close - open - 1);
  for (const std::string* w : {&e.traditional, &e.simplified}) {
    if (w->find_first_of("[]/") != std::string::npos) return CedictLine::kMalformed;
  }
  size_t from = slash + 1;
  while (from < line.size()) {
    size_t to = line.find('/', from);
    std::string sense = Trim(line.substr(from, to - from));
    if (!sense.empty()) e.senses.push_back(sense);
    from = to + 1;
  }
  if (e.senses.empty()) return CedictLine::kMalformed;
  *entry = std::move(e);
  return CedictLine::kEntry;
}

bool ChineseMeanings::Read(std::istream& in, std::string* error) {
  ToGbk gbk;
  if (!gbk.ok()) {
    *error = "this system's iconv has no GBK";
    return false;
  }
  std::string line;
  CedictEntry e;
  int lines = 0;
  while (std::getline(in, line)) {
    ++lines;
    CedictLine kind = ParseCedictLine(line, &e);
    if (kind == CedictLine::kMalformed) ++malformed_;
    if (kind != CedictLine::kEntry) continue;
    ++entries_;
    auto known = wordIds_.find(e.simplified);
    uint32_t id;
    if (known != wordIds_.end()) {
      id = known->second;
    } else {
      Word w;
      if (!gbk.Convert(e.simplified, &w.gbk)) continue;
      w.utf8 = e.simplified;
      w.gbkClass = GbkClass(w.gbk);
      id = static_cast<uint32_t>(words_.size());
      words_.push_back(std::move(w));
      wordIds_.emplace(e.simplified, id);
    }
    for (size_t s = 0; s < e.senses.size() && s < static_cast<size_t>(kMaxSense); ++s) {
      const std::string& sense = e.senses[s];
      size_t from = 0;
      while (from <= sense.size()) {
        size_t to = sense.find(';', from);
        if (to == std::string::npos) to = sense.size();
        std::string wording = Trim(sense.substr(from, to - from));
        from = to + 1;
        bool verb = wording.compare(0, 3, "to ") == 0;
        std::string key = FoldAscii(verb ? Trim(wording.substr(3)) : wording);
        if (key.empty() || key.size() > 60) continue;
        bool exact = key == (verb ? Trim(wording.substr(3)) : wording);
        std::vector<Hit>& hits = glosses_[key];
        if (hits.size() < 400) hits.push_back({id, static_cast<uint16_t>(s), verb, exact});
      }
    }
  }
  if (entries_ == 0) {
    *error = lines == 0 ? "the file is empty" : "no line of it is a CC-CEDICT entry";
    return false;
  }
  if (malformed_ > entries_) {
    *error = std::to_string(malformed_) + " of its " + std::to_string(lines) + " lines are not CC-CEDICT entries";
    return false;
  }
  GuessCommonness();
  return true;
}

void ChineseMeanings::GuessCommonness() {
  // A word that many others are built on is a common one.
  std::unordered_map<std::string, int> built_on;
  for (const Word& w : words_) {
    std::vector<std::string> chars = Characters(w.utf8);
    std::unordered_set<std::string> parts;
    for (size_t i = 0; i < chars.size(); ++i) {
      std::string part;
      for (size_t j = i; j < chars.size() && j < i + 4; ++j) {
        part += chars[j];
        if (j - i + 1 < chars.size()) parts.insert(part);
      }
    }
    for (const std::string& p : parts) ++built_on[p];
  }
  for (Word& w : words_) {
    auto it = built_on.find(w.utf8);
    w.commonness = std::log1p(it == built_on.end() ? 0.0 : it->second);
  }
}

int ChineseMeanings::ReadFrequencies(std::istream& in) {
  std::vector<std::pair<uint32_t, std::string>> counts;  // word, "count tag"
  std::string line;
  while (std::getline(in, line)) {
    size_t sp = line.find(' ');
    if (sp == std::string::npos || sp == 0) continue;
    auto it = wordIds_.find(line.substr(0, sp));
    if (it != wordIds_.end()) counts.push_back({it->second, line.substr(sp + 1)});
  }
  int known = 0;
  for (const auto& [id, rest] : counts) {
    char* end = nullptr;
    double n = std::strtod(rest.c_str(), &end);
    if (end == rest.c_str() || !(n >= 0)) continue;
    if (known++ == 0) {
      // Counts replace the guesses of every word: one left out is rare.
      for (Word& w : words_) w.commonness = 0;
      haveFrequencies_ = true;
    }
    Word& w = words_[id];
    w.commonness = std::log1p(n);
    w.tag = Trim(std::string(end));
  }
  return known;
}

double ChineseMeanings::Score(const Hit& hit, char pos) const {
  const Word& w = words_[hit.word];
  double score = w.commonness - kSensePenalty * hit.sense - kRareCharacterPenalty * w.gbkClass;
  if (!hit.caseExact) score -= kCapitalPenalty;
  if (haveFrequencies_ && !w.tag.empty()) {
    // Pronouns, particles, numerals and the like are common for their own
    // sake; a preposition may still be a verb (给 "to give"), and an adverb
    // an adjective.
    char t = w.tag[0];
    bool function_word = std::string("rcuyeomq").find(t) != std::string::npos || (t == 'p' && pos != 'v') ||
                         (t == 'd' && pos != 'r' && pos != 'a');
    if (function_word) score -= kFunctionWordPenalty;
  }
  return score;
}

std::string ChineseMeanings::MeaningOf(const std::string& headword, const std::vector<PartOfSpeech>& parts) const {
  auto found = glosses_.find(FoldAscii(headword));
  if (found == glosses_.end()) return std::string();
  // WordNet's parts of speech of the word, the commonest use first.
  std::vector<PartOfSpeech> order = parts;
  std::stable_sort(order.begin(), order.end(), [](const PartOfSpeech& a, const PartOfSpeech& b) {
    if (a.tagged != b.tagged) return a.tagged > b.tagged;
    if (a.senses != b.senses) return a.senses > b.senses;
    return PartOrder(a.pos) < PartOrder(b.pos);
  });
  // CC-CEDICT writes verbs "to WORD"; a plain gloss speaks for the
  // commonest use of the word other than as a verb.
  bool verb = order.empty();
  char plain = 0;
  for (const PartOfSpeech& p : order) {
    if (p.pos == 'v') verb = true;
    else if (plain == 0) plain = p.pos;
  }
  if (plain == 0) plain = order.empty() ? 'n' : 'v';

  std::map<char, std::map<uint32_t, double>> best;  // part -> word -> score
  for (const Hit& h : found->second) {
    if (h.verb && !verb) continue;  // WordNet knows no verb of that name
    char pos = h.verb ? 'v' : plain;
    double score = Score(h, pos);
    auto [it, fresh] = best[pos].emplace(h.word, score);
    if (!fresh && score > it->second) it->second = score;
  }
  std::vector<char> lines;
  for (const PartOfSpeech& p : order) {
    if (best.count(p.pos) && std::find(lines.begin(), lines.end(), p.pos) == lines.end()) lines.push_back(p.pos);
  }
  for (const auto& part : best) {
    if (std::find(lines.begin(), lines.end(), part.first) == lines.end()) lines.push_back(part.first);
  }
  std::string out;
  for (char pos : lines) {
    std::vector<std::pair<double, uint32_t>> ranked;
    for (const auto& [word, score] : best[pos]) ranked.push_back({score, word});
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    if (!out.empty()) out += "\r\n";
    out += std::string(PartLabel(pos)) + " ";
    for (size_t i = 0; i < ranked.size() && i < kMaxWordsPerPart; ++i) {
      if (i > 0) out += "\xA3\xBB";  // ；
      out += words_[ranked[i].second].gbk;
    }
  }
  return out;
}

}  // namespace tqcomm
