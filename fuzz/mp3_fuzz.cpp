// Fuzzes MP3 input through the MPEG engine: the length query, the whole
// conversion and the cut with and without thinning, on hostile files.
//
// Input: three bytes that choose the cut (start and end in tens of
// milliseconds, end 255 meaning "to the end"; thinning), then the file.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tqcomm2006.h"

namespace tq::host {
intptr_t SendMessage(int, unsigned, intptr_t, intptr_t) { return 0; }
int WaveOutDeviceCount() { return 0; }
int PlaySoundFile(const char*, unsigned) { return 0; }
int DispatchOneMessage() { return 0; }
}  // namespace tq::host

namespace {

std::string Scratch(const char* name) {
  static const std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  return dir + "/tq_mp3_fuzz." + std::to_string(::getpid()) + "." + name;
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const int start = data[0] * 10, end = data[1] == 255 ? -1 : data[1] * 10, thin = data[2] & 1;
  const std::string in = Scratch("in.mp3"), out = Scratch("out.wav");
  std::FILE* f = std::fopen(in.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data + 3, 1, size - 3, f);
  std::fclose(f);

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
