// Start-up entries, the navigation sound, the web and mail commands, help
// files, command lines started as processes, and the small helpers.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "desktop/command_line.h"
#include "desktop_util.h"
#include "platform/process.h"
#include "tqcomm2006.h"

using tqtest::G;
using tqtest::ReadFile;
using tqtest::WaitForFile;
using tqtest::WriteFile;

namespace {

const uint32_t kClassesRoot = 2147483648u;
const uint32_t kCurrentUser = 2147483649u;
const uint32_t kLocalMachine = 2147483650u;
const char kRun[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const char kRunServices[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices";

// The registry store in the scratch folder.
class ShellTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    setenv("TQCOMM_REGISTRY", Path("reg").c_str(), 1);
  }
  void TearDown() override {
    unsetenv("TQCOMM_REGISTRY");
    TempDirTest::TearDown();
  }
  std::string Value(uint32_t root, const char* key, const char* name) {
    char buf[1024];
    int32_t size = sizeof buf - 1;
    if (vcGetKeyValueString(root, key, name, buf, &size) != 0) return "(none)";
    return buf;
  }
};

TEST_F(ShellTest, StartupEntriesCompareWithoutCase) {
  EXPECT_EQ(vcIfStartupRun("Tq", "c:\\a.exe"), 0);
  EXPECT_EQ(vcRemoveStartupRun("Tq"), -1);
  ASSERT_EQ(vcSetStartupRun("Tq", "c:\\a.exe"), 0);
  EXPECT_EQ(Value(kLocalMachine, kRun, "Tq"), "c:\\a.exe");
  EXPECT_EQ(vcIfStartupRun("Tq", "C:\\A.EXE"), 1);
  EXPECT_EQ(vcIfStartupRun("tq", "c:\\a.exe"), 1);
  EXPECT_EQ(vcIfStartupRun("Tq", "c:\\a.exe /min"), 0);

  // Already there: left as it was written; else written.
  EXPECT_EQ(vcMakeSureStartupRun("Tq", "C:\\A.EXE"), 0);
  EXPECT_EQ(Value(kLocalMachine, kRun, "Tq"), "c:\\a.exe");
  EXPECT_EQ(vcMakeSureStartupRun("Tq", "c:\\b.exe"), 0);
  EXPECT_EQ(Value(kLocalMachine, kRun, "Tq"), "c:\\b.exe");

  // A command of 117 bytes still fits the 118-byte read, one more does not.
  std::string fits(117, 'a'), over(118, 'a');
  for (const std::string& command : {fits, over}) {
    ASSERT_EQ(vcSetStartupRun("Long", command.c_str()), 0);
    EXPECT_EQ(vcIfStartupRun("Long", command.c_str()), command == fits ? 1 : 0);
  }
  EXPECT_EQ(vcRemoveStartupRun("TQ"), 0);
  EXPECT_EQ(vcIfStartupRun("Tq", "c:\\b.exe"), 0);
  EXPECT_EQ(vcIfStartupRun(G(u8"中文").c_str(), "x"), 0);

  ASSERT_EQ(vcSetStartupRunService("Svc", "svc.exe"), 0);
  EXPECT_EQ(Value(kLocalMachine, kRunServices, "Svc"), "svc.exe");
  EXPECT_EQ(Value(kLocalMachine, kRun, "Svc"), "(none)");
  EXPECT_EQ(vcRemoveStartupRunService("Svc"), 0);
  EXPECT_EQ(vcRemoveStartupRunService("Svc"), -1);
}

TEST_F(ShellTest, NavigationSoundIsKeptAndGivenBack) {
  const char* key = "AppEvents\\Schemes\\Apps\\Explorer\\Navigating\\.Current";
  char old[200];
  std::strcpy(old, "garbage");
  EXPECT_EQ(vcRemoveNavigateSnd(old), 0);
  EXPECT_STREQ(old, "");
  std::string sound = G(u8"c:\\声音\\click.wav");
  ASSERT_EQ(vcSetNavigateSnd(sound.c_str()), 0);
  EXPECT_EQ(Value(kCurrentUser, key, ""), sound);
  EXPECT_EQ(vcRemoveNavigateSnd(old), 0);
  EXPECT_EQ(std::string(old), sound);
  EXPECT_EQ(Value(kCurrentUser, key, nullptr), "");
}

TEST_F(ShellTest, WebAndMailCommandsRunTheRegisteredProgram) {
  EXPECT_EQ(vcHttpPage("http://example.org/"), -1);
  EXPECT_EQ(vcSendMailTo("a@b.c", "hi"), -1);
  tqtest::MakeFolder("Program Files");
  tqtest::WriteArgumentRecorder(Path("Program Files/browser"), Path("args"));
  // The program stands from the value's second byte to the next quote.
  std::string value = "\"" + dir() + "\\Program Files\\browser\" -- \"%1\"";
  ASSERT_EQ(vcWriteKeyValueString(kClassesRoot, "http\\shell\\open\\command", "", value.c_str()), 0);
  ASSERT_EQ(vcWriteKeyValueString(kClassesRoot, "mailto\\shell\\open\\command", "", value.c_str()), 0);
  struct Case {
    int (*run)();
    const char* args;
  } cases[] = {
      {[] { return vcHttpPage("http://example.org/a?b=1&c=2"); }, "http://example.org/a?b=1&c=2\n"},
      {[] { return vcSendMailTo("a@b.c", "hello"); }, "mailto:a@b.c?subject=hello\n"},
      {[] { return vcSendMailTo("a@b.c", ""); }, "mailto:a@b.c\n"},
      {[] { return vcSendMailTo("a@b.c", nullptr); }, "mailto:a@b.c\n"},
  };
  for (const Case& c : cases) {
    unlink("args");
    EXPECT_EQ(c.run(), 0);
    EXPECT_EQ(WaitForFile("args"), c.args);
  }
  // A value whose program is not there still answers 0: the start is not
  // the call's business.
  ASSERT_EQ(vcWriteKeyValueString(kClassesRoot, "http\\shell\\open\\command", "", "\"c:\\none.exe\" %1"), 0);
  EXPECT_EQ(vcHttpPage("http://x/"), 0);
}

TEST_F(ShellTest, HelpFilesOpenWithTheMachinesViewer) {
  std::string oldPath = std::getenv("PATH") ? std::getenv("PATH") : "";
  tqtest::MakeFolder("bin");
  setenv("PATH", Path("bin").c_str(), 1);
  WriteFile("guide.chm", "ITSF");
  EXPECT_EQ(vcHtmlHelp("guide.chm"), 0);  // no viewer at all
  tqtest::WriteArgumentRecorder(Path("bin/xdg-open"), Path("generic"));
  tqtest::WriteArgumentRecorder(Path("bin/kchmviewer"), Path("viewer"));
  EXPECT_EQ(vcHtmlHelp((dir() + "\\guide.chm").c_str()), 1);
  EXPECT_EQ(WaitForFile("viewer"), dir() + "/guide.chm\n");
  EXPECT_FALSE(tqtest::Exists("generic"));
  EXPECT_EQ(vcHtmlHelp("missing.chm"), 0);
  EXPECT_EQ(vcHtmlHelp("bin"), 0);
  setenv("PATH", oldPath.c_str(), 1);
}

TEST_F(ShellTest, SmallHelpers) {
  EXPECT_EQ(vcVbIntegerToUnsigned(-1), 65535);
  EXPECT_EQ(vcVbIntegerToUnsigned(-32768), 32768);
  EXPECT_EQ(vcBitXor(vcBitOr(0x0F00, 0x00F0), vcBitAnd(-1, 0x0F0F)), 0x00FF);
  for (auto c : {std::make_pair("", 1), {"0123456789", 1}, {"12a", 0}, {" 1", 0}, {"-1", 0}, {"\xb2\xe2", 0}}) {
    EXPECT_EQ(vcIsAllDigit(c.first), c.second) << c.first;
  }
}

// Command lines, below the boundary: the splitting and the start itself.
class CommandLineTest : public tqtest::TempDirTest {};

TEST_F(CommandLineTest, WordsSplitAsAShellWouldWithBackslashesKept) {
  using V = std::vector<std::string>;
  std::pair<const char*, V> cases[] = {
      {"a b\tc", V{"a", "b", "c"}},
      {"  \"x y\"  'z  w' ", V{"x y", "z  w"}},
      {"c:\\dir\\x.exe \"c:\\a b\\\" /Q:A", V{"c:\\dir\\x.exe", "c:\\a b\\", "/Q:A"}},
      {"ab\"cd ef\"gh", V{"abcd efgh"}},
      {"\"unclosed quote", V{"unclosed quote"}},
      {"", V{}},
  };
  for (const auto& c : cases) EXPECT_EQ(tq::desktop::SplitWords(c.first), c.second) << c.first;
  EXPECT_EQ(tq::desktop::MapWord("c:\\tmp\\x"), "/tmp/x");
  EXPECT_EQ(tq::desktop::MapWord("sub\\x"), "sub/x");
  for (const char* stays : {"/Q:A", "http://x/y", "mailto:a@b", "x:", "-o"}) {
    EXPECT_EQ(tq::desktop::MapWord(stays), stays);
  }
}

TEST_F(CommandLineTest, ProgramsAreFoundAsTheFrontEndsPlatformFindsThem) {
  tqtest::MakeFolder("Program Files");
  tqtest::MakeFolder("Program Files/Sub Dir");
  tqtest::MakeFolder("tts");
  tqtest::WriteArgumentRecorder(Path("Program Files/Sub Dir/tool.exe"), Path("out"));
  tqtest::WriteArgumentRecorder(Path("tts/setup.exe"), Path("out"));
  WriteFile("plain.txt", "not a program");
  std::string blanks = dir() + "\\Program Files\\Sub Dir\\tool.exe";

  struct Case {
    std::string line, program;
    std::vector<std::string> arguments;
  } cases[] = {
      {blanks + " one \"two three\"", Path("Program Files/Sub Dir/tool.exe"), {"one", "two three"}},
      {"\"" + blanks + "\" c:\\x\\y.txt", Path("Program Files/Sub Dir/tool.exe"), {"/x/y.txt"}},
      {"tts\\setup /Q:A /R:I", "tts/setup.exe", {"/Q:A", "/R:I"}},
      {"sh -c 'exit 0'", "", {"-c", "exit 0"}},  // along PATH
      {"plain.txt", "", {}},
      {"nothing here", "", {"here"}},
  };
  for (const Case& c : cases) {
    tq::desktop::Command got = tq::desktop::ParseCommandLine(c.line);
    if (c.line.rfind("sh ", 0) == 0) {
      EXPECT_EQ(got.program.substr(got.program.rfind('/')), "/sh");
    } else {
      EXPECT_EQ(got.program, c.program) << c.line;
    }
    EXPECT_EQ(got.arguments, c.arguments) << c.line;
  }

  // WinExec's answers.
  EXPECT_GT(tq::desktop::WinExec((blanks + " started").c_str()), 31);
  EXPECT_EQ(WaitForFile("out"), "started\n");
  EXPECT_EQ(tq::desktop::WinExec("no_such_program_here arg"), 2);
  EXPECT_EQ(tq::desktop::WinExec("c:\\no\\such\\folder\\x.exe"), 3);
  EXPECT_EQ(tq::desktop::WinExec(""), 2);
  EXPECT_EQ(tq::desktop::WinExec(nullptr), 2);
  WriteFile("bad.exe", "\x7f" "ELF garbage");
  chmod("bad.exe", 0755);
  EXPECT_EQ(tq::desktop::WinExec("./bad.exe"), 11);
}

TEST_F(CommandLineTest, AStartedProgramRunsInASessionOfItsOwnUnwaitedFor) {
  // The program sleeps; the start comes back at once, and the program runs
  // in a session of its own.
  WriteFile("slow", "#!/bin/sh\ncut -d\" \" -f6 /proc/$$/stat > sid.part; mv sid.part sid\nsleep 1\n");
  chmod("slow", 0755);
  auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(tq::platform::StartDetached(Path("slow"), {}), tq::platform::kStarted);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
  std::string sid = WaitForFile("sid");
  ASSERT_NE(sid, "(none)");
  EXPECT_NE(std::atoi(sid.c_str()), static_cast<int>(getsid(0)));
}

}  // namespace
