// What the sound fuzz targets share: a scratch file per process.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string Scratch(const char* name) {
  static const std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  return dir + "/tq_sound_fuzz." + std::to_string(::getpid()) + "." + name;
}

// Writes the input behind its first skip bytes to a scratch file.
bool WriteInput(const std::string& path, const uint8_t* data, size_t size, size_t skip) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return false;
  std::fwrite(data + skip, 1, size - skip, f);
  std::fclose(f);
  return true;
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace
