#include <espeak-ng/espeak_ng.h>
#include <espeak-ng/speak_lib.h>
#include <soxr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <mutex>
#include <vector>

#include "platform/env.h"
#include "platform/text_codec.h"
#include "sound/speech.h"
#include "sound/wave_file.h"

namespace tq::sound {
namespace {

constexpr int kMaxRateStep = 10;
constexpr double kRateRange = 3.0;  // the speed at rate 10 over the speed at rate 0

struct Session {
  bool hasVoice = false;
  std::u16string voice;
  int rate = 0;
};

// espeak-ng and the sessions, all under one lock.
struct Engine {
  std::mutex mutex;
  bool tried = false;
  bool up = false;
  int sampleRate = 0;
  int starts = 0;
  int next = 1;
  std::map<int, Session> sessions;
};

Engine& TheEngine() {
  static Engine* engine = new Engine;  // lives until exit, as espeak-ng does
  return *engine;
}

// Starts espeak-ng unless this process has already tried. Under the lock.
bool StartLocked(Engine& e) {
  if (e.tried) return e.up;
  e.tried = true;
  // Someone else in the process (the tool's pronunciation builder) may have
  // started it: espeak_Info then names its data folder. Starting it again
  // would hang it.
  const char* data = nullptr;
  espeak_Info(&data);
  if (data == nullptr || *data == '\0') {
    const char* chosen = std::getenv("TQCOMM_ESPEAK_DATA");
    std::string folder;
    if (chosen != nullptr && *chosen != '\0') {
      folder = env::NativePath(chosen);
      // espeak-ng falls back to its own folder when given one that isn't
      // there; a named folder is meant, so none means no speech.
      if (!env::IsDirectory(folder.c_str())) return false;
    }
    espeak_ng_InitializePath(folder.empty() ? nullptr : folder.c_str());
    espeak_ng_ERROR_CONTEXT context = nullptr;
    ++e.starts;
    const espeak_ng_STATUS status = espeak_ng_Initialize(&context);
    espeak_ng_ClearErrorContext(&context);
    if (status != ENS_OK) return false;
    if (espeak_ng_InitializeOutput(ENOUTPUT_MODE_SYNCHRONOUS, 0, nullptr) != ENS_OK) return false;
  }
  e.sampleRate = espeak_ng_GetSampleRate();
  e.up = e.sampleRate > 0;
  return e.up;
}

// The samples of one synthesis, handed to the callback as user data.
struct Heard {
  std::vector<int16_t> samples;
};

int Collect(short* wav, int count, espeak_EVENT* events) {
  if (wav != nullptr && count > 0 && events != nullptr && events->user_data != nullptr) {
    auto* heard = static_cast<Heard*>(events->user_data);
    heard->samples.insert(heard->samples.end(), wav, wav + count);
  }
  return 0;  // go on
}

bool SelectVoice(const Session& s, bool chinese) {
  if (s.hasVoice) {
    const std::string name = Utf8FromWide(s.voice);
    if (!name.empty() && espeak_SetVoiceByName(name.c_str()) == EE_OK) return true;
  }
  return espeak_SetVoiceByName(chinese ? kChineseVoice : kEnglishVoice) == EE_OK;
}

// Speaks under the lock into samples at the engine's rate; false when the
// session, the voice or the synthesis fails.
bool Synthesise(int session, const char* text, bool chinese, Heard* heard, int* rate) {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  if (!e.up) return false;
  auto it = e.sessions.find(session);
  if (it == e.sessions.end() || !SelectVoice(it->second, chinese)) return false;
  espeak_SetParameter(espeakRATE, WordsPerMinute(it->second.rate), 0);
  espeak_SetSynthCallback(Collect);
  const std::string utf8 = platform::GbkToUtf8(text);
  if (espeak_Synth(utf8.c_str(), utf8.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr, heard) != EE_OK) {
    return false;
  }
  *rate = e.sampleRate;
  return true;
}

std::vector<int16_t> Resample(const std::vector<int16_t>& in, int from, int to) {
  if (from == to || in.empty()) return in;
  const double ratio = static_cast<double>(to) / from;
  std::vector<int16_t> out(static_cast<size_t>(std::ceil(in.size() * ratio)) + 16);
  size_t done = 0;
  const soxr_io_spec_t io = soxr_io_spec(SOXR_INT16_I, SOXR_INT16_I);
  const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
  if (soxr_oneshot(from, to, 1, in.data(), in.size(), nullptr, out.data(), out.size(), &done, &io, &quality,
                   nullptr) != nullptr) {
    return {};
  }
  out.resize(done);
  return out;
}

// Mono 16-bit samples as the bytes of the asked channels and bits.
std::vector<unsigned char> Shape(const std::vector<int16_t>& mono, int channels, int bits) {
  std::vector<unsigned char> out;
  out.reserve(mono.size() * static_cast<size_t>(channels * bits / 8));
  for (int16_t s : mono) {
    for (int c = 0; c < channels; ++c) {
      if (bits == 8) {
        out.push_back(static_cast<unsigned char>((s >> 8) + 128));
      } else {
        const uint16_t u = static_cast<uint16_t>(s);
        out.push_back(static_cast<unsigned char>(u));
        out.push_back(static_cast<unsigned char>(u >> 8));
      }
    }
  }
  return out;
}

bool WriteWaveFile(const char* path, int rate, int channels, int bits, const std::vector<unsigned char>& bytes) {
  WaveFileObj wave{};
  InitWave(&wave, rate, bits, channels, path);
  const bool made = CreateWave(&wave) == 1;
  bool written = made;
  for (size_t at = 0; written && at < bytes.size();) {
    const int n = static_cast<int>(std::min<size_t>(bytes.size() - at, 1 << 20));
    written = WriteWave(&wave, bytes.data() + at, n) == n;
    at += static_cast<size_t>(n);
  }
  CloseWave(&wave);
  if (made && !written) env::Remove(path);
  return written;
}

}  // namespace

int WordsPerMinute(int rate) {
  const int r = std::clamp(rate, -kMaxRateStep, kMaxRateStep);
  const long wpm = std::lround(espeakRATE_NORMAL * std::pow(kRateRange, r / static_cast<double>(kMaxRateStep)));
  return static_cast<int>(std::clamp<long>(wpm, espeakRATE_MINIMUM, espeakRATE_MAXIMUM));
}

int vcInitTts() {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  if (!StartLocked(e)) return 0;
  const int session = e.next++;
  e.sessions[session] = Session();
  return session;
}

void vcUnInitTts(int session) {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  e.sessions.erase(session);
}

int vcTtsSetCharacter(int session, const char16_t* voice) {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  auto it = e.sessions.find(session);
  if (it == e.sessions.end()) return -1;
  it->second.hasVoice = voice != nullptr;
  it->second.voice = voice != nullptr ? std::u16string(voice) : std::u16string();
  return 1;
}

int vcTtsSetRate(int session, int rate) {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  auto it = e.sessions.find(session);
  if (it == e.sessions.end()) return -1;
  it->second.rate = rate;
  return 1;
}

int vcTtsSpeakToFileAnsi(int session, const char* text, const char* wavePath, int samplesPerSecond, int channels,
                         int bits, int isChinese) {
  if (text == nullptr || wavePath == nullptr || samplesPerSecond <= 0 || (channels != 1 && channels != 2) ||
      (bits != 8 && bits != 16)) {
    return -1;
  }
  Heard heard;
  int rate = 0;
  if (!Synthesise(session, text, isChinese == 1, &heard, &rate)) return -1;
  // Resampling and writing need no lock: the samples are this call's own.
  const std::vector<int16_t> samples = Resample(heard.samples, rate, samplesPerSecond);
  if (samples.empty() && !heard.samples.empty()) return -1;
  return WriteWaveFile(wavePath, samplesPerSecond, channels, bits, Shape(samples, channels, bits)) ? 1 : -1;
}

std::u16string WideFromGbk(const char* gbk) {
  std::u16string out;
  if (gbk == nullptr) return out;
  const std::string utf8 = platform::GbkToUtf8(gbk);
  for (size_t i = 0; i < utf8.size();) {
    const unsigned char c = static_cast<unsigned char>(utf8[i]);
    const int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
    uint32_t code = extra == 0 ? c : c & (0x3F >> extra);
    for (int k = 1; k <= extra && i + static_cast<size_t>(k) < utf8.size(); ++k) {
      code = code << 6 | (static_cast<unsigned char>(utf8[i + static_cast<size_t>(k)]) & 0x3F);
    }
    i += static_cast<size_t>(extra) + 1;
    if (code >= 0x10000) {
      code -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (code >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(code));
    }
  }
  return out;
}

std::string Utf8FromWide(const std::u16string& wide) {
  std::string out;
  for (size_t i = 0; i < wide.size(); ++i) {
    uint32_t code = wide[i];
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < wide.size() && wide[i + 1] >= 0xDC00 && wide[i + 1] < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10) + (wide[++i] - 0xDC00);
    }
    if (code < 0x80) {
      out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
      out.push_back(static_cast<char>(0xC0 | code >> 6));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | code >> 12));
      out.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | code >> 18));
      out.push_back(static_cast<char>(0x80 | (code >> 12 & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
  }
  return out;
}

int EngineStartsForTesting() {
  Engine& e = TheEngine();
  std::lock_guard<std::mutex> lock(e.mutex);
  return e.starts;
}

}  // namespace tq::sound
