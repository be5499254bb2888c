// The RIFF layer under the wave files: chunks made, found and left over a
// buffered file. A chunk is the caller's TqChunkInfo, so that a WaveFileObj
// keeps its chunks between calls.
#pragma once

#include <cstdint>
#include <cstdio>

#include "tqcomm2006.h"

namespace tq::sound {

constexpr uint32_t FourCC(char a, char b, char c, char d) {
  return static_cast<uint32_t>(static_cast<unsigned char>(a)) |
         static_cast<uint32_t>(static_cast<unsigned char>(b)) << 8 |
         static_cast<uint32_t>(static_cast<unsigned char>(c)) << 16 |
         static_cast<uint32_t>(static_cast<unsigned char>(d)) << 24;
}
constexpr uint32_t kRiff = FourCC('R', 'I', 'F', 'F');
constexpr uint32_t kWave = FourCC('W', 'A', 'V', 'E');
constexpr uint32_t kFmt = FourCC('f', 'm', 't', ' ');
constexpr uint32_t kData = FourCC('d', 'a', 't', 'a');

// Marks a chunk made here whose size is still to be written.
constexpr uint32_t kChunkDirty = 0x10000000;

// Writes the header of a new chunk at the file position: chunk->id and
// chunk->size, and for a "RIFF" chunk chunk->formType. False on a short write.
bool CreateChunk(std::FILE* f, TqChunkInfo* chunk);
// Reads the chunk header at the file position, whatever its id, and stands
// at its body (after the form type of a "RIFF" chunk).
bool DescendHere(std::FILE* f, TqChunkInfo* chunk);
// From the file position on, passes chunks until one has the id; stands at
// its body. The search runs to the end of the file, not of the parent's
// declared size: a file whose writer never finished has 0 there.
bool DescendTo(std::FILE* f, TqChunkInfo* chunk, uint32_t id);
// Leaves a chunk. One made here gets its true size (the file position less
// its body offset) written into its header and a pad byte when that size is
// odd; one found by descending is only passed. Stands after the chunk.
bool Ascend(std::FILE* f, TqChunkInfo* chunk);

}  // namespace tq::sound
