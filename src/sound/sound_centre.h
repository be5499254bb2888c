// The sound centre: one question, "a sound of this word or sentence",
// answered from the user's own recordings, the sound libraries, and last
// the speech synthesiser, in an order fixed for each kind of request. The
// same search runs in question mode, which only says what would answer.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sound/sound_library.h"

namespace tq::sound {

// The kinds of request, which are also the lists of libraries.
enum SoundKind : int { kWordKind = 0, kChineseKind = 1, kSentenceKind = 2, kChineseSpeechKind = 3 };
constexpr int kSoundKinds = 4;

// Separators of a Chinese request: "key\1text" asks the library first,
// "key\2text" speaks first.
constexpr char kLibraryFirst = 1;
constexpr char kSpeechFirst = 2;
// A sentence's user sound may be named by this many bytes of its search form.
constexpr size_t kShortNameBytes = 80;
// Chinese is always spoken at this rate.
constexpr int kChineseRate = -2;

// Where the user sounds of the two learning programs live when the caller
// names no folder: "InstallPath" under these keys of the current user, and
// "usersnd\" below it.
extern const char kWordProgramKey[];
extern const char kSentenceProgramKey[];
constexpr uint32_t kCurrentUserRoot = 0x80000001u;

// The search form of a sentence, fit for a file name and an index key: "?"
// "@", the double quote "^", ":" "#", "/" "&", and the bytes 1 to 4 left out.
std::string SearchForm(const char* text);
// The same four replacements in place, dropping nothing.
void ConvertToSearchingSentence(char* text);

// The folder of user sounds for a kind of request: userDir as it stands, else
// the program's install path from the registry + "usersnd\". False when
// there is none.
bool UserSoundDir(const char* userDir, int kind, std::string* dir);

// Where a search puts its answer and what it may do.
struct SoundRequest {
  const char* outBase = nullptr;
  bool wantWave = false;
  bool allowTts = false;
  int32_t* sourceOut = nullptr;
  const char* userDir = nullptr;
  bool question = false;
};

class SndCenter {
 public:
  SndCenter(int useTts, int bits, int sampleRate, int channels, int voiceRate);
  SndCenter(const SndCenter&) = delete;
  SndCenter& operator=(const SndCenter&) = delete;
  ~SndCenter();

  // 1 when added (or indexPath is null), -1 when the index won't open or
  // there is no such kind.
  int AddLib(const char* indexPath, const char* rootDir, int kind);
  // A result code (1 wave, 2 MP3, 3 in a library), or -1.
  int Search(const char* text, int kind, const SoundRequest& request);

  int ttsAvailable() const { return ttsAvailable_; }
  // Answer the name's length in wide characters.
  int SetEnglishVoice(const char* gbkName);
  int SetChineseVoice(const char* gbkName);
  void SetVoiceRate(int rate) { voiceRate_ = rate; }

 private:
  int Word(const char* text, const SoundRequest& r);
  int Chinese(const char* text, const SoundRequest& r);
  int Sentence(const char* text, const SoundRequest& r);
  int ChineseSpeech(const char* text, const SoundRequest& r);

  // Words and sentences: the user's sounds by name (else short name), the
  // kind's libraries by name, English speech of the text as spoken.
  int UserLibrariesSpeech(int kind, const std::string& name, const std::string& shortName, const char* spoken,
                          const SoundRequest& r);
  int UserSound(const std::string& dir, const std::string& name, const std::string& shortName,
                const SoundRequest& r) const;
  // The first answer of the kind's libraries, in the order they were added.
  int AskLibraries(int kind, const std::string& key, const SoundRequest& r, bool question) const;
  // English speech, the last resort of words and sentences.
  int SpeakEnglish(const char* text, const SoundRequest& r);
  // 1, or -1.
  int Speak(const char* text, const std::optional<std::u16string>& voice, int rate, bool chinese,
            const SoundRequest& r);

  int bits_;
  int sampleRate_;
  int channels_;
  int voiceRate_;
  int ttsSession_ = 0;
  int ttsAvailable_ = 0;
  std::vector<std::unique_ptr<SndLib>> libs_[kSoundKinds];
  std::optional<std::u16string> englishVoice_;
  std::optional<std::u16string> chineseVoice_;
};

// One sentence from one sentence library, on a centre of its own.
int MakeSentenceSndFile(const char* sentence, const char* rootDir, const char* indexName, const char* outBase,
                        int wantWave);

}  // namespace tq::sound
