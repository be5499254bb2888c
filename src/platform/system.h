// Where Windows would keep its own folders, and which Windows it is.
//
// On Linux the Windows folder is $TQCOMM_WINDOWS, else
// $XDG_DATA_HOME/tqcomm/windows (else ~/.local/share/tqcomm/windows); the
// system folder is its "system32". The desktop is $XDG_DESKTOP_DIR, else
// ~/Desktop; the programs folder and the start menu are
// $XDG_DATA_HOME/applications. Each folder is made when first asked for.
// Paths come back as native absolute paths without a trailing separator.
#pragma once

#include <string>

namespace tq::host {

// SHGetSpecialFolderLocation numbers.
enum : int { kCsidlDesktop = 0, kCsidlPrograms = 2, kCsidlStartMenu = 11 };

std::string WindowsFolder();
std::string SystemFolder();
// A special folder by number; "" for a number not kept here.
std::string SpecialFolder(int csidl);

// What GetVersionExA reports: platform id (2 the NT family), major, minor.
// 2, 5, 1 (Windows XP) unless the host was told otherwise.
void GetVersionExA(int* platform, int* major, int* minor);
void SetVersion(int platform, int major, int minor);

}  // namespace tq::host
