#include "lesson/lesson_script.h"

#include <climits>
#include <cstring>

#include "platform/env.h"

namespace tq::lesson {

void ReadSettings(LineReader* reader, LessonSettings* s) {
  std::string* texts[] = {&s->letterSoundPrefix, &s->wordWaveBase,    &s->explanationWaveBase,
                          &s->sentenceWaveBase,  &s->sentenceCnWaveBase, &s->wordSoundOption,
                          &s->sentenceSoundFolderOption};
  int32_t* numbers[] = {&s->captionExplanation,      &s->wordSoundRequired, &s->explanationMarkerOne,
                        &s->playSentenceCn,          &s->captionSentenceCn, &s->englishFirst,
                        &s->sentencesPerWord,        &s->reservedSetting,   &s->pauseBetweenSentencesMs,
                        &s->pauseInPairMs,           &s->upperCaseWord,     &s->bitsPerSample,
                        &s->samplesPerSecond,        &s->channels,          &s->mp3Rate};
  static_assert(sizeof texts / sizeof *texts + sizeof numbers / sizeof *numbers + 1 == kHeaderLines);
  std::string line;
  for (std::string* text : texts) {
    if (reader->Next(text) < 0) return;
  }
  for (int32_t* number : numbers) {
    if (reader->Next(&line) < 0) return;
    *number = ToInt(line);
  }
  reader->Next(&s->pattern);
}

int32_t ToInt(const std::string& text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  int64_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > static_cast<int64_t>(INT_MAX) + 1) break;
  }
  if (negative) value = -value;
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int32_t>(value);
}

TaggedLine ReadTag(const std::string& line) {
  TaggedLine t;
  if (line.empty()) return t;
  switch (line[0]) {
    case 'A':
    case 'B':
    case 'D':
    case 'E':
      t.tag = line[0];
      if (line.size() > 2) t.text = line.substr(2);
      break;
    default: break;
  }
  return t;
}

bool IsRecorded(const std::string& sentence) {
  const size_t n = std::strlen(kRecordedMark);
  return sentence.size() >= n && sentence.compare(sentence.size() - n, n, kRecordedMark) == 0;
}

std::string SpokenSentence(const std::string& sentence) {
  const size_t n = std::strlen(kPrefixedMark);
  return sentence.compare(0, n, kPrefixedMark) == 0 ? sentence.substr(n) : sentence;
}

std::string RecordingSource(const std::string& path) {
  const size_t slash = path.rfind('\\');
  const std::string candidate = kRecordingFolder + (slash == std::string::npos ? path : path.substr(slash + 1));
  return env::Exists(candidate.c_str()) ? candidate : path;
}

bool IsWavePath(const std::string& path) {
  if (path.size() < 4) return false;
  const char* tail = path.c_str() + path.size() - 4;
  const char* wav = ".wav";
  for (int i = 0; i < 4; ++i) {
    char c = tail[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    if (c != wav[i]) return false;
  }
  return true;
}

std::string UpperCaption(const std::string& text) {
  std::string out = text;
  for (size_t i = 0; i < out.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(out[i]);
    if (c >= 0x81) {
      ++i;  // the second byte of a GBK character may look like a letter
    } else if (c >= 'a' && c <= 'z') {
      out[i] = static_cast<char>(c - 32);
    }
  }
  return out;
}

}  // namespace tq::lesson
