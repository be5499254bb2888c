#include "quiz/generation.h"

#include <vector>

#include "core/binary_io.h"
#include "core/text.h"
#include "platform/env.h"
#include "tqcomm2006.h"

namespace tq::quiz {
namespace {

// Ltrim and Rtrim on a copy: the text services' own trimming, so that an
// answer of blanks alone keeps one, as the front ends have always seen it.
std::string Trimmed(const std::string& s, bool right) {
  std::vector<char> buf(s.begin(), s.end());
  buf.push_back('\0');
  Ltrim(buf.data());
  if (right) Rtrim(buf.data());
  return buf.data();
}

// Replaces the first blank at or after from; the position behind the
// replacement, or npos when there was no blank.
size_t FillBlank(std::string* sentence, size_t from, const std::string& answer) {
  size_t at = sentence->find(kBlank, from);
  if (at == std::string::npos) return at;
  std::string filled = "[" + answer + "]";
  sentence->replace(at, sizeof kBlank - 1, filled);
  return at + filled.size();
}

bool CodeFits(int32_t code, int32_t knowledge) {
  // A code ending in 999 stands for every code of its thousand.
  return code == knowledge || (code % 1000 == 999 && code / 1000 == knowledge / 1000);
}

bool Within(int32_t v, int low, int high) { return v >= low && v <= high; }

}  // namespace

std::string ChoiceSentence(const char* question, const char* option) {
  std::string q = question != nullptr ? question : "", o = option != nullptr ? option : "";
  size_t point = q.find('.'), paren = o.find(')');
  std::string sentence = Trimmed(point == std::string::npos ? q : q.substr(point + 1), true);
  std::string answer = Trimmed(paren == std::string::npos ? o : o.substr(paren + 1), true);
  // Two blanks take two answers, separated by a comma in the option.
  size_t comma = answer.find(',');
  std::string second;
  if (comma != std::string::npos) {
    second = Trimmed(answer.substr(comma + 1), false);
    answer.resize(comma);
  }
  size_t next = FillBlank(&sentence, 0, answer);
  if (comma != std::string::npos && next != std::string::npos) FillBlank(&sentence, next, second);
  return sentence;
}

int ChooseQuestions(const char* index_path, const Selection& sel, int32_t* result) {
  std::FILE* f = index_path != nullptr ? env::Open(index_path, "rb") : nullptr;
  if (f == nullptr) return -1;
  const bool range = sel.range_low != -1 && sel.range_high != -1;
  const int included = sel.included != nullptr ? sel.included[0] : 0;
  int chosen = 0;
  unsigned char rec[sizeof(QtIndexRecord)];
  for (int32_t i = 0; std::fread(rec, 1, sizeof rec, f) == sizeof rec; ++i) {
    if (sel.included != nullptr && FindFirstInt(sel.included + 1, included, i) < 0) continue;
    // The second pair only switches the test of rangeValueB on; the bounds
    // are the first pair's for both values.
    if (range && !Within(GetI32(rec + offsetof(QtIndexRecord, rangeValueA)), sel.range_low, sel.range_high)) continue;
    if (sel.second_range && !Within(GetI32(rec + offsetof(QtIndexRecord, rangeValueB)), sel.range_low, sel.range_high)) {
      continue;
    }
    if (sel.code_count != 0) {
      int32_t knowledge = GetI32(rec + offsetof(QtIndexRecord, knowledgeCode));
      bool fits = false;
      for (int k = 0; sel.codes != nullptr && k < sel.code_count && !fits; ++k) fits = CodeFits(sel.codes[k], knowledge);
      if (!fits) continue;
    }
    if (result != nullptr) result[chosen] = i;
    ++chosen;
  }
  std::fclose(f);
  return chosen;
}

}  // namespace tq::quiz
