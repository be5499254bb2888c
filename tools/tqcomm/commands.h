// The subcommands of tqcomm. Each lives in a file of its own and registers
// itself in the table in main.cpp.
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
// The folder of bundled sample data.
std::string SampleDir();
// Takes "--name value" out of args; false when absent.
bool TakeOption(Args* args, const std::string& name, std::string* value);

}  // namespace tqcomm
