#include "desktop/shell.h"

#include <cstring>

#include "core/registry.h"
#include "core/text.h"
#include "desktop/command_line.h"
#include "platform/env.h"
#include "platform/process.h"

namespace tq::desktop {

const char kRunKey[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const char kRunKeyLower[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
const char kRunServicesKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices";
const char kNavigateSoundKey[] = "AppEvents\\Schemes\\Apps\\Explorer\\Navigating\\.Current";
const char kHttpCommandKey[] = "http\\shell\\open\\command";
const char kMailtoCommandKey[] = "mailto\\shell\\open\\command";

namespace {

constexpr int32_t kStartupValueBytes = 118;
constexpr int32_t kNavigateSoundBytes = 200;
constexpr int32_t kCommandValueBytes = 298;

}  // namespace

int SetStartup(const char* key, const char* name, const char* command) {
  return RegistryWriteString(kLocalMachine, key, name, command);
}

int RemoveStartup(const char* key, const char* name) { return RegistryDeleteValue(kLocalMachine, key, name); }

bool IsStartup(const char* name, const char* command) {
  char value[kStartupValueBytes + 1];
  int32_t size = kStartupValueBytes;
  if (command == nullptr || RegistryGetString(kLocalMachine, kRunKey, name, value, &size) != 0) return false;
  return FoldCompare(value, command) == 0;
}

int MakeSureStartup(const char* name, const char* command) {
  return IsStartup(name, command) ? 0 : SetStartup(kRunKey, name, command);
}

int SetNavigateSound(const char* path) { return RegistryWriteString(kCurrentUser, kNavigateSoundKey, nullptr, path); }

int RemoveNavigateSound(char* buffer) {
  char value[kNavigateSoundBytes + 1];
  int32_t size = kNavigateSoundBytes;
  if (RegistryGetString(kCurrentUser, kNavigateSoundKey, nullptr, value, &size) != 0) value[0] = '\0';
  if (buffer != nullptr) std::memcpy(buffer, value, std::strlen(value) + 1);
  return RegistryWriteString(kCurrentUser, kNavigateSoundKey, nullptr, "");
}

std::string CommandProgram(const char* value) {
  if (value == nullptr || value[0] == '\0') return std::string();
  std::string program(value + 1);
  return program.substr(0, program.find('"'));
}

int RunShellCommand(const char* key, const std::string& argument) {
  char value[kCommandValueBytes + 1];
  int32_t size = kCommandValueBytes;
  if (RegistryGetString(kClassesRoot, key, nullptr, value, &size) != 0) return -1;
  WinExec((CommandProgram(value) + " " + argument).c_str());
  return 0;
}

std::string MailtoAddress(const char* address, const char* subject) {
  std::string out = "mailto:" + std::string(address != nullptr ? address : "");
  if (subject != nullptr && subject[0] != '\0') out += "?subject=" + std::string(subject);
  return out;
}

int OpenHelpFile(const char* path) {
  if (path == nullptr || !env::Exists(path) || env::IsDirectory(path)) return 0;
  for (const char* viewer : {"xchm", "kchmviewer", "xdg-open"}) {
    std::string program = platform::FindProgram(viewer);
    if (program.empty()) continue;
    return platform::StartDetached(program, {env::NativePath(path)}) > 31 ? 1 : 0;
  }
  return 0;
}

int SystemFamily(int platform, int major, int minor) {
  if (platform == 1) return (major > 4 || (major == 4 && minor > 0)) ? 4 : 2;
  if (platform == 2) {
    if (major < 5) return 1;
    return minor == 1 ? 5 : 3;
  }
  return 2;
}

int IsAllDigit(const char* text) {
  if (text == nullptr) return 1;
  for (const char* p = text; *p != '\0'; ++p) {
    if (*p < '0' || *p > '9') return 0;
  }
  return 1;
}

}  // namespace tq::desktop
