// The word set exports: thin wrappers over dict/word_set.h.
#include "dict/word_set.h"
#include "tqcomm2006.h"

extern "C" {

TQ_API int TQ_CALL vcCWordMSet_New(void) { return tq::WordSets().New(); }

TQ_API void TQ_CALL vcCWordMSet_AddWord(int set, const char* word) {
  tq::WordSet* s = tq::WordSets().Get(set);
  if (s == nullptr || word == nullptr) return;
  s->Add(word);
}

TQ_API int TQ_CALL vcCWordMSet_IsWordExists(int set, const char* word) {
  tq::WordSet* s = tq::WordSets().Get(set);
  if (s == nullptr || word == nullptr) return 0;
  return s->Contains(word) ? 1 : 0;
}

TQ_API void TQ_CALL vcCWordMSet_Delete(int set) {
  if (set == 0) return;
  tq::WordSets().Delete(set);
}

}  // extern "C"
