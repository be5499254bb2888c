// Copies, deletions, the temporary file, files kept in a record and files of
// integers, at the boundary as the front ends call them.
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "desktop_util.h"
#include "tqcomm2006.h"

using tqtest::Exists;
using tqtest::G;
using tqtest::OwnerMayWrite;
using tqtest::ReadFile;
using tqtest::WriteFile;

namespace {

class FileServicesTest : public tqtest::TempDirTest {
 protected:
  void ReadOnly(const std::string& path, const std::string& bytes) {
    WriteFile(path, bytes);
    chmod(path.c_str(), 0444);
  }
};

TEST_F(FileServicesTest, CopyClearsBothMarksAndKeepsTheWriteTime) {
  ReadOnly("src.dat", "payload");
  tqtest::SetWriteTime("src.dat", 1000000000);
  EXPECT_EQ(vcCopyFile("src.dat", (dir() + "\\copy.dat").c_str()), 1);
  EXPECT_EQ(ReadFile("copy.dat"), "payload");
  EXPECT_TRUE(OwnerMayWrite("src.dat"));
  EXPECT_TRUE(OwnerMayWrite("copy.dat"));
  EXPECT_EQ(vcIsSameTimeFiles("src.dat", "copy.dat"), 1);

  EXPECT_EQ(vcCopyFile("missing", "x"), 0);
  EXPECT_FALSE(Exists("x"));
  EXPECT_EQ(vcCopyFile("src.dat", "no\\such\\folder\\x"), 0);
  // Onto itself the file stays whole.
  EXPECT_EQ(vcCopyFile("src.dat", "./src.dat"), 0);
  EXPECT_EQ(ReadFile("src.dat"), "payload");
}

TEST_F(FileServicesTest, CopyNewerLooksAtWriteTimesOnly) {
  struct Case {
    const char* what;
    time_t source, destination;  // 0: no destination
    int answer;
    const char* after;
  } cases[] = {
      {"equal times", 2000000, 2000000, 0, "dst"},
      {"older source", 1000000, 2000000, 0, "dst"},
      {"newer source", 3000000, 2000000, 1, "src"},
      {"no destination", 3000000, 0, 1, "src"},
  };
  for (const Case& c : cases) {
    WriteFile("s", "src");
    tqtest::SetWriteTime("s", c.source);
    unlink("d");
    if (c.destination != 0) {
      WriteFile("d", "dst");
      tqtest::SetWriteTime("d", c.destination);
    }
    EXPECT_EQ(vcCopyNewerFile("s", "d"), c.answer) << c.what;
    EXPECT_EQ(ReadFile("d"), c.after) << c.what;
  }
  EXPECT_EQ(vcCopyNewerFile("missing", "d"), 0);
  EXPECT_EQ(ReadFile("d"), "src");
  // A fresh copy has the source's time, so a second call copies nothing.
  WriteFile("s", "again");
  tqtest::SetWriteTime("s", 5000000);
  EXPECT_EQ(vcCopyNewerFile("s", "d"), 1);
  EXPECT_EQ(vcCopyNewerFile("s", "d"), 0);
}

TEST_F(FileServicesTest, GroupCopiesTakeMatchingFilesOnly) {
  tqtest::MakeFolder("in");
  tqtest::MakeFolder("in/sub.txt");  // a folder that matches is not copied
  ReadOnly("in/a.txt", "a");
  WriteFile("in/B.TXT", "b");
  WriteFile("in/c.dat", "c");
  WriteFile(G(u8"in/词.txt"), "w");
  tqtest::MakeFolder("out");
  EXPECT_EQ(vcCopyGroupFile("in\\*.txt", "out"), 3);
  EXPECT_EQ(ReadFile("out/a.txt"), "a");
  EXPECT_TRUE(OwnerMayWrite("out/a.txt"));
  EXPECT_FALSE(OwnerMayWrite("in/a.txt"));  // only the copies are cleared
  EXPECT_EQ(ReadFile("out/B.TXT"), "b");
  EXPECT_EQ(ReadFile(G(u8"out/词.txt")), "w");
  EXPECT_FALSE(Exists("out/c.dat"));
  EXPECT_FALSE(Exists("out/sub.txt"));

  tqtest::MakeFolder("all");
  EXPECT_EQ(vcCopyAllFile("in", "all\\"), 4);
  EXPECT_EQ(ReadFile("all/c.dat"), "c");
  EXPECT_FALSE(Exists("all/sub.txt"));

  EXPECT_EQ(vcCopyGroupFile("in\\*.none", "out"), 0);
  EXPECT_EQ(vcCopyGroupFile("nowhere\\*.*", "out"), 0);
  EXPECT_EQ(vcCopyAllFile("in", "nowhere"), 0);
  EXPECT_EQ(vcCopyAllFile(nullptr, "out"), 0);
}

TEST_F(FileServicesTest, AppendAddsTheSourceBytes) {
  std::string bytes("a\0b\r\n", 5);
  WriteFile("part", bytes);
  ReadOnly("whole", "head");
  EXPECT_EQ(vcAppendFile("part", "whole"), 0);
  EXPECT_EQ(vcAppendFile("part", "whole"), 0);
  EXPECT_EQ(ReadFile("whole"), "head" + bytes + bytes);
  EXPECT_EQ(vcAppendFile("part", "fresh"), 0);
  EXPECT_EQ(ReadFile("fresh"), bytes);
  EXPECT_EQ(vcAppendFile("missing", "whole"), -1);
  EXPECT_EQ(vcAppendFile("part", "no\\folder\\x"), -1);
}

TEST_F(FileServicesTest, DeletionsSingleAndByPattern) {
  ReadOnly("ro.txt", "x");
  EXPECT_EQ(vcDeleteFile("ro.txt"), 1);
  EXPECT_FALSE(Exists("ro.txt"));
  EXPECT_EQ(vcDeleteFile("ro.txt"), 0);
  tqtest::MakeFolder("folder");
  EXPECT_EQ(vcDeleteFile("folder"), 0);
  EXPECT_EQ(vcUnlink("folder"), -1);
  EXPECT_TRUE(Exists("folder"));

  WriteFile("u", "x");
  EXPECT_EQ(vcUnlink("u"), 0);
  EXPECT_EQ(vcUnlink("u"), -1);
  WriteFile("r1", "x");
  EXPECT_EQ(vcRename("r1", "folder\\r2"), 0);
  EXPECT_EQ(ReadFile("folder/r2"), "x");
  EXPECT_EQ(vcRename("r1", "r3"), -1);

  for (const char* f : {"t/1.tmp", "t/2.TMP", "t/keep.txt", "t/st5unst.000", "t/st5unst.log", "t/st5unstx.1"}) {
    tqtest::MakeFolder("t");
    ReadOnly(f, "x");
  }
  EXPECT_EQ(vcBatDeleteFile("t\\*.tmp"), 2);
  EXPECT_EQ(vcBatDeleteFile("t\\*.tmp"), 0);
  EXPECT_EQ(vcDeleteSt5unst("t"), 2);
  std::set<std::string> left;
  FindFileState rec{};
  std::strcpy(rec.pattern, "t\\*.*");
  char name[260];
  while (FindFile(&rec, name) > 0) left.insert(name);
  MyFindClose(&rec);
  EXPECT_EQ(left, (std::set<std::string>{".", "..", "keep.txt", "st5unstx.1"}));
}

TEST_F(FileServicesTest, DeleteAllFileRemovesTheFolderUnlessItHasSubfolders) {
  tqtest::MakeFolder("flat");
  ReadOnly("flat/a", "1");
  WriteFile("flat/b.c", "2");
  EXPECT_EQ(vcDeleteAllFile("flat"), 1);
  EXPECT_FALSE(Exists("flat"));
  EXPECT_EQ(vcDeleteAllFile("flat"), 0);

  tqtest::MakeFolder("deep");
  tqtest::MakeFolder("deep/sub");
  WriteFile("deep/a", "1");
  WriteFile("deep/sub/b", "2");
  EXPECT_EQ(vcDeleteAllFile((dir() + "\\deep\\").c_str()), 0);
  EXPECT_FALSE(Exists("deep/a"));
  EXPECT_EQ(ReadFile("deep/sub/b"), "2");
}

TEST_F(FileServicesTest, TheTemporaryFileAddsNoLineEnds) {
  EXPECT_EQ(vcWriteTmpFileLine("lost"), -1);
  EXPECT_EQ(vcCloseTmpFile(), -1);
  ASSERT_EQ(vcOpenTmpFile("tmp.txt"), 1);
  EXPECT_EQ(vcWriteTmpFileLine("first"), 1);
  EXPECT_EQ(vcWriteTmpFileLine(G(u8"第二").c_str()), 1);
  // Opening again closes the first file and starts anew.
  ASSERT_EQ(vcOpenTmpFile("tmp2.txt"), 1);
  EXPECT_EQ(ReadFile("tmp.txt"), "first" + G(u8"第二"));
  EXPECT_EQ(vcWriteTmpFileLine("x\r\n"), 1);
  EXPECT_EQ(vcCloseTmpFile(), 0);
  EXPECT_EQ(vcCloseTmpFile(), -1);
  EXPECT_EQ(ReadFile("tmp2.txt"), "x\r\n");
  EXPECT_EQ(vcOpenTmpFile("no\\folder\\tmp"), -1);
  EXPECT_EQ(vcWriteTmpFileLine("x"), -1);
}

TEST_F(FileServicesTest, RecordFilesWriteAndReadLines) {
  FileForVb rec;
  std::memset(&rec, 0x5A, sizeof rec);
  ASSERT_EQ(vcOpenFileForVb(&rec, "lines.txt", "wb"), 1);
  EXPECT_STREQ(rec.path, "lines.txt");
  EXPECT_EQ(vcWriteFileForVb(&rec, "  \tpadded  "), 1);
  EXPECT_EQ(vcWriteFileForVbALine(&rec, ""), 1);
  EXPECT_EQ(vcWriteFileForVbALine(&rec, G(u8"中文行").c_str()), 1);
  EXPECT_EQ(vcWriteFileForVb(&rec, "0123456789"), 1);
  EXPECT_EQ(vcCloseFileForVb(&rec.hFile), 0);
  EXPECT_EQ(vcWriteFileForVb(&rec, "after close"), -1);
  EXPECT_EQ(ReadFile("lines.txt"), "  \tpadded  \r\n" + G(u8"中文行") + "\r\n0123456789");

  struct Read {
    int size, left, right;
    const char* text;
  } reads[] = {
      {100, 1, 1, "padded"},  {100, 0, 0, nullptr},  // the Chinese line with its line end
      {5, 0, 0, "0123"},      {5, 1, 1, "4567"},
      {100, 0, 1, "89"},
  };
  ASSERT_EQ(vcOpenFileForVb(&rec, "lines.txt", "rb"), 1);
  for (const Read& r : reads) {
    char buf[100];
    std::string want = r.text ? r.text : G(u8"中文行") + "\r\n";
    EXPECT_EQ(vcReadFileForVb(&rec, buf, r.size, r.left, r.right), static_cast<int>(want.size()));
    EXPECT_EQ(std::string(buf), want);
  }
  char buf[8];
  EXPECT_EQ(vcReadFileForVb(&rec, buf, 8, 1, 1), -1);
  EXPECT_EQ(vcReadFileForVb(&rec, buf, 1, 1, 1), -1);
  vcCloseFileForVb(&rec.hFile);

  // A missing file; a path longer than the record cut before a character.
  EXPECT_EQ(vcOpenFileForVb(&rec, "missing.txt", "rb"), -1);
  EXPECT_EQ(rec.hFile, 0u);
  EXPECT_EQ(vcReadFileForVb(&rec, buf, 8, 0, 0), -1);
  std::string longPath = "x";
  for (int i = 0; i < 150; ++i) longPath += G(u8"长");
  EXPECT_EQ(vcOpenFileForVb(&rec, longPath.c_str(), "rb"), -1);
  EXPECT_EQ(std::strlen(rec.path), 259u);
  EXPECT_EQ(std::string(rec.path), longPath.substr(0, 259));
  EXPECT_EQ(vcOpenFileForVb(&rec, ("y" + longPath).c_str(), "rb"), -1);
  EXPECT_EQ(std::strlen(rec.path), 258u);
}

TEST_F(FileServicesTest, IntegerArrayFiles) {
  const int32_t values[] = {1, -2, 0x12345678};
  EXPECT_EQ(vcWriteIntArrayToFile("ints.dat", values, 3), 3);
  EXPECT_EQ(ReadFile("ints.dat"), tqtest::Ints({1, -2, 0x12345678}));
  EXPECT_EQ(vcGetIntArrayFileElements("ints.dat"), 3);
  int32_t back[4] = {9, 9, 9, 9};
  EXPECT_EQ(vcReadIntArrayFromFile("ints.dat", back, 2), 2);
  EXPECT_EQ(back[1], -2);
  EXPECT_EQ(back[2], 9);
  EXPECT_EQ(vcReadIntArrayFromFile("ints.dat", back, 4), 3);
  EXPECT_EQ(back[2], 0x12345678);
  EXPECT_EQ(back[3], 9);
  int32_t untouched[2] = {7, 7};
  EXPECT_EQ(vcReadIntArrayFromFile("ints.dat", untouched, -1), 0);
  EXPECT_EQ(untouched[0], 7);

  WriteFile("ten", std::string(10, '\1'));
  EXPECT_EQ(vcGetIntArrayFileElements("ten"), 2);
  EXPECT_EQ(vcWriteIntArrayToFile("empty.dat", values, 0), 0);
  EXPECT_EQ(ReadFile("empty.dat"), "");
  for (const char* missing : {"missing.dat", "no\\folder\\x"}) {
    EXPECT_EQ(vcGetIntArrayFileElements(missing), 0);
    EXPECT_EQ(vcReadIntArrayFromFile(missing, back, 1), 0);
  }
  EXPECT_EQ(vcWriteIntArrayToFile("no\\folder\\x", values, 3), 0);
}

}  // namespace
