// The library's contact with the desktop: start-up entries, the navigation
// sound, the programs that open web addresses and mail, help files, the
// system's family and the small integer helpers of the front ends.
//
// Settings live in the registry store (core/registry.h) under the keys the
// front ends' platform uses, so that a front end finds them where it looks.
#pragma once

#include <cstdint>
#include <string>

namespace tq::desktop {

constexpr uint32_t kClassesRoot = 0x80000000u;
constexpr uint32_t kCurrentUser = 0x80000001u;
constexpr uint32_t kLocalMachine = 0x80000002u;

// Start-up entries, all under the local machine. The entries are set under
// the first spelling and removed under the second; the store matches keys
// without regard to case, so both name one key.
extern const char kRunKey[];
extern const char kRunKeyLower[];
extern const char kRunServicesKey[];
// The sound of the file browser's navigation, the key's unnamed value.
extern const char kNavigateSoundKey[];
extern const char kHttpCommandKey[];
extern const char kMailtoCommandKey[];

// The registry's answers: 0, or -1.
int SetStartup(const char* key, const char* name, const char* command);
int RemoveStartup(const char* key, const char* name);
// True when the entry holds command, compared without regard to case; an
// entry longer than 118 bytes (its zero byte counted) never matches.
bool IsStartup(const char* name, const char* command);
// Sets the entry unless it is there already: 0, or -1.
int MakeSureStartup(const char* name, const char* command);

int SetNavigateSound(const char* path);
// The old sound's path into buffer (200 bytes; "" when none is stored),
// then the empty text stored: 0, or -1.
int RemoveNavigateSound(char* buffer);

// The program of a shell command value: from its second byte (the first is
// dropped as an opening quote, whatever it is) up to the next double quote
// or the end.
std::string CommandProgram(const char* value);
// Runs the program of the shell command under key (classes root, unnamed
// value, read through 298 bytes) on the argument: 0, or -1 when the key or
// value is missing. What the program does is not waited for.
int RunShellCommand(const char* key, const std::string& argument);
// "mailto:" + address, and "?subject=" + subject when there is one.
std::string MailtoAddress(const char* address, const char* subject);

// Opens a help file with the machine's help viewer (xchm or kchmviewer,
// else xdg-open) as a detached process: 1, or 0 when the file or a viewer
// is missing or the viewer cannot start.
int OpenHelpFile(const char* path);

// The system's family from the version record's platform and version:
// 1 NT before 5, 2 the older family before 4.1 (or an unknown platform),
// 3 NT 5 and later, 4 the older family from 4.1, 5 NT 5.1 and x.1 later.
int SystemFamily(int platform, int major, int minor);

// 1 when every byte is a digit (the empty text too), else 0.
int IsAllDigit(const char* text);

}  // namespace tq::desktop
