// The subcommands of tqcomm. Each lives in a file of its own and registers
// itself in the kCommands table of main.cpp: {"name", NameCommand, "name
// USAGE"}, the last a one-line usage that "tqcomm --help" lists.
//
// Every command follows the same few rules, which the tests check:
// - Help. NameCommand answers the arguments {"--help"} by printing its help
//   to standard output and returning 0, before it reads or writes anything.
//   main hands it exactly that for "tqcomm name --help", "tqcomm name ... -h"
//   and "tqcomm help name". The help opens with its usage lines ("usage:
//   tqcomm name ..."), says what the command does, and names every option
//   the command takes, spelled as typed ("--book BOOK.idx", "-o DIR").
// - Options. Take them only through TakeOption and TakeFlag below (or
//   helpers built on them). With TQCOMM_CHECK_HELP set, as the test suite
//   sets it, they stop the tool with exit status 70 when the running
//   command's help does not name the option; tests/tool_help_test.cpp also
//   holds every option spelled in these sources against the helps.
// - Exit status: 0 done, 1 failure, 2 bad usage (with the usage lines, or
//   what was wrong, on standard error).
// - The man page docs/tqcomm.1 has a section ".SS name" naming the command's
//   options. The bash completion (tqcomm.bash-completion) needs nothing: it
//   reads the commands and their options from the tool's own help.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tqcomm {

using Args = std::vector<std::string>;

int BookCommand(const Args& args);
// Brings a word list into a new word book at idx; 0, or 1 with a message.
int ImportWordList(const std::string& file, const std::string& idx);
// Prints every word of a book; 0, or 1 with a message.
int ListBook(const std::string& idx);
// The history file that the tool keeps beside a book (learn's default).
std::string BookHistoryPath(const std::string& idx);
// The English words of a word list in either layout, as book import reads
// them; false when the file will not open.
bool ReadListWords(const std::string& file, std::vector<std::string>* words);
// The same with each word's Chinese meaning (GBK; empty where it has none).
bool ReadListEntries(const std::string& file, std::vector<std::pair<std::string, std::string>>* entries);
int LearnCommand(const Args& args);
// (learn)
int StatsCommand(const Args& args);

// (dict, lookup)
int DictCommand(const Args& args);
int LookupCommand(const Args& args);

// (page)
int PageCommand(const Args& args);

// (notebook)
int NotebookCommand(const Args& args);
// (quiz)
int QuizCommand(const Args& args);
// (feed, startup)
int FeedCommand(const Args& args);
int StartupCommand(const Args& args);
// (sound)
int Mp3Command(const Args& args);
int WaveCommand(const Args& args);
// (say, sndlib)
int SayCommand(const Args& args);
int SndlibCommand(const Args& args);
// (draw)
int DrawCommand(const Args& args);
// (lesson)
int LessonCommand(const Args& args);
// (digest)
int DigestCommand(const Args& args);


// GBK text from the library, shown on a terminal that may speak UTF-8.
std::string ForTerminal(const std::string& gbk);
// Text typed on such a terminal, as GBK for the library.
std::string FromTerminal(const std::string& text);
// The user's data folder: $XDG_DATA_HOME/tqcomm, else ~/.local/share/tqcomm;
// made when missing.
std::string DataDir();
// The folder of bundled data: the installed share/tqcomm, or the source
// tree's data/ for a tool in its build tree.
std::string DataRoot();
// One folder or file of the bundled data ("html", "quiz/grammar.txt").
std::string BundledData(const std::string& name);
// The folder of the bundled sample word list and dictionary source.
std::string SampleDir();
// Takes "--name value" out of args; false when absent.
bool TakeOption(Args* args, const std::string& name, std::string* value);
// Takes a switch "--name" out of args; false when absent.
bool TakeFlag(Args* args, const std::string& name);
// The exit status of a command that takes an option its help does not name
// (only with TQCOMM_CHECK_HELP set) or whose --help fails.
constexpr int kHelpMismatch = 70;

}  // namespace tqcomm
