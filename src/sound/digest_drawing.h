// The picture of a digest: one vertical line for each column, as long as
// the loudness of the blocks behind it, across a centre line, drawn with
// whatever pen the caller has selected into the device context.
#pragma once

#include <cstdio>
#include <string>

#include "core/handle_table.h"

namespace tq::sound {

// An open digest file, read again for each picture from where it is asked.
class DigestReader {
 public:
  // Null when the file will not open.
  static DigestReader* Open(const char* path);
  ~DigestReader();
  DigestReader(const DigestReader&) = delete;
  DigestReader& operator=(const DigestReader&) = delete;

  // Draws from the block at startMs, blocksPerPoint blocks to each point
  // and a point to each two columns, into at most 2,050 columns. Nothing
  // when blockMs or blocksPerPoint is below 1, or startMs lies before the
  // file.
  void Draw(int dc, int height, int width, int startMs, int blocksPerPoint, int blockMs);

 private:
  DigestReader(const char* path, std::FILE* file) : path_(path), file_(file) {}

  std::string path_;
  std::FILE* file_;
};

// Readers 1 to 9; -1 when all are taken.
using DigestReaders = HandleTable<DigestReader, 10, -1>;
DigestReaders& Readers();

}  // namespace tq::sound
