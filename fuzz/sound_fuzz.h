// What the sound fuzz targets share: a scratch file per process, and a
// stand-in for the host, which the sound exports reach only for progress
// bars, sound devices and messages; none is used here.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tq::host {
intptr_t SendMessage(int, unsigned, intptr_t, intptr_t) { return 0; }
int WaveOutDeviceCount() { return 0; }
int PlaySoundFile(const char*, unsigned) { return 0; }
int DispatchOneMessage() { return 0; }
}  // namespace tq::host

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
