// Speech from two threads at once: espeak-ng is one engine for the whole
// process, so the adapter must neither crash nor hand one caller's samples
// to the other. Also run under ThreadSanitizer (mp3_thread_tsan).
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;

namespace {

class SpeechThreads : public TempDirTest {};

struct Speaker {
  const char* text;
  int bits, rate, channels;
  int centre;
  int aloneMs;
};

// The length of a wave in milliseconds, and its format, or -1.
int Length(const std::string& path, const Speaker& s) {
  int32_t p[5];
  if (vcGetWaveFilePara(path.c_str(), p) != 1 || p[0] != s.channels || p[1] != s.bits || p[2] != s.rate) return -1;
  return p[4];
}

TEST_F(SpeechThreads, TwoCentresSpeakAtOnceEachHearingItsOwnText) {
  Speaker speakers[] = {{"apple", 16, 16000, 1, 0, 0}, {"an umbrella in the rain at night", 8, 44100, 2, 0, 0}};
  for (Speaker& s : speakers) {
    s.centre = vcSndCenter_Open(1, s.bits, s.rate, s.channels);
    if (vcSndCenter_IsTtsAvailable(s.centre) <= 0) GTEST_SKIP() << "espeak-ng is not installed";
    const std::string base = Path(std::string("alone_") + s.text);
    ASSERT_EQ(vcSndCenter_GetSndFile(s.centre, s.text, 0, base.c_str(), 0, 1, nullptr, dir().c_str()), 1);
    s.aloneMs = Length(base + ".wav", s);
  }
  // espeak-ng varies a few milliseconds from one reading to the next; the
  // two texts differ by far more.
  ASSERT_GT(speakers[1].aloneMs, 2 * speakers[0].aloneMs);
  constexpr int kRounds = 6;
  int heard[2][kRounds] = {};
  std::thread threads[2];
  for (int t = 0; t < 2; ++t) {
    threads[t] = std::thread([&, t] {
      const Speaker& s = speakers[t];
      for (int round = 0; round < kRounds; ++round) {
        const std::string base = Path("t" + std::to_string(t) + "_" + std::to_string(round));
        const int got = vcSndCenter_GetSndFile(s.centre, s.text, 0, base.c_str(), 0, 1, nullptr, dir().c_str());
        heard[t][round] = got == 1 ? Length(base + ".wav", s) : -1;
      }
    });
  }
  for (std::thread& t : threads) t.join();
  for (int t = 0; t < 2; ++t) {
    for (int round = 0; round < kRounds; ++round) {
      EXPECT_NEAR(heard[t][round], speakers[t].aloneMs, speakers[t].aloneMs / 10) << "thread " << t << " round "
                                                                                 << round;
    }
  }
  for (Speaker& s : speakers) vcSndCenter_Close(s.centre);
}

}  // namespace
