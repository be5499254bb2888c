#include "espeak_phonemes.h"

#include <espeak-ng/espeak_ng.h>
#include <espeak-ng/speak_lib.h>

namespace tqcomm {

namespace {

// espeak-ng is one engine per process and hangs when started twice. The
// library's speech (tqcomm say, sndlib) may have started it in this
// process already: espeak_Info then names its data folder, and it is taken
// as it is.
bool StartEspeak() {
  const char* data = nullptr;
  espeak_Info(&data);
  if (data != nullptr && *data != '\0') return espeak_ng_GetSampleRate() > 0;
  return espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_DONT_EXIT) > 0;
}

}  // namespace

bool EspeakPhonemes::Open(std::string* error) {
  static const bool up = StartEspeak();
  if (!up) {
    *error = "espeak-ng could not start (is espeak-ng-data installed?)";
    return false;
  }
  if (espeak_SetVoiceByName("en") != EE_OK) {
    *error = "espeak-ng has no English voice";
    return false;
  }
  open_ = true;
  return true;
}

std::string EspeakPhonemes::Ipa(const std::string& text) const {
  if (!open_ || text.empty()) return std::string();
  // One call gives one clause; the pointer moves on to the next, and is
  // null behind the last.
  std::string ipa;
  const void* at = text.c_str();
  for (int clauses = 0; at != nullptr && clauses < 16; ++clauses) {
    const char* part = espeak_TextToPhonemes(&at, espeakCHARS_UTF8, espeakPHONEMES_IPA);
    if (part == nullptr) break;
    if (!ipa.empty() && *part != '\0') ipa += ' ';
    ipa += part;
  }
  return ipa;
}

}  // namespace tqcomm
