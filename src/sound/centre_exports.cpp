// The sound centre's exports, the sound-library road for single words and
// sentences, and the article scripts. A handle that is not open answers
// -1 (0 for the speech and voice queries) at once.
#include "core/handle_table.h"
#include "sound/article_script.h"
#include "sound/sound_centre.h"
#include "sound/sound_library.h"
#include "tqcomm2006.h"

namespace s = tq::sound;

namespace {

// Nineteen centres, handles 1 to 19.
using CentreTable = tq::HandleTable<s::SndCenter, 20, -1>;

CentreTable& Centres() {
  static CentreTable table;
  return table;
}

int Search(int centre, const char* text, int kind, const char* outBase, int wantWave, int allowTts,
           int32_t* sourceOut, const char* userDir, bool question) {
  s::SndCenter* c = Centres().Get(centre);
  if (c == nullptr) return -1;
  s::SoundRequest r;
  r.outBase = outBase;
  r.wantWave = wantWave != 0;
  r.allowTts = allowTts != 0;
  r.sourceOut = sourceOut;
  r.userDir = userDir;
  r.question = question;
  return c->Search(text, kind, r);
}

}  // namespace

extern "C" {

TQ_API int TQ_CALL vcSndCenter_OpenEx(int useTts, int bits, int sampleRate, int channels, int voiceRate) {
  return Centres().New(useTts, bits, sampleRate, channels, voiceRate);
}
TQ_API int TQ_CALL vcSndCenter_Open(int useTts, int bits, int sampleRate, int channels) {
  return vcSndCenter_OpenEx(useTts, bits, sampleRate, channels, 0);
}
TQ_API int TQ_CALL vcSndCenter_AddSndLib(int centre, const char* indexPath, const char* rootDir, int kind) {
  s::SndCenter* c = Centres().Get(centre);
  return c == nullptr ? -1 : c->AddLib(indexPath, rootDir, kind);
}
TQ_API int TQ_CALL vcSndCenter_GetSndFile(int centre, const char* text, int kind, const char* outBase, int wantWave,
                                          int allowTts, int32_t* sourceOut, const char* userDir) {
  return Search(centre, text, kind, outBase, wantWave, allowTts, sourceOut, userDir, false);
}
TQ_API int TQ_CALL vcSndCenter_CanSpeak(int centre, const char* text, int kind, const char* outBase, int wantWave,
                                        int allowTts, int32_t* sourceOut, const char* userDir) {
  return Search(centre, text, kind, outBase, wantWave, allowTts, sourceOut, userDir, true);
}
TQ_API int TQ_CALL vcSndCenter_IsTtsAvailable(int centre) {
  s::SndCenter* c = Centres().Get(centre);
  return c == nullptr ? 0 : c->ttsAvailable();
}
TQ_API int TQ_CALL vcSndCenter_SetTtsVoiceName(int centre, const char* name) {
  s::SndCenter* c = Centres().Get(centre);
  return c == nullptr ? 0 : c->SetEnglishVoice(name);
}
TQ_API int TQ_CALL vcSndCenter_SetChineseTtsVoiceName(int centre, const char* name) {
  s::SndCenter* c = Centres().Get(centre);
  return c == nullptr ? 0 : c->SetChineseVoice(name);
}
TQ_API void TQ_CALL vcSndCenter_SetTtsVoiceRate(int centre, int rate) {
  if (s::SndCenter* c = Centres().Get(centre)) c->SetVoiceRate(rate);
}
TQ_API void TQ_CALL vcSndCenter_Close(int centre) { Centres().Delete(centre); }

TQ_API int TQ_CALL vcMakeSentenceSndFile(const char* sentence, const char* rootDir, const char* indexName,
                                         const char* outBase, int wantWave) {
  return s::MakeSentenceSndFile(sentence, rootDir, indexName, outBase, wantWave);
}
TQ_API int TQ_CALL vcMakeWordSndFile(const char* word, const char* rootDir, const char* indexName,
                                     const char* outBase) {
  return s::MakeWordSndFile(word, rootDir, indexName, outBase);
}
TQ_API void TQ_CALL vcConvertToSearchingSentence(char* text) { s::ConvertToSearchingSentence(text); }

TQ_API int TQ_CALL vcProcessVoaScript(const char* scriptPath) {
  if (scriptPath != nullptr) s::ProcessVoaScript(scriptPath);
  return 0;
}
TQ_API int TQ_CALL vcVerifyVoaScript(const char* scriptPath) {
  s::VerifyVoaScript(scriptPath);
  return 0;
}
TQ_API void TQ_CALL vcGetOldVoaSnd(const char* scriptPath) { s::GetOldVoaSnd(scriptPath); }

}  // extern "C"
