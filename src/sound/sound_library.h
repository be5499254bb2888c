// Sound libraries: an index of 96-byte records (SndLibRecord) sorted by
// key, and data files with the sounds back to back. The index is never
// loaded: a lookup halves its way through the open file, one record read a
// step, so a library of any size opens at once.
//
// Also the scrambled single files of a user's own sounds (".usm"), and the
// short road from a word to its sound that keeps no library open.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "tqcomm2006.h"

namespace tq::sound {

constexpr int kSndRecordBytes = 96;
constexpr int kSndKeyBytes = 64;
// Bytes of a key that count: byte 63 is taken for a terminator.
constexpr int kSndKeyLength = 63;

// Extract's answers.
enum : int { kSndMissing = -1, kSndWave = 1, kSndMp3 = 2, kSndFound = 3 };

// The record's fields from its 96 bytes and back (little-endian).
SndLibRecord DecodeSndRecord(const unsigned char* bytes);
void EncodeSndRecord(const SndLibRecord& record, unsigned char* bytes);

// The key as lookups compare it: at most 63 bytes, A-Z lowered.
std::string FoldSndKey(const char* key);

// The halving lookup on an open index file: starting at the first record,
// each step moves by half the records still open on the side where the key
// lies. The record's byte position, with the record (its key lowered) in
// *found; -1 when absent, when a step would be less than a record, or when
// a record can't be read whole (an empty index).
long LookupSndKey(std::FILE* index, const char* key, SndLibRecord* found);

// Copies length bytes of data from offset into target. As the front ends
// have always had it, a length beyond the end of the data file doesn't
// stop the copy: each byte past the end is the end-of-file value, 0xFF.
// False when the target can't be written.
bool CopySoundBytes(std::FILE* data, uint32_t offset, uint32_t length, std::FILE* target);

// The CD drive, A to Z, that holds "sndlib\<dataFile>" at its root: "E:",
// or "" when none does.
std::string CdDriveHolding(const std::string& dataFile);

// One open library.
class SndLib {
 public:
  SndLib() = default;
  SndLib(const SndLib&) = delete;
  SndLib& operator=(const SndLib&) = delete;
  ~SndLib() { Close(); }

  // 1, or -1 when the index can't be opened.
  int Open(const char* indexPath, const char* rootDir);
  // The sound of key into outBase + ".mp3" or ".wav" (see the answers
  // above); in queryOnly mode only whether the index holds it. scrambled:
  // offset and length are stored XORed with the record's position.
  int Extract(const char* key, const char* outBase, bool wantWave, bool scrambled, bool queryOnly);
  void Close();

  const SndLibRecord& lastRecord() const { return lastRecord_; }
  const std::string& indexPath() const { return indexPath_; }

 private:
  std::FILE* OpenDataFile() const;

  SndLibRecord lastRecord_{};
  std::string indexPath_;
  std::string rootDir_;
  std::FILE* index_ = nullptr;
};

// Copies a file with every byte XORed with the sound key (".usm" both
// ways). 1, or -1 when either file can't be opened.
int XorSoundFile(const char* source, const char* target);

// The word's sound from rootDir + indexName into outBase + ".mp3" (and a
// wave made of it) or outBase + ".wav". 1, or 0.
int MakeWordSndFile(const char* word, const char* rootDir, const char* indexName, const char* outBase);

}  // namespace tq::sound
