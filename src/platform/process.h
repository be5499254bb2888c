// Programs started by the library: the front ends' WinExec, on this system.
//
// A program is started as a detached process: a session of its own, its
// standard streams on /dev/null, nobody waiting for it, so that it outlives
// the caller as a program started from the desktop would. The answers are
// those the front ends know from WinExec: above 31 when the program is
// running, else a small error number.
#pragma once

#include <string>
#include <vector>

namespace tq::platform {

// WinExec's answers.
enum StartResult : int {
  kStartOutOfResources = 0,
  kStartFileNotFound = 2,
  kStartPathNotFound = 3,
  kStartBadFormat = 11,
  kStarted = 33,
};

// The native path of a program that can be started: a path with a "/" must
// name an executable file (relative paths from the working directory); a
// bare name is looked for along $PATH. "" when there is none.
std::string FindProgram(const std::string& native);

// Starts program (a native path from FindProgram) with the arguments behind
// it; the program's own name goes first, as argv[0]. One of the answers above.
int StartDetached(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace tq::platform
