/*
 * tqcomm2006: the engine library of the vocabulary suite.
 *
 * This header is the whole boundary. Every function takes and returns 32-bit
 * integers, pointers to buffers the caller owns, or pointers to records the
 * caller owns and whose layout below is fixed. Text is NUL-terminated GBK in
 * both directions. Output buffers carry no size: each function says how much
 * room it needs, and the library trusts the caller.
 *
 * Objects that live between calls stand behind small integer handles; 0 is
 * never a handle. Failure is told by the return value alone, and each family
 * keeps the values its callers have always relied on: read each function's
 * note rather than assuming 1 and -1.
 */
#ifndef TQCOMM2006_H
#define TQCOMM2006_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define TQ_CALL __stdcall
#if defined(TQ_BUILDING_LIBRARY)
#define TQ_API __declspec(dllexport)
#else
#define TQ_API __declspec(dllimport)
#endif
#else
#define TQ_CALL
#define TQ_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define TQ_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
extern "C" {
#else
#define TQ_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif

/* Records hold their files as 32-bit stream numbers (0 = none), never as
 * pointers, so a record has one layout in 32- and 64-bit builds. */
typedef uint32_t TqStream;

/* ======================================================================
 * Word books: vcCOrvexBook_
 *
 * A book is an index file (one 32-bit library offset per word), a library
 * file of delimited entries (by default the index path plus ".lib") and a
 * tag file (the index path plus ".tag": 400 bytes of header, then one 32-bit
 * tag per word). A word's item number is its position in the index.
 *
 * Handles 1 to 29. vcCOrvexBook_New answers 0 when all are taken. A handle
 * of 0 answers 0 or -1 as noted, without doing anything.
 * Text outputs: word 200 bytes, pronunciation and explanation as long as the
 * library holds (4,000 is ample for books made here), second extra 3,100.
 * ====================================================================== */

/* A new book with both files closed and no paths; 0 when the table is full. */
TQ_API int TQ_CALL vcCOrvexBook_New(void);
/* Frees the book. Files still open are not closed. */
TQ_API void TQ_CALL vcCOrvexBook_Delete(int book);
/* Names the index; a null library path means the index path plus ".lib".
 * 1; handle 0 answers 0. */
TQ_API int TQ_CALL vcCOrvexBook_SetBookFileName(int book, const char* idxPath, const char* libPath);
/* Opens the index with the given fopen mode; the word count, or -1. */
TQ_API int TQ_CALL vcCOrvexBook_OpenIdx(int book, const char* mode);
/* The result of the close, or 0 when the index was not open (handle 0: 0). */
TQ_API int TQ_CALL vcCOrvexBook_CloseIdx(int book);
/* Reads every offset of the index into dest; the number read, 0 when the
 * index cannot be opened, -1 for handle 0. */
TQ_API int TQ_CALL vcCOrvexBook_ReadWholeIdx(int book, int32_t* dest);
/* Writes count offsets as the whole index; the number written (-1 for 0). */
TQ_API int TQ_CALL vcCOrvexBook_WriteWholeIdx(int book, const int32_t* src, int count);
/* Opens the library with the given mode; its length in bytes, or -1. */
TQ_API int TQ_CALL vcCOrvexBook_OpenLib(int book, const char* mode);
/* As vcCOrvexBook_CloseIdx. */
TQ_API int TQ_CALL vcCOrvexBook_CloseLib(int book);
/* Reads the entry at *offset of the open library. Every output may be null:
 * the field is then read past. The class output is written only when the
 * explanation opens with a class mark "{nn}", which is then removed. */
TQ_API void TQ_CALL vcCOrvexBook_GetWord(int book, const int32_t* offset, char* word, char* explanation,
                                        char* pronunciation, char* extra1, char* extra2, int32_t* wordClass);
/* As vcCOrvexBook_GetWord for word number no; needs index and library open. */
TQ_API void TQ_CALL vcCOrvexBook_GetWordByNo(int book, int no, char* word, char* explanation,
                                            char* pronunciation, char* extra1, char* extra2, int32_t* wordClass);
/* Appends an entry to the library and its offset to the index. When the
 * low byte of libOpen is set the caller has the library open (for append)
 * and it stays open. A set firstLineOnly keeps the explanation's first line.
 * 1, or -1; handle 0 answers 0. */
TQ_API int TQ_CALL vcCOrvexBook_AppendWord(int book, int libOpen, const char* word, const char* explanation,
                                          const char* pronunciation, const char* extra1, const char* extra2,
                                          int firstLineOnly);
/* Appends an entry to the library and inserts its offset into the index at
 * position (through "tmpidx.idx" in the working directory). The library
 * offset of the new entry, or -1; handle 0 answers 0. */
TQ_API int TQ_CALL vcCOrvexBook_AddWord(int book, int libOpen, int position, const char* word,
                                       const char* explanation, const char* pronunciation, const char* extra1,
                                       const char* extra2, int unused, int firstLineOnly);
/* Exact, case-sensitive linear search: 1 found, 0 not found or no index,
 * -1 no library. Leaves both of the book's files closed. */
TQ_API int TQ_CALL vcCOrvexBook_IfWordInBook(int book, const char* word);
/* Drops the index entry at position (the last one when position is past
 * it); the library keeps the entry. -1 when the index cannot be opened. */
TQ_API int TQ_CALL vcCOrvexBook_DeleteWord(int book, int position);
/* The word count, from the open index or by measuring the file; -1. */
TQ_API int TQ_CALL vcCOrvexBook_GetBookWordNum(int book);
/* Inserts a zero tag at position, or appends one for -1, through
 * "tmptag.tag" in the working directory. 1, or -1. */
TQ_API int TQ_CALL vcCOrvexBook_InsertTag(const char* tagPath, int position);
/* Removes the tag at position through "tmptag.tag". 1, or -1. */
TQ_API int TQ_CALL vcCOrvexBook_DeleteTag(const char* tagPath, int position);

/* ======================================================================
 * Text primitives
 *
 * Memory, trimming, wrapping, wildcards and the other small text services.
 * ====================================================================== */

/* Records of the text services. Pointers stay native, so these two differ
 * between 32- and 64-bit builds; the offsets of both are held below. */
typedef struct MemoryFileObj {
  const char* text; /* the NUL-terminated text being read */
  int32_t position; /* offset of the next byte to read */
} MemoryFileObj;

typedef struct MemoryBlock {
  void* heap;  /* the heap the block came from */
  void* block; /* the zero-filled block */
} MemoryBlock;

TQ_STATIC_ASSERT(offsetof(MemoryFileObj, position) == sizeof(void*), "MemoryFileObj.position");
TQ_STATIC_ASSERT(sizeof(MemoryFileObj) == 2 * sizeof(void*), "MemoryFileObj size");
TQ_STATIC_ASSERT(offsetof(MemoryBlock, block) == sizeof(void*), "MemoryBlock.block");
TQ_STATIC_ASSERT(sizeof(MemoryBlock) == 2 * sizeof(void*), "MemoryBlock size");

/* Trimming and line ends, in place. */
TQ_API void TQ_CALL Ltrim(char* s);                /* leading blanks and tabs */
TQ_API void TQ_CALL Rtrim(char* s);                /* trailing blanks; "   " keeps one */
TQ_API void TQ_CALL StrongRtrim(char* s);          /* trailing blanks, tabs, CR, LF */
TQ_API void TQ_CALL NoBlankAndReturnChar(char* s); /* leading blanks, trailing white; keeps byte 0 */
TQ_API void TQ_CALL CStrRtrim(char* s, int n);     /* at most n bytes, never half a character */
/* CR and LF repaired to CR LF pairs or blanks, length unchanged; the index reached. */
TQ_API int TQ_CALL AdjustCrLf(char* s);
/* Wraps at blanks (English) or between characters (Chinese) with CR LF; s
 * needs room for twice its length. The new length, 0 for null or empty. */
TQ_API int TQ_CALL BreakLine(char* s, int width);

/* Tests: 1 or 0. */
TQ_API int TQ_CALL IsEnglishWord(const char* s); /* no byte of 128 or above; "" gives 1 */
TQ_API int TQ_CALL vcIsChinese(const char* s);   /* the first byte is 128 or above */
TQ_API int TQ_CALL vcIsExpress(const char* s);   /* several words */
TQ_API int TQ_CALL vcIsValidFileName(const char* s);
/* Finds word in sentence as a whole word, case-blind; its offset in *position. */
TQ_API int TQ_CALL vcIsWordInSentence(const char* sentence, const char* word, int32_t* position);

/* Conversions; those with an output answer its length. */
TQ_API int TQ_CALL vcRemoveChineseTail(const char* src, char* out);
TQ_API int TQ_CALL vcGetTtsChinesStr(const char* src, char* out); /* the text to speak in Chinese */
/* Drops bytes 1 and 2; "?" -> "@", double quote -> "^", ":" -> "#", "/" -> "&". */
TQ_API int TQ_CALL vcConvertSentenceToFileName(const char* src, char* out);
/* In place: "#" -> "?", "~" -> double quote (the sound links of word pages). */
TQ_API void TQ_CALL vcRestoreUrlSentence(char* s);
/* Replaces every from with to in place, only when both have one length. */
TQ_API void TQ_CALL vcStrEqualReplace(char* text, const char* from, const char* to);
/* The text behind the last backslash; 0 and out untouched when there is none. */
TQ_API int TQ_CALL vcExtractFileNameFromPath(const char* path, char* out);
/* The text from the last "." on. With no dot: 0, and path (not out) is cleared. */
TQ_API int TQ_CALL vcGetFileExtName(char* path, char* out);

/* Lengths in characters: bytes less half the high bytes (odd counts round up). */
TQ_API int TQ_CALL vcMystrlen(const char* s);
TQ_API int TQ_CALL vcVbStrlen(const char* s);
TQ_API int TQ_CALL vcVBStringLen(const char* s);
TQ_API int TQ_CALL vcStrlen(const char* s);
TQ_API int TQ_CALL vcStrcpy(char* dest, const char* src); /* the length copied */
TQ_API int TQ_CALL vcStrcat(char* dest, const char* src); /* the new length */
TQ_API void TQ_CALL vcStrupr(char* s);                    /* ASCII letters only */
TQ_API void TQ_CALL vcStrlwr(char* s);
TQ_API int TQ_CALL vcStrcmp(const char* a, const char* b); /* folds A-Z, despite its name */
TQ_API int TQ_CALL vcSetCharInString(char* s, int index, int byte); /* the byte */

/* Memory text. */
TQ_API MemoryFileObj* TQ_CALL InitMemoryFileObj(MemoryFileObj* obj, const char* text);
/* The next line without its line end, and its length; -1 at the end. */
TQ_API int TQ_CALL MemoryFgets(MemoryFileObj* obj, char* out);
/* The next run of ASCII letters, and its length; 0 at the end. */
TQ_API int TQ_CALL MemoryGetWord(MemoryFileObj* obj, char* out);

/* Arrays of 32-bit integers. */
TQ_API void TQ_CALL vcSortIntArray(int32_t* a, int count);
/* The index of the first element equal to value in a sorted array, or -1. */
TQ_API int TQ_CALL vcBinarySearchIntArray(const int32_t* a, int count, int value);
TQ_API void TQ_CALL vcSortUINT(uint32_t* a, int count);
TQ_API int TQ_CALL vcRemoveSameUINT(uint32_t* a, int count); /* the new count */
/* Shuffles in place, reseeding from the clock: calls in one second agree. */
TQ_API void TQ_CALL vcRandomIntArray(int32_t* a, int count);

/* A zero-filled block from the process heap, recorded in *block. */
TQ_API void* TQ_CALL AllocMemory(MemoryBlock* block, int size);
TQ_API void TQ_CALL FreeMemory(MemoryBlock* block);

/* (end of text primitives) */

/* ======================================================================
 * Calendar and day numbers
 *
 * Day 0 is 1899-12-30.
 * ====================================================================== */

/* The date of a day number as "%d-%02d-%02d" (11 bytes for the years 1900
 * to 9999); the characters written. Days 0 and 1 come out as "1900-01--1"
 * and "1900-01-00". */
TQ_API int TQ_CALL vcGetDateStr(int day, char* out);
/* Days from 1900-01-01 (= 0) to the date: two less than the date's day
 * number, so its result passed to vcGetDateStr shows a date two days early. */
TQ_API int TQ_CALL vcGetDaysFrom1900_1_1(int year, int month, int day);
/* Now, in 100-nanosecond ticks since 1601-01-01 UTC. */
TQ_API double TQ_CALL vcMyGetTime(void);
/* Milliseconds since an earlier vcMyGetTime value. */
TQ_API int64_t TQ_CALL vcTimePassed(double earlier);
/* The file's last-write date in UTC; 1601-01-01 when it cannot be read. */
TQ_API void TQ_CALL vcGetFileTime(const char* path, int32_t* year, int32_t* month, int32_t* day);
/* The file's creation date (the change time where the file system keeps no
 * birth time) in local time. hour and minute may be null. */
TQ_API void TQ_CALL vcGetFileTimeEx(const char* path, int32_t* year, int32_t* month, int32_t* day, int32_t* hour,
                                    int32_t* minute, int ignored);

/* (end of calendar and day numbers) */

/* ======================================================================
 * Word text streams: vcCEnglishTxtFile_ and the word file reader
 *
 * Users' own word lists in plain text. In the alternate layout an English
 * line is followed by its Chinese meaning; in the one-line layout both
 * stand on one line, the meaning from its part-of-speech mark ("n."), after
 * "sth." or "sb.", or from its first Chinese character. Blank lines never
 * count, and lines are trimmed at both ends.
 * ====================================================================== */

/* Handles 1 to 19, each good for one open in the life of the process: a
 * closed handle is not given out again, so the twentieth open answers -1.
 * Open reads the alternate layout; OpenEx with splitLines set reads each
 * line as one item of the one-line layout. The handle, or -1 when the table
 * is full or the file will not open (the handle is used up all the same). */
TQ_API int TQ_CALL vcCEnglishTxtFile_Open(const char* path);
TQ_API int TQ_CALL vcCEnglishTxtFile_OpenEx(const char* path, int splitLines);
/* The next item: 1, or -1 at the end of the file or for an empty handle.
 * Both outputs are emptied first and need 4,000 bytes each. In the
 * alternate layout an English line straight after another has no meaning,
 * and Chinese lines before the first English line are skipped. */
TQ_API int TQ_CALL vcCEnglishTxtFile_GetNextItem(int file, char* english, char* chinese);
/* Closes the file; handle 0 is ignored. The handle stays used up. */
TQ_API void TQ_CALL vcCEnglishTxtFile_Close(int file);

/* The word file reader, over a record the caller owns. The buffer is the
 * caller's too; it receives each line (at most bufferSize - 1 bytes). */
typedef struct WordFileObj {
  TqStream hFile;      /* the open file (0 = none) */
  char* buffer;        /* the caller's line buffer */
  uint32_t bufferSize; /* its size in bytes */
} WordFileObj;

TQ_STATIC_ASSERT(offsetof(WordFileObj, buffer) == sizeof(void*), "WordFileObj.buffer");
TQ_STATIC_ASSERT(offsetof(WordFileObj, bufferSize) == 2 * sizeof(void*), "WordFileObj.bufferSize");
TQ_STATIC_ASSERT(sizeof(WordFileObj) == 3 * sizeof(void*), "WordFileObj size");

/* Opens the file for reading: 1, or -1. */
TQ_API int TQ_CALL vcInitWordFileObj(WordFileObj* obj, const char* path, char* buffer, uint32_t bufferSize);
/* Reads the alternate layout; word and mean need bufferSize bytes each and
 * are emptied first. Answers the length of word for an item (mean empty
 * when the next line is English or blank: that line is read again on the
 * next call); 0 for a blank or Chinese line, which holds no word: call
 * again; -1 at the end of the file, with the last word of the file still in
 * word when no meaning follows it. */
TQ_API int TQ_CALL vcGetNextWordFromWordFile(WordFileObj* obj, char* word, char* mean);
/* Closes the file: 0, or -1 when none is open. */
TQ_API int TQ_CALL vcCloseWordFileObj(WordFileObj* obj);
/* The same routine for any record that begins with its stream number, as
 * a WordFileObj does. */
TQ_API int TQ_CALL vcCloseFileForVb(TqStream* record);

/* (end of word text streams) */

/* ======================================================================
 * File and registry basics
 * ====================================================================== */

/* A file time: 100-nanosecond ticks since 1601-01-01 UTC, in two halves. */
typedef struct TqFileTime {
  uint32_t low;
  uint32_t high;
} TqFileTime;

/* What a search found, in the layout the front ends' platform gives it. */
typedef struct TqFindData {
  uint32_t attributes; /* 16 for a folder, 128 for a plain file */
  TqFileTime creationTime;
  TqFileTime lastAccessTime;
  TqFileTime lastWriteTime;
  uint32_t sizeHigh;
  uint32_t sizeLow;
  uint32_t reserved0;
  uint32_t reserved1;
  char fileName[260]; /* the name alone, without its folder */
  char alternateName[14];
} TqFindData;

/* One directory search, owned by the caller. Fill pattern (a path whose
 * last part may hold "*" and "?"; a folder matches too) and clear started,
 * then call FindFile until it answers 0, then MyFindClose. */
typedef struct FindFileState {
  char pattern[260];
  int32_t started;     /* 0 before the first FindFile */
  TqFindData findData; /* the last match */
  uint32_t findHandle; /* the open search, a number (0 = none) */
} FindFileState;

TQ_STATIC_ASSERT(offsetof(TqFindData, creationTime) == 4, "TqFindData.creationTime");
TQ_STATIC_ASSERT(offsetof(TqFindData, lastWriteTime) == 20, "TqFindData.lastWriteTime");
TQ_STATIC_ASSERT(offsetof(TqFindData, sizeHigh) == 28, "TqFindData.sizeHigh");
TQ_STATIC_ASSERT(offsetof(TqFindData, fileName) == 44, "TqFindData.fileName");
TQ_STATIC_ASSERT(offsetof(TqFindData, alternateName) == 304, "TqFindData.alternateName");
TQ_STATIC_ASSERT(sizeof(TqFindData) == 320, "TqFindData size");
TQ_STATIC_ASSERT(offsetof(FindFileState, started) == 260, "FindFileState.started");
TQ_STATIC_ASSERT(offsetof(FindFileState, findData) == 264, "FindFileState.findData");
TQ_STATIC_ASSERT(offsetof(FindFileState, findHandle) == 584, "FindFileState.findHandle");
TQ_STATIC_ASSERT(sizeof(FindFileState) == 588, "FindFileState size");

/* 1 when the path or pattern finds a file or folder, else 0. */
TQ_API int TQ_CALL vcIfFileExist(const char* path);
/* The next name of the search into name (260 bytes) and its length; 0 at
 * the end. The first call starts the search and sets started. */
TQ_API int TQ_CALL FindFile(FindFileState* record, char* name);
/* Ends the search: 1; 0 when it had found nothing or was ended before; -1
 * when it never started. started stays set: clear it to search again. */
TQ_API int TQ_CALL MyFindClose(FindFileState* record);
/* The length of a file in bytes, or -1 when it will not open. */
TQ_API int TQ_CALL vcGetFileLength(const char* path);
/* Gives destination the access and write times of source (creation times
 * cannot be set on Linux). 1, or 0 when either file cannot be reached. */
TQ_API int TQ_CALL vcSetSameFileTime(const char* source, const char* destination);
/* 1 when both files have the same last write time to the 100 ns, else 0
 * (also when either is missing). */
TQ_API int TQ_CALL vcIsSameTimeFiles(const char* first, const char* second);

/* The registry. root is a predefined key: 2147483648 classes root,
 * 2147483649 current user, 2147483650 local machine, 2147483651 users.
 * Opening a key makes it, so a read of a missing value answers -1 and
 * leaves the key created. All answer 0, or -1.
 * On Linux the store is kept in $XDG_DATA_HOME/tqcomm/registry, or in the
 * folder named by the environment variable TQCOMM_REGISTRY. */
/* Up to four bytes of the value into *result (-1 when it is longer). */
TQ_API int TQ_CALL vcGetKeyValueInt(uint32_t root, const char* key, const char* name, int32_t* result);
/* *size is the room on the way in and the bytes read (a written string
 * counts its zero byte) on the way out; then buffer[*size] is set to 0, so
 * the buffer needs *size + 1 bytes. Too little room: -1, *size the need. */
TQ_API int TQ_CALL vcGetKeyValueString(uint32_t root, const char* key, const char* name, char* buffer,
                                       int32_t* size);
TQ_API int TQ_CALL vcWriteKeyValueInt(uint32_t root, const char* key, const char* name, int32_t value);
TQ_API int TQ_CALL vcWriteKeyValueString(uint32_t root, const char* key, const char* name, const char* text);
/* -1 when there is no such value. */
TQ_API int TQ_CALL vcDeleteKeyValue(uint32_t root, const char* key, const char* name);

/* (end of file and registry basics) */

/* ======================================================================
 * Learning wizard: vcCOrvexWizard_
 * ====================================================================== */

/* The history file: one 48-byte record per word, at item number x 48,
 * little-endian:
 *    0  7 x uint16  reviewDates  [0] start of this pass, [1..6] its reviews
 *   14  uint16      firstDate    65535: never learnt
 *   16  int16       stepIndex    next reviewDates slot, 1..6 (0 when blank)
 *   18  int16       shownCount
 *   20  int16       rightCount
 *   22  uint16      hardOrNewFlag
 *   24  uint16      attr         0 not met, 1 known from the start,
 *                                2 learning, 3 mastered, 4 and 5 relapsed
 *                                from 1 and 3
 *   26  uint16      skipDate     day of the last result 5
 *   28  uint32      passCount
 *   32  uint16      lastDate
 *   34  2 bytes     reserved
 *   36  8 chars     results      newest first, 'Y' 'N' 'U' or 0
 *   44  int32       itemNo       -1 when detached
 * Results: 1 right, 2 wrong, 3 unsure, 4 known (off the list for good),
 * 5 right and done for today. Days are day numbers below 65535.
 * A list file is a headerless array of 32-bit item numbers.
 *
 * Handles 1 to 29; vcCOrvexWizard_New answers -1 when all are taken. An
 * empty handle answers its own number, except where noted. Word text
 * outputs are as for vcCOrvexBook_GetWordByNo and need the book's index and
 * library open. */

typedef struct LearningRecord {
  uint16_t reviewDates[7];
  uint16_t firstDate;
  int16_t stepIndex;
  int16_t shownCount;
  int16_t rightCount;
  uint16_t hardOrNewFlag;
  uint16_t attr;
  uint16_t skipDate;
  uint32_t passCount;
  uint16_t lastDate;
  uint16_t reserved;
  char results[8];
  int32_t itemNo;
} LearningRecord;
TQ_STATIC_ASSERT(sizeof(LearningRecord) == 48, "LearningRecord is 48 bytes");
TQ_STATIC_ASSERT(offsetof(LearningRecord, firstDate) == 14, "firstDate at 14");
TQ_STATIC_ASSERT(offsetof(LearningRecord, stepIndex) == 16, "stepIndex at 16");
TQ_STATIC_ASSERT(offsetof(LearningRecord, hardOrNewFlag) == 22, "hardOrNewFlag at 22");
TQ_STATIC_ASSERT(offsetof(LearningRecord, attr) == 24, "attr at 24");
TQ_STATIC_ASSERT(offsetof(LearningRecord, skipDate) == 26, "skipDate at 26");
TQ_STATIC_ASSERT(offsetof(LearningRecord, passCount) == 28, "passCount at 28");
TQ_STATIC_ASSERT(offsetof(LearningRecord, lastDate) == 32, "lastDate at 32");
TQ_STATIC_ASSERT(offsetof(LearningRecord, results) == 36, "results at 36");
TQ_STATIC_ASSERT(offsetof(LearningRecord, itemNo) == 44, "itemNo at 44");

/* A wizard with an empty list; -1 when the table is full. */
TQ_API int TQ_CALL vcCOrvexWizard_New(void);
/* Frees the wizard without saving its list. */
TQ_API void TQ_CALL vcCOrvexWizard_Delete(int wizard);
/* The book whose words the text getters read; an empty book handle leaves
 * the wizard's book as it was. 1. */
TQ_API int TQ_CALL vcCOrvexWizard_SetLearningBook(int wizard, int book);
/* Seven cumulative day offsets from a word's first learning. 1. */
TQ_API int TQ_CALL vcCOrvexWizard_SetForgetCurve(int wizard, const int32_t* curve);
TQ_API void TQ_CALL vcCOrvexWizard_SetFileNames(int wizard, const char* historyPath);
/* Today's day number. 1; an empty handle answers 0. */
TQ_API int TQ_CALL vcCOrvexWizard_SetDate(int wizard, int today);
/* Empties the list and fills it from the history file. Modes: 0 the first
 * 21 new words; 1 due or hard words, shuffled; 2 none; 3 words being learnt
 * or relapsed, shuffled; 4 every word, shuffled; 5 words first met today and
 * still open; 6 as 1 in file order. limit is the highest item number to
 * consider (0: all). The list length, or -1 without a history file. */
TQ_API int TQ_CALL vcCOrvexWizard_GetWordsToLearn(int wizard, int mode, int limit);
/* Adds to the list: new words (modeFlag's low byte 0, up to an allowance
 * that falls as the list's old words rise: 30, 20, 10, 5, 3) or else old due
 * and hard words (limit 0 takes every learnt word). Any modeFlag but 0
 * shuffles what it adds. *added gets the number added. The list length, or
 * -1 without a history file. */
TQ_API int TQ_CALL vcCOrvexWizard_AddTodayList(int wizard, int modeFlag, int limit, int32_t* added);
/* Records the result for the front word, writes its record to the history
 * file at once, and takes it off the list or moves it back. A completed
 * pass of the curve asks through a message box whether the word is
 * mastered for good. The list length afterwards. */
TQ_API int TQ_CALL vcCOrvexWizard_LearnItem(int wizard, int result);
/* The list length; 0 for an empty handle. */
TQ_API int TQ_CALL vcCOrvexWizard_GetListLength(int wizard);
/* The front word's headword, explanation and pronunciation. */
TQ_API void TQ_CALL vcCOrvexWizard_GetItemEnglish(int wizard, char* out, int unused);
TQ_API void TQ_CALL vcCOrvexWizard_GetItemChinese(int wizard, char* out, int unused);
TQ_API void TQ_CALL vcCOrvexWizard_GetItemPron(int wizard, char* out, int unused);
/* The front record's shownCount and firstDate; either pointer may be null.
 * An empty handle answers 0. */
TQ_API int TQ_CALL vcCOrvexWizard_GetItemAttr(int wizard, int32_t* shownCount, int32_t* firstDate);
/* A description of the record at list position (0 = front), lines ending
 * "\r\n"; 512 bytes are ample. */
TQ_API void TQ_CALL vcCOrvexWizard_GetItemAttrString(int wizard, int position, char* out);
/* Writes the list's item numbers to the list file and its records to the
 * history file. The list length, 0 for an empty list (no file touched), -1. */
TQ_API int TQ_CALL vcCOrvexWizard_SaveList(int wizard, const char* listPath);
/* Appends the words of a list file to the list. The list length, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_LoadList(int wizard, const char* listPath);
/* The list's item numbers in order; the list length. */
TQ_API int TQ_CALL vcCOrvexWizard_ExportList(int wizard, int32_t* items);
/* Appends to items (count already in it) every word not mastered and not
 * yet there: unlearnt words first. Needs room for the whole book. The new
 * count. */
TQ_API int TQ_CALL vcCOrvexWizard_AppendMp3List(int wizard, int32_t* items, int count);

/* (end of learning wizard) */

/* ======================================================================
 * History file upkeep
 * ====================================================================== */

/* Paths only, no wizard handle. Rewrites go through "tmptmp.his" in the
 * working directory, so two must not run in one directory at once. A record
 * is found by its stored itemNo, not by its place. */

/* A history of count blank records numbered 0 up. 1, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_GenBlankHistoryFile(const char* path, int count);
/* Appends count blank records numbered on from the file's count. 1, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_AppendHistoryFile(const char* path, int count);
/* Writes the source's records whose itemNo is in items, renumbered 0 up, in
 * source order. Records written, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_ExtractHistoryFile(const char* source, const char* dest, const int32_t* items,
                                                     int count);
/* Appends the source's records whose itemNo is items[i], numbered the
 * destination's old record count + i. Records written, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_MergeHistoryFile(const char* source, const char* dest, const int32_t* items,
                                                   int count);
/* A blank record for a word inserted at position (below 0: appended). */
TQ_API int TQ_CALL vcCOrvexWizard_InsertWordInAll(const char* path, int position);
/* Drops the record of the word at position and renumbers those above. */
TQ_API int TQ_CALL vcCOrvexWizard_DeleteWordInAll(const char* path, int position);
/* Renumbers a list file for a word inserted at position (-1: nothing). */
TQ_API int TQ_CALL vcCOrvexWizard_InsertWordInLlr(const char* path, int position);
/* Drops the word at position from a list file; an emptied list file is
 * removed. */
TQ_API int TQ_CALL vcCOrvexWizard_DeleteWordInLlr(const char* path, int position);
/* Sets a record's attr; attribute 0 resets it to blank with itemNo -1. */
TQ_API int TQ_CALL vcCOrvexWizard_SetItemAttrInFile(const char* path, int item, int attr);
/* As above; with day not -1, a word never learnt is also learnt right on
 * that day (and so ends with attr 2). */
TQ_API int TQ_CALL vcCOrvexWizard_SetItemAttrInFileEx(const char* path, int item, int attr, int day);
/* Adds 1 per record to the counter of its attr: 0, 2, 1, 3 in that order
 * (4 and 5 are counted nowhere). The caller zeroes them. 1, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_GetBookInfo(const char* path, int32_t* attr0, int32_t* attr2, int32_t* attr1,
                                              int32_t* attr3);
/* The itemNo of every record with this attr; how many, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_ReadWordListByAttr(const char* path, int attr, int32_t* items);
/* Each record's difficulty 0 (never met) to 9; the record count, or -1. */
TQ_API int TQ_CALL vcCOrvexWizard_ReadAllDegrees(const char* path, int32_t* degrees);

/* (end of history file upkeep) */

/* ======================================================================
 * Notebooks and book display: the record functions
 *
 * An older family over the same index, library and tag files as
 * vcCOrvexBook_, through a record the caller owns. A notebook is a word
 * book of short entries (word, "[pronunciation]", explanation, 0) whose
 * library opens with one 0 byte: each entry's index offset is the 0 that
 * ends the entry before it. Offsets below are those of the index: the
 * entry's leading separator.
 *
 * The quick readers and the display functions read a small fixed window of
 * the library at the entry (40, 64, 98 or 190 bytes) and cut the text out
 * of it, so long text is cut; nothing beyond the window is ever shown.
 * Drawing goes to a device context (on Linux a host surface, tqhost.h).
 * Temporary files are made in the working directory with fixed names
 * ("tqplsxht.apy", "tmp.idx", "tmp.tag", "tmp.lib"): one edit at a time.
 * ====================================================================== */

typedef struct BookRecord {
  TqStream idxFile;     /* the open index (0 = none) */
  TqStream libFile;     /* the open library */
  TqStream tagFile;     /* the open tag file */
  uint32_t reserved0;
  int32_t separator;    /* the entry separator, set to 0 by the opens */
  char reserved1[256];  /* the front ends' own */
  char name[260];       /* the index path, the stem of the sibling files */
} BookRecord;

TQ_STATIC_ASSERT(offsetof(BookRecord, libFile) == 4, "BookRecord.libFile");
TQ_STATIC_ASSERT(offsetof(BookRecord, tagFile) == 8, "BookRecord.tagFile");
TQ_STATIC_ASSERT(offsetof(BookRecord, separator) == 16, "BookRecord.separator");
TQ_STATIC_ASSERT(offsetof(BookRecord, name) == 276, "BookRecord.name");
TQ_STATIC_ASSERT(sizeof(BookRecord) == 536, "BookRecord size");

/* Sets separator to 0, stores the path in name, opens it "rb" into idxFile
 * (whatever was there is not closed). The word count, or -1. */
TQ_API int TQ_CALL vcOpenBookIdxAndReturnNum(BookRecord* book, const char* idxPath);
/* Sets separator to 0 and opens the library "rb" into libFile (a null path
 * means name plus ".lib"). Its length in bytes, or -1. */
TQ_API int TQ_CALL vcOpenBookLib(BookRecord* book, const char* libPath);
/* count offsets from the index's current position: 0, or -2 when fewer
 * came (or no index is open). */
TQ_API int TQ_CALL vcReadBookIndex(BookRecord* book, int32_t* dest, int count);
/* Close and clear the file: the result of the close, 0 when none was open. */
TQ_API int TQ_CALL vcCloseBookIdx(BookRecord* book);
TQ_API int TQ_CALL vcCloseBookLib(BookRecord* book);
/* The word of the entry at offset (out: 32 bytes): up to its "[", a word of
 * 31 bytes or more cut to 29, trailing bytes of 128 or above dropped. Its
 * length; -1 (out "") when the library is not open. */
TQ_API int TQ_CALL vcGetEnglishWordFromBook(BookRecord* book, int offset, char* out);
/* The same for word number no of the open index; -1 (out "") when the
 * number is not in the index. */
TQ_API int TQ_CALL vcGetEnglishWordFromBookByNo(BookRecord* book, int no, char* out);
/* The explanation of the entry at offset (out: 98 bytes): from the "]" to
 * the separator, within 98 bytes, a class mark "{nn}" dropped. Its length
 * plus 1; 0 (out "") when there is no "]" in reach or no open library. */
TQ_API int TQ_CALL vcGetExplainFromBook(BookRecord* book, int offset, char* out);
/* Writes word "\r\n" explanation "\r\n" for every offset from the index's
 * current position to its end. 0, or -3 when the output cannot be created
 * or the book is not open. */
TQ_API int TQ_CALL vcExportBookWords(BookRecord* book, const char* outPath);
/* The word count of an index file; 0 when it is missing. */
TQ_API int TQ_CALL vcGetBookWordNum(const char* idxPath);
TQ_API int TQ_CALL vcGetOrvexNotebookWordNum(const char* idxPath);

/* Drawing. Every display function ends by drawing the list's underline: a
 * solid 1-pixel line of colour 0x808080 from (0, 22) to (600, 22), which
 * does not follow x and y. */
/* The word of the entry at offset; offset -1 draws the line alone. */
TQ_API void TQ_CALL vcDispWord(BookRecord* book, int offset, int dc, int x, int y);
/* The "[pronunciation]" in the pronunciation font; "[]" draws the line
 * alone, and an entry with no "[" before its separator draws nothing. */
TQ_API void TQ_CALL vcDispPronun(BookRecord* book, int offset, int dc, int x, int y);
/* The explanation, up to the separator, "*", "~" or 188 bytes into the
 * window; a class mark is not drawn but is measured. Its width in pixels
 * (0 for offset -1, which draws the line alone). */
TQ_API int TQ_CALL vcDispExplain(BookRecord* book, int offset, int dc, int x, int y);
/* Draws text in the face "pron" (weight 700), or in the current font when
 * that cannot be made. */
TQ_API void TQ_CALL DrawPronStr(int dc, const char* text, int x, int y);
/* The underline in another colour (0x00BBGGRR). */
TQ_API void TQ_CALL vcDrawUnderLine(int dc, uint32_t colour);

/* Tags. A null index path means name. */
/* Opens the ".tag" file beside the index "rb" into tagFile, first making it
 * (400 bytes of header and a zero per word of the index) when it is
 * missing. The number of tags, or -1. */
TQ_API int TQ_CALL vcOpenBookTagAndReturnNum(BookRecord* book, const char* idxPath);
/* Reads the open tag file, header included, into buffer (room for 100 plus
 * the number of tags), and closes it: 0, or -2 on a short read, which
 * closes the file but leaves its stale number in tagFile. */
TQ_API int TQ_CALL vcReadWordTagThenCloseTag(BookRecord* book, int32_t* buffer);
/* The same on a tag file it opens and closes itself: 0, -1 when it will
 * not open, -2. */
TQ_API int TQ_CALL vcOpen_Read_CloseBookTag(BookRecord* book, int32_t* buffer, const char* idxPath);
/* Writes header and count tags from buffer as the whole tag file (through
 * "tqplsxht.apy"). 0, or -3 with the tag file as it was. */
TQ_API int TQ_CALL vcWriteWordTagFile(BookRecord* book, const char* idxPath, const int32_t* buffer, int count);

/* Notebooks. */
/* A new library file of one 0 byte: 1, or -1. */
TQ_API int TQ_CALL vcMakeBlankNoteBook(const char* libPath);
/* Appends word, pronunciation (stored as given: pass the brackets) and
 * explanation (its first line with firstLineOnly) to the notebook, its
 * offset to the index and a zero tag to the ".tag" file. Failures show a
 * message box (OK only, no owner) and answer -1; a tag that cannot be
 * written is told the same way but still answers 0. */
TQ_API int TQ_CALL vcFullAppendNotebook(const char* idxPath, const char* word, const char* explanation,
                                       const char* pronunciation, int firstLineOnly);
/* Appends n zero tags (after a zero header when the file is new): 0, -1. */
TQ_API int TQ_CALL vcFullAppendBlankNoteTags(const char* idxPath, int n);
/* Removes index and tag file and resets the library to one 0 byte. */
TQ_API void TQ_CALL vcDeleteNoteBook(BookRecord* book, const char* idxPath);
/* Rewrites the notebook named in the record, keeping word i (offsets[i])
 * when flags[i] is 0, with its tag tags[100 + i] (tags as read whole).
 * Needs the library open in libFile, and closes it. Keeping none empties
 * the notebook as vcDeleteNoteBook. 0, or -1 with the notebook unchanged. */
TQ_API int TQ_CALL vcDeleteNoteBookWords(BookRecord* book, const int32_t* offsets, const int32_t* tags,
                                        const int32_t* flags, int n);
/* The widest span of days in the ".pag" (24-byte records) and ".dir"
 * (128-byte records) files of the working directory, from the day number
 * at byte 14 of each record (65535: none). At least 0. */
TQ_API int TQ_CALL vcGetLearningStatus(void);
/* Copies a file with every byte scrambled by the sound key, which the same
 * call undoes. 1, or -1. */
TQ_API int TQ_CALL vcPrepareFontLib(const char* srcPath, const char* dstPath);

/* (end of notebooks and book display) */

/* ======================================================================
 * Classic dictionaries: vcCm..., entry detail and word forms
 * ====================================================================== */

/* A dictionary is an index of sorted fixed-size records and a library of
 * enciphered entry text. Each entry has seven sections: 0 meaning (a first
 * line "[pronunciation]", then the Chinese meaning), 1 English explanation,
 * 2 samples, 3 phrases, 4 word forms, 5 word root, 6 related words. Nothing
 * of either file is held in memory: every lookup reads the open index.
 *
 * The caller owns the record below and keeps it between calls. After a
 * search, word/libOffset/lengths hold the found index record, decoded. Text
 * outputs are as long as the section they receive: the caller sizes them for
 * the longest entry of its dictionary (the library's size always suffices;
 * composed text adds its tags, and the related words grow by half). */
typedef struct DictObject {
  TqStream hIdx;          /* open index, 0 when closed */
  TqStream hLib;          /* open library, 0 when closed */
  uint32_t recordSize;    /* 52 */
  uint32_t wordFieldSize; /* 20 */
  char szIdxFile[80];
  char szLibFile[80];
  char word[20];          /* current record: the word as stored */
  uint32_t libOffset;     /* current record: offset of section 0 */
  uint32_t lengths[7];    /* current record: the seven section lengths */
  char* workBuffer;       /* the caller's: the longest section 0 plus a NUL */
} DictObject;

/* The expression dictionary (phrases of several words): 48-byte plain
 * records, two sections (meaning, then samples) in the library. */
typedef struct ExpDictObject {
  TqStream hIdx;
  TqStream hLib;
  uint32_t recordSize;    /* 48 */
  uint32_t wordFieldSize; /* 32 */
  char szIdxFile[80];
  char szLibFile[80];
  char word[32];
  uint32_t libOffset;
  uint32_t meanLength;
  uint32_t sampleLength;
  uint32_t reserved;
  char* workBuffer;
} ExpDictObject;

/* The mean library: 224-byte records, a 64-byte key (word, NUL, optional
 * "[pronunciation]", NUL) and a 160-byte short meaning. */
typedef struct MeanLibObject {
  TqStream hFile;
  char szFile[256];
  unsigned char record[224]; /* the record of the last search */
} MeanLibObject;

TQ_STATIC_ASSERT(offsetof(DictObject, szIdxFile) == 16, "DictObject.szIdxFile");
TQ_STATIC_ASSERT(offsetof(DictObject, szLibFile) == 96, "DictObject.szLibFile");
TQ_STATIC_ASSERT(offsetof(DictObject, word) == 176, "DictObject.word");
TQ_STATIC_ASSERT(offsetof(DictObject, libOffset) == 196, "DictObject.libOffset");
TQ_STATIC_ASSERT(offsetof(DictObject, lengths) == 200, "DictObject.lengths");
TQ_STATIC_ASSERT(offsetof(DictObject, workBuffer) == (sizeof(void*) == 4 ? 228 : 232), "DictObject.workBuffer");
TQ_STATIC_ASSERT(sizeof(DictObject) == (sizeof(void*) == 4 ? 232 : 240), "DictObject size");
TQ_STATIC_ASSERT(offsetof(ExpDictObject, word) == 176, "ExpDictObject.word");
TQ_STATIC_ASSERT(offsetof(ExpDictObject, libOffset) == 208, "ExpDictObject.libOffset");
TQ_STATIC_ASSERT(offsetof(ExpDictObject, reserved) == 220, "ExpDictObject.reserved");
TQ_STATIC_ASSERT(offsetof(ExpDictObject, workBuffer) == 224, "ExpDictObject.workBuffer");
TQ_STATIC_ASSERT(sizeof(ExpDictObject) == (sizeof(void*) == 4 ? 228 : 232), "ExpDictObject size");
TQ_STATIC_ASSERT(offsetof(MeanLibObject, szFile) == 4, "MeanLibObject.szFile");
TQ_STATIC_ASSERT(offsetof(MeanLibObject, record) == 260, "MeanLibObject.record");
TQ_STATIC_ASSERT(sizeof(MeanLibObject) == 484, "MeanLibObject size");

/* Sets sizes 52/20, copies the paths, keeps the buffer, clears both files. */
TQ_API void TQ_CALL vcInitDictObject(DictObject* dict, const char* idxPath, const char* libPath, char* workBuffer);
/* Opens index then library for reading: 1, or -1 (the index is closed again,
 * but its stale number stays in hIdx: do not close such an object). */
TQ_API int TQ_CALL vcCmOpenDict(DictObject* dict);
/* vcInitDictObject, then open: 1, or -1 with both files cleared. */
TQ_API int TQ_CALL vcCmOpenDictDirect(DictObject* dict, const char* idxPath, const char* libPath, char* workBuffer);
/* Closes whichever file is open and clears both; also serves the expression
 * dictionary as vcCmCloseExpDict. Answers 0. */
TQ_API int TQ_CALL vcCmCloseDict(DictObject* dict);
/* Deciphers (or enciphers) length bytes that stand at filePos of a library;
 * answers length, or 0 for a length below 1. */
TQ_API int TQ_CALL DecodeExplain(unsigned char* buffer, int length, uint32_t filePos);
/* Deciphers a 52-byte index record read at recordPos; answers its grade. */
TQ_API int TQ_CALL DecodeIdx(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize);
/* Exact search (A-Z folded; words cut to 19 bytes): the grade, record now
 * current; -1 if absent, the earlier record staying current. */
TQ_API int TQ_CALL vcCmSearchWord(DictObject* dict, const char* word);
/* The grade if present; else minus the grade of the closest record (the
 * one behind the last record the bisection read). The record found is
 * current either way; 0 when the index holds no whole record. */
TQ_API int TQ_CALL vcCmSearchWordClosest(DictObject* dict, const char* word);
/* All seven sections of the current record, deciphered; the byte count. */
TQ_API int TQ_CALL vcCmGetAllDetails(DictObject* dict, char* out);
/* One section (0 to 6), deciphered; its length, 0 and "" when empty. */
TQ_API int TQ_CALL vcCmGetADetail(DictObject* dict, char* out, int index);
/* Looks the word up; pron gets "[...]" (pronunciation, 100 bytes), mean
 * (may be null) the meaning lines. The grade; 0 if absent or section 0 is
 * empty; the section's length when it holds no "]" (both outputs empty). */
TQ_API int TQ_CALL vcCmGetDictMeanAndPron(DictObject* dict, const char* word, char* mean, char* pron);
/* The same through the closest search: its result, so an absent word gives
 * the neighbour's meaning with a negative answer. */
TQ_API int TQ_CALL vcCmGetDictMeanAndPronClosest(DictObject* dict, const char* word, char* mean, char* pron);
/* pron gets the pronunciation, or "[]"; answers as vcCmGetDictMeanAndPron. */
TQ_API int TQ_CALL vcCmGetDictPron(DictObject* dict, const char* word, char* pron);

/* The composed text of the current record: the sections listed (in that
 * order) with their headings and line ends made CR LF, samples cut to 12
 * lines. Answers its length in characters (vcMystrlen). count 0: the raw
 * text of all sections and its byte count. */
TQ_API int TQ_CALL vcCmGetDetail(DictObject* dict, char* out, const uint32_t* sections, int count);

/* As vcInitDictObject with 48/32. */
TQ_API void TQ_CALL vcInitExpDictObject(ExpDictObject* dict, const char* idxPath, const char* libPath,
                                        char* workBuffer);
/* 0 on success (unlike vcCmOpenDict), -1 on failure. */
TQ_API int TQ_CALL vcCmOpenExpDict(ExpDictObject* dict);
TQ_API int TQ_CALL vcCmCloseExpDict(ExpDictObject* dict);
/* 1, record now current; -1 if absent. A long expression is cut in the
 * caller's own string at byte 31. */
TQ_API int TQ_CALL vcCmSearchExp(ExpDictObject* dict, char* expression);
/* Meaning and samples, deciphered; the string length. */
TQ_API int TQ_CALL vcCmGetAllDetailExp(ExpDictObject* dict, char* out);
/* which 0: the meaning, else the samples; the string length. */
TQ_API int TQ_CALL vcCmGetADetailExp(ExpDictObject* dict, char* out, int which);
/* Sections 0 and 2 with their headings, each closed by CR LF; vcMystrlen. */
TQ_API int TQ_CALL vcCmGetDetailExp(ExpDictObject* dict, char* out, const uint32_t* sections, int count);
/* Searches; the meaning without its first line, trimmed; vcMystrlen, 0 if
 * absent. */
TQ_API int TQ_CALL vcCmGetDictExpMean(ExpDictObject* dict, const char* expression, char* out);

/* Stores the path and opens the file: 1 or -1. */
TQ_API int TQ_CALL vcCmOpenMeanLib(MeanLibObject* lib, const char* path);
/* The short meaning (160 bytes) and its length; -1 if absent, out "". */
TQ_API int TQ_CALL vcCmGetMeanLibMean(MeanLibObject* lib, const char* word, char* out);
/* pron (64 bytes) gets the stored pronunciation or "[]". The length of mean,
 * or 1 when mean is null; -1 if absent. */
TQ_API int TQ_CALL vcCmGetMeanLibMeanAndPron(MeanLibObject* lib, const char* word, char* mean, char* pron);
TQ_API int TQ_CALL vcCmCloseMeanLib(MeanLibObject* lib);

/* Fill a list box with up to 30 index neighbours of the current record
 * (read from where the last search left the index); the position of the
 * current word in the list. */
TQ_API int TQ_CALL vcFillListWithEnglish(DictObject* dict, int listWindow);
TQ_API int TQ_CALL vcFillListWithExp(ExpDictObject* dict, int listWindow);
/* Synonyms and antonyms of the current record (section 6) into two lists. */
TQ_API void TQ_CALL vcFillRelatedWordList(DictObject* dict, int synonymList, int antonymList);
/* Copies a mean library, filling in pronunciations from dict. Answers 1. */
TQ_API int TQ_CALL vcAddPron(DictObject* dict, const char* srcPath, const char* dstPath);
/* Lists the expressions matching a pattern ("*", "?"; lower-cased in place)
 * with a progress bar; answers the number listed. */
TQ_API int TQ_CALL vcExpNoneExactSearch(ExpDictObject* dict, char* pattern, int listWindow, int progressWindow);

/* Word forms. The base form of an inflected word by the fifteen suffix
 * rules, looked up in dict: on a hit the record is current, out (20 bytes)
 * gets the word, and the answer is its length; 0 if none. */
TQ_API int TQ_CALL vcCmSearchOrignalWord(DictObject* dict, const char* word, char* out);
/* The irregular forms stored for word in "vary.idx" of the working
 * directory (out: 80 bytes, with no NUL of their own when the forms fill
 * them), and their length; -1 if absent or no file. */
TQ_API int TQ_CALL vcFindVary(const char* word, char* out);
/* The regular forms of word, each followed by ","; the length of out. */
TQ_API int TQ_CALL vcGetAllWordVarys(const char* word, char* out);

/* (end of classic dictionaries) */

/* ======================================================================
 * Compact dictionary: vcEcDict_
 * ====================================================================== */

/* The later dictionary form: 96-byte index records (words up to 63 bytes),
 * the same library and sections, behind handles 1 to 19. An empty handle
 * answers -1 unless noted. Every accessor works on the record of the last
 * vcEcDict_Search; with none current they answer as noted. Text outputs may
 * be null where noted: the object's work buffer (the caller's, or 6,000
 * bytes of its own) is used instead. */

/* A handle, or -1 when the table is full or a file cannot be opened. */
TQ_API int TQ_CALL vcEcDict_Open(const char* idxPath, const char* libPath, char* workBuffer);
/* Closes both files and frees the handle; an empty handle is ignored. */
TQ_API void TQ_CALL vcEcDict_Close(int dict);
/* Exact search; then, if tryBaseForm, the base form by the suffix rules;
 * then, if acceptClosest, the closest record. 1 when a record is now
 * current, else -1. */
TQ_API int TQ_CALL vcEcDict_Search(int dict, const char* word, int tryBaseForm, int acceptClosest);
/* How the last search ended: 1 exact, 2 through a base form, 3 not exact. */
TQ_API int TQ_CALL vcEcDict_GetSeachResult(int dict);
/* The grade of the current record, or -1. */
TQ_API int TQ_CALL vcEcDict_GetWordGrade(int dict);
/* out (64 bytes) gets the current word, or "" with none. Answers 1, or -1. */
TQ_API int TQ_CALL vcEcDict_GetResultWord(int dict, char* out);
/* pron ("[...]") and mean of the current record; either may be null. 1. */
TQ_API int TQ_CALL vcEcDict_GetMeanOrPron(int dict, char* mean, char* pron);
/* The length of one section; 0 with no current record. */
TQ_API int TQ_CALL vcEcDict_GetDetailLength(int dict, int index);
/* Copies the seven lengths (from the record image even with none current). */
TQ_API int TQ_CALL vcEcDict_GetDetailLengthArray(int dict, uint32_t* lengths);
/* All sections deciphered (out may be null); the byte count, 0 with none. */
TQ_API int TQ_CALL vcEcDict_GetAllDetails(int dict, char* out);
/* One section deciphered (out may be null); its length, 0 with none. */
TQ_API int TQ_CALL vcEcDict_GetOneDetail(int dict, char* out, int index);
/* As vcFillListWithEnglish; -1 with no current record. */
TQ_API int TQ_CALL vcEcDict_FillListWithEnglish(int dict, int listWindow);
/* As vcFillRelatedWordList; nothing with no current record. Answers 1. */
TQ_API int TQ_CALL vcEcDict_FillRelatedWordList(int dict, int synonymList, int antonymList);
/* Words matching a pattern ("*", "?"; lower-cased in place) go to the list
 * and, NUL-separated, to outBuffer; any of the three may be 0/null. The
 * answer is the room outBuffer needed (lengths plus NULs). */
TQ_API int TQ_CALL vcEcDict_WildSearch(int dict, char* pattern, char* outBuffer, int listWindow,
                                       int progressWindow);
/* Converts "dictlib\hmorec.*" and "dictlib\hmorexp.*" of the working
 * directory into "dictlib\vlkdictec.*" and "dictlib\vlkdictexp.*": 1, or -1
 * when an index cannot be opened. */
TQ_API int TQ_CALL vcOldDictToNew(void);
/* Writes a word list (one item a line, an optional meaning line behind it)
 * to dstPath with a meaning line for each item, from meanLib, else from the
 * word or expression dictionary (handles, 0 for none). Uses "tmptqmean.txt"
 * in the working directory. 0, or -1 when a file cannot be opened. */
TQ_API int TQ_CALL vcCmAppendMean(MeanLibObject* meanLib, int wordDict, int exprDict, const char* srcPath,
                                  const char* dstPath);

/* (end of compact dictionary) */

/* ======================================================================
 * Word set: vcCWordMSet_
 * ====================================================================== */

/* Handles 1 to 29. Words are kept with repeats, in the order of their
 * bytes (unsigned, the shorter first on a tie), case and all. */

/* A handle with an empty set; 0 when the table is full. */
TQ_API int TQ_CALL vcCWordMSet_New(void);
/* Adds the word, also when it is there already; handle 0 is ignored. */
TQ_API void TQ_CALL vcCWordMSet_AddWord(int set, const char* word);
/* 1 when the word is in the set, else 0 (also for handle 0). */
TQ_API int TQ_CALL vcCWordMSet_IsWordExists(int set, const char* word);
/* Frees the set and its slot; handle 0 is ignored. */
TQ_API void TQ_CALL vcCWordMSet_Delete(int set);

/* (end of word set) */

/* ======================================================================
 * Sound: wave files, segments and conversions, MP3 in both directions
 *
 * Wave files are RIFF "WAVE" files of PCM samples: 8-bit unsigned or 16-bit
 * signed little-endian, channels interleaved left first. The caller owns
 * the WaveFileObj and passes it to every call; there is no handle here.
 * ====================================================================== */

/* A chunk of a RIFF file, five 32-bit fields. dataOffset is the file
 * offset of the chunk's body; for a "RIFF" chunk the form type is the
 * first four bytes of that body. */
typedef struct TqChunkInfo {
  uint32_t id;         /* four characters, first in the lowest byte */
  uint32_t size;       /* bytes in the body */
  uint32_t formType;   /* "WAVE" for the outer chunk */
  uint32_t dataOffset;
  uint32_t flags;      /* set while a chunk made here still needs its size */
} TqChunkInfo;

/* The body of the "fmt " chunk, 16 bytes as in the file. */
typedef struct TqWaveFormat {
  uint16_t formatTag; /* 1: PCM */
  uint16_t channels;
  uint32_t samplesPerSecond;
  uint32_t averageBytesPerSecond;
  uint16_t blockAlign;
  uint16_t bitsPerSample;
} TqWaveFormat;

typedef struct WaveFileObj {
  char fileName[200];    /* the path, put there by the caller or InitWaveFileObj */
  TqChunkInfo dataChunk; /* "fmt ", then "data": the chunk still open at the close */
  TqChunkInfo riffChunk;
  TqWaveFormat format;
  TqStream handle;       /* the open file (0 = none) */
  int32_t dataSize;      /* bytes of the "data" chunk (set by OpenWaveFileToRead) */
  int32_t dataOffset;    /* file offset of its first byte (set by OpenWaveFileToRead) */
} WaveFileObj;

TQ_STATIC_ASSERT(sizeof(TqChunkInfo) == 20, "TqChunkInfo size");
TQ_STATIC_ASSERT(offsetof(TqWaveFormat, samplesPerSecond) == 4, "TqWaveFormat.samplesPerSecond");
TQ_STATIC_ASSERT(offsetof(TqWaveFormat, blockAlign) == 12, "TqWaveFormat.blockAlign");
TQ_STATIC_ASSERT(sizeof(TqWaveFormat) == 16, "TqWaveFormat size");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, dataChunk) == 200, "WaveFileObj.dataChunk");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, riffChunk) == 220, "WaveFileObj.riffChunk");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, format) == 240, "WaveFileObj.format");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, handle) == 256, "WaveFileObj.handle");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, dataSize) == 260, "WaveFileObj.dataSize");
TQ_STATIC_ASSERT(offsetof(WaveFileObj, dataOffset) == 264, "WaveFileObj.dataOffset");
TQ_STATIC_ASSERT(sizeof(WaveFileObj) == 268, "WaveFileObj size");

/* Writing: InitWaveFileObj, CreateWaveFile, WriteWaveFile..., CloseWaveFile.
 * Reading: fileName set, OpenWaveFileToRead, seeks and reads, CloseWaveFile.
 * A record filled by OpenWaveFileToRead may be copied whole and given a new
 * fileName to create a file of the same format. */

/* Copies the name and fills format (PCM); touches nothing else, handle
 * included. Answers the block align. */
TQ_API int TQ_CALL InitWaveFileObj(WaveFileObj* wave, int samplesPerSecond, int bits, int channels,
                                   const char* fileName);
/* Creates fileName (truncating it) with the 44-byte header, sizes 0, and
 * leaves the "data" chunk open. 1, or 0 (not -1) on failure; a failure
 * after the file was made leaves it open in handle. */
TQ_API int TQ_CALL CreateWaveFile(WaveFileObj* wave);
/* Finds "fmt " (16 bytes or more; channels 1 or 2, nothing else checked)
 * and "data", and stands at the first sample. 1, or -1. After a failure
 * handle keeps a stale number: do not close such a record. */
TQ_API int TQ_CALL OpenWaveFileToRead(WaveFileObj* wave);
/* Reads up to count bytes, stopping where the absolute file position
 * reaches dataSize (so the last dataOffset bytes of the sound are never
 * delivered). The bytes delivered, 0 at the end. */
TQ_API int TQ_CALL ReadFromWaveFile(WaveFileObj* wave, void* buffer, int count);
/* Appends at the file position; the bytes written, -1 with no file. */
TQ_API int TQ_CALL WriteWaveFile(WaveFileObj* wave, const void* buffer, int count);
/* Closes the "data" and "RIFF" chunks (writing their sizes, padding to an
 * even length, when the file was made here) and the file; clears handle.
 * 0 on success; with no file 0 and nothing done. */
TQ_API int TQ_CALL CloseWaveFile(WaveFileObj* wave);
/* The position in milliseconds from the first sample. */
TQ_API int TQ_CALL GetCurrentTimePos(WaveFileObj* wave);
/* Seeks to WaveTimeOffsetToByteOffset(ms): data taken to begin at byte 64.
 * The seeks answer the new file position, or -1. */
TQ_API int TQ_CALL SeekWaveFileByTime(WaveFileObj* wave, int ms);
/* Seeks to dataOffset + offset. */
TQ_API int TQ_CALL SeekWaveFileByByte(WaveFileObj* wave, int offset);
/* origin 0: dataOffset + offset; 1: from the position; else from the end
 * of the whole file. */
TQ_API int TQ_CALL BetterSeekWaveFileByBytes(WaveFileObj* wave, int offset, int origin);

/* Conversions by the format's channels x rate x bits / 8 (not its stored
 * average), truncated. */
TQ_API int TQ_CALL WaveByteLenToTimeLen(const TqWaveFormat* format, int bytes);
/* Bytes, an odd count moved one toward zero. */
TQ_API int TQ_CALL WaveTimeLenToByteLen(const TqWaveFormat* format, int ms);
/* WaveTimeLenToByteLen + 64. */
TQ_API int TQ_CALL WaveTimeOffsetToByteOffset(const TqWaveFormat* format, int ms);
/* The format block of a wave file: 1, or -1. */
TQ_API int TQ_CALL GetWaveFileFormat(const char* path, TqWaveFormat* format);
/* para gets channels, bits, rate, data bytes, milliseconds: 1, or -1. */
TQ_API int TQ_CALL vcGetWaveFilePara(const char* path, int32_t* para);
/* Milliseconds of the data chunk, or -1. */
TQ_API int TQ_CALL vcGetWaveFileLenInTime(const char* path);

/* The number of wave output devices; 0 means no sound. */
TQ_API int TQ_CALL vcIfAudioReady(void);
/* Dispatches at most one waiting message of the calling thread; 0 when
 * there was none. */
TQ_API int TQ_CALL DoEvents(void);
/* Plays a wave file without waiting, with no default sound as fallback;
 * 0 and nothing played without a device. Up and Down are one function. */
TQ_API int TQ_CALL vcButtonEnterSound(const char* path);
TQ_API int TQ_CALL vcButtonDownSound(const char* path);
TQ_API int TQ_CALL vcButtonUpSound(const char* path);

/* Cuts startMs..endMs (endMs < 0: to the end) into a new wave of the same
 * format, through buffer (null: 2,048 bytes of its own). The cut is the
 * span's bytes plus 64, from the time seek. 1, or -1 when the source will
 * not open. vcExtractWaveSeg only forwards. */
TQ_API int TQ_CALL ExtractWaveSeg(const char* srcPath, const char* dstPath, int startMs, int endMs, void* buffer,
                                  int bufferSize);
TQ_API int TQ_CALL vcExtractWaveSeg(const char* srcPath, const char* dstPath, int startMs, int endMs,
                                    void* buffer, int bufferSize);
/* A mono copy, 1,024 bytes written for every 2,048 read (so always a
 * multiple of 1,024). 2 when the source was mono (a plain copy), -1 when it
 * will not open, else the result of closing the target. */
TQ_API int TQ_CALL vcWaveSteroToMono(const char* srcPath, const char* dstPath);

/* Buffer conversions. They run from the last element to the first, so dst
 * may be src. Element 0 is left as noted. */
/* dst[i] = (src[i] - 128) << 8 for i from count - 1 down to 1. */
TQ_API void TQ_CALL WaveBuf8To16(const uint8_t* src, int16_t* dst, int count);
/* dst[i] = src[i / 2] for i from 2 x frames - 1 down to 1 (8 or 16 bits). */
TQ_API void TQ_CALL WaveBufMonoToStero(int bits, const void* src, void* dst, int frames);
/* Doubles the rate by interpolation for 16-bit mono and 8/16-bit stereo, or
 * quadruples 16-bit stereo (factor 4); any other case does nothing. Reads
 * one frame past src's end; leaves the first output frame partly unwritten. */
TQ_API void TQ_CALL WaveBufAmplifyBitrate(int bits, int channels, int factor, const void* src, void* dst,
                                          int frames);
/* Rate (linear interpolation), then channels (1 -> 2 copies, 2 -> 1 keeps
 * the left), then depth, into dst. scratchSize bytes of scratch are made
 * here; dst and scratch must hold the largest step. The resampler reads two
 * frames past src's frames. The bytes in dst, or -1 when the formats are
 * equal. */
TQ_API int TQ_CALL vcWaveBufConvert(int srcBits, int srcChannels, int srcRate, int dstBits, int dstChannels,
                                    int dstRate, const void* src, void* dst, int frames, int scratchSize);

/* MP3 to wave. One conversion at a time in the process. secondsOut (may be
 * null) gets the seconds the work took. The wave has the MP3's rate and
 * channels at 16 bits and its file times. 0 when the decoding ran (also
 * when no frame came out: then no wave is made); -1 when the file is not
 * MPEG audio or will not open. */
TQ_API int TQ_CALL vcMp3ToWav(const char* mp3Path, const char* wavePath, int32_t* secondsOut);
/* The same, moving a progress bar (0 for none) from 0 to 100. */
TQ_API int TQ_CALL vcMp3ToWavShowProgress(const char* mp3Path, const char* wavePath, int progressBar,
                                          int32_t* secondsOut);
/* Starts the conversion on a thread of its own and returns at once:
 * non-zero when the thread started. vcGetMp3ToWavPercentage then gives 0 to
 * 100, and 1000 when the job has ended, cancelled or not; a source that
 * cannot be decoded stays at 0 for good, so wait with a time-out.
 * vcCancelConvert stops the job within 1,024 frames and deletes the wave. */
TQ_API int TQ_CALL vcMp3ToWavByThread(const char* mp3Path, const char* wavePath);
TQ_API int TQ_CALL vcGetMp3ToWavPercentage(void);
TQ_API void TQ_CALL vcCancelConvert(void);
/* Milliseconds, 0 on any failure. */
TQ_API int TQ_CALL vcGetMp3FileLengthInTime(const char* mp3Path);
/* startMs..endMs of the MP3 (endMs < 0: to the end; an absolute time) into
 * a wave that opens with one block from the start of the file. thin
 * halves the rate until it is at most 11,030 per second, keeping every
 * n-th sample; a thinned stereo file gets a header and no samples. 0, or
 * -1 as vcMp3ToWav. */
TQ_API int TQ_CALL vcExtractMp3ToWav(const char* mp3Path, const char* wavePath, int startMs, int endMs, int thin);

/* Wave to MP3 at bitrate kbit/s (constant, joint stereo or mono), read from
 * byte 64 of the wave whatever its header. The progress bar (0 for none)
 * moves in steps of 10. 1, or -1; reasons go to standard output or error. */
TQ_API int TQ_CALL vcEncodeWavToMp3ShowProgress(const char* wavePath, const char* mp3Path, int bitrate,
                                                int progressBar);
TQ_API int TQ_CALL vcEncodeWavToMp3(const char* wavePath, const char* mp3Path, int bitrate);

/* (end of sound) */

/* ======================================================================
 * Sound centre, sound libraries and article scripts: vcSndCenter_,
 * vcMakeWordSndFile, vcMakeSentenceSndFile, vcConvertToSearchingSentence,
 * vcProcessVoaScript, vcVerifyVoaScript, vcGetOldVoaSnd
 *
 * A sound centre answers "give me a sound of this word or sentence" with a
 * file at outBase + ".wav" or outBase + ".mp3". It searches, in a fixed
 * order, the user's own recordings, the sound libraries added to it, and
 * last the speech synthesiser (espeak-ng: English, and Mandarin read as
 * pinyin).
 *
 * A sound library is an index of SndLibRecord (96 bytes each, no header,
 * sorted by the key lower-cased in its ASCII letters, compared as unsigned
 * bytes) and data files that hold the sounds back to back. In a sentence
 * library (added under kind 2) offset and length are each stored XORed
 * with the record's own byte position in the index. A data file missing
 * beside the index is looked for as "sndlib\<dataFile>" on the CD drives,
 * A to Z. A user's ".usm" file is an MP3 with every byte XORed with the
 * suite's 55-byte sound key.
 *
 * Handles 1 to 19; vcSndCenter_OpenEx answers -1 when all are taken.
 * Calls on a handle that is not open answer -1 (0 for the voice and the
 * speech queries) and do nothing.
 * ====================================================================== */

typedef struct SndLibRecord {
  char key[64];         /* the word, or the search form of a sentence; byte 63 never counts */
  uint32_t offset;      /* of the sound in its data file */
  uint32_t length;      /* bytes of the sound */
  char dataFile[20];    /* the data file's name, without folder */
  int32_t isWave;       /* 0: an MP3 stream; else a whole wave file */
} SndLibRecord;

TQ_STATIC_ASSERT(offsetof(SndLibRecord, offset) == 64, "SndLibRecord.offset");
TQ_STATIC_ASSERT(offsetof(SndLibRecord, length) == 68, "SndLibRecord.length");
TQ_STATIC_ASSERT(offsetof(SndLibRecord, dataFile) == 72, "SndLibRecord.dataFile");
TQ_STATIC_ASSERT(offsetof(SndLibRecord, isWave) == 92, "SndLibRecord.isWave");
TQ_STATIC_ASSERT(sizeof(SndLibRecord) == 96, "SndLibRecord size");

/* Result codes of the search: -1 nothing (or speech failed); 1 a wave at
 * outBase + ".wav"; 2 an MP3 at outBase + ".mp3", or a user's MP3 file
 * copied as it is to outBase + ".wav"; 3 (question mode only) a library
 * holds the sound. */

/* A centre whose speech, when useTts is non-zero, is made at sampleRate,
 * channels (1, 2) and bits (8, 16). voiceRate is the English speaking rate,
 * -10 (a third of the normal speed) to 10 (three times, at most 450 words
 * a minute); 0 is espeak-ng's 175 words a minute. */
TQ_API int TQ_CALL vcSndCenter_OpenEx(int useTts, int bits, int sampleRate, int channels, int voiceRate);
/* vcSndCenter_OpenEx with voiceRate 0. */
TQ_API int TQ_CALL vcSndCenter_Open(int useTts, int bits, int sampleRate, int channels);
/* Adds a library under kind 0 (words), 1 (Chinese keys), 2 (sentences,
 * scrambled) or 3 (kept, never searched); libraries of a kind are searched
 * in the order added. The index stays open until the centre closes. 1, also
 * for a null indexPath (nothing added); -1 when the index will not open or
 * the kind is none of these. */
TQ_API int TQ_CALL vcSndCenter_AddSndLib(int centre, const char* indexPath, const char* rootDir, int kind);
/* The search. kind 0: a word (user sounds, libraries, English speech);
 * 1: "key\1chinese" (the library by the key first), "key\2chinese" (speech
 * first) or a bare key; 2: a sentence (looked up by its search form, user
 * sounds cut to 80 bytes of it too, spoken as given); 3: Chinese speech.
 * wantWave turns MP3 results into waves. allowTts lets kinds 0 to 2 speak.
 * sourceOut (may be null) gets 0 for a file or library, 1 for speech.
 * userDir (may be null; ends in a separator) holds "<word>.usm", ".wav",
 * ".mp3"; a file named just ".usm" (".wav", ".mp3") there answers every
 * word. With a null userDir kind 0 reads "InstallPath" of the current
 * user's "Software\VB and VBA Program Settings\orvex7\User", kind 2 that
 * of the sentence program's key, as a C literal
 * "Software\\\xC4\xAB\xC1\xEB\\\xC7\xE0\xD1\xE2\xBC\xC7\xBE\xE4" (GBK),
 * and adds "usersnd\". The result code, or -1. */
TQ_API int TQ_CALL vcSndCenter_GetSndFile(int centre, const char* text, int kind, const char* outBase, int wantWave,
                                          int allowTts, int32_t* sourceOut, const char* userDir);
/* The same search in question mode: nothing is written or spoken. 1 a wave
 * or speech would answer, 2 an MP3 or .usm user file, 3 a library; kind 3
 * always answers 1. */
TQ_API int TQ_CALL vcSndCenter_CanSpeak(int centre, const char* text, int kind, const char* outBase, int wantWave,
                                        int allowTts, int32_t* sourceOut, const char* userDir);
/* Positive when the centre's speech works (espeak-ng and its data are
 * there; the environment variable TQCOMM_ESPEAK_DATA may name the data
 * folder), else 0. */
TQ_API int TQ_CALL vcSndCenter_IsTtsAvailable(int centre);
/* The espeak-ng voice for English (Chinese) speech, in GBK: a name that
 * espeak-ng knows ("en-us", "gmw/en-GB-x-rp", "cmn") is used as given, any
 * other (or none) gives English "en" and Mandarin "cmn-latn-pinyin".
 * Answers the name's length in wide characters. */
TQ_API int TQ_CALL vcSndCenter_SetTtsVoiceName(int centre, const char* name);
TQ_API int TQ_CALL vcSndCenter_SetChineseTtsVoiceName(int centre, const char* name);
/* The English speaking rate, as at opening. Chinese is spoken at -2. */
TQ_API void TQ_CALL vcSndCenter_SetTtsVoiceRate(int centre, int rate);
/* Closes the libraries and the speech session; frees the slot. Handles
 * below 1 are ignored. */
TQ_API void TQ_CALL vcSndCenter_Close(int centre);

/* One sentence from one sentence library (rootDir + indexName, data files
 * in rootDir), with the user sounds of the sentence program, no speech.
 * The result code, or -1 (also when the index will not open). */
TQ_API int TQ_CALL vcMakeSentenceSndFile(const char* sentence, const char* rootDir, const char* indexName,
                                         const char* outBase, int wantWave);
/* A word from a word library (rootDir + indexName, data files at rootDir +
 * dataFile, no separator added, no CD search): outBase + ".mp3" and, made
 * from it, outBase + ".wav"; or outBase + ".wav" for a wave. 1, or 0 when
 * the word or a file is missing. */
TQ_API int TQ_CALL vcMakeWordSndFile(const char* word, const char* rootDir, const char* indexName,
                                     const char* outBase);
/* In place: "?" -> "@", double quote -> "^", ":" -> "#", "/" -> "&": the
 * search form of a sentence, fit for a file name and an index key. */
TQ_API void TQ_CALL vcConvertToSearchingSentence(char* text);

/* Article scripts: GBK lines. "[mm:ss.sss]sentence" (fixed columns: the
 * bracket, minutes in bytes 1-2, a colon, seconds in bytes 4-9, "]", the
 * sentence from byte 11) marks where a sentence starts in the recording; a
 * line holding "****" loses its first four bytes first; a line starting
 * with "$" starts a section, "**PATH" in it naming the section's MP3.
 * Sentence files go to the working directory, named by the sentence's
 * search form (full-width punctuation made ASCII, bytes 1-4 dropped) cut
 * to 63 bytes. */
/* Cuts each sentence, from its mark to the next (or to the end of the
 * recording at a "$" line and at the end of the script), into
 * "<sentence>.wav". A null path does nothing. Answers 0. */
TQ_API int TQ_CALL vcProcessVoaScript(const char* scriptPath);
/* For each line (a bare sentence) without "<sentence>.mp3" in the working
 * directory, a message box with the line and an empty title. Answers 0. */
TQ_API int TQ_CALL vcVerifyVoaScript(const char* scriptPath);
/* Takes each sentence line's sound ("<sentence>.mp3" or ".wav") out of the
 * sentence library named by the current user's registry key
 * "Software\tqcomm2006\VoaLibrary", values "IndexPath" (the index) and
 * "RootDir" (the folder of its data files); a sentence it lacks is shown in
 * a message box with an empty title. Lines starting with "[" or "$" and
 * lines holding "&&&" are passed over. */
TQ_API void TQ_CALL vcGetOldVoaSnd(const char* scriptPath);

/* (end of sound centre) */

/* ======================================================================
 * Audio lessons: vcMp3Maker_
 *
 * A lesson script (GBK lines of at most 998 bytes, trimmed of blanks and
 * tabs at both ends and of CR and LF) becomes one long wave, then an MP3
 * with a lyric file beside it. The script starts with 23 header lines:
 *   1 the letter sounds' prefix (ends in a separator; "<prefix>a1.wav" for
 *     a letter inside a word, "a2.wav" for the last, the letter's case
 *     kept, "blank.wav" for any other byte)
 *   2 3 4 5 path bases of the temporary waves of the word, the explanation,
 *     the English sentences and the Chinese ones (base + "_" + n + ".wav")
 *   6 7 the sound centre's userDir for words and for sentences
 *   then numbers: 8 caption the explanation; 9 the word's allowTts (0: a
 *   word without a sound is skipped whole); 10 join word and explanation
 *   with byte 1 (else 2); 11 voice the Chinese sentences; 12 caption them;
 *   13 English before Chinese; 14 sentences a word at each "S"; 15 kept;
 *   16 the pause between sentences, 17 between a sentence and its Chinese,
 *   in ms; 18 the word's caption in upper case; 19 bits, 20 samples per
 *   second, 21 channels of the lesson; 22 the MP3's kbit/s
 *  23 the pattern, run for every word: A the word, B the explanation, C the
 *     spelling, S the sentences, H nothing, a number ("1.5", at most 16
 *     bytes) a pause of that many seconds, N and a number the same (an N
 *     number that ends the pattern pauses twice). "ECText#" in front makes
 *     the word's caption "word  explanation" and B do nothing.
 * Then word blocks, each closed by a line "####": "A word", "B
 * explanation", "D sentence" ("&&&&" in front is not spoken but stays in
 * the caption; "@@@@" at the end: the next three lines give a recording,
 * the start and the end in ms, a negative end being the recording's end,
 * and "SndFiles\<its file name>" is taken when that exists), "E Chinese
 * sentence" after its D; the second byte of a tagged line is ignored, other
 * lines are passed over.
 *
 * Every sound is appended in the lesson's format, one frame short (the
 * reading keeps a frame ahead). Captions go to wavePath less its last four
 * bytes + ".lrt" (pairs of lines: ms or -1, text), the MP3 and the lyric
 * file ("[mm:ss.hh]text" lines, times scaled by the MP3's length over the
 * wave's) to the same stem + ".mp3" and ".lrc". While "c:\tmp\tqtqnomp3.dat"
 * exists the wave and the caption file stay and no MP3 is made. A lesson
 * stops growing at 2^31 - 1 bytes of samples.
 *
 * Handles 1 to 19. Calls on a handle that is not open answer -1.
 * ====================================================================== */

/* Opens the script and reads its header (a script shorter than its header
 * isn't told apart); sndCenter is the centre every sound is asked of. The
 * handle, or -1 when all are taken or the script will not open. */
TQ_API int TQ_CALL vcMp3Maker_Open(const char* scriptPath, int sndCenter);
/* Makes the wave at wavePath from up to wordCount blocks, going on from
 * where the script stands. progressWindow (0: none) gets the range 0-100
 * and positions in steps of ten; deviceContext (0: none) the title drawn at
 * (2, 2). compress: then the MP3 and the lyric file too (vcMp3Maker_
 * CompressWaveToMp3, vcMp3Maker_AdjustLrcFile), else the caption file is
 * removed. The count of blocks gone through, skipped ones included; 1 when
 * the script held no block (nothing is made); -1 when the wave can't be
 * created. */
TQ_API int TQ_CALL vcMp3Maker_MakeWaveFile(int maker, const char* wavePath, int wordCount, int compress,
                                           int progressWindow, int deviceContext);
/* Encodes the finished wave to the MP3 (and removes the wave). The MP3's
 * length in ms, or -1. deviceContext is not used. */
TQ_API int TQ_CALL vcMp3Maker_CompressWaveToMp3(int maker, int progressWindow, int deviceContext);
/* The lyric file from the caption file, which is removed. 1, or -1 when
 * either file will not open. */
TQ_API int TQ_CALL vcMp3Maker_AdjustLrcFile(int maker);
/* Closes the script and frees the handle. */
TQ_API void TQ_CALL vcMp3Maker_Close(int maker);

/* (end of audio lessons) */

/* ======================================================================
 * Wave digests: the shape of a long recording in a tiny file
 *
 * A digest file has no header: one byte for each block of blockMs of sound,
 * the absolute amplitude (0 to 128) of the block's last sample (an 8-bit
 * sample s gives |s - 128|, a 16-bit one |s >> 8|, so -1 gives 1 and +1
 * gives 0). The file does not store blockMs; the caller remembers it. A
 * block holds rate / (1000 / blockMs) samples, in integers, so blockMs runs
 * from 1 to 1000 and a block is a little off blockMs where 1000 is no
 * multiple of it.
 * ====================================================================== */

/* The digest of a wave (mono or stereo: in stereo the right channel's
 * sample; deeper samples than 16 bits by their top 16) read as
 * ReadFromWaveFile reads it; the last, short block counts too, as silence
 * when it holds no whole sample. The digest's length in milliseconds
 * (blocks x blockMs), or -1 when the wave will not open, the digest can't
 * be made or blockMs is outside 1..1000 or makes blocks of no sample. */
TQ_API int TQ_CALL vcMakeWaveDigestFile(const char* wavePath, const char* digestPath, int blockMs);
/* The same, sending the progress bar (0 for none) the position 0 to 100
 * every 1,024 blocks; the caller sets its range. */
TQ_API int TQ_CALL vcMakeWaveDigestFileShowProgress(const char* wavePath, const char* digestPath, int blockMs,
                                                    int progressBar);

/* The digest job: one at a time in the process. vcInitMakingDigestProcess
 * keeps the paths (cut to 199 bytes) and blockMs, clears the percentage and
 * the cancel word, and sets the interval to the whole file; it answers 0.
 * vcSetDigestInterval (after it) sets the interval of an MP3 job and
 * answers startMs; endMs -1 is the end of the file; a wave job always
 * covers the whole file. vcCreateMakingDigestThread starts the job on a
 * thread of its own, non-zero when started: a source whose last four
 * characters are ".wav" (either case) is read as a wave, anything else as
 * MPEG audio. vcGetMakeDigestPercentage then gives 0 to 100 (an MP3 job in
 * steps of 10), and 1000 once the job has ended and its digest is final:
 * deleted when cancelled, else with the source's file times. A source that
 * will not open, a digest that can't be made or a blockMs outside 1..1000
 * leave 0 for good, so wait with a time-out. vcCancelMakeDigest only sets
 * the cancel word, which the job looks at after each block (wave) or frame
 * (MP3). */
TQ_API int TQ_CALL vcInitMakingDigestProcess(const char* sourcePath, const char* digestPath, int blockMs);
TQ_API int TQ_CALL vcSetDigestInterval(int startMs, int endMs);
TQ_API int TQ_CALL vcCreateMakingDigestThread(void);
/* The job's two bodies, which may also run on a thread of the caller's:
 * wave 1, MP3 0; -1 when the job could not start. */
TQ_API int TQ_CALL vcMakeWaveDigestThread(void* unused);
TQ_API int TQ_CALL vcMakeMp3DigestThread(void* unused);
TQ_API int TQ_CALL vcGetMakeDigestPercentage(void);
TQ_API void TQ_CALL vcCancelMakeDigest(void);

/* Drawing, with the pen selected into dc: a centre line from (0, height/2)
 * to (width, height/2), then for each point (the integer mean of
 * blocksPerPoint bytes, scaled so that 128 fills the half height) two
 * columns: an even one at the point, an odd one at the mean of it and the
 * next. A column of value v is a line from height/2 - v to height/2 + v,
 * both included. At most 1,025 points (2,050 columns); where the file ends
 * the rest stays blank. Nothing is drawn when blockMs or blocksPerPoint is
 * below 1. vcDrawDigestFile draws a whole file from its start, one block a
 * point; nothing when it will not open. vcDrawWaveDigestFile is the same
 * function. */
TQ_API void TQ_CALL vcDrawDigestFile(const char* digestPath, int dc, int height, int width, int blockMs);
TQ_API void TQ_CALL vcDrawWaveDigestFile(const char* digestPath, int dc, int height, int width, int blockMs);
/* Readers 1 to 9 that keep a digest open: a handle, or -1 when all nine are
 * taken or the file will not open. vcDigestFile_Draw draws from the block
 * at startMs (startMs / blockMs), reading only what it shows; nothing for
 * an empty handle. */
TQ_API int TQ_CALL vcDigestFile_Open(const char* digestPath);
TQ_API void TQ_CALL vcDigestFile_Draw(int handle, int dc, int height, int width, int startMs, int blocksPerPoint,
                                      int blockMs);
TQ_API void TQ_CALL vcDigestFile_Close(int handle);

/* (end of wave digests) */

/* ======================================================================
 * Quizzes: vcChoiceQtFile_, vcFillBlankQtFile_, question generation and
 * the usage test
 *
 * Question banks are written as text and compiled once into files of
 * fixed records with no header: the record count is the file length over
 * the record size, a question's number is its record's position. Each of
 * the two file families has handles 1 to 9 and keeps one record of each
 * handle in memory: a record is read again only when another number is
 * asked for, and a change goes to the file at once. Indexes are record
 * numbers from 0; one that is not a record of the file answers -1 (and
 * changes nothing), as does an empty handle.
 *
 * Exam pages are GB2312. Their element ids are what the front ends'
 * scripts find: the radio group "radio<d>" holds the choice of question d
 * (shown number, from 1) and the name of "answ<d>" begins with the right
 * letter; a fill-blank page has the text boxes "Blk<ddd>-<kkk>" and the
 * answers in the names of "answ<ddd>-<kkk>". The images savesample.jpg and
 * savesentence.jpg go beside the page.
 * ====================================================================== */

/* One choice question, as stored in a question file (and in a digest of
 * whole records). Texts are GBK, each ended by a zero byte within its
 * field; options are stored without their letters. Integers little-endian.
 * classBits: x 1, c 2, g 4, d 8, t 16. knowledgeCode: five digits, as
 * "01.234" gives 1234. */
typedef struct ChoiceQtRecord {
  char stem[256];
  char options[5][96];
  char comment[509]; /* at most 508 bytes; lines separated by a line feed */
  char reserved1[3];
  int32_t answer; /* the right option, from 0 */
  int32_t difficulty;
  int32_t optionCount;
  int32_t classBits;
  int32_t knowledgeCode;
  char reserved2[8];
} ChoiceQtRecord;
TQ_STATIC_ASSERT(sizeof(ChoiceQtRecord) == 1276, "ChoiceQtRecord is 1276 bytes");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, options) == 256, "options at 256");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, comment) == 736, "comment at 736");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, answer) == 1248, "answer at 1248");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, difficulty) == 1252, "difficulty at 1252");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, optionCount) == 1256, "optionCount at 1256");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, classBits) == 1260, "classBits at 1260");
TQ_STATIC_ASSERT(offsetof(ChoiceQtRecord, knowledgeCode) == 1264, "knowledgeCode at 1264");

/* One fill-blank question: the sentence with each answer in square
 * brackets in its place. */
typedef struct FillBlankQtRecord {
  char text[256];
  int32_t degree;
} FillBlankQtRecord;
TQ_STATIC_ASSERT(sizeof(FillBlankQtRecord) == 260, "FillBlankQtRecord is 260 bytes");
TQ_STATIC_ASSERT(offsetof(FillBlankQtRecord, degree) == 256, "degree at 256");

/* A record of the question index that vcChoseQts reads: one per question of
 * a bank, in the bank's order. */
typedef struct QtIndexRecord {
  int32_t rangeValueA;
  int32_t rangeValueB;
  int32_t knowledgeCode;
} QtIndexRecord;
TQ_STATIC_ASSERT(sizeof(QtIndexRecord) == 12, "QtIndexRecord is 12 bytes");
TQ_STATIC_ASSERT(offsetof(QtIndexRecord, knowledgeCode) == 8, "knowledgeCode at 8");

/* Opens a question file with the given fopen mode: a handle, or -1 when the
 * file will not open or all nine handles are taken. A failed open keeps its
 * handle taken for the life of the process. */
TQ_API int TQ_CALL vcChoiceQtFile_Open(const char* path, const char* mode);
/* Closes the file and frees the handle. */
TQ_API void TQ_CALL vcChoiceQtFile_Close(int file);
/* The number of whole records in the file. */
TQ_API int TQ_CALL vcChoiceQtFile_GetRecordNum(int file);
/* Copies the comment (509 bytes of room); bufferSize is not looked at. 0. */
TQ_API int TQ_CALL vcChoiceQtFile_GetComment(int file, int index, char* buffer, int bufferSize);
/* Keeps at most 508 bytes of text (never half a character) as the comment
 * and writes the record back: the records written, 1 (0 when the write
 * fails, as on a file opened for reading only). */
TQ_API int TQ_CALL vcChoiceQtFile_SetComment(int file, int index, const char* text);
TQ_API int TQ_CALL vcChoiceQtFile_GetDifficulty(int file, int index);
/* Sets one record's difficulty: 1. The index -1 sets every record's: 0. */
TQ_API int TQ_CALL vcChoiceQtFile_SetDifficulty(int file, int index, int value);
/* Appends to the digest file the whole record (low byte of wholeRecord
 * set) or its number as 4 bytes: 1, or -1 when the digest will not open. */
TQ_API int TQ_CALL vcChoiceQtFile_DigestQt(int file, int index, const char* digestPath, int wholeRecord);
/* Removes the records of the ascending list of numbers through
 * "tmptmpdelete.dat" in the working directory: 1, or -1 when that cannot
 * be made. The file stays open under its handle. */
TQ_API int TQ_CALL vcChoiceQtFile_CloseAndDeleteQts(int file, int count, const int32_t* indices);
/* Writes the exam page; the number of questions on it, or -1 when the page
 * cannot be made. list (may be null): a count, then that many record
 * numbers; numbers that are not records of the file are passed over. With
 * neither list nor randomOrder every record is shown in order; randomOrder
 * shuffles the list (or all numbers). shuffleOptions shuffles each
 * question's options: pages made within one second shuffle alike.
 * backgroundImage may be null; showDelete adds a "Delete<n>" image. */
TQ_API int TQ_CALL vcChoiceQtFile_MakeHtml(int file, const char* htmlPath, int shuffleOptions, int unused,
                                           const char* backgroundImage, const int32_t* list, int randomOrder,
                                           int showDelete);
/* Compiles a question text into a question file, appended to an existing
 * file unless overwrite is set: 1, or -1 when a file will not open. A
 * question is written once its bank has had an answer line ("#B"), so the
 * questions before the first answer line are dropped. A text longer than
 * its field is cut to it. */
TQ_API int TQ_CALL vcChoiceQtFile_AddQtTextFile(const char* binaryPath, const char* textPath, int overwrite);

/* The fill-blank file, as the choice file with 260-byte records. */
TQ_API int TQ_CALL vcFillBlankQtFile_Open(const char* path, const char* mode);
TQ_API void TQ_CALL vcFillBlankQtFile_Close(int file);
TQ_API int TQ_CALL vcFillBlankQtFile_GetRecordNum(int file);
TQ_API int TQ_CALL vcFillBlankQtFile_GetDegree(int file, int index);
/* One record: 1. The index -1 sets every record: 0. */
TQ_API int TQ_CALL vcFillBlankQtFile_SetDegree(int file, int index, int value);
/* One question a line, its leading number dropped; degree 0. 1, or -1. */
TQ_API int TQ_CALL vcFillBlankQtFile_AddQtTextFile(const char* binaryPath, const char* textPath, int overwrite);
/* Writes the exam page; the number of questions on it, or -1. Without a
 * list only records whose degree lies in minDegree..maxDegree are shown
 * (numbered 1, 2, ... as shown); a listed record is always shown.
 * showDegree puts "[degree]" in each question's Degree link. A "[" with no
 * "]" behind it stays as text. */
TQ_API int TQ_CALL vcFillBlankQtFile_MakeHtml(int file, const char* htmlPath, int showDegree, int minDegree,
                                              int maxDegree, int unused, const char* backgroundImage,
                                              const int32_t* list, int randomOrder);

/* "1. He _______ to school." and "B) goes" give "He [goes] to school.";
 * an option "C) salt, pepper" fills two blanks (seven underscores each).
 * result needs room for the question plus the option and 4 bytes;
 * resultSize is not looked at. The length of result. */
TQ_API int TQ_CALL vcGenChoiceQtSentence(const char* question, const char* option, char* result, int resultSize);
/* Picks from a question index (QtIndexRecord) the questions that fit:
 * included (may be null; a count, then ascending numbers) names the only
 * candidates; rangeLow..rangeHigh (off when either is -1) bounds
 * rangeValueA, and, when neither secondRangeLow nor secondRangeHigh is -1,
 * rangeValueB by the same rangeLow..rangeHigh; codeCount codes (a code
 * ending in 999 stands for its thousand) must hold the knowledgeCode, and
 * a negative codeCount fits nothing. Writes the numbers to result (room for
 * one per record; may be null) and answers their count, or -1 when the
 * index will not open. */
TQ_API int TQ_CALL vcChoseQts(const char* indexPath, int unusedA, int rangeLow, int rangeHigh, int codeCount,
                              const int32_t* codes, int unusedB, int secondRangeLow, int secondRangeHigh,
                              const int32_t* included, int32_t* result);
/* Shows each text in a message box of its own (no title, OK). */
TQ_API void TQ_CALL vcTestStringArray(const char* const* strings, int count);

/* The usage test: one open per process. The file's first line is the
 * number of questions; then four lines a question: the question, and three
 * options whose first byte is a marker ("$" on the right one). Opens the
 * file (replacing an earlier one): the number of questions, or -1. */
TQ_API int TQ_CALL vcOpenUsageTest(const char* path);
/* Puts the next question in the four windows (options without their
 * marker) and answers the place of the last option marked "$", 0 to 2.
 * With none marked the answer is questionWindow itself, and with no test
 * open -1: anything but 0, 1 and 2 means no answer. Past the end of the
 * file the windows get the last line again. */
TQ_API int TQ_CALL vcGetUsageQt(int questionWindow, int optionWindow0, int optionWindow1, int optionWindow2);
TQ_API void TQ_CALL vcCloseUsageTest(void);

/* (end of quizzes) */

/* ======================================================================
 * Pages: word detail and printable quiz pages
 *
 * Pages are GB2312 and name their images by bare file name, so the images
 * (cy_title.jpg, ys_title.jpg, lj_title.jpg, dy_title.jpg, bh_title.jpg,
 * cg_title.jpg, xg_title.jpg, sound5.jpg, sound6.jpg, savesample.jpg,
 * icon.bmp) must lie beside the page.
 * ====================================================================== */

/* The detail page of a dictionary entry: lengths holds the seven section
 * lengths and text the sections back to back, as vcCmGetAllDetails and
 * vcEcDict_GetAllDetails give them. A section of length 0 is left out.
 * Sections are anchored dtMean, dtEMean, dtSample, dtPhrase, dtVary,
 * dtRoot and dtSyno. Links the front end catches: "ES"/"EN" + sentence +
 * "$" plays a sample ("?" written "#", a double quote "~"), "A_S<n>" and
 * "A_N<n>" save one. soundFlag 1 gives the "**" samples a sound link.
 * outPath is created or overwritten; when it cannot be, a message goes to
 * standard output and no page is made. */
TQ_API void TQ_CALL vcCreateHtmlDetail(const uint32_t* lengths, const char* text, const char* outPath,
                                       int soundFlag);
/* A printable copy of a quiz page. blankMode 0 puts the answers of
 * answerPath (one a line) in place of the text boxes; otherwise the boxes
 * become blanks (numbered from 1 when numbered is set) and, if answerPath
 * is given, the answers are listed at the foot. 1, or -1 when srcPath
 * cannot be read or dstPath cannot be created. */
TQ_API int TQ_CALL vcGenPrintableHtml(const char* srcPath, const char* dstPath, const char* answerPath,
                                      int blankMode, int numbered);

/* (end of pages) */

/* ======================================================================
 * Desktop: window shaping, text measurement and window procedures
 *
 * Windows and device contexts are 32-bit integer handles, in arguments and
 * records alike (on Linux those of tqhost.h).
 * ====================================================================== */

/* Cuts the window to the outline of all that its client area shows in other
 * colours than colour (a COLORREF, 0x00BBGGRR), read pixel by pixel: a
 * polygon down the left edges and up the right edges, filled even-odd, so a
 * shape with holes or bays in its sides keeps them only where an edge
 * reaches. 1, or -1 when nothing differs from the colour. The first
 * argument is not used. */
TQ_API int TQ_CALL vcMakeNoRegularWin(int unused, int window, unsigned int colour);
/* Gives the window its whole rectangle back; nonzero on success. */
TQ_API int TQ_CALL vcRestoreWinRgn(int window);
/* Adds [left, right) x [top, bottom) to the window's region. A window that
 * has no region yet is cut to the rectangle alone. Nonzero on success. */
TQ_API int TQ_CALL vcAddRectRgn(int window, int left, int top, int right, int bottom);
/* Takes [left, right) x [top, bottom) out of the window's region (from
 * (0, 0)-(20, 20) when it has none). bottom is also the handle of a region
 * that receives the result, is set on the window and is then deleted: pass
 * a region handle there (tqHost_CreateRectRgn on Linux), which is also the
 * rectangle's bottom edge. Nonzero when the region was set. */
TQ_API int TQ_CALL vcSubstractRectRgn(int window, int left, int top, int right, int bottom);
/* The height in pixels of the text in the device context's font; with a
 * null or empty text, that of a fixed sample of nine bytes: "ABClp" and two
 * Chinese characters. */
TQ_API int TQ_CALL vcGetStringHeight(int dc, const char* text);
/* The width in pixels of the text in the device context's font (0 for a
 * null text). vcGetStringWidth is the same function. */
TQ_API int TQ_CALL vcGetTextWidth(int dc, const char* text);
TQ_API int TQ_CALL vcGetStringWidth(int dc, const char* text);

/* The long-text record of vcDrawLongText, owned by the caller. */
typedef struct DrawTextObj {
  int32_t dc;          /* the device context */
  const char* text;    /* lines ended by CR LF */
  int32_t height;      /* result: the height drawn */
  int32_t width;       /* greatest width of a line */
  int32_t x;           /* left edge of the text */
  int32_t y;           /* top of the first line */
  int32_t lineHeight;  /* distance between lines */
} DrawTextObj;

TQ_STATIC_ASSERT(offsetof(DrawTextObj, text) == sizeof(void*), "DrawTextObj.text");
TQ_STATIC_ASSERT(offsetof(DrawTextObj, height) == 2 * sizeof(void*), "DrawTextObj.height");
TQ_STATIC_ASSERT(offsetof(DrawTextObj, lineHeight) == 2 * sizeof(void*) + 16, "DrawTextObj.lineHeight");
TQ_STATIC_ASSERT(sizeof(DrawTextObj) == (sizeof(void*) == 4 ? 28 : 40), "DrawTextObj size");

/* Stores the text in the record's text field and returns it. */
TQ_API const char* TQ_CALL vcInitDrawTextObj(DrawTextObj* obj, const char* text);
/* Draws the text from (x, y) down, lineHeight apart, breaking lines longer
 * than width: never inside a Chinese character, in English at the last
 * blank or mark before the word that does not fit (a word longer than the
 * line is cut where the line is full). Sets height to the pen's travel plus
 * one line (one more when the last line had to be broken). Returns obj. */
TQ_API DrawTextObj* TQ_CALL vcDrawLongText(DrawTextObj* obj);
/* Ruled lines: solid, one pixel, in the colour, from x = 0 to width at
 * y = step, 2 step, ... while y is at most bottom. The selected pen stays. */
TQ_API void TQ_CALL vcDrawLineBackground(int dc, int width, int bottom, int step, unsigned int colour);
/* 1 while the Alt (Ctrl) key is down, else 0. */
TQ_API int TQ_CALL vcIfAltPressed(void);
TQ_API int TQ_CALL vcIfCtrlPressed(void);

/* Window procedures. MoveWindowProc makes a strip at the top left of a
 * window a title bar to drag it by. Its size follows the window's title (the
 * first 89 bytes): "Dialog" gives the client width less 35 by 30 pixels, and
 * the titles of the suite's own programs their own sizes; a title holding
 * none of them has no strip. With a wheel mode other than 0 the procedure
 * turns the mouse wheel into key presses: towards the user F12 (123), away
 * F11 (122). Hooking pushes the window on a table and unhooking pops the
 * last entry, whatever window it was for, and gives its former procedure to
 * the window named: unhook in the reverse order of hooking. A window of 0 is
 * ignored. Up to 200 windows; a window not in the table gets 0 from the
 * procedure. */
TQ_API void TQ_CALL vcSetMoveWindowProc(int window, int on);
TQ_API void TQ_CALL vcSetMoveWindowProcEx(int window, int on, int wheelMode);
/* One window dragged by its left 65 and top 8 pixels. */
TQ_API void TQ_CALL vcSetMoveWindowProcForTamrill(int window, int on);
/* Web browser controls (up to 200): a right press arrives as a left press,
 * the Ctrl key (17) down or up as the key C (67), and WM_COMMAND is
 * swallowed. A window not in the table gets the number of entries. */
TQ_API void TQ_CALL vcSetWebCtrlWndProc(int window, int on);
TQ_API intptr_t TQ_CALL MoveWindowProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam);
TQ_API intptr_t TQ_CALL MoveWindowProcForTamrill(int window, unsigned int message, uintptr_t wParam,
                                                 intptr_t lParam);
TQ_API intptr_t TQ_CALL WebCtrlProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam);

/* (end of desktop) */

/* ======================================================================
 * File services
 *
 * Copies and deletions where "clears the mark" means a read-only file is
 * made writable by its owner again first. Groups pass over a file that
 * cannot be copied or deleted; folders are never copied or deleted as files.
 * ====================================================================== */

/* A file kept in a record the caller owns. vcCloseFileForVb closes it
 * (pass &record.hFile). */
typedef struct FileForVb {
  TqStream hFile; /* the open file (0 = none) */
  char path[260]; /* the path it was opened with, cut to 259 bytes */
} FileForVb;

TQ_STATIC_ASSERT(offsetof(FileForVb, path) == 4, "FileForVb.path");
TQ_STATIC_ASSERT(sizeof(FileForVb) == 264, "FileForVb size");

/* Clears the source's mark, copies over the destination (the copy keeps the
 * source's write time), clears the copy's mark. 1, or 0. */
TQ_API int TQ_CALL vcCopyFile(const char* source, const char* destination);
/* Copies every file matching the wildcard pattern into the folder and
 * clears each copy's mark; the number copied. */
TQ_API int TQ_CALL vcCopyGroupFile(const char* pattern, const char* folder);
/* Copies every file of a folder (no subfolders) into another; the number. */
TQ_API int TQ_CALL vcCopyAllFile(const char* sourceFolder, const char* destinationFolder);
/* Copies only when the source's last write is later than the destination's
 * (a missing destination is older). 1 when copied, else 0. */
TQ_API int TQ_CALL vcCopyNewerFile(const char* source, const char* destination);
/* Clears the destination's mark and appends the source to it. 0, or -1
 * when either will not open. */
TQ_API int TQ_CALL vcAppendFile(const char* source, const char* destination);
/* Clears the mark and deletes: 1, or 0. */
TQ_API int TQ_CALL vcDeleteFile(const char* path);
/* Deletes: 0, or -1. */
TQ_API int TQ_CALL vcUnlink(const char* path);
/* Renames a file or folder: 0, or -1. */
TQ_API int TQ_CALL vcRename(const char* oldPath, const char* newPath);
/* Deletes the file of that name in the Windows folder: 1, or 0. */
TQ_API int TQ_CALL vcDeleteWinPathFile(const char* name);
/* Clears and deletes every file of the folder, then removes the folder: 1
 * when it is gone, 0 when it stays (it holds a subfolder, or is missing). */
TQ_API int TQ_CALL vcDeleteAllFile(const char* folder);
/* Clears and deletes every file matching the pattern; the number deleted. */
TQ_API int TQ_CALL vcBatDeleteFile(const char* pattern);
/* Deletes the folder's files "st5unst.*"; the number deleted. */
TQ_API int TQ_CALL vcDeleteSt5unst(const char* folder);

/* One temporary file for the whole process, all threads. Open makes it anew
 * (closing one still open): 1, or -1. Write adds the text with no line end,
 * in spite of its name: 1, or -1 with no file. Close: 0, or -1. */
TQ_API int TQ_CALL vcOpenTmpFile(const char* path);
TQ_API int TQ_CALL vcWriteTmpFileLine(const char* text);
TQ_API int TQ_CALL vcCloseTmpFile(void);

/* Keeps the path and opens the file with the fopen mode: 1, or -1. */
TQ_API int TQ_CALL vcOpenFileForVb(FileForVb* record, const char* path, const char* mode);
/* Write the text; ALine adds "\r\n". 1, or -1. */
TQ_API int TQ_CALL vcWriteFileForVb(FileForVb* record, const char* text);
TQ_API int TQ_CALL vcWriteFileForVbALine(FileForVb* record, const char* text);
/* Reads a line of at most size - 1 bytes (its line end kept unless
 * trimRight, which removes trailing blanks, tabs, CR and LF; trimLeft
 * removes leading blanks and tabs). Its length, or -1 at the end of the
 * file (and for a size below 2). */
TQ_API int TQ_CALL vcReadFileForVb(FileForVb* record, char* buffer, int size, int trimLeft, int trimRight);

/* Files of 32-bit little-endian integers; 0 when the file will not open.
 * Write makes the file anew: the number written. Read: the number read
 * (none for a count of -1). Elements: the length divided by 4. */
TQ_API int TQ_CALL vcWriteIntArrayToFile(const char* path, const int32_t* values, int count);
TQ_API int TQ_CALL vcReadIntArrayFromFile(const char* path, int32_t* values, int count);
TQ_API int TQ_CALL vcGetIntArrayFileElements(const char* path);

/* (end of file services) */

/* ======================================================================
 * Registry, shell and start-up
 *
 * On Linux the registry values live in the store of vcGetKeyValueInt; the
 * Windows, system and special folders, windows, drives, the cursor and the
 * system's version are the host's (tqhost.h). Programs are started as
 * detached processes: a command line is split into words as a shell would,
 * with backslashes kept as path separators and Windows paths mapped.
 * ====================================================================== */

/* Start-up entries under the local machine's
 * "SOFTWARE\Microsoft\Windows\CurrentVersion\Run" (RunServices for the
 * Service pair). 0, or -1. */
TQ_API int TQ_CALL vcSetStartupRun(const char* name, const char* command);
TQ_API int TQ_CALL vcRemoveStartupRun(const char* name);
/* 1 when the entry holds the command, compared without regard to case (an
 * entry of more than 117 bytes never matches), else 0. */
TQ_API int TQ_CALL vcIfStartupRun(const char* name, const char* command);
/* vcSetStartupRun unless vcIfStartupRun is true: 0, or -1. */
TQ_API int TQ_CALL vcMakeSureStartupRun(const char* name, const char* command);
TQ_API int TQ_CALL vcSetStartupRunService(const char* name, const char* command);
TQ_API int TQ_CALL vcRemoveStartupRunService(const char* name);

/* The navigation sound: the current user's
 * "AppEvents\Schemes\Apps\Explorer\Navigating\.Current", unnamed value.
 * Remove reads the old path into buffer (200 bytes) and stores "". 0, or -1. */
TQ_API int TQ_CALL vcSetNavigateSnd(const char* path);
TQ_API int TQ_CALL vcRemoveNavigateSnd(char* buffer);

/* A shortcut on the desktop: a freedesktop entry written at the desktop
 * folder + "\" + linkName (name it "*.desktop" for the desktop to show it),
 * keeping target, arguments, working folder and the hot key (the byte, with
 * Ctrl and Alt). 1, or 0. */
TQ_API int TQ_CALL vcAddShortCutToDeskTop(const char* target, const char* arguments, const char* linkName,
                                          const char* workingFolder, int hotKey);
/* Delete a file of the desktop, of a group of the programs menu, of the
 * start menu: 1, or 0. The start menu's first shows the name in a message
 * box with an empty title. */
TQ_API int TQ_CALL vcDeleteDeskTopShortCut(const char* name);
TQ_API int TQ_CALL vcDeleteItemInProgramGroup(const char* group, const char* item);
TQ_API int TQ_CALL vcDeleteItemInStartMenu(const char* name);

/* Runs the program of the classes root's "http\shell\open\command" (its
 * path taken from the value's second byte to the next double quote) on the
 * address: 0, or -1 when the key or value is missing. */
TQ_API int TQ_CALL vcHttpPage(const char* url);
/* The same with "mailto\shell\open\command" on "mailto:" + address, and
 * "?subject=" + subject when there is one. */
TQ_API int TQ_CALL vcSendMailTo(const char* address, const char* subject);
/* Opens a help file with the machine's viewer (xchm, kchmviewer, else
 * xdg-open): 1, or 0 when the file or a viewer is missing. */
TQ_API int TQ_CALL vcHtmlHelp(const char* path);
/* Runs wordpad from the Windows folder's drive on the file, or says in a
 * message box that it cannot be found. */
TQ_API void TQ_CALL vcDispFileInWordpad(const char* path);
/* Installs the speech character and voice from "tts\" when the Windows
 * folder lacks them: 0 when the voice is there, else 1. */
TQ_API int TQ_CALL vcMakeSureGenieCharacterExist(void);
/* Starts the companion program at path unless its window answers 804 or
 * more to message 3369 (that answer is returned); else the result of the
 * start, as WinExec answers (above 31 when it runs). */
TQ_API int TQ_CALL vcStartSp(const char* path);
/* The first CD drive (type 5), A to Z, where the file exists below the
 * drive's root: its letter, or 0. */
TQ_API int TQ_CALL vcIfCDROMReady(const char* file);
/* The same with "X:" in driveOut: 1, or 0. */
TQ_API int TQ_CALL vcIfCdFileReady(const char* file, char* driveOut);
/* The system folder into buffer (100 bytes): its length; the room needed
 * (buffer untouched) when it does not fit. */
TQ_API int TQ_CALL vcGetSystemDir(char* buffer);
/* The system's family: 1 NT before 5, 2 the older family before 4.1, 3 NT 5
 * and later, 4 the older family from 4.1, 5 NT x.1 from 5. */
TQ_API int TQ_CALL vcNtOr95(void);
/* 1 when the system's major version is below 6. */
TQ_API int TQ_CALL vcIsXpCompitableInVista(void);
/* The window of exactly that title, or 0. */
TQ_API int TQ_CALL vcFindWindow(const char* title);
/* The cursor's screen position. 1, or 0. */
TQ_API int TQ_CALL vcGetMousePosition(int32_t* x, int32_t* y);
/* A 16-bit value widened without sign. */
TQ_API int TQ_CALL vcVbIntegerToUnsigned(int value);
TQ_API int TQ_CALL vcBitAnd(int a, int b);
TQ_API int TQ_CALL vcBitOr(int a, int b);
TQ_API int TQ_CALL vcBitXor(int a, int b);
/* 1 when every byte is a digit (the empty text too), else 0. */
TQ_API int TQ_CALL vcIsAllDigit(const char* text);

/* (end of registry, shell and start-up) */

/* ======================================================================
 * Message feed
 *
 * Two feeds of new-message counts, files in the Windows folder: the first
 * "velmarkadv.txt" (lines "number.text"; an empty line ends it) and the
 * last-seen number "velmarkadv.no", the second "vlkjbadv.txt" and
 * "vlkjbadv.no". Every open of these files is guarded by a named lock that
 * holds across processes ("VelmarkAdv", "vlkjbadv": on Linux the file
 * "<name>.lock" in the Windows folder, locked with flock), waited for at
 * most 3,000 ms; a wait that runs out does not stop the access. Both feeds
 * keep the lock in one slot: the Init called last decides the lock that
 * both wait for. Without an Init nothing is guarded.
 * ====================================================================== */

/* Opens the feed's lock into the slot: its handle, or 0. */
TQ_API int TQ_CALL vcInitKuvAdv(void);
TQ_API int TQ_CALL vcInitKuvAdvForNore(void);
/* Closes the lock in the slot (either name, one routine): 1, or 0. */
TQ_API int TQ_CALL vcEndKuvAdv(void);
TQ_API int TQ_CALL vcEndKuvAdvForNore(void);
/* The number of messages numbered above the last-seen number; path, when
 * given, replaces the message file. -2 when it cannot be opened. */
TQ_API int TQ_CALL vcIfNewMsgExist(const char* path);
TQ_API int TQ_CALL vcIfNewMsgExistForNore(const char* path);
/* Replaces the last-seen file by the number (no line end): 1, or -1. */
TQ_API int TQ_CALL vcSetMaxViewedMsg(int number);
TQ_API int TQ_CALL vcSetMaxViewedMsgForNore(int number);

/* (end of message feed) */

#ifdef __cplusplus
}
#endif

#endif /* TQCOMM2006_H */
