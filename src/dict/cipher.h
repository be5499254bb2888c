// The cipher of the dictionary files.
//
// Every enciphered byte is XORed with the dictionary key at the position
// given by the byte's absolute offset in its file, modulo the key's length.
// One key serves the libraries, the classic index and the compact index; the
// word fields of the indexes stay plain so that a lookup can compare them
// without deciphering.
#pragma once

#include <cstdint>

namespace tq::dict {

constexpr int kDictKeyLength = 26;
extern const unsigned char kDictKey[kDictKeyLength];

// Deciphers (or enciphers: the same XOR) length bytes that stand at filePos
// in their file. Answers length, or 0 when it is below 1.
int DecodeExplain(unsigned char* buffer, int length, uint32_t filePos);

// The 32 bytes behind the word field of an index record, XOR only.
void EncodeIdxTail(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize);

// Deciphers a classic 52-byte record that stood at recordPos and masks the
// six short lengths; answers the grade (21 for a stored 0).
int DecodeIdx(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize);

// The same on a compact 96-byte record (the word field is 64 bytes).
int DecodeEcIdx(unsigned char* record, uint32_t recordPos);
inline void EncodeEcIdx(unsigned char* record, uint32_t recordPos) { EncodeIdxTail(record, recordPos, 64); }

// Classic and compact records share one shape behind the word: the library
// offset, the 32-bit length of section 0, then six fields of which the low
// 16 bits are a section length and the high half of the first is the grade.
struct IndexImage {
  uint32_t libOffset = 0;
  uint32_t lengths[7] = {0, 0, 0, 0, 0, 0, 0};
};
// Reads the fields of a deciphered (and masked) tail.
IndexImage ReadImage(const unsigned char* tail);

}  // namespace tq::dict
