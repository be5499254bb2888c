// Quizzes made from banks: a choice question turned back into a finished
// sentence, and the choice of questions from a question index by range and
// knowledge code.
#pragma once

#include <cstdint>
#include <string>

namespace tq::quiz {

// The seven underscores that stand for a blank in a choice question's stem.
constexpr char kBlank[] = "_______";

// "1. He _______ to school." with "B) goes" gives "He [goes] to school.".
// An option "C) salt, pepper" names the answers of two blanks. Without a
// point the whole question is the sentence, without ")" the whole option is
// the answer, and a blank that is not there is not filled.
std::string ChoiceSentence(const char* question, const char* option);

struct Selection {
  int range_low = -1, range_high = -1;   // bounds of rangeValueA, off if either is -1
  bool second_range = false;             // rangeValueB must lie within the same bounds
  int code_count = 0;                    // 0: any code; negative: none fits
  const int32_t* codes = nullptr;
  const int32_t* included = nullptr;     // a count, then ascending numbers; null: all
};

// The numbers of the questions of the index file that fit, into result
// (may be null); their count, or -1 when the file will not open.
int ChooseQuestions(const char* index_path, const Selection& selection, int32_t* result);

}  // namespace tq::quiz
