#include "sound/sound_centre.h"

#include <cstring>

#include "core/registry.h"
#include "core/text.h"
#include "platform/env.h"
#include "sound/mp3_to_wave.h"
#include "sound/speech.h"

namespace tq::sound {

const char kWordProgramKey[] = "Software\\VB and VBA Program Settings\\orvex7\\User";
// "Software\墨岭\青砚记句" in GBK.
const char kSentenceProgramKey[] = "Software\\\xC4\xAB\xC1\xEB\\\xC7\xE0\xD1\xE2\xBC\xC7\xBE\xE4";

namespace {

constexpr const char* kInstallPath = "InstallPath";
constexpr const char* kUserSoundFolder = "usersnd\\";
// Where a scrambled user sound is put back into an MP3 before it becomes a
// wave; removed at once.
constexpr const char* kUsmScratch = "tmpusmmp3.mp3";

void Tell(const SoundRequest& r, int32_t source) {
  if (r.sourceOut != nullptr) *r.sourceOut = source;
}

// The replacement of one byte of a sentence in its search form; 0 for none.
char SearchByte(char c) {
  switch (c) {
    case '?': return '@';
    case '"': return '^';
    case ':': return '#';
    case '/': return '&';
    default: return 0;
  }
}

}  // namespace

std::string SearchForm(const char* text) {
  std::string out;
  for (const char* p = text; p != nullptr && *p != '\0'; ++p) {
    if (*p >= 1 && *p <= 4) continue;
    const char r = SearchByte(*p);
    out.push_back(r != 0 ? r : *p);
  }
  return out;
}

void ConvertToSearchingSentence(char* text) {
  for (char* p = text; p != nullptr && *p != '\0'; ++p) {
    if (const char r = SearchByte(*p)) *p = r;
  }
}

bool UserSoundDir(const char* userDir, int kind, std::string* dir) {
  if (userDir != nullptr) {
    *dir = userDir;
    return true;
  }
  const char* key = kind == kWordKind ? kWordProgramKey : kind == kSentenceKind ? kSentenceProgramKey : nullptr;
  RegistryKey k;
  RegistryKey::Value v;
  if (key == nullptr || !k.Open(kCurrentUserRoot, key) || !k.Read(kInstallPath, &v)) return false;
  *dir = v.data.substr(0, v.data.find('\0')) + kUserSoundFolder;
  return true;
}

SndCenter::SndCenter(int useTts, int bits, int sampleRate, int channels, int voiceRate)
    : bits_(bits), sampleRate_(sampleRate), channels_(channels), voiceRate_(voiceRate) {
  if (useTts != 0) {
    ttsSession_ = vcInitTts();
    ttsAvailable_ = ttsSession_;
  }
}

SndCenter::~SndCenter() {
  for (auto& list : libs_) list.clear();
  if (ttsSession_ > 0) vcUnInitTts(ttsSession_);
}

int SndCenter::AddLib(const char* indexPath, const char* rootDir, int kind) {
  if (indexPath == nullptr) return 1;
  if (kind < 0 || kind >= kSoundKinds) return -1;
  auto lib = std::make_unique<SndLib>();
  if (lib->Open(indexPath, rootDir) != 1) return -1;
  libs_[kind].push_back(std::move(lib));
  return 1;
}

int SndCenter::SetEnglishVoice(const char* gbkName) {
  englishVoice_.reset();
  if (gbkName != nullptr) englishVoice_ = WideFromGbk(gbkName);
  return englishVoice_ ? static_cast<int>(englishVoice_->size()) : 0;
}

int SndCenter::SetChineseVoice(const char* gbkName) {
  chineseVoice_.reset();
  if (gbkName != nullptr) chineseVoice_ = WideFromGbk(gbkName);
  return chineseVoice_ ? static_cast<int>(chineseVoice_->size()) : 0;
}

int SndCenter::Search(const char* text, int kind, const SoundRequest& r) {
  if (text == nullptr || (!r.question && r.outBase == nullptr)) return -1;
  switch (kind) {
    case kWordKind: return Word(text, r);
    case kChineseKind: return Chinese(text, r);
    case kSentenceKind: return Sentence(text, r);
    case kChineseSpeechKind: return ChineseSpeech(text, r);
    default: return -1;
  }
}

int SndCenter::Word(const char* text, const SoundRequest& r) {
  // The short name of a word is empty, so a file called just ".usm" (or
  // ".wav", ".mp3") among the user sounds answers for every word.
  return UserLibrariesSpeech(kWordKind, text, std::string(), text, r);
}

int SndCenter::Chinese(const char* text, const SoundRequest& r) {
  const std::string request(text);
  const size_t sep = request.find_first_of("\x01\x02");
  if (sep == std::string::npos) {
    const int got = AskLibraries(kChineseKind, request, r, r.question);
    Tell(r, 0);
    return got;
  }
  const std::string key = request.substr(0, sep);
  if (request[sep] == kLibraryFirst) {
    const int got = AskLibraries(kChineseKind, key, r, r.question);
    if (got != -1) {
      Tell(r, 0);
      return got;
    }
  }
  // Speech first (or after the library missed). Without speech a "\2"
  // request never reaches the library.
  if (!r.allowTts || ttsSession_ <= 0) return -1;
  if (r.question) {
    Tell(r, 1);
    return 1;
  }
  std::string cleaned(request.size() + 1, '\0');
  cleaned.resize(static_cast<size_t>(TtsChineseText(request.c_str() + sep + 1, &cleaned[0])));
  if (Speak(cleaned.c_str(), chineseVoice_, kChineseRate, true, r) == 1) {
    Tell(r, 1);
    return 1;
  }
  const int got = AskLibraries(kChineseKind, key, r, false);
  Tell(r, 0);
  return got;
}

int SndCenter::Sentence(const char* text, const SoundRequest& r) {
  const std::string form = SearchForm(text);
  // Spoken as the caller wrote it, not in its search form.
  return UserLibrariesSpeech(kSentenceKind, form, form.substr(0, kShortNameBytes), text, r);
}

int SndCenter::UserLibrariesSpeech(int kind, const std::string& name, const std::string& shortName,
                                   const char* spoken, const SoundRequest& r) {
  std::string dir;
  if (UserSoundDir(r.userDir, kind, &dir)) {
    const int got = UserSound(dir, name, shortName, r);
    if (got != -1) return got;
  }
  const int got = AskLibraries(kind, name, r, r.question);
  if (got != -1) {
    Tell(r, 0);
    return got;
  }
  return SpeakEnglish(spoken, r);
}

int SndCenter::ChineseSpeech(const char* text, const SoundRequest& r) {
  Tell(r, 1);
  // A question is answered yes whether or not there is speech.
  if (r.question) return 1;
  return Speak(text, chineseVoice_, kChineseRate, true, r);
}

int SndCenter::UserSound(const std::string& dir, const std::string& name, const std::string& shortName,
                         const SoundRequest& r) const {
  std::string path;
  // The full name first, then the short one.
  auto find = [&](const char* extension) {
    path = dir + name + extension;
    if (env::Exists(path.c_str())) return true;
    path = dir + shortName + extension;
    return env::Exists(path.c_str());
  };
  const std::string base = r.outBase != nullptr ? r.outBase : "";
  int got = -1;
  if (find(".usm")) {
    got = 2;
    if (!r.question && r.wantWave) {
      const std::string scratch = dir + kUsmScratch;
      XorSoundFile(path.c_str(), scratch.c_str());
      Mp3ToWav(scratch.c_str(), (base + ".wav").c_str(), 0, nullptr);
      env::Remove(scratch.c_str());
      got = 1;
    } else if (!r.question) {
      XorSoundFile(path.c_str(), (base + ".mp3").c_str());
    }
  } else if (find(".wav")) {
    got = 1;
    if (!r.question) env::CopyFile(path.c_str(), (base + ".wav").c_str());
  } else if (find(".mp3")) {
    got = 2;
    if (!r.question && r.wantWave) {
      Mp3ToWav(path.c_str(), (base + ".wav").c_str(), 0, nullptr);
      got = 1;
    } else if (!r.question) {
      // The MP3 goes under the wave's name, answered with the MP3's code:
      // the front ends play it by its content.
      env::CopyFile(path.c_str(), (base + ".wav").c_str());
    }
  }
  if (got != -1) Tell(r, 0);
  return got;
}

int SndCenter::AskLibraries(int kind, const std::string& key, const SoundRequest& r, bool question) const {
  for (const auto& lib : libs_[kind]) {
    const int got = lib->Extract(key.c_str(), r.outBase, r.wantWave, kind == kSentenceKind, question);
    if (got != -1) return got;
  }
  return -1;
}

int SndCenter::SpeakEnglish(const char* text, const SoundRequest& r) {
  if (!r.allowTts || ttsSession_ <= 0) return -1;
  Tell(r, 1);
  if (r.question) return 1;
  return Speak(text, englishVoice_, voiceRate_, false, r);
}

int SndCenter::Speak(const char* text, const std::optional<std::u16string>& voice, int rate, bool chinese,
                     const SoundRequest& r) {
  vcTtsSetCharacter(ttsSession_, voice ? voice->c_str() : nullptr);
  vcTtsSetRate(ttsSession_, rate);
  const std::string wave = std::string(r.outBase) + ".wav";
  const int spoken =
      vcTtsSpeakToFileAnsi(ttsSession_, text, wave.c_str(), sampleRate_, channels_, bits_, chinese ? 1 : 0);
  return spoken == -1 ? -1 : 1;
}

int MakeSentenceSndFile(const char* sentence, const char* rootDir, const char* indexName, const char* outBase,
                        int wantWave) {
  const std::string root = rootDir != nullptr ? rootDir : "";
  SndCenter centre(1, 16, 22050, 1, 0);
  if (centre.AddLib((root + (indexName != nullptr ? indexName : "")).c_str(), root.c_str(), kSentenceKind) != 1) {
    return -1;
  }
  SoundRequest r;
  r.outBase = outBase;
  r.wantWave = wantWave != 0;
  // No userDir: the sentence program's own user sounds take part.
  return centre.Search(sentence, kSentenceKind, r);
}

}  // namespace tq::sound
