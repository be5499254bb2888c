// The digest job on its worker thread, polled as a front end polls it, and
// its two bodies run on the test's own thread. These tests also run under
// ThreadSanitizer (the mp3_thread_tsan test).
#include <string>
#include <vector>

#include "sound/digest.h"
#include "sound_util.h"
#include "worker_util.h"

using namespace tqtest;

namespace {

// One second of silence, one of a 440 Hz tone at half scale, one of
// silence: made by sox, as a wave and as an MP3.
std::string QuietLoudQuietWave() {
  return Audio("qlq.wav", "sox -D -r 22050 -c 1 -n -b 16 -t wav \"$OUT\" synth 1 sine 440 vol 0.5 pad 1 1");
}
std::string QuietLoudQuietMp3() {
  return Audio("qlq.mp3", "lame --quiet -b 32 '" + QuietLoudQuietWave() + "' \"$OUT\"");
}
// A second of stereo MP3 with the tone in one channel only (1 left, 2 right).
std::string OneSidedMp3(int side) {
  return Audio("side" + std::to_string(side) + ".mp3",
               std::string("sox -D -r 44100 -c 2 -n -b 16 -t wav - synth 1 sine 440 vol 0.5 remix ") +
                   (side == 1 ? "1 0" : "0 1") + " | lame --quiet -m s -b 128 - \"$OUT\"");
}

double Mean(const std::string& digest, size_t from, size_t to) {
  double sum = 0;
  for (size_t i = from; i < to && i < digest.size(); ++i) sum += static_cast<unsigned char>(digest[i]);
  return to > from ? sum / static_cast<double>(to - from) : 0;
}

class DigestThread : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    StoredPercentages::Clear();
    tq::sound::SetDigestObserverForTesting(StoredPercentages::Seen);
  }
  void TearDown() override {
    WaitForWorker();
    tq::sound::SetDigestObserverForTesting(nullptr);
    TempDirTest::TearDown();
  }
  // Starts the job as a front end does: init, interval, thread.
  static void Start(const std::string& source, const char* digest, int blockMs, int startMs = 0, int endMs = -1) {
    ASSERT_EQ(vcInitMakingDigestProcess(source.c_str(), digest, blockMs), 0);
    ASSERT_EQ(vcSetDigestInterval(startMs, endMs), startMs);
    ASSERT_NE(vcCreateMakingDigestThread(), 0);
  }
  static std::vector<int> PollToEnd() { return tqtest::PollToEnd(vcGetMakeDigestPercentage); }
  static void WaitForWorker() { WaitWhile(tq::sound::DigestThreadRunningForTesting); }
  static std::vector<int> Stored() { return StoredPercentages::Get(); }
};

TEST_F(DigestThread, Mp3JobShowsTheShapeOfTheSound) {
  tqtest::Run("cp '" + QuietLoudQuietMp3() + "' qlq.mp3 && touch -d '2003-04-05 06:07:08' qlq.mp3", nullptr);
  Start("qlq.mp3", "qlq.dig", 10);
  EXPECT_EQ(PollToEnd().back(), 1000);
  // 22050 / 100 = 220 samples a block, over all the samples the MP3
  // decodes to (with the encoder's delay, which this file doesn't say).
  ASSERT_EQ(vcMp3ToWav("qlq.mp3", "qlq.wav", nullptr), 0);
  int32_t para[5];
  ASSERT_EQ(vcGetWaveFilePara("qlq.wav", para), 1);
  const std::string digest = ReadFile("qlq.dig");
  EXPECT_EQ(digest.size(), static_cast<size_t>(para[3] / 2 / 220));
  EXPECT_LT(Mean(digest, 0, 90), 1.0);
  EXPECT_GT(Mean(digest, 110, 190), 30.0);  // |sin| averages 2/pi of 64
  EXPECT_LT(Mean(digest, 210, 300), 1.0);
  EXPECT_EQ(vcIsSameTimeFiles("qlq.mp3", "qlq.dig"), 1);
  // Steps of ten, by the frames' truncated milliseconds (26 each) against
  // the stream's length: short of 100 at the end.
  EXPECT_EQ(Stored(), (std::vector<int>{10, 20, 30, 40, 50, 60, 70, 80, 90, 1000}));
}

TEST_F(DigestThread, IntervalIsHonouredByAnMp3JobAndIgnoredByAWaveJob) {
  Start(QuietLoudQuietMp3(), "middle.dig", 10, 1000, 2000);
  EXPECT_EQ(PollToEnd().back(), 1000);
  // The loud second alone, up to the frame that reaches its end.
  const std::string middle = ReadFile("middle.dig");
  EXPECT_GE(middle.size(), 100u);
  EXPECT_LE(middle.size(), 104u);
  EXPECT_GT(Mean(middle, 5, 95), 30.0);

  Start(QuietLoudQuietWave(), "whole.dig", 10, 1000, 2000);
  EXPECT_EQ(PollToEnd().back(), 1000);
  const std::string whole = ReadFile("whole.dig");
  EXPECT_EQ(whole.size(), 301u);  // 66,150 samples less the 22 never read, by 220
  EXPECT_EQ(Mean(whole, 0, 100), 0.0);
  EXPECT_GT(Mean(whole, 100, 200), 30.0);
}

TEST_F(DigestThread, Mp3TakesTheLeftChannel) {
  for (int side : {1, 2}) {
    Start(OneSidedMp3(side), "side.dig", 5);
    EXPECT_EQ(PollToEnd().back(), 1000);
    // 220 samples a block; the last frame of 1,152 is filled up with silence.
    const std::string digest = ReadFile("side.dig");
    EXPECT_GE(digest.size(), 200u);
    EXPECT_LE(digest.size(), 206u);
    EXPECT_EQ(Mean(digest, 10, 190) > 30.0, side == 1) << side;
    EXPECT_EQ(Mean(digest, 10, 190) < 1.0, side == 2) << side;
  }
}

TEST_F(DigestThread, WaveJobMatchesTheImmediateDigest) {
  // 44.1 kHz stereo in blocks of 25 ms (1,102 frames, 4,408 bytes): the
  // immediate form reads them in pieces of 2,000 bytes, the worker at once.
  const std::string wave = ToneWave(2, 44100, 2.0, 300);
  ASSERT_EQ(vcMakeWaveDigestFile(wave.c_str(), "now.dig", 25), 81 * 25);
  tqtest::Run("cp '" + wave + "' tone.WAV && touch -d '2004-05-06 07:08:09' tone.WAV", nullptr);
  Start("tone.WAV", "worker.dig", 25);
  EXPECT_EQ(PollToEnd().back(), 1000);
  EXPECT_EQ(ReadFile("worker.dig"), ReadFile("now.dig"));
  EXPECT_EQ(vcIsSameTimeFiles("tone.WAV", "worker.dig"), 1);
  // Stored whenever it grows, up to the last block's (the last 44 bytes
  // are never read, so 99).
  const std::vector<int> stored = Stored();
  ASSERT_GE(stored.size(), 60u);
  EXPECT_EQ(stored.end()[-2], 99);
  EXPECT_EQ(stored.back(), 1000);
  for (size_t i = 1; i < stored.size(); ++i) EXPECT_GT(stored[i], stored[i - 1]);
}

TEST_F(DigestThread, CancelEndsTheJobAndDeletesTheDigest) {
  for (const std::string& source : {QuietLoudQuietWave(), QuietLoudQuietMp3()}) {
    // The cancel word is cleared by the init, not by the start: set
    // between them, it stops the job after its first block or frame.
    ASSERT_EQ(vcInitMakingDigestProcess(source.c_str(), "gone.dig", 10), 0);
    vcCancelMakeDigest();
    ASSERT_NE(vcCreateMakingDigestThread(), 0);
    EXPECT_EQ(PollToEnd().back(), 1000) << source;
    EXPECT_EQ(vcIfFileExist("gone.dig"), 0) << source;
    WaitForWorker();
  }
}

TEST_F(DigestThread, JobsThatCannotStartStayAtZero) {
  WriteFile("empty.wav", "");
  WriteFile("empty.mp3", "");
  // A wave named otherwise goes to the MP3 job, which will not take it.
  tqtest::Run("cp '" + QuietLoudQuietWave() + "' tone.wave", nullptr);
  const struct {
    std::string source;
    const char* digest;
    int blockMs;
  } jobs[] = {
      {"missing.wav", "x.dig", 10},           {"missing.mp3", "x.dig", 10},
      {"empty.wav", "x.dig", 10},             {"empty.mp3", "x.dig", 10},
      {"tone.wave", "x.dig", 10},             {QuietLoudQuietWave(), "x.dig", 0},
      {QuietLoudQuietMp3(), "x.dig", 0},      {QuietLoudQuietMp3(), "x.dig", 1001},
      {QuietLoudQuietWave(), "no/dir.dig", 10}, {QuietLoudQuietMp3(), "no/dir.dig", 10},
  };
  for (const auto& job : jobs) {
    Start(job.source, job.digest, job.blockMs);
    WaitForWorker();
    EXPECT_EQ(vcGetMakeDigestPercentage(), 0) << job.source << " " << job.blockMs;
    EXPECT_EQ(vcIfFileExist("x.dig"), 0) << job.source << " " << job.blockMs;
  }
  EXPECT_TRUE(Stored().empty());
}

TEST_F(DigestThread, BodiesRunOnTheCallersThread) {
  // Blocks of 20 ms, 441 samples: 66,128 samples of the wave read.
  const std::string mp3 = ReadFile(QuietLoudQuietMp3());
  WriteFile("half.mp3", mp3.substr(0, mp3.size() / 2));
  const struct {
    std::string source;
    int (*body)(void*);
    int result;
    size_t low, high;
  } runs[] = {{QuietLoudQuietWave(), vcMakeWaveDigestThread, 1, 150, 150},
              {QuietLoudQuietMp3(), vcMakeMp3DigestThread, 0, 150, 155},
              {"half.mp3", vcMakeMp3DigestThread, 0, 72, 80},  // what there is of a cut file
              {QuietLoudQuietMp3(), vcMakeWaveDigestThread, -1, 0, 0},
              {QuietLoudQuietWave(), vcMakeMp3DigestThread, -1, 0, 0}};
  for (const auto& run : runs) {
    ASSERT_EQ(vcInitMakingDigestProcess(run.source.c_str(), "x.dig", 20), 0);
    EXPECT_EQ(run.body(nullptr), run.result) << run.source;
    EXPECT_EQ(vcGetMakeDigestPercentage(), run.result == -1 ? 0 : 1000) << run.source;
    EXPECT_GE(ReadFile("x.dig").size(), run.low) << run.source;
    EXPECT_LE(ReadFile("x.dig").size(), run.high) << run.source;
    std::remove("x.dig");
  }
}

}  // namespace
