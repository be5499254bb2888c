#include "desktop/host_services.h"

#include <cstring>

#include "core/files.h"
#include "desktop/command_line.h"
#include "desktop/file_services.h"
#include "desktop/shell.h"
#include "desktop/shortcut.h"
#include "platform/devices.h"
#include "platform/host.h"
#include "platform/system.h"

namespace tq::desktop {

const char kCompanionTitle[] = "\xc4\xab\xc1\xeb\xbe\xab\xc1\xe9\xb3\xcc\xd0\xf2";

namespace {

const char kNoWordpad[] =
    "\xd5\xd2\xb2\xbb\xb5\xbd"
    "wordpad.exe\xa1\xa3\xc7\xeb\xc4\xfa\xd7\xd4\xbc\xba\xd3\xc3"
    "WORD\xbb\xf2\xd0\xb4\xd7\xd6\xb0\xe5\xb4\xf2\xbf\xaa\xce\xc4\xbc\xfe\xa1\xa3";

constexpr unsigned kCompanionQuery = 3369;
constexpr intptr_t kCompanionWell = 804;
constexpr int kSystemFolderBytes = 100;

std::string Text(const char* s) { return s != nullptr ? s : ""; }

}  // namespace

std::string InWindowsFolder(const std::string& name) { return JoinPath(host::WindowsFolder(), name); }

int AddDesktopShortcut(const char* target, const char* arguments, const char* linkName, const char* workingFolder,
                       int hotKey) {
  std::string desktop = host::SpecialFolder(host::kCsidlDesktop);
  if (desktop.empty() || target == nullptr || linkName == nullptr) return 0;
  Shortcut s;
  s.target = target;
  s.arguments = Text(arguments);
  s.workingFolder = Text(workingFolder);
  s.hotKey = hotKey;
  return WriteShortcut(desktop + "\\" + linkName, s) ? 1 : 0;
}

int DeleteInSpecialFolder(int csidl, const std::string& relative) {
  std::string folder = host::SpecialFolder(csidl);
  if (folder.empty()) return 0;
  return DeleteOneFile((folder + "\\" + relative).c_str(), false) ? 1 : 0;
}

int DeleteStartMenuItem(const char* name) {
  host::MessageBox(0, Text(name).c_str(), "", host::kMbOk);
  return DeleteInSpecialFolder(host::kCsidlStartMenu, Text(name));
}

std::string WordpadPath(const std::string& windowsFolder, int family) {
  bool drive = windowsFolder.size() >= 3 && windowsFolder[1] == ':';
  std::string root = drive ? windowsFolder.substr(0, 3) : "/";
  const char* accessories = (family == 2 || family == 4) ? "Program Files\\Accessories\\wordpad.exe"
                                                         : "Program Files\\Windows NT\\Accessories\\wordpad.exe";
  return root + accessories;
}

void DisplayInWordpad(const char* path) {
  std::string wordpad = WordpadPath(host::WindowsFolder(), HostSystemFamily());
  if (!FileExists(wordpad.c_str())) {
    host::MessageBox(0, kNoWordpad, "", host::kMbOk);
    return;
  }
  // Quoted, since both paths may hold blanks.
  WinExec(("\"" + wordpad + "\" \"" + Text(path) + "\"").c_str());
}

int MakeSureSpeechComponents() {
  if (!FileExists(InWindowsFolder("msagent\\chars\\genie.acs").c_str())) WinExec("tts\\genie.exe");
  if (FileExists(InWindowsFolder("lhsp\\tv\\tv_enua.dll").c_str())) return 0;
  WinExec("tts\\TV_ENUA /Q:A /R:I");
  return 1;
}

int StartCompanion(const char* path) {
  if (path == nullptr) return WinExec(nullptr);
  int window = host::FindWindowA(kCompanionTitle);
  if (window != 0) {
    intptr_t reply = host::SendMessage(window, kCompanionQuery, 0, 0);
    if (reply >= kCompanionWell) return static_cast<int>(reply);
    host::SendMessage(window, host::kClose, 0, 0);
  }
  CopyIfNewer((std::string(path) + "bak").c_str(), path);
  return WinExec(path);
}

int FindCdWithFile(const char* file, char* driveOut) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    if (host::GetDriveTypeA(letter) != host::kDriveCdRom) continue;
    std::string root = std::string(1, letter) + ":";
    if (!FileExists((root + "\\" + Text(file)).c_str())) continue;
    if (driveOut != nullptr) std::memcpy(driveOut, root.c_str(), root.size() + 1);
    return letter;
  }
  return 0;
}

int SystemDirectory(char* buffer) {
  std::string folder = host::SystemFolder();
  int length = static_cast<int>(folder.size());
  if (length >= kSystemFolderBytes) return length + 1;
  if (buffer != nullptr) std::memcpy(buffer, folder.c_str(), folder.size() + 1);
  return length;
}

int HostSystemFamily() {
  int platform = 0, major = 0, minor = 0;
  host::GetVersionExA(&platform, &major, &minor);
  return SystemFamily(platform, major, minor);
}

int HostMajorVersion() {
  int platform = 0, major = 0, minor = 0;
  host::GetVersionExA(&platform, &major, &minor);
  return major;
}

}  // namespace tq::desktop
