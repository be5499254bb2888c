// Bisection directly on a file of sorted fixed-size records, the word in
// front of each record. Nothing of the file is kept: each step reads one
// record. Words compare byte by byte as unsigned values with the letters A
// to Z folded to lower case, which is the order every sorted file of the
// dictionaries is written in.
//
// The walk works on byte distances. It starts at the first record (not the
// middle), and steps by half of the records still open on the side the key
// lies, so it reaches every record. The file position stays where the last
// read left it: the list-filling calls read their neighbours from there.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tq::dict {

// Compares a key with a record's word of at most n bytes (the byte behind
// them counts as the end), folding A to Z.
inline int CompareKeyWithField(const char* key, const unsigned char* word, int n) {
  for (int i = 0;; ++i) {
    unsigned char a = static_cast<unsigned char>(key[i]);
    unsigned char b = i < n ? word[i] : 0;
    if (a >= 'A' && a <= 'Z') a = static_cast<unsigned char>(a - 'A' + 'a');
    if (b >= 'A' && b <= 'Z') b = static_cast<unsigned char>(b - 'A' + 'a');
    if (a != b || a == 0) return static_cast<int>(a) - static_cast<int>(b);
  }
}

// Where the records come from: a file read through stdio...
class FileRecords {
 public:
  explicit FileRecords(std::FILE* file) : file_(file) {}
  long Length() const;
  // The record at offset, or null when it cannot be read whole.
  const unsigned char* Read(long offset, int recordSize);

 private:
  std::FILE* file_;
  unsigned char buffer_[256];
};

// ...or a mapped view of the same file. It keeps the position a stdio read
// would have left, for the owner to settle on the file when it next reads
// from it.
class MappedRecords {
 public:
  MappedRecords(const unsigned char* data, size_t size) : data_(data), size_(size) {}
  long Length() const { return static_cast<long>(size_); }
  const unsigned char* Read(long offset, int recordSize) {
    if (offset < 0 || static_cast<size_t>(offset) >= size_) return nullptr;
    size_t left = size_ - static_cast<size_t>(offset);
    position_ = offset + static_cast<long>(left < static_cast<size_t>(recordSize) ? left : recordSize);
    return left < static_cast<size_t>(recordSize) ? nullptr : data_ + offset;
  }
  long position() const { return position_; }

 private:
  const unsigned char* data_;
  size_t size_;
  long position_ = -1;
};

// The result of one walk: the hit, or the last record that was read.
struct Bisection {
  bool found = false;
  long offset = -1;     // the hit
  long lastRead = -1;   // the record read last; -1 when not even one could be
};

template <class Records>
Bisection Bisect(Records& records, const char* key, int recordSize, int wordFieldSize) {
  Bisection result;
  if (recordSize <= 0 || wordFieldSize <= 0 || wordFieldSize > recordSize) return result;
  long before = 0;
  long after = records.Length();
  long current = 0;
  for (;;) {
    const unsigned char* record = records.Read(current, recordSize);
    if (record == nullptr) return result;  // an empty or cut-short index: absent
    result.lastRead = current;
    int cmp = CompareKeyWithField(key, record, wordFieldSize - 1);
    if (cmp == 0) {
      result.found = true;
      result.offset = current;
      return result;
    }
    long step;
    if (cmp > 0) {
      step = after / recordSize / 2 * recordSize;
      current += step;
      before = step;
      after -= step;
    } else {
      step = before / recordSize / 2 * recordSize;
      current -= step;
      after = step;
      before -= step;
    }
    if (step < 1) return result;
  }
}

// Cuts a key to at most `keep` bytes into buffer (room for 256) when it is
// longer than `limit`; answers the key to search with.
inline const char* CutKey(const char* key, size_t limit, size_t keep, char* buffer) {
  size_t n = std::strlen(key);
  if (n <= limit) return key;
  if (keep > 255) keep = 255;
  std::memcpy(buffer, key, keep);
  buffer[keep] = '\0';
  return buffer;
}

// The offset of the record holding key, or -1.
template <class Records>
long SearchExact(Records& records, const char* key, int recordSize, int wordFieldSize) {
  char cut[256];
  key = CutKey(key, static_cast<size_t>(wordFieldSize), static_cast<size_t>(wordFieldSize - 1), cut);
  Bisection b = Bisect(records, key, recordSize, wordFieldSize);
  return b.found ? b.offset : -1;
}

// The hit, or the record that follows the last one read (that one itself
// at the end of the file), whichever side of it the key lay. -1 only when
// the file does not hold one whole record.
template <class Records>
long SearchClosest(Records& records, int32_t* found, const char* key, int recordSize, int wordFieldSize) {
  char cut[256];
  // The closest form cuts by the record size, not the word field.
  key = CutKey(key, static_cast<size_t>(recordSize), static_cast<size_t>(recordSize - 1), cut);
  Bisection b = Bisect(records, key, recordSize, wordFieldSize);
  if (found != nullptr) *found = b.found ? 1 : 0;
  if (b.found) return b.offset;
  if (b.lastRead < 0) return -1;
  return b.lastRead + recordSize < records.Length() ? b.lastRead + recordSize : b.lastRead;
}

// The shared helpers on an open file.
long SearchIdxExact(std::FILE* file, const char* key, int recordSize, int wordFieldSize);
long SearchIdxClosest(int32_t* found, std::FILE* file, const char* key, int recordSize, int wordFieldSize);

// Reads length bytes at offset (nothing when the offset lies beyond what a
// file position can reach); answers the bytes read.
size_t ReadAt(std::FILE* file, uint64_t offset, void* buffer, uint64_t length);
// The bytes at offset, deciphered by their absolute offset, NUL-terminated
// (buffer needs length + 1); answers the bytes read.
size_t ReadDeciphered(std::FILE* file, uint64_t offset, char* buffer, uint64_t length);

}  // namespace tq::dict
