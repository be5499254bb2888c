// The text services' exports: thin wrappers over core/text.h.
#include <cstdlib>
#include <cstring>

#include "core/text.h"
#include "tqcomm2006.h"

namespace {

// Stands for the process heap in a MemoryBlock; blocks come from malloc.
char g_process_heap;

}  // namespace

extern "C" {

TQ_API void TQ_CALL Ltrim(char* s) { tq::Ltrim(s); }
TQ_API void TQ_CALL Rtrim(char* s) { tq::Rtrim(s); }
TQ_API void TQ_CALL StrongRtrim(char* s) { tq::StrongRtrim(s); }
TQ_API void TQ_CALL NoBlankAndReturnChar(char* s) { tq::NoBlankAndReturnChar(s); }
TQ_API void TQ_CALL CStrRtrim(char* s, int n) { tq::CStrRtrim(s, n); }
TQ_API int TQ_CALL AdjustCrLf(char* s) { return tq::AdjustCrLf(s); }
TQ_API int TQ_CALL BreakLine(char* s, int width) { return tq::BreakLine(s, width); }

TQ_API int TQ_CALL IsEnglishWord(const char* s) { return tq::IsEnglishWord(s) ? 1 : 0; }
TQ_API int TQ_CALL vcIsChinese(const char* s) { return tq::IsChinese(s) ? 1 : 0; }
TQ_API int TQ_CALL vcIsExpress(const char* s) { return tq::IsExpress(s) ? 1 : 0; }
TQ_API int TQ_CALL vcIsValidFileName(const char* s) { return tq::IsValidFileName(s) ? 1 : 0; }
TQ_API int TQ_CALL vcIsWordInSentence(const char* sentence, const char* word, int32_t* position) {
  int at = 0;
  if (!tq::IsWordInSentence(sentence, word, &at)) return 0;
  if (position) *position = at;
  return 1;
}

TQ_API int TQ_CALL vcRemoveChineseTail(const char* src, char* out) { return tq::RemoveChineseTail(src, out); }
TQ_API int TQ_CALL vcGetTtsChinesStr(const char* src, char* out) { return tq::TtsChineseText(src, out); }
TQ_API int TQ_CALL vcConvertSentenceToFileName(const char* src, char* out) {
  return tq::SentenceToFileName(src, out);
}
TQ_API void TQ_CALL vcRestoreUrlSentence(char* s) { tq::RestoreUrlSentence(s); }
TQ_API void TQ_CALL vcStrEqualReplace(char* text, const char* from, const char* to) {
  tq::StrEqualReplace(text, from, to);
}
TQ_API int TQ_CALL vcExtractFileNameFromPath(const char* path, char* out) { return tq::FileNameFromPath(path, out); }
TQ_API int TQ_CALL vcGetFileExtName(char* path, char* out) { return tq::FileExtName(path, out); }

TQ_API int TQ_CALL vcMystrlen(const char* s) { return tq::CharLength(s); }
TQ_API int TQ_CALL vcVbStrlen(const char* s) { return tq::CharLength(s); }
TQ_API int TQ_CALL vcVBStringLen(const char* s) { return tq::CharLength(s); }
TQ_API int TQ_CALL vcStrlen(const char* s) { return static_cast<int>(std::strlen(s)); }
TQ_API int TQ_CALL vcStrcpy(char* dest, const char* src) {
  std::strcpy(dest, src);
  return static_cast<int>(std::strlen(dest));
}
TQ_API int TQ_CALL vcStrcat(char* dest, const char* src) {
  std::strcat(dest, src);
  return static_cast<int>(std::strlen(dest));
}
TQ_API void TQ_CALL vcStrupr(char* s) { tq::AsciiUpper(s); }
TQ_API void TQ_CALL vcStrlwr(char* s) { tq::AsciiLower(s); }
TQ_API int TQ_CALL vcStrcmp(const char* a, const char* b) { return tq::FoldCompare(a, b); }
TQ_API int TQ_CALL vcSetCharInString(char* s, int index, int byte) {
  s[index] = static_cast<char>(byte);
  return byte;
}

TQ_API MemoryFileObj* TQ_CALL InitMemoryFileObj(MemoryFileObj* obj, const char* text) {
  obj->text = text;
  obj->position = 0;
  return obj;
}
TQ_API int TQ_CALL MemoryFgets(MemoryFileObj* obj, char* out) {
  return tq::MemoryNextLine(obj->text, &obj->position, out);
}
TQ_API int TQ_CALL MemoryGetWord(MemoryFileObj* obj, char* out) {
  return tq::MemoryNextWord(obj->text, &obj->position, out);
}

TQ_API void TQ_CALL vcSortIntArray(int32_t* a, int count) { tq::SortInts(a, count); }
TQ_API int TQ_CALL vcBinarySearchIntArray(const int32_t* a, int count, int value) {
  return tq::FindFirstInt(a, count, value);
}
TQ_API void TQ_CALL vcSortUINT(uint32_t* a, int count) { tq::SortUints(a, count); }
TQ_API int TQ_CALL vcRemoveSameUINT(uint32_t* a, int count) { return tq::RemoveSameUints(a, count); }
TQ_API void TQ_CALL vcRandomIntArray(int32_t* a, int count) { tq::ShuffleInts(a, count); }

TQ_API void* TQ_CALL AllocMemory(MemoryBlock* block, int size) {
  void* p = std::calloc(size > 0 ? static_cast<size_t>(size) : 1, 1);
  block->heap = &g_process_heap;
  block->block = p;
  return p;
}
TQ_API void TQ_CALL FreeMemory(MemoryBlock* block) {
  std::free(block->block);
  block->block = nullptr;
}

}  // extern "C"
