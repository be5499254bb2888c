#include "desktop/command_line.h"

#include "platform/env.h"
#include "platform/process.h"

namespace tq::desktop {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// A word: where it starts and ends in the line, and its text.
struct Word {
  size_t begin = 0, end = 0;
  std::string text;
};

std::vector<Word> Words(const std::string& line) {
  std::vector<Word> words;
  size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && IsBlank(line[i])) ++i;
    if (i >= line.size()) break;
    Word w;
    w.begin = i;
    char quote = 0;
    for (; i < line.size(); ++i) {
      char c = line[i];
      if (quote != 0) {
        if (c == quote) {
          quote = 0;
        } else {
          w.text += c;
        }
      } else if (c == '"' || c == '\'') {
        quote = c;
      } else if (IsBlank(c)) {
        break;
      } else {
        w.text += c;
      }
    }
    w.end = i;
    words.push_back(std::move(w));
  }
  return words;
}

bool HasExtension(const std::string& path) {
  size_t dot = path.rfind('.');
  size_t slash = path.find_last_of("/\\");
  return dot != std::string::npos && (slash == std::string::npos || dot > slash);
}

// The program a name stands for, with ".exe" tried behind a bare name.
std::string Resolve(const std::string& named) {
  std::string found = platform::FindProgram(named);
  if (found.empty() && !HasExtension(named)) found = platform::FindProgram(named + ".exe");
  return found;
}

}  // namespace

std::vector<std::string> SplitWords(const std::string& line) {
  std::vector<std::string> out;
  for (Word& w : Words(line)) out.push_back(std::move(w.text));
  return out;
}

std::string MapWord(const std::string& word) {
  bool drive = word.size() >= 3 && ((word[0] | 0x20) >= 'a' && (word[0] | 0x20) <= 'z') && word[1] == ':' &&
               (word[2] == '\\' || word[2] == '/');
  if (!drive && word.find('\\') == std::string::npos) return word;
  return env::NativePath(word.c_str());
}

Command ParseCommandLine(const std::string& line) {
  Command c;
  std::vector<Word> words = Words(line);
  if (words.empty()) return c;
  size_t first_argument = 1;
  c.named = MapWord(words[0].text);
  c.program = Resolve(c.named);
  // An unquoted program path with blanks: the first words together, taken
  // from the line as written.
  bool quoted = words[0].text.size() != words[0].end - words[0].begin;
  for (size_t last = 1; c.program.empty() && !quoted && last < words.size(); ++last) {
    std::string joined = line.substr(words[0].begin, words[last].end - words[0].begin);
    if (joined.find_first_of("\"'") != std::string::npos) break;
    std::string found = Resolve(MapWord(joined));
    if (!found.empty()) {
      c.program = found;
      c.named = MapWord(joined);
      first_argument = last + 1;
    }
  }
  for (size_t i = first_argument; i < words.size(); ++i) c.arguments.push_back(MapWord(words[i].text));
  return c;
}

int WinExec(const char* line) {
  if (line == nullptr) return platform::kStartFileNotFound;
  Command c = ParseCommandLine(line);
  if (c.program.empty()) {
    // A program in a folder that is not there is a path not found.
    size_t slash = c.named.rfind('/');
    if (slash != std::string::npos && slash > 0 && !env::IsDirectory(c.named.substr(0, slash).c_str())) {
      return platform::kStartPathNotFound;
    }
    return platform::kStartFileNotFound;
  }
  return platform::StartDetached(c.program, c.arguments);
}

}  // namespace tq::desktop
