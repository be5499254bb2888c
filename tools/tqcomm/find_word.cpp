#include "find_word.h"

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

std::string CurrentWord(int dict) {
  char word[64] = {0};
  vcEcDict_GetResultWord(dict, word);
  return word;
}

}  // namespace

void FormTables::Open(const std::string& dir) {
  haveBase = base.Open(dir + "/base.idx");
  haveFormOf = formOf.Open(dir + "/formof.idx");
}

Found FindWord(int dict, const std::string& word, const FormTables& tables, bool accept_closest) {
  Found found;
  if (vcEcDict_Search(dict, word.c_str(), 0, 0) == 1) {
    found.by = FoundBy::kExact;
    found.word = CurrentWord(dict);
    if (tables.haveFormOf) found.formOf = tables.formOf.Find(word);
    return found;
  }
  if (tables.haveBase) {
    for (const std::string& base : tables.base.Find(word)) {
      if (vcEcDict_Search(dict, base.c_str(), 0, 0) == 1) {
        found.by = FoundBy::kFormTable;
        found.word = CurrentWord(dict);
        return found;
      }
    }
  }
  if (vcEcDict_Search(dict, word.c_str(), 1, 0) == 1) {
    found.by = FoundBy::kRules;
  } else if (accept_closest && vcEcDict_Search(dict, word.c_str(), 0, 1) == 1) {
    found.by = FoundBy::kClosest;
  }
  if (found.by != FoundBy::kNone) found.word = CurrentWord(dict);
  return found;
}

const char* FoundByText(FoundBy by) {
  switch (by) {
    case FoundBy::kExact: return "exact";
    case FoundBy::kFormTable: return "base form, from the table of inflected forms";
    case FoundBy::kRules: return "base form, by the library's suffix rules";
    case FoundBy::kClosest: return "closest entry";
    default: return "not found";
  }
}

}  // namespace tqcomm
