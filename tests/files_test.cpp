// Existence, directory search, lengths and times, and the registry store,
// at the boundary as the front ends call them.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <set>
#include <string>

#include "core/registry.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

const uint32_t kCurrentUser = 2147483649u;
const uint32_t kLocalMachine = 2147483650u;

class FilesTest : public tqtest::TempDirTest {};

std::set<std::string> FindAll(const std::string& pattern, int* closeAnswer = nullptr) {
  FindFileState rec;
  std::memset(&rec, 0x5A, sizeof rec);  // whatever the caller left there
  std::strcpy(rec.pattern, pattern.c_str());
  rec.started = 0;
  std::set<std::string> names;
  char name[260];
  int n;
  while ((n = FindFile(&rec, name)) > 0) {
    EXPECT_EQ(n, static_cast<int>(std::strlen(name)));
    EXPECT_STREQ(rec.findData.fileName, name);
    names.insert(name);
    if (names.size() > 100) break;
  }
  EXPECT_EQ(rec.started, 1);
  int closed = MyFindClose(&rec);
  if (closeAnswer) *closeAnswer = closed;
  // An ended search stays ended until the caller clears started.
  EXPECT_EQ(rec.started, 1);
  EXPECT_EQ(FindFile(&rec, name), 0);
  EXPECT_EQ(MyFindClose(&rec), 0);
  return names;
}

TEST_F(FilesTest, FindFileWalksPatternsCaseBlind) {
  for (auto f : {std::make_pair("a.txt", "1"), {"B.TXT", "22"}, {"ab.dat", "333"}, {"abc", ""}}) {
    WriteFile(f.first, f.second);
  }
  mkdir("sub", 0755);
  WriteFile("sub/x.txt", "4444");

  using S = std::set<std::string>;
  // A folder matches too; front-end separators work.
  std::pair<std::string, S> cases[] = {
      {"*.txt", {"a.txt", "B.TXT"}}, {"?.TxT", {"a.txt", "B.TXT"}}, {"a*", {"a.txt", "ab.dat", "abc"}},
      {"*b*.*at", {"ab.dat"}},       {"ab?", {"abc"}},              {"s*", {"sub"}},
      {"sub\\*.txt", {"x.txt"}},     {dir() + "/sub/X.*", {"x.txt"}}};
  for (const auto& c : cases) EXPECT_EQ(FindAll(c.first), c.second) << c.first;
  S all = FindAll("*.*");
  EXPECT_TRUE(all.count("abc") && all.count("sub") && all.count("a.txt"));
  EXPECT_EQ(FindAll("abc"), (S{"abc"}));
  int closed = 2;
  EXPECT_EQ(FindAll("*.none", &closed), S{});
  EXPECT_EQ(closed, 0);
  EXPECT_EQ(FindAll("nosuchdir\\*"), S{});
  FindAll("a*", &closed);
  EXPECT_EQ(closed, 1);
}

TEST_F(FilesTest, FindFileFillsTheFindRecord) {
  WriteFile("five.bin", "12345");
  mkdir("folder", 0755);
  FindFileState rec = {};
  std::strcpy(rec.pattern, "five.bin");
  char name[260];
  ASSERT_EQ(FindFile(&rec, name), 8);
  EXPECT_EQ(rec.findData.sizeLow, 5u);
  EXPECT_EQ(rec.findData.sizeHigh, 0u);
  EXPECT_EQ(rec.findData.attributes, 128u);
  // 2000-01-01 and 2100-01-01 in 100 ns ticks since 1601 bound any file made now.
  uint64_t write = (uint64_t(rec.findData.lastWriteTime.high) << 32) | rec.findData.lastWriteTime.low;
  EXPECT_GT(write, 125911584000000000ULL);
  EXPECT_LT(write, 157469184000000000ULL);
  EXPECT_NE(rec.findHandle, 0u);
  EXPECT_EQ(FindFile(&rec, name), 0);
  EXPECT_EQ(MyFindClose(&rec), 1);

  std::strcpy(rec.pattern, "folder");
  rec.started = 0;
  ASSERT_EQ(FindFile(&rec, name), 6);
  EXPECT_EQ(rec.findData.attributes, 16u);
  MyFindClose(&rec);

  FindFileState never = {};
  EXPECT_EQ(MyFindClose(&never), -1);
}

TEST_F(FilesTest, ExistenceAndLength) {
  WriteFile("w.txt", "hello");
  WriteFile("empty", "");
  mkdir("dir", 0755);
  // A plain name is exact, so that what exists also opens; a pattern is case-blind.
  for (const char* yes : {"w.txt", "W.TX?", "dir", "*.txt"}) EXPECT_EQ(vcIfFileExist(yes), 1) << yes;
  for (const char* no : {"W.TXT", "*.wav", "nothing", "dir\\", ""}) EXPECT_EQ(vcIfFileExist(no), 0) << no;
  std::pair<const char*, int> lengths[] = {{"w.txt", 5}, {"empty", 0}, {"nothing", -1}, {"dir", -1}};
  for (const auto& l : lengths) EXPECT_EQ(vcGetFileLength(l.first), l.second) << l.first;
}

TEST_F(FilesTest, FileTimesCompareAndCopyTheLastWrite) {
  WriteFile("a", "1");
  WriteFile("b", "2");
  struct timespec t[2] = {{1000000000, 123456700}, {1200000000, 987654300}};
  ASSERT_EQ(utimensat(AT_FDCWD, "a", t, 0), 0);
  EXPECT_EQ(vcIsSameTimeFiles("a", "b"), 0);
  EXPECT_EQ(vcSetSameFileTime("a", "b"), 1);
  EXPECT_EQ(vcIsSameTimeFiles("a", "b"), 1);
  struct stat st;
  ASSERT_EQ(stat("b", &st), 0);
  EXPECT_EQ(st.st_mtim.tv_sec, 1200000000);
  EXPECT_EQ(st.st_mtim.tv_nsec, 987654300);
  EXPECT_EQ(st.st_atim.tv_sec, 1000000000);

  // Only the write time counts, and 100 ns is enough to tell two apart.
  struct timespec u[2] = {{5, 0}, {1200000000, 987654400}};
  ASSERT_EQ(utimensat(AT_FDCWD, "b", u, 0), 0);
  EXPECT_EQ(vcIsSameTimeFiles("a", "b"), 0);
  u[1].tv_nsec = 987654300;
  ASSERT_EQ(utimensat(AT_FDCWD, "b", u, 0), 0);
  EXPECT_EQ(vcIsSameTimeFiles("a", "b"), 1);

  EXPECT_EQ(vcIsSameTimeFiles("a", "missing"), 0);
  EXPECT_EQ(vcSetSameFileTime("missing", "a"), 0);
  EXPECT_EQ(vcSetSameFileTime("a", "missing"), 0);
}

// The registry store in a scratch folder of its own.
class RegistryTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    store_ = dir() + "/reg";
    setenv("TQCOMM_REGISTRY", store_.c_str(), 1);
  }
  void TearDown() override {
    unsetenv("TQCOMM_REGISTRY");
    TempDirTest::TearDown();
  }
  // The current user's integer, or nothing where the read answers -1.
  std::optional<int32_t> Int(const std::string& key, const std::string& name) {
    int32_t v = 0;
    int answer = vcGetKeyValueInt(kCurrentUser, key.c_str(), name.c_str(), &v);
    EXPECT_TRUE(answer == 0 || answer == -1) << answer;
    return answer == 0 ? std::optional<int32_t>(v) : std::nullopt;
  }
  bool IsFolder(const std::string& p) {
    struct stat st;
    return stat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
  }
  std::string store_;
};

TEST_F(RegistryTest, AMissingKeyAnswersMinusOneAndIsCreated) {
  int32_t v = 77;
  EXPECT_EQ(vcGetKeyValueInt(kCurrentUser, "Software\\Orvex\\Settings", "Count", &v), -1);
  EXPECT_EQ(v, 77);
  EXPECT_TRUE(IsFolder(store_ + "/HKEY_CURRENT_USER/software/orvex/settings"));
  char buf[16];
  int32_t size = sizeof buf - 1;
  EXPECT_EQ(vcGetKeyValueString(kLocalMachine, "Software\\New", "Path", buf, &size), -1);
  EXPECT_TRUE(IsFolder(store_ + "/HKEY_LOCAL_MACHINE/software/new"));
  EXPECT_EQ(vcDeleteKeyValue(kCurrentUser, "Software\\Orvex\\Settings", "Count"), -1);
  // Not a predefined root.
  EXPECT_EQ(vcWriteKeyValueInt(12345, "Software", "x", 1), -1);
  EXPECT_EQ(vcGetKeyValueInt(12345, "Software", "x", &v), -1);
}

TEST_F(RegistryTest, IntegersAndStringsRoundTrip) {
  const char* key = "Software\\VB and VBA Program Settings\\orvex7\\User";
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, key, "Level", -123456), 0);
  EXPECT_EQ(Int(key, "Level"), -123456);
  // Keys and names are found whatever the case of their letters.
  EXPECT_EQ(Int("software\\vb and vba program settings\\ORVEX7\\user", "LEVEL"), -123456);
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, key, "level", 5), 0);
  EXPECT_EQ(Int(key, "Level"), 5);

  std::string path = G(u8"d:\\墨岭\\青砚记句\\");
  ASSERT_EQ(vcWriteKeyValueString(kCurrentUser, key, "InstallPath", path.c_str()), 0);
  char buf[64];
  std::memset(buf, 'x', sizeof buf);
  int32_t size = 40;
  ASSERT_EQ(vcGetKeyValueString(kCurrentUser, key, "InstallPath", buf, &size), 0);
  EXPECT_EQ(size, static_cast<int32_t>(path.size() + 1));  // the zero byte counts
  EXPECT_EQ(std::string(buf), path);
  EXPECT_EQ(buf[size], '\0');

  // Too little room: -1 with the size needed; the buffer is not touched.
  std::memset(buf, 'x', sizeof buf);
  size = 3;
  EXPECT_EQ(vcGetKeyValueString(kCurrentUser, key, "InstallPath", buf, &size), -1);
  EXPECT_EQ(size, static_cast<int32_t>(path.size() + 1));
  EXPECT_EQ(buf[0], 'x');

  // A string too long for four bytes is no integer; a short one fills the low bytes.
  EXPECT_EQ(Int(key, "InstallPath"), std::nullopt);
  ASSERT_EQ(vcWriteKeyValueString(kCurrentUser, key, "Short", "ab"), 0);
  int32_t v = -1;
  ASSERT_EQ(vcGetKeyValueInt(kCurrentUser, key, "Short", &v), 0);
  EXPECT_EQ(v, static_cast<int32_t>(0xFF006261u));
  // An integer read as a string gives its four bytes.
  size = 10;
  ASSERT_EQ(vcGetKeyValueString(kCurrentUser, key, "level", buf, &size), 0);
  EXPECT_EQ(size, 4);
  EXPECT_EQ(std::string(buf, 5), std::string("\x05\0\0\0\0", 5));

  EXPECT_EQ(vcDeleteKeyValue(kCurrentUser, key, "LEVEL"), 0);
  EXPECT_EQ(Int(key, "Level"), std::nullopt);
  EXPECT_EQ(vcGetKeyValueString(kCurrentUser, key, "InstallPath", buf, &(size = 40)), 0);
}

TEST_F(RegistryTest, ChineseKeysKeepTheirBytes) {
  // The second byte of this character is a backslash: it divides nothing.
  std::string odd = G(u8"砛");
  ASSERT_EQ(odd[1], '\\');
  std::string key = G(u8"Software\\墨岭\\") + odd + "X";
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, key.c_str(), "v", 1), 0);
  EXPECT_EQ(Int(key, "v"), 1);
  EXPECT_EQ(Int(G(u8"SOFTWARE\\墨岭\\") + odd + "x", "v"), 1);
  // A second byte that is a capital letter is not folded.
  std::string upper = "\xB0\x41", lower = "\xB0\x61";
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, upper.c_str(), "v", 10), 0);
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, lower.c_str(), "v", 20), 0);
  EXPECT_EQ(Int(upper, "v"), 10);
  // No key part can climb out of the store.
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, "..\\..\\escape/x", "v", 3), 0);
  EXPECT_FALSE(IsFolder(dir() + "/escape"));
  EXPECT_EQ(Int("..\\..\\escape/x", "v"), 3);
}

TEST_F(RegistryTest, ValuesSurviveTheProcessAndConcurrentWriters) {
  const char* key = "Software\\Shared";
  const int kPerChild = 40;
  auto name = [](int c, int i) { return "c" + std::to_string(c) + "_" + std::to_string(i); };
  pid_t kids[2];
  for (int c = 0; c < 2; ++c) {
    kids[c] = fork();
    ASSERT_GE(kids[c], 0);
    if (kids[c] == 0) {
      for (int i = 0; i < kPerChild; ++i) {
        if (vcWriteKeyValueInt(kCurrentUser, key, name(c, i).c_str(), c * 1000 + i) != 0) _exit(1);
      }
      _exit(0);
    }
  }
  for (pid_t kid : kids) {
    int status = 0;
    ASSERT_EQ(waitpid(kid, &status, 0), kid);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  for (int c = 0; c < 2; ++c) {
    for (int i = 0; i < kPerChild; ++i) EXPECT_EQ(Int(key, name(c, i)), c * 1000 + i) << name(c, i);
  }
  // No temporary file is left behind.
  std::string listing;
  tqtest::Run("ls -a '" + store_ + "/HKEY_CURRENT_USER/software/shared'", &listing);
  EXPECT_EQ(listing, ".\n..\n.lock\n.values\n");
}

TEST_F(RegistryTest, AFailedWriteLeavesTheOldValues) {
  ASSERT_EQ(vcWriteKeyValueString(kCurrentUser, "K", "a", "old"), 0);
  std::string file = store_ + "/HKEY_CURRENT_USER/k/.values";
  std::string before = ReadFile(file);
  // The new file never gets written: the old one stands, whole.
  tq::env::SetOpenFaultForTesting([](const std::string& path, const char* mode) { return mode[0] == 'w'; });
  EXPECT_EQ(vcWriteKeyValueString(kCurrentUser, "K", "a", "new"), -1);
  EXPECT_EQ(vcWriteKeyValueInt(kCurrentUser, "K", "b", 1), -1);
  tq::env::SetOpenFaultForTesting(nullptr);
  EXPECT_EQ(ReadFile(file), before);
  char buf[8];
  int32_t size = 7;
  ASSERT_EQ(vcGetKeyValueString(kCurrentUser, "K", "a", buf, &size), 0);
  EXPECT_STREQ(buf, "old");
}

TEST_F(RegistryTest, ADamagedValueFileKeepsWhatPrecedesTheDamage) {
  tq::RegistryKey::Values values;
  values["a"] = {4, "A", std::string("\1\0\0\0", 4)};
  values["b"] = {1, "b", std::string("text\0", 5)};
  std::string bytes = tq::RegistryKey::Encode(values);
  for (size_t cut = 0; cut <= bytes.size(); ++cut) {
    tq::RegistryKey::Values back = tq::RegistryKey::Decode(bytes.substr(0, cut));
    EXPECT_LE(back.size(), 2u);
    if (cut == bytes.size()) {
      ASSERT_EQ(back.size(), 2u);
      EXPECT_EQ(back["a"].name, "A");
      EXPECT_EQ(back["b"].data, std::string("text\0", 5));
    }
  }
  // A length field pointing far past the end.
  std::string hostile = bytes.substr(0, 7) + std::string("\4\0\0\0\xff\xff\xff\x7f", 8);
  EXPECT_TRUE(tq::RegistryKey::Decode(hostile).empty());

  // A garbled file in the store: reads miss, a write starts it afresh.
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, "K", "n", 1), 0);
  WriteFile(store_ + "/HKEY_CURRENT_USER/k/.values", "garbage");
  EXPECT_EQ(Int("K", "n"), std::nullopt);
  ASSERT_EQ(vcWriteKeyValueInt(kCurrentUser, "K", "n", 2), 0);
  EXPECT_EQ(Int("K", "n"), 2);
}

}  // namespace
