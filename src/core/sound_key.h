// The key of the suite's scrambled single files: user recordings (".usm")
// and the font library that the notebooks prepare. Every byte of such a file
// is XORed with the key, used cyclically from the file's first byte, so the
// same pass scrambles and restores.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tq {

constexpr int kSoundKeyLength = 55;
extern const unsigned char kSoundKey[kSoundKeyLength];

// XORs length bytes that stand at filePos in their file with the key.
void ApplySoundKey(unsigned char* bytes, size_t length, uint64_t filePos);

}  // namespace tq
