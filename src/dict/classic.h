// The classic dictionary, the expression dictionary and the mean library:
// records that the caller owns, with their files as stream numbers.
#pragma once

#include <string>

#include "tqcomm2006.h"

namespace tq::dict {

void InitDict(DictObject* d, const char* idxPath, const char* libPath, char* workBuffer);
int OpenDict(DictObject* d);
int OpenDictDirect(DictObject* d, const char* idxPath, const char* libPath, char* workBuffer);
void CloseDict(TqStream* idx, TqStream* lib);
int SearchWord(DictObject* d, const char* word);
int SearchWordClosest(DictObject* d, const char* word);
int GetAllDetails(DictObject* d, char* out);
int GetADetail(DictObject* d, char* out, int index);
int GetMeanAndPron(DictObject* d, const char* word, char* mean, char* pron, bool closest);
int GetPron(DictObject* d, const char* word, char* pron);
int GetDetail(DictObject* d, char* out, const uint32_t* sections, int count);
int FillListWithEnglish(DictObject* d, int listWindow);
void FillRelatedWordList(DictObject* d, int synonymList, int antonymList);
int AddPron(DictObject* d, const char* srcPath, const char* dstPath);
int SearchOriginalWord(DictObject* d, const char* word, char* out);

void InitExpDict(ExpDictObject* d, const char* idxPath, const char* libPath, char* workBuffer);
int OpenExpDict(ExpDictObject* d);
int SearchExp(ExpDictObject* d, char* expression);
int GetAllDetailExp(ExpDictObject* d, char* out);
int GetADetailExp(ExpDictObject* d, char* out, int which);
int GetDetailExp(ExpDictObject* d, char* out, const uint32_t* sections, int count);
int GetDictExpMean(ExpDictObject* d, const char* expression, char* out);
int FillListWithExp(ExpDictObject* d, int listWindow);
int ExpNoneExactSearch(ExpDictObject* d, char* pattern, int listWindow, int progressWindow);

int OpenMeanLib(MeanLibObject* m, const char* path);
// The short meaning of word, or false when it is absent.
bool MeanLibLookup(MeanLibObject* m, const char* word, std::string* mean, std::string* pron);
int GetMeanLibMean(MeanLibObject* m, const char* word, char* out);
int GetMeanLibMeanAndPron(MeanLibObject* m, const char* word, char* mean, char* pron);
int CloseMeanLib(MeanLibObject* m);

int FindVary(const char* word, char* out);
int GetAllWordVarys(const char* word, char* out);

}  // namespace tq::dict
