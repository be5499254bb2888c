// tqcomm mp3 and tqcomm wave, as a person at a terminal would use them.
#include <string>

#include "sound_util.h"

using namespace tqtest;

namespace {

class SoundTool : public TempDirTest {
 protected:
  int Tool(const std::string& args, std::string* out) {
    return tqtest::Run(std::string(TQCOMM_BIN) + " " + args + " 2>&1", out);
  }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};

TEST_F(SoundTool, EncodesDecodesAndDescribes) {
  std::string out;
  ASSERT_EQ(Tool("mp3 encode '" + ToneWave(1, 22050, 2) + "' tone.mp3 --bitrate 64", &out), 0) << out;
  EXPECT_TRUE(Has(out, "tone.mp3: 64 kbit/s, 2.00 s")) << out;
  ASSERT_EQ(Tool("mp3 decode tone.mp3 back.wav", &out), 0) << out;
  EXPECT_TRUE(Has(out, "back.wav: 1 channel, 22050 Hz, 16 bits")) << out;
  ASSERT_EQ(Tool("wave info back.wav", &out), 0) << out;
  EXPECT_TRUE(Has(out, "sample rate   22050 Hz")) << out;
  EXPECT_TRUE(Has(out, "format tag    1 (PCM)")) << out;
}

TEST_F(SoundTool, ExitCodesForBadUsageAndBadFiles) {
  WriteFile("text.txt", "no sound here");
  std::string out;
  const std::pair<const char*, int> runs[] = {
      {"mp3 --help", 0},
      {"wave --help", 0},
      {"mp3", 2},
      {"mp3 decode only.mp3", 2},
      {"mp3 encode a.wav b.mp3 --bitrate fast", 2},
      {"wave list x", 2},
      {"mp3 decode missing.mp3 x.wav", 1},
      {"mp3 decode text.txt x.wav", 1},
      {"mp3 encode text.txt x.mp3", 1},
      {"wave info text.txt", 1},
  };
  for (const auto& [args, code] : runs) EXPECT_EQ(Tool(args, &out), code) << args << "\n" << out;
  EXPECT_EQ(vcIfFileExist("x.wav"), 0);
}

}  // namespace
