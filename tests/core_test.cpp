// The frame every family stands on: handle tables, the stream table that
// caller-owned records use, path translation and the host objects.
#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "core/handle_table.h"
#include "core/streams.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqhost.h"

namespace {

struct Counted {
  static int live;
  Counted() { ++live; }
  ~Counted() { --live; }
};
int Counted::live = 0;

TEST(HandleTable, FullAnswerAndSpentSlots) {
  tq::HandleTable<Counted, 20, -1> table;
  for (int h = 1; h <= 19; ++h) ASSERT_EQ(table.New(), h);
  EXPECT_EQ(table.New(), -1);
  EXPECT_EQ(Counted::live, 19);
  EXPECT_EQ(table.Get(0), nullptr);
  EXPECT_EQ(table.Get(20), nullptr);
  EXPECT_EQ(table.Get(-3), nullptr);

  // A spent slot frees its object but is never handed out again.
  table.Spend(4);
  EXPECT_EQ(Counted::live, 18);
  EXPECT_EQ(table.Get(4), nullptr);
  EXPECT_EQ(table.New(), -1);
  table.Delete(9);
  EXPECT_EQ(table.New(), 9);
  for (int h = 1; h <= 19; ++h) table.Delete(h);
  EXPECT_EQ(Counted::live, 0);
  EXPECT_EQ(table.New(), 1);  // Delete clears the spent mark too
  table.Delete(1);
}

TEST(HandleTable, AdoptDeletesWhenFull) {
  tq::HandleTable<Counted, 3, 0> table;
  EXPECT_EQ(table.Adopt(new Counted), 1);
  EXPECT_EQ(table.Adopt(new Counted), 2);
  EXPECT_EQ(table.Adopt(new Counted), 0);
  EXPECT_EQ(Counted::live, 2);
  table.Delete(1);
  table.Delete(2);
}

TEST(Paths, BackslashesAndDriveLetters) {
  EXPECT_EQ(tq::env::NativePath("c:\\tmp\\x.dat"), "/tmp/x.dat");
  EXPECT_EQ(tq::env::NativePath("D:/a/b"), "/a/b");
  EXPECT_EQ(tq::env::NativePath("c:x"), "/x");
  EXPECT_EQ(tq::env::NativePath("sub\\a.txt"), "sub/a.txt");
  EXPECT_EQ(tq::env::NativePath("/plain/path"), "/plain/path");
  EXPECT_EQ(tq::env::NativePath("1:\\x"), "1:/x");  // not a drive letter
}

class StreamTest : public tqtest::TempDirTest {};

TEST_F(StreamTest, NumbersAreSmallReusedAndThreadSafe) {
  tqtest::WriteFile(Path("a"), "hello");
  tq::StreamId a = tq::StreamOpen(Path("a").c_str(), "rb");
  ASSERT_NE(a, 0u);
  char buf[8] = {};
  ASSERT_EQ(std::fread(buf, 1, 5, tq::StreamFile(a)), 5u);
  EXPECT_STREQ(buf, "hello");
  EXPECT_EQ(tq::StreamOpen(Path("missing").c_str(), "rb"), 0u);
  EXPECT_EQ(tq::StreamClose(a), 0);
  EXPECT_EQ(tq::StreamFile(a), nullptr);
  EXPECT_EQ(tq::StreamClose(a), EOF);
  EXPECT_EQ(tq::StreamClose(0), EOF);

  // Two threads opening and closing at once never share a number.
  std::atomic<bool> clash{false};
  auto worker = [&]() {
    for (int i = 0; i < 500; ++i) {
      tq::StreamId id = tq::StreamOpen(Path("a").c_str(), "rb");
      if (id == 0 || tq::StreamFile(id) == nullptr) clash = true;
      int c = std::fgetc(tq::StreamFile(id));
      if (c != 'h') clash = true;
      tq::StreamClose(id);
    }
  };
  std::thread t1(worker), t2(worker);
  t1.join();
  t2.join();
  EXPECT_FALSE(clash);
  tq::StreamId again = tq::StreamOpen(Path("a").c_str(), "rb");
  EXPECT_LE(again, 3u);  // the lowest numbers are reused
  tq::StreamClose(again);
}

TEST_F(StreamTest, InjectedOpenFault) {
  tqtest::WriteFile(Path("a"), "x");
  tq::env::SetOpenFaultForTesting([](const std::string& path, const char*) {
    return path.find("/a") != std::string::npos;
  });
  EXPECT_EQ(tq::env::Open(Path("a").c_str(), "rb"), nullptr);
  tq::env::SetOpenFaultForTesting(nullptr);
  std::FILE* f = tq::env::Open(Path("a").c_str(), "rb");
  EXPECT_NE(f, nullptr);
  if (f) std::fclose(f);
}

}  // namespace
