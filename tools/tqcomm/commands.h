// The subcommands of tqcomm. Each lives in a file of its own and registers
// itself in the table in main.cpp.
#pragma once

#include <string>
#include <vector>

namespace tqcomm {

using Args = std::vector<std::string>;

int BookCommand(const Args& args);
// Brings a word list into a new word book at idx; 0, or 1 with a message.
int ImportWordList(const std::string& file, const std::string& idx);
int LearnCommand(const Args& args);
// (learn)
int StatsCommand(const Args& args);

// (dict, lookup)
int DictCommand(const Args& args);
int LookupCommand(const Args& args);

// (page)
int PageCommand(const Args& args);


// GBK text from the library, shown on a terminal that may speak UTF-8.
std::string ForTerminal(const std::string& gbk);
// The user's data folder: $XDG_DATA_HOME/tqcomm, else ~/.local/share/tqcomm;
// made when missing.
std::string DataDir();
// The folder of bundled sample data.
std::string SampleDir();
// Takes "--name value" out of args; false when absent.
bool TakeOption(Args* args, const std::string& name, std::string* value);

}  // namespace tqcomm
