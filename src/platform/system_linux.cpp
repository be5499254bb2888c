// The Windows, system and special folders on Linux, and the Windows version
// that the library is told it runs on.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>

#include "platform/system.h"

namespace tq::host {
namespace {

struct Version {
  int platform = 2, major = 5, minor = 1;  // Windows XP
};
std::mutex g_version_mutex;
Version g_version;

std::string Env(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string Home() {
  std::string home = Env("HOME");
  if (home.empty()) {
    if (const passwd* pw = getpwuid(getuid())) home = pw->pw_dir ? pw->pw_dir : "";
  }
  return home.empty() ? "/tmp" : home;
}

std::string DataHome() {
  std::string xdg = Env("XDG_DATA_HOME");
  return xdg.empty() ? Home() + "/.local/share" : xdg;
}

std::string Trimmed(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

// Makes the folder and those above it; answers the folder.
std::string Made(const std::string& path) {
  for (size_t i = 1; i <= path.size(); ++i) {
    if (i == path.size() || path[i] == '/') mkdir(path.substr(0, i).c_str(), 0755);
  }
  return path;
}

}  // namespace

std::string WindowsFolder() {
  std::string set = Env("TQCOMM_WINDOWS");
  return Made(Trimmed(set.empty() ? DataHome() + "/tqcomm/windows" : set));
}

std::string SystemFolder() { return Made(WindowsFolder() + "/system32"); }

std::string SpecialFolder(int csidl) {
  switch (csidl) {
    case kCsidlDesktop: {
      std::string desktop = Env("XDG_DESKTOP_DIR");
      return Made(Trimmed(desktop.empty() ? Home() + "/Desktop" : desktop));
    }
    case kCsidlPrograms:
    case kCsidlStartMenu:
      return Made(Trimmed(DataHome() + "/applications"));
    default:
      return "";
  }
}

void GetVersionExA(int* platform, int* major, int* minor) {
  Version v;
  {
    std::lock_guard<std::mutex> lock(g_version_mutex);
    v = g_version;
  }
  if (platform) *platform = v.platform;
  if (major) *major = v.major;
  if (minor) *minor = v.minor;
}

void SetVersion(int platform, int major, int minor) {
  std::lock_guard<std::mutex> lock(g_version_mutex);
  g_version = {platform, major, minor};
}

}  // namespace tq::host
