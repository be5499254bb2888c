// Small pieces of reading a command line, shared by the subcommands that
// take flags and numbers (flags and options themselves through TakeFlag and
// TakeOption of commands.h, which hold them against the command's help).
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>

#include "commands.h"
#include "tqcomm2006.h"

namespace tqcomm {

inline bool WantsHelp(const Args& args) {
  return std::any_of(args.begin(), args.end(), [](const std::string& a) { return a == "--help" || a == "-h"; });
}

// A whole decimal number from low to high.
inline bool ParseInt(const std::string& text, long low, long high, int* value) {
  char* end = nullptr;
  const long v = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || v < low || v > high) return false;
  *value = static_cast<int>(v);
  return true;
}

inline bool IsFile(const std::string& path) { return vcIfFileExist(path.c_str()) == 1; }

}  // namespace tqcomm
