#include "sound/riff.h"

#include <climits>

#include "core/binary_io.h"

namespace tq::sound {
namespace {

bool SeekTo(std::FILE* f, int64_t offset) {
  if (offset < 0 || offset > LONG_MAX) return false;
  return std::fseek(f, static_cast<long>(offset), SEEK_SET) == 0;
}

uint32_t Padded(uint32_t size) { return size + (size & 1); }

}  // namespace

bool CreateChunk(std::FILE* f, TqChunkInfo* chunk) {
  long start = std::ftell(f);
  if (start < 0) return false;
  bool ok = WriteI32(f, static_cast<int32_t>(chunk->id)) && WriteI32(f, static_cast<int32_t>(chunk->size));
  if (ok && chunk->id == kRiff) ok = WriteI32(f, static_cast<int32_t>(chunk->formType));
  chunk->dataOffset = static_cast<uint32_t>(start + 8);
  chunk->flags = kChunkDirty;
  return ok;
}

bool DescendHere(std::FILE* f, TqChunkInfo* chunk) {
  long start = std::ftell(f);
  int32_t id, size, form = 0;
  if (start < 0 || !ReadI32(f, &id) || !ReadI32(f, &size)) return false;
  if (static_cast<uint32_t>(id) == kRiff && !ReadI32(f, &form)) return false;
  chunk->id = static_cast<uint32_t>(id);
  chunk->size = static_cast<uint32_t>(size);
  chunk->formType = static_cast<uint32_t>(form);
  chunk->dataOffset = static_cast<uint32_t>(start + 8);
  chunk->flags = 0;
  return true;
}

bool DescendTo(std::FILE* f, TqChunkInfo* chunk, uint32_t id) {
  // Every pass moves on by at least a header, so a hostile size ends the
  // search at the end of the file rather than looping.
  for (;;) {
    if (!DescendHere(f, chunk)) return false;
    if (chunk->id == id) return true;
    if (!SeekTo(f, static_cast<int64_t>(chunk->dataOffset) + Padded(chunk->size))) return false;
  }
}

bool Ascend(std::FILE* f, TqChunkInfo* chunk) {
  if (chunk->flags & kChunkDirty) {
    long end = std::ftell(f);
    if (end < 0) return false;
    uint32_t size = static_cast<uint32_t>(end) - chunk->dataOffset;
    if (size != chunk->size) {
      if (!SeekTo(f, static_cast<int64_t>(chunk->dataOffset) - 4) || !WriteI32(f, static_cast<int32_t>(size))) {
        return false;
      }
      chunk->size = size;
    }
    chunk->flags = 0;
    if (!SeekTo(f, static_cast<int64_t>(chunk->dataOffset) + size)) return false;
    return (size & 1) == 0 || std::fputc(0, f) != EOF;
  }
  return SeekTo(f, static_cast<int64_t>(chunk->dataOffset) + Padded(chunk->size));
}

}  // namespace tq::sound
