#include "dict/search.h"

#include <climits>

#include "core/binary_io.h"
#include "dict/cipher.h"

namespace tq::dict {

long FileRecords::Length() const { return file_ ? FileLength(file_) : -1; }

const unsigned char* FileRecords::Read(long offset, int recordSize) {
  if (recordSize > static_cast<int>(sizeof buffer_)) return nullptr;
  if (std::fseek(file_, offset, SEEK_SET) != 0) return nullptr;
  if (std::fread(buffer_, 1, static_cast<size_t>(recordSize), file_) != static_cast<size_t>(recordSize)) {
    return nullptr;
  }
  return buffer_;
}

long SearchIdxExact(std::FILE* file, const char* key, int recordSize, int wordFieldSize) {
  if (file == nullptr || key == nullptr) return -1;
  FileRecords records(file);
  return SearchExact(records, key, recordSize, wordFieldSize);
}

long SearchIdxClosest(int32_t* found, std::FILE* file, const char* key, int recordSize, int wordFieldSize) {
  if (found != nullptr) *found = 0;
  if (file == nullptr || key == nullptr) return -1;
  FileRecords records(file);
  return SearchClosest(records, found, key, recordSize, wordFieldSize);
}

size_t ReadAt(std::FILE* file, uint64_t offset, void* buffer, uint64_t length) {
  if (file == nullptr || length == 0 || offset > static_cast<uint64_t>(LONG_MAX)) return 0;
  if (std::fseek(file, static_cast<long>(offset), SEEK_SET) != 0) return 0;
  // fread stops at the end of the file, so a length beyond it writes no
  // more than the file holds.
  return std::fread(buffer, 1, static_cast<size_t>(length), file);
}

size_t ReadDeciphered(std::FILE* file, uint64_t offset, char* buffer, uint64_t length) {
  size_t got = ReadAt(file, offset, buffer, length);
  DecodeExplain(reinterpret_cast<unsigned char*>(buffer), static_cast<int>(got), static_cast<uint32_t>(offset));
  buffer[got] = '\0';
  return got;
}

}  // namespace tq::dict
