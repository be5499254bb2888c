// The classic dictionary, its detail text, the expression dictionary, the
// mean library and the word forms, at the boundary on files made by the tool.
#include <cstring>
#include <set>

#include "dict/word_forms.h"
#include "dict_util.h"

using namespace tqtest;

namespace {

TEST_F(DictTest, ExactSearchStartsAtTheFirstRecordAndLeavesThePosition) {
  Build({Entry({"b"}), Entry({"d"}), Entry({"Fox"})});
  OpenClassic();
  int list = Window();
  EXPECT_EQ(vcCmSearchWord(&d_, "b"), 21);
  EXPECT_EQ(vcFillListWithEnglish(&d_, list), 0);  // read only the first record
  EXPECT_EQ(tqHost_GetListCount(list), 3);
  EXPECT_EQ(vcCmSearchWord(&d_, "FOX"), 21);
  EXPECT_EQ(Word(d_), "Fox");  // the word as stored
  EXPECT_EQ(vcFillListWithEnglish(&d_, list), 2);
  // An absent word leaves the earlier record current.
  EXPECT_EQ(vcCmSearchWord(&d_, "c"), -1);
  EXPECT_EQ(Word(d_), "Fox");
  vcCmCloseDict(&d_);
  EXPECT_EQ(d_.hIdx, 0u);
  EXPECT_EQ(d_.hLib, 0u);
}

TEST_F(DictTest, ClosestIsTheRecordBehindTheLastOneRead) {
  Build({Entry({"b", "b", "m"}), Entry({"d", "d", "m"}), Entry({"f", "f", "m"})});
  OpenClassic();
  // "a" sorts before b, the first and only record read: its follower wins;
  // the last answers for all beyond.
  struct {
    const char* key;
    int answer;
    const char* word;
  } cases[] = {{"a", -21, "d"}, {"c", -21, "f"}, {"e", -21, "f"}, {"z", -21, "f"}, {"d", 21, "d"}};
  for (const auto& c : cases) {
    EXPECT_EQ(vcCmSearchWordClosest(&d_, c.key), c.answer) << c.key;
    EXPECT_EQ(Word(d_), c.word) << c.key;
  }
  char mean[64], pron[64];
  EXPECT_EQ(vcCmGetDictMeanAndPronClosest(&d_, "a", mean, pron), -21);
  EXPECT_STREQ(pron, "[d]");
}

TEST_F(DictTest, SmallAndEmptyIndexes) {
  Build({Entry({"m"}), Entry({"an expression"})});
  OpenClassic();
  EXPECT_EQ(vcCmSearchWord(&d_, "z"), -1);
  EXPECT_EQ(vcCmSearchWordClosest(&d_, "z"), -21);
  EXPECT_EQ(Word(d_), "m");
  vcCmCloseDict(&d_);
  // An index with no record at all: absent in both forms.
  tqtest::WriteFile("dictlib/empty.idx", "");
  ASSERT_EQ(vcCmOpenDictDirect(&d_, "dictlib\\empty.idx", "dictlib\\hmorec.lib", work_), 1);
  EXPECT_EQ(vcCmSearchWord(&d_, "m"), -1);
  EXPECT_EQ(vcCmSearchWordClosest(&d_, "m"), 0);
  vcCmCloseDict(&d_);
  // A failed library: the direct open clears both files, the plain open
  // leaves the index's closed number behind.
  EXPECT_EQ(vcCmOpenDictDirect(&d_, "dictlib\\hmorec.idx", "dictlib\\none.lib", work_), -1);
  EXPECT_EQ(d_.hIdx, 0u);
  EXPECT_EQ(vcCmOpenDict(&d_), -1);
  EXPECT_NE(d_.hIdx, 0u);
  EXPECT_EQ(d_.hLib, 0u);
  EXPECT_EQ(d_.recordSize, 52u);
  EXPECT_EQ(d_.wordFieldSize, 20u);
}

TEST_F(DictTest, LongWordsGradesAndSections) {
  const std::string big(70000, 'b');
  Build({Entry({"abcdefghijklmnopqrs", "x", "m"}), Entry({"graded", "", "", "expl", "", "", "", "", "", "7"}),
         Entry({"huge", "-", big, big, "", "", "", "", "", "9"}), Entry({"w", "p", "m1\\nm2", "", "s"})});
  OpenClassic();
  EXPECT_EQ(vcCmSearchWord(&d_, "abcdefghijklmnopqrsTUVWXYZ"), 21);  // by its first 19 bytes
  EXPECT_EQ(vcCmSearchWord(&d_, "graded"), 7);
  EXPECT_EQ(d_.lengths[1], 4u);  // the low half alone
  // Section 0's length keeps all 32 bits; a longer explanation was cut to
  // its 16 and left the grade alone.
  EXPECT_EQ(vcCmSearchWord(&d_, "huge"), 9);
  EXPECT_EQ(d_.lengths[0], 70000u);
  EXPECT_EQ(d_.lengths[1], 65535u);
  EXPECT_EQ(vcCmSearchWord(&d_, "w"), 21);
  char out[256];
  EXPECT_EQ(vcCmGetADetail(&d_, out, 0), 11);
  EXPECT_STREQ(out, "[p]\r\nm1\r\nm2");
  std::strcpy(out, "junk");
  EXPECT_EQ(vcCmGetADetail(&d_, out, 1), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(vcCmGetAllDetails(&d_, out), 12);
  EXPECT_STREQ(out, "[p]\r\nm1\r\nm2s");
  // The raw form of the composed text is the same.
  EXPECT_EQ(vcCmGetDetail(&d_, out, nullptr, 0), 12);
  EXPECT_STREQ(out, "[p]\r\nm1\r\nm2s");
}

TEST_F(DictTest, MeaningAndPronunciation) {
  Build({Entry({"w", "p", "m1\\nm2 "}), Entry({"bare", "-", "[x]ab"}), Entry({"plain", "-", "no bracket"})});
  OpenClassic();
  char mean[128], pron[128];
  // The byte behind "]" is skipped unseen; the meaning starts at the next.
  // No "]": the section's length and nothing else.
  struct {
    const char* word;
    int answer;
    const char *pron, *mean;
  } cases[] = {{"bare", 21, "[x]", "b"}, {"plain", 10, "", ""}, {"W", 21, "[p]", "m1\r\nm2"}};
  for (const auto& c : cases) {
    EXPECT_EQ(vcCmGetDictMeanAndPron(&d_, c.word, mean, pron), c.answer) << c.word;
    EXPECT_STREQ(pron, c.pron) << c.word;
    EXPECT_STREQ(mean, c.mean) << c.word;
  }
  EXPECT_STREQ(work_, "[p]\r\nm1\r\nm2 ");  // section 0 went through the work buffer
  EXPECT_EQ(vcCmGetDictMeanAndPron(&d_, "w", nullptr, pron), 21);
  EXPECT_EQ(vcCmGetDictMeanAndPron(&d_, "nothing", mean, pron), 0);
  EXPECT_EQ(vcCmGetDictPron(&d_, "nothing", pron), 0);
  EXPECT_STREQ(pron, "[]");
  EXPECT_EQ(vcCmGetDictPron(&d_, "w", pron), 21);
  EXPECT_STREQ(pron, "[p]");
}

TEST_F(DictTest, ComposedDetail) {
  std::string samples;
  for (int i = 1; i <= 13; ++i) samples += "\\nl" + std::to_string(i);
  std::string x49(49, 'x');
  Build({Entry({"c", "p", "mean", "expl\\n", samples, "ph", "f1", "r", "=" + G("同义词：a,b#c")}),
         Entry({"b50", "-", "", "[" + x49 + "]rest"}), Entry({"b51", "-", "", "[" + x49 + "x]rest"})});
  OpenClassic();
  std::vector<char> out(4096);
  ASSERT_EQ(vcCmSearchWord(&d_, "c"), 21);
  const uint32_t all[7] = {0, 1, 2, 3, 4, 5, 6};
  std::string lines;
  for (int i = 1; i <= 12; ++i) lines += "l" + std::to_string(i) + "\r\n";
  // The run of line ends that closes the explanation swallows the ones that
  // open the samples: one flag for the whole call.
  std::string expected = G("<<<词义>>>\nmean\r\n<<<英释>>>\r\nexpl\r\n<<<例句>>>\r\n") + lines +
                         G("<<<短语>>>\r\nph\r\nf1\r\n<<<词根>>>\r\nr\r\n<近义词>\r\n同义词：a, b\r\n<反义词>\r\nc");
  int chars = vcCmGetDetail(&d_, out.data(), all, 7);
  EXPECT_EQ(std::string(out.data()), expected);
  EXPECT_EQ(chars, vcMystrlen(expected.c_str()));
  // The caller's order, and only what it asks for. Leading the text, the
  // samples keep their opening line end, and it counts as one of twelve.
  const uint32_t two_then_zero[2] = {2, 0};
  vcCmGetDetail(&d_, out.data(), two_then_zero, 2);
  EXPECT_EQ(std::string(out.data()), G("<<<例句>>>\r\n\r\n") + lines.substr(0, lines.find("l12")) +
                                         G("<<<词义>>>\nmean"));
  const uint32_t none[1] = {9};
  EXPECT_EQ(vcCmGetDetail(&d_, out.data(), none, 1), 0);
  EXPECT_STREQ(out.data(), "");
  EXPECT_EQ(vcCmGetDetail(&d_, out.data(), all, -1), 0);
  // A bracket closing at 50 is a pronunciation; at 51 it is text.
  const uint32_t one[1] = {1};
  for (auto c : {std::make_pair("b50", std::string("rest")), std::make_pair("b51", "[" + x49 + "x]rest")}) {
    ASSERT_EQ(vcCmSearchWord(&d_, c.first), 21);
    vcCmGetDetail(&d_, out.data(), one, 1);
    EXPECT_EQ(std::string(out.data()), G("<<<英释>>>\r\n") + c.second);
  }
}

TEST_F(DictTest, RelatedWordLists) {
  Build({Entry({"fast", "", "", "", "", "", "", "", "quick,rapid#slow"}),
         Entry({"odd", "", "", "", "", "", "", "", "=" + G("同义词：a,反义词：b")})});
  OpenClassic();
  int syn = Window(), ant = Window();
  auto item = [](int list, int i) {
    char text[64] = "";
    tqHost_GetListText(list, i, text);
    return std::string(text);
  };
  ASSERT_EQ(vcCmSearchWord(&d_, "fast"), 21);
  vcFillRelatedWordList(&d_, syn, ant);
  ASSERT_EQ(std::make_pair(tqHost_GetListCount(syn), tqHost_GetListCount(ant)), std::make_pair(2, 1));
  EXPECT_EQ(item(syn, 1), "rapid");
  EXPECT_EQ(item(ant, 0), "slow");
  // With no word open at the antonyms' label, the label runs into the
  // first antonym.
  ASSERT_EQ(vcCmSearchWord(&d_, "odd"), 21);
  vcFillRelatedWordList(&d_, syn, ant);
  EXPECT_EQ(tqHost_GetListCount(syn), 3);  // "a" and an empty word
  EXPECT_EQ(item(ant, 1), G("反义词：b").substr(1));
}

TEST_F(DictTest, ExpressionDictionary) {
  Build({Entry({"look after", "", G("照顾"), "", "She looks after him."}), Entry({"give up", "", G("放弃")}),
         Entry({"word"})});
  OpenExp();
  EXPECT_EQ(e_.recordSize, 48u);
  char expr[64] = "LOOK AFTER";
  ASSERT_EQ(vcCmSearchExp(&e_, expr), 1);
  EXPECT_STREQ(e_.word, "look after");
  char out[256];
  EXPECT_EQ(vcCmGetADetailExp(&e_, out, 0), 8);
  EXPECT_EQ(std::string(out), G("[]\r\n照顾"));
  EXPECT_EQ(vcCmGetADetailExp(&e_, out, 1), 20);
  EXPECT_EQ(vcCmGetAllDetailExp(&e_, out), 28);
  const uint32_t order[3] = {2, 1, 0};
  vcCmGetDetailExp(&e_, out, order, 3);
  EXPECT_EQ(std::string(out), G("<<<例句>>>\r\nShe looks after him.\r\n<<<词义>>>\r\n[]\r\n照顾\r\n"));
  EXPECT_EQ(vcCmGetDictExpMean(&e_, "give up", out), 2);
  EXPECT_EQ(std::string(out), G("放弃"));
  EXPECT_EQ(vcCmGetDictExpMean(&e_, "take off", out), 0);
  int list = Window();
  // The list starts from where the last search, a miss, left the index.
  EXPECT_EQ(vcFillListWithExp(&e_, list), 1);
  EXPECT_EQ(tqHost_GetListCount(list), 2);
  // A long expression is cut in the caller's own string.
  char longer[64] = "look after the children of the family";
  EXPECT_EQ(vcCmSearchExp(&e_, longer), -1);
  EXPECT_EQ(std::strlen(longer), 31u);
}

TEST_F(DictTest, ExpressionWildcardScanReportsProgress) {
  std::vector<std::string> lines;
  for (int i = 0; i < 250; ++i) lines.push_back(Entry({"go " + std::to_string(1000 + i)}));
  lines.push_back(Entry({"take off"}));
  Build(lines);
  OpenExp();
  int list = Window(), bar = Window();
  char pattern[32] = "*1?4?";
  EXPECT_EQ(vcExpNoneExactSearch(&e_, pattern, list, bar), 30);  // 1040..1049, 1140.., 1240..
  int low = -1, high = -1;
  tqHost_GetProgressRange(bar, &low, &high);
  EXPECT_EQ(high, 100);
  EXPECT_EQ(tqHost_GetProgressPos(bar), 79);  // at the 200th of 251 records
  char upper[32] = "TAKE*";
  EXPECT_EQ(vcExpNoneExactSearch(&e_, upper, list, 0), 1);
  EXPECT_STREQ(upper, "take*");  // lower-cased in place
}

TEST_F(DictTest, MeanLibraryAndAddPron) {
  const std::string w19 = "abcdefghijklmnopqrs";
  Build({Entry({"apple", "a", G("苹果")}), Entry({"pear", "", G("梨")}), Entry({w19, "x", "m"})});
  MeanLibObject m;
  ASSERT_EQ(vcCmOpenMeanLib(&m, "dictlib\\meanlib.dat"), 1);
  char mean[200], pron[80];
  EXPECT_EQ(vcCmGetMeanLibMean(&m, "APPLE", mean), 4);
  EXPECT_EQ(std::string(mean), G("苹果"));
  EXPECT_EQ(vcCmGetMeanLibMeanAndPron(&m, "apple", nullptr, pron), 1);
  EXPECT_STREQ(pron, "[a]");
  EXPECT_EQ(vcCmGetMeanLibMeanAndPron(&m, "pear", mean, pron), 2);
  EXPECT_STREQ(pron, "[]");
  EXPECT_EQ(vcCmGetMeanLibMean(&m, "plum", mean), -1);
  EXPECT_STREQ(mean, "");
  vcCmCloseMeanLib(&m);
  EXPECT_EQ(m.hFile, 0u);

  // Pronunciations from the dictionary into a library that has none. The
  // lookup goes by the first 19 bytes, so long words find one too, and it
  // is written only while word and pronunciation stay below 63 bytes.
  std::string records;
  for (std::string w : {std::string("apple"), w19 + std::string(40, 'z'), w19 + std::string(41, 'z')}) {
    std::string r(224, '\0');
    r.replace(0, w.size(), w);
    r[w.size() + 1] = 'X';  // a stale pronunciation is cleared
    records += r;
  }
  tqtest::WriteFile("plain.dat", records);
  OpenClassic();
  EXPECT_EQ(vcAddPron(&d_, "plain.dat", "withpron.dat"), 1);
  std::string out = tqtest::ReadFile("withpron.dat");
  ASSERT_EQ(out.size(), 672u);
  EXPECT_EQ(out.substr(0, 10), std::string("apple\0[a]\0", 10));
  EXPECT_EQ(out.substr(224 + 59, 5), std::string("\0[x]\0", 5));
  EXPECT_EQ(out.substr(448 + 60, 4), std::string(4, '\0'));
}

TEST_F(DictTest, BaseFormsByRule) {
  // The steps themselves are checked below the boundary (WordForms).
  Build({Entry({"big"}), Entry({"like"}), Entry({"need"}), Entry({"Stop"})});
  OpenClassic();
  char out[32];
  struct Case {
    const char* input;
    const char* base;
  } cases[] = {{"stopped", "Stop"}, {"LIKED", "like"}, {"need", "need"}};
  for (const Case& c : cases) {
    EXPECT_EQ(vcCmSearchOrignalWord(&d_, c.input, out), static_cast<int>(std::strlen(c.base))) << c.input;
    EXPECT_STREQ(out, c.base) << c.input;
    EXPECT_EQ(Word(d_), c.base);
  }
  std::strcpy(out, "untouched");
  EXPECT_EQ(vcCmSearchOrignalWord(&d_, "bigger", out), 0);
  EXPECT_EQ(vcCmSearchOrignalWord(&d_, "s", out), 0);
  EXPECT_STREQ(out, "untouched");
}

TEST(WordForms, ChainStepsAndTheirGaps) {
  std::set<std::string> dict = {"city", "like", "make", "need", "nice", "run", "stop", "study", "big", "bigg"};
  auto lookup = [&dict](const char* key) -> long {
    std::string k(key);
    for (char& ch : k) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return dict.count(k) ? 1 : -1;
  };
  struct Case {
    const char* input;
    int step;
  } cases[] = {{"stopped", 10}, {"running", 11}, {"liked", 14}, {"LIKED", 14}, {"making", 15},
               {"studied", 6},  {"cities", 9},   {"nicer", 12},  {"need", 10},  {"bigger", 7}};
  for (const Case& c : cases) {
    int step = 0;
    EXPECT_EQ(tq::dict::OriginalFormChain(c.input, lookup, &step), 1) << c.input;
    EXPECT_EQ(step, c.step) << c.input;
  }
  dict.erase("bigg");  // step 13 can never succeed: "bigger" is not found
  EXPECT_EQ(tq::dict::OriginalFormChain("bigger", lookup), -1);
  char buffer[16] = "bed";
  EXPECT_TRUE(tq::dict::StripDoubledSuffix(buffer, "ed"));
  EXPECT_STREQ(buffer, "bed");
  EXPECT_FALSE(tq::dict::StripWordSuffix(buffer, "d"));
  std::strcpy(buffer, "ER");
  EXPECT_FALSE(tq::dict::StripWordSuffix(buffer, "ing"));
}

TEST(WordForms, RegularForms) {
  char out[128];
  const char* cases[][2] = {{"study", "studies,studied,studying,studier,studiest,"},
                            {"make", "makes,maked,making,maker,makest,"},
                            {"church", "churches,churched,churching,churcher,churchest,"},
                            {"CHURCH", "CHURCHes,CHURCHed,CHURCHing,CHURCHer,CHURCHest,"},
                            {"work", "worked,working,worker,workest,"},
                            {"h", "hed,hing,her,hest,"},
                            {"", "ed,ing,er,est,"}};
  for (auto& c : cases) {
    EXPECT_EQ(vcGetAllWordVarys(c[0], out), static_cast<int>(std::strlen(c[1]))) << c[0];
    EXPECT_STREQ(out, c[1]);
  }
}

TEST_F(DictTest, IrregularFormsFile) {
  std::string full(90, 'v');
  Build({Entry({"go", "", "", "", "", "", "went,gone"}), Entry({"many", "", "", "", "", "", full})});
  char out[81];
  EXPECT_EQ(vcFindVary("GO", out), 9);
  EXPECT_STREQ(out, "went,gone");
  EXPECT_EQ(vcFindVary("went", out), -1);
  EXPECT_EQ(vcFindVary("many", out), 80);  // fills the field, no NUL of its own
  EXPECT_EQ(std::string(out, 80), full.substr(0, 80));
  std::remove("vary.idx");
  EXPECT_EQ(vcFindVary("go", out), -1);
}

TEST_F(DictTest, CutShortLibraryStaysInsideTheBuffer) {
  Build({Entry({"w", "p", "meaning", "explanation", "samples"})});
  tqtest::WriteFile("dictlib/hmorec.lib", tqtest::ReadFile("dictlib/hmorec.lib").substr(0, 3));
  OpenClassic();
  ASSERT_EQ(vcCmSearchWord(&d_, "w"), 21);
  char out[8];
  EXPECT_EQ(vcCmGetAllDetails(&d_, out), 3);
  EXPECT_EQ(vcCmGetADetail(&d_, out, 2), 0);
  char mean[8], pron[8];
  EXPECT_EQ(vcCmGetDictMeanAndPron(&d_, "w", mean, pron), 21);
  EXPECT_STREQ(pron, "[p]");
  EXPECT_STREQ(mean, "");
}

}  // namespace
