// Notebooks and the record functions at the boundary: the bytes of the three
// files through appends and rewrites, the quick readers' windows, tags, the
// message boxes, and hostile libraries.
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "core/sound_key.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

std::vector<std::string> g_boxes;

int RecordBox(const char* text, const char* title, unsigned type) {
  g_boxes.push_back(std::string(title) + "|" + text + "|" + std::to_string(type));
  return 1;
}

class NotebookTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    std::memset(&rec_, 0, sizeof rec_);
    idx_ = Path("nb.idx");
    g_boxes.clear();
    tqHost_SetMessageBoxHandler(RecordBox);
  }
  void TearDown() override {
    vcCloseBookIdx(&rec_);
    vcCloseBookLib(&rec_);
    tq::env::SetOpenFaultForTesting({});
    tqHost_SetMessageBoxHandler(nullptr);
    TempDirTest::TearDown();
  }
  void Add(const std::string& word, const std::string& pron, const std::string& expl, int first_line = 0) {
    ASSERT_EQ(vcFullAppendNotebook(idx_.c_str(), word.c_str(), expl.c_str(), pron.c_str(), first_line), 0);
  }
  void Open() {
    ASSERT_GE(vcOpenBookIdxAndReturnNum(&rec_, idx_.c_str()), 0);
    ASSERT_GE(vcOpenBookLib(&rec_, nullptr), 0);
  }
  // The word and explanation by the quick readers, into buffers of exactly
  // the documented sizes so that a write past them is caught.
  std::string Word(int offset) {
    std::vector<char> out(32);
    int n = vcGetEnglishWordFromBook(&rec_, offset, out.data());
    EXPECT_EQ(n, static_cast<int>(std::strlen(out.data())));
    return out.data();
  }
  std::string Explain(int offset, int* answer = nullptr) {
    std::vector<char> out(98);
    int n = vcGetExplainFromBook(&rec_, offset, out.data());
    if (answer) *answer = n;
    return out.data();
  }
  std::string Lib() const { return idx_ + ".lib"; }
  std::string Tag() const { return idx_ + ".tag"; }

  BookRecord rec_;
  std::string idx_;
};

TEST_F(NotebookTest, AppendsShareTheirSeparators) {
  Add("able", "[eibl]", G("能够的"));
  EXPECT_EQ(ReadFile(Lib()), std::string("\0able[eibl]", 11) + G("能够的") + std::string(1, '\0'));
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({0}));
  EXPECT_EQ(ReadFile(Tag()), std::string(404, '\0'));

  // The next entry starts at the 0 that ends the last one; the caller's
  // pronunciation is stored as given, and a first line is kept alone.
  size_t before = ReadFile(Lib()).size();
  Add("book", "buk", G("书") + "\r\n" + G("第二行"), 1);
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({0, static_cast<int32_t>(before - 1)}));
  EXPECT_EQ(ReadFile(Lib()).substr(before), "bookbuk" + G("书") + std::string(1, '\0'));
  EXPECT_EQ(ReadFile(Tag()).size(), 408u);
  EXPECT_EQ(vcGetOrvexNotebookWordNum(idx_.c_str()), 2);
  EXPECT_EQ(vcGetBookWordNum(idx_.c_str()), 2);
  EXPECT_EQ(vcGetBookWordNum(Path("none.idx").c_str()), 0);
  EXPECT_TRUE(g_boxes.empty());
}

TEST_F(NotebookTest, RecordReadersAgreeWithTheWordBook) {
  const std::vector<std::vector<std::string>> words = {
      {"able", "[eibl]", "{12}" + G("能够的")}, {"book", "[buk]", G("书")}, {"cat", "[]", ""}};
  for (const auto& w : words) Add(w[0], w[1], w[2]);

  // The opens set the separator and keep the path at their fixed places.
  std::memset(&rec_, 0x7f, sizeof rec_);
  ASSERT_EQ(vcOpenBookIdxAndReturnNum(&rec_, idx_.c_str()), 3);
  EXPECT_EQ(rec_.separator, 0);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&rec_) + 276), idx_);
  ASSERT_EQ(vcOpenBookLib(&rec_, nullptr), static_cast<int>(ReadFile(Lib()).size()));

  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx_.c_str(), nullptr);
  ASSERT_EQ(vcCOrvexBook_OpenIdx(book, "rb"), 3);
  ASSERT_GT(vcCOrvexBook_OpenLib(book, "rb"), 0);
  int32_t offsets[3];
  ASSERT_EQ(vcReadBookIndex(&rec_, offsets, 3), 0);
  for (int i = 0; i < 3; ++i) {
    char word[200], expl[400], pron[400];
    int32_t cls = -1;
    vcCOrvexBook_GetWordByNo(book, i, word, expl, pron, nullptr, nullptr, &cls);
    std::vector<char> by_no(32);
    EXPECT_EQ(vcGetEnglishWordFromBookByNo(&rec_, i, by_no.data()), static_cast<int>(words[i][0].size()));
    EXPECT_EQ(std::string(by_no.data()), word) << i;
    EXPECT_EQ(Word(offsets[i]), word) << i;
    int answer = 0;
    EXPECT_EQ(Explain(offsets[i], &answer), expl) << i;
    EXPECT_EQ(answer, static_cast<int>(std::strlen(expl)) + 1) << i;
    EXPECT_EQ(std::string(pron), words[i][1]) << i;
  }
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);

  // The index was read to its end: a further read comes short, and the
  // export starts where the index stands.
  EXPECT_EQ(vcReadBookIndex(&rec_, offsets, 1), -2);
  EXPECT_EQ(vcExportBookWords(&rec_, Path("none.txt").c_str()), 0);
  EXPECT_EQ(ReadFile(Path("none.txt")), "");
  vcCloseBookIdx(&rec_);
  EXPECT_EQ(rec_.idxFile, 0u);
  ASSERT_EQ(vcOpenBookIdxAndReturnNum(&rec_, idx_.c_str()), 3);
  EXPECT_EQ(vcExportBookWords(&rec_, Path("out.txt").c_str()), 0);
  EXPECT_EQ(ReadFile(Path("out.txt")), "able\r\n" + G("能够的") + "\r\nbook\r\n" + G("书") + "\r\ncat\r\n\r\n");
}

TEST_F(NotebookTest, QuickReadersCutAtTheirWindows) {
  struct Case {
    std::string word, pron, expl, want_word, want_expl;
  };
  const std::string chinese40 = G("一二三四五六七八九十一二三四五六七八九十一二三四五六七八九十一二三四五六七八九十");
  const std::vector<Case> cases = {
      {std::string(30, 'a'), "[p]", "m", std::string(30, 'a'), "m"},
      {std::string(31, 'b'), "[p]", "m", std::string(29, 'b'), "m"},
      {std::string(100, 'c'), "[p]", "m", std::string(29, 'c'), ""},  // "]" is past the window
      {"ab" + G("中文"), "[p]", "m", "ab", "m"},                       // Chinese at the word's end is dropped
      {"ab" + G("中") + "x", "[p]", "m", "ab" + G("中") + "x", "m"},
      {"w", "[p]", "{07}" + chinese40, "w", chinese40.substr(0, 98 - 4 - 4)},
      {"w", "[p]", "{0x}mm", "w", "{0x}mm"},
  };
  for (const Case& c : cases) Add(c.word, c.pron, c.expl);
  Open();
  std::vector<int32_t> offsets = ReadInts(idx_);
  for (size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(Word(offsets[i]), cases[i].want_word) << i;
    EXPECT_EQ(Explain(offsets[i]), cases[i].want_expl) << i;
  }
}

TEST_F(NotebookTest, DeletingWordsRewritesTheNotebook) {
  Add("able", "[eibl]", G("能够的"));
  Add("book", "[buk]", G("书"));
  Add("cat", "[kat]", G("猫"));
  std::vector<int32_t> offsets = ReadInts(idx_);
  std::vector<int32_t> tags(103, 0);
  tags[0] = 55;  // header values are not carried over
  std::tie(tags[100], tags[101], tags[102]) = std::make_tuple(7, 8, 9);

  // Keeping the middle word: it comes first with a separator on each side.
  Open();
  std::vector<int32_t> flags = {1, 0, 1};
  ASSERT_EQ(vcDeleteNoteBookWords(&rec_, offsets.data(), tags.data(), flags.data(), 3), 0);
  EXPECT_EQ(rec_.libFile, 0u);
  EXPECT_EQ(ReadInts(idx_), std::vector<int32_t>({0}));
  EXPECT_EQ(ReadFile(Lib()), std::string("\0book[buk]", 10) + G("书") + std::string(1, '\0'));
  std::string want_tags(400, '\0');
  want_tags += Ints({8});
  EXPECT_EQ(ReadFile(Tag()), want_tags);
  for (const char* temp : {"tmp.idx", "tmp.tag", "tmp.lib"}) EXPECT_FALSE(tq::env::Exists(temp)) << temp;
  vcCloseBookIdx(&rec_);

  // Two kept words stand back to back; an append after a rewrite still
  // reads back.
  Add("dog", "[dog]", G("狗"));
  Add("egg", "[eg]", G("蛋"));
  offsets = ReadInts(idx_);
  Open();
  flags = {0, 1, 0};
  ASSERT_EQ(vcDeleteNoteBookWords(&rec_, offsets.data(), tags.data(), flags.data(), 3), 0);
  vcCloseBookIdx(&rec_);
  Add("fig", "[fig]", G("无花果"));
  Open();
  std::vector<std::string> words;
  for (int32_t o : ReadInts(idx_)) words.push_back(Word(o) + "=" + Explain(o));
  EXPECT_EQ(words, std::vector<std::string>({"book=" + G("书"), "egg=" + G("蛋"), "fig=" + G("无花果")}));

  // Deleting every word leaves an empty notebook.
  offsets = ReadInts(idx_);
  flags = {1, 1, 1};
  ASSERT_EQ(vcDeleteNoteBookWords(&rec_, offsets.data(), tags.data(), flags.data(), 3), 0);
  EXPECT_FALSE(tq::env::Exists(idx_.c_str()) || tq::env::Exists(Tag().c_str()));
  EXPECT_EQ(ReadFile(Lib()), std::string(1, '\0'));
  EXPECT_EQ(vcGetOrvexNotebookWordNum(idx_.c_str()), 0);
}

TEST_F(NotebookTest, TagFiles) {
  WriteFile(idx_, std::string(40, '\0'));  // ten words, no tag file
  EXPECT_EQ(vcOpen_Read_CloseBookTag(&rec_, nullptr, idx_.c_str()), -1);
  std::vector<int32_t> buffer(110, -1);
  EXPECT_EQ(vcOpen_Read_CloseBookTag(&rec_, buffer.data(), idx_.c_str()), -1);
  ASSERT_EQ(vcOpenBookTagAndReturnNum(&rec_, idx_.c_str()), 10);
  EXPECT_EQ(ReadFile(Tag()), std::string(440, '\0'));
  std::vector<int32_t> back(110, -1);
  EXPECT_EQ(vcReadWordTagThenCloseTag(&rec_, back.data()), 0);
  EXPECT_EQ(back, std::vector<int32_t>(110, 0));
  EXPECT_EQ(rec_.tagFile, 0u);

  for (int i = 0; i < 110; ++i) buffer[i] = i * 3;
  EXPECT_EQ(vcWriteWordTagFile(&rec_, idx_.c_str(), buffer.data(), 10), 0);
  EXPECT_EQ(ReadFile(Tag()).size(), 440u);
  EXPECT_FALSE(tq::env::Exists("tqplsxht.apy"));

  // The name stored by the index open stands for the path.
  ASSERT_EQ(vcOpenBookIdxAndReturnNum(&rec_, idx_.c_str()), 10);
  ASSERT_EQ(vcOpenBookTagAndReturnNum(&rec_, nullptr), 10);
  EXPECT_EQ(vcReadWordTagThenCloseTag(&rec_, back.data()), 0);
  EXPECT_EQ(back, buffer);
  EXPECT_EQ(rec_.tagFile, 0u);
  EXPECT_EQ(vcReadWordTagThenCloseTag(&rec_, back.data()), -2);  // nothing open
  std::fill(back.begin(), back.end(), -1);
  EXPECT_EQ(vcOpen_Read_CloseBookTag(&rec_, back.data(), nullptr), 0);
  EXPECT_EQ(back, buffer);

  // A failed write leaves the tag file as it was.
  tq::env::SetOpenFaultForTesting([](const std::string& path, const char*) {
    return path.find("tqplsxht.apy") != std::string::npos;
  });
  EXPECT_EQ(vcWriteWordTagFile(&rec_, nullptr, std::vector<int32_t>(105, 0).data(), 5), -3);
  EXPECT_EQ(ReadFile(Tag()).size(), 440u);

  // Tags appended one by one start the file with its header.
  EXPECT_EQ(vcFullAppendBlankNoteTags(Path("x.idx").c_str(), 3), 0);
  EXPECT_EQ(vcFullAppendBlankNoteTags(Path("x.idx").c_str(), 2), 0);
  EXPECT_EQ(ReadFile(Path("x.idx.tag")), std::string(420, '\0'));
}

TEST_F(NotebookTest, FailuresAreToldInMessageBoxes) {
  const std::string title = G("墨岭英语");
  struct Case {
    const char* failing;  // the file whose open fails
    std::string box;
    int answer;
  };
  const std::vector<Case> cases = {
      {".lib", G("笔记本词库打不开."), -1},
      {".idx", G("笔记本文件打不开."), -1},
      {".tag", G("笔记本标志文件写失败"), 0},  // the word is in all the same
  };
  for (const Case& c : cases) {
    g_boxes.clear();
    std::string suffix = c.failing;
    tq::env::SetOpenFaultForTesting([suffix](const std::string& path, const char*) {
      return path.size() >= suffix.size() && path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0;
    });
    EXPECT_EQ(vcFullAppendNotebook(idx_.c_str(), "w", "m", "[p]", 0), c.answer) << c.failing;
    EXPECT_EQ(g_boxes, std::vector<std::string>({title + "|" + c.box + "|0"})) << c.failing;
  }
  tq::env::SetOpenFaultForTesting({});
  EXPECT_EQ(vcGetOrvexNotebookWordNum(idx_.c_str()), 1);  // only the last one went in

  // Writes that fail: a notebook whose library, then whose index, is a
  // full disk.
  for (const auto& [file, box] : {std::pair<std::string, std::string>{"full.idx.lib", G("笔记本词库写错误.")},
                                  {"full.idx", G("笔记本文件写错误.")}}) {
    g_boxes.clear();
    ASSERT_EQ(symlink("/dev/full", Path(file).c_str()), 0);
    EXPECT_EQ(vcFullAppendNotebook(Path("full.idx").c_str(), "w", "m", "[p]", 0), -1) << file;
    EXPECT_EQ(g_boxes, std::vector<std::string>({title + "|" + box + "|0"})) << file;
    for (const char* made : {"full.idx", "full.idx.lib", "full.idx.tag"}) std::remove(Path(made).c_str());
  }

  // The notebook's whole reset, through the record's name.
  Open();
  vcDeleteNoteBook(&rec_, nullptr);
  EXPECT_FALSE(tq::env::Exists(idx_.c_str()));
  EXPECT_EQ(ReadFile(Lib()), std::string(1, '\0'));
  EXPECT_EQ(vcMakeBlankNoteBook(Path("blank.lib").c_str()), 1);
  EXPECT_EQ(ReadFile(Path("blank.lib")), std::string(1, '\0'));
  EXPECT_EQ(vcMakeBlankNoteBook(Path("no/such/dir.lib").c_str()), -1);
}

TEST_F(NotebookTest, HostileLibrariesGiveFailureValues) {
  // Entries without "]", without "[", cut short by the end of the file, and
  // offsets past the end or before the start.
  const std::string lib = std::string("\0noclose[abc", 12) + std::string(1, '\0') + "noopen" + G("词") +
                          std::string(1, '\0') + "trunc[x";
  WriteFile(Lib(), lib);
  WriteFile(idx_, Ints({0, 12, 21, 5000}));
  Open();
  // "noopen" goes up to its separator, the Chinese tail dropped.
  const std::pair<int, std::string> words[] = {{0, "noclose"}, {12, "noopen"}, {21, "trunc"}, {5000, ""},
                                               {-1, ""},       {-100, ""},      {2147483647, ""}};
  for (const auto& [offset, word] : words) {
    int answer = -9;
    EXPECT_EQ(Word(offset), word) << offset;
    EXPECT_EQ(Explain(offset, &answer), "") << offset;
    if (offset == 0 || offset == 12) {
      EXPECT_EQ(answer, 0) << offset;
    }
  }
  std::vector<char> out(32, 'x');
  EXPECT_EQ(vcGetEnglishWordFromBookByNo(&rec_, 3, out.data()), 0);  // offset past the end
  EXPECT_EQ(vcGetEnglishWordFromBookByNo(&rec_, 4, out.data()), -1);  // past the index
  EXPECT_EQ(vcGetEnglishWordFromBookByNo(&rec_, -1, out.data()), -1);
  EXPECT_STREQ(out.data(), "");

  // A rewrite that meets an entry cut short leaves the notebook alone.
  const std::string idx_before = ReadFile(idx_);
  std::vector<int32_t> offsets = {0, 21}, flags = {0, 0};
  EXPECT_EQ(vcDeleteNoteBookWords(&rec_, offsets.data(), nullptr, flags.data(), 2), -1);
  EXPECT_EQ(ReadFile(idx_), idx_before);
  EXPECT_EQ(ReadFile(Lib()), lib);
  for (const char* temp : {"tmp.idx", "tmp.tag", "tmp.lib"}) EXPECT_FALSE(tq::env::Exists(temp)) << temp;
  offsets = {5000};
  flags = {0};
  vcCloseBookIdx(&rec_);
  Open();
  EXPECT_EQ(vcDeleteNoteBookWords(&rec_, offsets.data(), nullptr, flags.data(), 1), -1);

  // A tag file shorter than its header holds no tags; nothing is open at all.
  WriteFile(Tag(), std::string(10, '\0'));
  EXPECT_EQ(vcOpenBookTagAndReturnNum(&rec_, nullptr), 0);
  std::vector<int32_t> tags(100, -1);
  EXPECT_EQ(vcReadWordTagThenCloseTag(&rec_, tags.data()), 0);
  BookRecord empty;
  std::memset(&empty, 0, sizeof empty);
  EXPECT_EQ(vcGetEnglishWordFromBook(&empty, 0, out.data()), -1);
  EXPECT_EQ(vcGetExplainFromBook(&empty, 0, out.data()), 0);
  EXPECT_EQ(vcExportBookWords(&empty, Path("e.txt").c_str()), -3);
  EXPECT_EQ(vcReadBookIndex(&empty, tags.data(), 1), -2);
  EXPECT_EQ(vcOpenBookIdxAndReturnNum(&empty, Path("missing.idx").c_str()), -1);
  EXPECT_EQ(vcOpenBookLib(&empty, nullptr), -1);
  EXPECT_EQ(vcOpenBookIdxAndReturnNum(nullptr, idx_.c_str()), -1);
}

TEST_F(NotebookTest, LearningStatusIsTheWidestSpan) {
  auto record = [](size_t size, int day) {
    std::string r(size, '\0');
    r[14] = static_cast<char>(day & 0xFF);
    r[15] = static_cast<char>(day >> 8);
    return r;
  };
  EXPECT_EQ(vcGetLearningStatus(), 0);  // no files at all
  WriteFile("short.pag", std::string(23, '\0'));
  WriteFile("none.dir", record(128, 65535));
  EXPECT_EQ(vcGetLearningStatus(), 0);
  WriteFile("a.pag", record(24, 45000) + record(24, 65535) + record(24, 44990) + record(24, 45003) + "tail");
  EXPECT_EQ(vcGetLearningStatus(), 13);
  WriteFile("b.DIR", record(128, 100) + record(128, 140));  // the pattern ignores case
  EXPECT_EQ(vcGetLearningStatus(), 40);
  WriteFile("c.dir", record(24, 100) + record(24, 200));  // records of the wrong size
  EXPECT_EQ(vcGetLearningStatus(), 40);
}

TEST_F(NotebookTest, FontLibraryIsScrambledBothWays) {
  std::string plain(200, '\0');
  for (size_t i = 0; i < plain.size(); ++i) plain[i] = static_cast<char>(i * 7);
  WriteFile("font.src", plain);
  ASSERT_EQ(vcPrepareFontLib("font.src", "font.lib"), 1);
  std::string scrambled = ReadFile("font.lib");
  ASSERT_EQ(scrambled.size(), plain.size());
  for (size_t i = 0; i < plain.size(); ++i) {
    ASSERT_EQ(static_cast<unsigned char>(scrambled[i] ^ plain[i]), tq::kSoundKey[i % tq::kSoundKeyLength]) << i;
  }
  ASSERT_EQ(vcPrepareFontLib("font.lib", "font.back"), 1);
  EXPECT_EQ(ReadFile("font.back"), plain);
  EXPECT_EQ(vcPrepareFontLib("missing", "x"), -1);
  EXPECT_EQ(vcPrepareFontLib("font.src", "no/dir/x"), -1);
}

}  // namespace
