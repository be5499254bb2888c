// Wave files through the exports: the bytes written, what the reader finds
// and delivers, the conversions between time and bytes.
#include <string>

#include "sound_util.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

class WaveFile : public TempDirTest {
 protected:
  // Opens path into w_; the result.
  int Open(const std::string& path) {
    w_ = WaveFileObj{};
    std::snprintf(w_.fileName, sizeof w_.fileName, "%s", path.c_str());
    return OpenWaveFileToRead(&w_);
  }
  // Everything the reader delivers.
  std::string ReadAll() {
    std::string out;
    char buf[7];  // small and odd, so the limit falls inside a read
    for (int n; (n = ReadFromWaveFile(&w_, buf, sizeof buf)) > 0;) out.append(buf, n);
    return out;
  }
  WaveFileObj w_{};
};

TEST_F(WaveFile, WritesTheCanonicalHeaderAndPadsOddData) {
  WaveFileObj w;
  w.handle = 77;
  EXPECT_EQ(InitWaveFileObj(&w, 22050, 16, 2, "out.wav"), 4);
  EXPECT_EQ(w.handle, 77u);  // untouched until the file is made
  EXPECT_EQ(std::string(reinterpret_cast<char*>(&w.format), 16), Fmt(2, 22050, 16));
  WriteFile("out.wav", std::string(500, 'x'));  // made anew, not appended to
  ASSERT_EQ(CreateWaveFile(&w), 1);
  EXPECT_EQ(WriteWaveFile(&w, "abc", 3), 3);
  EXPECT_EQ(CloseWaveFile(&w), 0);
  EXPECT_EQ(w.handle, 0u);
  EXPECT_EQ(CloseWaveFile(&w), 0);
  // data keeps its odd size; the pad byte counts in the RIFF size.
  EXPECT_EQ(ReadFile("out.wav"), Riff(Chunk("fmt ", Fmt(2, 22050, 16)) + Chunk("data", "abc") + '\0', 40));
}

TEST_F(WaveFile, UnfinishedFileOpensWithSizeZero) {
  WaveFileObj w;
  InitWaveFileObj(&w, 8000, 8, 1, "open.wav");
  ASSERT_EQ(CreateWaveFile(&w), 1);
  WriteWaveFile(&w, "12345678", 8);
  EXPECT_EQ(ReadFile("open.wav").substr(0, 44),
            Riff(Chunk("fmt ", Fmt(1, 8000, 8)) + Chunk("data", ""), 0));
  ASSERT_EQ(Open("open.wav"), 1);
  EXPECT_EQ(w_.dataSize, 0);
  EXPECT_EQ(ReadAll(), "");
  CloseWaveFile(&w_);
  CloseWaveFile(&w);
}

TEST_F(WaveFile, ReaderStopsAtTheDataSizeCountedFromTheFileStart) {
  std::string data;
  for (int i = 0; i < 100; ++i) data += static_cast<char>(i);
  // A longer "fmt " chunk and chunks around the data.
  WriteFile("a.wav", Riff(Chunk("fmt ", Fmt(1, 11025, 8) + "\x01\x02") + Chunk("LIST", "odd") + '\0' +
                          Chunk("data", data) + Chunk("junk", "zz")));
  ASSERT_EQ(Open("a.wav"), 1);
  EXPECT_EQ(w_.dataSize, 100);
  EXPECT_EQ(w_.dataOffset, 12 + 26 + 12 + 8);
  EXPECT_EQ(ReadAll(), data.substr(0, 100 - 58));
  EXPECT_EQ(CloseWaveFile(&w_), 0);

  WriteFile("b.wav", PcmWave(1, 11025, 8, data));
  ASSERT_EQ(Open("b.wav"), 1);
  EXPECT_EQ(ReadAll(), data.substr(0, 56));  // 100 bytes, 56 delivered
  CloseWaveFile(&w_);
  WriteFile("c.wav", PcmWave(1, 11025, 8, "0123456789"));
  ASSERT_EQ(Open("c.wav"), 1);
  EXPECT_EQ(ReadAll(), "");  // dataSize below dataOffset
  CloseWaveFile(&w_);
}

TEST_F(WaveFile, RefusesWhatIsNotAWaveOfOneOrTwoChannels) {
  const std::string fmt = Chunk("fmt ", Fmt(1, 8000, 8)), data = Chunk("data", "xy");
  const std::vector<std::pair<const char*, std::string>> bad = {
      {"empty", ""},
      {"text", "hello, this is no wave"},
      {"not WAVE", "RIFF" + Le(4 + fmt.size() + data.size()) + "AVI " + fmt + data},
      {"no fmt", Riff(data)},
      {"short fmt", Riff(Chunk("fmt ", Fmt(1, 8000, 8).substr(0, 14)) + data)},
      {"truncated fmt", Riff(fmt).substr(0, 30)},
      {"no data", Riff(fmt)},
      {"0 channels", Riff(Chunk("fmt ", Fmt(0, 8000, 8)) + data)},
      {"3 channels", Riff(Chunk("fmt ", Fmt(3, 8000, 8)) + data)},
      {"hostile size", Riff(Chunk("fmt ", Fmt(1, 8000, 8)) + "LIST" + Le(0xFFFFFFF0u) + data)},
  };
  for (const auto& [what, bytes] : bad) {
    WriteFile("bad.wav", bytes);
    EXPECT_EQ(Open("bad.wav"), -1) << what;
    EXPECT_NE(w_.handle, 0u) << what;  // the stale number stays
    EXPECT_EQ(vcGetWaveFileLenInTime("bad.wav"), -1) << what;
  }
  EXPECT_EQ(Open("missing.wav"), -1);
  EXPECT_EQ(vcGetWaveFileLenInTime("missing.wav"), -1);
  int32_t para[5];
  TqWaveFormat f;
  EXPECT_EQ(vcGetWaveFilePara("missing.wav", para), -1);
  EXPECT_EQ(GetWaveFileFormat("bad.wav", &f), -1);
}

TEST_F(WaveFile, TimeAndByteConversions) {
  WaveFileObj w;
  struct Case {
    int rate, bits, channels, ms, bytes, offset;
  } cases[] = {
      {22050, 16, 1, 1, 44, 108},     // 44.1 truncates
      {22050, 16, 1, 3, 132, 196},    // 132.3
      {11025, 8, 1, 1, 10, 74},       // 11.025 -> 11, odd -> 10
      {11025, 8, 1, -1, -10, 54},     // toward zero
      {44100, 16, 2, 0, 0, 64},
      {44100, 16, 2, 1000, 176400, 176464},
  };
  for (const Case& c : cases) {
    InitWaveFileObj(&w, c.rate, c.bits, c.channels, "x");
    EXPECT_EQ(WaveTimeLenToByteLen(&w.format, c.ms), c.bytes) << c.rate << " " << c.ms;
    EXPECT_EQ(WaveTimeOffsetToByteOffset(&w.format, c.ms), c.offset) << c.rate << " " << c.ms;
  }
  InitWaveFileObj(&w, 22050, 16, 1, "x");
  EXPECT_EQ(WaveByteLenToTimeLen(&w.format, 44100), 1000);
  EXPECT_EQ(WaveByteLenToTimeLen(&w.format, 44099), 999);
  w.format.averageBytesPerSecond = 1;  // the stored average is not used
  EXPECT_EQ(WaveByteLenToTimeLen(&w.format, 441), 10);
}

TEST_F(WaveFile, SeeksAndQueries) {
  WriteFile("s.wav", PcmWave(1, 22050, 16, std::string(44100, '\0')));
  int32_t para[5];
  ASSERT_EQ(vcGetWaveFilePara("s.wav", para), 1);
  EXPECT_EQ(std::vector<int32_t>(para, para + 5), (std::vector<int32_t>{1, 16, 22050, 44100, 1000}));
  EXPECT_EQ(vcGetWaveFileLenInTime("s.wav"), 1000);
  TqWaveFormat f;
  ASSERT_EQ(GetWaveFileFormat("s.wav", &f), 1);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(&f), 16), Fmt(1, 22050, 16));

  ASSERT_EQ(Open("s.wav"), 1);
  EXPECT_EQ(SeekWaveFileByTime(&w_, 0), 64);  // 20 bytes into the sound
  EXPECT_EQ(SeekWaveFileByTime(&w_, 500), 22050 + 64);
  EXPECT_EQ(GetCurrentTimePos(&w_), 500);
  EXPECT_EQ(SeekWaveFileByByte(&w_, 10), 54);
  EXPECT_EQ(BetterSeekWaveFileByBytes(&w_, 10, 0), 54);
  EXPECT_EQ(BetterSeekWaveFileByBytes(&w_, -4, 1), 50);
  EXPECT_EQ(BetterSeekWaveFileByBytes(&w_, -100, 2), 44144 - 100);  // the end of the whole file
  EXPECT_EQ(BetterSeekWaveFileByBytes(&w_, -10, 0), 34);
  EXPECT_EQ(GetCurrentTimePos(&w_), 0);  // -10 bytes: -0.2 ms
  EXPECT_EQ(SeekWaveFileByByte(&w_, -1000), -1);

  // A record copied from a reader makes a wave of the same format.
  WaveFileObj copy = w_;
  std::snprintf(copy.fileName, sizeof copy.fileName, "copy.wav");
  ASSERT_EQ(CreateWaveFile(&copy), 1);
  CloseWaveFile(&copy);
  CloseWaveFile(&w_);
  EXPECT_EQ(ReadFile("copy.wav"), PcmWave(1, 22050, 16, ""));
}

}  // namespace

namespace {

std::string g_played;
int Player(const char* path, unsigned flags) {
  g_played += std::string(path ? path : "-") + ":" + std::to_string(flags) + ";";
  return 7;
}
int g_dispatched = 0;
intptr_t TQ_CALL Proc(int, unsigned message, uintptr_t, intptr_t) {
  g_dispatched = g_dispatched * 10 + static_cast<int>(message);
  return 0;
}

TEST(WaveDevice, ButtonSoundsNeedADeviceAndDoEventsTakesOneMessage) {
  tqHost_SetSoundPlayer(Player);
  tqHost_SetAudioDeviceCount(0);
  EXPECT_EQ(vcIfAudioReady(), 0);
  EXPECT_EQ(vcButtonEnterSound("a.wav"), 0);
  EXPECT_EQ(g_played, "");  // nothing played without a device
  tqHost_SetAudioDeviceCount(2);
  EXPECT_EQ(vcIfAudioReady(), 2);
  EXPECT_EQ(vcButtonEnterSound("a.wav") + vcButtonDownSound("b.wav") + vcButtonUpSound("c.wav"), 21);
  EXPECT_EQ(g_played, "a.wav:3;b.wav:3;c.wav:3;");  // asynchronous, no default sound
  tqHost_SetSoundPlayer(nullptr);
  tqHost_SetAudioDeviceCount(-1);

  int w = tqHost_CreateWindow("", 1, 1);
  tqHost_SetWindowProc(w, Proc);
  EXPECT_EQ(DoEvents(), 0);
  tqHost_PostMessage(w, 1, 0, 0);
  tqHost_PostMessage(w, 2, 0, 0);
  EXPECT_EQ(DoEvents(), 1);
  EXPECT_EQ(g_dispatched, 1);
  EXPECT_EQ(DoEvents(), 1);
  EXPECT_EQ(DoEvents(), 0);
  EXPECT_EQ(g_dispatched, 12);
  tqHost_DestroyWindow(w);
}

}  // namespace
