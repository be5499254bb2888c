// Fuzzes the article-script reader: every line as the cutting reads it, the
// sentence file names, and the three exports' work on the script, with
// speech off, no library and no recording (the MP3 cutting has a target of
// its own). A script may name any file as its recording, so the target puts
// a folder that isn't there in front of every name it could give.
//
// Input: the script's bytes.
#include <cstdlib>
#include <string>

#include "sound/article_script.h"
#include "sound_fuzz.h"
#include "tqhost.h"

namespace {

int Box(const char* text, const char* title, unsigned) {
  Check(text != nullptr && title != nullptr && *title == '\0');
  return 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool once = [] {
    // No espeak-ng data and a registry of our own: nothing outside is read.
    setenv("TQCOMM_ESPEAK_DATA", Scratch("no-espeak").c_str(), 1);
    setenv("TQCOMM_REGISTRY", Scratch("registry").c_str(), 1);
    tqHost_SetMessageBoxHandler(Box);
    return true;
  }();
  (void)once;
  std::string script(reinterpret_cast<const char*>(data), size);
  // A recording is what follows the first "**" of a line: behind each run
  // of stars goes the missing folder, so "****" stays whole.
  const std::string nowhere = Scratch("nowhere/");
  for (size_t at = 0; (at = script.find("**", at)) != std::string::npos;) {
    at = script.find_first_not_of('*', at);
    if (at == std::string::npos) at = script.size();
    script.insert(at, nowhere);
    at += nowhere.size();
  }
  const std::string path = Scratch("script.txt");
  if (!WriteInput(path, reinterpret_cast<const uint8_t*>(script.data()), script.size(), 0)) return 0;

  for (size_t start = 0; start <= script.size();) {
    size_t end = script.find('\n', start);
    if (end == std::string::npos) end = script.size();
    const tq::sound::ScriptLine line = tq::sound::ReadScriptLine(script.substr(start, end - start));
    Check(line.kind == tq::sound::ScriptLine::kMark || line.sentence.empty());
    if (line.kind == tq::sound::ScriptLine::kMark) {
      const std::string name = tq::sound::SentenceFileName(line.sentence, ".wav");
      Check(name.size() <= tq::sound::kSentenceNameBytes + 4);
      Check(name.find_first_of("?:/\"\x01\x02\x03\x04") == std::string::npos);
    }
    if (line.namesRecording) Check(line.recording.empty() || line.recording[0] == '*' || line.recording[0] == '/');
    start = end + 1;
  }
  vcProcessVoaScript(path.c_str());
  vcVerifyVoaScript(path.c_str());
  vcGetOldVoaSnd(path.c_str());
  return 0;
}
