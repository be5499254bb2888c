#include "dict/cipher.h"

#include "core/binary_io.h"

namespace tq::dict {

// Fixed when the dictionary files of this suite were first made; changing it
// makes every existing dictionary unreadable.
const unsigned char kDictKey[kDictKeyLength] = {0x5A, 0x3C, 0x91, 0x17, 0xE4, 0x6B, 0x28, 0xD3, 0x7F,
                                                0x02, 0xB5, 0x4E, 0x99, 0x61, 0xC8, 0x1D, 0xA6, 0x33,
                                                0xF0, 0x8C, 0x45, 0x7A, 0xEB, 0x10, 0x6E, 0xD7};

int DecodeExplain(unsigned char* buffer, int length, uint32_t filePos) {
  if (length < 1) return 0;
  unsigned k = filePos % kDictKeyLength;
  for (int i = 0; i < length; ++i) {
    buffer[i] ^= kDictKey[k];
    if (++k == kDictKeyLength) k = 0;
  }
  return length;
}

void EncodeIdxTail(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize) {
  DecodeExplain(record + wordFieldSize, 32, recordPos + wordFieldSize);
}

namespace {

// The grade from the high half of the first short field, then the six short
// fields cut to their low halves. Section 0's length keeps all 32 bits.
int MaskAndGrade(unsigned char* tail) {
  int grade = static_cast<int16_t>(static_cast<uint16_t>(GetI32(tail + 8) >> 16 & 0xFFFF));
  for (int off = 8; off <= 28; off += 4) PutI32(tail + off, GetI32(tail + off) & 0xFFFF);
  return grade == 0 ? 21 : grade;
}

}  // namespace

int DecodeIdx(unsigned char* record, uint32_t recordPos, uint32_t wordFieldSize) {
  EncodeIdxTail(record, recordPos, wordFieldSize);
  return MaskAndGrade(record + wordFieldSize);
}

int DecodeEcIdx(unsigned char* record, uint32_t recordPos) { return DecodeIdx(record, recordPos, 64); }

IndexImage ReadImage(const unsigned char* tail) {
  IndexImage image;
  image.libOffset = static_cast<uint32_t>(GetI32(tail));
  for (int i = 0; i < 7; ++i) image.lengths[i] = static_cast<uint32_t>(GetI32(tail + 4 + 4 * i));
  return image;
}

}  // namespace tq::dict
