// A dictionary built by the tool from a small WordNet folder and a few
// CC-CEDICT lines, read back through the exports as a front end reads it:
// Chinese meanings, pronunciations, and the tables of inflected forms.
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "base_forms.h"
#include "pron_notation.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

// WordNet's database in its own format: synsets in data.*, lemmas with
// their senses (and how often each part of speech was met) in index.*,
// irregular forms in *.exc. Offsets only need to agree between the two.
void WriteWordNet(const std::string& dir) {
  mkdir(dir.c_str(), 0755);
  WriteFile(dir + "/data.noun",
            "  1 This software and database is being provided to you, the LICENSEE\n"
            "00000100 13 n 01 apple 0 000 | fruit with red or yellow or green skin\n"
            "00000200 05 n 01 goose 0 000 | web-footed long-necked waterfowl\n"
            "00000300 18 n 01 child 0 000 | a young person of either sex\n"
            "00000400 06 n 01 building 0 000 | a structure that has a roof and walls\n"
            "00000500 10 n 01 book 0 000 | a written work or composition\n");
  WriteFile(dir + "/index.noun",
            "apple n 1 0 1 3 00000100\n"
            "book n 1 0 1 9 00000500\n"
            "building n 1 0 1 4 00000400\n"
            "child n 1 0 1 5 00000300\n"
            "goose n 1 0 1 1 00000200\n");
  WriteFile(dir + "/data.verb",
            "00001100 38 v 01 go 0 000 | change location; move\n"
            "00001200 34 v 01 eat 0 000 | take in solid food\n"
            "00001300 38 v 01 stop 0 000 | come to a halt\n"
            "00001400 36 v 01 build 0 000 | make by combining materials\n"
            "00001500 41 v 01 book 0 000 | arrange for and reserve in advance\n");
  WriteFile(dir + "/index.verb",
            "book v 1 0 1 1 00001500\n"
            "build v 1 0 1 6 00001400\n"
            "eat v 1 0 1 7 00001200\n"
            "go v 1 0 1 9 00001100\n"
            "stop v 1 0 1 8 00001300\n");
  WriteFile(dir + "/data.adj",
            "00002100 00 a 01 happy 0 000 | enjoying or showing joy\n"
            "00002200 00 a 01 big 0 000 | above average in size\n");
  WriteFile(dir + "/index.adj", "big a 1 0 1 2 00002200\nhappy a 1 0 1 3 00002100\n");
  WriteFile(dir + "/data.adv", "00003100 02 r 01 quickly 0 000 | with speed\n");
  WriteFile(dir + "/index.adv", "quickly r 1 0 1 1 00003100\n");
  WriteFile(dir + "/verb.exc", "stopped stop\nwent go\n");
  WriteFile(dir + "/noun.exc", "children child\ngeese goose\n");
  WriteFile(dir + "/adj.exc", "bigger big\nhappier happy\n");
  WriteFile(dir + "/adv.exc", "");
}

// CC-CEDICT lines in UTF-8. 𰻝 has no GBK form, so its word is left out;
// 已 names "to stop" only in its second sense and is an adverb first.
const char kCedict[] =
    "# CC-CEDICT\n"
    "#! license=https://creativecommons.org/licenses/by-sa/4.0/\n"
    "蘋果 苹果 [ping2 guo3] /apple/\n"
    "𰻝 𰻝 [biang2] /apple/\n"
    "吃 吃 [chi1] /to eat; to consume/to eat at (a cafeteria etc)/\n"
    "去 去 [qu4] /to go/to go to (a place)/\n"
    "鵝 鹅 [e2] /goose/CL:隻|只[zhi1]/\n"
    "孩子 孩子 [hai2 zi5] /child/\n"
    "快樂 快乐 [kuai4 le4] /happy; joyful/\n"
    "高興 高兴 [gao1 xing4] /happy/glad/\n"
    "已 已 [yi3] /already/to stop/\n"
    "停 停 [ting2] /to stop/to halt/\n"
    "書 书 [shu1] /book/letter/\n"
    "預約 预约 [yu4 yue1] /booking/reservation/to book/\n";

// Word counts as jieba's dictionary gives them: word, count, part of speech.
const char kCounts[] = "高兴 5387 a\n快乐 2516 a\n已 90000 d\n停 5934 v\n";

class WordNetCedictTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    WriteWordNet("wn");
    WriteFile("cedict_ts.u8", kCedict);
    WriteFile("counts.txt", kCounts);
  }
  void TearDown() override {
    if (dict_ > 0) vcEcDict_Close(dict_);
    TempDirTest::TearDown();
  }
  // Builds DIR from the fixtures; the tool's output.
  std::string Build(const std::string& options, const std::string& env = "") {
    std::string out;
    EXPECT_EQ(tqtest::Run(env + " " + TQCOMM_BIN + " dict build wn -o dict " + options + " 2>&1", &out), 0) << out;
    return out;
  }
  // Meaning and pronunciation of a word of the built dictionary.
  std::pair<std::string, std::string> MeanAndPron(const std::string& word) {
    if (dict_ <= 0) dict_ = vcEcDict_Open("dict/dictlib/vlkdictec.idx", "dict/dictlib/vlkdictec.lib", nullptr);
    EXPECT_GT(dict_, 0);
    EXPECT_EQ(vcEcDict_Search(dict_, word.c_str(), 0, 0), 1) << word;
    char mean[2048], pron[256];
    vcEcDict_GetMeanOrPron(dict_, mean, pron);
    return {mean, pron};
  }
  int dict_ = 0;
};

TEST_F(WordNetCedictTest, MeaningsAreChineseWordsWhoseGlossesNameTheWord) {
  std::string out = Build("--cedict cedict_ts.u8 --freq counts.txt");
  EXPECT_NE(out.find("CC-CEDICT: 12 entries"), std::string::npos) << out;
  struct Case {
    const char* word;
    const char* meaning;  // UTF-8
  } cases[] = {
      {"apple", "n. 苹果"},                // the word without a GBK form is left out
      {"eat", "v. 吃"},                    // "to eat; to consume": one wording of a sense
      {"go", "v. 去"},
      {"goose", "n. 鹅"},
      {"happy", "adj. 高兴；快乐"},        // one sense each: the commoner word first
      {"stop", "v. 停；已"},               // a second sense and an adverb rank lower
      {"book", "n. 书\r\nv. 预约"},        // the commoner use first, verbs from "to book"
      {"quickly", "adv. with speed"},      // no gloss names it: WordNet's English stays
  };
  for (const Case& c : cases) EXPECT_EQ(MeanAndPron(c.word).first, G(c.meaning)) << c.word;
  // WordNet's definitions stay as the English explanation.
  char detail[4096];
  EXPECT_GT(vcEcDict_GetOneDetail(dict_, detail, 1), 0);
  EXPECT_NE(std::string(detail).find("with speed"), std::string::npos);
  ASSERT_EQ(vcEcDict_Search(dict_, "apple", 0, 0), 1);
  vcEcDict_GetOneDetail(dict_, detail, 1);
  EXPECT_EQ(std::string(detail), "n. 1. fruit with red or yellow or green skin\r\n");
  // The licence travels with the files.
  EXPECT_NE(ReadFile("dict/COPYING-CC-CEDICT.txt").find("Attribution-ShareAlike 4.0"), std::string::npos);
  EXPECT_NE(ReadFile("dict/COPYING-CC-CEDICT.txt").find("#! license="), std::string::npos);
}

TEST_F(WordNetCedictTest, EveryHeadwordGetsItsPronunciationInTheNotation) {
  Build("--cedict cedict_ts.u8 --freq counts.txt");
  struct Case {
    const char* word;
    const char* pron;
  } cases[] = {
      {"apple", "['ApEl]"}, {"child", "[tSaIld]"}, {"happy", "['hApi]"},
      {"building", "['bIldIN]"}, {"go", "[gEU]"}, {"quickly", "['kwIkli]"},
  };
  for (const Case& c : cases) EXPECT_EQ(MeanAndPron(c.word).second, c.pron) << c.word;
}

TEST_F(WordNetCedictTest, InflectedFormsFindTheirBaseWords) {
  Build("--cedict cedict_ts.u8 --freq counts.txt");
  // The table has the record form of "vary.idx": the library's own reader
  // of that file finds a form's base words in it.
  mkdir("forms", 0755);
  WriteFile("forms/vary.idx", ReadFile("dict/base.idx"));
  ASSERT_EQ(chdir("forms"), 0);
  struct Case {
    const char* form;
    const char* base;  // nullptr: not in the table
  } cases[] = {
      {"went", "go"},       {"geese", "goose"},  {"children", "child"}, {"happier", "happy"},
      {"stopped", "stop"},  {"stopping", "stop"}, {"stops", "stop"},    {"apples", "apple"},
      {"eating", "eat"},    {"eats", "eat"},      {"bigger", "big"},    {"biggest", "big"},
      {"happiest", "happy"}, {"booked", "book"},  {"books", "book"},    {"gooses", "goose"},
      {"building", nullptr},  // a headword of its own
      {"quicklier", nullptr}, {"apple", nullptr},
  };
  for (const Case& c : cases) {
    char out[81] = {0};
    int n = vcFindVary(c.form, out);
    if (c.base == nullptr) {
      EXPECT_EQ(n, -1) << c.form;
    } else {
      EXPECT_EQ(std::string(out), c.base) << c.form;
    }
  }
  WriteFile("vary.idx", ReadFile("../dict/formof.idx"));
  char out[81] = {0};
  EXPECT_GT(vcFindVary("building", out), 0);
  EXPECT_EQ(std::string(out), "build");
  ASSERT_EQ(chdir(".."), 0);

  // The tool finds each through the table and says so; what the table
  // lacks falls to the library's rules, then to the closest entry.
  WriteFile("words.txt", "went\ngeese\nchildren\nhappier\nstopped\napple\nbuilding\ngoosed\nzzz\n");
  std::string listed;
  tqtest::Run(std::string(TQCOMM_BIN) + " lookup --list words.txt --dict dict", &listed);
  const std::string table = "base form, from the table of inflected forms\n";
  for (const std::string& line : std::initializer_list<std::string>{
           "went\tgo\t" + table, "geese\tgoose\t" + table, "children\tchild\t" + table, "happier\thappy\t" + table,
           "stopped\tstop\t" + table, "apple\tapple\texact\n", "building\tbuilding\texact; also a form of build\n",
           "goosed\tgoose\tbase form, by the library's suffix rules\n", "zzz\tstop\tclosest entry\n"}) {
    EXPECT_NE(listed.find(line), std::string::npos) << line << listed;
  }
  std::string shown;
  ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " lookup went --dict dict", &shown), 0);
  EXPECT_NE(shown.find("go (base form, from the table of inflected forms"), std::string::npos) << shown;
  EXPECT_NE(shown.find("[gEU] /g\xC9\x99\xCA\x8A/"), std::string::npos) << shown;  // /gəʊ/
}

TEST_F(WordNetCedictTest, WithoutUsableCedictTheBuildGoesOnInEnglish) {
  struct Case {
    const char* what;
    const char* options;
    const char* env;
    const char* message;
  } cases[] = {
      {"malformed", "--cedict broken.u8", "", "broken.u8 is not CC-CEDICT (no line of it is a CC-CEDICT entry)"},
      {"mostly broken", "--cedict half.u8", "", "half.u8 is not CC-CEDICT (2 of its 3 lines"},
      {"binary", "--cedict binary.u8", "", "binary.u8 is not CC-CEDICT"},
      {"no cache", "", "XDG_CACHE_HOME=$PWD/empty-cache", "empty-cache/tqcomm/cc-cedict/cedict_ts.u8 (scripts/fetch_cedict.sh"},
      {"missing file", "--cedict nowhere.u8", "", "no CC-CEDICT at nowhere.u8; the meanings stay English"},
  };
  WriteFile("broken.u8", "apple pie\n[ping2 guo3] /apple/\n蘋果 苹果 ping2 guo3 /apple/\n蘋果 苹果 [ping2 guo3] apple\n");
  WriteFile("half.u8", "蘋果 苹果 [ping2 guo3] /apple/\n蘋果 苹果 [ping2\n吃 吃 [chi1] //\n");
  const char binary[] = "\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03\xff\xfe/\n\0\0[]";  // a gzip head
  WriteFile("binary.u8", std::string(binary, sizeof binary - 1));
  for (const Case& c : cases) {
    std::string out = Build(std::string(c.options) + " --freq counts.txt", c.env);
    EXPECT_NE(out.find(c.message), std::string::npos) << c.what << "\n" << out;
    EXPECT_NE(out.find("the meanings stay English"), std::string::npos) << c.what << "\n" << out;
    EXPECT_EQ(MeanAndPron("apple").first, "n. fruit with red or yellow or green skin") << c.what;
    EXPECT_NE(ReadFile("dict/base.idx"), "") << c.what;
    EXPECT_FALSE(tqtest::ReadFile("dict/COPYING-CC-CEDICT.txt").size() > 0) << c.what;
    vcEcDict_Close(dict_);
    dict_ = 0;
  }
}

// The notation the host's "pron" face draws, from espeak-ng's IPA.
TEST(PronNotation, IpaBecomesTheNotationWithStressInFrontOfTheSyllable) {
  struct Case {
    const char* ipa;
    const char* notation;
  } cases[] = {
      {"ˈapəl", "'ApEl"},                 // espeak's a of "cat" is æ
      {"həlˈəʊ", "hE'lEU"},               // stress moves over one consonant
      {"tʃˈɪldɹən", "'tSIldrEn"},         // ɹ is r
      {"pɹɪfˈɜː", "prI'fR:"},
      {"ɐbˈaʊt", "E'baUt"},               // ɐ folds to ə; the a of "mouth" stays
      {"ɛkstɹˈə", "ek'strE"},             // over the whole onset "str"
      {"ˌɪntənˈaʃənəl", ",IntE'nASEnEl"},
      {"ˈaɪs kɹˈiːm", "'aIs 'kri:m"},     // each word of a phrase
      {"θˈɪŋ", "TIN"},  {"ðˈɪs", "DIs"},  {"dʒˈʌdʒ", "dZQdZ"}, {"hˈɒt", "hCt"},
      {"kˈɑː", "ka:"},  {"bˈɜːd", "bR:d"}, {"ʃˈɪp", "SIp"},   {"mˈɛʒə", "'meZE"},
      {"ɡˈʊd", "gUd"},  {"bˈɔɪ", "bOI"},  {"ʔˈʌʔ", "Q"},       {"wˈɔːɾɚ", "'wO:tEr"},
      {"", ""},          {"\xC9", ""},      // a broken sequence is dropped
  };
  for (const Case& c : cases) EXPECT_EQ(tqcomm::IpaToNotation(c.ipa), c.notation) << c.ipa;
}

TEST(PronNotation, NotationGoesBackToIpaAndGivesTheSyllables) {
  EXPECT_EQ(tqcomm::NotationToIpa("'ApEl"), "ˈæpəl");
  EXPECT_EQ(tqcomm::NotationToIpa("taIm,sQ:"), "taɪmˌsʌː");  // the a of "time" prints a
  EXPECT_EQ(tqcomm::NotationToIpa("Ca:RCIUQETDSZN"), "ɒɑːɜɒɪʊʌəθðʃʒŋ");
  EXPECT_EQ(tqcomm::NotationToIpaHtml("S<&"), "&#643;&#60;&#38;");
  struct Case {
    const char* notation;
    int syllables;
    bool final_stressed;
  } cases[] = {
      {"stCp", 1, true},   {"prI'fR:", 2, true}, {"'vIzIt", 2, false}, {"'trAvEl", 2, false},
      {"kEn'trEUl", 2, true}, {",IntE'nASEnEl", 5, false}, {"", 0, false},
  };
  for (const Case& c : cases) {
    tqcomm::PronShape shape = tqcomm::ShapeOf(c.notation);
    EXPECT_EQ(shape.syllables, c.syllables) << c.notation;
    EXPECT_EQ(shape.finalStressed, c.final_stressed) << c.notation;
  }
}

// The regular forms the table gets, by the spelling rules and the sound.
TEST(RegularForms, SpellingFollowsTheWordsEndingAndStress) {
  const tqcomm::WordUse noun{true, false, false}, verb{false, true, false}, adjective{false, false, true};
  const tqcomm::PronShape one{1, true}, final_stress{2, true}, first_stress{2, false}, three{3, false};
  struct Case {
    const char* word;
    tqcomm::WordUse use;
    tqcomm::PronShape shape;
    const char* forms;  // sorted, split by blanks
  } cases[] = {
      {"apple", noun, first_stress, "apples"},       {"box", noun, one, "boxes"},
      {"church", noun, one, "churches"},             {"city", noun, first_stress, "cities"},
      {"day", noun, one, "days"},                    {"quiz", noun, one, "quizzes"},
      {"piano", noun, three, "pianoes pianos"},  // the word decides; both are kept
      {"stop", verb, one, "stopped stopping stops"}, {"prefer", verb, final_stress, "preferred preferring prefers"},
      {"visit", verb, first_stress, "visited visiting visits"},
      {"travel", verb, first_stress, "traveled traveling travelled travelling travels"},
      {"control", verb, final_stress, "controlled controlling controls"},
      {"like", verb, one, "liked likes liking"},     {"die", verb, one, "died dies dying"},
      {"agree", verb, final_stress, "agreed agreeing agrees"},
      {"study", verb, first_stress, "studied studies studying"},
      {"play", verb, one, "played playing plays"},   {"panic", verb, first_stress, "panicked panicking panics"},
      {"fix", verb, one, "fixed fixes fixing"},      {"quit", verb, one, "quits quitted quitting"},
      {"big", adjective, one, "bigger biggest"},     {"nice", adjective, one, "nicer nicest"},
      {"happy", adjective, first_stress, "happier happiest"},
      {"narrow", adjective, first_stress, "narrower narrowest"},
      {"new", adjective, one, "newer newest"},
      {"careful", adjective, first_stress, ""},  // more careful, most careful
      {"ice cream", noun, three, ""},            // phrases are left alone
  };
  for (const Case& c : cases) {
    std::string forms;
    for (const std::string& f : tqcomm::RegularForms(c.word, c.use, c.shape)) forms += (forms.empty() ? "" : " ") + f;
    EXPECT_EQ(forms, c.forms) << c.word;
  }
  // Without a pronunciation the spelling guesses the syllables.
  for (auto [word, syllables] : {std::pair{"stop", 1}, {"make", 1}, {"simple", 2}, {"happy", 2}}) {
    EXPECT_EQ(tqcomm::SpellingShape(word).syllables, syllables) << word;
  }
  EXPECT_FALSE(tqcomm::SpellingShape("visit").finalStressed);
}

}  // namespace
