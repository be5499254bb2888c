// Word books at the boundary: the handle answers, the exact bytes of index,
// library and tag file, and the reader's limits on hostile libraries.
#include <cstring>
#include <fstream>
#include <string>

#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

class BookTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    book_ = vcCOrvexBook_New();
    ASSERT_GT(book_, 0);
    idx_ = Path("words.idx");
    vcCOrvexBook_SetBookFileName(book_, idx_.c_str(), nullptr);
  }
  void TearDown() override {
    vcCOrvexBook_CloseIdx(book_);
    vcCOrvexBook_CloseLib(book_);
    vcCOrvexBook_Delete(book_);
    TempDirTest::TearDown();
  }
  void Append(const std::string& word, const std::string& expl, const std::string& pron,
              const char* extra1 = nullptr, const char* extra2 = nullptr, int first_line_only = 0) {
    ASSERT_EQ(vcCOrvexBook_AppendWord(book_, 0, word.c_str(), expl.c_str(), pron.c_str(), extra1, extra2,
                                      first_line_only),
              1);
  }
  struct Entry {
    char word[4096], expl[8192], pron[8192], extra1[8192], extra2[8192];
    int32_t cls;
  };
  Entry Read(int no) {
    Entry e;
    std::memset(e.word, 'x', sizeof e.word);
    std::memset(e.expl, 'x', sizeof e.expl);
    e.cls = -77;
    EXPECT_GE(vcCOrvexBook_OpenIdx(book_, "rb"), 0);
    EXPECT_GE(vcCOrvexBook_OpenLib(book_, "rb"), 0);
    vcCOrvexBook_GetWordByNo(book_, no, e.word, e.expl, e.pron, e.extra1, e.extra2, &e.cls);
    vcCOrvexBook_CloseIdx(book_);
    vcCOrvexBook_CloseLib(book_);
    return e;
  }
  std::string Lib() const { return idx_ + ".lib"; }

  int book_ = 0;
  std::string idx_;
};

TEST(BookHandles, LowestFreeSlotAndFullTable) {
  EXPECT_EQ(vcCOrvexBook_New(), 1);
  vcCOrvexBook_Delete(1);
  EXPECT_EQ(vcCOrvexBook_New(), 1);
  for (int expected = 2; expected <= 29; ++expected) EXPECT_EQ(vcCOrvexBook_New(), expected);
  EXPECT_EQ(vcCOrvexBook_New(), 0);  // the thirtieth
  vcCOrvexBook_Delete(17);
  EXPECT_EQ(vcCOrvexBook_New(), 17);
  for (int h = 1; h <= 29; ++h) vcCOrvexBook_Delete(h);
}

TEST(BookHandles, HandleZeroAnswers) {
  int32_t ints[4] = {0, 0, 0, 0};
  EXPECT_EQ(std::vector<int>({vcCOrvexBook_SetBookFileName(0, "a.idx", nullptr), vcCOrvexBook_CloseIdx(0),
                              vcCOrvexBook_CloseLib(0),
                              vcCOrvexBook_AppendWord(0, 0, "a", "b", "c", nullptr, nullptr, 0),
                              vcCOrvexBook_AddWord(0, 0, 0, "a", "b", "c", nullptr, nullptr, 0, 0),
                              vcCOrvexBook_IfWordInBook(0, "a"), vcCOrvexBook_OpenIdx(0, "rb"),
                              vcCOrvexBook_ReadWholeIdx(0, ints), vcCOrvexBook_WriteWholeIdx(0, ints, 4),
                              vcCOrvexBook_OpenLib(0, "rb"), vcCOrvexBook_DeleteWord(0, 0),
                              vcCOrvexBook_GetBookWordNum(0)}),
            std::vector<int>({0, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1}));
  char word[8] = "keep";
  vcCOrvexBook_GetWordByNo(0, 0, word, nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(word, "keep");
  vcCOrvexBook_Delete(0);
}

TEST_F(BookTest, AppendWritesExactBytes) {
  Append("able", G("能够的"), "eibl");
  EXPECT_EQ(ReadFile(Lib()), std::string("\0able[eibl]", 11) + G("能够的") + std::string("\0\1\0\0\xff", 5));
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({0}));

  // The second entry's offset is the library's previous length; brackets the
  // caller gave are not doubled; extras are stored between the separators.
  size_t first_len = ReadFile(Lib()).size();
  Append("book", G("书"), "[buk]", "e1", "e2");
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({0, static_cast<int32_t>(first_len)}));
  EXPECT_EQ(ReadFile(Lib()).substr(first_len),
            std::string("\0book[buk]", 10) + G("书") + std::string("\0\1e1\0e2\0\xff", 9));

  Entry e = Read(1);
  EXPECT_EQ(std::vector<std::string>({e.word, e.pron, e.expl, e.extra1, e.extra2}),
            std::vector<std::string>({"book", "[buk]", G("书"), "e1", "e2"}));
  EXPECT_EQ(e.cls, -77);  // no class mark: the output is left alone
  EXPECT_EQ(vcCOrvexBook_GetBookWordNum(book_), 2);
}

TEST_F(BookTest, ClassMarkDollarAndFirstLine) {
  Append("able", "{12}" + G("能够的"), "eibl");
  Append("bad", "{1x}" + G("坏的"), "bad");
  Append("cut", G("切") + "$" + G("割"), "kat");
  Append("two", G("第一行") + "\r\n" + G("第二行"), "tu:", nullptr, nullptr, 1);

  // A mark that is no number stays in the text and sets no class.
  const std::pair<std::string, int> want[] = {{G("能够的"), 12}, {"{1x}" + G("坏的"), -77}, {G("切"), -77}, {G("第一行"), -77}};
  for (int i = 0; i < 4; ++i) {
    Entry e = Read(i);
    EXPECT_EQ(std::make_pair(std::string(e.expl), e.cls), want[i]) << i;
  }
}

TEST_F(BookTest, NullOutputsAreReadPast) {
  Append("able", "{03}" + G("能够的"), "eibl", "x1", "x2");
  ASSERT_EQ(vcCOrvexBook_OpenIdx(book_, "rb"), 1);
  ASSERT_GT(vcCOrvexBook_OpenLib(book_, "rb"), 0);
  char extra2[64];
  int32_t cls = 0;
  vcCOrvexBook_GetWordByNo(book_, 0, nullptr, nullptr, nullptr, nullptr, extra2, &cls);
  EXPECT_STREQ(extra2, "x2");
  EXPECT_EQ(cls, 3);
  int32_t offset = 0;
  char word[64];
  vcCOrvexBook_GetWord(book_, &offset, word, nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(word, "able");
}

TEST_F(BookTest, LongWordIsCutAndRestReadAsPronunciation) {
  std::string word(200, 'w');
  Append(word, "m", "p");
  Entry e = Read(0);
  EXPECT_EQ(std::string(e.word), std::string(196, 'w'));
  EXPECT_EQ(std::string(e.pron), "[wwww[p]");
  EXPECT_STREQ(e.expl, "m");
}

TEST_F(BookTest, SecondExtraEndsAtSixOnlyPastItsLimit) {
  std::string early = "ab\x06" "cd";
  std::string late = std::string(3001, 'z') + "\x06" "tail";
  Append("a", "m", "p", nullptr, early.c_str());
  Append("b", "m", "p", nullptr, late.c_str());
  EXPECT_EQ(std::string(Read(0).extra2), early);
  EXPECT_EQ(std::string(Read(1).extra2), std::string(3001, 'z'));
}

TEST_F(BookTest, AddWordInsertsIntoIndexOnly) {
  Append("able", "m1", "p1");
  std::string lib_before = ReadFile(Lib());
  int offset = vcCOrvexBook_AddWord(book_, 0, 0, "zoo", "m2", "p2", nullptr, nullptr, 0, 0);
  EXPECT_EQ(offset, static_cast<int>(lib_before.size()));
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({offset, 0}));
  EXPECT_EQ(ReadFile(Lib()).substr(0, lib_before.size()), lib_before);
  EXPECT_STREQ(Read(0).word, "zoo");
  EXPECT_STREQ(Read(1).word, "able");
  EXPECT_FALSE(std::ifstream("tmpidx.idx").good());  // the temporary is gone

  // Past the end the new offset goes last; below 0 it is appended as well.
  int at_end = vcCOrvexBook_AddWord(book_, 0, 9, "end", "m", "p", nullptr, nullptr, 0, 0);
  EXPECT_EQ(ReadInts(idx_).back(), at_end);
  vcCOrvexBook_AddWord(book_, 0, -1, "neg", "m", "p", nullptr, nullptr, 0, 0);
  EXPECT_EQ(vcCOrvexBook_GetBookWordNum(book_), 4);
}

TEST_F(BookTest, DeleteWordKeepsLibrary) {
  Append("able", "m1", "p1");
  Append("book", "m2", "p2");
  Append("cat", "m3", "p3");
  std::string lib = ReadFile(Lib());
  std::vector<int32_t> offsets = ReadInts(idx_);
  vcCOrvexBook_DeleteWord(book_, 0);
  EXPECT_EQ(vcCOrvexBook_GetBookWordNum(book_), 2);
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({offsets[1], offsets[2]}));
  EXPECT_EQ(ReadFile(Lib()), lib);
  vcCOrvexBook_DeleteWord(book_, 99);  // past the end drops the last
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({offsets[1]}));
}

TEST_F(BookTest, WholeIndexReadAndWrite) {
  int32_t values[3] = {7, 0x01020304, -1};
  EXPECT_EQ(vcCOrvexBook_WriteWholeIdx(book_, values, 3), 3);
  EXPECT_EQ(ReadFile(idx_), Ints({7, 0x01020304, -1}));
  int32_t back[3] = {};
  EXPECT_EQ(vcCOrvexBook_ReadWholeIdx(book_, back), 3);
  EXPECT_EQ(back[1], 0x01020304);
  vcCOrvexBook_SetBookFileName(book_, Path("none.idx").c_str(), nullptr);
  EXPECT_EQ(vcCOrvexBook_ReadWholeIdx(book_, back), 0);
}

TEST_F(BookTest, IfWordInBookIsExactAndClosesFiles) {
  Append("Able", "m", "p");
  Append("book ", "m", "p");
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "Able"), 1);
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "able"), 0);
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "book"), 0);
  EXPECT_EQ(vcCOrvexBook_CloseIdx(book_), 0);  // left closed
  std::remove(Lib().c_str());
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "Able"), -1);
  std::remove(idx_.c_str());
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "Able"), 0);
}

TEST_F(BookTest, LibraryPathAndDriveLetters) {
  // A named library, and a front end's Windows-style path to it.
  std::string win = "c:" + dir() + "/sub\\other.lib";
  ASSERT_EQ(system(("mkdir -p " + Path("sub")).c_str()), 0);
  vcCOrvexBook_SetBookFileName(book_, idx_.c_str(), win.c_str());
  Append("able", "m", "p");
  EXPECT_EQ(ReadFile(Path("sub/other.lib")).substr(1, 4), "able");
}

TEST_F(BookTest, TagEditsKeepHeader) {
  std::string tag = Path("words.idx.tag");
  std::string header;
  for (int i = 0; i < 100; ++i) header += Ints({i + 1000});
  WriteFile(tag, header + Ints({5, 6}));
  EXPECT_EQ(vcCOrvexBook_InsertTag(tag.c_str(), 0), 1);
  EXPECT_EQ(ReadFile(tag), header + Ints({0, 5, 6}));
  EXPECT_EQ(vcCOrvexBook_InsertTag(tag.c_str(), -1), 1);
  EXPECT_EQ(ReadFile(tag), header + Ints({0, 5, 6, 0}));
  EXPECT_EQ(vcCOrvexBook_DeleteTag(tag.c_str(), 1), 1);
  EXPECT_EQ(ReadFile(tag), header + Ints({0, 6, 0}));
  EXPECT_FALSE(std::ifstream("tmptag.tag").good());
  EXPECT_EQ(vcCOrvexBook_DeleteTag(Path("missing.tag").c_str(), 0), -1);
}

TEST_F(BookTest, HostileFilesGiveFailureValues) {
  EXPECT_EQ(vcCOrvexBook_OpenIdx(book_, "rb"), -1);  // missing
  EXPECT_EQ(vcCOrvexBook_OpenLib(book_, "rb"), -1);
  EXPECT_EQ(vcCOrvexBook_GetBookWordNum(book_), -1);
  EXPECT_EQ(vcCOrvexBook_DeleteWord(book_, 0), -1);

  // A truncated index: the partial entry is ignored.
  WriteFile(idx_, Ints({0}) + std::string("\x05\x00", 2));
  EXPECT_EQ(vcCOrvexBook_GetBookWordNum(book_), 1);
  // Entries without "]", without "[", cut in the middle, or pointing past the end.
  WriteFile(Lib(), std::string("\0word[pron without end", 22));
  Entry e = Read(0);
  EXPECT_STREQ(e.word, "word");
  EXPECT_STREQ(e.pron, "[pron without end");
  EXPECT_STREQ(e.expl, "");
  WriteFile(Lib(), std::string("\0wordonly", 9));
  e = Read(0);
  EXPECT_STREQ(e.word, "wordonly");
  EXPECT_STREQ(e.pron, "");
  WriteFile(idx_, Ints({1000000, -5}));
  e = Read(0);
  EXPECT_STREQ(e.word, "");
  e = Read(1);
  EXPECT_STREQ(e.expl, "");
  e = Read(7);  // past the index
  EXPECT_STREQ(e.word, "");
  EXPECT_EQ(vcCOrvexBook_IfWordInBook(book_, "x"), 0);
}

}  // namespace
