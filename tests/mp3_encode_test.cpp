// Wave to MP3: our MP3s as the mpg123 program hears them, and the steps of
// the conversion watched through an encoder library of the tests' own.
#include <cstring>
#include <string>
#include <vector>

#include "core/binary_io.h"
#include "sound/mp3_encoder.h"
#include "sound_util.h"
#include "tqhost.h"

using namespace tqtest;
namespace s = tq::sound;

namespace {

class Mp3Encode : public TempDirTest {};

TEST_F(Mp3Encode, MpgHearsOurMp3AtItsLengthAndCleanly) {
  for (int channels : {1, 2}) {
    const std::string wave = ToneWave(channels, 44100, 2);
    ASSERT_EQ(vcEncodeWavToMp3(wave.c_str(), "ours.mp3", 128), 1);
    std::string out;
    ASSERT_EQ(tqtest::Run("mpg123 -q -w back.wav ours.mp3 2>&1", &out), 0) << out;
    Decoded src = ReadPcm(wave), back = ReadPcm("back.wav");
    EXPECT_EQ(back.channels, channels);
    EXPECT_EQ(back.rate, 44100);
    // Read from byte 64: the first 20 bytes of sound are not encoded.
    const size_t skipped = 20 / 2;
    EXPECT_NEAR(static_cast<double>(back.samples.size()), src.samples.size() - skipped, 1152.0 * channels);
    EXPECT_GT(SnrDb(src.samples, back.samples, skipped), 20) << channels;
    EXPECT_NEAR(vcGetMp3FileLengthInTime("ours.mp3"), 2000, 27);
  }
  EXPECT_EQ(vcEncodeWavToMp3("missing.wav", "none.mp3", 64), -1);
  EXPECT_EQ(vcIfFileExist("none.mp3"), 0);
}

// The encoder library of the tests: it records what the conversion hands
// over and answers as each test tells it.
struct Fake {
  std::vector<std::string> loaded;  // names asked for
  std::vector<const char*> accept = {"FrMp3Enc.dll"};
  const char* missing = nullptr;  // a function the library lacks
  std::string config, version;
  std::vector<int16_t> samples;
  std::vector<int> chunkSizes, barAtChunk;
  uint32_t chunkSamples = 8, failInit = 0, failChunk = 0, failDeinit = 0;
  bool silentChunks = false;
  int bar = 0, closes = 0;
  std::string vbrPath;
  long fileAtVbr = -1;
} g;

uint32_t Init(const unsigned char* config, uint32_t* samples, uint32_t* capacity, uint32_t* stream) {
  g.config.assign(reinterpret_cast<const char*>(config), s::kEncoderConfigBytes);
  *samples = g.chunkSamples;
  *capacity = 64;
  *stream = 42;
  return g.failInit;
}
uint32_t Chunk(uint32_t stream, uint32_t n, const int16_t* pcm, unsigned char* out, uint32_t* bytes) {
  g.samples.insert(g.samples.end(), pcm, pcm + n);
  g.chunkSizes.push_back(static_cast<int>(n));
  g.barAtChunk.push_back(tqHost_GetProgressPos(g.bar));
  if (g.failChunk != 0 && g.chunkSizes.size() == 2) return g.failChunk;
  *bytes = g.silentChunks ? 0 : 2;
  std::memcpy(out, "mp", 2);
  return stream == 42 ? 0 : 99;
}
uint32_t Deinit(uint32_t, unsigned char* out, uint32_t* bytes) {
  std::memcpy(out, "END", 3);
  *bytes = 3;
  return g.failDeinit;
}
uint32_t Close(uint32_t) { return static_cast<uint32_t>(++g.closes); }
void Version(unsigned char* v) { g.version.assign(reinterpret_cast<const char*>(v), s::kEncoderVersionBytes); }
uint32_t WriteVbr(const char* path) {
  g.vbrPath = path;
  g.fileAtVbr = vcGetFileLength(path);
  return 0;
}

struct FakeLibrary : s::EncoderLibrary {
  s::AnyFunction Find(const char* name) override {
    const std::pair<const char*, s::AnyFunction> all[] = {
        {"FrMp3EncInitStream", reinterpret_cast<s::AnyFunction>(&Init)},
        {"FrMp3EncodeChunk", reinterpret_cast<s::AnyFunction>(&Chunk)},
        {"FrMp3DeinitStream", reinterpret_cast<s::AnyFunction>(&Deinit)},
        {"FrMp3CloseStream", reinterpret_cast<s::AnyFunction>(&Close)},
        {"FrMp3Version", reinterpret_cast<s::AnyFunction>(&Version)},
        {"FrMp3WriteVBRHeader", reinterpret_cast<s::AnyFunction>(&WriteVbr)}};
    for (const auto& [n, f] : all) {
      if (std::strcmp(n, name) == 0 && !(g.missing && std::strcmp(g.missing, name) == 0)) return f;
    }
    return nullptr;
  }
};

std::unique_ptr<s::EncoderLibrary> LoadFake(const char* name) {
  g.loaded.push_back(name);
  for (const char* a : g.accept) {
    if (std::strcmp(a, name) == 0) return std::make_unique<FakeLibrary>();
  }
  return nullptr;
}

class FakeEncoder : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    g = Fake();
    s::SetEncoderLoaderForTesting(LoadFake);
  }
  void TearDown() override {
    s::SetEncoderLoaderForTesting(nullptr);
    TempDirTest::TearDown();
  }
  // Runs the conversion; its result, with what reached stdout and stderr.
  int Encode(const char* wave, std::string* out = nullptr, std::string* err = nullptr) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int r = vcEncodeWavToMp3ShowProgress(wave, "out.mp3", 96, g.bar);
    std::string o = testing::internal::GetCapturedStdout(), e = testing::internal::GetCapturedStderr();
    if (out) *out = o;
    if (err) *err = e;
    return r;
  }
  static uint32_t Config(int offset) {
    return static_cast<uint32_t>(tq::GetI32(reinterpret_cast<const unsigned char*>(g.config.data() + offset)));
  }
};

TEST_F(FakeEncoder, HandsOverTheConfigurationAndTheSamplesFromByte64) {
  std::vector<int16_t> samples(203);
  for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<int16_t>(i * 100 - 7000);
  WriteFile("mono.wav", PcmWave(1, 22050, 16, Samples16(samples)) + "TAIL");  // bytes behind the data too
  g.bar = tqHost_CreateWindow("", 1, 1);
  g.chunkSamples = 6;
  std::string out, err;
  ASSERT_EQ(Encode("mono.wav", &out, &err), 1);
  EXPECT_EQ(out + err, "");
  EXPECT_EQ(g.loaded, std::vector<std::string>{"FrMp3Enc.dll"});
  EXPECT_EQ(g.version, std::string(s::kEncoderVersionBytes, '\0'));
  std::string want(s::kEncoderConfigBytes, '\0');
  for (auto [offset, value] : {std::pair<int, uint32_t>{0, 256}, {4, 1}, {8, 331}, {12, 22050}, {20, 3}, {24, 96},
                               {32, 2}, {36, 1}, {60, 1}, {84, 1}}) {
    std::memcpy(&want[offset], Le(value).data(), 4);
  }
  EXPECT_EQ(g.config, want);
  // Everything from byte 64 to the end of the file, as 16-bit samples.
  std::string bytes = ReadFile("mono.wav").substr(64);
  EXPECT_EQ(Samples16(g.samples), bytes);
  EXPECT_EQ(g.chunkSizes.front(), 6);
  EXPECT_EQ(g.chunkSizes.back(), static_cast<int>(bytes.size() / 2 % 6));
  // Every chunk's output, the flush, then the tag written over the closed file.
  std::string mp3;
  for (size_t i = 0; i < g.chunkSizes.size(); ++i) mp3 += "mp";
  EXPECT_EQ(ReadFile("out.mp3"), mp3 + "END");
  EXPECT_EQ(g.vbrPath, "out.mp3");
  EXPECT_EQ(g.fileAtVbr, static_cast<long>(2 * g.chunkSizes.size() + 3));
  EXPECT_EQ(g.closes, 1);
  // The bar as each chunk saw it: only exact tens move it (the percentage
  // rises by 2.6 a chunk here, so most are passed over), and the 64 bytes
  // never read keep it below 100.
  std::vector<int> moves = {0};
  for (int p : g.barAtChunk) {
    if (p != moves.back()) moves.push_back(p);
  }
  EXPECT_EQ(moves, (std::vector<int>{0, 10, 50, 60}));
  tqHost_DestroyWindow(g.bar);

  // Stereo in mode 1; 8-bit samples widened around 128.
  WriteFile("st8.wav", PcmWave(2, 8000, 8, std::string(20, '\x80') + std::string("\x81\x7F\xFF\x00", 4)));
  g.samples.clear();
  ASSERT_EQ(Encode("st8.wav"), 1);
  EXPECT_EQ(Config(20), 1u);
  EXPECT_EQ(g.samples, (std::vector<int16_t>{256, -256, 32512, -32768}));
}

TEST_F(FakeEncoder, ReportsEachFailureWhereThePlatformWouldShowIt) {
  WriteFile("w.wav", PcmWave(1, 8000, 16, std::string(400, '\1')));
  struct Case {
    const char* what;
    void (*set)();
    const char* out;
    const char* err;
  } cases[] = {
      {"no library", [] { g.accept = {}; }, "", "Error loading FrMp3Enc.dll"},
      {"no function", [] { g.missing = "FrMp3WriteVBRHeader"; }, "Mp3 Dll Load Error", ""},
      {"init", [] { g.failInit = 3; }, "", "Error opening encoding stream (3)"},
      {"chunk", [] { g.failChunk = 7; }, "", "FrMp3EncodeChunk() failed (7)"},
      {"flush", [] { g.failDeinit = 9; }, "", "beExitStream failed (9)"},
  };
  for (const Case& c : cases) {
    g = Fake();
    c.set();
    std::string out, err;
    EXPECT_EQ(Encode("w.wav", &out, &err), -1) << c.what;
    EXPECT_EQ(out, c.out) << c.what;
    EXPECT_EQ(err, c.err) << c.what;
    EXPECT_EQ(g.vbrPath, "") << c.what;
  }
  EXPECT_EQ(g.closes, 1);  // a failed flush closes the stream
  g = Fake();
  g.accept = {"..\\FrMp3Enc.dll"};  // only in the parent folder
  EXPECT_EQ(Encode("w.wav"), 1);
  EXPECT_EQ(g.loaded, (std::vector<std::string>{"FrMp3Enc.dll", "..\\FrMp3Enc.dll"}));
}

TEST_F(FakeEncoder, SilentChunksAndTinyWavesLeaveOnlyTheFlush) {
  WriteFile("w.wav", PcmWave(1, 8000, 16, std::string(400, '\1')));
  g.silentChunks = true;
  ASSERT_EQ(Encode("w.wav"), 1);
  EXPECT_FALSE(g.chunkSizes.empty());
  EXPECT_EQ(ReadFile("out.mp3"), "END");
  g = Fake();
  WriteFile("tiny.wav", PcmWave(1, 8000, 16, std::string(20, '\1')));  // 64 bytes in all
  ASSERT_EQ(Encode("tiny.wav"), 1);
  EXPECT_TRUE(g.chunkSizes.empty());
  EXPECT_EQ(ReadFile("out.mp3"), "END");
  WriteFile("text.wav", "not a wave");
  std::remove("out.mp3");
  EXPECT_EQ(Encode("text.wav"), -1);
  EXPECT_EQ(vcIfFileExist("out.mp3"), 1);  // begun, and left
}

}  // namespace
