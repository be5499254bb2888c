// CMp3Maker: one audio lesson. It reads a lesson script one word block at a
// time, asks the sound centre for each sound of the block as the block's
// lines come (temporary wave files at the script's paths), plays the block
// by the pattern into the lesson's wave, and at the end compresses the wave
// to MP3 and makes the lyric file. Only the current block is ever held.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "core/text.h"
#include "lesson/lesson_script.h"
#include "lesson/lesson_wave.h"
#include "lesson/pattern.h"

namespace tq::lesson {

// While this file exists the wave and the caption file stay and no MP3 is
// made: a switch for looking at what a lesson was made of.
constexpr char kKeepWaveMarker[] = "c:\\tmp\\tqtqnomp3.dat";

class CMp3Maker {
 public:
  explicit CMp3Maker(int sndCenter) : sndCenter_(sndCenter) {}
  CMp3Maker(const CMp3Maker&) = delete;
  CMp3Maker& operator=(const CMp3Maker&) = delete;
  ~CMp3Maker();

  // Opens the script and reads its header; false when it won't open.
  bool Open(const char* scriptPath);
  // Makes the wave from up to wordCount blocks. The count of blocks gone
  // through (skipped ones too); 1 when the script held no block; -1 when
  // the wave can't be created.
  int MakeWaveFile(const char* wavePath, int wordCount, int compress, int progressWindow, int deviceContext);
  // The MP3's length in milliseconds, or -1.
  int CompressWaveToMp3(int progressWindow);
  // 1, or -1.
  int AdjustLrcFile();

 private:
  enum BlockResult : int { kEnded = -1, kSkipped = 0, kRead = 1 };

  bool NextLine(std::string* line);
  int ReadBlock();
  // Each fetches the block line's sound into its temporary wave.
  bool FetchWord(const std::string& text);  // false: the word is skipped
  void FetchExplanation(const std::string& text);
  bool FetchSentence(const std::string& text);  // false: the script ended
  void FetchSentenceCn(const std::string& text);
  int GetSound(const std::string& text, int kind, const std::string& base, int allowTts, const char* option);

  void RunPattern();
  void Spell();
  void PlaySentences();
  void PlaySentencePairs();
  void Append(const std::string& path, const std::string& caption) { wave_.Append(path.c_str(), caption); }

  // The output path less its last four bytes.
  std::string Stem() const;
  std::string SentenceWave(int64_t index) const;
  std::string SentenceCnWave(int64_t index) const;

  int sndCenter_;
  LessonSettings settings_;
  bool ecText_ = false;
  std::vector<PatternStep> steps_;
  std::FILE* script_ = nullptr;
  std::unique_ptr<LineReader> reader_;

  std::string outputPath_;
  int32_t waveTimeMs_ = 0;
  int32_t mp3TimeMs_ = 0;
  LessonWave wave_;

  // The current word block.
  int32_t sentenceCount_ = 0;
  std::string word_;
  std::string explanation_;
  std::vector<std::string> sentences_;
  std::vector<std::string> sentencesCn_;
};

}  // namespace tq::lesson
