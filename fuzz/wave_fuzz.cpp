// Fuzzes every export that reads wave files with hostile RIFF files: the
// reader with its seeks, the whole-file queries, cutting, mixing down and
// encoding to MP3.
//
// Input: two bytes that choose the cut (start and end in tens of
// milliseconds, end 255 meaning "to the end"), then the file's bytes.
#include <string>
#include <vector>

#include "sound_fuzz.h"
#include "tqcomm2006.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const int start = data[0] * 10, end = data[1] == 255 ? -1 : data[1] * 10;
  const std::string in = Scratch("in.wav"), out = Scratch("out.wav"), mp3 = Scratch("out.mp3");
  if (!WriteInput(in, data, size, 2)) return 0;

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
