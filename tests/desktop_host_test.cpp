// The desktop services that stand on the host: shortcuts and menu items in
// the special folders, the companion program's window, CD drives, the
// system's version and folders, the cursor, wordpad and the speech
// installers.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "desktop/host_services.h"
#include "desktop_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using tqtest::Exists;
using tqtest::G;
using tqtest::ReadFile;
using tqtest::WaitForFile;
using tqtest::WriteFile;

namespace {

std::vector<std::string> g_boxes;  // "title|text" of each message box
int RecordBox(const char* text, const char* title, unsigned) {
  g_boxes.push_back(std::string(title) + "|" + text);
  return 1;
}

// The host's folders in the scratch folder.
class DesktopHostTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    setenv("TQCOMM_WINDOWS", Path("windows").c_str(), 1);
    setenv("XDG_DESKTOP_DIR", Path("Desktop").c_str(), 1);
    setenv("XDG_DATA_HOME", Path("data").c_str(), 1);
    g_boxes.clear();
    tqHost_SetMessageBoxHandler(RecordBox);
  }
  void TearDown() override {
    tqHost_SetMessageBoxHandler(nullptr);
    for (const char* v : {"TQCOMM_WINDOWS", "XDG_DESKTOP_DIR", "XDG_DATA_HOME"}) unsetenv(v);
    TempDirTest::TearDown();
  }
};

// The lines of a desktop entry that begin with key=.
std::string Entry(const std::string& text, const std::string& key) {
  size_t at = text.find("\n" + key + "=");
  if (at == std::string::npos) return "(none)";
  at += key.size() + 2;
  return text.substr(at, text.find('\n', at) - at);
}

TEST_F(DesktopHostTest, ADesktopShortcutIsAValidDesktopEntry) {
  std::string link = G(u8"青砚记词.desktop");
  ASSERT_EQ(vcAddShortCutToDeskTop("c:\\opt\\Tq Vocab\\tq.exe", "/book \"c:\\books\\my book.idx\" 100% $HOME",
                                   link.c_str(), "c:\\opt\\Tq Vocab", 'Q'),
            1);
  std::string path = Path("Desktop/" + link);
  std::string text = ReadFile(path);
  EXPECT_EQ(text.rfind("[Desktop Entry]\n", 0), 0u) << text;
  EXPECT_EQ(Entry(text, "Type"), "Application");
  EXPECT_EQ(Entry(text, "Name"), u8"青砚记词");
  EXPECT_EQ(Entry(text, "Exec"), "\"/opt/Tq Vocab/tq.exe\" /book \"/books/my book.idx\" 100%% \"\\\\$HOME\"");
  EXPECT_EQ(Entry(text, "Path"), "/opt/Tq Vocab");
  EXPECT_EQ(Entry(text, "X-Tqcomm-HotKey"), "Ctrl+Alt+Q");
  EXPECT_EQ(Entry(text, "Comment"), "(none)");

  std::string out;
  if (tqtest::Run("command -v desktop-file-validate >/dev/null", nullptr) != 0) {
    GTEST_SKIP() << "desktop-file-validate (desktop-file-utils) is not installed";
  }
  EXPECT_EQ(tqtest::Run("desktop-file-validate '" + path + "' 2>&1", &out), 0) << out;
  EXPECT_EQ(out, "");

  EXPECT_EQ(vcDeleteDeskTopShortCut(link.c_str()), 1);
  EXPECT_FALSE(Exists(path));
  EXPECT_EQ(vcDeleteDeskTopShortCut(link.c_str()), 0);
}

TEST_F(DesktopHostTest, ShortcutsWithoutAWayToBeWritten) {
  // No arguments, no folder, no hot key: the bare entry is valid too.
  ASSERT_EQ(vcAddShortCutToDeskTop("/usr/bin/true", nullptr, "bare.desktop", "", 0), 1);
  std::string text = ReadFile(Path("Desktop/bare.desktop"));
  EXPECT_EQ(Entry(text, "Exec"), "/usr/bin/true");
  EXPECT_EQ(Entry(text, "Path"), "(none)");
  EXPECT_EQ(Entry(text, "X-Tqcomm-HotKey"), "(none)");
  EXPECT_EQ(vcAddShortCutToDeskTop("x", "", std::string(300, 'n').c_str(), "", 0), 0);
  EXPECT_EQ(vcAddShortCutToDeskTop("x", "", "no\\folder\\x.desktop", "", 0), 0);
  EXPECT_EQ(vcAddShortCutToDeskTop(nullptr, "", "x.desktop", "", 0), 0);
  EXPECT_EQ(vcDeleteDeskTopShortCut(std::string(300, 'n').c_str()), 0);
}

TEST_F(DesktopHostTest, MenuItemsAreDeletedFromTheirFolders) {
  tqtest::MakeFolder(Path("data"));
  tqtest::MakeFolder(Path("data/applications"));
  tqtest::MakeFolder(Path("data/applications/Tq"));
  WriteFile(Path("data/applications/Tq/learn.desktop"), "x");
  WriteFile(Path("data/applications/menu.desktop"), "x");
  EXPECT_EQ(vcDeleteItemInProgramGroup("Tq", "learn.desktop"), 1);
  EXPECT_FALSE(Exists(Path("data/applications/Tq/learn.desktop")));
  EXPECT_EQ(vcDeleteItemInProgramGroup("Tq", "learn.desktop"), 0);
  EXPECT_EQ(vcDeleteItemInProgramGroup("None", "x"), 0);
  EXPECT_TRUE(g_boxes.empty());
  // The start menu shows the name first, with an empty title, every time.
  EXPECT_EQ(vcDeleteItemInStartMenu("menu.desktop"), 1);
  EXPECT_FALSE(Exists(Path("data/applications/menu.desktop")));
  EXPECT_EQ(vcDeleteItemInStartMenu("menu.desktop"), 0);
  EXPECT_EQ(g_boxes, (std::vector<std::string>{"|menu.desktop", "|menu.desktop"}));
}

// The companion's window procedure: answers message 3369 with g_reply and
// notes every message it gets.
intptr_t g_reply = 0;
std::vector<unsigned> g_messages;
intptr_t TQ_CALL Companion(int, unsigned message, uintptr_t, intptr_t) {
  g_messages.push_back(message);
  return message == 3369 ? g_reply : 0;
}

TEST_F(DesktopHostTest, TheCompanionIsAskedBeforeItIsStarted) {
  // The program and its newer spare copy note that they ran.
  tqtest::WriteArgumentRecorder(Path("sp"), Path("ran-old"));
  tqtest::WriteArgumentRecorder(Path("spbak"), Path("ran"));
  tqtest::SetWriteTime(Path("sp"), 1000000);
  std::string path = dir() + "\\sp";

  int window = tqHost_CreateWindow(tq::desktop::kCompanionTitle, 10, 10);
  tqHost_SetWindowProc(window, Companion);
  struct Case {
    intptr_t reply;
    int answer;  // 0: a start (above 31)
    std::vector<unsigned> messages;
  } cases[] = {{804, 804, {3369}}, {1000, 1000, {3369}}, {803, 0, {3369, 16}}};
  for (const Case& c : cases) {
    g_reply = c.reply;
    g_messages.clear();
    unlink(Path("ran").c_str());
    int answer = vcStartSp(path.c_str());
    EXPECT_EQ(g_messages, c.messages) << c.reply;
    if (c.answer != 0) {
      EXPECT_EQ(answer, c.answer);
      EXPECT_FALSE(Exists(Path("ran")));
    } else {
      EXPECT_GT(answer, 31);
      EXPECT_EQ(WaitForFile(Path("ran")), "");  // the spare copy was put in place
    }
  }
  EXPECT_FALSE(Exists(Path("ran-old")));
  EXPECT_EQ(vcFindWindow(tq::desktop::kCompanionTitle), window);

  // No window: started straight away; no program: WinExec's 2.
  tqHost_DestroyWindow(window);
  g_messages.clear();
  unlink(Path("ran").c_str());
  EXPECT_GT(vcStartSp(path.c_str()), 31);
  EXPECT_EQ(WaitForFile(Path("ran")), "");
  EXPECT_TRUE(g_messages.empty());
  EXPECT_EQ(vcStartSp("missing"), 2);
}

TEST_F(DesktopHostTest, CdDrivesAreSearchedForTheFile) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) tqHost_SetCdDrive(letter, nullptr);
  char drive[8] = "keep";
  EXPECT_EQ(vcIfCDROMReady("sndlib\\x.dat"), 0);
  EXPECT_EQ(vcIfCdFileReady("sndlib\\x.dat", drive), 0);
  EXPECT_STREQ(drive, "keep");

  for (const char* d : {"cd1", "cd2", "cd2/sndlib"}) tqtest::MakeFolder(Path(d));
  WriteFile(Path("cd2/sndlib/x.dat"), "x");
  WriteFile(Path("x.dat"), "on C: only");
  tqHost_SetCdDrive('D', Path("cd1").c_str());
  tqHost_SetCdDrive('F', Path("cd2").c_str());
  EXPECT_EQ(vcIfCDROMReady("sndlib\\x.dat"), 'F');
  EXPECT_EQ(vcIfCdFileReady("\\sndlib\\x.dat", drive), 1);
  EXPECT_STREQ(drive, "F:");
  EXPECT_EQ(vcIfCDROMReady((dir() + "/x.dat").c_str()), 0);
  EXPECT_EQ(vcIfCDROMReady(std::string(400, 'a').c_str()), 0);
}

TEST_F(DesktopHostTest, TheSystemFamilyFollowsTheVersion) {
  struct Case {
    int platform, major, minor, family, xpCompatible;
  } cases[] = {
      {1, 4, 10, 4, 1}, {1, 5, 0, 4, 1}, {1, 4, 0, 2, 1}, {1, 3, 95, 2, 1}, {2, 4, 0, 1, 1},
      {2, 5, 1, 5, 1},  {2, 5, 0, 3, 1}, {2, 6, 0, 3, 0}, {2, 6, 1, 5, 0},  {3, 10, 0, 2, 0},
  };
  for (const Case& c : cases) {
    tqHost_SetVersion(c.platform, c.major, c.minor);
    EXPECT_EQ(vcNtOr95(), c.family) << c.platform << " " << c.major << "." << c.minor;
    EXPECT_EQ(vcIsXpCompitableInVista(), c.xpCompatible) << c.major;
  }
}

TEST_F(DesktopHostTest, FoldersWindowsAndTheCursor) {
  char buffer[100];
  std::string system = Path("windows/system32");
  EXPECT_EQ(vcGetSystemDir(buffer), static_cast<int>(system.size()));
  EXPECT_EQ(std::string(buffer), system);
  std::string deep = Path(std::string(100, 'w'));
  setenv("TQCOMM_WINDOWS", deep.c_str(), 1);
  std::strcpy(buffer, "keep");
  EXPECT_EQ(vcGetSystemDir(buffer), static_cast<int>(deep.size() + 10));
  EXPECT_STREQ(buffer, "keep");

  int window = tqHost_CreateWindow(G(u8"生词本").c_str(), 10, 10);
  EXPECT_EQ(vcFindWindow(G(u8"生词本").c_str()), window);
  EXPECT_EQ(vcFindWindow(G(u8"生词").c_str()), 0);
  EXPECT_EQ(vcFindWindow(nullptr), 0);
  tqHost_SetCursorPos(640, -12);
  int32_t x = 0, y = 0;
  EXPECT_EQ(vcGetMousePosition(&x, &y), 1);
  EXPECT_EQ(x, 640);
  EXPECT_EQ(y, -12);

  WriteFile(Path("windows/old.ini"), "x");
  EXPECT_EQ(vcDeleteWinPathFile("old.ini"), 0);  // the Windows folder moved above
  setenv("TQCOMM_WINDOWS", Path("windows").c_str(), 1);
  EXPECT_EQ(vcDeleteWinPathFile("old.ini"), 1);
  EXPECT_FALSE(Exists(Path("windows/old.ini")));
  EXPECT_EQ(vcDeleteWinPathFile("old.ini"), 0);
}

TEST_F(DesktopHostTest, WordpadIsLookedForOnTheWindowsDrive) {
  using tq::desktop::WordpadPath;
  EXPECT_EQ(WordpadPath("C:\\WINDOWS", 4), "C:\\Program Files\\Accessories\\wordpad.exe");
  EXPECT_EQ(WordpadPath("d:\\winnt", 3), "d:\\Program Files\\Windows NT\\Accessories\\wordpad.exe");
  EXPECT_EQ(WordpadPath("/home/u/.local/share/tqcomm/windows", 2), "/Program Files\\Accessories\\wordpad.exe");
  // This machine has none: the box says so.
  vcDispFileInWordpad("notes.txt");
  EXPECT_EQ(g_boxes, std::vector<std::string>{"|" + G(u8"找不到wordpad.exe。请您自己用WORD或写字板打开文件。")});
}

TEST_F(DesktopHostTest, SpeechComponentsAreInstalledWhenMissing) {
  tqtest::MakeFolder("tts");
  tqtest::WriteArgumentRecorder(Path("tts/genie.exe"), Path("genie-ran"));
  tqtest::WriteArgumentRecorder(Path("tts/TV_ENUA.exe"), Path("voice-ran"));
  EXPECT_EQ(vcMakeSureGenieCharacterExist(), 1);
  EXPECT_EQ(WaitForFile(Path("genie-ran")), "");
  EXPECT_EQ(WaitForFile(Path("voice-ran")), "/Q:A\n/R:I\n");

  unlink(Path("genie-ran").c_str());
  unlink(Path("voice-ran").c_str());
  for (const char* d : {"windows/msagent", "windows/msagent/chars", "windows/lhsp", "windows/lhsp/tv"}) {
    tqtest::MakeFolder(Path(d));
  }
  WriteFile(Path("windows/msagent/chars/genie.acs"), "x");
  WriteFile(Path("windows/lhsp/tv/tv_enua.dll"), "x");
  EXPECT_EQ(vcMakeSureGenieCharacterExist(), 0);
  EXPECT_EQ(WaitForFile(Path("genie-ran"), 300), "(none)");
  EXPECT_FALSE(Exists(Path("voice-ran")));
}

}  // namespace
