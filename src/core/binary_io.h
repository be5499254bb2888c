// Little-endian integers in files, whatever the machine's byte order.
#pragma once

#include <cstdint>
#include <cstdio>

namespace tq {

inline bool ReadI32(std::FILE* f, int32_t* value) {
  unsigned char b[4];
  if (std::fread(b, 1, 4, f) != 4) return false;
  *value = static_cast<int32_t>(static_cast<uint32_t>(b[0]) | static_cast<uint32_t>(b[1]) << 8 |
                                static_cast<uint32_t>(b[2]) << 16 | static_cast<uint32_t>(b[3]) << 24);
  return true;
}

inline bool WriteI32(std::FILE* f, int32_t value) {
  uint32_t v = static_cast<uint32_t>(value);
  unsigned char b[4] = {static_cast<unsigned char>(v), static_cast<unsigned char>(v >> 8),
                        static_cast<unsigned char>(v >> 16), static_cast<unsigned char>(v >> 24)};
  return std::fwrite(b, 1, 4, f) == 4;
}

inline int32_t GetI32(const unsigned char* p) {
  return static_cast<int32_t>(static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
                              static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24);
}

inline void PutI32(unsigned char* p, int32_t value) {
  uint32_t v = static_cast<uint32_t>(value);
  p[0] = static_cast<unsigned char>(v);
  p[1] = static_cast<unsigned char>(v >> 8);
  p[2] = static_cast<unsigned char>(v >> 16);
  p[3] = static_cast<unsigned char>(v >> 24);
}

// Length of an open file in bytes, keeping its position; -1 on failure.
inline long FileLength(std::FILE* f) {
  long here = std::ftell(f);
  if (here < 0 || std::fseek(f, 0, SEEK_END) != 0) return -1;
  long end = std::ftell(f);
  std::fseek(f, here, SEEK_SET);
  return end;
}

}  // namespace tq
