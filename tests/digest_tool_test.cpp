// tqcomm digest, as a person at a terminal would use it.
#include <string>

#include "sound_util.h"

using namespace tqtest;

namespace {

class DigestTool : public TempDirTest {
 protected:
  int Tool(const std::string& args, std::string* out) {
    return tqtest::Run(std::string(TQCOMM_BIN) + " digest " + args + " 2>&1", out);
  }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

// Words spoken with pauses between them: the loud stretches of the digest
// (the mean of 50 ms at least 1) are the words.
int LoudStretches(const std::string& digest) {
  int stretches = 0;
  bool loud = false;
  for (size_t i = 0; i + 5 <= digest.size(); i += 5) {
    int sum = 0;
    for (size_t j = i; j < i + 5; ++j) sum += static_cast<unsigned char>(digest[j]);
    if (sum >= 5 && !loud) ++stretches;
    loud = sum >= 5;
  }
  return stretches;
}

TEST_F(DigestTool, SpokenWordsShowAsSeparateShapes) {
  const std::string speech = Audio("one_two_three.wav", "espeak-ng -w \"$OUT\" 'One. Two. Three.'");
  tqtest::Run("cp '" + speech + "' speech.wav && lame --quiet -b 64 speech.wav speech.mp3", nullptr);
  std::string out;
  for (const char* in : {"speech.wav", "speech.mp3"}) {
    ASSERT_EQ(Tool(std::string(in) + " --block 10 --width 400 --height 100 --digest words.dig -o words.png", &out), 0)
        << out;
    EXPECT_TRUE(Has(out, "blocks of 10 ms, 1 a point")) << out;
    EXPECT_EQ(LoudStretches(ReadFile("words.dig")), 3) << in;
    EXPECT_EQ(ReadFile("words.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
  }
  // Without --block the block is chosen so that points average several
  // blocks; without --digest none is left behind.
  ASSERT_EQ(Tool("speech.wav -o auto.png", &out), 0) << out;
  EXPECT_TRUE(Has(out, "blocks of 1 ms")) << out;
  EXPECT_EQ(vcIfFileExist("auto.png"), 1);
  EXPECT_EQ(vcIfFileExist("*.dig"), 1);  // only words.dig
}

TEST_F(DigestTool, ExitCodesForBadUsageAndBadFiles) {
  WriteFile("text.wav", "no sound here");
  WriteFile("text.mp3", "no sound here");
  tqtest::Run("cp '" + ToneWave(1, 8000, 0.5) + "' tone.wave", nullptr);
  std::string out;
  const std::pair<const char*, int> runs[] = {
      {"--help", 0},
      {"", 2},
      {"tone.wave", 2},
      {"tone.wave -o", 2},
      {"a.wav b.wav -o x.png", 2},
      {"a.wav -o x.png --block 0", 2},
      {"a.wav -o x.png --block 1001", 2},
      {"a.wav -o x.png --width 2051", 2},
      {"a.wav -o x.png --height tall", 2},
      {"missing.wav -o x.png", 1},
      {"text.wav -o x.png", 1},
      {"text.mp3 -o x.png", 1},
      {"tone.wave -o x.png", 1},  // read as MPEG audio, by its name
  };
  for (const auto& [args, code] : runs) EXPECT_EQ(Tool(args, &out), code) << args << "\n" << out;
  EXPECT_EQ(vcIfFileExist("x.png"), 0);
  tqtest::Run("cp tone.wave tone.wav", nullptr);
  EXPECT_EQ(Tool("tone.wav -o no/such/folder.png", &out), 1) << out;
  EXPECT_EQ(Tool("tone.wav --digest no/such/folder.dig -o x.png", &out), 1) << out;
  EXPECT_EQ(vcIfFileExist("x.png"), 0);
}

}  // namespace
