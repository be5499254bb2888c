// Digests made at once from wave files: the byte of each block, the blocks
// counted, the progress bar, and bad input answered with -1.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "sound_util.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

// A wave whose reader delivers exactly these sample bytes. Readers stop
// dataOffset (44) bytes before the end of the data, so 44 bytes of the
// loudest sample follow, which no digest may show.
std::string Readable(int channels, int rate, int bits, const std::string& samples) {
  return PcmWave(channels, rate, bits, samples + std::string(44, bits == 8 ? '\x00' : '\x80'));
}

std::vector<int> Bytes(const std::string& path) {
  std::vector<int> out;
  for (unsigned char c : ReadFile(path)) out.push_back(c);
  return out;
}

using DigestMaking = TempDirTest;

TEST_F(DigestMaking, EachBlockGivesTheAmplitudeOfItsLastSample) {
  // 1,000 samples a second and blocks of 10 ms: ten samples a block, the
  // first nine at full scale, so that neither a peak nor a mean would pass.
  const std::vector<std::pair<int16_t, int>> table16 = {
      {-32768, 128}, {-1, 1}, {1, 0}, {0, 0}, {255, 0}, {256, 1}, {-256, 1}, {-257, 2}, {32767, 127}};
  std::vector<int16_t> samples;
  std::vector<int> expected;
  for (auto [last, amplitude] : table16) {
    samples.insert(samples.end(), 9, 32767);
    samples.push_back(last);
    expected.push_back(amplitude);
  }
  WriteFile("sixteen.wav", Readable(1, 1000, 16, Samples16(samples)));
  EXPECT_EQ(vcMakeWaveDigestFile("sixteen.wav", "sixteen.dig", 10), 90);
  EXPECT_EQ(Bytes("sixteen.dig"), expected);

  const std::vector<std::pair<uint8_t, int>> table8 = {{128, 0}, {0, 128}, {255, 127}, {127, 1}, {129, 1}};
  std::string bytes;
  expected.clear();
  for (auto [last, amplitude] : table8) {
    bytes += std::string(9, '\x00');
    bytes.push_back(static_cast<char>(last));
    expected.push_back(amplitude);
  }
  WriteFile("eight.wav", Readable(1, 1000, 8, bytes));
  EXPECT_EQ(vcMakeWaveDigestFile("eight.wav", "eight.dig", 10), 50);
  EXPECT_EQ(Bytes("eight.dig"), expected);
}

TEST_F(DigestMaking, StereoTakesTheRightChannel) {
  // Left at full scale throughout; the right channel's last sample decides.
  std::vector<int16_t> frames;
  for (int16_t right : {0, -32768, 512, -1}) {
    for (int i = 0; i < 10; ++i) {
      frames.push_back(-32768);
      frames.push_back(i == 9 ? right : 0);
    }
  }
  WriteFile("stereo16.wav", Readable(2, 1000, 16, Samples16(frames)));
  EXPECT_EQ(vcMakeWaveDigestFile("stereo16.wav", "stereo16.dig", 10), 40);
  EXPECT_EQ(Bytes("stereo16.dig"), (std::vector<int>{0, 128, 2, 1}));

  std::string bytes;
  for (uint8_t right : {128, 0}) {
    for (int i = 0; i < 10; ++i) bytes += std::string{'\x00', static_cast<char>(i == 9 ? right : 128)};
  }
  WriteFile("stereo8.wav", Readable(2, 1000, 8, bytes));
  EXPECT_EQ(vcMakeWaveDigestFile("stereo8.wav", "stereo8.dig", 10), 20);
  EXPECT_EQ(Bytes("stereo8.dig"), (std::vector<int>{0, 128}));
}

TEST_F(DigestMaking, TheLastShortBlockCountsAndBlocksFollowTheIntegerArithmetic) {
  // 8,000 per second: blocks of 10 ms hold 80 samples; 2 blocks and 5
  // samples make 3 bytes, the last from sample 164.
  std::vector<int16_t> samples(165, 0);
  samples[79] = -2560;
  samples[164] = 5120;
  WriteFile("short.wav", Readable(1, 8000, 16, Samples16(samples)));
  EXPECT_EQ(vcMakeWaveDigestFile("short.wav", "short.dig", 10), 30);
  EXPECT_EQ(Bytes("short.dig"), (std::vector<int>{10, 0, 20}));

  // 3 ms: 1000 / 3 = 333 blocks a second, 8000 / 333 = 24 samples a block,
  // so one second makes 334 blocks (the last of 8) and "1002 ms".
  WriteFile("second.wav", Readable(1, 8000, 16, Samples16(std::vector<int16_t>(8000, 0))));
  EXPECT_EQ(vcMakeWaveDigestFile("second.wav", "second.dig", 3), 1002);
  EXPECT_EQ(ReadFile("second.dig").size(), 334u);
  // A whole second a block.
  EXPECT_EQ(vcMakeWaveDigestFile("second.wav", "whole.dig", 1000), 1000);
  EXPECT_EQ(ReadFile("whole.dig").size(), 1u);
}

TEST_F(DigestMaking, SilenceGivesZeros) {
  WriteFile("silent.wav", Readable(1, 22050, 16, std::string(22050 * 2, '\0')));
  EXPECT_EQ(vcMakeWaveDigestFile("silent.wav", "silent.dig", 20), 1000);
  EXPECT_EQ(ReadFile("silent.dig"), std::string(50, '\0'));
}

TEST_F(DigestMaking, BlocksLargerThanTheReadBufferMatchTheSamples) {
  // 44.1 kHz stereo, 25 ms: 40 blocks a second of 1,102 frames, 4,408
  // bytes, read in pieces. Each byte is the right channel of the block's
  // last frame.
  const std::string wave = ToneWave(2, 44100, 1.0, 300);
  const Decoded d = ReadPcm(wave);
  ASSERT_EQ(d.channels, 2);
  const size_t frames = (d.samples.size() - 22) / 2;  // the last 44 bytes are not read
  const size_t blocks = (frames + 1101) / 1102;
  ASSERT_EQ(vcMakeWaveDigestFile(wave.c_str(), "tone.dig", 25), static_cast<int>(blocks) * 25);
  const std::vector<int> got = Bytes("tone.dig");
  ASSERT_EQ(got.size(), blocks);
  for (size_t k = 0; k < blocks; ++k) {
    const int right = d.samples[std::min((k + 1) * 1102, frames) * 2 - 1] >> 8;
    ASSERT_EQ(got[k], right < 0 ? -right : right) << "block " << k;
  }
}

// The bar's messages as its window procedure sees them.
std::vector<std::pair<unsigned, intptr_t>> g_messages;
TqWindowProc g_host_proc = nullptr;
intptr_t TQ_CALL Record(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  g_messages.emplace_back(message, static_cast<intptr_t>(wParam));
  return tqHost_CallWindowProc(g_host_proc, window, message, wParam, lParam);
}

TEST_F(DigestMaking, ProgressBarGetsAPositionEvery1024Blocks) {
  // Blocks of one sample: 3,000 blocks of the 6,044 data bytes; at blocks
  // 1,024 and 2,048 the bar gets 2048 x 100 / 6044 and 4096 x 100 / 6044.
  WriteFile("ramp.wav", Readable(1, 1000, 16, Samples16(std::vector<int16_t>(3000, 100))));
  const int bar = tqHost_CreateWindow("bar", 200, 20);
  g_host_proc = tqHost_SetWindowProc(bar, Record);
  g_messages.clear();
  EXPECT_EQ(vcMakeWaveDigestFileShowProgress("ramp.wav", "ramp.dig", 1, bar), 3000);
  EXPECT_EQ(g_messages, (std::vector<std::pair<unsigned, intptr_t>>{{1026, 33}, {1026, 67}}));
  EXPECT_EQ(tqHost_GetProgressPos(bar), 67);
  tqHost_DestroyWindow(bar);
}

TEST_F(DigestMaking, BadInputIsRefusedWithoutADigest) {
  const std::string tone = Samples16(std::vector<int16_t>(1000, 1000));
  WriteFile("good.wav", Readable(1, 1000, 16, tone));
  WriteFile("empty.wav", "");
  WriteFile("header_only.wav", PcmWave(1, 1000, 16, tone).substr(0, 30));
  WriteFile("four_bits.wav", Readable(1, 1000, 4, tone));
  WriteFile("slow.wav", Readable(1, 50, 16, tone));  // 50 per second: no sample in a 1 ms block
  WriteFile("no_rate.wav", Readable(1, 0, 16, tone));
  WriteFile("three.wav", Readable(3, 1000, 16, tone));
  const struct {
    const char* wave;
    int blockMs;
  } refused[] = {
      {"missing.wav", 10}, {"empty.wav", 10}, {"header_only.wav", 10}, {"four_bits.wav", 10},
      {"slow.wav", 1},     {"no_rate.wav", 10}, {"three.wav", 10},     {"good.wav", 0},
      {"good.wav", -10},   {"good.wav", 1001},  {"good.wav", 5000},
  };
  for (const auto& r : refused) {
    EXPECT_EQ(vcMakeWaveDigestFile(r.wave, "out.dig", r.blockMs), -1) << r.wave << " " << r.blockMs;
    EXPECT_EQ(vcIfFileExist("out.dig"), 0) << r.wave << " " << r.blockMs;
  }
  EXPECT_EQ(vcMakeWaveDigestFile("good.wav", "no/such/folder.dig", 10), -1);
  EXPECT_EQ(vcMakeWaveDigestFile(nullptr, "out.dig", 10), -1);
  EXPECT_EQ(vcMakeWaveDigestFile("good.wav", nullptr, 10), -1);
  EXPECT_EQ(vcMakeWaveDigestFile("good.wav", "out.dig", 1000), 1000);
}

TEST_F(DigestMaking, TruncatedWaveGivesTheBlocksThatAreThere) {
  // The data chunk claims 10,000 bytes; 300 are there: 15 blocks of 20.
  std::string wave = PcmWave(1, 1000, 16, Samples16(std::vector<int16_t>(5000, -4096)));
  WriteFile("cut.wav", wave.substr(0, 44 + 300));
  EXPECT_EQ(vcMakeWaveDigestFile("cut.wav", "cut.dig", 10), 150);
  EXPECT_EQ(ReadFile("cut.dig"), std::string(15, '\x10'));
  // A last block of one byte has no whole sample: it counts, as silence.
  WriteFile("odd.wav", wave.substr(0, 44 + 21));
  EXPECT_EQ(vcMakeWaveDigestFile("odd.wav", "odd.dig", 10), 20);
  EXPECT_EQ(Bytes("odd.dig"), (std::vector<int>{16, 0}));
}

}  // namespace
