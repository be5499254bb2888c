// tqcomm lookup WORD | --wild PATTERN | --list FILE [--dict DIR]: looks a
// word up (exact, then its base word from the dictionary's table of
// inflected forms, then the library's base-form rules, then the closest
// entry) and prints the entry with what hit; or lists the words that fit a
// pattern; or looks up every word of a list, one line each. DIR is a folder
// made by "tqcomm dict build" (default: the data folder's "dict").
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "find_word.h"
#include "pron_notation.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

int Wild(int dict, const std::string& pattern_in) {
  std::vector<char> pattern(pattern_in.begin(), pattern_in.end());
  pattern.push_back('\0');
  int size = vcEcDict_WildSearch(dict, pattern.data(), nullptr, 0, 0);
  std::vector<char> words(static_cast<size_t>(size) + 1);
  vcEcDict_WildSearch(dict, pattern.data(), words.data(), 0, 0);
  // The scan reports a word again when it reads past the end of its range;
  // repeats are shown once with their count.
  std::string last;
  int repeats = 0, shown = 0;
  auto flush = [&]() {
    if (last.empty() && repeats == 0) return;
    std::printf("%s%s\n", ForTerminal(last).c_str(), repeats > 1 ? (" (x" + std::to_string(repeats) + ")").c_str() : "");
    ++shown;
  };
  for (size_t at = 0; at < static_cast<size_t>(size);) {
    std::string w(&words[at]);
    at += w.size() + 1;
    if (w == last) {
      ++repeats;
      continue;
    }
    flush();
    last = w;
    repeats = 1;
  }
  flush();
  std::printf("-- %d word%s\n", shown, shown == 1 ? "" : "s");
  return 0;
}

std::string Join(const std::vector<std::string>& words) {
  std::string out;
  for (const std::string& w : words) out += (out.empty() ? "" : ", ") + w;
  return out;
}

// The stored pronunciation, then the same in IPA, then the meaning.
void PrintPronAndMeaning(const std::string& brackets, const std::string& mean) {
  std::string ipa = brackets.size() > 2 ? " /" + NotationToIpa(brackets.substr(1, brackets.size() - 2)) + "/" : "";
  std::printf("pronunciation: %s%s\nmeaning: %s\n", ForTerminal(brackets).c_str(), ipa.c_str(),
              ForTerminal(mean).c_str());
}

const char kUsage[] =
    "usage: tqcomm lookup WORD [--dict DIR]\n"
    "       tqcomm lookup --wild PATTERN [--dict DIR]\n"
    "       tqcomm lookup --list FILE [--dict DIR]   (FILE - reads the standard input)\n"
    "A word is found as it stands, else as an inflected form of a word (from the\n"
    "dictionary's table of forms, then by the library's suffix rules), else the\n"
    "closest entry is shown. --list prints a line a word: the word, the entry\n"
    "found and how, split by tabs.\n";

int Lookup(int dict, const FormTables& tables, const std::string& word, bool expression) {
  Found hit = FindWord(dict, word, tables, true);
  if (hit.by == FoundBy::kNone) {
    std::printf("%s: not found\n", word.c_str());
    return 1;
  }
  const std::string& found = hit.word;
  std::vector<char> mean(8192), pron(8192);
  vcEcDict_GetMeanOrPron(dict, mean.data(), pron.data());
  std::printf("%s (%s, grade %d)\n", ForTerminal(found).c_str(), FoundByText(hit.by), vcEcDict_GetWordGrade(dict));
  if (!hit.formOf.empty()) std::printf("also a form of: %s\n", Join(hit.formOf).c_str());
  PrintPronAndMeaning(pron.data(), mean.data());
  char forms[81];
  if (!expression && vcFindVary(found.c_str(), forms) > 0) {
    forms[80] = '\0';
    std::printf("irregular forms: %s\n", ForTerminal(forms).c_str());
  }
  // The composed detail comes from the classic files beside the compact ones.
  uint32_t lengths[7];
  vcEcDict_GetDetailLengthArray(dict, lengths);
  size_t room = 1024;
  for (uint32_t n : lengths) room += 2 * static_cast<size_t>(n);
  std::vector<char> detail(room), work(room);
  int chars = 0;
  if (!expression) {
    DictObject d;
    if (vcCmOpenDictDirect(&d, "dictlib\\hmorec.idx", "dictlib\\hmorec.lib", work.data()) == 1) {
      const uint32_t all[7] = {0, 1, 2, 3, 4, 5, 6};
      if (vcCmSearchWord(&d, found.c_str()) != -1) chars = vcCmGetDetail(&d, detail.data(), all, 7);
      vcCmCloseDict(&d);
    }
  } else {
    ExpDictObject d;
    vcInitExpDictObject(&d, "dictlib\\hmorexp.idx", "dictlib\\hmorexp.lib", work.data());
    if (vcCmOpenExpDict(&d) == 0) {
      const uint32_t both[2] = {0, 2};
      std::vector<char> key(found.begin(), found.end());
      key.push_back('\0');  // the search may cut the caller's string
      if (vcCmSearchExp(&d, key.data()) == 1) chars = vcCmGetDetailExp(&d, detail.data(), both, 2);
      vcCmCloseExpDict(&d);
    }
  }
  if (chars == 0) vcEcDict_GetAllDetails(dict, detail.data());
  std::string text(detail.data());
  std::string shown;
  for (char c : text) {
    if (c != '\r') shown.push_back(c);
  }
  std::printf("----\n%s\n", ForTerminal(shown).c_str());
  // A word with an entry of its own that is a form of other words too
  // ("stopped", "saw"): the words it is a form of follow in short.
  for (const std::string& base : hit.formOf) {
    if (vcEcDict_Search(dict, base.c_str(), 0, 0) != 1) continue;
    vcEcDict_GetMeanOrPron(dict, mean.data(), pron.data());
    std::printf("==== %s (%s is a form of it)\n", ForTerminal(base).c_str(), word.c_str());
    PrintPronAndMeaning(pron.data(), mean.data());
  }
  return 0;
}

// One line a word of the list: word, entry found, how. Each word is looked
// up as a single lookup would, its meaning read too.
int LookupList(int word_dict, int exp_dict, const FormTables& tables, const std::string& file) {
  std::ifstream opened;
  if (file != "-") {
    opened.open(file, std::ios::binary);
    if (!opened) {
      std::fprintf(stderr, "tqcomm: cannot open %s\n", file.c_str());
      return 1;
    }
  }
  std::istream& in = file == "-" ? std::cin : opened;
  std::vector<char> mean(8192), pron(8192);
  std::string word;
  int missing = 0;
  while (std::getline(in, word)) {
    while (!word.empty() && (word.back() == '\r' || word.back() == ' ')) word.pop_back();
    if (word.empty()) continue;
    int dict = word.find(' ') != std::string::npos ? exp_dict : word_dict;
    Found hit = FindWord(dict, word, tables, true);
    if (hit.by != FoundBy::kNone) vcEcDict_GetMeanOrPron(dict, mean.data(), pron.data());
    missing += hit.by == FoundBy::kNone;
    std::printf("%s\t%s\t%s", word.c_str(), hit.word.c_str(), FoundByText(hit.by));
    if (!hit.formOf.empty()) std::printf("; also a form of %s", Join(hit.formOf).c_str());
    std::printf("\n");
  }
  return missing == 0 ? 0 : 1;
}

}  // namespace

int LookupCommand(const Args& args_in) {
  Args args = args_in;
  std::string dir, pattern, list;
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") {
      std::printf("%s", kUsage);
      return 0;
    }
  }
  bool have_dir = TakeOption(&args, "--dict", &dir);
  bool wild = TakeOption(&args, "--wild", &pattern);
  bool batch = TakeOption(&args, "--list", &list);
  if (!have_dir) dir = DataDir() + "/dict";
  if (wild + batch > 1 || ((wild || batch) && !args.empty()) || (!wild && !batch && args.size() != 1)) {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  if (batch && list != "-") {
    char cwd[4096];
    if (list[0] != '/' && getcwd(cwd, sizeof cwd) != nullptr) list = std::string(cwd) + "/" + list;
  }
  // The dictionaries name their files relative to the working directory,
  // "vary.idx" included.
  if (chdir(dir.c_str()) != 0) {
    std::fprintf(stderr, "tqcomm: no dictionary in %s (make one with: tqcomm dict build SOURCE -o %s)\n",
                 dir.c_str(), dir.c_str());
    return 1;
  }
  FormTables forms;
  forms.Open(".");
  if (batch) {
    int words = vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", nullptr);
    int phrases = vcEcDict_Open("dictlib\\vlkdictexp.idx", "dictlib\\vlkdictexp.lib", nullptr);
    int rc = 1;
    if (words < 0 || phrases < 0) {
      std::fprintf(stderr, "tqcomm: cannot open the dictionary in %s\n", dir.c_str());
    } else {
      rc = LookupList(words, phrases, forms, list);
    }
    if (words > 0) vcEcDict_Close(words);
    if (phrases > 0) vcEcDict_Close(phrases);
    return rc;
  }
  std::string word = wild ? pattern : args[0];
  bool expression = !wild && word.find(' ') != std::string::npos;
  int dict = expression ? vcEcDict_Open("dictlib\\vlkdictexp.idx", "dictlib\\vlkdictexp.lib", nullptr)
                        : vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", nullptr);
  if (dict < 0) {
    std::fprintf(stderr, "tqcomm: cannot open the dictionary in %s\n", dir.c_str());
    return 1;
  }
  int rc = wild ? Wild(dict, pattern) : Lookup(dict, forms, word, expression);
  vcEcDict_Close(dict);
  return rc;
}

}  // namespace tqcomm
