// tqcomm digest: the shape of a recording as a picture. The digest is made
// by the library's worker job, which the tool polls for a progress bar, and
// drawn through a digest reader into a host surface saved as PNG.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "commands.h"
#include "progress.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

constexpr int kDefaultWidth = 800, kDefaultHeight = 200;
constexpr int kMaxWidth = 2050;  // 1,025 points of two columns
constexpr int kMaxHeight = 4096;
// Blocks averaged into each point when the block is chosen for the user:
// a block's byte is one sample, the mean of several follows the loudness.
constexpr int kBlocksPerPoint = 8;

const char kUsage[] =
    "usage: tqcomm digest IN.wav|IN.mp3 [--block MS] [--width W] [--height H]\n"
    "                     [--digest FILE] -o OUT.png\n"
    "\n"
    "Draws the shape of a recording: its digest (one byte of loudness for each\n"
    "block of sound) made on the library's worker thread, then drawn as the\n"
    "front ends draw it, two pixel columns a point, into a PNG.\n"
    "\n"
    "  --block MS     block length, 1 to 1000 ms (default: about 8 blocks to\n"
    "                 each point of the picture)\n"
    "  --width W      picture width, 2 to 2050 pixels (default 800)\n"
    "  --height H     picture height, 2 to 4096 pixels (default 200)\n"
    "  --digest FILE  keep the digest file there (its block length is not in it)\n"
    "\n"
    "A file whose name ends in .wav is read as a wave, any other as MPEG audio.\n"
    "Ctrl-C cancels. Exit status: 0 done, 1 failure, 2 bad usage.\n";

bool Number(const std::string& text, int low, int high, int* out) {
  char* end = nullptr;
  const long n = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || n < low || n > high) return false;
  *out = static_cast<int>(n);
  return true;
}

bool IsWaveName(const std::string& path) {
  if (path.size() < 4) return false;
  std::string tail = path.substr(path.size() - 4);
  for (char& c : tail) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return tail == ".wav";
}

struct Options {
  std::string in, png, digest;
  int blockMs = 0;  // 0: chosen from the length
  int width = kDefaultWidth, height = kDefaultHeight;
};

// 0, or 2 with the usage said.
int Parse(const Args& in, Options* o) {
  Args args = in;
  std::string value;
  bool ok = true;
  if (TakeOption(&args, "--block", &value)) ok = ok && Number(value, 1, 1000, &o->blockMs);
  if (TakeOption(&args, "--width", &value)) ok = ok && Number(value, 2, kMaxWidth, &o->width);
  if (TakeOption(&args, "--height", &value)) ok = ok && Number(value, 2, kMaxHeight, &o->height);
  TakeOption(&args, "--digest", &o->digest);
  TakeOption(&args, "-o", &o->png);
  if (!ok || args.size() != 1 || o->png.empty() || args[0].empty() || args[0][0] == '-') {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  o->in = args[0];
  return 0;
}

// Runs the job to its end with a bar; false when it failed or was cancelled.
bool MakeDigest(const Options& o, const std::string& digest) {
  std::remove(digest.c_str());
  vcInitMakingDigestProcess(o.in.c_str(), digest.c_str(), o.blockMs);
  if (vcCreateMakingDigestThread() == 0) {
    std::fprintf(stderr, "tqcomm: cannot start the digest\n");
    return false;
  }
  switch (FollowJob("digest", vcGetMakeDigestPercentage, vcCancelMakeDigest, digest)) {
    case JobEnd::kFinished:
      return true;
    case JobEnd::kCancelled:
      std::fprintf(stderr, "tqcomm: cancelled\n");
      return false;
    case JobEnd::kNeverStarted:
      break;
  }
  std::fprintf(stderr, "tqcomm: the digest of %s could not be made at %s\n", o.in.c_str(), digest.c_str());
  return false;
}

// Draws the whole digest into the picture, as many blocks to a point as it
// takes to fit; the blocks a point, or 0 when the picture was not saved.
int Draw(const Options& o, const std::string& digest, int blocks) {
  const int points = o.width / 2;
  const int per_point = std::max(1, (blocks + points - 1) / points);
  const int dc = tqHost_CreateDC(o.width, o.height);
  const int reader = vcDigestFile_Open(digest.c_str());
  if (dc == 0 || reader == -1) {
    if (dc != 0) tqHost_DeleteDC(dc);
    return 0;
  }
  vcDigestFile_Draw(reader, dc, o.height, o.width, 0, per_point, o.blockMs);
  vcDigestFile_Close(reader);
  const bool saved = tqHost_SavePng(dc, o.png.c_str()) == 1;
  tqHost_DeleteDC(dc);
  return saved ? per_point : 0;
}

}  // namespace

int DigestCommand(const Args& args) {
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") {
      std::printf("%s", kUsage);
      return 0;
    }
  }
  Options o;
  if (Parse(args, &o) != 0) return 2;
  if (vcIfFileExist(o.in.c_str()) != 1) {
    std::fprintf(stderr, "tqcomm: there is no file %s\n", o.in.c_str());
    return 1;
  }
  // The job reads by the name, and never reports on a file it can't read:
  // ask first.
  const bool wave = IsWaveName(o.in);
  const int length = wave ? vcGetWaveFileLenInTime(o.in.c_str()) : vcGetMp3FileLengthInTime(o.in.c_str());
  if (length <= 0) {
    std::fprintf(stderr, wave ? "tqcomm: %s is not a wave file with sound in it\n"
                              : "tqcomm: %s is not MPEG audio (a wave file's name ends in .wav)\n",
                 o.in.c_str());
    return 1;
  }
  if (o.blockMs == 0) o.blockMs = std::clamp(length / (o.width / 2 * kBlocksPerPoint), 1, 1000);

  std::string digest = o.digest, folder;
  if (digest.empty()) {
    char pattern[] = "/tmp/tqcomm-digest.XXXXXX";
    if (mkdtemp(pattern) == nullptr) {
      std::perror("tqcomm: a temporary folder");
      return 1;
    }
    folder = pattern;
    digest = folder + "/digest.dig";
  }
  // The job would never report on a digest it can't make either.
  std::FILE* probe = std::fopen(digest.c_str(), "wb");
  if (probe == nullptr) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", digest.c_str());
    if (!folder.empty()) rmdir(folder.c_str());
    return 1;
  }
  std::fclose(probe);
  int status = 1;
  if (MakeDigest(o, digest)) {
    const int blocks = vcGetFileLength(digest.c_str());
    const int per_point = blocks > 0 ? Draw(o, digest, blocks) : 0;
    if (blocks <= 0) {
      std::fprintf(stderr, "tqcomm: %s gave no digest\n", o.in.c_str());
    } else if (per_point == 0) {
      std::fprintf(stderr, "tqcomm: cannot write %s\n", o.png.c_str());
    } else {
      std::printf("%s -> %s: %.2f s, %d blocks of %d ms, %d a point\n", o.in.c_str(), o.png.c_str(),
                  length / 1000.0, blocks, o.blockMs, per_point);
      status = 0;
    }
  }
  if (!folder.empty()) {
    std::remove(digest.c_str());
    rmdir(folder.c_str());
  }
  return status;
}

}  // namespace tqcomm
