// Digests made at once from wave files: the byte of each block, the blocks
// counted, the progress bar, and bad input answered with -1.
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
  // 1,000 samples a second and blocks of 10 ms: ten samples a block, all
  // but the last at full scale, so that neither a peak nor a mean passes.
  const std::vector<std::pair<int, int>> table16 = {{-32768, 128}, {-1, 1},   {1, 0},    {0, 0},      {255, 0},
                                                    {256, 1},      {-256, 1}, {-257, 2}, {32767, 127}};
  const std::vector<std::pair<int, int>> table8 = {{128, 0}, {0, 128}, {255, 127}, {127, 1}, {129, 1}};
  for (const auto* table : {&table16, &table8}) {
    const int bits = table == &table16 ? 16 : 8;
    std::vector<int16_t> samples;
    std::string bytes;
    std::vector<int> expected;
    for (auto [last, amplitude] : *table) {
      samples.insert(samples.end(), 9, -32768);
      samples.push_back(static_cast<int16_t>(last));
      bytes += std::string(9, '\xff') + static_cast<char>(last);
      expected.push_back(amplitude);
    }
    WriteFile("t.wav", Readable(1, 1000, bits, bits == 16 ? Samples16(samples) : bytes));
    EXPECT_EQ(vcMakeWaveDigestFile("t.wav", "t.dig", 10), static_cast<int>(table->size()) * 10) << bits;
    EXPECT_EQ(Bytes("t.dig"), expected) << bits;
  }
}

TEST_F(DigestMaking, StereoTakesTheRightChannel) {
  std::vector<int16_t> frames;
  std::string bytes;
  for (int16_t right : {0, -32768, 512, -1}) {
    for (int i = 0; i < 10; ++i) frames.insert(frames.end(), {-32768, i == 9 ? right : int16_t{0}});
  }
  for (int i = 0; i < 20; ++i) bytes += std::string{'\x00', i == 19 ? '\x00' : '\x80'};
  WriteFile("stereo16.wav", Readable(2, 1000, 16, Samples16(frames)));
  WriteFile("stereo8.wav", Readable(2, 1000, 8, bytes));
  EXPECT_EQ(vcMakeWaveDigestFile("stereo16.wav", "16.dig", 10), 40);
  EXPECT_EQ(Bytes("16.dig"), (std::vector<int>{0, 128, 2, 1}));
  EXPECT_EQ(vcMakeWaveDigestFile("stereo8.wav", "8.dig", 10), 20);
  EXPECT_EQ(Bytes("8.dig"), (std::vector<int>{0, 128}));
}

TEST_F(DigestMaking, TheLastShortBlockCountsBlocksFollowTheIntegerArithmeticAndSilenceIsZero) {
  // 8,000 per second: blocks of 10 ms hold 80 samples; 2 blocks and 5
  // samples make 3 bytes, the last from sample 164.
  std::vector<int16_t> samples(165, 0);
  samples[79] = -2560;
  samples[164] = 5120;
  WriteFile("short.wav", Readable(1, 8000, 16, Samples16(samples)));
  EXPECT_EQ(vcMakeWaveDigestFile("short.wav", "short.dig", 10), 30);
  EXPECT_EQ(Bytes("short.dig"), (std::vector<int>{10, 0, 20}));
  // 3 ms: 1000 / 3 = 333 blocks a second of 8000 / 333 = 24 samples, so a
  // silent second makes 334 zeros (the last block of 8) and "1002 ms".
  WriteFile("second.wav", Readable(1, 8000, 16, std::string(16000, '\0')));
  EXPECT_EQ(vcMakeWaveDigestFile("second.wav", "second.dig", 3), 1002);
  EXPECT_EQ(ReadFile("second.dig"), std::string(334, '\0'));
  // Silence draws the centre line alone.
  const int dc = tqHost_CreateDC(200, 50);
  vcDrawDigestFile("second.dig", dc, 50, 200, 3);
  char log[64] = {};
  tqHost_GetDrawLog(dc, log, sizeof log);
  EXPECT_STREQ(log, "MoveTo 0 25\nLineTo 200 25\n");
  tqHost_DeleteDC(dc);
  EXPECT_EQ(vcMakeWaveDigestFile("second.wav", "whole.dig", 1000), 1000);
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
  EXPECT_EQ(vcMakeWaveDigestFileShowProgress("ramp.wav", "ramp.dig", 1, bar), 3000);
  EXPECT_EQ(g_messages, (std::vector<std::pair<unsigned, intptr_t>>{{1026, 33}, {1026, 67}}));
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
  const std::pair<const char*, int> refused[] = {
      {"missing.wav", 10}, {"empty.wav", 10}, {"header_only.wav", 10}, {"four_bits.wav", 10}, {"slow.wav", 1},
      {"no_rate.wav", 10}, {"good.wav", 0},   {"good.wav", -10},       {"good.wav", 1001},    {"good.wav", 5000}};
  for (const auto& [wave, blockMs] : refused) {
    EXPECT_EQ(vcMakeWaveDigestFile(wave, "out.dig", blockMs), -1) << wave << " " << blockMs;
    EXPECT_EQ(vcIfFileExist("out.dig"), 0) << wave << " " << blockMs;
  }
  EXPECT_EQ(vcMakeWaveDigestFile("good.wav", "no/such/folder.dig", 10), -1);
  EXPECT_EQ(vcMakeWaveDigestFile(nullptr, "out.dig", 10), -1);
  EXPECT_EQ(vcMakeWaveDigestFile("good.wav", nullptr, 10), -1);

  // A data chunk that claims 10,000 bytes where 300 are: 15 blocks of 20.
  // A last block of one byte has no whole sample: it counts, as silence.
  const std::string cut = PcmWave(1, 1000, 16, Samples16(std::vector<int16_t>(5000, -4096)));
  WriteFile("cut.wav", cut.substr(0, 44 + 301));
  EXPECT_EQ(vcMakeWaveDigestFile("cut.wav", "cut.dig", 10), 160);
  EXPECT_EQ(ReadFile("cut.dig"), std::string(15, '\x10') + '\0');
}

}  // namespace
