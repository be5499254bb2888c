// tqcomm sndlib build and tqcomm say, as a person at a terminal uses them:
// a library of the sample words that the sound centre finds every word in,
// and where each sound came from.
#include <sstream>
#include <string>
#include <vector>

#include "sound_util.h"

using namespace tqtest;

namespace {

class SndlibTool : public TempDirTest {
 protected:
  int Tool(const std::string& args, std::string* out) {
    return tqtest::Run("LANG=C.UTF-8 XDG_DATA_HOME='" + Path("data") + "' TQCOMM_REGISTRY='" + Path("reg") + "' " +
                           std::string(TQCOMM_BIN) + " " + args + " 2>&1",
                       out);
  }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

// The English words of the sample list: every other line, before its
// pronunciation.
std::vector<std::string> SampleWords() {
  std::istringstream in(ReadFile(std::string(TQ_SOURCE_DIR) + "/data/sample/words.txt"));
  std::vector<std::string> words;
  std::string line;
  for (int i = 0; std::getline(in, line); ++i) {
    if (i % 2 == 0) words.push_back(line.substr(0, line.find(" [")));
  }
  return words;
}

TEST_F(SndlibTool, SampleWordsLibraryHoldsEveryWord) {
  std::string out;
  ASSERT_EQ(Tool("sndlib build '" + std::string(TQ_SOURCE_DIR) + "/data/sample/words.txt' -o lib", &out), 0) << out;
  const std::vector<std::string> words = SampleWords();
  ASSERT_GT(words.size(), 90u);
  EXPECT_TRUE(Has(out, std::to_string(words.size()) + " words, 1 data file")) << out;
  const int c = vcSndCenter_Open(0, 16, 22050, 1);
  ASSERT_EQ(vcSndCenter_AddSndLib(c, Path("lib/words.idx").c_str(), Path("lib").c_str(), 0), 1);
  for (const std::string& w : words) {
    EXPECT_EQ(vcSndCenter_CanSpeak(c, w.c_str(), 0, "x", 0, 0, nullptr, "no-user/"), 3) << w;
  }
  EXPECT_EQ(vcSndCenter_GetSndFile(c, "Afternoon", 0, Path("one").c_str(), 0, 0, nullptr, "no-user/"), 2);
  vcSndCenter_Close(c);
  // An independent decoder hears about a second of speech.
  ASSERT_EQ(tqtest::Run("mpg123 -q -w '" + Path("one.wav") + "' '" + Path("one.mp3") + "' 2>&1", &out), 0) << out;
  const Decoded d = ReadPcm(Path("one.wav"));
  EXPECT_EQ(d.rate, 22050);
  EXPECT_GT(d.Frames(), 22050u / 4);
  EXPECT_LT(d.Frames(), 22050u * 2);

  // say finds it in the library of the data folder.
  ASSERT_EQ(tqtest::Run("mkdir -p data/tqcomm && cp -r lib data/tqcomm/sndlib", &out), 0);
  ASSERT_EQ(Tool("say apple -o said", &out), 0) << out;
  EXPECT_TRUE(Has(out, "apple: the sound library " + Path("data") + "/tqcomm/sndlib/words.idx -> said.mp3")) << out;
}

TEST_F(SndlibTool, SentenceLibrariesAreScrambled) {
  WriteFile(Path("sentences.txt"), "How are you?\r\n\r\n  Good morning, teacher.\nWhere: here/there.\n" +
                                       G("我很好。") + "\nHow are you?\n");
  std::string out;
  ASSERT_EQ(Tool("sndlib build sentences.txt -o lib --sentences", &out), 0) << out;
  EXPECT_TRUE(Has(out, "4 sentences")) << out;
  for (const std::string& s : {std::string("How are you?"), std::string("Good morning, teacher."),
                               std::string("Where: here/there."), G("我很好。")}) {
    EXPECT_EQ(vcMakeSentenceSndFile(s.c_str(), Path("lib/").c_str(), "sentences.idx", Path("s").c_str(), 0), 2) << s;
  }
}

TEST_F(SndlibTool, SayTellsWhereTheSoundCameFrom) {
  std::string out;
  tqtest::Run("mkdir -p '" + Path("mine") + "'", &out);
  const std::string hello = PcmWave(1, 8000, 16, std::string(1600, '\0'));
  WriteFile(Path("mine/hello.wav"), hello);
  ASSERT_EQ(Tool("say hello --user mine -o mine_copy", &out), 0) << out;
  EXPECT_TRUE(ReadFile(Path("mine_copy.wav")) == hello);
  const struct {
    std::string args;
    int code;
    std::string says;
  } runs[] = {
      {"say hello --user mine", 0, "hello: the user's own recording -> say.wav"},
      {"say zebra --user mine --wave", 0, "zebra: speech (espeak-ng) -> say.wav"},
      {"say 'Is it yours?' --kind 2 --user mine -o q", 0, "Is it yours?: speech (espeak-ng) -> q.wav"},
      {"say 你好 --kind 3", 0, "你好: speech (espeak-ng, Mandarin) -> say.wav"},
      {"say 'zh1\\2你好' --kind 1", 0, "speech (espeak-ng, Mandarin)"},
      {"say zh1 --kind 1", 1, "no sound for \"zh1\""},
      {"say hello --lib missing.idx .", 1, "cannot open the sound library missing.idx"},
      {"say --help", 0, "usage: tqcomm say"},
      {"say", 2, "usage: tqcomm say"},
      {"say hello --kind 4", 2, "usage"},
      {"say hello --lib only.idx", 2, "usage"},
      {"sndlib --help", 0, "usage: tqcomm sndlib build"},
      {"sndlib build words.txt -o x --bitrate 999", 2, "usage"},
      {"sndlib build missing.txt -o x", 1, "there is no file missing.txt"},
  };
  for (const auto& r : runs) {
    EXPECT_EQ(Tool(r.args, &out), r.code) << r.args << "\n" << out;
    EXPECT_TRUE(Has(out, r.says)) << r.args << "\n" << out;
  }
}

}  // namespace
