// What the fuzz targets share: a scratch folder of the process, whole files
// in and out, and the check that stops a run.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzzutil {

inline void Check(bool ok) {
  if (!ok) std::abort();
}

inline void WriteAll(const std::string& path, const uint8_t* data, size_t n) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  Check(f != nullptr);
  if (n > 0) std::fwrite(data, 1, n, f);
  std::fclose(f);
}

inline std::string ReadAll(const std::string& path) {
  std::string out;
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) return out;
  char buf[4096];
  size_t got;
  while ((got = std::fread(buf, 1, sizeof buf, f)) > 0) out.append(buf, got);
  std::fclose(f);
  return out;
}

// Made on first use, removed at exit; a path in it.
inline std::string Scratch(const std::string& name) {
  static const std::string dir = [] {
    std::string d = "/tmp/tq_fuzz." + std::to_string(getpid());
    Check(std::system(("mkdir -p " + d).c_str()) == 0);
    std::atexit([] {
      if (std::system(("rm -rf /tmp/tq_fuzz." + std::to_string(getpid())).c_str()) != 0) {
        // a leftover scratch folder is harmless
      }
    });
    return d;
  }();
  return dir + "/" + name;
}

// Runs work with the scratch folder as the working directory, where
// deletion puts its temporary file; libFuzzer's own paths are relative to
// the folder it was started in.
template <class F>
void InScratch(F work) {
  char here[4096];
  Check(getcwd(here, sizeof here) != nullptr);
  Check(chdir(Scratch("").c_str()) == 0);
  work();
  Check(chdir(here) == 0);
}

// Every text field of a record ends inside the field.
inline bool FieldEnds(const std::string& bytes, size_t at, size_t size) {
  return bytes.find('\0', at) < at + size;
}

}  // namespace fuzzutil
