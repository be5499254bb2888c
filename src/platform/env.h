// The one door to the operating system for files and paths.
//
// Paths arrive in the front ends' form: backslashes as separators and an
// optional drive letter. Every open, copy, rename and removal goes through
// here so that the translation happens in one place, and so that tests can
// make an open fail on purpose.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

namespace tq::env {

// "c:\tmp\x.dat" -> "/tmp/x.dat"; "dir\a.txt" -> "dir/a.txt". A letter that
// is a CD drive (devices.h) stands for its folder: "e:\sndlib\x.dat" ->
// "/media/cdrom/sndlib/x.dat".
std::string NativePath(const char* path);

// fopen through the path translation. Null on failure.
std::FILE* Open(const char* path, const char* mode);

bool Exists(const char* path);
bool IsDirectory(const char* path);
// Length of a file in bytes, or -1 when it cannot be measured.
int64_t FileSize(const char* path);
// Copies a file over the target, byte for byte. False on any failure.
bool CopyFile(const char* from, const char* to);
bool Remove(const char* path);
bool Rename(const char* from, const char* to);

// Seconds since 1970, from the system clock.
int64_t NowSeconds();

// Tests only: every Open whose native path and mode the hook accepts fails.
// Pass an empty function to clear it.
void SetOpenFaultForTesting(std::function<bool(const std::string& path, const char* mode)> fail);

}  // namespace tq::env
