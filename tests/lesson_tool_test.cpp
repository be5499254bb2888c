// tqcomm lesson as a person uses it: a short lesson of the sample words
// that an independent decoder plays for as long as the library says, with a
// lyric file whose times fall inside it; sentences from a dictionary; and
// the answers to bad usage.
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "sound_util.h"

using namespace tqtest;

namespace {

class LessonTool : public SoundToolTest {};

struct Lyric {
  int ms = -1;  // -1: a line without a time
  std::string text;
};

std::vector<Lyric> Lyrics(const std::string& lrc) {
  std::vector<Lyric> lines;
  std::istringstream in(lrc);
  for (std::string line; std::getline(in, line);) {
    EXPECT_TRUE(!line.empty() && line.back() == '\r') << line;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Lyric l;
    int m = 0, s = 0, h = 0, used = 0;
    if (std::sscanf(line.c_str(), "[%d:%d.%d]%n", &m, &s, &h, &used) == 3 && used == 10) {
      l.ms = m * 60000 + s * 1000 + h * 10;
      l.text = line.substr(10);
    } else {
      l.text = line;
    }
    lines.push_back(l);
  }
  return lines;
}

// The milliseconds the tool reports: "... (N ms) -> ...".
int ReportedMs(const std::string& out) {
  const size_t at = out.find(" ms) -> ");
  if (at == std::string::npos) return -1;
  return std::atoi(out.c_str() + out.rfind('(', at) + 1);
}

TEST_F(LessonTool, SampleWordsMakeAnMp3WithLyricsInsideIt) {
  std::string out;
  ASSERT_EQ(Tool("lesson --words 3 --pattern A1B1C0.5 -o lesson.mp3", &out), 0) << out;
  EXPECT_TRUE(Has(out, "3 words, pattern A1B1C0.5; sounds from speech (espeak-ng)")) << out;
  const int ms = ReportedMs(out);
  ASSERT_GT(ms, 3 * 3000) << out;  // three words, each with 2.5 s of pauses
  // The library's own answer for the MP3's length, which compression gave.
  EXPECT_EQ(ms, vcGetMp3FileLengthInTime(Path("lesson.mp3").c_str()));
  // mpg123 plays it for that long, within one MP3 frame.
  ASSERT_EQ(tqtest::Run("mpg123 -q -w '" + Path("dec.wav") + "' '" + Path("lesson.mp3") + "' 2>&1", &out), 0) << out;
  const Decoded d = ReadPcm(Path("dec.wav"));
  ASSERT_EQ(d.rate, 22050);
  EXPECT_NEAR(1000.0 * d.Frames() / d.rate, ms, 1000.0 * 1152 / 22050 + 1);

  // Word, meaning, word, meaning...: each time later than the one before,
  // the last inside the MP3.
  const std::vector<Lyric> lyrics = Lyrics(ReadFile(Path("lesson.lrc")));
  ASSERT_EQ(lyrics.size(), 6u);
  EXPECT_EQ(lyrics[0].ms, 0);
  EXPECT_EQ(lyrics[0].text, "able");
  EXPECT_EQ(lyrics[1].text, G("adj. 能够的；有能力的"));
  EXPECT_EQ(lyrics[2].text, "about");
  EXPECT_EQ(lyrics[4].text, "accept");
  for (size_t i = 1; i < lyrics.size(); ++i) EXPECT_GT(lyrics[i].ms, lyrics[i - 1].ms + 1000) << i;
  EXPECT_LT(lyrics.back().ms, ms);
  // Nothing else is left behind.
  EXPECT_FALSE(vcIfFileExist(Path("lesson.wav").c_str()) == 1);
  EXPECT_FALSE(vcIfFileExist(Path("lesson.work").c_str()) == 1);
}

TEST_F(LessonTool, SentencesFromADictionaryAndAListOfOurOwn) {
  std::string out;
  ASSERT_EQ(Tool("dict build '" + std::string(TQ_SOURCE_DIR) + "/data/sample/dict_source.txt' -o dict", &out), 0)
      << out;
  WriteFile(Path("list.txt"), "run\r\n" + G("跑") + "\r\nstudy\r\n" + G("学习") + "\r\n");
  // The words come from a sound library in the data folder, as MP3s.
  ASSERT_EQ(Tool("sndlib build list.txt -o data/tqcomm/sndlib", &out), 0) << out;
  ASSERT_EQ(Tool("lesson list.txt --dict dict --pattern AS --pause-sentences 700 -o two", &out), 0) << out;
  EXPECT_TRUE(Has(out, "sounds from the sound library")) << out;
  const std::vector<Lyric> lyrics = Lyrics(ReadFile(Path("two.lrc")));
  std::vector<std::string> texts;
  for (const Lyric& l : lyrics) texts.push_back(l.text);
  EXPECT_EQ(texts, (std::vector<std::string>{"run", "He runs every morning.", "She runs a small shop.", "study",
                                             "She studies English every day.", "I study in the library."}));
  EXPECT_TRUE(vcIfFileExist(Path("two.mp3").c_str()) == 1);
  EXPECT_FALSE(vcIfFileExist(Path("two.work").c_str()) == 1);
}

TEST_F(LessonTool, BadUsageAndMissingInput) {
  std::string out;
  EXPECT_EQ(Tool("lesson --help", &out), 0);
  EXPECT_TRUE(Has(out, "usage: tqcomm lesson")) << out;
  EXPECT_EQ(Tool("lesson", &out), 2) << out;                                        // no -o
  EXPECT_EQ(Tool("lesson --pattern AX1 -o x.mp3", &out), 2) << out;                 // X plays nothing
  EXPECT_TRUE(Has(out, "holds 'X'")) << out;
  EXPECT_EQ(Tool("lesson --pattern 12 -o x.mp3", &out), 2) << out;                  // only pauses
  EXPECT_EQ(Tool("lesson --words 0 -o x.mp3", &out), 2) << out;
  EXPECT_EQ(Tool("lesson a.txt b.txt -o x.mp3", &out), 2) << out;
  EXPECT_EQ(Tool("lesson missing.txt -o x.mp3", &out), 1) << out;
  EXPECT_EQ(Tool("lesson --book missing.idx -o x.mp3", &out), 1) << out;
  EXPECT_EQ(Tool("lesson --dict nowhere --words 1 -o x.mp3", &out), 1) << out;
  EXPECT_TRUE(Has(out, "no dictionary in nowhere")) << out;
}

}  // namespace
