// Fuzzes the article-script reader: every line as the cutting reads it, the
// sentence file names, and the three exports' work on the script, with
// speech off and no library. The MP3 cutting has its own target: here it
// only checks what it is asked to do.
//
// Input: the script's bytes.
#include <cstdlib>
#include <string>

#include "sound/article_script.h"
#include "sound/mp3_to_wave.h"
#include "sound_fuzz.h"

namespace tq::host {
int MessageBox(int, const char* text, const char* title, unsigned) {
  Check(text != nullptr && title != nullptr && std::string(title).empty());
  return 1;
}
}  // namespace tq::host

namespace tq::sound {
// A cut names a sentence wave, ends after it starts or runs to the end.
int ExtractMp3ToWav(const char* mp3Path, const char* wavePath, int startMs, int endMs, int thin) {
  Check(mp3Path != nullptr && wavePath != nullptr && thin == 0);
  const std::string name(wavePath);
  Check(name.size() >= 4 && name.size() <= kSentenceNameBytes + 4 && name.compare(name.size() - 4, 4, ".wav") == 0);
  Check(name.find_first_of("?:/\"\x01\x02\x03\x04") == std::string::npos);
  Check(startMs != -1);
  (void)endMs;
  return -1;
}
int Mp3ToWav(const char*, const char*, int, int32_t*) { return -1; }
}  // namespace tq::sound

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool once = [] {
    // No espeak-ng data and a registry of our own: nothing outside is read.
    setenv("TQCOMM_ESPEAK_DATA", Scratch("no-espeak").c_str(), 1);
    setenv("TQCOMM_REGISTRY", Scratch("registry").c_str(), 1);
    return true;
  }();
  (void)once;
  const std::string path = Scratch("script.txt");
  if (!WriteInput(path, data, size, 0)) return 0;
  const std::string script(reinterpret_cast<const char*>(data), size);
  for (size_t start = 0; start <= script.size();) {
    size_t end = script.find('\n', start);
    if (end == std::string::npos) end = script.size();
    const tq::sound::ScriptLine line = tq::sound::ReadScriptLine(script.substr(start, end - start));
    Check(line.kind == tq::sound::ScriptLine::kMark || line.sentence.empty());
    start = end + 1;
  }
  tq::sound::ProcessVoaScript(path.c_str());
  tq::sound::VerifyVoaScript(path.c_str());
  tq::sound::GetOldVoaSnd(path.c_str());
  return 0;
}
