// The dictionary exports. The classic family works on records that the
// caller owns; the compact family looks its handle up and answers -1 (or
// the value noted) for an empty one.
#include "dict/cipher.h"
#include "dict/classic.h"
#include "dict/ec_dict.h"
#include "tqcomm2006.h"

namespace d = tq::dict;
using tq::dict::EcDict;

namespace {

EcDict* Ec(int handle) { return d::EcDictTable().Get(handle); }

}  // namespace

extern "C" {

TQ_API void TQ_CALL vcInitDictObject(DictObject* dict, const char* idxPath, const char* libPath, char* workBuffer) {
  d::InitDict(dict, idxPath, libPath, workBuffer);
}
TQ_API int TQ_CALL vcCmOpenDict(DictObject* dict) { return d::OpenDict(dict); }
TQ_API int TQ_CALL vcCmOpenDictDirect(DictObject* dict, const char* idxPath, const char* libPath,
                                      char* workBuffer) {
  return d::OpenDictDirect(dict, idxPath, libPath, workBuffer);
}
TQ_API int TQ_CALL vcCmCloseDict(DictObject* dict) {
  d::CloseDict(&dict->hIdx, &dict->hLib);
  return 0;
}
TQ_API int TQ_CALL DecodeExplain(unsigned char* buffer, int length, uint32_t filePos) {
  return d::DecodeExplain(buffer, length, filePos);
}
TQ_API int TQ_CALL DecodeIdx(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize) {
  return d::DecodeIdx(record, recordPos, wordFieldSize);
}
TQ_API int TQ_CALL vcCmSearchWord(DictObject* dict, const char* word) { return d::SearchWord(dict, word); }
TQ_API int TQ_CALL vcCmSearchWordClosest(DictObject* dict, const char* word) {
  return d::SearchWordClosest(dict, word);
}
TQ_API int TQ_CALL vcCmGetAllDetails(DictObject* dict, char* out) { return d::GetAllDetails(dict, out); }
TQ_API int TQ_CALL vcCmGetADetail(DictObject* dict, char* out, int index) { return d::GetADetail(dict, out, index); }
TQ_API int TQ_CALL vcCmGetDictMeanAndPron(DictObject* dict, const char* word, char* mean, char* pron) {
  return d::GetMeanAndPron(dict, word, mean, pron, false);
}
TQ_API int TQ_CALL vcCmGetDictMeanAndPronClosest(DictObject* dict, const char* word, char* mean, char* pron) {
  return d::GetMeanAndPron(dict, word, mean, pron, true);
}
TQ_API int TQ_CALL vcCmGetDictPron(DictObject* dict, const char* word, char* pron) {
  return d::GetPron(dict, word, pron);
}
TQ_API int TQ_CALL vcCmGetDetail(DictObject* dict, char* out, const uint32_t* sections, int count) {
  return d::GetDetail(dict, out, sections, count);
}

TQ_API void TQ_CALL vcInitExpDictObject(ExpDictObject* dict, const char* idxPath, const char* libPath,
                                        char* workBuffer) {
  d::InitExpDict(dict, idxPath, libPath, workBuffer);
}
TQ_API int TQ_CALL vcCmOpenExpDict(ExpDictObject* dict) { return d::OpenExpDict(dict); }
TQ_API int TQ_CALL vcCmCloseExpDict(ExpDictObject* dict) {
  d::CloseDict(&dict->hIdx, &dict->hLib);
  return 0;
}
TQ_API int TQ_CALL vcCmSearchExp(ExpDictObject* dict, char* expression) { return d::SearchExp(dict, expression); }
TQ_API int TQ_CALL vcCmGetAllDetailExp(ExpDictObject* dict, char* out) { return d::GetAllDetailExp(dict, out); }
TQ_API int TQ_CALL vcCmGetADetailExp(ExpDictObject* dict, char* out, int which) {
  return d::GetADetailExp(dict, out, which);
}
TQ_API int TQ_CALL vcCmGetDetailExp(ExpDictObject* dict, char* out, const uint32_t* sections, int count) {
  return d::GetDetailExp(dict, out, sections, count);
}
TQ_API int TQ_CALL vcCmGetDictExpMean(ExpDictObject* dict, const char* expression, char* out) {
  return d::GetDictExpMean(dict, expression, out);
}

TQ_API int TQ_CALL vcCmOpenMeanLib(MeanLibObject* lib, const char* path) { return d::OpenMeanLib(lib, path); }
TQ_API int TQ_CALL vcCmGetMeanLibMean(MeanLibObject* lib, const char* word, char* out) {
  return d::GetMeanLibMean(lib, word, out);
}
TQ_API int TQ_CALL vcCmGetMeanLibMeanAndPron(MeanLibObject* lib, const char* word, char* mean, char* pron) {
  return d::GetMeanLibMeanAndPron(lib, word, mean, pron);
}
TQ_API int TQ_CALL vcCmCloseMeanLib(MeanLibObject* lib) { return d::CloseMeanLib(lib); }

TQ_API int TQ_CALL vcFillListWithEnglish(DictObject* dict, int listWindow) {
  return d::FillListWithEnglish(dict, listWindow);
}
TQ_API int TQ_CALL vcFillListWithExp(ExpDictObject* dict, int listWindow) {
  return d::FillListWithExp(dict, listWindow);
}
TQ_API void TQ_CALL vcFillRelatedWordList(DictObject* dict, int synonymList, int antonymList) {
  d::FillRelatedWordList(dict, synonymList, antonymList);
}
TQ_API int TQ_CALL vcAddPron(DictObject* dict, const char* srcPath, const char* dstPath) {
  return d::AddPron(dict, srcPath, dstPath);
}
TQ_API int TQ_CALL vcExpNoneExactSearch(ExpDictObject* dict, char* pattern, int listWindow, int progressWindow) {
  return d::ExpNoneExactSearch(dict, pattern, listWindow, progressWindow);
}

TQ_API int TQ_CALL vcCmSearchOrignalWord(DictObject* dict, const char* word, char* out) {
  return d::SearchOriginalWord(dict, word, out);
}
TQ_API int TQ_CALL vcFindVary(const char* word, char* out) { return d::FindVary(word, out); }
TQ_API int TQ_CALL vcGetAllWordVarys(const char* word, char* out) { return d::GetAllWordVarys(word, out); }

// ---- compact dictionary ----

TQ_API int TQ_CALL vcEcDict_Open(const char* idxPath, const char* libPath, char* workBuffer) {
  return d::OpenEcDict(idxPath, libPath, workBuffer);
}
TQ_API void TQ_CALL vcEcDict_Close(int dict) {
  if (Ec(dict) != nullptr) d::EcDictTable().Delete(dict);
}
TQ_API int TQ_CALL vcEcDict_Search(int dict, const char* word, int tryBaseForm, int acceptClosest) {
  EcDict* e = Ec(dict);
  return e ? e->Search(word, tryBaseForm, acceptClosest) : -1;
}
TQ_API int TQ_CALL vcEcDict_GetSeachResult(int dict) {
  EcDict* e = Ec(dict);
  return e ? e->SearchResult() : -1;
}
TQ_API int TQ_CALL vcEcDict_GetWordGrade(int dict) {
  EcDict* e = Ec(dict);
  return e ? e->WordGrade() : -1;
}
TQ_API int TQ_CALL vcEcDict_GetResultWord(int dict, char* out) {
  EcDict* e = Ec(dict);
  if (e == nullptr) {
    if (out != nullptr) out[0] = '\0';
    return -1;
  }
  return e->GetResultWord(out);
}
TQ_API int TQ_CALL vcEcDict_GetMeanOrPron(int dict, char* mean, char* pron) {
  EcDict* e = Ec(dict);
  return e ? e->GetMeanOrPron(mean, pron) : -1;
}
TQ_API int TQ_CALL vcEcDict_GetDetailLength(int dict, int index) {
  EcDict* e = Ec(dict);
  return e ? e->GetDetailLength(index) : -1;
}
TQ_API int TQ_CALL vcEcDict_GetDetailLengthArray(int dict, uint32_t* lengths) {
  EcDict* e = Ec(dict);
  return e ? e->GetDetailLengthArray(lengths) : -1;
}
TQ_API int TQ_CALL vcEcDict_GetAllDetails(int dict, char* out) {
  EcDict* e = Ec(dict);
  return e ? e->GetAllDetails(out) : -1;
}
TQ_API int TQ_CALL vcEcDict_GetOneDetail(int dict, char* out, int index) {
  EcDict* e = Ec(dict);
  return e ? e->GetOneDetail(out, index) : -1;
}
TQ_API int TQ_CALL vcEcDict_FillListWithEnglish(int dict, int listWindow) {
  EcDict* e = Ec(dict);
  return e ? e->FillListWithEnglish(listWindow) : -1;
}
TQ_API int TQ_CALL vcEcDict_FillRelatedWordList(int dict, int synonymList, int antonymList) {
  EcDict* e = Ec(dict);
  return e ? e->FillRelatedWordList(synonymList, antonymList) : -1;
}
TQ_API int TQ_CALL vcEcDict_WildSearch(int dict, char* pattern, char* outBuffer, int listWindow,
                                       int progressWindow) {
  EcDict* e = Ec(dict);
  return e ? e->WildSearch(pattern, outBuffer, listWindow, progressWindow) : -1;
}
TQ_API int TQ_CALL vcOldDictToNew(void) { return d::OldDictToNew(); }
TQ_API int TQ_CALL vcCmAppendMean(MeanLibObject* meanLib, int wordDict, int exprDict, const char* srcPath,
                                  const char* dstPath) {
  return d::AppendMean(meanLib, Ec(wordDict), Ec(exprDict), srcPath, dstPath);
}

}  // extern "C"
