// Whole-file work on history files and list files, by path, with no wizard:
// making and growing a history, keeping it aligned with its book when a word
// is inserted or deleted, carrying progress between books, and summaries.
// Rewrites go through "tmptmp.his" in the working directory, so two of them
// must not run in one directory at once.
#pragma once

#include <cstdint>

namespace tq::history {

constexpr char kTempFile[] = "tmptmp.his";

int GenBlank(const char* path, int count);
int Append(const char* path, int count);
int Extract(const char* source, const char* dest, const int32_t* items, int count);
int Merge(const char* source, const char* dest, const int32_t* items, int count);
int InsertWord(const char* path, int position);
int DeleteWord(const char* path, int position);
int InsertInList(const char* path, int position);
int DeleteInList(const char* path, int position);
// With day not -1, a word never learnt is also learnt right on that day.
int SetItemAttr(const char* path, int item, int attr, int day);
// Counters are only added to: attr 0, 2, 1 and 3, in that order.
int GetBookInfo(const char* path, int32_t* not_met, int32_t* learning, int32_t* known, int32_t* mastered);
int ReadWordListByAttr(const char* path, int attr, int32_t* out);
int ReadAllDegrees(const char* path, int32_t* out);

}  // namespace tq::history
