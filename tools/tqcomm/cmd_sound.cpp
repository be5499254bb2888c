// tqcomm mp3 and tqcomm wave: MP3 to wave and back with a progress bar on
// the terminal, and what a wave file holds.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "commands.h"
#include "progress.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

constexpr int kDefaultBitrate = 128;
constexpr auto kPoll = std::chrono::milliseconds(50);

const char kMp3Usage[] =
    "usage: tqcomm mp3 decode IN.mp3 OUT.wav\n"
    "       tqcomm mp3 encode IN.wav OUT.mp3 [--bitrate K]\n"
    "\n"
    "decode  MPEG audio (MP1, MP2, MP3) to a 16-bit wave of its own rate and\n"
    "        channels, keeping the MP3's file times. Ctrl-C cancels and removes\n"
    "        the wave.\n"
    "encode  a PCM wave to a constant bit rate MP3 (K kbit/s, default 128),\n"
    "        joint stereo or mono. As the library does, the sound is read from\n"
    "        byte 64 of the file whatever its header.\n";
const char kWaveUsage[] =
    "usage: tqcomm wave info FILE\n"
    "\n"
    "info    the format of a RIFF wave file, its data size and its length\n";

bool Exists(const std::string& path) { return vcIfFileExist(path.c_str()) == 1; }

// One line of what a wave holds; false when it is no wave.
bool Describe(const std::string& path, std::string* line) {
  int32_t para[5];
  if (vcGetWaveFilePara(path.c_str(), para) != 1) return false;
  char text[160];
  std::snprintf(text, sizeof text, "%d channel%s, %d Hz, %d bits, %.2f s", para[0], para[0] == 1 ? "" : "s",
                para[2], para[1], para[4] / 1000.0);
  *line = text;
  return true;
}

int Decode(const std::string& in, const std::string& out) {
  if (!Exists(in)) {
    std::fprintf(stderr, "tqcomm: there is no file %s\n", in.c_str());
    return 1;
  }
  // The worker never reports on a source it can't decode: ask first.
  const int length = vcGetMp3FileLengthInTime(in.c_str());
  if (length <= 0) {
    std::fprintf(stderr, "tqcomm: %s is not MPEG audio\n", in.c_str());
    return 1;
  }
  std::remove(out.c_str());
  if (vcMp3ToWavByThread(in.c_str(), out.c_str()) == 0) {
    std::fprintf(stderr, "tqcomm: cannot start the conversion\n");
    return 1;
  }
  const JobEnd end = FollowJob("decoding", vcGetMp3ToWavPercentage, vcCancelConvert, out);
  if (end == JobEnd::kNeverStarted) {
    std::fprintf(stderr, "tqcomm: the conversion of %s did not start\n", in.c_str());
    return 1;
  }
  std::string line;
  if (end == JobEnd::kCancelled) {
    std::fprintf(stderr, "tqcomm: cancelled, %s removed\n", out.c_str());
    return 1;
  }
  if (!Describe(out, &line)) {
    std::fprintf(stderr, "tqcomm: %s holds no sound that could be decoded\n", in.c_str());
    return 1;
  }
  std::printf("%s -> %s: %s\n", in.c_str(), out.c_str(), line.c_str());
  return 0;
}

int Encode(const std::string& in, const std::string& out, int bitrate) {
  int32_t para[5];
  if (vcGetWaveFilePara(in.c_str(), para) != 1) {
    std::fprintf(stderr, "tqcomm: %s is not a wave file\n", in.c_str());
    return 1;
  }
  // The encoder runs on a thread of ours; the MP3's growth against its
  // expected size moves the bar.
  const double expected = para[4] / 1000.0 * bitrate * 1000 / 8;
  std::atomic<int> result{0};
  std::atomic<bool> done{false};
  std::thread worker([&] {
    result = vcEncodeWavToMp3(in.c_str(), out.c_str(), bitrate);
    done = true;
  });
  {
    ProgressBar bar("encoding");
    while (!done) {
      const int size = vcGetFileLength(out.c_str());
      bar.Show(expected > 0 && size > 0 ? static_cast<int>(std::min(99.0, size * 100.0 / expected)) : 0, 100);
      std::this_thread::sleep_for(kPoll);
    }
    worker.join();
    if (result == 1) bar.Show(100, 100);
  }
  if (result != 1) {
    // The library's own reason, if any, stands on the line before.
    std::fprintf(stderr, "\ntqcomm: cannot encode %s to %s\n", in.c_str(), out.c_str());
    return 1;
  }
  std::printf("%s -> %s: %d kbit/s, %.2f s, %d bytes\n", in.c_str(), out.c_str(), bitrate,
              vcGetMp3FileLengthInTime(out.c_str()) / 1000.0, vcGetFileLength(out.c_str()));
  return 0;
}

bool WantsHelp(const Args& args) {
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") return true;
  }
  return false;
}

}  // namespace

int Mp3Command(const Args& in) {
  Args args = in;
  if (WantsHelp(args)) {
    std::printf("%s", kMp3Usage);
    return 0;
  }
  std::string rate;
  int bitrate = kDefaultBitrate;
  if (TakeOption(&args, "--bitrate", &rate)) {
    char* end = nullptr;
    long k = std::strtol(rate.c_str(), &end, 10);
    bitrate = (*end == '\0' && k >= 8 && k <= 320) ? static_cast<int>(k) : -1;
  }
  if (bitrate > 0 && args.size() == 3 && args[0] == "decode" && rate.empty()) return Decode(args[1], args[2]);
  if (bitrate > 0 && args.size() == 3 && args[0] == "encode") return Encode(args[1], args[2], bitrate);
  std::fprintf(stderr, "%s", kMp3Usage);
  return 2;
}

int WaveCommand(const Args& args) {
  if (WantsHelp(args)) {
    std::printf("%s", kWaveUsage);
    return 0;
  }
  if (args.size() != 2 || args[0] != "info") {
    std::fprintf(stderr, "%s", kWaveUsage);
    return 2;
  }
  const std::string& path = args[1];
  TqWaveFormat f;
  int32_t para[5];
  if (GetWaveFileFormat(path.c_str(), &f) != 1 || vcGetWaveFilePara(path.c_str(), para) != 1) {
    std::fprintf(stderr, "tqcomm: %s is not a wave file of one or two channels\n", path.c_str());
    return 1;
  }
  std::printf("%s\n", path.c_str());
  std::printf("  format tag    %u%s\n", f.formatTag, f.formatTag == 1 ? " (PCM)" : " (compressed)");
  std::printf("  channels      %u\n", f.channels);
  std::printf("  sample rate   %u Hz\n", f.samplesPerSecond);
  std::printf("  bits          %u\n", f.bitsPerSample);
  std::printf("  block align   %u\n", f.blockAlign);
  std::printf("  bytes/second  %u\n", f.averageBytesPerSecond);
  std::printf("  data          %d bytes\n", para[3]);
  std::printf("  length        %.3f s\n", para[4] / 1000.0);
  return 0;
}

}  // namespace tqcomm
