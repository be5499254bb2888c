// The compact dictionary behind its handles, its conversion from the classic
// files and the word list with meanings.
#include <cstring>

#include "dict_util.h"

using namespace tqtest;

namespace {

class EcDictTest : public DictTest {
 protected:
  // Handles opened here are closed with the test.
  int OpenWords(char* work = nullptr) {
    return handles_.emplace_back(vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", work));
  }
  int OpenExprs() {
    return handles_.emplace_back(vcEcDict_Open("dictlib\\vlkdictexp.idx", "dictlib\\vlkdictexp.lib", nullptr));
  }
  void TearDown() override {
    for (int h : handles_) vcEcDict_Close(h);
    DictTest::TearDown();
  }
  std::string Current(int h) {
    char out[64];
    vcEcDict_GetResultWord(h, out);
    return out;
  }
  std::vector<int> handles_;
};

TEST_F(EcDictTest, SearchOutcomes) {
  Build({Entry({"big", "big", "adj."}), Entry({"run", "rAn", "v."}), Entry({"stop", "stop", "v."})});
  int h = OpenWords();
  ASSERT_GT(h, 0);
  // "running" finds its base form, not the input. "bigger" has no base form
  // by rule; the closest record is the one behind the last record read
  // (run), which is stop.
  struct {
    const char* key;
    int base, closest, result;
    const char* word;
  } cases[] = {{"RUN", 1, 0, 1, "run"}, {"running", 1, 0, 2, "run"}, {"bigger", 1, 1, 3, "stop"},
               {"running", 0, 1, 3, "stop"}};
  for (const auto& c : cases) {
    EXPECT_EQ(vcEcDict_Search(h, c.key, c.base, c.closest), 1) << c.key;
    EXPECT_EQ(vcEcDict_GetSeachResult(h), c.result) << c.key;
    EXPECT_EQ(Current(h), c.word) << c.key;
  }
  EXPECT_EQ(vcEcDict_GetWordGrade(h), 21);

  for (int base : {0, 1}) {
    EXPECT_EQ(vcEcDict_Search(h, "bigger", base, 0), -1);
    EXPECT_EQ(vcEcDict_GetSeachResult(h), 3);
    EXPECT_EQ(vcEcDict_GetWordGrade(h), -1);
    EXPECT_EQ(vcEcDict_GetDetailLength(h, 0), 0);
    EXPECT_EQ(Current(h), "");
    char mean[64] = "x", pron[64] = "x", out[64];
    vcEcDict_GetMeanOrPron(h, mean, pron);
    EXPECT_STREQ(mean, "");
    EXPECT_STREQ(pron, "");
    EXPECT_EQ(vcEcDict_GetAllDetails(h, out), 0);
    EXPECT_EQ(vcEcDict_GetOneDetail(h, out, 0), 0);
    EXPECT_EQ(vcEcDict_FillListWithEnglish(h, 0), -1);
    // The lengths still come from the record image: stop's "[stop]\r\nv.".
    uint32_t lengths[7] = {0};
    vcEcDict_GetDetailLengthArray(h, lengths);
    EXPECT_EQ(lengths[0], 10u);
  }
}

TEST_F(EcDictTest, EntryAccessors) {
  Build({Entry({"a", "x", "first"}), Entry({"bare", "-", "[x]ab"}), Entry({"c", "c", "m\\nn", "expl", "", "", "", "",
                                                                         "quick#slow"})});
  char buffer[256];
  int h = OpenWords(buffer);
  ASSERT_GT(h, 0);
  ASSERT_EQ(vcEcDict_Search(h, "c", 0, 0), 1);
  char mean[64], pron[64], out[256];
  vcEcDict_GetMeanOrPron(h, mean, pron);
  EXPECT_STREQ(pron, "[c]");
  EXPECT_STREQ(mean, "m\r\nn");
  EXPECT_EQ(vcEcDict_GetDetailLength(h, 1), 4);
  EXPECT_EQ(vcEcDict_GetOneDetail(h, out, 1), 4);
  EXPECT_STREQ(out, "expl");
  EXPECT_EQ(vcEcDict_GetOneDetail(h, nullptr, 0), 9);  // into the work buffer
  EXPECT_STREQ(buffer, "[c]\r\nm\r\nn");
  EXPECT_EQ(vcEcDict_GetAllDetails(h, out), 13 + vcEcDict_GetDetailLength(h, 6));
  int list = Window(), syn = Window(), ant = Window();
  EXPECT_EQ(vcEcDict_FillListWithEnglish(h, list), 2);  // the third record
  EXPECT_EQ(tqHost_GetListCount(list), 3);
  vcEcDict_FillRelatedWordList(h, syn, ant);
  EXPECT_EQ(tqHost_GetListCount(syn), 1);
  EXPECT_EQ(tqHost_GetListCount(ant), 1);
  // The meaning always starts three bytes behind the "]".
  ASSERT_EQ(vcEcDict_Search(h, "bare", 0, 0), 1);
  vcEcDict_GetMeanOrPron(h, mean, nullptr);
  EXPECT_STREQ(mean, "");
}

TEST_F(EcDictTest, HandleTable) {
  Build({Entry({"a"})});
  std::vector<int> handles;
  for (int i = 0; i < 19; ++i) handles.push_back(OpenWords());
  EXPECT_EQ(handles.front(), 1);
  EXPECT_EQ(handles.back(), 19);
  EXPECT_EQ(OpenWords(), -1);
  vcEcDict_Close(7);
  vcEcDict_Close(7);  // an empty slot is ignored
  EXPECT_EQ(vcEcDict_Search(7, "a", 1, 1), -1);
  char out[8] = "x";
  EXPECT_EQ(vcEcDict_GetResultWord(7, out), -1);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\missing.lib", nullptr), -1);
  EXPECT_EQ(OpenWords(), 7);
}

TEST_F(EcDictTest, WildcardScan) {
  Build({Entry({"big"}), Entry({"run"}), Entry({"stop"})});
  int h = OpenWords();
  // The scan steps 48 bytes through 96-byte records: six reads over three
  // records, and the three that fail at the end test stop again.
  char star[8] = "*";
  char words[128];
  EXPECT_EQ(vcEcDict_WildSearch(h, star, words, 0, 0), 28);
  EXPECT_EQ(std::string(words, 28), std::string("big\0run\0stop\0stop\0stop\0stop\0", 28));
  int list = Window(), bar = Window();
  // No lower-case prefix: the range runs from the record behind the first
  // (run) to the last, read as run, stop and stop again.
  char s[8] = "S*";
  EXPECT_EQ(vcEcDict_WildSearch(h, s, nullptr, list, bar), 10);
  EXPECT_STREQ(s, "s*");
  int low = -1, high = -1;
  tqHost_GetProgressRange(bar, &low, &high);
  EXPECT_EQ(high, 100);
  char st[8] = "st*p";
  EXPECT_EQ(vcEcDict_WildSearch(h, st, nullptr, list, 0), 5);
  // The range of a prefix starts at the closest record of the prefix: for
  // "r" that is the record behind run.
  char r[8] = "r*";
  EXPECT_EQ(vcEcDict_WildSearch(h, r, nullptr, 0, 0), 0);
  char none[8] = "";
  EXPECT_EQ(vcEcDict_WildSearch(h, none, nullptr, 0, 0), 0);
}

TEST_F(EcDictTest, OldDictToNewMatchesTheBuiltFiles) {
  Build({Entry({"alpha", "a", "m"}), Entry({"graded", "", "m", "", "", "", "", "", "", "5"}),
         Entry({"look after", "", G("照顾"), "", "sample"})});
  std::string built_words = tqtest::ReadFile("dictlib/vlkdictec.idx");
  std::string built_exprs = tqtest::ReadFile("dictlib/vlkdictexp.idx");
  for (const char* f : {"dictlib/vlkdictec.idx", "dictlib/vlkdictec.lib", "dictlib/vlkdictexp.idx"}) std::remove(f);
  ASSERT_EQ(vcOldDictToNew(), 1);
  EXPECT_EQ(tqtest::ReadFile("dictlib/vlkdictec.idx"), built_words);
  EXPECT_EQ(tqtest::ReadFile("dictlib/vlkdictexp.idx"), built_exprs);
  EXPECT_EQ(tqtest::ReadFile("dictlib/vlkdictec.lib"), tqtest::ReadFile("dictlib/hmorec.lib"));
  int h = OpenWords();
  ASSERT_EQ(vcEcDict_Search(h, "alpha", 0, 0), 1);
  EXPECT_EQ(vcEcDict_GetWordGrade(h), 21);
  ASSERT_EQ(vcEcDict_Search(h, "graded", 0, 0), 1);
  EXPECT_EQ(vcEcDict_GetWordGrade(h), 5);
  vcEcDict_Close(h);
  int x = OpenExprs();
  ASSERT_EQ(vcEcDict_Search(x, "look after", 0, 0), 1);
  char out[64];
  EXPECT_EQ(vcEcDict_GetOneDetail(x, out, 2), 6);
  EXPECT_STREQ(out, "sample");
  vcEcDict_Close(x);
  std::remove("dictlib/hmorexp.idx");
  EXPECT_EQ(vcOldDictToNew(), -1);
}

TEST_F(EcDictTest, ConversionUnderAnOpenHandleShrinksTheIndexSafely) {
  std::vector<std::string> lines;
  for (int i = 0; i < 200; ++i) lines.push_back(Entry({"w" + std::to_string(1000 + i)}));
  Build(lines);
  int h = OpenWords();
  ASSERT_EQ(vcEcDict_Search(h, "w1199", 0, 0), 1);
  // A one-word classic pair converted over the open compact index.
  Build({Entry({"zebra", "z", "m"})}, "one");
  tqtest::WriteFile("dictlib/hmorec.idx", tqtest::ReadFile("one/dictlib/hmorec.idx"));
  tqtest::WriteFile("dictlib/hmorec.lib", tqtest::ReadFile("one/dictlib/hmorec.lib"));
  ASSERT_EQ(vcOldDictToNew(), 1);
  // A key behind the one record would step into what the index held before.
  EXPECT_EQ(vcEcDict_Search(h, "zz", 0, 1), 1);
  EXPECT_EQ(Current(h), "zebra");
  char star[4] = "*", words[64];
  EXPECT_EQ(vcEcDict_WildSearch(h, star, words, 0, 0), 12);  // zebra, twice
}

TEST_F(EcDictTest, AppendMean) {
  Build({Entry({"apple", "", G("苹果")}), Entry({"pear", "", G("梨\\n第二行")}), Entry({"look after", "", G("照顾")})});
  int words = OpenWords();
  int exprs = OpenExprs();
  tqtest::WriteFile("list.txt", "  apple\r\n" + G("自带的意思") + "\r\n\r\npear\r\nlook after\r\n" + G("中文") +
                                    "\r\nzzz\r\n");
  std::string expected = "apple\r\n" + G("自带的意思") + "\r\npear\r\n" + G("梨") + "\r\nlook after\r\n" + G("中文") +
                         "\r\nzzz\r\n";
  // From the dictionaries alone.
  EXPECT_EQ(vcCmAppendMean(nullptr, words, exprs, "list.txt", "out.txt"), 0);
  EXPECT_EQ(tqtest::ReadFile("out.txt"), expected);
  EXPECT_FALSE(tqtest::ReadFile("list.txt").empty());
  // The mean library first; the same file as source and target.
  MeanLibObject m;
  ASSERT_EQ(vcCmOpenMeanLib(&m, "dictlib\\meanlib.dat"), 1);
  tqtest::WriteFile("list.txt", "pear\r\nnothing\r\n");
  EXPECT_EQ(vcCmAppendMean(&m, 0, 0, "list.txt", "LIST.TXT"), 0);
  EXPECT_EQ(tqtest::ReadFile("LIST.TXT"), "pear\r\n" + G("梨") + "\r\nnothing\r\n");
  vcCmCloseMeanLib(&m);
  EXPECT_EQ(vcCmAppendMean(nullptr, 0, 0, "missing.txt", "out.txt"), -1);
}

TEST_F(DictTest, LookupCommandOnTheSample) {
  std::string out;
  std::string sample = std::string(TQ_SOURCE_DIR) + "/data/sample/dict_source.txt";
  ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " dict build " + sample + " -o dict", &out), 0);
  ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " lookup studied --dict dict", &out), 0);
  EXPECT_NE(out.find("study (base form"), std::string::npos) << out;
  ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " lookup --wild 'stud*' --dict dict", &out), 0);
  // The range starts behind the record the bisection ended on: "student"
  // is passed over, as front ends have always seen it.
  EXPECT_NE(out.find("studio\nstudy\n"), std::string::npos) << out;
}

}  // namespace
