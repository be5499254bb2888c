// The word text stream exports: thin wrappers over core/word_text.h.
#include "core/word_text.h"
#include "tqcomm2006.h"

extern "C" {

TQ_API int TQ_CALL vcCEnglishTxtFile_Open(const char* path) { return tq::OpenEnglishTextFile(path, false); }

TQ_API int TQ_CALL vcCEnglishTxtFile_OpenEx(const char* path, int splitLines) {
  return tq::OpenEnglishTextFile(path, splitLines != 0);
}

TQ_API int TQ_CALL vcCEnglishTxtFile_GetNextItem(int file, char* english, char* chinese) {
  tq::EnglishTextFile* f = tq::EnglishTextFiles().Get(file);
  if (f == nullptr) {
    if (english) english[0] = '\0';
    if (chinese) chinese[0] = '\0';
    return -1;
  }
  return f->NextItem(english, chinese);
}

TQ_API void TQ_CALL vcCEnglishTxtFile_Close(int file) {
  if (file == 0) return;
  tq::EnglishTextFiles().Spend(file);
}

TQ_API int TQ_CALL vcInitWordFileObj(WordFileObj* obj, const char* path, char* buffer, uint32_t bufferSize) {
  return tq::InitWordFile(obj, path, buffer, bufferSize);
}

TQ_API int TQ_CALL vcGetNextWordFromWordFile(WordFileObj* obj, char* word, char* mean) {
  return tq::NextWordFromWordFile(obj, word, mean);
}

TQ_API int TQ_CALL vcCloseWordFileObj(WordFileObj* obj) { return tq::CloseLeadingStream(&obj->hFile); }

TQ_API int TQ_CALL vcCloseFileForVb(TqStream* record) { return tq::CloseLeadingStream(record); }

}  // extern "C"
