// Fill-blank questions: one sentence a line with its answers in square
// brackets in their places, "He [goes] to school every day.", compiled into
// 260-byte records and shown as a page with a text box for every blank.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "quiz/question_files.h"
#include "tqcomm2006.h"

namespace tq::quiz {

constexpr size_t kFillSize = sizeof(FillBlankQtRecord);
constexpr size_t kFillTextSize = sizeof(FillBlankQtRecord::text);

// Each non-empty line is a question, written at once with degree 0. 1, or
// -1 when either file will not open.
int CompileFillText(const char* binary_path, const char* text_path, int overwrite);

// The page's text for one question shown as d, record number n.
void RenderFillQuestion(const unsigned char* record, int d, int n, bool show_degree, std::string* out);

class FillFiles : public QuestionFiles<kFillSize> {
 public:
  int MakePage(int h, const char* html_path, int show_degree, int min_degree, int max_degree,
               const char* background_image, const int32_t* list, int random_order);
};

FillFiles& FillTables();

}  // namespace tq::quiz
