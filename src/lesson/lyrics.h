// Captions and lyric files. While a lesson is made its captions go to a
// caption file (".lrt": pairs of lines, the time in milliseconds on the
// wave, or -1 for none, then the text). Once the MP3 exists the times are
// scaled by the ratio of the two lengths into the lyric file (".lrc") that
// players show in step with the sound.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace tq::lesson {

// A caption without a time: a plain line of the lyric file.
constexpr int32_t kNoTime = -1;

// One pair of lines of a caption file, each ended by CR LF.
void WriteCaption(std::FILE* captions, int32_t ms, const std::string& text);

// "[mm:ss.hh]text\r\n" (minutes widen past 99), or "text\r\n" for kNoTime.
std::string LyricLine(int32_t ms, const std::string& text);

// Makes the lyric file from the caption file, each time scaled by
// mp3Ms / waveMs and truncated, and removes the caption file. 1, or -1 when
// either file will not open (the caption file then stays).
int AdjustLyrics(const std::string& captionPath, const std::string& lyricPath, int32_t waveMs, int32_t mp3Ms);

}  // namespace tq::lesson
