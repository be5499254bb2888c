// The worker thread of vcMp3ToWavByThread, polled as a front end polls it.
// These tests also run under ThreadSanitizer (the mp3_thread_tsan test).
#include <string>
#include <vector>

#include "sound/mp3_to_wave.h"
#include "sound_util.h"
#include "worker_util.h"

using namespace tqtest;

namespace {

class Mp3Thread : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    StoredPercentages::Clear();
    tq::sound::SetProgressObserverForTesting(StoredPercentages::Seen);
  }
  void TearDown() override {
    WaitForWorker();
    tq::sound::SetProgressObserverForTesting(nullptr);
    TempDirTest::TearDown();
  }
  static std::vector<int> PollToEnd() { return tqtest::PollToEnd(vcGetMp3ToWavPercentage); }
  static void WaitForWorker() { WaitWhile(tq::sound::Mp3ThreadRunningForTesting); }
  // Stored by the worker: percentages in the order stored.
  static std::vector<int> Stored() { return StoredPercentages::Get(); }
  // 80 s of 48 kHz mono: 3,333 frames, so three steps of progress.
  static std::string LongMp3() { return ToneMp3(1, 48000, 80, 64); }
};

TEST_F(Mp3Thread, ProgressRisesToOneHundredThenOneThousand) {
  tqtest::Run("cp '" + LongMp3() + "' long.mp3 && touch -d '2001-02-03 04:05:06' long.mp3", nullptr);
  ASSERT_NE(vcMp3ToWavByThread("long.mp3", "long.wav"), 0);
  std::vector<int> polled = PollToEnd();
  ASSERT_GE(polled.size(), 2u);
  EXPECT_EQ(polled.front(), 0);
  EXPECT_EQ(polled.back(), 1000);
  for (size_t i = 1; i < polled.size(); ++i) EXPECT_GT(polled[i], polled[i - 1]);
  std::vector<int> stored = Stored();
  ASSERT_EQ(stored.size(), 4u);  // three steps, then the end
  EXPECT_GT(stored[0], 0);
  EXPECT_LT(stored[2], 100);
  for (size_t i = 1; i < 3; ++i) EXPECT_GT(stored[i], stored[i - 1]);
  Decoded d = ReadPcm("long.wav");
  EXPECT_EQ(d.rate, 48000);
  EXPECT_NEAR(static_cast<double>(d.Frames()), 80 * 48000, 1152);
  EXPECT_EQ(vcIsSameTimeFiles("long.mp3", "long.wav"), 1);
}

TEST_F(Mp3Thread, CancelEndsTheJobAndDeletesTheWave) {
  ASSERT_NE(vcMp3ToWavByThread(LongMp3().c_str(), "gone.wav"), 0);
  vcCancelConvert();
  EXPECT_EQ(PollToEnd().back(), 1000);
  EXPECT_EQ(vcIfFileExist("gone.wav"), 0);
  EXPECT_LE(Stored().size(), 2u);  // stopped at the first step
}

TEST_F(Mp3Thread, ShortFileJumpsStraightToTheEnd) {
  ASSERT_NE(vcMp3ToWavByThread(ToneMp3(1, 22050, 2, 32).c_str(), "short.wav"), 0);
  std::vector<int> polled = PollToEnd();
  EXPECT_EQ(polled.back(), 1000);
  EXPECT_EQ(Stored(), std::vector<int>{1000});
  EXPECT_EQ(vcIfFileExist("short.wav"), 1);
}

TEST_F(Mp3Thread, SourceThatWillNotDecodeStaysAtZero) {
  WriteFile("riff.mp3", PcmWave(1, 8000, 16, std::string(4000, '\xFF')));
  for (const char* source : {"missing.mp3", "riff.mp3"}) {
    ASSERT_NE(vcMp3ToWavByThread(source, "never.wav"), 0);
    WaitForWorker();
    EXPECT_EQ(vcGetMp3ToWavPercentage(), 0) << source;
    EXPECT_EQ(vcIfFileExist("never.wav"), 0) << source;
  }
  EXPECT_TRUE(Stored().empty());
}

}  // namespace
