// Shortcuts as this desktop keeps them: freedesktop ".desktop" files
// (the freedesktop Desktop Entry format, version 1.5), written where the front ends' platform
// would put its shortcut, under the name the caller gives, extension and
// all: a shortcut that the desktop should show needs a name that ends in
// ".desktop". The entry is UTF-8, as the format requires; the GBK names and
// paths are converted on the way out.
#pragma once

#include <string>

namespace tq::desktop {

struct Shortcut {
  std::string target;         // the program, a front-end path
  std::string arguments;      // a command line's arguments, split as WinExec splits them
  std::string workingFolder;  // a front-end path, or ""
  std::string description;
  int hotKey = 0;             // a virtual-key byte, taken with Ctrl and Alt
};

// The hot key as the entry keeps it ("Ctrl+Alt+F5"), or "" for none.
std::string HotKeyName(int keyByte);
// The text of the entry for a link of this name (its file name without the
// extension becomes the entry's Name).
std::string DesktopEntryText(const std::string& linkName, const Shortcut& shortcut);
// Writes the entry at linkPath (a front-end path): true when it is there.
bool WriteShortcut(const std::string& linkPath, const Shortcut& shortcut);

}  // namespace tq::desktop
