#include "espeak_phonemes.h"

#include <espeak-ng/speak_lib.h>

namespace tqcomm {

bool EspeakPhonemes::Open(std::string* error) {
  static int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_DONT_EXIT);
  if (rate <= 0) {
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
