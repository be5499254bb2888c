// Fuzzes the lesson script reader: the header's numbers and pattern, the word
// blocks with their tags, marks and recordings, and the lesson they make,
// with every sound answered by the sound centre from files in a scratch
// folder (user sounds of words and sentences in several formats, a library
// of explanations, letters, a recording under SndFiles and an MP3), speech
// off. A script may name any file, so every open outside the scratch folder
// is refused, and files may not grow past a megabyte (a huge pause
// would otherwise write for minutes).
//
// Input: one byte of switches (bit 0 compress, bit 1 the file that keeps the
// wave, bits 2 to 4 the word count), then the script from its 8th line: the
// target writes the first seven, the paths and the folders of user sounds.
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "core/text.h"
#include "fuzz_util.h"
#include "lesson/lesson_script.h"
#include "lesson/pattern.h"
#include "platform/env.h"
#include "tqhost.h"

namespace {

using fuzzutil::Check;
using fuzzutil::Scratch;
using fuzzutil::WriteAll;

std::string Le(uint32_t v, int bytes) {
  std::string s;
  for (int i = 0; i < bytes; ++i) s.push_back(static_cast<char>(v >> (8 * i)));
  return s;
}

// A canonical wave of frames frames of a slow ramp.
std::string Wave(int channels, int rate, int bits, int frames) {
  std::string data;
  for (int i = 0; i < frames * channels; ++i) {
    if (bits == 8) {
      data.push_back(static_cast<char>(128 + i % 50));
    } else {
      data += Le(static_cast<uint32_t>(i * 37 % 4000), 2);
    }
  }
  const std::string fmt = Le(1, 2) + Le(channels, 2) + Le(rate, 4) + Le(rate * channels * bits / 8, 4) +
                          Le(channels * bits / 8, 2) + Le(bits, 2);
  const std::string chunks = "fmt " + Le(16, 4) + fmt + "data" + Le(data.size(), 4) + data;
  return "RIFF" + Le(4 + chunks.size(), 4) + "WAVE" + chunks;
}

void Put(const std::string& name, const std::string& bytes) {
  WriteAll(Scratch(name), reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

struct Host {
  int centre = 0;
  int window = 0;
  int dc = 0;
};

Host SetUp() {
  setenv("TQCOMM_ESPEAK_DATA", Scratch("no-espeak").c_str(), 1);
  setenv("TQCOMM_REGISTRY", Scratch("registry").c_str(), 1);
  Check(std::system(("mkdir -p " + Scratch("user") + " " + Scratch("letters") + " " + Scratch("tmp") + " " +
                     Scratch("SndFiles") + " " + Scratch("c/tmp"))
                        .c_str()) == 0);
  // Words and sentences in the lesson's format and in others.
  Put("user/a.wav", Wave(1, 8000, 16, 300));
  Put("user/b.wav", Wave(2, 11025, 8, 200));
  Put("user/c.wav", Wave(1, 400, 16, 100));  // twenty times slower than the usual lesson
  Put("user/Hello.wav", Wave(1, 22050, 16, 500));
  Put("user/x.wav", "RIFF\x10\0\0\0WAVEfmt \x04\0\0\0abcd");
  for (const char* letter : {"a1", "a2", "b1", "b2", "A1", "c2", "blank"}) {
    Put(std::string("letters/") + letter + ".wav", Wave(1, 11025, 16, 120));
  }
  Put("SndFiles/rec.wav", Wave(1, 8000, 16, 2000));
  Put("rec.wav", Wave(2, 44100, 16, 1000));
  // An explanation library with one wave record, under the key "a".
  const std::string sound = Wave(1, 16000, 16, 400);
  std::string record = "a" + std::string(63, '\0') + Le(0, 4) + Le(sound.size(), 4) + "expl.dat" +
                       std::string(12, '\0') + Le(1, 4);
  Put("expl.idx", record);
  Put("expl.dat", sound);
  vcEncodeWavToMp3(Scratch("SndFiles/rec.wav").c_str(), Scratch("rec.mp3").c_str(), 32);

  Host h;
  h.centre = vcSndCenter_Open(0, 16, 8000, 1);
  Check(vcSndCenter_AddSndLib(h.centre, Scratch("expl.idx").c_str(), Scratch("").c_str(), 1) == 1);
  h.window = tqHost_CreateWindow("bar", 100, 10);
  h.dc = tqHost_CreateDC(64, 16);
  // The file that keeps the wave stands on this C: drive.
  tqHost_SetCdDrive('C', Scratch("c").c_str());
  const std::string root = Scratch("");
  tq::env::SetOpenFaultForTesting([root](const std::string& path, const char*) {
    const bool inside = path.compare(0, root.size(), root) == 0 || (!path.empty() && path[0] != '/');
    return !inside || path.find("..") != std::string::npos;
  });
  rlimit files{1 << 20, 1 << 20};
  setrlimit(RLIMIT_FSIZE, &files);
  signal(SIGXFSZ, SIG_IGN);
  return h;
}

// The caption file's pairs: times that never go back, inside the wave.
void CheckCaptions(const std::string& lrt, int64_t waveMs) {
  std::vector<std::string> lines;
  for (size_t at = 0; at < lrt.size();) {
    size_t end = lrt.find("\r\n", at);
    Check(end != std::string::npos);
    lines.push_back(lrt.substr(at, end - at));
    at = end + 2;
  }
  Check(lines.size() % 2 == 0);
  int64_t last = 0;
  for (size_t i = 0; i < lines.size(); i += 2) {
    const int32_t t = tq::lesson::ToInt(lines[i]);
    if (t == -1) continue;
    Check(t >= last && t <= waveMs);
    last = t;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Host host = SetUp();
  if (size < 1) return 0;
  const int switches = data[0];
  const bool compress = (switches & 1) != 0;
  const bool keep = (switches & 2) != 0;
  const int words = (switches >> 2) & 7;
  std::string script = Scratch("letters/") + "\r\n" + Scratch("tmp/word") + "\r\n" + Scratch("tmp/expl") + "\r\n" +
                       Scratch("tmp/sent") + "\r\n" + Scratch("tmp/cn") + "\r\n" + Scratch("user/") + "\r\n" +
                       Scratch("user/") + "\r\n";
  script.append(reinterpret_cast<const char*>(data + 1), size - 1);
  WriteAll(Scratch("script.txt"), reinterpret_cast<const uint8_t*>(script.data()), script.size());
  if (keep) {
    WriteAll(Scratch("c/tmp/tqtqnomp3.dat"), data, 0);
  } else {
    std::remove(Scratch("c/tmp/tqtqnomp3.dat").c_str());
  }
  for (const char* old : {"out.wav", "out.lrt", "out.mp3", "out.lrc"}) std::remove(Scratch(old).c_str());

  // The header's reading on its own: the pattern's steps are never empty
  // pauses.
  std::FILE* f = std::fopen(Scratch("script.txt").c_str(), "rb");
  Check(f != nullptr);
  tq::LineReader reader(f);
  tq::lesson::LessonSettings settings;
  tq::lesson::ReadSettings(&reader, &settings);
  std::fclose(f);
  tq::lesson::TakeECTextPrefix(&settings.pattern);
  for (const tq::lesson::PatternStep& s : tq::lesson::ParsePattern(settings.pattern)) {
    Check(s.kind != tq::lesson::PatternStep::kPause || s.ms != 0);
  }

  fuzzutil::InScratch([&] {
    const int maker = vcMp3Maker_Open(Scratch("script.txt").c_str(), host.centre);
    Check(maker == 1);
    const int made =
        vcMp3Maker_MakeWaveFile(maker, Scratch("out.wav").c_str(), words, compress ? 1 : 0, host.window, host.dc);
    Check(made == -1 || (made >= 0 && made <= std::max(words, 1)));
    if (keep && made >= 0 && vcIfFileExist(Scratch("out.wav").c_str()) == 1) {
      // Only a file well below the size limit: once a write is cut there,
      // the data chunk's size may never reach the header (the closing
      // seek fails on what could not be written).
      int32_t para[5];
      struct stat st;
      const bool sane = stat(Scratch("out.wav").c_str(), &st) == 0 && st.st_size < (3 << 18) &&
                        vcGetWaveFilePara(Scratch("out.wav").c_str(), para) == 1 && (para[1] == 8 || para[1] == 16) &&
                        para[2] > 0 && para[3] >= 0;
      if (sane) CheckCaptions(fuzzutil::ReadAll(Scratch("out.lrt")), para[4]);
    }
    vcMp3Maker_Close(maker);
  });
  return 0;
}
