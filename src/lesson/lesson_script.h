// The lesson script: a GBK text file of 23 header lines (the settings of
// the lesson) and then word blocks, each a run of tagged lines closed by a
// line "####".
#pragma once

#include <cstdint>
#include <string>

#include "core/text.h"

namespace tq::lesson {

constexpr int kHeaderLines = 23;
constexpr char kBlockEnd[] = "####";
// A sentence whose text begins so is spoken without these four bytes, and
// keeps them in its caption.
constexpr char kPrefixedMark[] = "&&&&";
// A sentence whose text ends so is cut out of a recording named by the
// three lines behind it.
constexpr char kRecordedMark[] = "@@@@";
// Recordings that come with the system stand in this folder, whatever
// folder a script names.
constexpr char kRecordingFolder[] = "SndFiles\\";

// The header, in the order of its lines.
struct LessonSettings {
  std::string letterSoundPrefix;          // 1: letter sounds, ending in a separator
  std::string wordWaveBase;               // 2: the word's wave, without extension
  std::string explanationWaveBase;        // 3
  std::string sentenceWaveBase;           // 4: + "_" + index + ".wav"
  std::string sentenceCnWaveBase;         // 5
  std::string wordSoundOption;            // 6: the sound centre's userDir for words
  std::string sentenceSoundFolderOption;  // 7: the same for sentences
  int32_t captionExplanation = 0;         // 8
  int32_t wordSoundRequired = 0;          // 9: 0 skips a word without a sound; else speech may answer
  int32_t explanationMarkerOne = 0;       // 10: word and explanation joined by byte 1 (else byte 2)
  int32_t playSentenceCn = 0;             // 11
  int32_t captionSentenceCn = 0;          // 12
  int32_t englishFirst = 0;               // 13
  int32_t sentencesPerWord = 0;           // 14
  int32_t reservedSetting = 0;            // 15
  int32_t pauseBetweenSentencesMs = 0;    // 16
  int32_t pauseInPairMs = 0;              // 17
  int32_t upperCaseWord = 0;              // 18
  int32_t bitsPerSample = 0;              // 19
  int32_t samplesPerSecond = 0;           // 20
  int32_t channels = 0;                   // 21
  int32_t mp3Rate = 0;                    // 22: kbit/s
  std::string pattern;                    // 23
};

// Reads the header lines; a script that ends sooner leaves the rest as
// they were.
void ReadSettings(LineReader* reader, LessonSettings* settings);

// Decimal text as the settings are read: blanks, a sign and digits, up to
// the first other byte; 0 for none, clamped to 32 bits.
int32_t ToInt(const std::string& text);

// A line of a word block: its tag ('A' word, 'B' explanation, 'D' English
// sentence, 'E' Chinese sentence; 0 for any other line) and its text, from
// the third byte (the second is a separator of any value).
struct TaggedLine {
  char tag = 0;
  std::string text;
};
TaggedLine ReadTag(const std::string& line);

bool IsRecorded(const std::string& sentence);
// What the sound centre is asked for: the sentence less a leading "&&&&".
std::string SpokenSentence(const std::string& sentence);
// The recording's path: "SndFiles\" and its file name (behind the last
// backslash) when that file exists, else the path as given.
std::string RecordingSource(const std::string& path);
// Whether the last four bytes name ".wav", in any case.
bool IsWavePath(const std::string& path);

// The upper-case copy of a caption: ASCII letters only, the bytes of GBK
// characters as they are.
std::string UpperCaption(const std::string& text);

}  // namespace tq::lesson
