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

/* (end of text primitives) */

/* ======================================================================
 * Calendar and day numbers
 *
 * Day 0 is 1899-12-30.
 * ====================================================================== */

/* (end of calendar and day numbers) */

/* ======================================================================
 * Word text streams: vcCEnglishTxtFile_ and the word file reader
 * ====================================================================== */

/* (end of word text streams) */

/* ======================================================================
 * File and registry basics
 * ====================================================================== */

/* (end of file and registry basics) */

/* ======================================================================
 * Learning wizard: vcCOrvexWizard_
 * ====================================================================== */

/* (end of learning wizard) */

/* ======================================================================
 * History file upkeep
 * ====================================================================== */

/* (end of history file upkeep) */

/* ======================================================================
 * Classic dictionaries: vcCm..., entry detail and word forms
 * ====================================================================== */

/* (end of classic dictionaries) */

/* ======================================================================
 * Compact dictionary: vcEcDict_
 * ====================================================================== */

/* (end of compact dictionary) */

/* ======================================================================
 * Word set: vcCWordMSet_
 * ====================================================================== */

/* (end of word set) */

/* ======================================================================
 * Pages: word detail and printable quiz pages
 * ====================================================================== */

/* (end of pages) */

#ifdef __cplusplus
}
#endif

#endif /* TQCOMM2006_H */
