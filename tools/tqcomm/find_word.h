// How the tool's commands find a word in a compact dictionary: the word
// itself, then its base word from the dictionary's table of inflected forms
// ("base.idx"), then the library's own base-form rules, then the closest
// entry. Each answer says which of them hit.
#pragma once

#include <string>
#include <vector>

#include "base_forms.h"

namespace tqcomm {

enum class FoundBy { kNone, kExact, kFormTable, kRules, kClosest };

struct Found {
  FoundBy by = FoundBy::kNone;
  std::string word;                  // the entry now current in the dictionary
  std::vector<std::string> formOf;   // an exact hit that is an inflected form too
};

// The two tables of inflected forms of a dictionary folder ("base.idx",
// "formof.idx"); a dictionary made without them has neither.
struct FormTables {
  BaseFormFile base, formOf;
  bool haveBase = false, haveFormOf = false;
  void Open(const std::string& dir);
};

// dict is an open compact dictionary. Leaves the found entry current.
Found FindWord(int dict, const std::string& word, const FormTables& tables, bool accept_closest);

// "exact", "base form (form table)", ... for the user.
const char* FoundByText(FoundBy by);

}  // namespace tqcomm
