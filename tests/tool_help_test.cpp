// tqcomm as a user meets it: every command of its table answers --help and
// names there every option it takes; the man page and the bash completion
// cover the whole table; --version, and the exit status of bad usage.
#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "option_names.h"
#include "test_util.h"

namespace {

using Options = std::set<std::string>;

struct Outcome {
  int status;
  std::string out, err;
};

class ToolHelp : public tqtest::TempDirTest {
 protected:
  // Runs the tool on a scratch data folder with no input.
  Outcome Tool(const std::string& args) {
    Outcome r;
    std::string env = "XDG_DATA_HOME='" + dir() + "' HOME='" + dir() + "' TQCOMM_WINDOWS='" + dir() +
                      "/windows' TQCOMM_REGISTRY='" + dir() + "/registry' ";
    r.status = tqtest::Run(env + TQCOMM_BIN + " " + args + " </dev/null 2>stderr.txt", &r.out);
    r.err = tqtest::ReadFile(Path("stderr.txt"));
    return r;
  }

  // The command table, as "tqcomm --help" lists it.
  std::vector<std::string> Commands() {
    std::vector<std::string> names;
    std::string out = Tool("--help").out;
    std::regex line("\n  tqcomm ([a-z0-9-]+)");
    for (std::sregex_iterator m(out.begin(), out.end(), line), end; m != end; ++m) names.push_back((*m)[1]);
    return names;
  }

  std::string HelpOf(const std::string& command) { return Tool(command + " --help").out; }

  // What a command's help names, without the help options themselves.
  Options HelpOptions(const std::string& command) {
    Options options = tqcomm::OptionsNamed(HelpOf(command));
    options.erase("--help");
    options.erase("-h");
    return options;
  }

  // The words the bash completion offers for a command line whose last
  // word is being typed.
  Options Complete(const std::vector<std::string>& words) {
    std::string script = "source '" + std::string(TQ_SOURCE_DIR) + "/tools/tqcomm/tqcomm.bash-completion'\n" +
                         "COMP_WORDS=('" + TQCOMM_BIN + "'";
    for (const std::string& w : words) script += " '" + w + "'";
    script += ")\nCOMP_CWORD=" + std::to_string(words.size()) + "\n_tqcomm\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
    tqtest::WriteFile(Path("complete.sh"), script);
    std::string out;
    EXPECT_EQ(tqtest::Run("bash complete.sh", &out), 0);
    Options got;
    for (size_t at = 0, nl; (nl = out.find('\n', at)) != std::string::npos; at = nl + 1) {
      if (nl > at) got.insert(out.substr(at, nl - at));
    }
    return got;
  }
};

std::string Join(const Options& options) {
  std::string out;
  for (const std::string& o : options) out += o + " ";
  return out;
}

// The tool's sources, one after the other.
std::string ToolSources() {
  std::string texts;
  tqtest::Run("cat '" + std::string(TQ_SOURCE_DIR) + "/tools/tqcomm/'*.cpp", &texts);
  return texts;
}

// The man page's ".SS" sections by name, with roff's escapes for hyphens
// and fonts taken out.
std::map<std::string, std::string> ManSections() {
  std::string page = tqtest::ReadFile(std::string(TQ_SOURCE_DIR) + "/docs/tqcomm.1");
  page = std::regex_replace(page, std::regex(R"(\\f[BIRP])"), "");
  page = std::regex_replace(page, std::regex(R"(\\-)"), "-");
  std::map<std::string, std::string> sections;
  std::string* current = nullptr;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(".SS ", 0) == 0) {
      current = &sections[line.substr(4)];
    } else if (line.rfind(".SH ", 0) == 0) {
      current = nullptr;
    } else if (current != nullptr) {
      *current += line + "\n";
    }
  }
  return sections;
}

TEST_F(ToolHelp, TheTableHasTheCommandsOfTheMainRoads) {
  std::vector<std::string> commands = Commands();
  for (const char* name : {"learn", "book", "dict", "lookup", "quiz", "mp3"}) {
    EXPECT_NE(std::find(commands.begin(), commands.end(), name), commands.end()) << name;
  }
}

TEST_F(ToolHelp, EveryCommandAnswersHelpAlikeThreeWays) {
  for (const std::string& c : Commands()) {
    Outcome help = Tool(c + " --help");
    EXPECT_EQ(help.status, 0) << c << ": " << help.err;
    EXPECT_EQ(help.out.rfind("usage: tqcomm " + c + " ", 0), 0u) << c << " --help opens with:\n" << help.out;
    EXPECT_EQ(help.err, "") << c;
    Outcome named = Tool("help " + c);
    EXPECT_EQ(named.status, 0) << c;
    EXPECT_EQ(named.out, help.out) << "tqcomm help " << c;
    Outcome short_form = Tool(c + " something -h");
    EXPECT_EQ(short_form.status, 0) << c;
    EXPECT_EQ(short_form.out, help.out) << c << " something -h";
  }
}

// Every option spelled as a string of its own in the tool's sources (what a
// parser takes or compares) is named by some help, and every option a help
// names is spelled so in the sources.
TEST_F(ToolHelp, TheHelpsAndTheParsersNameTheSameOptions) {
  Options in_sources;
  const std::regex quoted(R"re("(--?[a-z][a-z0-9-]*)")re"), comment("//[^\n]*");
  const std::string sources = ToolSources(), text = std::regex_replace(sources, comment, "");
  for (std::sregex_iterator m(text.begin(), text.end(), quoted), end; m != end; ++m) {
    if ((*m)[1] != "--help" && (*m)[1] != "-h") in_sources.insert((*m)[1]);
  }
  std::string helps = Tool("--help").out;
  for (const std::string& c : Commands()) helps += HelpOf(c) + "\n";
  for (const std::string& option : in_sources) {
    EXPECT_TRUE(tqcomm::NamesOption(helps, option)) << option << " is taken, but no command's help names it";
  }
  for (const std::string& c : Commands()) {
    for (const std::string& option : HelpOptions(c)) {
      EXPECT_NE(sources.find("\"" + option + "\""), std::string::npos)
          << c << " --help names " << option << ", which no parser takes";
    }
  }
  EXPECT_GT(in_sources.size(), 20u);
}

// The suite runs the tool with TQCOMM_CHECK_HELP set: a command that takes
// an option its help does not name stops with 70. Here each command runs
// with no arguments and with an unknown option, which walks its parser.
TEST_F(ToolHelp, EveryCommandParsesUnderTheHelpCheck) {
  for (const std::string& c : Commands()) {
    for (const std::string& args : {c, c + " --no-such-option"}) {
      Outcome r = Tool(args);
      EXPECT_TRUE(r.status == 0 || r.status == 1 || r.status == 2) << args << ": " << r.status << "\n" << r.err;
    }
  }
}

TEST(OptionNames, WholeWordsOnly) {
  struct Case {
    const char* text;
    const char* option;
    bool named;
  } cases[] = {
      {"[--list N]", "--list", true},        {"--list-all", "--list", false},
      {"--no-list", "--list", false},        {"--no-list", "--no-list", true},
      {"SOURCE -o DIR", "-o", true},         {"--o", "-o", false},
      {"-output", "-o", false},              {"-o", "-o", true},
      {"--fill: one a line", "--fill", true}, {"(--plain: no numbers", "--plain", true},
      {"", "--x", false},                    {"--x", "", false},
  };
  for (const Case& c : cases) EXPECT_EQ(tqcomm::NamesOption(c.text, c.option), c.named) << c.text << " / " << c.option;

  EXPECT_EQ(tqcomm::OptionsNamed("usage: tqcomm x [--book BOOK.idx] [-o DIR] --layout auto|one-line --encoding "
                                 "utf-8 MIN-MAX (FILE - reads) --x_y --Cap -2 --help\n  --new N"),
            (Options{"--book", "--encoding", "--help", "--layout", "--new", "-o"}));
}

TEST_F(ToolHelp, TheManPageRendersAndNamesWhatEachCommandTakes) {
  std::string out;
  ASSERT_EQ(tqtest::Run("LC_ALL=C MANWIDTH=80 man --warnings -l " + std::string(TQ_SOURCE_DIR) +
                            "/docs/tqcomm.1 2>warnings.txt",
                        &out),
            0);
  EXPECT_EQ(tqtest::ReadFile(Path("warnings.txt")), "");
  for (const char* heading : {"NAME", "SYNOPSIS", "COMMANDS", "EXIT STATUS", "ENVIRONMENT", "FILES"}) {
    EXPECT_NE(out.find("\n" + std::string(heading) + "\n"), std::string::npos) << heading;
  }
  std::map<std::string, std::string> sections = ManSections();
  for (const std::string& c : Commands()) {
    ASSERT_EQ(sections.count(c), 1u) << "the man page has no section .SS " << c;
    Options in_man = tqcomm::OptionsNamed(sections[c]);
    EXPECT_EQ(Join(in_man), Join(HelpOptions(c))) << "the options of " << c << " in the man page and in --help";
  }
  EXPECT_EQ(sections.size(), Commands().size()) << "a section of the man page for a command the tool lacks";
}

TEST_F(ToolHelp, CompletionOffersCommandsVerbsOptionsAndFiles) {
  std::vector<std::string> commands = Commands();
  Options first(commands.begin(), commands.end());
  EXPECT_EQ(Join(Complete({"help", ""})), Join(first));
  first.insert({"help", "--help", "--version"});
  EXPECT_EQ(Join(Complete({""})), Join(first));

  tqtest::WriteFile(Path("went.txt"), "went\n");
  struct Case {
    std::vector<std::string> words;
    Options offered;
  } cases[] = {
      {{"bo"}, {"book"}},
      {{"book", ""}, {"import", "list", "sample"}},
      {{"quiz", ""}, {"build", "import", "page", "print"}},
      {{"learn", "--c"}, {"--curve"}},
      {{"book", "import", "--layout", ""}, {"alternate", "auto", "one-line"}},
      {{"quiz", "import", "x.gift", "--encoding", ""}, {"gbk", "utf-8"}},
      {{"lookup", "--list", "we"}, {"went.txt"}},
      {{"learn", "--book", "we"}, {"went.txt"}},
  };
  for (const Case& c : cases) {
    std::string line;
    for (const std::string& w : c.words) line += w + " ";
    EXPECT_EQ(Join(Complete(c.words)), Join(c.offered)) << line;
  }
  // Each command's options, as its help names them.
  for (const std::string& c : commands) {
    Options want;
    for (const std::string& o : HelpOptions(c)) {
      if (o.rfind("--", 0) == 0) want.insert(o);
    }
    want.insert("--help");
    EXPECT_EQ(Join(Complete({c, "--"})), Join(want)) << c;
  }
}

TEST_F(ToolHelp, VersionHelpAndBadUsage) {
  Outcome version = Tool("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.substr(0, version.out.find('\n')), "tqcomm (tqcomm2006) " TQ_VERSION);
  EXPECT_NE(version.out.find("\nbundled data: " + std::string(TQ_SOURCE_DIR) + "/data\n"), std::string::npos)
      << version.out;

  struct Case {
    const char* args;
    int status;
    const char* err;  // a part of standard error
  } cases[] = {
      {"", 2, "usage: tqcomm COMMAND"},
      {"nosuch", 2, "there is no command nosuch"},
      {"help nosuch", 2, "there is no command nosuch"},
      {"help learn book", 2, "help takes one command name"},
      {"book import", 2, "usage: tqcomm book import FILE"},
      {"learn --new many", 2, "--new"},
  };
  for (const Case& c : cases) {
    Outcome r = Tool(c.args);
    EXPECT_EQ(r.status, c.status) << c.args;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << c.args << ": " << r.err;
    EXPECT_EQ(r.out, "") << c.args;
  }
  for (const char* args : {"--help", "-h", "help"}) {
    Outcome r = Tool(args);
    EXPECT_EQ(r.status, 0) << args;
    EXPECT_NE(r.out.find("\ncommands:\n"), std::string::npos) << args;
    EXPECT_NE(r.out.find("Exit status: 0 done, 1 failure, 2 bad usage."), std::string::npos) << args;
  }
}

}  // namespace
