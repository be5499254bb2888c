// espeak-ng in a process where both the library's speech and the tool's
// pronunciation builder use it: whichever comes second takes the engine as
// it finds it, for a second start would hang it.
#include <string>

#include "espeak_phonemes.h"
#include "sound/speech.h"
#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

class EspeakShared : public TempDirTest {
 protected:
  void ExpectSpeech() {
    const int c = vcSndCenter_Open(1, 16, 22050, 1);
    ASSERT_GT(vcSndCenter_IsTtsAvailable(c), 0);
    EXPECT_EQ(vcSndCenter_GetSndFile(c, "apple", 0, Path("a").c_str(), 0, 1, nullptr, "no-user/"), 1);
    EXPECT_GT(vcGetWaveFileLenInTime(Path("a.wav").c_str()), 200);
    vcSndCenter_Close(c);
  }
  void ExpectPhonemes() {
    tqcomm::EspeakPhonemes phonemes;
    std::string error;
    ASSERT_TRUE(phonemes.Open(&error)) << error;
    EXPECT_EQ(phonemes.Ipa("cat"), "kˈat");
  }
};

TEST_F(EspeakShared, SpeechFirstThenPhonemes) {
  ExpectSpeech();
  ExpectPhonemes();
  ExpectSpeech();
  EXPECT_EQ(tq::sound::EngineStartsForTesting(), 1);
}

TEST_F(EspeakShared, PhonemesFirstThenSpeech) {
  ExpectPhonemes();
  ExpectSpeech();
  ExpectPhonemes();
  EXPECT_EQ(tq::sound::EngineStartsForTesting(), 0);
}

}  // namespace
