// tqcomm lookup WORD | --wild PATTERN [--dict DIR]: looks a word up as the
// front ends do (exact, then its base form, then the closest entry) and
// prints the entry; or lists the words that fit a pattern. DIR is a folder
// made by "tqcomm dict build" (default: the data folder's "dict").
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
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

int Lookup(int dict, const std::string& word, bool expression) {
  const char* kOutcome[] = {"", "exact", "base form", "closest"};
  if (vcEcDict_Search(dict, word.c_str(), 1, 1) != 1) {
    std::printf("%s: not found\n", word.c_str());
    return 1;
  }
  int outcome = vcEcDict_GetSeachResult(dict);
  char found[64];
  vcEcDict_GetResultWord(dict, found);
  std::vector<char> mean(8192), pron(8192);
  vcEcDict_GetMeanOrPron(dict, mean.data(), pron.data());
  std::printf("%s (%s, grade %d)\n", ForTerminal(found).c_str(), outcome >= 1 && outcome <= 3 ? kOutcome[outcome] : "?",
              vcEcDict_GetWordGrade(dict));
  std::printf("pronunciation: %s\nmeaning: %s\n", ForTerminal(pron.data()).c_str(), ForTerminal(mean.data()).c_str());
  char forms[81];
  if (!expression && vcFindVary(found, forms) > 0) {
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
      if (vcCmSearchWord(&d, found) != -1) chars = vcCmGetDetail(&d, detail.data(), all, 7);
      vcCmCloseDict(&d);
    }
  } else {
    ExpDictObject d;
    vcInitExpDictObject(&d, "dictlib\\hmorexp.idx", "dictlib\\hmorexp.lib", work.data());
    if (vcCmOpenExpDict(&d) == 0) {
      const uint32_t both[2] = {0, 2};
      if (vcCmSearchExp(&d, found) == 1) chars = vcCmGetDetailExp(&d, detail.data(), both, 2);
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
  return 0;
}

}  // namespace

int LookupCommand(const Args& args_in) {
  Args args = args_in;
  std::string dir, pattern;
  bool have_dir = TakeOption(&args, "--dict", &dir);
  bool wild = TakeOption(&args, "--wild", &pattern);
  if (!have_dir) dir = DataDir() + "/dict";
  if ((!wild && args.size() != 1) || (wild && !args.empty())) {
    std::fprintf(stderr, "usage: tqcomm lookup WORD [--dict DIR] | tqcomm lookup --wild PATTERN [--dict DIR]\n");
    return 2;
  }
  // The dictionaries name their files relative to the working directory,
  // "vary.idx" included.
  if (chdir(dir.c_str()) != 0) {
    std::fprintf(stderr, "tqcomm: no dictionary in %s (make one with: tqcomm dict build SOURCE -o %s)\n",
                 dir.c_str(), dir.c_str());
    return 1;
  }
  std::string word = wild ? pattern : args[0];
  bool expression = !wild && word.find(' ') != std::string::npos;
  int dict = expression ? vcEcDict_Open("dictlib\\vlkdictexp.idx", "dictlib\\vlkdictexp.lib", nullptr)
                        : vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", nullptr);
  if (dict < 0) {
    std::fprintf(stderr, "tqcomm: cannot open the dictionary in %s\n", dir.c_str());
    return 1;
  }
  int rc = wild ? Wild(dict, pattern) : Lookup(dict, word, expression);
  vcEcDict_Close(dict);
  return rc;
}

}  // namespace tqcomm
