// The vcCOrvexBook_ exports: look the book up, refuse at once, forward.
//
// The book family tests the handle argument itself: 0 answers at once with
// the family's value for that call (0 or -1). A handle whose slot is empty
// answers the same way.
#include "learning/history_file.h"
#include "learning/tables.h"
#include "tqcomm2006.h"

using tq::Book;
using tq::BookEntryIn;
using tq::BookEntryOut;
using tq::Books;

namespace {

BookEntryOut Out(char* word, char* explanation, char* pron, char* extra1, char* extra2, int32_t* cls) {
  BookEntryOut out;
  out.word = word;
  out.explanation = explanation;
  out.pronunciation = pron;
  out.extra1 = extra1;
  out.extra2 = extra2;
  out.word_class = cls;
  return out;
}

BookEntryIn In(const char* word, const char* explanation, const char* pron, const char* extra1,
               const char* extra2, int first_line_only) {
  BookEntryIn in;
  in.word = word;
  in.explanation = explanation;
  in.pronunciation = pron;
  in.extra1 = extra1;
  in.extra2 = extra2;
  in.first_line_only = first_line_only != 0;
  return in;
}

}  // namespace

extern "C" {

TQ_API int TQ_CALL vcCOrvexBook_New(void) { return Books().New(); }

TQ_API void TQ_CALL vcCOrvexBook_Delete(int book) { Books().Delete(book); }

TQ_API int TQ_CALL vcCOrvexBook_SetBookFileName(int book, const char* idxPath, const char* libPath) {
  Book* b = Books().Get(book);
  return b ? b->SetFileNames(idxPath, libPath) : 0;
}

TQ_API int TQ_CALL vcCOrvexBook_OpenIdx(int book, const char* mode) {
  Book* b = Books().Get(book);
  return b ? b->OpenIdx(mode) : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_CloseIdx(int book) {
  Book* b = Books().Get(book);
  return b ? b->CloseIdx() : 0;
}

TQ_API int TQ_CALL vcCOrvexBook_ReadWholeIdx(int book, int32_t* dest) {
  Book* b = Books().Get(book);
  return b ? b->ReadWholeIdx(dest) : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_WriteWholeIdx(int book, const int32_t* src, int count) {
  Book* b = Books().Get(book);
  return b ? b->WriteWholeIdx(src, count) : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_OpenLib(int book, const char* mode) {
  Book* b = Books().Get(book);
  return b ? b->OpenLib(mode) : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_CloseLib(int book) {
  Book* b = Books().Get(book);
  return b ? b->CloseLib() : 0;
}

TQ_API void TQ_CALL vcCOrvexBook_GetWord(int book, const int32_t* offset, char* word, char* explanation,
                                        char* pronunciation, char* extra1, char* extra2, int32_t* wordClass) {
  Book* b = Books().Get(book);
  if (b) b->GetWord(offset, Out(word, explanation, pronunciation, extra1, extra2, wordClass));
}

TQ_API void TQ_CALL vcCOrvexBook_GetWordByNo(int book, int no, char* word, char* explanation,
                                            char* pronunciation, char* extra1, char* extra2, int32_t* wordClass) {
  Book* b = Books().Get(book);
  if (b) b->GetWordByNo(no, Out(word, explanation, pronunciation, extra1, extra2, wordClass));
}

TQ_API int TQ_CALL vcCOrvexBook_AppendWord(int book, int libOpen, const char* word, const char* explanation,
                                          const char* pronunciation, const char* extra1, const char* extra2,
                                          int firstLineOnly) {
  Book* b = Books().Get(book);
  return b ? b->AppendWord(libOpen, In(word, explanation, pronunciation, extra1, extra2, firstLineOnly)) : 0;
}

TQ_API int TQ_CALL vcCOrvexBook_AddWord(int book, int libOpen, int position, const char* word,
                                       const char* explanation, const char* pronunciation, const char* extra1,
                                       const char* extra2, int /*unused*/, int firstLineOnly) {
  Book* b = Books().Get(book);
  return b ? b->AddWord(libOpen, position, In(word, explanation, pronunciation, extra1, extra2, firstLineOnly))
           : 0;
}

TQ_API int TQ_CALL vcCOrvexBook_IfWordInBook(int book, const char* word) {
  Book* b = Books().Get(book);
  return b ? b->IfWordInBook(word) : 0;
}

TQ_API int TQ_CALL vcCOrvexBook_DeleteWord(int book, int position) {
  Book* b = Books().Get(book);
  return b ? b->DeleteWord(position) : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_GetBookWordNum(int book) {
  Book* b = Books().Get(book);
  return b ? b->GetWordCount() : -1;
}

TQ_API int TQ_CALL vcCOrvexBook_InsertTag(const char* tagPath, int position) {
  return tq::InsertTag(tagPath, position);
}

TQ_API int TQ_CALL vcCOrvexBook_DeleteTag(const char* tagPath, int position) {
  return tq::DeleteTag(tagPath, position);
}

}  // extern "C"

// The vcCOrvexWizard_ exports. The wizard family tests the slot: an empty
// handle answers its own number, except where noted (0 for
// GetListLength, GetItemAttr and SetDate).
using tq::Wizard;
using tq::Wizards;

extern "C" {

TQ_API int TQ_CALL vcCOrvexWizard_New(void) { return Wizards().New(); }

TQ_API void TQ_CALL vcCOrvexWizard_Delete(int wizard) { Wizards().Delete(wizard); }

TQ_API int TQ_CALL vcCOrvexWizard_SetLearningBook(int wizard, int book) {
  Wizard* w = Wizards().Get(wizard);
  if (w == nullptr) return wizard;
  w->SetLearningBook(book);
  return 1;
}

TQ_API int TQ_CALL vcCOrvexWizard_SetForgetCurve(int wizard, const int32_t* curve) {
  Wizard* w = Wizards().Get(wizard);
  if (w == nullptr) return wizard;
  w->SetForgetCurve(curve);
  return 1;
}

TQ_API void TQ_CALL vcCOrvexWizard_SetFileNames(int wizard, const char* historyPath) {
  if (Wizard* w = Wizards().Get(wizard)) w->SetFileName(historyPath);
}

TQ_API int TQ_CALL vcCOrvexWizard_SetDate(int wizard, int today) {
  Wizard* w = Wizards().Get(wizard);
  if (w == nullptr) return 0;
  w->SetDate(today);
  return 1;
}

TQ_API int TQ_CALL vcCOrvexWizard_GetWordsToLearn(int wizard, int mode, int limit) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->GetWordsToLearn(mode, limit) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_AddTodayList(int wizard, int modeFlag, int limit, int32_t* added) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->AddTodayList(modeFlag, limit, added) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_LearnItem(int wizard, int result) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->LearnItem(result) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_GetListLength(int wizard) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->ListLength() : 0;
}

TQ_API void TQ_CALL vcCOrvexWizard_GetItemEnglish(int wizard, char* out, int /*unused*/) {
  if (Wizard* w = Wizards().Get(wizard)) w->GetItemEnglish(out);
}

TQ_API void TQ_CALL vcCOrvexWizard_GetItemChinese(int wizard, char* out, int /*unused*/) {
  if (Wizard* w = Wizards().Get(wizard)) w->GetItemChinese(out);
}

TQ_API void TQ_CALL vcCOrvexWizard_GetItemPron(int wizard, char* out, int /*unused*/) {
  if (Wizard* w = Wizards().Get(wizard)) w->GetItemPron(out);
}

TQ_API int TQ_CALL vcCOrvexWizard_GetItemAttr(int wizard, int32_t* shownCount, int32_t* firstDate) {
  Wizard* w = Wizards().Get(wizard);
  if (w == nullptr) return 0;
  w->GetItemAttr(shownCount, firstDate);
  return 1;
}

TQ_API void TQ_CALL vcCOrvexWizard_GetItemAttrString(int wizard, int position, char* out) {
  if (Wizard* w = Wizards().Get(wizard)) w->GetItemAttrString(position, out);
}

TQ_API int TQ_CALL vcCOrvexWizard_SaveList(int wizard, const char* listPath) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->SaveList(listPath) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_LoadList(int wizard, const char* listPath) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->LoadList(listPath) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_ExportList(int wizard, int32_t* items) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->ExportList(items) : wizard;
}

TQ_API int TQ_CALL vcCOrvexWizard_AppendMp3List(int wizard, int32_t* items, int count) {
  Wizard* w = Wizards().Get(wizard);
  return w ? w->AppendMp3List(items, count) : wizard;
}

// History file upkeep: paths only, no wizard.

TQ_API int TQ_CALL vcCOrvexWizard_GenBlankHistoryFile(const char* path, int count) {
  return tq::history::GenBlank(path, count);
}

TQ_API int TQ_CALL vcCOrvexWizard_AppendHistoryFile(const char* path, int count) {
  return tq::history::Append(path, count);
}

TQ_API int TQ_CALL vcCOrvexWizard_ExtractHistoryFile(const char* source, const char* dest, const int32_t* items,
                                                     int count) {
  return tq::history::Extract(source, dest, items, count);
}

TQ_API int TQ_CALL vcCOrvexWizard_MergeHistoryFile(const char* source, const char* dest, const int32_t* items,
                                                   int count) {
  return tq::history::Merge(source, dest, items, count);
}

TQ_API int TQ_CALL vcCOrvexWizard_InsertWordInAll(const char* path, int position) {
  return tq::history::InsertWord(path, position);
}

TQ_API int TQ_CALL vcCOrvexWizard_DeleteWordInAll(const char* path, int position) {
  return tq::history::DeleteWord(path, position);
}

TQ_API int TQ_CALL vcCOrvexWizard_InsertWordInLlr(const char* path, int position) {
  return tq::history::InsertInList(path, position);
}

TQ_API int TQ_CALL vcCOrvexWizard_DeleteWordInLlr(const char* path, int position) {
  return tq::history::DeleteInList(path, position);
}

TQ_API int TQ_CALL vcCOrvexWizard_SetItemAttrInFile(const char* path, int item, int attr) {
  return tq::history::SetItemAttr(path, item, attr, -1);
}

TQ_API int TQ_CALL vcCOrvexWizard_SetItemAttrInFileEx(const char* path, int item, int attr, int day) {
  return tq::history::SetItemAttr(path, item, attr, day);
}

TQ_API int TQ_CALL vcCOrvexWizard_GetBookInfo(const char* path, int32_t* notMet, int32_t* learning, int32_t* known,
                                              int32_t* mastered) {
  return tq::history::GetBookInfo(path, notMet, learning, known, mastered);
}

TQ_API int TQ_CALL vcCOrvexWizard_ReadWordListByAttr(const char* path, int attr, int32_t* items) {
  return tq::history::ReadWordListByAttr(path, attr, items);
}

TQ_API int TQ_CALL vcCOrvexWizard_ReadAllDegrees(const char* path, int32_t* degrees) {
  return tq::history::ReadAllDegrees(path, degrees);
}

}  // extern "C"
