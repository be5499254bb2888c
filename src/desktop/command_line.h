// Command lines as the front ends write them for WinExec, run on this system.
//
// A command line is split into words as a shell would, with two differences
// that Windows command lines need: a backslash is a path separator, never an
// escape, and a program path with blanks may stand unquoted
// ("C:\Program Files\x\y.exe arg"): as on the front ends' platform, when
// the first word alone names no program, the first words taken together do,
// the shortest run that names one winning. Blanks and tabs divide words;
// '...' and "..." keep what they enclose together, quotes removed. Words
// that are Windows paths (a backslash, or a drive letter and separator in
// front) are mapped as every path is; the rest (options such as "/Q:A",
// addresses) stay as written. A program named without an extension is also
// looked for with ".exe", as the front ends' platform adds it.
#pragma once

#include <string>
#include <vector>

namespace tq::desktop {

// The words of a command line, quotes removed, nothing mapped.
std::vector<std::string> SplitWords(const std::string& line);
// A word in native form when it is a Windows path, else as it stands.
std::string MapWord(const std::string& word);

struct Command {
  std::string program;  // native path of a program that can be started, or ""
  std::string named;    // the program as the line names it, mapped
  std::vector<std::string> arguments;  // mapped
};
// Finds the program and its arguments in a command line.
Command ParseCommandLine(const std::string& line);

// Starts the command line's program as a detached process; WinExec's
// answer: above 31 when it runs, 2 when the program is not there. The show
// mode of the front ends' windows has no meaning here.
int WinExec(const char* line);

}  // namespace tq::desktop
