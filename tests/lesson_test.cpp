// Audio lessons at the boundary: lesson scripts made by the tests, with the
// words, explanations, sentences and letters as sounds of known length in a
// scratch folder (each a constant level, so that the lesson's samples say
// which sound stands where and for how long). The diagnostic switch file
// lives in the test's own folder (its C: drive), so the wave and the
// caption file stay to be read.
#include <climits>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "lesson/lyrics.h"
#include "lesson/pattern.h"
#include "sndlib_util.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

constexpr int kRate = 8000;     // the lessons here: 16-bit mono
constexpr int kBytesPerMs = 16;  // of a second's 16,000 bytes
constexpr int kHeader = 44;      // a canonical wave's header: the bytes the reader never delivers

using Runs = std::vector<std::pair<int, int64_t>>;  // a level and how many samples in a row

// A wave of frames samples of one level.
std::string Level(int value, int frames, int rate = kRate, int bits = 16, int channels = 1) {
  const size_t n = static_cast<size_t>(frames) * channels;
  if (bits == 16) return PcmWave(channels, rate, 16, Samples16(std::vector<int16_t>(n, static_cast<int16_t>(value))));
  return PcmWave(channels, rate, bits, std::string(n * (bits / 8), static_cast<char>(value)));
}

// A tone, for the lessons that are compressed.
std::string Sine(int frames, double hz) {
  std::vector<int16_t> s(static_cast<size_t>(frames));
  for (int i = 0; i < frames; ++i) s[i] = static_cast<int16_t>(8000 * std::sin(2 * M_PI * hz * i / kRate));
  return PcmWave(1, kRate, 16, Samples16(s));
}

Runs RunsOf(const std::vector<int16_t>& samples) {
  Runs runs;
  for (int16_t v : samples) {
    if (!runs.empty() && runs.back().first == v) {
      ++runs.back().second;
    } else {
      runs.push_back({v, 1});
    }
  }
  return runs;
}

// What a lesson should hold: its samples as runs of levels, its length and
// its caption file.
struct Expected {
  Runs runs;
  int64_t bytes = 0;
  std::string captions;

  // A file of dataBytes bytes of samples: all but the header's size and the
  // frame held back, its caption at the moment it begins.
  Expected& File(int value, int64_t dataBytes, const std::string& caption = "") {
    if (!caption.empty()) Caption(std::to_string(bytes / kBytesPerMs), caption);
    Add(value, (dataBytes - kHeader - 2) / 2);
    return *this;
  }
  Expected& Sound(int value, int frames, const std::string& caption = "") { return File(value, 2 * frames, caption); }
  Expected& Pause(int ms) {
    Add(0, static_cast<int64_t>(static_cast<double>(kRate) * ms * static_cast<double>(0.001f)));
    return *this;
  }
  Expected& Untimed(const std::string& caption) {
    Caption("-1", caption);
    return *this;
  }
  void Caption(const std::string& time, const std::string& text) { captions += time + "\r\n" + text + "\r\n"; }
  void Add(int value, int64_t samples) {
    if (samples <= 0) return;
    bytes += 2 * samples;
    if (!runs.empty() && runs.back().first == value) {
      runs.back().second += samples;
    } else {
      runs.push_back({value, samples});
    }
  }
};

class Lesson : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    tqtest::Run("mkdir -p user letters tmp SndFiles c/tmp", nullptr);
    tqHost_SetCdDrive('C', Path("c").c_str());
    KeepWave(true);
    header_ = {Path("letters/"), Path("tmp/word"), Path("tmp/expl"), Path("tmp/sent"), Path("tmp/cn"),
               Path("user/"), Path("user/"),
               "1", "1", "1",  // 8-10: captionExplanation, wordSoundRequired, explanationMarkerOne (by the word first)
               "0", "0", "1",  // 11-13: playSentenceCn, captionSentenceCn, englishFirst
               "2", "0",       // 14-15: sentencesPerWord, reserved
               "500", "300",   // 16-17: pauseBetweenSentencesMs, pauseInPairMs
               "0",            // 18: upperCaseWord
               "16", "8000", "1", "32", "A1B"};
  }
  void TearDown() override {
    Close();
    TempDirTest::TearDown();
  }
  void Close() {
    if (maker_ > 0) vcMp3Maker_Close(maker_);
    if (centre_ > 0) vcSndCenter_Close(centre_);
    maker_ = centre_ = 0;
  }
  // The switch file that keeps the wave and the caption file.
  void KeepWave(bool on) {
    const std::string marker = Path("c/tmp/tqtqnomp3.dat");
    if (on) {
      WriteFile(marker, "");
    } else {
      std::remove(marker.c_str());
    }
  }
  void Set(int line, const std::string& value) { header_[line - 1] = value; }
  void Word(const std::string& word, const std::string& wave) { WriteFile(Path("user/" + word + ".wav"), wave); }
  // Explanations come from a library of the words, under kind 1.
  void Explanation(const std::string& word, const std::string& wave) { explanations_.push_back({word, wave, 1}); }
  void Sentence(const std::string& searchForm, const std::string& wave) {
    WriteFile(Path("user/" + searchForm + ".wav"), wave);
  }
  void Letter(const std::string& name, const std::string& wave) { WriteFile(Path("letters/" + name), wave); }
  std::string Script(const std::string& blocks) const {
    std::string s;
    for (const std::string& line : header_) s += line + "\r\n";
    return s + blocks;
  }
  // Opens a centre (speech as asked) and a maker on the script, and makes
  // out.wav from up to words blocks.
  int Make(const std::string& blocks, int words = 100, int compress = 0, int window = 0, int dc = 0) {
    Close();
    WriteFile(Path("script.txt"), Script(blocks));
    centre_ = vcSndCenter_Open(speech_, 16, kRate, 1);
    if (!explanations_.empty()) {
      WriteLibrary(Path("expl.idx"), dir(), explanations_);
      EXPECT_EQ(vcSndCenter_AddSndLib(centre_, Path("expl.idx").c_str(), (dir() + "/").c_str(), 1), 1);
    }
    maker_ = vcMp3Maker_Open(Path("script.txt").c_str(), centre_);
    EXPECT_GT(maker_, 0);
    return vcMp3Maker_MakeWaveFile(maker_, Path("out.wav").c_str(), words, compress, window, dc);
  }
  Runs OutRuns() const { return RunsOf(ReadPcm(Path("out.wav")).samples); }
  int64_t OutBytes() const { return static_cast<int64_t>(ReadPcm(Path("out.wav")).samples.size()) * 2; }
  std::string Captions() const { return ReadFile(Path("out.lrt")); }
  void ExpectLesson(const Expected& e) const {
    EXPECT_EQ(OutRuns(), e.runs);
    EXPECT_EQ(OutBytes(), e.bytes);
    EXPECT_EQ(Captions(), e.captions);
  }
  bool Exists(const std::string& name) const { return vcIfFileExist(Path(name).c_str()) == 1; }
  // The length of out.mp3 as the mpg123 program decodes it, in ms.
  double DecodedMs() const {
    std::string out;
    EXPECT_EQ(tqtest::Run("mpg123 -q -w '" + Path("dec.wav") + "' '" + Path("out.mp3") + "' 2>&1", &out), 0) << out;
    const Decoded d = ReadPcm(Path("dec.wav"));
    return 1000.0 * d.Frames() / d.rate;
  }

  std::vector<std::string> header_;
  std::vector<Sound> explanations_;
  int speech_ = 0;
  int centre_ = 0, maker_ = 0;
};

const std::string kTwoWords = "A apple\r\nB n. " + G("苹果") + "\r\n####\r\nA bee\r\nB n. " + G("蜜蜂") + "\r\n####\r\n";

TEST_F(Lesson, WordPauseExplanationForEachWordWithCaptionsAtTheirBytes) {
  Word("apple", Level(1000, 800));
  Word("bee", Level(1100, 600));
  Explanation("apple", Level(2000, 1200));
  Explanation("bee", Level(2100, 900));
  // Without captionExplanation the explanation plays uncaptioned.
  for (bool captioned : {true, false}) {
    Set(8, captioned ? "1" : "0");
    EXPECT_EQ(Make(kTwoWords), 2);
    Expected e;
    e.Sound(1000, 800, "apple").Pause(1000).Sound(2000, 1200, captioned ? "n. " + G("苹果") : "");
    e.Sound(1100, 600, "bee").Pause(1000).Sound(2100, 900, captioned ? "n. " + G("蜜蜂") : "");
    ExpectLesson(e);
  }
  const Decoded d = ReadPcm(Path("out.wav"));
  EXPECT_EQ(d.rate, kRate);
  EXPECT_EQ(d.bits, 16);
  EXPECT_EQ(d.channels, 1);
}

TEST_F(Lesson, ECTextCaptionsWordAndExplanationAndSilencesB) {
  Word("apple", Level(1000, 800));
  Explanation("apple", Level(2000, 1200));
  Set(23, "ECText#AB2B");
  Set(18, "1");  // upper case: the ASCII letters only, not the bytes of GBK characters
  const std::string explanation = "n. " + G("乤果");  // 乤 is 81 61: its second byte is an "a"
  EXPECT_EQ(Make("A apple\r\nB " + explanation + "\r\n####\r\n"), 1);
  ExpectLesson(Expected().Sound(1000, 800, "APPLE  N. " + G("乤果")).Pause(2000));
}

TEST_F(Lesson, PausesOfTheTrailingNNumberComeTwice) {
  Word("apple", Level(1000, 800));
  struct Case {
    const char* pattern;
    std::vector<int> plays;  // > 0 the word, else a pause of that many ms
  };
  const Case cases[] = {
      {"AN2", {1, -2000, -2000}},
      {"AN2A", {1, -2000, 1}},
      {"A0.5H?C", {1, -500}},  // letters are missing: spelling adds nothing
      {"AN1.25.7", {1, -1250, -1250}},
  };
  for (const Case& c : cases) {
    Set(23, c.pattern);
    EXPECT_EQ(Make("A apple\r\n####\r\n"), 1);
    Expected e;
    for (int p : c.plays) {
      if (p > 0) {
        e.Sound(1000, 800, "apple");
      } else {
        e.Pause(-p);
      }
    }
    EXPECT_EQ(OutRuns(), e.runs) << c.pattern;
    EXPECT_EQ(OutBytes(), e.bytes) << c.pattern;
  }
}

TEST_F(Lesson, SentencesUpToTheLimitWithPausesOnlyBetween) {
  Set(23, "S");
  Set(12, "1");  // Chinese captions, unplayed: lines without a time
  Sentence("How are you@", Level(3000, 700));
  Sentence("Good morning.", Level(3100, 500));
  Sentence("Third one.", Level(3200, 400));
  const std::string block = "A apple\r\nD How are you?\r\nE " + G("你好吗？") + "\r\nD &&&&Good morning.\r\nE " +
                            G("早上好。") + "\r\nD Third one.\r\nE " + G("第三。") + "\r\n####\r\n";
  EXPECT_EQ(Make(block), 1);
  Expected e;
  e.Sound(3000, 700, "How are you?").Untimed(G("你好吗？")).Pause(500);
  e.Sound(3100, 500, "&&&&Good morning.").Untimed(G("早上好。"));  // spoken without the mark, captioned with it
  ExpectLesson(e);

  // One sentence a word: no pause at all.
  Set(14, "1");
  Set(12, "0");
  Make(block);
  ExpectLesson(Expected().Sound(3000, 700, "How are you?"));
}

TEST_F(Lesson, WordCountAboveAndBelowTheBlocks) {
  Set(23, "A");
  const std::vector<std::string> words = {"one", "two", "three"};
  for (int i = 0; i < 3; ++i) Word(words[i], Level(101 + i, 300));
  // The words from..to-1, each a run of its level.
  auto lesson = [&](int from, int to) {
    Expected e;
    for (int i = from; i < to; ++i) e.Sound(101 + i, 300, words[i]);
    return e;
  };
  const std::string blocks = "A one\r\n####\r\nA two\r\n####\r\nA three\r\n####\r\n";
  EXPECT_EQ(Make(blocks, 5), 3);
  ExpectLesson(lesson(0, 3));
  // Fewer: the rest stays unread, and the next run goes on from there.
  EXPECT_EQ(Make(blocks, 2), 2);
  ExpectLesson(lesson(0, 2));
  EXPECT_EQ(vcMp3Maker_MakeWaveFile(maker_, Path("out.wav").c_str(), 5, 0, 0, 0), 1);
  ExpectLesson(lesson(2, 3));
  // Nothing left: 1, and no wave is made.
  EXPECT_EQ(vcMp3Maker_MakeWaveFile(maker_, Path("none.wav").c_str(), 5, 0, 0, 0), 1);
  EXPECT_FALSE(Exists("none.wav"));
}

TEST_F(Lesson, SpellingTakesLetterFilesByPositionAndCase) {
  Set(23, "C");
  // m1 is not used (m is last), nor k2 (a non-letter ends the word).
  for (auto [name, v, n] : std::vector<std::tuple<const char*, int, int>>{
           {"i1", 11, 60}, {"c1", 12, 61}, {"e1", 13, 62}, {"r1", 14, 63}, {"a1", 15, 64}, {"m2", 16, 65},
           {"m1", 17, 66}, {"O1", 21, 67}, {"k1", 22, 68}, {"k2", 23, 69}, {"blank", 99, 70}}) {
    Letter(std::string(name) + ".wav", Level(v, n));
  }
  EXPECT_EQ(Make("A ice-cream\r\n####\r\nA Ok!\r\n####\r\n"), 2);
  Expected e;
  for (auto [v, n] : std::vector<std::pair<int, int>>{{11, 60}, {12, 61}, {13, 62}, {99, 70}, {12, 61}, {14, 63},
                                                       {13, 62}, {15, 64}, {16, 65}, {21, 67}, {22, 68}, {99, 70}}) {
    e.Sound(v, n);
  }
  ExpectLesson(e);
}

TEST_F(Lesson, RecordedSentencesComeFromSndFilesWhateverFolderIsNamed) {
  Set(23, "S");
  tqtest::Run("mkdir -p c/rec", nullptr);
  WriteFile(Path("SndFiles/rec.wav"), Level(4000, 500));
  WriteFile(Path("c/rec/rec.wav"), Level(4100, 500));  // what the line names: passed over
  WriteFile(Path("own.wav"), Level(4200, 400));
  // The second names its recording by a path without a backslash: the
  // whole path is the name looked for under SndFiles, which lacks it, so
  // the path as given is taken.
  const std::string block = "A apple\r\nD Hello there.@@@@\r\nc:\\rec\\rec.wav\r\n0\r\n-1\r\nD Second.@@@@\r\n" +
                            Path("own.wav") + "\r\n0\r\n-1\r\n####\r\n";
  EXPECT_EQ(Make(block), 1);
  // Cut from 0 to the end: the cut starts at byte 64 of the recording.
  ExpectLesson(Expected().File(4000, 1000 - 64, "Hello there.").Pause(500).File(4200, 800 - 64, "Second."));
  // A bare file name is looked for under SndFiles first as well.
  WriteFile(Path("SndFiles/own.wav"), Level(4300, 400));
  Make("A apple\r\nD Third.@@@@\r\nown.wav\r\n0\r\n-1\r\n####\r\n");
  ExpectLesson(Expected().File(4300, 800 - 64, "Third."));
}

TEST_F(Lesson, BlankLinesAndPaddingAreNothing) {
  Set(23, "AB");
  Set(6, "   ");  // a blank userDir: the user sounds of the working folder
  WriteFile(Path("apple.wav"), Level(1000, 800));
  Explanation("apple", Level(2000, 1200));
  EXPECT_EQ(Make("\r\n   \r\n\t A apple \r\nC apple is spelled here\r\n \t \r\n\tB  n.\r\n####  \r\n\r\n"), 1);
  // The line's own padding goes; behind the separator (any byte) the text
  // keeps its blank.
  ExpectLesson(Expected().Sound(1000, 800, "apple").Sound(2000, 1200, " n."));
}

TEST_F(Lesson, MissingAndBrokenSoundsLeaveNoTrace) {
  Set(23, "AB");
  Explanation("apple", Level(2000, 1200));
  Explanation("ghost", Level(2100, 1200));
  // No sound for the word: its append fails, uncaptioned, and B still plays.
  EXPECT_EQ(Make("A apple\r\nB n.\r\n####\r\n"), 1);
  const Expected e = Expected().Sound(2000, 1200, "n.");
  ExpectLesson(e);
  // A wave of 0 bits is refused the same way.
  Word("apple", Level(1000, 800, kRate, 0));
  EXPECT_EQ(Make("A apple\r\nB n.\r\n####\r\n"), 1);
  ExpectLesson(e);
  // With wordSoundRequired 0 a word without a sound is skipped whole, yet counted.
  Set(9, "0");
  Word("apple", Level(1000, 800));
  EXPECT_EQ(Make("A ghost\r\nB n.\r\n####\r\nA apple\r\nB n.\r\n####\r\n"), 2);
  ExpectLesson(Expected().Sound(1000, 800, "apple").Sound(2000, 1200, "n."));
}

TEST_F(Lesson, OtherFormatsAreConvertedAndImpossibleOnesRefused) {
  Set(23, "A");
  // 8-bit stereo at 11,025 a second into the 16-bit mono lesson at 8,000: a
  // level of 200 becomes (200 - 128) << 8.
  Word("apple", Level(200, 1000, 11025, 8, 2));
  EXPECT_EQ(Make("A apple\r\n####\r\n"), 1);
  const int frames = (2000 - kHeader - 2) / 2;
  Expected e;
  e.Caption("0", "apple");
  e.Add((200 - 128) << 8, static_cast<int64_t>(8000.0 / 11025 * frames));
  ExpectLesson(e);

  const std::pair<const char*, std::string> bad[] = {
      {"24-bit", Level(0, 100, kRate, 24)},
      {"a rate of 0", Level(5, 100, 0)},
      {"three channels", Level(5, 100, kRate, 16, 3)},
      {"not a wave", "RIFF....WAVEjunk"},
  };
  for (const auto& [what, wave] : bad) {
    Word("apple", wave);
    EXPECT_EQ(Make("A apple\r\n####\r\n"), 1) << what;
    EXPECT_EQ(OutBytes(), 0) << what;
    EXPECT_EQ(Captions(), "") << what;
  }
  // A rate raised exactly twentyfold reads far past what it converts; it
  // stays inside the buffers.
  Word("apple", Level(7, 3000, 400));
  EXPECT_EQ(Make("A apple\r\n####\r\n"), 1);
  EXPECT_GT(OutBytes(), 0);
}

TEST_F(Lesson, HostileScriptsGiveThePlainAnswers) {
  Word("apple", Level(1000, 800));
  // Shorter than its header: opens, holds no block, makes nothing.
  WriteFile(Path("short.txt"), "letters/\r\ntmp/word\r\n1\r\n");
  centre_ = vcSndCenter_Open(0, 16, kRate, 1);
  maker_ = vcMp3Maker_Open(Path("short.txt").c_str(), centre_);
  ASSERT_GT(maker_, 0);
  EXPECT_EQ(vcMp3Maker_MakeWaveFile(maker_, Path("out.wav").c_str(), 10, 1, 0, 0), 1);
  EXPECT_FALSE(Exists("out.wav"));
  EXPECT_EQ(vcMp3Maker_CompressWaveToMp3(maker_, 0, 0), -1);
  EXPECT_EQ(vcMp3Maker_AdjustLrcFile(maker_), -1);

  // Huge numbers: pauses beyond 32 bits of milliseconds never play, and a
  // huge sentence count plays what there is.
  Set(23, "A9999999999999999N99999999999999999999AS");
  Set(14, "99999999999999999999");
  Set(16, "-5");
  EXPECT_EQ(Make("A apple\r\n####\r\n"), 1);
  ExpectLesson(Expected().Sound(1000, 800, "apple").Sound(1000, 800, "apple"));

  // A lesson at a rate below MPEG's lowest compresses: the encoder raises
  // the rate, and its output, many frames a chunk, has the room it needs.
  Set(23, "A");
  Set(20, "1000");
  KeepWave(false);
  Word("apple", Level(1000, 800, 1000));
  EXPECT_EQ(Make("A apple\r\n####\r\n", 1, 1), 1);
  EXPECT_NEAR(vcGetMp3FileLengthInTime(Path("out.mp3").c_str()), 777, 72 + 1);
  Set(20, "8000");
  KeepWave(true);
  Word("apple", Level(1000, 800));

  // A block that the script cuts short is not played.
  EXPECT_EQ(Make("A apple\r\n####\r\nA apple\r\nD Cut.@@@@\r\nrec.wav\r\n"), 1);
  ExpectLesson(Expected().Sound(1000, 800, "apple"));
}

TEST_F(Lesson, NineteenHandlesAndTheirRefusals) {
  WriteFile(Path("script.txt"), Script("A apple\r\n####\r\n"));
  std::vector<int> handles;
  for (int i = 0; i < 19; ++i) handles.push_back(vcMp3Maker_Open(Path("script.txt").c_str(), 0));
  EXPECT_EQ(handles.front(), 1);
  EXPECT_EQ(handles.back(), 19);
  EXPECT_EQ(vcMp3Maker_Open(Path("script.txt").c_str(), 0), -1);
  vcMp3Maker_Close(-1);
  vcMp3Maker_Close(7);
  vcMp3Maker_Close(7);
  EXPECT_EQ(vcMp3Maker_Open(Path("script.txt").c_str(), 0), 7);
  vcMp3Maker_Close(3);
  EXPECT_EQ(vcMp3Maker_Open(Path("missing.txt").c_str(), 0), -1);
  EXPECT_EQ(vcMp3Maker_Open(Path("script.txt").c_str(), 0), 3);  // the failed open gave its slot back
  for (int h : {0, 20, -1}) {
    EXPECT_EQ(vcMp3Maker_MakeWaveFile(h, Path("x.wav").c_str(), 1, 0, 0, 0), -1);
    EXPECT_EQ(vcMp3Maker_CompressWaveToMp3(h, 0, 0), -1);
    EXPECT_EQ(vcMp3Maker_AdjustLrcFile(h), -1);
  }
  // A wave that can't be created: -1.
  EXPECT_EQ(vcMp3Maker_MakeWaveFile(1, Path("no/such/folder/x.wav").c_str(), 1, 0, 0, 0), -1);
  for (int h = 1; h <= 19; ++h) vcMp3Maker_Close(h);
}

// What the progress bar is sent, in order.
std::vector<std::string> g_messages;
intptr_t TQ_CALL Watch(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  if (message == 1025) g_messages.push_back("range " + std::to_string(lparam >> 16));
  if (message == 1026) g_messages.push_back(std::to_string(wparam));
  return 0;
}

TEST_F(Lesson, CompressedLessonHasAnMp3ThatMatchesItsLyrics) {
  KeepWave(false);
  Set(23, "A1");
  const std::string words[] = {"one", "two", "three"};
  std::string blocks;
  for (const std::string& w : words) {
    Word(w, Sine(4000, 440));
    blocks += "A " + w + "\r\n####\r\n";
  }
  const int window = tqHost_CreateWindow("bar", 200, 20);
  tqHost_SetWindowProc(window, Watch);
  const int dc = tqHost_CreateDC(400, 40);
  EXPECT_EQ(Make(blocks, 3, 1, window, dc), 3);
  // The bar: in tenths of the words, then the encoder's tenths.
  const std::vector<std::string> making = {"range 100", "0", "30", "60", "100", "100", "range 100", "0"};
  ASSERT_GE(g_messages.size(), making.size());
  EXPECT_EQ(std::vector<std::string>(g_messages.begin(), g_messages.begin() + making.size()), making);
  std::string log(4096, '\0');
  log.resize(static_cast<size_t>(tqHost_GetDrawLog(dc, &log[0], static_cast<int>(log.size()))));
  EXPECT_EQ(log, "BkMode 1\nRectangle -1 -1 400 400\nTextOut 2 2 " + G("正在生成：") + Path("out") +
                     "......\nBkMode 1\nRectangle -1 -1 400 400\nTextOut 2 2 " + G("正在进行压缩......") + "\n");

  EXPECT_FALSE(Exists("out.wav"));
  EXPECT_FALSE(Exists("out.lrt"));
  // An independent decoder takes the MP3, and its length is the one the
  // library reports, within one frame (576 samples at this rate).
  const int reported = vcGetMp3FileLengthInTime(Path("out.mp3").c_str());
  EXPECT_NEAR(DecodedMs(), reported, 1000.0 * 576 / kRate + 1);
  // Three words of (4000 - 23) samples and a second each.
  EXPECT_NEAR(reported, 3 * ((4000 - 23) / 8.0 + 1000), 1000.0 * 576 / kRate + 1);
  // The lyric lines: the caption times on the wave, scaled to the MP3.
  const double ratio = static_cast<double>(reported) / (3 * ((4000 - 23) * 2 + 16000) / 16);
  std::string expected;
  int64_t at = 0;
  for (const std::string& w : words) {
    const int ms = static_cast<int>(at * 1000 / 16000 * ratio);
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "[%02d:%02d.%02d]", ms / 60000, ms % 60000 / 1000, ms % 1000 / 10);
    expected += stamp + w + "\r\n";
    at += (4000 - 23) * 2 + 16000;
  }
  EXPECT_EQ(ReadFile(Path("out.lrc")), expected);
}

TEST_F(Lesson, CompressingLaterAndTheSwitchThatKeepsTheWave) {
  Set(23, "A");
  Word("apple", Sine(8000, 330));
  // With the switch: the wave and the caption file stay, no MP3.
  EXPECT_EQ(Make("A apple\r\n####\r\n", 1, 1), 1);
  EXPECT_TRUE(Exists("out.wav"));
  EXPECT_TRUE(Exists("out.lrt"));
  EXPECT_FALSE(Exists("out.mp3"));

  // Without it, a run that doesn't compress takes its caption file away; the
  // caller compresses later, and the lyric file can no longer be made.
  KeepWave(false);
  EXPECT_EQ(Make("A apple\r\n####\r\n", 1, 0), 1);
  EXPECT_FALSE(Exists("out.lrt"));
  const int ms = vcMp3Maker_CompressWaveToMp3(maker_, 0, 0);
  EXPECT_FALSE(Exists("out.wav"));
  EXPECT_NEAR(DecodedMs(), ms, 1000.0 * 576 / kRate + 1);
  EXPECT_NEAR(ms, (8000 - 23) / 8.0, 1000.0 * 576 / kRate + 1);
  EXPECT_EQ(vcMp3Maker_AdjustLrcFile(maker_), -1);
  // The wave is gone: a second compression fails.
  EXPECT_EQ(vcMp3Maker_CompressWaveToMp3(maker_, 0, 0), -1);
}

TEST_F(Lesson, ChineseSentencesBeforeOrAfterTheirEnglish) {
  speech_ = 1;
  Set(23, "S");
  Set(11, "1");
  Set(12, "1");
  Sentence("I like apples.", Level(5000, 900));
  Sentence("Red apples.", Level(5100, 700));
  const std::string cn = G("我喜欢苹果。");
  const std::string block = "A apple\r\nD I like apples.\r\nE " + cn + "\r\nD Red apples.\r\n####\r\n";
  for (const char* englishFirst : {"0", "1"}) {
    Set(13, englishFirst);
    EXPECT_EQ(Make(block), 1);
    if (vcSndCenter_IsTtsAvailable(centre_) <= 0) GTEST_SKIP() << "no speech (espeak-ng-data)";
    int32_t para[5] = {};
    ASSERT_EQ(vcGetWaveFilePara(Path("tmp/cn_0.wav").c_str(), para), 1);
    const int64_t spoken = para[3];
    Expected e;
    if (englishFirst[0] == '0') {
      e.File(1, spoken, cn).Pause(300).Sound(5000, 900, "I like apples.");
    } else {
      e.Sound(5000, 900, "I like apples.").Pause(300).File(1, spoken, cn);
    }
    e.Pause(500).Sound(5100, 700, "Red apples.");  // no Chinese of its own
    EXPECT_EQ(OutBytes(), e.bytes) << englishFirst;
    EXPECT_EQ(Captions(), e.captions) << englishFirst;
  }
}

// Below the boundary: the pattern's reading and the lyric lines.

TEST(LessonPattern, StepsOfPatterns) {
  using S = tq::lesson::PatternStep;
  struct Case {
    std::string pattern;
    std::vector<std::pair<int, int32_t>> steps;  // kind, ms
  };
  const Case cases[] = {
      {"A1B1C1S2", {{S::kWord, 0}, {S::kPause, 1000}, {S::kExplanation, 0}, {S::kPause, 1000}, {S::kSpell, 0},
                    {S::kPause, 1000}, {S::kSentences, 0}, {S::kPause, 2000}}},
      {"AN2", {{S::kWord, 0}, {S::kPause, 2000}, {S::kPause, 2000}}},
      {"AN2A", {{S::kWord, 0}, {S::kPause, 2000}, {S::kWord, 0}}},
      {"AN", {{S::kWord, 0}}},
      {"N0.5.5", {{S::kPause, 500}, {S::kPause, 500}}},
      {"1.5H2?x", {{S::kPause, 1500}, {S::kPause, 2000}}},
      {"0.0001A.", {{S::kWord, 0}}},
      // A bare number is cut at 16 bytes; what follows is a new one.
      {"12345678901234567", {{S::kPause, INT32_MIN}, {S::kPause, 7000}}},
      // After N only 15 bytes count, and at the end the run is read again as
      // bare numbers.
      {"N1234567890123456789", {{S::kPause, INT32_MIN}, {S::kPause, INT32_MIN}, {S::kPause, 789000}}},
      {"N0000000000000001234A", {{S::kWord, 0}}},
  };
  for (const Case& c : cases) {
    std::vector<std::pair<int, int32_t>> got;
    for (const S& s : tq::lesson::ParsePattern(c.pattern)) got.push_back({s.kind, s.ms});
    EXPECT_EQ(got, c.steps) << c.pattern;
  }
  std::string p = "ECText#A1";
  EXPECT_TRUE(tq::lesson::TakeECTextPrefix(&p));
  EXPECT_EQ(p, "A1");
  EXPECT_FALSE(tq::lesson::TakeECTextPrefix(&p));
  p = "ectext#A";
  EXPECT_FALSE(tq::lesson::TakeECTextPrefix(&p));
}

class LyricFile : public TempDirTest {};

TEST_F(LyricFile, LinesAndScaledTimes) {
  using tq::lesson::LyricLine;
  EXPECT_EQ(LyricLine(125432, "word"), "[02:05.43]word\r\n");
  EXPECT_EQ(LyricLine(0, "first"), "[00:00.00]first\r\n");
  EXPECT_EQ(LyricLine(-1, G("无时间")), G("无时间") + "\r\n");
  EXPECT_EQ(LyricLine(6000000, "x"), "[100:00.00]x\r\n");
  EXPECT_EQ(LyricLine(59999, ""), "[00:59.99]\r\n");

  // An MP3 one per cent longer than its wave.
  WriteFile(Path("a.lrt"), "100000\r\nlater\r\n-1\r\n" + G("译文") + "\r\n0\r\nstart\r\n6000000\r\nlong\r\n");
  EXPECT_EQ(tq::lesson::AdjustLyrics(Path("a.lrt"), Path("a.lrc"), 100000, 101000), 1);
  EXPECT_EQ(ReadFile(Path("a.lrc")), "[01:41.00]later\r\n" + G("译文") + "\r\n[00:00.00]start\r\n[101:00.00]long\r\n");
  EXPECT_FALSE(vcIfFileExist(Path("a.lrt").c_str()) == 1);
  // Empty in, empty out; a time without its text is dropped.
  WriteFile(Path("b.lrt"), "");
  EXPECT_EQ(tq::lesson::AdjustLyrics(Path("b.lrt"), Path("b.lrc"), 1, 1), 1);
  EXPECT_EQ(ReadFile(Path("b.lrc")), "");
  WriteFile(Path("c.lrt"), "5000\r\n");
  EXPECT_EQ(tq::lesson::AdjustLyrics(Path("c.lrt"), Path("c.lrc"), 1, 1), 1);
  EXPECT_EQ(ReadFile(Path("c.lrc")), "");
  // Files that won't open: -1, and the caption file stays.
  EXPECT_EQ(tq::lesson::AdjustLyrics(Path("none.lrt"), Path("none.lrc"), 1, 1), -1);
  WriteFile(Path("d.lrt"), "0\r\nx\r\n");
  EXPECT_EQ(tq::lesson::AdjustLyrics(Path("d.lrt"), Path("no/dir/d.lrc"), 1, 1), -1);
  EXPECT_TRUE(vcIfFileExist(Path("d.lrt").c_str()) == 1);
}

}  // namespace
