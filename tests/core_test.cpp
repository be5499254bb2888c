// The frame every family stands on: handle tables, the stream table that
// caller-owned records use, and path translation.
#include <atomic>
#include <cstdio>
#include <thread>

#include "core/handle_table.h"
#include "core/streams.h"
#include "platform/env.h"
#include "test_util.h"

namespace {

struct Counted {
  static int live;
  Counted() { ++live; }
  ~Counted() { --live; }
};
int Counted::live = 0;

// Full tables, spent and reused slots are tried at the boundary by each
// family's tests. Adopting into a full table is not reachable from there.
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

}  // namespace
