// tqcomm: the suite's engine from the command line. Every subcommand uses
// the library only through its exported functions, as a front end would.
#include <iconv.h>
#include <langinfo.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "commands.h"
#include "option_names.h"

namespace tqcomm {

// Converts text between the terminal's UTF-8 and GBK; a byte that does not
// convert becomes "?".
static std::string Convert(const std::string& text, const char* to, const char* from) {
  static const bool utf8 = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
  if (!utf8) return text;
  iconv_t cd = iconv_open(to, from);
  if (cd == reinterpret_cast<iconv_t>(-1)) return text;
  std::string in = text;
  std::string out(in.size() * 2 + 8, '\0');
  char* src = in.data();
  size_t left = in.size();
  char* dst = out.data();
  size_t room = out.size();
  while (left > 0) {
    if (iconv(cd, &src, &left, &dst, &room) == static_cast<size_t>(-1)) {
      if (room < 2) break;
      *dst++ = '?';  // a byte that does not convert
      --room;
      ++src;
      --left;
    }
  }
  iconv_close(cd);
  out.resize(out.size() - room);
  return out;
}

std::string ForTerminal(const std::string& gbk) { return Convert(gbk, "UTF-8//TRANSLIT", "GBK"); }

std::string FromTerminal(const std::string& text) { return Convert(text, "GBK", "UTF-8"); }

static void MakeDirs(const std::string& path) {
  for (size_t i = 1; i <= path.size(); ++i) {
    if (i == path.size() || path[i] == '/') mkdir(path.substr(0, i).c_str(), 0755);
  }
}

std::string DataDir() {
  std::string dir;
  const char* xdg = std::getenv("XDG_DATA_HOME");
  if (xdg != nullptr && *xdg != '\0') {
    dir = std::string(xdg) + "/tqcomm";
  } else {
    const char* home = std::getenv("HOME");
    dir = std::string(home ? home : ".") + "/.local/share/tqcomm";
  }
  MakeDirs(dir);
  return dir;
}

// The folder of the bundled data (sample/, html/, quiz/ and whatever else
// the source tree's data/ holds): $TQCOMM_DATA when set, else the installed
// copy beside the tool (share/tqcomm), else the source tree's data/ for a
// tool run from its build tree.
std::string DataRoot() {
  const char* env = std::getenv("TQCOMM_DATA");
  if (env != nullptr && *env != '\0') return env;
  char exe[4096];
  ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
  if (n > 0) {
    exe[n] = '\0';
    std::string path(exe);
    std::string dir = path.substr(0, path.rfind('/')) + "/" + TQCOMM_DATA_FROM_BIN;
    char real[4096];
    struct stat st;
    if (realpath(dir.c_str(), real) != nullptr && stat(real, &st) == 0 && S_ISDIR(st.st_mode)) return real;
  }
  return TQCOMM_SOURCE_DATA;
}

std::string BundledData(const std::string& name) { return DataRoot() + "/" + name; }

std::string SampleDir() {
  const char* env = std::getenv("TQCOMM_SAMPLES");
  if (env != nullptr && *env != '\0') return env;
  return BundledData("sample");
}

// Options are taken against the running command's help: with
// TQCOMM_CHECK_HELP set, an option the help does not name stops the tool.
namespace {

const char* g_command = nullptr;
bool g_checking = false;
std::string g_help;

void CheckNamed(const std::string& option) {
  if (!g_checking || NamesOption(g_help, option)) return;
  std::fprintf(stderr, "tqcomm %s: takes %s, but its --help does not name it\n", g_command, option.c_str());
  std::exit(kHelpMismatch);
}

}  // namespace

bool TakeOption(Args* args, const std::string& name, std::string* value) {
  CheckNamed(name);
  for (size_t i = 0; i < args->size(); ++i) {
    if ((*args)[i] == name && i + 1 < args->size()) {
      *value = (*args)[i + 1];
      args->erase(args->begin() + static_cast<std::ptrdiff_t>(i), args->begin() + static_cast<std::ptrdiff_t>(i) + 2);
      return true;
    }
  }
  return false;
}

bool TakeFlag(Args* args, const std::string& name) {
  CheckNamed(name);
  for (size_t i = 0; i < args->size(); ++i) {
    if ((*args)[i] == name) {
      args->erase(args->begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
  }
  return false;
}

}  // namespace tqcomm

namespace {

struct Command {
  const char* name;
  int (*run)(const tqcomm::Args&);
  const char* usage;
};

const Command kCommands[] = {
    {"book", tqcomm::BookCommand,
     "book import FILE [--layout auto|alternate|one-line] | list | sample   [--book BOOK.idx]"},
    {"learn", tqcomm::LearnCommand,
     "learn [--book BOOK.idx] [--history H.his] [--list L.llr] [--date YYYY-MM-DD] [--curve A,B,...] [--new N]"},
    // (learn)
    {"stats", tqcomm::StatsCommand,
     "stats [--book BOOK.idx] [--history H.his] [--date YYYY-MM-DD] [--curve ...] [--days N] [--png OUT.png]"},

    // (dict, lookup)
    {"dict", tqcomm::DictCommand,
     "dict build SOURCE -o DIR [--cedict PATH] [--freq PATH]   (SOURCE: a tab-separated .txt, or WordNet's dict folder)"},
    {"lookup", tqcomm::LookupCommand,
     "lookup WORD [--dict DIR] | lookup --wild PATTERN [--dict DIR] | lookup --list FILE [--dict DIR]"},

    // (page)
    {"page", tqcomm::PageCommand, "page WORD [-o DIR] [--dict DIR]"},

    // (notebook)
    {"notebook", tqcomm::NotebookCommand,
     "notebook add WORD [--pron P] [--mean M] [--dict DIR] | list | remove WORD... | show --png OUT.png"},
    // (quiz)
    {"quiz", tqcomm::QuizCommand, "quiz build|page|print|import ...   (tqcomm quiz --help)"},
    // (feed, startup)
    {"feed", tqcomm::FeedCommand, "feed count [--partner 2] [--file PATH] | feed seen N [--partner 2]"},
    {"startup", tqcomm::StartupCommand, "startup add NAME COMMAND | remove NAME | list NAME... | check NAME COMMAND"},
    // (sound)
    {"mp3", tqcomm::Mp3Command, "mp3 decode IN.mp3 OUT.wav | mp3 encode IN.wav OUT.mp3 [--bitrate K]"},
    {"wave", tqcomm::WaveCommand, "wave info FILE"},
    // (say, sndlib)
    {"say", tqcomm::SayCommand,
     "say TEXT [-o BASE] [--kind 0..3] [--lib INDEX ROOT]... [--user DIR] [--wave] [--play]"},
    {"sndlib", tqcomm::SndlibCommand, "sndlib build LIST -o DIR [--sentences] [--bitrate K]"},
    // (draw)
    {"draw", tqcomm::DrawCommand, "draw --width W [--line-height H] TEXT -o OUT.png"},
    // (lesson)
    {"lesson", tqcomm::LessonCommand,
     "lesson [--book BOOK.idx | LIST.txt] [--dict DIR] [--pattern A1B1C1S2] [--words N] [--pause-sentences MS] "
     "[--chinese] -o OUT.mp3"},
    // (digest)
    {"digest", tqcomm::DigestCommand,
     "digest IN.wav|IN.mp3 [--block MS] [--width W] [--height H] [--digest FILE] -o OUT.png"},

};

const Command* Find(const char* name) {
  for (const Command& c : kCommands) {
    if (std::strcmp(name, c.name) == 0) return &c;
  }
  return nullptr;
}

// The tool's own help: how to call it, then a usage line per command. The
// shell completion reads the command names from the lines "  tqcomm NAME".
void Help(std::FILE* to) {
  std::fprintf(to,
               "usage: tqcomm COMMAND [ARGUMENTS...]\n"
               "       tqcomm help COMMAND    (or tqcomm COMMAND --help)\n"
               "       tqcomm --version\n"
               "\n"
               "commands:\n");
  for (const Command& c : kCommands) std::fprintf(to, "  tqcomm %s\n", c.usage);
  std::fprintf(to,
               "\n"
               "Exit status: 0 done, 1 failure, 2 bad usage. Words, books and dictionaries\n"
               "live in $XDG_DATA_HOME/tqcomm (else ~/.local/share/tqcomm). See tqcomm(1).\n");
}

int Version() {
  std::printf("tqcomm (tqcomm2006) %s\nbundled data: %s\n", TQCOMM_VERSION, tqcomm::DataRoot().c_str());
  return 0;
}

int BadUsage(const std::string& why) {
  std::fprintf(stderr, "tqcomm: %s\n", why.c_str());
  Help(stderr);
  return 2;
}

// The command's help, as "tqcomm NAME --help" prints it.
int CommandHelp(const Command& c) { return c.run(tqcomm::Args{"--help"}); }

// What the command's --help prints, read back for the option check.
bool CaptureHelp(const Command& c, std::string* text) {
  std::fflush(stdout);
  std::FILE* file = std::tmpfile();
  if (file == nullptr) return false;
  int saved = dup(STDOUT_FILENO);
  if (saved < 0 || dup2(fileno(file), STDOUT_FILENO) < 0) {
    if (saved >= 0) close(saved);
    std::fclose(file);
    return false;
  }
  int status = CommandHelp(c);
  std::fflush(stdout);
  dup2(saved, STDOUT_FILENO);
  close(saved);
  std::rewind(file);
  char buf[4096];
  for (size_t n; (n = std::fread(buf, 1, sizeof buf, file)) > 0;) text->append(buf, n);
  std::fclose(file);
  return status == 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  if (argc < 2) return BadUsage("which command?");
  const std::string first = argv[1];
  if (first == "--version") return Version();
  if (first == "--help" || first == "-h") return Help(stdout), 0;
  if (first == "help") {
    if (argc == 2) return Help(stdout), 0;
    if (argc > 3) return BadUsage("help takes one command name");
    const Command* c = Find(argv[2]);
    return c != nullptr ? CommandHelp(*c) : BadUsage(std::string("there is no command ") + argv[2]);
  }
  const Command* c = Find(argv[1]);
  if (c == nullptr) return BadUsage("there is no command " + first);
  tqcomm::Args args(argv + 2, argv + argc);
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") return CommandHelp(*c);
  }
  tqcomm::g_command = c->name;
  const char* check = std::getenv("TQCOMM_CHECK_HELP");
  if (check != nullptr && *check != '\0') {
    if (!CaptureHelp(*c, &tqcomm::g_help)) {
      std::fprintf(stderr, "tqcomm %s: --help fails\n", c->name);
      return tqcomm::kHelpMismatch;
    }
    tqcomm::g_checking = true;
  }
  return c->run(args);
}
