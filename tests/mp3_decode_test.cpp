// MP3 to wave: MP3s made by the lame program decoded to the right format
// and length, the pieces vcExtractMp3ToWav cuts, and bad input.
#include <string>

#include "mpeg/frame_header.h"
#include "sound_util.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

constexpr int kFrame = 1152;  // samples of an MPEG-1 layer III frame
// A stream decoded again after a seek may differ from the first decoding
// by a rounding step or two.
constexpr int kSeekTolerance = 4;

int MaxDifference(const std::vector<int16_t>& a, const std::vector<int16_t>& b) {
  if (a.size() != b.size()) return 65536;
  int most = 0;
  for (size_t i = 0; i < a.size(); ++i) most = std::max(most, std::abs(a[i] - b[i]));
  return most;
}

class Mp3Decode : public TempDirTest {};

TEST_F(Mp3Decode, LameMp3BecomesAWaveOfItsFormatAndLength) {
  const std::string mp3 = ToneMp3(2, 44100, 3, 128);
  tqtest::Run("cp '" + mp3 + "' a.mp3 && touch -d '2001-02-03 04:05:06' a.mp3", nullptr);
  int32_t seconds = -1;
  ASSERT_EQ(vcMp3ToWav("a.mp3", "a.wav", &seconds), 0);
  EXPECT_GE(seconds, 0);
  Decoded d = ReadPcm("a.wav");
  EXPECT_EQ(d.channels, 2);
  EXPECT_EQ(d.rate, 44100);
  EXPECT_EQ(d.bits, 16);
  EXPECT_NEAR(static_cast<double>(d.Frames()), 3 * 44100, kFrame);
  EXPECT_GT(SnrDb(ReadPcm(ToneWave(2, 44100, 3)).samples, d.samples, 0), 20);
  EXPECT_EQ(vcIsSameTimeFiles("a.mp3", "a.wav"), 1);
  EXPECT_NEAR(vcGetMp3FileLengthInTime("a.mp3"), 3000, 27);

  int bar = tqHost_CreateWindow("", 1, 1);
  ASSERT_EQ(vcMp3ToWavShowProgress("a.mp3", "b.wav", bar, nullptr), 0);
  int low = -1, high = -1;
  tqHost_GetProgressRange(bar, &low, &high);
  EXPECT_EQ(high, 100);
  EXPECT_EQ(tqHost_GetProgressPos(bar), 0);  // fewer than 1,024 frames: never moved
  EXPECT_EQ(ReadFile("b.wav"), ReadFile("a.wav"));
  tqHost_DestroyWindow(bar);
}

TEST_F(Mp3Decode, BadInputAnswersFailureAndNeverCrashes) {
  const std::string good = ReadFile(ToneMp3(1, 22050, 2, 32));
  std::string corrupt = good;
  for (size_t i = 600; i < corrupt.size(); i += 37) corrupt[i] = static_cast<char>(corrupt[i] ^ 0x5A);
  // A tag that claims far more frames than any file holds.
  std::string boast = ReadFile(ToneMp3(2, 44100, 3, 128));
  const size_t info = boast.find("Info");
  ASSERT_NE(info, std::string::npos);
  boast.replace(info + 8, 4, "\x7F\xFF\xFF\xF0");
  struct Case {
    const char* what;
    std::string bytes;
    int result;
  } cases[] = {
      {"zero-length", "", -1},
      {"text", std::string(5000, 'x'), -1},
      {"wave", PcmWave(1, 22050, 16, std::string(20000, '\xFF')), -1},  // full of false syncs
      {"truncated", good.substr(0, good.size() / 2), 0},
      {"corrupt", corrupt, 0},
      {"boasting tag", boast, 0},
  };
  for (const Case& c : cases) {
    WriteFile("in.mp3", c.bytes);
    std::remove("out.wav");
    EXPECT_EQ(vcMp3ToWav("in.mp3", "out.wav", nullptr), c.result) << c.what;
    EXPECT_EQ(vcExtractMp3ToWav("in.mp3", "out.wav", 100, -1, 1), c.result) << c.what;
    EXPECT_EQ(vcIfFileExist("out.wav"), c.result == 0 ? 1 : 0) << c.what;
    const int length = vcGetMp3FileLengthInTime("in.mp3");
    EXPECT_TRUE(c.result == 0 || length == 0) << c.what;
    EXPECT_GE(length, 0) << c.what;
    EXPECT_LT(length, 3000) << c.what;
  }
  EXPECT_EQ(vcMp3ToWav("missing.mp3", "out.wav", nullptr), -1);
  EXPECT_EQ(vcGetMp3FileLengthInTime("missing.mp3"), 0);
}

TEST_F(Mp3Decode, ExtractOpensWithTheFirstBlockAndCountsTimeFromTheStream) {
  const std::string mp3 = ToneMp3(2, 44100, 3, 128);
  ASSERT_EQ(vcMp3ToWav(mp3.c_str(), "full.wav", nullptr), 0);
  const std::vector<int16_t> full = ReadPcm("full.wav").samples;
  const size_t block = 2 * kFrame;

  ASSERT_EQ(vcExtractMp3ToWav(mp3.c_str(), "rest.wav", 1000, -1, 0), 0);
  Decoded rest = ReadPcm("rest.wav");
  ASSERT_GT(rest.samples.size(), block);
  EXPECT_EQ(std::vector<int16_t>(rest.samples.begin(), rest.samples.begin() + block),
            std::vector<int16_t>(full.begin(), full.begin() + block));
  EXPECT_NEAR(static_cast<double>(rest.Frames()), kFrame + 2 * 44100, kFrame);

  // Each block adds 26 ms (1152 / 44100, truncated with the sum): 39 blocks
  // reach 1,000 ms past the start.
  ASSERT_EQ(vcExtractMp3ToWav(mp3.c_str(), "piece.wav", 500, 1500, 0), 0);
  EXPECT_EQ(ReadPcm("piece.wav").Frames(), 39u * kFrame);

  // Thinned stereo: a header at a quarter of the rate and no samples.
  ASSERT_EQ(vcExtractMp3ToWav(mp3.c_str(), "thin.wav", 0, -1, 1), 0);
  EXPECT_EQ(ReadFile("thin.wav"), PcmWave(2, 11025, 16, ""));
}

TEST_F(Mp3Decode, ThinningKeepsEveryOtherSampleDownTo11025) {
  const std::string mp3 = ToneMp3(1, 22050, 2, 32);
  ASSERT_EQ(vcMp3ToWav(mp3.c_str(), "full.wav", nullptr), 0);
  const std::vector<int16_t> full = ReadPcm("full.wav").samples;
  ASSERT_EQ(vcExtractMp3ToWav(mp3.c_str(), "thin.wav", 0, -1, 1), 0);
  Decoded thin = ReadPcm("thin.wav");
  EXPECT_EQ(thin.rate, 11025);
  // The block from before the seek, then the stream again from 0 (decoded
  // again after the seek, to within a few steps of the first decoding).
  const size_t half = 576 / 2;
  ASSERT_GT(thin.samples.size(), 4 * half);
  std::vector<int16_t> want;
  for (size_t i = 0; i < thin.samples.size(); ++i) want.push_back(full[2 * (i < half ? i : i - half)]);
  EXPECT_EQ(std::vector<int16_t>(thin.samples.begin(), thin.samples.begin() + 2 * half),
            std::vector<int16_t>(want.begin(), want.begin() + 2 * half));
  EXPECT_LE(MaxDifference(thin.samples, want), kSeekTolerance);

  const std::string slow = ToneMp3(1, 11025, 2, 32);
  ASSERT_EQ(vcMp3ToWav(slow.c_str(), "slow.wav", nullptr), 0);
  ASSERT_EQ(vcExtractMp3ToWav(slow.c_str(), "slowthin.wav", 0, -1, 1), 0);
  Decoded a = ReadPcm("slow.wav"), b = ReadPcm("slowthin.wav");
  EXPECT_EQ(b.rate, 11025);
  ASSERT_EQ(b.samples.size(), a.samples.size() + 576);
  EXPECT_LE(MaxDifference(std::vector<int16_t>(b.samples.begin() + 576, b.samples.end()), a.samples),
            kSeekTolerance);
}

TEST(MpegHeaders, MeasuresFramesAndTellsMpegFromOtherFiles) {
  struct Case {
    unsigned char b[4];
    int version, layer, bitrate, rate, bytes, samples;
  } good[] = {
      {{0xFF, 0xFB, 0x90, 0x44}, 10, 3, 128, 44100, 417, 1152},
      {{0xFF, 0xFB, 0x92, 0xC4}, 10, 3, 128, 44100, 418, 1152},  // padded
      {{0xFF, 0xF3, 0x80, 0xC4}, 20, 3, 64, 22050, 208, 576},
      {{0xFF, 0xE3, 0x18, 0xC4}, 25, 3, 8, 8000, 72, 576},
      {{0xFF, 0xFD, 0x20, 0x00}, 10, 2, 48, 44100, 156, 1152},
      {{0xFF, 0xFF, 0x28, 0x00}, 10, 1, 64, 32000, 24 * 4, 384},
  };
  for (const Case& c : good) {
    tq::mpeg::FrameHeader h;
    ASSERT_TRUE(tq::mpeg::ParseFrameHeader(c.b, &h)) << c.bitrate;
    EXPECT_EQ(std::vector<int>({h.version, h.layer, h.bitrate, h.sampleRate, h.frameBytes, h.samplesPerFrame}),
              std::vector<int>({c.version, c.layer, c.bitrate, c.rate, c.bytes, c.samples}));
  }
  tq::mpeg::FrameHeader h;
  for (auto bad : {"\xFF\xFB\x00\x44", "\xFF\xFB\xF0\x44", "\xFF\xFB\x9C\x44", "\xFF\xEB\x90\x44", "\xFF\xF9\x90\x44",
                   "RIFF"}) {
    EXPECT_FALSE(tq::mpeg::ParseFrameHeader(reinterpret_cast<const unsigned char*>(bad), &h)) << bad;
  }

  const std::string frame = std::string("\xFF\xFB\x90\x44", 4) + std::string(413, '\x55');
  const std::string tag = "ID3\x03" + std::string("\0\0\0\0\x01\x00", 6) + std::string(128, 'T');
  auto looks = [](const std::string& s) {
    return tq::mpeg::LooksLikeMpegAudio([&](int64_t at, void* buf, size_t n) -> size_t {
      if (at >= static_cast<int64_t>(s.size())) return 0;
      n = std::min(n, s.size() - static_cast<size_t>(at));
      std::memcpy(buf, s.data() + at, n);
      return n;
    });
  };
  EXPECT_TRUE(looks(frame + frame));
  EXPECT_TRUE(looks(tag + std::string(300, '\0') + frame + frame));
  EXPECT_TRUE(looks(frame));  // one frame, then the end
  EXPECT_FALSE(looks(frame + "garbage and more garbage"));
  EXPECT_FALSE(looks(std::string("\xFF\xF3\x80\xC4", 4) + std::string(204, '\0') + frame));  // kinds differ
  EXPECT_FALSE(looks(PcmWave(1, 8000, 16, frame + frame)));
  EXPECT_FALSE(looks(std::string(5000, '\0') + frame));
}

}  // namespace
