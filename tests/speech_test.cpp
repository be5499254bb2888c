// Speech through the sound centre: waves in the format the centre was
// opened with, of a length a listener would expect, English and Mandarin;
// the rate rule; voices; and a machine without espeak-ng's data.
#include <cmath>
#include <cstdlib>
#include <string>

#include "sound/speech.h"
#include "sound_util.h"

using namespace tqtest;

namespace {

class Speech : public TempDirTest {
 protected:
  // Speaks text with a centre of that format (kind 0 English, 3 Chinese):
  // the result, and the wave's parameters in para.
  int Speak(const std::string& text, int kind, int bits, int rate, int channels, int32_t* para, int voiceRate = 0,
            const char* voice = nullptr) {
    const int c = vcSndCenter_OpenEx(1, bits, rate, channels, voiceRate);
    if (voice != nullptr) vcSndCenter_SetTtsVoiceName(c, voice);
    const std::string base = Path("speech");
    std::remove((base + ".wav").c_str());
    int32_t source = -1;
    const int got = vcSndCenter_GetSndFile(c, text.c_str(), kind, base.c_str(), 0, 1, &source, kNoUser);
    vcSndCenter_Close(c);
    if (got == 1) {
      EXPECT_EQ(source, 1);
    }
    if (para != nullptr && vcGetWaveFilePara((base + ".wav").c_str(), para) != 1) para[4] = -1;
    return got;
  }
  static constexpr const char* kNoUser = "no-user-sounds/";
};

TEST_F(Speech, WavesOfTheAskedFormatAndAPlausibleLength) {
  const struct {
    const char* text;
    int kind, bits, rate, channels, minMs, maxMs;
  } cases[] = {
      {"apple", 0, 16, 22050, 1, 200, 1200},
      {"apple", 0, 8, 11025, 1, 200, 1200},
      {"apple", 0, 16, 44100, 2, 200, 1200},
      {"The weather is fine today, so we walk to school.", 0, 16, 16000, 1, 1800, 6000},
      {"\xC4\xE3\xBA\xC3\xA3\xAC\xCA\xC0\xBD\xE7", 3, 16, 22050, 1, 500, 4000},  // "你好，世界"
      {"\xCE\xD2\xC3\xC7\xD1\xA7\xCF\xB0\xD3\xA2\xD3\xEF", 3, 8, 8000, 2, 700, 5000},  // "我们学习英语"
  };
  for (const auto& c : cases) {
    int32_t p[5];
    ASSERT_EQ(Speak(c.text, c.kind, c.bits, c.rate, c.channels, p), 1) << c.text;
    EXPECT_EQ(p[0], c.channels) << c.text;
    EXPECT_EQ(p[1], c.bits) << c.text;
    EXPECT_EQ(p[2], c.rate) << c.text;
    EXPECT_GE(p[4], c.minMs) << c.text;
    EXPECT_LE(p[4], c.maxMs) << c.text;
    // Sound, not silence: the samples swing well away from their middle.
    const std::string wave = ReadFile(Path("speech.wav"));
    int peak = 0;
    for (size_t i = 44; i + 1 < wave.size(); i += static_cast<size_t>(c.bits / 8)) {
      const int v = c.bits == 8 ? (static_cast<unsigned char>(wave[i]) - 128) * 256
                                : static_cast<int16_t>(static_cast<unsigned char>(wave[i]) |
                                                       static_cast<unsigned char>(wave[i + 1]) << 8);
      peak = std::max(peak, std::abs(v));
    }
    EXPECT_GT(peak, 3000) << c.text;
  }
}

TEST_F(Speech, RateRuleAndVoices) {
  const std::pair<int, int> rule[] = {{-99, 80}, {-10, 80}, {-2, 140}, {0, 175}, {5, 303}, {10, 450}, {99, 450}};
  for (const auto& [rate, wpm] : rule) EXPECT_EQ(tq::sound::WordsPerMinute(rate), wpm) << rate;

  const std::string text = "Reading every day makes a good habit.";
  int32_t slow[5], normal[5], fast[5];
  ASSERT_EQ(Speak(text, 0, 16, 22050, 1, slow, -6), 1);
  ASSERT_EQ(Speak(text, 0, 16, 22050, 1, normal, 0), 1);
  ASSERT_EQ(Speak(text, 0, 16, 22050, 1, fast, 6), 1);
  EXPECT_GT(slow[4], normal[4] * 13 / 10);
  EXPECT_LT(fast[4], normal[4] * 8 / 10);

  // A voice espeak-ng knows is used; any other name falls back to English.
  int32_t us[5], unknown[5];
  EXPECT_EQ(Speak(text, 0, 16, 22050, 1, us, 0, "en-us"), 1);
  EXPECT_EQ(Speak(text, 0, 16, 22050, 1, unknown, 0, "Microsoft Mary"), 1);
  EXPECT_NEAR(unknown[4], normal[4], normal[4] / 10);
  const int c = vcSndCenter_Open(1, 16, 22050, 1);
  EXPECT_EQ(vcSndCenter_SetTtsVoiceName(c, "en-us"), 5);
  EXPECT_EQ(vcSndCenter_SetChineseTtsVoiceName(c, G("普通话").c_str()), 3);
  EXPECT_EQ(vcSndCenter_SetChineseTtsVoiceName(c, nullptr), 0);
  vcSndCenter_Close(c);
  EXPECT_EQ(vcSndCenter_SetTtsVoiceName(c, "en-us"), 0);  // closed
}

TEST_F(Speech, EspeakStartsOncePerProcessAndRefusesBadFormats) {
  for (int i = 0; i < 3; ++i) {
    const int c = vcSndCenter_Open(1, 16, 22050, 1);
    EXPECT_GT(vcSndCenter_IsTtsAvailable(c), 0);
    vcSndCenter_Close(c);
  }
  EXPECT_EQ(vcMakeSentenceSndFile("a sentence", Path("").c_str(), "none.idx", Path("x").c_str(), 0), -1);
  EXPECT_EQ(tq::sound::EngineStartsForTesting(), 1);

  const int session = tq::sound::vcInitTts();
  const std::string wave = Path("bad.wav");
  const int formats[][3] = {{22050, 3, 16}, {22050, 1, 24}, {0, 1, 16}, {-8000, 2, 8}};
  for (const auto& f : formats) {
    EXPECT_EQ(tq::sound::vcTtsSpeakToFileAnsi(session, "apple", wave.c_str(), f[0], f[1], f[2], 0), -1);
  }
  EXPECT_EQ(tq::sound::vcTtsSpeakToFileAnsi(session, "apple", Path("no/dir/x.wav").c_str(), 8000, 1, 16, 0), -1);
  tq::sound::vcUnInitTts(session);
  EXPECT_EQ(tq::sound::vcTtsSpeakToFileAnsi(session, "apple", wave.c_str(), 8000, 1, 16, 0), -1);
  EXPECT_EQ(tq::sound::vcTtsSetRate(session, 3), -1);
  EXPECT_EQ(vcIfFileExist(wave.c_str()), 0);
}

TEST_F(Speech, WithoutEspeakDataSpeechFailsCleanly) {
  tqtest::Run("mkdir -p '" + Path("empty") + "'", nullptr);
  setenv("TQCOMM_ESPEAK_DATA", Path("empty").c_str(), 1);
  const int c = vcSndCenter_Open(1, 16, 22050, 1);
  unsetenv("TQCOMM_ESPEAK_DATA");
  EXPECT_EQ(vcSndCenter_IsTtsAvailable(c), 0);
  const std::string base = Path("s");
  int32_t source = 7;
  EXPECT_EQ(vcSndCenter_GetSndFile(c, "apple", 0, base.c_str(), 0, 1, &source, kNoUser), -1);
  EXPECT_EQ(source, 7);  // no source at all: left as it was
  EXPECT_EQ(vcSndCenter_CanSpeak(c, "apple", 0, base.c_str(), 0, 1, &source, kNoUser), -1);
  // Chinese speech is tried all the same, and fails.
  EXPECT_EQ(vcSndCenter_GetSndFile(c, G("你好").c_str(), 3, base.c_str(), 0, 1, &source, kNoUser), -1);
  EXPECT_EQ(source, 1);
  EXPECT_EQ(vcSndCenter_CanSpeak(c, G("你好").c_str(), 3, base.c_str(), 0, 0, &source, kNoUser), 1);
  EXPECT_EQ(vcIfFileExist((base + ".wav").c_str()), 0);
  vcSndCenter_Close(c);
}

}  // namespace
