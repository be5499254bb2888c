// Helpers for the desktop tests: file modes and times, folders, and small
// programs that note how they were started.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "test_util.h"

namespace tqtest {

inline bool Exists(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0;
}

inline bool OwnerMayWrite(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && (st.st_mode & S_IWUSR) != 0;
}

inline void SetWriteTime(const std::string& path, time_t seconds) {
  struct timespec t[2] = {{seconds, 0}, {seconds, 0}};
  ::utimensat(AT_FDCWD, path.c_str(), t, 0);
}

inline void MakeFolder(const std::string& path) { ::mkdir(path.c_str(), 0755); }

// An executable script at path that writes its arguments, one a line, to
// out (whole, once it has them all).
inline void WriteArgumentRecorder(const std::string& path, const std::string& out) {
  WriteFile(path, "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '" + out + ".part'\n/bin/mv '" + out +
                      ".part' '" + out + "'\n");
  ::chmod(path.c_str(), 0755);
}

// The file's bytes once it is there, or "(none)" after the time is up.
inline std::string WaitForFile(const std::string& path, int milliseconds = 5000) {
  for (int waited = 0; waited < milliseconds; waited += 10) {
    if (Exists(path)) return ReadFile(path);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return "(none)";
}

}  // namespace tqtest
