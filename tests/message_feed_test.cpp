// The message feed at the boundary: counting new messages against the
// last-seen number, and the named lock that guards both files across
// processes.
#include <signal.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "desktop_util.h"
#include "platform/named_lock.h"
#include "tqcomm2006.h"

using tqtest::ReadFile;
using tqtest::WriteFile;

namespace {

// The host's Windows folder in the scratch folder.
class MessageFeedTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    windows_ = Path("windows");
    setenv("TQCOMM_WINDOWS", windows_.c_str(), 1);
    tqtest::MakeFolder(windows_);
  }
  void TearDown() override {
    vcEndKuvAdv();
    unsetenv("TQCOMM_WINDOWS");
    TempDirTest::TearDown();
  }
  std::string Win(const std::string& name) const { return windows_ + "/" + name; }
  std::string windows_;
};

TEST_F(MessageFeedTest, CountsMessagesNumberedAboveTheLastSeen) {
  struct Case {
    const char* what;
    std::string messages;
    const char* lastSeen;  // null: no last-seen file
    int count;
  } cases[] = {
      {"no last-seen file", "1.a\r\n2.b\r\n3.c\r\n", nullptr, 3},
      {"last seen 2", "1.a\r\n2.b\r\n3.c\r\n", "2", 1},
      {"order does not matter", "3.c\n1.a\n2.b\n", "1", 2},
      {"an empty line hides the rest", "1.a\n\n2.b\n3.c\n", nullptr, 1},
      {"white space is empty too", "1.a\n \t\r\n2.b\n", nullptr, 1},
      {"leading digits of the last seen", "5.a\n20.b\n", "17abc\n", 1},
      {"no digits in front: 0", "5.a\n", " 5", 1},
      {"lines without numbers", "news\n.x\nabc.5\n-3.x\n", nullptr, 0},
      {"number cut after five bytes", "123456.x\n", "12344", 1},
      {"point within five bytes", "1234.5\n", "1233", 1},
      {"blank before the number", " 7.x\n", "6", 1},
      {"Chinese text", "8." + tqtest::G(u8"新课程上线") + "\n", "7", 1},
      {"empty file", "", nullptr, 0},
      {"past a long line", "1." + std::string(1995, 'x') + "9.split\n", "1", 1},
  };
  for (const Case& c : cases) {
    WriteFile(Win("velmarkadv.txt"), c.messages);
    unlink(Win("velmarkadv.no").c_str());
    if (c.lastSeen) WriteFile(Win("velmarkadv.no"), c.lastSeen);
    EXPECT_EQ(vcIfNewMsgExist(nullptr), c.count) << c.what;
  }
}

TEST_F(MessageFeedTest, FeedsKeepTheirOwnFiles) {
  EXPECT_EQ(vcIfNewMsgExist(nullptr), -2);
  EXPECT_EQ(vcIfNewMsgExistForNore(""), -2);
  WriteFile(Win("velmarkadv.txt"), "1.a\n2.b\n");
  WriteFile(Win("vlkjbadv.txt"), "1.a\n2.b\n3.c\n");
  EXPECT_EQ(vcSetMaxViewedMsg(17), 1);
  EXPECT_EQ(ReadFile(Win("velmarkadv.no")), "17");
  EXPECT_EQ(vcSetMaxViewedMsgForNore(1), 1);
  EXPECT_EQ(ReadFile(Win("vlkjbadv.no")), "1");
  EXPECT_EQ(vcIfNewMsgExist(nullptr), 0);
  EXPECT_EQ(vcIfNewMsgExistForNore(nullptr), 2);
  EXPECT_EQ(vcSetMaxViewedMsg(-5), 1);
  EXPECT_EQ(vcIfNewMsgExist(nullptr), 2);  // "-5" has no leading digit: 0

  // A path of the caller's replaces the message file, not the last-seen one.
  WriteFile("mine.txt", "1.a\n2.b\n3.c\n4.d\n");
  EXPECT_EQ(vcIfNewMsgExistForNore((dir() + "\\mine.txt").c_str()), 3);
  EXPECT_EQ(vcIfNewMsgExist("missing.txt"), -2);
  EXPECT_EQ(vcIfNewMsgExist(Win("").c_str()), -2);  // a folder
}

TEST_F(MessageFeedTest, TheGuardIsOneSlotAndLivesInTheWindowsFolder) {
  EXPECT_EQ(vcEndKuvAdv(), 0);
  int first = vcInitKuvAdv();
  EXPECT_GT(first, 0);
  EXPECT_TRUE(tqtest::Exists(Win("VelmarkAdv.lock")));
  int second = vcInitKuvAdvForNore();
  EXPECT_GT(second, 0);
  EXPECT_NE(second, first);
  EXPECT_TRUE(tqtest::Exists(Win("vlkjbadv.lock")));
  EXPECT_EQ(vcEndKuvAdvForNore(), 1);
  EXPECT_EQ(vcEndKuvAdv(), 0);  // the one slot is empty now
  // A Windows folder that cannot be made leaves the feed unguarded.
  WriteFile("file", "");
  setenv("TQCOMM_WINDOWS", Path("file/windows").c_str(), 1);
  EXPECT_EQ(vcInitKuvAdv(), 0);
  EXPECT_EQ(vcEndKuvAdv(), 0);
}

// Runs body in a child process; its exit status.
template <class F>
pid_t Fork(F body) {
  pid_t pid = fork();
  if (pid == 0) _exit(body());
  return pid;
}

int ExitCode(pid_t pid) {
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
}

TEST_F(MessageFeedTest, TwoProcessesNeverSeeAHalfWrittenLastSeenFile) {
  // Every mark is above every message, so any count but 0 means a read
  // found the last-seen file emptied and not yet written again.
  std::string messages;
  for (int i = 1; i <= 20; ++i) messages += std::to_string(i) + ".message\n";
  WriteFile(Win("velmarkadv.txt"), messages);
  auto worker = [](int base) {
    return [base]() {
      vcInitKuvAdv();
      int torn = 0;
      for (int i = 0; i < 400; ++i) {
        vcSetMaxViewedMsg(base + i);
        if (vcIfNewMsgExist(nullptr) != 0) ++torn;
      }
      vcEndKuvAdv();
      return torn > 100 ? 100 : torn;
    };
  };
  pid_t a = Fork(worker(1000000));
  pid_t b = Fork(worker(2000000));
  EXPECT_EQ(ExitCode(a), 0);
  EXPECT_EQ(ExitCode(b), 0);
  int last = std::atoi(ReadFile(Win("velmarkadv.no")).c_str());
  EXPECT_TRUE(last == 1000399 || last == 2000399) << last;
}

TEST_F(MessageFeedTest, AWaiterGivesUpAfterThreeSecondsAndGoesOn) {
  // Another process holds the first feed's lock until it is killed.
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  std::string lockFile = Win("VelmarkAdv.lock");
  pid_t holder = Fork([&]() {
    tq::platform::NamedLock lock(lockFile);
    if (!lock.Wait(1000)) return 1;
    (void)!write(ready[1], "x", 1);
    pause();
    return 0;
  });
  char c;
  ASSERT_EQ(read(ready[0], &c, 1), 1);
  auto timed = [](int number) {
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(vcSetMaxViewedMsg(number), 1);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  // The slot holds the second feed's lock: the first feed waits for that.
  vcInitKuvAdv();
  vcInitKuvAdvForNore();
  EXPECT_LT(timed(1), 0.5);
  vcEndKuvAdv();
  EXPECT_LT(timed(2), 0.5);
  vcInitKuvAdv();
  double waited = timed(3);
  EXPECT_GT(waited, 2.9);
  EXPECT_LT(waited, 4.0);
  EXPECT_EQ(ReadFile(Win("velmarkadv.no")), "3");
  // A holder that dies leaves the lock free at once.
  kill(holder, SIGKILL);
  ExitCode(holder);
  EXPECT_LT(timed(4), 0.5);
  EXPECT_EQ(ReadFile(Win("velmarkadv.no")), "4");
}

}  // namespace
