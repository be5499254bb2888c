// tqcomm dict build SOURCE -o DIR: makes the dictionary files from a word
// list with meanings, or from WordNet's database.
//
// A source is GBK text, one entry a line, fields split by tabs:
//   word, pronunciation, Chinese meaning, English explanation, samples,
//   phrases, word forms, word root, related words[, grade]
// Inside a field "\n" is a line end, "\t" a tab and "\\" a backslash. The
// pronunciation may be given with or without its brackets; "-" leaves
// section 0 without a pronunciation line. The word forms are the irregular
// forms and go to "vary.idx" too. Related words are synonyms split by
// commas, then optionally "#" and the antonyms; a related-words field that
// starts with "=" is stored as it stands behind the "=". Entries of several words go
// to the expression dictionary (meaning and samples). Empty lines and lines
// starting with "#" are skipped.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "dict_build.h"

namespace tqcomm {
namespace {

// GBK labels of the related-words section.
const char kSynonymLabel[] = "\xCD\xAC\xD2\xE5\xB4\xCA\xA3\xBA";  // 同义词：
const char kAntonymLabel[] = "\xB7\xB4\xD2\xE5\xB4\xCA\xA3\xBA";  // 反义词：

// Resolves the escapes, stepping over the second byte of each GBK pair
// (which may be a backslash).
std::string Unescape(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    if (c >= 0x80 && i + 1 < s.size()) {
      out.push_back(s[i]);
      out.push_back(s[++i]);
    } else if (c == '\\' && i + 1 < s.size()) {
      char n = s[++i];
      out += n == 'n' ? std::string("\r\n") : n == 't' ? std::string("\t") : std::string(1, n);
    } else {
      out.push_back(s[i]);
    }
  }
  return out;
}

std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> fields;
  size_t from = 0;
  for (;;) {
    size_t tab = line.find('\t', from);
    fields.push_back(line.substr(from, tab == std::string::npos ? std::string::npos : tab - from));
    if (tab == std::string::npos) break;
    from = tab + 1;
  }
  return fields;
}

}  // namespace

std::string RelatedSection(const std::string& synonyms, const std::string& antonyms) {
  if (synonyms.empty() && antonyms.empty()) return std::string();
  std::string out = kSynonymLabel + synonyms;
  if (!antonyms.empty()) out += "\r\n" + std::string(kAntonymLabel) + antonyms;
  return out;
}

bool ReadTabSource(const std::string& path, std::vector<DictEntry>* entries, std::string* error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    *error = "cannot open " + path;
    return false;
  }
  std::string line;
  while (std::getline(in, line)) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> f = SplitTabs(line);
    f.resize(10);
    DictEntry e;
    e.word = f[0];
    std::string pron = f[1];
    std::string meaning = Unescape(f[2]);
    if (pron != "-") {
      if (pron.size() >= 2 && pron.front() == '[' && pron.back() == ']') pron = pron.substr(1, pron.size() - 2);
      e.pron = "[" + pron + "]";
      if (!pron.empty() || !meaning.empty()) e.sections[0] = e.pron + "\r\n" + meaning;
    } else {
      e.sections[0] = meaning;
    }
    for (int k = 1; k <= 5; ++k) e.sections[k] = Unescape(f[static_cast<size_t>(k) + 2]);
    std::string related = Unescape(f[8]);
    size_t hash = related.find('#');
    if (!related.empty() && related[0] == '=') {
      e.sections[6] = related.substr(1);
    } else {
      e.sections[6] = RelatedSection(related.substr(0, hash),
                                     hash == std::string::npos ? std::string() : related.substr(hash + 1));
    }
    e.forms = e.sections[4];
    e.meanLine = meaning.substr(0, meaning.find_first_of("\r\n"));
    e.grade = std::atoi(f[9].c_str());
    entries->push_back(e);
  }
  return true;
}

int DictCommand(const Args& args_in) {
  Args args = args_in;
  std::string out_dir;
  // --verbatim stores every field exactly as the source gives it, for making
  // files of a chosen byte layout; by default lines are closed and samples tagged.
  bool verbatim = false;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--verbatim") {
      verbatim = true;
      args.erase(args.begin() + static_cast<std::ptrdiff_t>(i));
      break;
    }
  }
  if (args.empty() || args[0] != "build" || !TakeOption(&args, "-o", &out_dir) || args.size() != 2) {
    std::fprintf(stderr, "usage: tqcomm dict build SOURCE -o DIR [--verbatim]   (SOURCE: a .txt source or a WordNet folder)\n");
    return 2;
  }
  const std::string& source = args[1];
  std::vector<DictEntry> entries;
  std::string error;
  bool ok = std::ifstream(source + "/data.noun").good() ? ReadWordNet(source, &entries, &error)
                                                        : ReadTabSource(source, &entries, &error);
  BuildCounts counts;
  if (ok) ok = WriteDictionaries(std::move(entries), out_dir, !verbatim, &counts, &error);
  if (!ok) {
    std::fprintf(stderr, "tqcomm: %s\n", error.c_str());
    return 1;
  }
  std::printf("%d words (%d in the classic index), %d expressions (%d classic), %d irregular forms -> %s\n",
              counts.words, counts.classicWords, counts.expressions, counts.classicExpressions, counts.vary,
              out_dir.c_str());
  return 0;
}

}  // namespace tqcomm
