// The desktop services that stand on the host: the Windows, system and
// special folders, the companion program's window, the CD drives, the
// cursor and the system's version (platform/system.h, devices.h, host.h).
#pragma once

#include <string>

namespace tq::desktop {

// The feeds' and the installers' files, in the Windows folder.
std::string InWindowsFolder(const std::string& name);

// Shortcuts and menu items: paths made of a special folder, a backslash
// and the caller's names as they stand.
int AddDesktopShortcut(const char* target, const char* arguments, const char* linkName, const char* workingFolder,
                       int hotKey);
// Deletes special folder + "\" + relative: 1, or 0 (also when the host
// keeps no such folder).
int DeleteInSpecialFolder(int csidl, const std::string& relative);
// Shows the name in a message box with an empty title, then deletes it
// from the start menu.
int DeleteStartMenuItem(const char* name);

// Where wordpad stands for a system of this family: the Windows folder's
// drive root ("c:\" of "c:\windows"; "/" for a folder of this file system,
// which is drive C:) and the family's accessories folder.
std::string WordpadPath(const std::string& windowsFolder, int family);
// Runs wordpad on the file, or says in a message box that it is not there.
void DisplayInWordpad(const char* path);
// Starts the speech installers that the Windows folder lacks: 0 when the
// voice is there, else 1.
int MakeSureSpeechComponents();

// The companion program's window title.
extern const char kCompanionTitle[];
// Asks a running companion (message 3369; 804 or more means it is well) or
// closes it, refreshes the program from its "bak" copy, starts it.
int StartCompanion(const char* path);

// The first CD drive, A to Z, where the file exists below the root: its
// letter (and "X:" in driveOut when given), or 0.
int FindCdWithFile(const char* file, char* driveOut);

// The system folder into buffer (100 bytes): its length, or the room needed.
int SystemDirectory(char* buffer);
int HostSystemFamily();
int HostMajorVersion();

}  // namespace tq::desktop
