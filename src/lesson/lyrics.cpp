#include "lesson/lyrics.h"

#include "core/text.h"
#include "lesson/lesson_script.h"
#include "platform/env.h"
#include "sound/wave_file.h"

namespace tq::lesson {

void WriteCaption(std::FILE* captions, int32_t ms, const std::string& text) {
  if (captions == nullptr) return;
  std::fprintf(captions, "%d\r\n", ms);
  std::fwrite(text.data(), 1, text.size(), captions);
  std::fputs("\r\n", captions);
}

std::string LyricLine(int32_t ms, const std::string& text) {
  if (ms == kNoTime) return text + "\r\n";
  const int32_t minutes = ms / 60000;
  const int32_t seconds = (ms - minutes * 60000) / 1000;
  const int32_t hundredths = (ms % 1000) / 10;
  char stamp[48];
  std::snprintf(stamp, sizeof stamp, "[%02d:%02d.%02d]", minutes, seconds, hundredths);
  return stamp + text + "\r\n";
}

int AdjustLyrics(const std::string& captionPath, const std::string& lyricPath, int32_t waveMs, int32_t mp3Ms) {
  std::FILE* in = env::Open(captionPath.c_str(), "rb");
  if (in == nullptr) return -1;
  std::FILE* out = env::Open(lyricPath.c_str(), "wb");
  if (out == nullptr) {
    std::fclose(in);
    return -1;
  }
  // A wave of length 0 is not guarded against: every time then comes out
  // as the truncation of an infinite or undefined product.
  const double ratio = static_cast<double>(mp3Ms) / static_cast<double>(waveMs);
  LineReader reader(in);
  std::string time, text;
  while (reader.Next(&time) >= 0) {
    const int32_t ms = ToInt(time);
    const int32_t scaled = ms == kNoTime ? kNoTime : sound::TruncateToInt(ms * ratio);
    if (reader.Next(&text) < 0) break;  // a time without its text
    const std::string line = LyricLine(scaled, text);
    std::fwrite(line.data(), 1, line.size(), out);
  }
  std::fclose(in);
  std::fclose(out);
  env::Remove(captionPath.c_str());
  return 1;
}

}  // namespace tq::lesson
