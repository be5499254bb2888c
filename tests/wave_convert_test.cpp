// Cutting and mixing wave files, and the buffer conversions element by
// element, with the elements they leave alone.
#include <string>
#include <vector>

#include "sound_util.h"

using namespace tqtest;

namespace {

using V = std::vector<int16_t>;
constexpr int16_t kUntouched = 12345;

std::string Ramp(size_t bytes) {
  std::string s(bytes, '\0');
  for (size_t i = 0; i < bytes; ++i) s[i] = static_cast<char>(i * 7 + i / 251);
  return s;
}

// The data chunk's bytes of a canonical wave.
std::string Data(const std::string& path) { return ReadFile(path).substr(44); }

class WaveSegments : public TempDirTest {};

TEST_F(WaveSegments, CutCarriesItsSixtyFourBytesAndStopsAtTheReaderLimit) {
  const std::string data = Ramp(3 * 44100);  // 16-bit mono at 22050: 3 s
  WriteFile("src.wav", PcmWave(1, 22050, 16, data));
  char buffer[1000];
  ASSERT_EQ(ExtractWaveSeg("src.wav", "cut.wav", 1000, 1999, buffer, sizeof buffer), 1);
  // From file offset 44100 + 64, 1000 ms of bytes plus 64.
  EXPECT_EQ(ReadFile("cut.wav"), PcmWave(1, 22050, 16, data.substr(44100 + 20, 44100 + 64)));
  ASSERT_EQ(vcExtractWaveSeg("src.wav", "rest.wav", 2000, -1, nullptr, 0), 1);
  EXPECT_EQ(Data("rest.wav"), data.substr(88200 + 20, data.size() - 88200 - 20 - 44));
  EXPECT_EQ(ExtractWaveSeg("missing.wav", "none.wav", 0, 10, nullptr, 0), -1);
  EXPECT_FALSE(vcIfFileExist("none.wav"));
}

TEST_F(WaveSegments, StereoToMonoWritesHalfOfEveryFullBlock) {
  WriteFile("mono.wav", PcmWave(1, 8000, 8, Ramp(300)));
  EXPECT_EQ(vcWaveSteroToMono("mono.wav", "copy.wav"), 2);
  EXPECT_EQ(ReadFile("copy.wav"), ReadFile("mono.wav"));

  // 144 data bytes, 100 delivered: 25 frames mixed, the rest of the block
  // zeros, 1,024 bytes written.
  V lr;
  for (int i = 0; i < 72; ++i) lr.push_back(static_cast<int16_t>(i % 2 ? -3 * i : 5 * i));
  WriteFile("st.wav", PcmWave(2, 22050, 16, Samples16(lr)));
  ASSERT_EQ(vcWaveSteroToMono("st.wav", "m.wav"), 0);
  V mono(512, 0);
  for (int i = 0; i < 25; ++i) mono[i] = static_cast<int16_t>((lr[2 * i] + lr[2 * i + 1]) / 2);  // toward zero
  EXPECT_EQ(ReadFile("m.wav"), Riff(Chunk("fmt ", Fmt(1, 22050, 16)) + Chunk("data", Samples16(mono))));

  WriteFile("st8.wav", PcmWave(2, 8000, 8, std::string("\xFF\xFE\x01\x02", 4) + std::string(44, '\0')));
  ASSERT_EQ(vcWaveSteroToMono("st8.wav", "m8.wav"), 0);
  EXPECT_EQ(Data("m8.wav"), std::string("\xFE\x01", 2) + std::string(1022, '\0'));
  EXPECT_EQ(vcWaveSteroToMono("missing.wav", "x.wav"), -1);
}

TEST(WaveBuffers, WidenAndSpreadLeaveElementZero) {
  const uint8_t bytes[] = {0x80, 0xFF, 0x00, 0x81};
  V out(4, kUntouched);
  WaveBuf8To16(bytes, out.data(), 4);
  EXPECT_EQ(out, (V{kUntouched, 32512, -32768, 256}));
  WaveBuf8To16(bytes, out.data(), 1);  // count 1 does nothing
  EXPECT_EQ(out[0], kUntouched);

  V src = {10, -20, 30}, st(6, kUntouched);
  WaveBufMonoToStero(16, src.data(), st.data(), 3);
  EXPECT_EQ(st, (V{kUntouched, 10, -20, -20, 30, 30}));
  uint8_t b[6] = {1, 2, 3, 9, 9, 9};
  WaveBufMonoToStero(8, b, b, 3);  // in place
  EXPECT_EQ(std::vector<uint8_t>(b, b + 6), (std::vector<uint8_t>{1, 1, 2, 2, 3, 3}));
}

TEST(WaveBuffers, AmplifyInterpolatesAndReadsOneFramePastTheEnd) {
  V out(8, kUntouched);
  V mono = {100, 200, 301, -400};  // the last one lies past the 3 frames
  WaveBufAmplifyBitrate(16, 1, 2, mono.data(), out.data(), 3);
  EXPECT_EQ(out, (V{kUntouched, kUntouched, 200, 250, 301, -49, kUntouched, kUntouched}));

  V stereo = {10, -10, 20, -13, 31, 100};  // two frames, then one past the end
  out.assign(8, kUntouched);
  WaveBufAmplifyBitrate(16, 2, 2, stereo.data(), out.data(), 2);
  EXPECT_EQ(out, (V{kUntouched, -10, 15, -11, 20, -13, 25, 43}));

  uint8_t s8[6] = {200, 0, 255, 1, 0, 0}, o8[8] = {};
  WaveBufAmplifyBitrate(8, 2, 2, s8, o8, 2);
  EXPECT_EQ(std::vector<uint8_t>(o8, o8 + 4), (std::vector<uint8_t>{0, 0, 227, 0}));  // unsigned mean

  V four(16, kUntouched);
  V st4 = {0, 100, 8, 93, 1, 1};  // L0 R0 L1 R1, then one frame past
  WaveBufAmplifyBitrate(16, 2, 4, st4.data(), four.data(), 2);
  // Frame 0's left is not made; right 100 -> 93: d = -7, steps -1, -3, -5.
  EXPECT_EQ(four, (V{kUntouched, 100, kUntouched, 99, kUntouched, 97, kUntouched, 95,  //
                     8, 93, 7, 70, 5, 47, 3, 24}));

  V same = {1, 2, 3, 4};
  WaveBufAmplifyBitrate(8, 1, 2, same.data(), out.data(), 2);  // 8-bit mono does nothing
  WaveBufAmplifyBitrate(16, 2, 3, same.data(), out.data(), 2);
  EXPECT_EQ(out[0], kUntouched);
}

TEST(WaveBuffers, ConvertStepByStep) {
  V src(102);
  for (int i = 0; i < 102; ++i) src[i] = static_cast<int16_t>(i * 3 - 50);
  V dst(400, kUntouched);
  // Halving the rate: step 4096, the first output one step in.
  EXPECT_EQ(vcWaveBufConvert(16, 1, 22050, 16, 1, 11025, src.data(), dst.data(), 100, 0), 100);
  for (int o = 0; o < 50; ++o) ASSERT_EQ(dst[o], src[2 * o + 2]) << o;
  // Doubling: halfway points, shifted arithmetically (rounded down).
  V up = {-3, 0, 5, 7, 0, 0};
  EXPECT_EQ(vcWaveBufConvert(16, 1, 11025, 16, 1, 22050, up.data(), dst.data(), 4, 0), 16);
  EXPECT_EQ(V(dst.begin(), dst.begin() + 8), (V{-2, 0, 2, 5, 6, 7, 3, 0}));
  // Twenty times: elements made as for twice the rate, reading half as many
  // input elements as it makes; settled as it is.
  V twenty = {-3, 0, 5, 7, 0, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(vcWaveBufConvert(16, 1, 1000, 16, 1, 20000, twenty.data(), dst.data(), 1, 0), 40);
  EXPECT_EQ(V(dst.begin(), dst.begin() + 5), (V{-3, -1, 0, 2, 5}));

  V lr = {1, -1, 2, -2, 3, -3};
  EXPECT_EQ(vcWaveBufConvert(16, 2, 8000, 16, 1, 8000, lr.data(), dst.data(), 3, 0), 6);
  EXPECT_EQ(V(dst.begin(), dst.begin() + 3), (V{1, 2, 3}));  // the left, unmixed
  EXPECT_EQ(vcWaveBufConvert(16, 1, 8000, 16, 1, 8000, lr.data(), dst.data(), 3, 0), -1);

  // 16 to 8: the high byte as it is (-1 gives 255); the count is frames x 2.
  V deep = {-1, 0x1234, 0x7FFF};
  uint8_t narrow[16] = {};
  EXPECT_EQ(vcWaveBufConvert(16, 1, 8000, 8, 1, 8000, deep.data(), narrow, 3, 0), 6);
  EXPECT_EQ(std::vector<uint8_t>(narrow, narrow + 3), (std::vector<uint8_t>{255, 0x12, 0x7F}));
  EXPECT_EQ(vcWaveBufConvert(16, 1, 8000, 8, 2, 8000, deep.data(), narrow, 2, 0), 16);  // frames x 8
  EXPECT_EQ(std::vector<uint8_t>(narrow, narrow + 4), (std::vector<uint8_t>{255, 255, 0x12, 0x12}));

  // Mono 8-bit to stereo 16-bit: copied, then widened through scratch.
  const uint8_t eight[] = {0x80, 0xFF};
  V wide(4, kUntouched);
  EXPECT_EQ(vcWaveBufConvert(8, 1, 8000, 16, 2, 8000, eight, wide.data(), 2, 0), 8);
  EXPECT_EQ(wide, (V{0, 0, 32512, 32512}));
  EXPECT_EQ(eight[1], 0xFF);  // the source is never written
}

}  // namespace
