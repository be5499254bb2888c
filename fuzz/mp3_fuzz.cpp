// Fuzzes MP3 input through the MPEG engine: the length query, the whole
// conversion and the cut with and without thinning, on hostile files.
//
// Input: three bytes that choose the cut (start and end in tens of
// milliseconds, end 255 meaning "to the end"; thinning), then the file.
#include <string>
#include <vector>

#include "sound_fuzz.h"
#include "tqcomm2006.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const int start = data[0] * 10, end = data[1] == 255 ? -1 : data[1] * 10, thin = data[2] & 1;
  const std::string in = Scratch("in.mp3"), out = Scratch("out.wav");
  if (!WriteInput(in, data, size, 3)) return 0;

  const int length = vcGetMp3FileLengthInTime(in.c_str());
  Check(length >= 0);
  const int whole = vcMp3ToWav(in.c_str(), out.c_str(), nullptr);
  Check(whole == 0 || whole == -1);
  if (whole == 0) {
    int32_t para[5];
    // What was made is a wave of the decoder's shape: 16 bits.
    if (vcGetWaveFilePara(out.c_str(), para) == 1) Check(para[1] == 16);
  }
  Check(vcExtractMp3ToWav(in.c_str(), out.c_str(), start, end, thin) == whole);
  std::remove(out.c_str());
  return 0;
}
