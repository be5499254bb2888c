#include "lesson/mp3_maker.h"

#include <cstring>

#include "lesson/lyrics.h"
#include "platform/env.h"
#include "platform/host.h"
#include "platform/surface.h"
#include "sound/mp3_encoder.h"
#include "sound/mp3_to_wave.h"
#include "sound/sound_centre.h"
#include "sound/wave_convert.h"
#include "sound/wave_file.h"
#include "tqcomm2006.h"

namespace tq::lesson {
namespace {

// "正在生成：" and "正在进行压缩......" in GBK: the lesson's title while it
// is made, and the text shown while it is compressed.
constexpr char kMakingTitle[] = "\xD5\xFD\xD4\xDA\xC9\xFA\xB3\xC9\xA3\xBA";
constexpr char kCompressingText[] = "\xD5\xFD\xD4\xDA\xBD\xF8\xD0\xD0\xD1\xB9\xCB\xF5......";
constexpr char kTitleEnd[] = "......";

constexpr intptr_t kPercentRange = 100 << 16;
constexpr char kWave[] = ".wav";

// Clears the surface with a rectangle past its corner and writes the text
// at its top left.
void Show(int dc, const std::string& text) {
  gdi::SetBkMode(dc, gdi::kTransparent);
  gdi::Rectangle(dc, -1, -1, 400, 400);
  gdi::TextOutA(dc, 2, 2, text.c_str(), static_cast<int>(text.size()));
}

}  // namespace

CMp3Maker::~CMp3Maker() {
  reader_.reset();
  if (script_ != nullptr) std::fclose(script_);
}

bool CMp3Maker::Open(const char* scriptPath) {
  script_ = env::Open(scriptPath, "rb");
  if (script_ == nullptr) return false;
  reader_ = std::make_unique<LineReader>(script_);
  // A script shorter than its header isn't told apart: the settings it
  // lacks stay 0 and empty.
  ReadSettings(reader_.get(), &settings_);
  return true;
}

std::string CMp3Maker::Stem() const { return outputPath_.substr(0, outputPath_.size() < 4 ? 0 : outputPath_.size() - 4); }

std::string CMp3Maker::SentenceWave(int64_t index) const {
  return settings_.sentenceWaveBase + "_" + std::to_string(index) + kWave;
}

std::string CMp3Maker::SentenceCnWave(int64_t index) const {
  return settings_.sentenceCnWaveBase + "_" + std::to_string(index) + kWave;
}

bool CMp3Maker::NextLine(std::string* line) { return reader_ != nullptr && reader_->Next(line) >= 0; }

int CMp3Maker::GetSound(const std::string& text, int kind, const std::string& base, int allowTts,
                        const char* option) {
  return vcSndCenter_GetSndFile(sndCenter_, text.c_str(), kind, base.c_str(), 1, allowTts, nullptr, option);
}

int CMp3Maker::ReadBlock() {
  sentenceCount_ = 0;
  word_.clear();
  explanation_.clear();
  sentences_.clear();
  sentencesCn_.clear();
  bool skip = false;
  std::string line;
  while (NextLine(&line)) {
    if (line == kBlockEnd) return skip ? kSkipped : kRead;
    // The rest of a skipped block is read and passed over.
    if (skip) continue;
    const TaggedLine t = ReadTag(line);
    switch (t.tag) {
      case 'A': skip = !FetchWord(t.text); break;
      case 'B': FetchExplanation(t.text); break;
      case 'D':
        if (!FetchSentence(t.text)) return kEnded;
        break;
      case 'E': FetchSentenceCn(t.text); break;
      default: break;  // untagged lines, "C" among them
    }
  }
  return kEnded;
}

bool CMp3Maker::FetchWord(const std::string& text) {
  word_ = text;
  env::Remove((settings_.wordWaveBase + kWave).c_str());
  const int got = GetSound(word_, sound::kWordKind, settings_.wordWaveBase, settings_.wordSoundRequired,
                           settings_.wordSoundOption.c_str());
  return !(settings_.wordSoundRequired == 0 && got == -1);
}

void CMp3Maker::FetchExplanation(const std::string& text) {
  explanation_ = text;
  env::Remove((settings_.explanationWaveBase + kWave).c_str());
  const char marker = settings_.explanationMarkerOne != 0 ? sound::kLibraryFirst : sound::kSpeechFirst;
  GetSound(word_ + marker + explanation_, sound::kChineseKind, settings_.explanationWaveBase, 1, nullptr);
}

bool CMp3Maker::FetchSentence(const std::string& text) {
  const std::string wave = SentenceWave(sentenceCount_);
  const std::string base = wave.substr(0, wave.size() - std::strlen(kWave));
  env::Remove(wave.c_str());
  if (IsRecorded(text)) {
    sentences_.push_back(text.substr(0, text.size() - std::strlen(kRecordedMark)));
    std::string path, start, end;
    if (!NextLine(&path) || !NextLine(&start) || !NextLine(&end)) return false;
    const std::string source = RecordingSource(path);
    // A negative end is the end of the recording.
    if (IsWavePath(source)) {
      sound::ExtractSegment(source.c_str(), wave.c_str(), ToInt(start), ToInt(end), nullptr, 0);
    } else {
      sound::ExtractMp3ToWav(source.c_str(), wave.c_str(), ToInt(start), ToInt(end), 0);
    }
  } else {
    // The caption keeps a leading "&&&&" that the sound centre is not shown.
    sentences_.push_back(text);
    GetSound(SpokenSentence(text), sound::kSentenceKind, base, 1, settings_.sentenceSoundFolderOption.c_str());
  }
  ++sentenceCount_;
  return true;
}

void CMp3Maker::FetchSentenceCn(const std::string& text) {
  sentencesCn_.push_back(text);
  const std::string wave = SentenceCnWave(static_cast<int64_t>(sentenceCount_) - 1);
  env::Remove(wave.c_str());
  if (!text.empty() && settings_.playSentenceCn != 0) {
    GetSound(text, sound::kChineseSpeechKind, wave.substr(0, wave.size() - std::strlen(kWave)), 1, nullptr);
  }
}

int CMp3Maker::MakeWaveFile(const char* wavePath, int wordCount, int compress, int progressWindow,
                            int deviceContext) {
  if (TakeECTextPrefix(&settings_.pattern)) ecText_ = true;
  steps_ = ParsePattern(settings_.pattern);
  outputPath_ = wavePath != nullptr ? wavePath : "";
  int block = ReadBlock();
  if (block == kEnded) return 1;
  const LessonFormat format{settings_.bitsPerSample, settings_.samplesPerSecond, settings_.channels};
  if (!wave_.Create(outputPath_, Stem() + ".lrt", format)) return -1;
  if (deviceContext != 0) Show(deviceContext, kMakingTitle + Stem() + kTitleEnd);
  if (progressWindow != 0) {
    host::SendMessage(progressWindow, host::kProgressSetRange, 0, kPercentRange);
    host::SendMessage(progressWindow, host::kProgressSetPos, 0, 0);
  }
  int i = 0;
  int64_t shownDecile = 0;
  while (i < wordCount) {
    if (block != kSkipped) {
      RunPattern();
      // The bar moves in steps of ten.
      const int64_t decile = (static_cast<int64_t>(i) + 1) * 10 / wordCount;
      if (decile > shownDecile && progressWindow != 0) {
        host::SendMessage(progressWindow, host::kProgressSetPos, static_cast<intptr_t>(decile * 10), 0);
        shownDecile = decile;
      }
    }
    ++i;
    if (i < wordCount && (block = ReadBlock()) == kEnded) break;
  }
  host::SendMessage(progressWindow, host::kProgressSetPos, 100, 0);
  wave_.Close();
  waveTimeMs_ = sound::LengthInTime(outputPath_.c_str());
  const bool keep = env::Exists(kKeepWaveMarker);
  if (compress != 0 && !keep) {
    Show(deviceContext, kCompressingText);
    CompressWaveToMp3(progressWindow);
    AdjustLrcFile();
  } else if (!keep) {
    env::Remove((Stem() + ".lrt").c_str());
  }
  return i;
}

void CMp3Maker::RunPattern() {
  for (const PatternStep& step : steps_) {
    switch (step.kind) {
      case PatternStep::kWord: {
        std::string caption = ecText_ ? word_ + "  " + explanation_ : word_;
        if (settings_.upperCaseWord != 0) caption = UpperCaption(caption);
        Append(settings_.wordWaveBase + kWave, caption);
        break;
      }
      case PatternStep::kExplanation:
        if (!ecText_) {
          Append(settings_.explanationWaveBase + kWave,
                 settings_.captionExplanation != 0 ? explanation_ : std::string());
        }
        break;
      case PatternStep::kSpell: Spell(); break;
      case PatternStep::kSentences:
        if (settings_.playSentenceCn != 0) {
          PlaySentencePairs();
        } else {
          PlaySentences();
        }
        break;
      case PatternStep::kPause: wave_.AppendSilence(step.ms); break;
    }
  }
}

void CMp3Maker::Spell() {
  for (size_t k = 0; k < word_.size(); ++k) {
    const char c = word_[k];
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    // The last letter of a word falls; a blank, hyphen or any other byte is
    // a short gap.
    if (letter) {
      Append(settings_.letterSoundPrefix + c + (k + 1 == word_.size() ? "2.wav" : "1.wav"), std::string());
    } else {
      Append(settings_.letterSoundPrefix + "blank.wav", std::string());
    }
  }
}

void CMp3Maker::PlaySentences() {
  const int64_t most = settings_.sentencesPerWord;
  const int64_t n = static_cast<int64_t>(sentences_.size());
  for (int64_t i = 0; i < most && i < n; ++i) {
    Append(SentenceWave(i), sentences_[static_cast<size_t>(i)]);
    if (settings_.captionSentenceCn != 0 && i < static_cast<int64_t>(sentencesCn_.size())) {
      wave_.Append(nullptr, sentencesCn_[static_cast<size_t>(i)]);
    }
    if (i < most - 1 && i < n - 1) wave_.AppendSilence(settings_.pauseBetweenSentencesMs);
  }
}

void CMp3Maker::PlaySentencePairs() {
  const int64_t most = settings_.sentencesPerWord;
  const int64_t n = sentenceCount_;
  for (int64_t i = 0; i < most && i < n; ++i) {
    const std::string english = SentenceWave(i), chinese = SentenceCnWave(i);
    if (!env::Exists(english.c_str())) continue;
    // A Chinese wave of this number stands from an earlier word when this
    // one has no "E" line for it; it is played all the same.
    const bool hasChinese = env::Exists(chinese.c_str());
    const bool hasText = i < static_cast<int64_t>(sentencesCn_.size());
    const std::string cnCaption =
        settings_.captionSentenceCn != 0 && hasText ? sentencesCn_[static_cast<size_t>(i)] : std::string();
    if (settings_.englishFirst == 0) {
      if (hasChinese) {
        Append(chinese, cnCaption);
        wave_.AppendSilence(settings_.pauseInPairMs);
      }
      Append(english, sentences_[static_cast<size_t>(i)]);
    } else {
      Append(english, sentences_[static_cast<size_t>(i)]);
      if (hasChinese) {
        wave_.AppendSilence(settings_.pauseInPairMs);
        Append(chinese, cnCaption);
      }
    }
    if (i < most - 1 && i < n - 1) wave_.AppendSilence(settings_.pauseBetweenSentencesMs);
  }
}

int CMp3Maker::CompressWaveToMp3(int progressWindow) {
  const std::string mp3 = Stem() + ".mp3";
  if (sound::EncodeWavToMp3(outputPath_.c_str(), mp3.c_str(), settings_.mp3Rate, progressWindow) == -1) return -1;
  if (!env::Exists(kKeepWaveMarker)) env::Remove(outputPath_.c_str());
  mp3TimeMs_ = sound::Mp3LengthInTime(mp3.c_str());
  return mp3TimeMs_;
}

int CMp3Maker::AdjustLrcFile() {
  return AdjustLyrics(Stem() + ".lrt", Stem() + ".lrc", waveTimeMs_, mp3TimeMs_);
}

}  // namespace tq::lesson
