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

std::string SampleDir() {
  const char* env = std::getenv("TQCOMM_SAMPLES");
  if (env != nullptr && *env != '\0') return env;
  char exe[4096];
  ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
  if (n > 0) {
    exe[n] = '\0';
    std::string path(exe);
    // build/bin/tqcomm -> <source>/data/sample, when run from a build tree
    for (const char* rel : {"/../../data/sample", "/../share/tqcomm/sample"}) {
      std::string dir = path.substr(0, path.rfind('/')) + rel;
      struct stat st;
      if (stat(dir.c_str(), &st) == 0) return dir;
    }
  }
  return TQCOMM_SAMPLE_DIR;
}

bool TakeOption(Args* args, const std::string& name, std::string* value) {
  for (size_t i = 0; i < args->size(); ++i) {
    if ((*args)[i] == name && i + 1 < args->size()) {
      *value = (*args)[i + 1];
      args->erase(args->begin() + static_cast<std::ptrdiff_t>(i), args->begin() + static_cast<std::ptrdiff_t>(i) + 2);
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
     "book import FILE [--layout auto|alternate|one-line] [--book BOOK.idx] | book list [--book BOOK.idx]"},
    {"learn", tqcomm::LearnCommand,
     "learn [--book BOOK.idx] [--history H.his] [--date YYYY-MM-DD] [--curve 0,1,2,4,7,15,30] [--new N]"},
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
     "lesson [--book BOOK.idx | LIST.txt] [--dict DIR] [--pattern A1B1C1S2] [--words N] [--chinese] -o OUT.mp3"},
    // (digest)
    {"digest", tqcomm::DigestCommand,
     "digest IN.wav|IN.mp3 [--block MS] [--width W] [--height H] [--digest FILE] -o OUT.png"},

};

int Usage() {
  std::fprintf(stderr, "usage: tqcomm COMMAND ...\n");
  for (const Command& c : kCommands) std::fprintf(stderr, "  tqcomm %s\n", c.usage);
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  if (argc < 2) return Usage();
  tqcomm::Args args(argv + 2, argv + argc);
  for (const Command& c : kCommands) {
    if (std::strcmp(argv[1], c.name) == 0) return c.run(args);
  }
  return Usage();
}
