// Reading entries out of a library: sections by offset, the composed
// detail text with its headings, and the parser of the related words.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

namespace tq::dict {

// The sections of one entry: where section 0 starts and the seven lengths.
struct EntryRef {
  uint32_t libOffset = 0;
  uint32_t lengths[7] = {0, 0, 0, 0, 0, 0, 0};
  // Where section k starts: the offset plus the lengths before it.
  uint64_t SectionStart(int k) const;
  uint64_t TotalLength() const;
};

// Reads length bytes of the library at offset, deciphered, into out (NUL
// behind); never more than `room` bytes nor beyond the end of the file.
// Answers the bytes read.
size_t ReadLibrary(std::FILE* lib, uint64_t offset, uint64_t length, char* out, uint64_t room = UINT64_MAX);
std::string ReadLibrary(std::FILE* lib, uint64_t offset, uint64_t length);

// The composed detail of an entry, as the classic dictionary shows it: the
// chosen sections in the caller's order behind their headings, runs of line
// ends made one CR LF, samples cut to 12 lines, the pronunciation bracket
// taken off meaning and explanation. count 0 gives the raw text of all
// sections. Answers the text and its length as the caller is told it.
int ComposeDetail(std::FILE* lib, const EntryRef& entry, const uint32_t* sections, int count, std::string* out);

// Splits the stored related words ("同义词：a,b...反义词：c,d") into words
// for the two lists.
void FillRelatedLists(const char* text, size_t length, int synonymList, int antonymList);

// Adds up to 30 records from 15 before the index's position to a list box;
// answers the list position of the record the position stood behind.
int FillListAroundPosition(std::FILE* idx, int recordSize, int wordFieldSize, int listWindow);

// The wildcard scan of an index: from start to end (inclusive) in steps of
// `step` bytes while each read takes recordSize bytes, so that with a step
// smaller than the record the reads run on past the range, and reads at the
// end of the file leave the last record to be tested again. Each word the
// pattern accepts goes to onMatch. Every 100 records the progress bar (if
// any) learns the position and the front end gets to breathe.
void ScanForPattern(std::FILE* idx, long start, long end, long step, int recordSize, int wordFieldSize,
                    char* pattern, int progressWindow, const std::function<void(const char*)>& onMatch);
// The leading run of letters a to z of a pattern: where its range starts.
std::string LetterPrefix(const char* pattern);

// Section 0's pronunciation ("[...]", through the first "]") and the
// meaning behind it. The meaning starts two bytes behind the "]", or three
// when that byte is a line end (loose), or always three (strict).
bool SplitMeaningAndPron(const char* section, size_t length, bool alwaysSkipPair, std::string* mean,
                         std::string* pron);

// Copies a string into a fixed field, cut to fit with a NUL.
void CopyField(char* field, size_t size, const char* text);
// Copies text into a caller's buffer; answers its length.
int CopyOut(char* out, const std::string& text);

}  // namespace tq::dict
