// Multiple-choice questions of other quiz formats, for "tqcomm quiz import":
// Moodle's GIFT and Aiken, read as UTF-8 and written as the suite's
// question text (GBK).
#pragma once

#include <string>
#include <vector>

namespace tqcomm {

struct ImportedQuestion {
  int line = 0;  // where the question starts in its file
  std::string stem;
  std::vector<std::string> options;
  int answer = 0;
  std::string comment;
};

struct ImportResult {
  std::vector<ImportedQuestion> questions;
  std::vector<std::string> notes;  // "LINE: what was passed over and why"
};

// GIFT: multiple-choice questions ("{=right ~wrong ~wrong}", also with
// "~%100%" for the right one) and true/false; a missing-word question puts
// the blank where its answers stand. Other kinds are passed over with a note.
ImportResult ParseGift(const std::string& utf8);
// Aiken: a question line, options "A." or "A)", and "ANSWER: B".
ImportResult ParseAiken(const std::string& utf8);
// True when the text looks like Aiken rather than GIFT.
bool LooksLikeAiken(const std::string& utf8);

// The questions as the suite's question text in GBK, each started by "$"
// (a number such as "10." would leave "0. " in front of its stem). A
// question that does not fit the records (stem 255 bytes, options 95, two
// to five options) is left out with a note. from_utf8 converts one UTF-8
// text to GBK; it answers false when some character has no GBK form.
std::string BankText(const std::vector<ImportedQuestion>& questions, const std::string& source,
                     bool (*from_utf8)(const std::string&, std::string*), std::vector<std::string>* notes,
                     int* written);

}  // namespace tqcomm
