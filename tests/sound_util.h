// Sound for the tests: wave files built byte by byte, test audio made once
// per build tree by the sox and lame programs, and what a listener would
// check of a decoded file.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

namespace tqtest {

inline std::string Le(uint32_t v, int bytes = 4) {
  std::string s;
  for (int i = 0; i < bytes; ++i) s.push_back(static_cast<char>(v >> (8 * i)));
  return s;
}

inline std::string Chunk(const std::string& id, const std::string& body) { return id + Le(body.size()) + body; }

// The 16-byte PCM format block.
inline std::string Fmt(int channels, int rate, int bits) {
  return Le(1, 2) + Le(channels, 2) + Le(rate) + Le(rate * channels * bits / 8) + Le(channels * bits / 8, 2) +
         Le(bits, 2);
}

// A RIFF "WAVE" file of the given chunks, its size field true unless given.
inline std::string Riff(const std::string& chunks, int64_t size = -1) {
  return "RIFF" + Le(size < 0 ? 4 + chunks.size() : static_cast<uint32_t>(size)) + "WAVE" + chunks;
}

inline std::string PcmWave(int channels, int rate, int bits, const std::string& data) {
  return Riff(Chunk("fmt ", Fmt(channels, rate, bits)) + Chunk("data", data));
}

inline std::string Samples16(const std::vector<int16_t>& v) {
  return std::string(reinterpret_cast<const char*>(v.data()), v.size() * 2);
}

// The format and the samples of the "data" chunk of a canonical wave.
struct Decoded {
  int channels = 0, rate = 0, bits = 0;
  std::vector<int16_t> samples;
  size_t Frames() const { return channels ? samples.size() / channels : 0; }
};

inline Decoded ReadPcm(const std::string& path) {
  Decoded d;
  std::string f = ReadFile(path);
  size_t data = f.find("data");
  if (f.size() < 44 || data == std::string::npos) return d;
  auto u = [&](size_t at, int n) {
    uint32_t v = 0;
    for (int i = 0; i < n; ++i) v |= static_cast<uint32_t>(static_cast<unsigned char>(f[at + i])) << (8 * i);
    return v;
  };
  d.channels = static_cast<int>(u(22, 2));
  d.rate = static_cast<int>(u(24, 4));
  d.bits = static_cast<int>(u(34, 2));
  size_t n = std::min<size_t>(u(data + 4, 4), f.size() - data - 8) / 2;
  d.samples.resize(n);
  if (n > 0) std::memcpy(d.samples.data(), f.data() + data + 8, n * 2);
  return d;
}

// Signal to noise of b against a, b's sample i against a's i + lag, in dB.
inline double SnrDb(const std::vector<int16_t>& a, const std::vector<int16_t>& b, size_t lag) {
  double signal = 0, noise = 0;
  for (size_t i = 0; i + lag < a.size() && i < b.size(); ++i) {
    double s = a[i + lag], e = s - b[i];
    signal += s * s;
    noise += e * e;
  }
  return 10 * std::log10(signal / (noise > 0 ? noise : 1e-9));
}

// Test audio made once per build tree: name in the cache folder, made by a
// shell command that writes "$OUT". Safe when tests run side by side.
inline std::string Audio(const std::string& name, const std::string& command) {
  std::string dir = std::string(TQ_BINARY_DIR) + "/test-audio";
  std::string path = dir + "/" + name;
  if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
    std::fclose(f);
    return path;
  }
  std::string tmp = path + ".part" + std::to_string(::getpid());
  std::string out;
  int r = Run("mkdir -p '" + dir + "' && OUT='" + tmp + "' && " + command + " && mv \"$OUT\" '" + path + "' 2>&1",
              &out);
  EXPECT_EQ(r, 0) << command << "\n" << out;
  return path;
}

// A tone made by sox: seconds of a sine at hz.
inline std::string ToneWave(int channels, int rate, double seconds, int hz = 440) {
  return Audio("tone_" + std::to_string(channels) + "_" + std::to_string(rate) + "_" + std::to_string(seconds) +
                   "_" + std::to_string(hz) + ".wav",
               "sox -n -r " + std::to_string(rate) + " -c " + std::to_string(channels) + " -b 16 -t wav \"$OUT\" synth " +
                   std::to_string(seconds) + " sine " + std::to_string(hz) + " vol 0.5");
}

// The same tone made into an MP3 by the lame program.
inline std::string ToneMp3(int channels, int rate, double seconds, int kbps) {
  std::string wave = ToneWave(channels, rate, seconds);
  return Audio("tone_" + std::to_string(channels) + "_" + std::to_string(rate) + "_" + std::to_string(seconds) + "_" +
                   std::to_string(kbps) + ".mp3",
               "lame --quiet -b " + std::to_string(kbps) + " --resample " + std::to_string(rate / 1000.0) + " '" +
                   wave + "' \"$OUT\"");
}

#ifdef TQCOMM_BIN
// tqcomm run as a person at a terminal runs it, with its data folder and
// registry in the test's scratch folder; out gets what it prints.
class SoundToolTest : public TempDirTest {
 protected:
  int Tool(const std::string& args, std::string* out) {
    return tqtest::Run("LANG=C.UTF-8 XDG_DATA_HOME='" + Path("data") + "' TQCOMM_REGISTRY='" + Path("reg") + "' " +
                           std::string(TQCOMM_BIN) + " " + args + " 2>&1",
                       out);
  }
  static bool Has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }
};
#endif

}  // namespace tqtest
