// The record functions of word books and notebooks: refuse a missing record
// or path at once, forward to the record reader, the notebook or the
// painter.
#include "learning/book_painter.h"
#include "learning/book_record.h"
#include "learning/learning_status.h"
#include "learning/notebook.h"
#include "tqcomm2006.h"

using tq::ListPainter;
using tq::Notebook;
using tq::RecordBook;

extern "C" {

TQ_API int TQ_CALL vcOpenBookIdxAndReturnNum(BookRecord* book, const char* idxPath) {
  if (book == nullptr || idxPath == nullptr) return -1;
  return RecordBook(book).OpenIdx(idxPath);
}

TQ_API int TQ_CALL vcOpenBookLib(BookRecord* book, const char* libPath) {
  if (book == nullptr) return -1;
  return RecordBook(book).OpenLib(libPath);
}

TQ_API int TQ_CALL vcReadBookIndex(BookRecord* book, int32_t* dest, int count) {
  if (book == nullptr || (dest == nullptr && count > 0)) return -2;
  return RecordBook(book).ReadIndex(dest, count);
}

TQ_API int TQ_CALL vcCloseBookIdx(BookRecord* book) { return book ? RecordBook(book).CloseIdx() : 0; }

TQ_API int TQ_CALL vcCloseBookLib(BookRecord* book) { return book ? RecordBook(book).CloseLib() : 0; }

TQ_API int TQ_CALL vcGetEnglishWordFromBook(BookRecord* book, int offset, char* out) {
  if (book == nullptr || out == nullptr) return -1;
  return RecordBook(book).Word(offset, out);
}

TQ_API int TQ_CALL vcGetEnglishWordFromBookByNo(BookRecord* book, int no, char* out) {
  if (book == nullptr || out == nullptr) return -1;
  return RecordBook(book).WordByNo(no, out);
}

TQ_API int TQ_CALL vcGetExplainFromBook(BookRecord* book, int offset, char* out) {
  if (book == nullptr || out == nullptr) return 0;
  return RecordBook(book).Explanation(offset, out);
}

TQ_API int TQ_CALL vcExportBookWords(BookRecord* book, const char* outPath) {
  if (book == nullptr || outPath == nullptr) return -3;
  return RecordBook(book).Export(outPath);
}

TQ_API int TQ_CALL vcGetBookWordNum(const char* idxPath) { return tq::IndexWordCount(idxPath); }

TQ_API int TQ_CALL vcGetOrvexNotebookWordNum(const char* idxPath) { return tq::IndexWordCount(idxPath); }

TQ_API void TQ_CALL vcDispWord(BookRecord* book, int offset, int dc, int x, int y) {
  if (book == nullptr) return;
  ListPainter(dc).Word(RecordBook(book).lib(), offset, x, y);
}

TQ_API void TQ_CALL vcDispPronun(BookRecord* book, int offset, int dc, int x, int y) {
  if (book == nullptr) return;
  RecordBook record(book);
  ListPainter(dc).Pronunciation(record.lib(), record.separator(), offset, x, y);
}

TQ_API int TQ_CALL vcDispExplain(BookRecord* book, int offset, int dc, int x, int y) {
  if (book == nullptr) return 0;
  RecordBook record(book);
  return ListPainter(dc).Explanation(record.lib(), record.separator(), offset, x, y);
}

TQ_API void TQ_CALL DrawPronStr(int dc, const char* text, int x, int y) {
  if (text != nullptr) ListPainter(dc).PronText(text, x, y);
}

TQ_API void TQ_CALL vcDrawUnderLine(int dc, uint32_t colour) { ListPainter(dc).Underline(colour); }

TQ_API int TQ_CALL vcOpenBookTagAndReturnNum(BookRecord* book, const char* idxPath) {
  if (book == nullptr) return -1;
  return RecordBook(book).OpenTags(idxPath);
}

TQ_API int TQ_CALL vcReadWordTagThenCloseTag(BookRecord* book, int32_t* buffer) {
  if (book == nullptr || buffer == nullptr) return -2;
  return RecordBook(book).ReadTagsThenClose(buffer);
}

TQ_API int TQ_CALL vcOpen_Read_CloseBookTag(BookRecord* book, int32_t* buffer, const char* idxPath) {
  if (book == nullptr || buffer == nullptr) return -1;
  return RecordBook(book).ReadTagsOnce(buffer, idxPath);
}

TQ_API int TQ_CALL vcWriteWordTagFile(BookRecord* book, const char* idxPath, const int32_t* buffer, int count) {
  if (book == nullptr) return -3;
  return RecordBook(book).WriteTags(idxPath, buffer, count);
}

TQ_API int TQ_CALL vcMakeBlankNoteBook(const char* libPath) { return tq::MakeBlankNotebookLibrary(libPath); }

TQ_API int TQ_CALL vcFullAppendNotebook(const char* idxPath, const char* word, const char* explanation,
                                       const char* pronunciation, int firstLineOnly) {
  if (idxPath == nullptr) return -1;
  return Notebook(idxPath).Append(word, explanation, pronunciation, firstLineOnly != 0);
}

TQ_API int TQ_CALL vcFullAppendBlankNoteTags(const char* idxPath, int n) {
  if (idxPath == nullptr) return -1;
  return Notebook(idxPath).AppendBlankTags(n);
}

TQ_API void TQ_CALL vcDeleteNoteBook(BookRecord* book, const char* idxPath) {
  if (book == nullptr && idxPath == nullptr) return;
  std::string stem = idxPath ? idxPath : RecordBook(book).Stem(nullptr);
  if (!stem.empty()) Notebook(stem).Clear();
}

TQ_API int TQ_CALL vcDeleteNoteBookWords(BookRecord* book, const int32_t* offsets, const int32_t* tags,
                                        const int32_t* flags, int n) {
  if (book == nullptr) return -1;
  return Notebook(RecordBook(book).Stem(nullptr)).KeepWords(book, offsets, tags, flags, n);
}

TQ_API int TQ_CALL vcGetLearningStatus(void) { return tq::LearningStatus(); }

TQ_API int TQ_CALL vcPrepareFontLib(const char* srcPath, const char* dstPath) {
  return tq::CopyWithSoundKey(srcPath, dstPath);
}

}  // extern "C"
