// tqcomm feed and tqcomm startup, run as a person runs them, on a scratch
// Windows folder and registry store.
#include <string>
#include <vector>

#include "desktop_util.h"

namespace {

class DesktopTool : public tqtest::TempDirTest {
 protected:
  // Runs the tool; its exit code, with what it printed in *out.
  int Tool(const std::string& words, std::string* out) {
    std::string cmd = "LANG=C.UTF-8 TQCOMM_WINDOWS='" + Path("windows") + "' TQCOMM_REGISTRY='" + Path("reg") + "' " +
                      TQCOMM_BIN + " " + words + " 2>&1";
    return tqtest::Run(cmd, out);
  }
  // Runs each step; what it prints is compared where a step names it.
  struct Step {
    std::string words;
    int code;
    std::string out;
  };
  void RunSteps(const std::vector<Step>& steps) {
    for (const Step& s : steps) {
      std::string out;
      EXPECT_EQ(Tool(s.words, &out), s.code) << s.words << ": " << out;
      if (!s.out.empty()) {
        EXPECT_EQ(out, s.out) << s.words;
      }
    }
  }
};

TEST_F(DesktopTool, FeedCountsAndMarksSeen) {
  std::string out;
  EXPECT_EQ(Tool("feed count", &out), 1);
  EXPECT_EQ(out, "tqcomm: no message file " + Path("windows") + "/velmarkadv.txt\n");
  tqtest::WriteFile(Path("windows/vlkjbadv.txt"), "1." + tqtest::G(u8"新词") + "\r\n2.b\r\n3.c\r\n");
  RunSteps({
      {"feed count --partner 2", 0, "3\n"},
      {"feed seen 2 --partner 2", 0, ""},
      {"feed count --partner 2", 0, "1\n"},
      {"feed count --file windows/vlkjbadv.txt", 0, "3\n"},  // the first feed has seen nothing
      {"feed seen -1", 2, ""},
      {"feed seen 12x", 2, ""},
      {"feed count --partner 3", 2, ""},
      {"feed", 2, ""},
      {"feed --help", 0, ""},
  });
  EXPECT_EQ(tqtest::ReadFile(Path("windows/vlkjbadv.no")), "2");
}

TEST_F(DesktopTool, StartupEntriesAddListCheckAndRemove) {
  RunSteps({
      {"startup add Tq 'c:\\tq\\tq.exe /min'", 0, ""},
      {"startup add " + std::string(u8"青砚") + " '/opt/" + u8"青砚" + "/run'", 0, ""},
      {"startup list Tq " + std::string(u8"青砚") + " None", 1,
       "Tq\tc:\\tq\\tq.exe /min\n" + std::string(u8"青砚\t/opt/青砚/run\n") + "None\t(not set)\n"},
      {"startup check Tq 'C:\\TQ\\TQ.EXE /MIN'", 0, "yes\n"},
      {"startup check Tq 'c:\\tq\\tq.exe'", 1, "no\n"},
      {"startup add Svc svc --service", 0, ""},
      {"startup list Svc", 1, "Svc\t(not set)\n"},
      {"startup list Svc --service", 0, "Svc\tsvc\n"},
      {"startup remove Tq", 0, ""},
      {"startup remove Tq", 1, "tqcomm: no entry Tq\n"},
      {"startup add OnlyName", 2, ""},
      {"startup", 2, ""},
  });
}

}  // namespace
