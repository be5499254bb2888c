// The quiz exports: look the handle up, refuse at once, forward.
//
// An empty handle answers -1 (a page, a comment or a record count alike);
// so does an index that is not a record of the file.
#include <cstring>

#include "platform/host.h"
#include "quiz/choice.h"
#include "quiz/fill_blank.h"
#include "quiz/generation.h"
#include "quiz/usage_test.h"
#include "tqcomm2006.h"

using tq::quiz::ChoiceTables;
using tq::quiz::FillTables;

extern "C" {

TQ_API int TQ_CALL vcChoiceQtFile_Open(const char* path, const char* mode) { return ChoiceTables().Open(path, mode); }

TQ_API void TQ_CALL vcChoiceQtFile_Close(int file) { ChoiceTables().Close(file); }

TQ_API int TQ_CALL vcChoiceQtFile_GetRecordNum(int file) {
  return ChoiceTables().Get(file) ? ChoiceTables().RecordCount(file) : -1;
}

TQ_API int TQ_CALL vcChoiceQtFile_GetComment(int file, int index, char* buffer, int bufferSize) {
  if (ChoiceTables().Get(file) == nullptr) {
    if (buffer != nullptr) buffer[0] = '\0';
    return -1;
  }
  return ChoiceTables().GetComment(file, index, buffer);
}

TQ_API int TQ_CALL vcChoiceQtFile_SetComment(int file, int index, const char* text) {
  return ChoiceTables().Get(file) ? ChoiceTables().SetComment(file, index, text) : -1;
}

TQ_API int TQ_CALL vcChoiceQtFile_GetDifficulty(int file, int index) {
  return ChoiceTables().Get(file) ? ChoiceTables().GetInt(file, index, offsetof(ChoiceQtRecord, difficulty)) : -1;
}

TQ_API int TQ_CALL vcChoiceQtFile_SetDifficulty(int file, int index, int value) {
  if (ChoiceTables().Get(file) == nullptr) return -1;
  return ChoiceTables().SetInt(file, index, offsetof(ChoiceQtRecord, difficulty), value);
}

TQ_API int TQ_CALL vcChoiceQtFile_DigestQt(int file, int index, const char* digestPath, int wholeRecord) {
  return ChoiceTables().Get(file) ? ChoiceTables().Digest(file, index, digestPath, wholeRecord) : -1;
}

TQ_API int TQ_CALL vcChoiceQtFile_CloseAndDeleteQts(int file, int count, const int32_t* indices) {
  return ChoiceTables().Get(file) ? ChoiceTables().Delete(file, count, indices) : -1;
}

TQ_API int TQ_CALL vcChoiceQtFile_MakeHtml(int file, const char* htmlPath, int shuffleOptions, int unused,
                                           const char* backgroundImage, const int32_t* list, int randomOrder,
                                           int showDelete) {
  if (ChoiceTables().Get(file) == nullptr) return -1;
  return ChoiceTables().MakePage(file, htmlPath, shuffleOptions, backgroundImage, list, randomOrder, showDelete);
}

TQ_API int TQ_CALL vcChoiceQtFile_AddQtTextFile(const char* binaryPath, const char* textPath, int overwrite) {
  return tq::quiz::CompileChoiceText(binaryPath, textPath, overwrite);
}

TQ_API int TQ_CALL vcFillBlankQtFile_Open(const char* path, const char* mode) { return FillTables().Open(path, mode); }

TQ_API void TQ_CALL vcFillBlankQtFile_Close(int file) { FillTables().Close(file); }

TQ_API int TQ_CALL vcFillBlankQtFile_GetRecordNum(int file) {
  return FillTables().Get(file) ? FillTables().RecordCount(file) : -1;
}

TQ_API int TQ_CALL vcFillBlankQtFile_GetDegree(int file, int index) {
  return FillTables().Get(file) ? FillTables().GetInt(file, index, offsetof(FillBlankQtRecord, degree)) : -1;
}

TQ_API int TQ_CALL vcFillBlankQtFile_SetDegree(int file, int index, int value) {
  if (FillTables().Get(file) == nullptr) return -1;
  return FillTables().SetInt(file, index, offsetof(FillBlankQtRecord, degree), value);
}

TQ_API int TQ_CALL vcFillBlankQtFile_AddQtTextFile(const char* binaryPath, const char* textPath, int overwrite) {
  return tq::quiz::CompileFillText(binaryPath, textPath, overwrite);
}

TQ_API int TQ_CALL vcFillBlankQtFile_MakeHtml(int file, const char* htmlPath, int showDegree, int minDegree,
                                              int maxDegree, int unused, const char* backgroundImage,
                                              const int32_t* list, int randomOrder) {
  if (FillTables().Get(file) == nullptr) return -1;
  return FillTables().MakePage(file, htmlPath, showDegree, minDegree, maxDegree, backgroundImage, list, randomOrder);
}

TQ_API int TQ_CALL vcGenChoiceQtSentence(const char* question, const char* option, char* result, int resultSize) {
  std::string sentence = tq::quiz::ChoiceSentence(question, option);
  if (result != nullptr) std::memcpy(result, sentence.c_str(), sentence.size() + 1);
  return static_cast<int>(sentence.size());
}

TQ_API int TQ_CALL vcChoseQts(const char* indexPath, int unusedA, int rangeLow, int rangeHigh, int codeCount,
                              const int32_t* codes, int unusedB, int secondRangeLow, int secondRangeHigh,
                              const int32_t* included, int32_t* result) {
  tq::quiz::Selection sel;
  sel.range_low = rangeLow;
  sel.range_high = rangeHigh;
  sel.second_range = secondRangeLow != -1 && secondRangeHigh != -1;
  sel.code_count = codeCount;
  sel.codes = codes;
  sel.included = included;
  return tq::quiz::ChooseQuestions(indexPath, sel, result);
}

TQ_API void TQ_CALL vcTestStringArray(const char* const* strings, int count) {
  for (int i = 0; strings != nullptr && i < count; ++i) {
    tq::host::MessageBox(0, strings[i] != nullptr ? strings[i] : "", "", tq::host::kMbOk);
  }
}

TQ_API int TQ_CALL vcOpenUsageTest(const char* path) { return tq::quiz::TheUsageTest().Open(path); }

TQ_API int TQ_CALL vcGetUsageQt(int questionWindow, int optionWindow0, int optionWindow1, int optionWindow2) {
  const int options[3] = {optionWindow0, optionWindow1, optionWindow2};
  return tq::quiz::TheUsageTest().Next(questionWindow, options);
}

TQ_API void TQ_CALL vcCloseUsageTest(void) { tq::quiz::TheUsageTest().Close(); }

}  // extern "C"
