// Choice questions: the compiler of question texts, the question file's
// operations beyond the shared ones, and the exam page.
//
// A question text, one statement a line:
//   1. He _______ to school every day.     a number (1-9 or "$") starts a question
//   A) go                                  a second byte ")" makes an option
//   #B                                     the answer
//   DGR 2 / CLS gx / KNO 01.234            difficulty, class letters, knowledge code
//   // text, CMT text, CMT/* text */       a piece of the comment
//   /* ... */ (or CMT/* ... */)            a comment of several lines
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "quiz/question_files.h"
#include "tqcomm2006.h"

namespace tq::quiz {

constexpr size_t kChoiceSize = sizeof(ChoiceQtRecord);
constexpr size_t kStemSize = sizeof(ChoiceQtRecord::stem);
constexpr size_t kOptionSize = sizeof(ChoiceQtRecord::options[0]);
constexpr int kMaxOptions = 5;
constexpr size_t kCommentSize = sizeof(ChoiceQtRecord::comment);
constexpr size_t kCommentMax = kCommentSize - 1;  // 508

inline size_t OptionOffset(int i) { return offsetof(ChoiceQtRecord, options) + kOptionSize * static_cast<size_t>(i); }

// Compiles a question text into a question file: 1, or -1 when either file
// will not open.
int CompileChoiceText(const char* binary_path, const char* text_path, int overwrite);

// The exam page's text for one question record, shown as question d with
// record number n; answers the place of the right option on the page.
int RenderChoiceQuestion(const unsigned char* record, int d, int n, bool shuffle_options, bool show_delete,
                         std::string* out);

class ChoiceFiles : public QuestionFiles<kChoiceSize> {
 public:
  int GetComment(int h, int index, char* buffer);
  int SetComment(int h, int index, const char* text);
  int Digest(int h, int index, const char* digest_path, int whole_record);
  int Delete(int h, int count, const int32_t* indices);
  int MakePage(int h, const char* html_path, int shuffle_options, const char* background_image,
               const int32_t* list, int random_order, int show_delete);
};

ChoiceFiles& ChoiceTables();

}  // namespace tq::quiz
