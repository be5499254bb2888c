// Fuzzes every export that reads wave files with hostile RIFF files: the
// reader with its seeks, the whole-file queries, cutting, mixing down and
// encoding to MP3.
//
// Input: two bytes that choose the cut (start and end in tens of
// milliseconds, end 255 meaning "to the end"), then the file's bytes.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tqcomm2006.h"

// The sound exports reach the host only for progress bars, devices and
// messages; none is used here.
namespace tq::host {
intptr_t SendMessage(int, unsigned, intptr_t, intptr_t) { return 0; }
int WaveOutDeviceCount() { return 0; }
int PlaySoundFile(const char*, unsigned) { return 0; }
int DispatchOneMessage() { return 0; }
}  // namespace tq::host

namespace {

std::string Scratch(const char* name) {
  static const std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  return dir + "/tq_wave_fuzz." + std::to_string(::getpid()) + "." + name;
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const int start = data[0] * 10, end = data[1] == 255 ? -1 : data[1] * 10;
  const std::string in = Scratch("in.wav"), out = Scratch("out.wav"), mp3 = Scratch("out.mp3");
  std::FILE* f = std::fopen(in.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data + 2, 1, size - 2, f);
  std::fclose(f);

  WaveFileObj w = {};
  std::snprintf(w.fileName, sizeof w.fileName, "%s", in.c_str());
  if (OpenWaveFileToRead(&w) == 1) {
    Check(w.format.channels == 1 || w.format.channels == 2);
    std::vector<char> buffer(333);
    long total = 0;
    for (int n; (n = ReadFromWaveFile(&w, buffer.data(), static_cast<int>(buffer.size()))) > 0;) {
      Check(n <= static_cast<int>(buffer.size()));
      total += n;
    }
    Check(total <= static_cast<long>(size));
    GetCurrentTimePos(&w);
    SeekWaveFileByTime(&w, start);
    ReadFromWaveFile(&w, buffer.data(), 100);
    BetterSeekWaveFileByBytes(&w, -7, 2);
    ReadFromWaveFile(&w, buffer.data(), 100);
    SeekWaveFileByByte(&w, end);
    WaveByteLenToTimeLen(&w.format, w.dataSize);
    WaveTimeOffsetToByteOffset(&w.format, start);
    Check(CloseWaveFile(&w) == 0);
  }
  TqWaveFormat format;
  int32_t para[5];
  const int opened = GetWaveFileFormat(in.c_str(), &format);
  Check(opened == vcGetWaveFilePara(in.c_str(), para));
  Check((vcGetWaveFileLenInTime(in.c_str()) == -1) == (opened == -1) || para[4] == -1);

  char cut[100];
  Check(ExtractWaveSeg(in.c_str(), out.c_str(), start, end, cut, sizeof cut) == opened);
  const int mono = vcWaveSteroToMono(in.c_str(), out.c_str());
  Check(opened == -1 ? mono == -1 : mono != -1);
  const int encoded = vcEncodeWavToMp3(in.c_str(), mp3.c_str(), 32);
  Check(opened == -1 ? encoded == -1 : true);
  std::remove(out.c_str());
  std::remove(mp3.c_str());
  return 0;
}
