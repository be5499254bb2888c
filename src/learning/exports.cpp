// The vcCOrvexBook_ exports: look the book up, refuse at once, forward.
//
// The book family tests the handle argument itself: 0 answers at once with
// the family's value for that call (0 or -1). A handle whose slot is empty
// answers the same way.
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
