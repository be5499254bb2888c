// The sound centre at the boundary: handles, the order in which user
// sounds, libraries and speech answer each kind of request, question mode,
// and the user sounds' names.
#include <cstdlib>
#include <functional>
#include <string>

#include "platform/env.h"
#include "sound/sound_library.h"
#include "sndlib_util.h"

using namespace tqtest;

namespace {

class SoundCentre : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    tqtest::Run("mkdir -p '" + Path("user") + "'", nullptr);
    user_ = Path("user/");
    base_ = Path("out");
  }
  void TearDown() override {
    if (centre_ > 0) vcSndCenter_Close(centre_);
    tq::env::SetOpenFaultForTesting({});
    TempDirTest::TearDown();
  }
  // A centre with the library lib.idx (made from sounds) under kind.
  void Open(const std::vector<Sound>& sounds, int kind, int useTts = 1) {
    centre_ = vcSndCenter_Open(useTts, 16, 22050, 1);
    WriteLibrary(Path("lib.idx"), dir(), sounds, kind == 2);
    ASSERT_EQ(vcSndCenter_AddSndLib(centre_, Path("lib.idx").c_str(), dir().c_str(), kind), 1);
  }
  int Get(const std::string& text, int kind, int allowTts = 0, int wantWave = 0, const char* user = nullptr) {
    source_ = -7;
    Clean();
    return vcSndCenter_GetSndFile(centre_, text.c_str(), kind, base_.c_str(), wantWave, allowTts, &source_,
                                  user != nullptr ? user : user_.c_str());
  }
  int Ask(const std::string& text, int kind, int allowTts = 0) {
    source_ = -7;
    Clean();
    return vcSndCenter_CanSpeak(centre_, text.c_str(), kind, base_.c_str(), 0, allowTts, &source_, user_.c_str());
  }
  void Clean() {
    std::remove((base_ + ".wav").c_str());
    std::remove((base_ + ".mp3").c_str());
  }
  bool Made(const char* extension) { return vcIfFileExist((base_ + extension).c_str()) == 1; }
  std::string Out(const char* extension) { return ReadFile(base_ + extension); }
  bool Speaks() { return vcSndCenter_IsTtsAvailable(centre_) > 0; }

  int centre_ = 0;
  int32_t source_ = -7;
  std::string user_, base_;
};

TEST_F(SoundCentre, NineteenHandlesFirstFreeSlotFirst) {
  for (int i = 1; i <= 19; ++i) EXPECT_EQ(vcSndCenter_Open(0, 16, 22050, 1), i);
  EXPECT_EQ(vcSndCenter_OpenEx(0, 16, 22050, 1, 0), -1);
  vcSndCenter_Close(12);
  vcSndCenter_Close(5);
  vcSndCenter_Close(0);
  vcSndCenter_Close(-3);
  EXPECT_EQ(vcSndCenter_Open(0, 16, 22050, 1), 5);
  EXPECT_EQ(vcSndCenter_Open(0, 16, 22050, 1), 12);
  // A closed handle refuses everything.
  vcSndCenter_Close(7);
  int32_t source = -7;
  EXPECT_EQ(vcSndCenter_GetSndFile(7, "apple", 3, "x", 0, 1, &source, nullptr), -1);
  EXPECT_EQ(vcSndCenter_AddSndLib(7, nullptr, nullptr, 0), -1);
  EXPECT_EQ(vcSndCenter_IsTtsAvailable(7), 0);
  EXPECT_EQ(source, -7);
  // With useTts 0 there is no speech, and it reads as 0.
  EXPECT_EQ(vcSndCenter_IsTtsAvailable(1), 0);
}

TEST_F(SoundCentre, AddingLibrariesAndBadRequests) {
  Open({{"apple", "MP3"}}, 0);
  EXPECT_EQ(vcSndCenter_AddSndLib(centre_, nullptr, "x", 0), 1);
  EXPECT_EQ(vcSndCenter_AddSndLib(centre_, Path("none.idx").c_str(), dir().c_str(), 0), -1);
  EXPECT_EQ(vcSndCenter_AddSndLib(centre_, Path("lib.idx").c_str(), dir().c_str(), 4), -1);
  EXPECT_EQ(vcSndCenter_AddSndLib(centre_, Path("lib.idx").c_str(), dir().c_str(), 3), 1);  // kept, never read
  for (int kind : {-1, 4, 99}) EXPECT_EQ(Get("apple", kind, 1), -1) << kind;
  EXPECT_EQ(vcSndCenter_GetSndFile(centre_, nullptr, 0, base_.c_str(), 0, 1, nullptr, nullptr), -1);
  EXPECT_EQ(vcSndCenter_GetSndFile(centre_, "apple", 0, nullptr, 0, 1, nullptr, nullptr), -1);
  EXPECT_EQ(source_, -7);
  // A corrupt index: a failed lookup or some sound, never a crash.
  std::string junk;
  for (int i = 0; i < 5000; ++i) junk.push_back(static_cast<char>(i * 131 + i / 7));
  WriteFile(Path("junk.idx"), junk);
  ASSERT_EQ(vcSndCenter_AddSndLib(centre_, Path("junk.idx").c_str(), dir().c_str(), 0), 1);
  for (const char* word : {"", "zebra", "\xFF\xFF", "a"}) Get(word, 0);
}

TEST_F(SoundCentre, UserUsmOverUserWaveOverLibraryForWords) {
  const std::string mp3 = ReadFile(ToneMp3(1, 22050, 0.5, 32));
  Open({{"apple", "LIBRARY"}}, 0);
  WriteFile(user_ + "apple.wav", "USER-WAVE");
  WriteFile(Path("plain.mp3"), mp3);
  ASSERT_EQ(tq::sound::XorSoundFile(Path("plain.mp3").c_str(), (user_ + "apple.usm").c_str()), 1);

  EXPECT_EQ(Ask("apple", 0), 2);
  EXPECT_EQ(source_, 0);
  EXPECT_EQ(Get("apple", 0), 2);
  EXPECT_EQ(Out(".mp3"), mp3);  // put back from the scrambled file
  EXPECT_EQ(Get("apple", 0, 0, 1), 1);
  EXPECT_GT(vcGetWaveFileLenInTime((base_ + ".wav").c_str()), 400);
  EXPECT_EQ(vcIfFileExist((user_ + "tmpusmmp3.mp3").c_str()), 0);

  std::remove((user_ + "apple.usm").c_str());
  EXPECT_EQ(Ask("apple", 0), 1);
  EXPECT_EQ(Get("apple", 0), 1);
  EXPECT_EQ(Out(".wav"), "USER-WAVE");

  std::remove((user_ + "apple.wav").c_str());
  WriteFile(user_ + "apple.mp3", mp3);
  EXPECT_EQ(Get("apple", 0), 2);  // the MP3 under the wave's name
  EXPECT_EQ(Out(".wav"), mp3);
  EXPECT_FALSE(Made(".mp3"));
  EXPECT_EQ(Get("apple", 0, 0, 1), 1);  // decoded
  EXPECT_GT(vcGetWaveFileLenInTime((base_ + ".wav").c_str()), 400);

  std::remove((user_ + "apple.mp3").c_str());
  EXPECT_EQ(Ask("apple", 0), 3);
  EXPECT_EQ(Get("apple", 0), 2);
  EXPECT_EQ(Out(".mp3"), "LIBRARY");
  EXPECT_EQ(source_, 0);

  // A file named just ".wav" answers for every word: a word's short name
  // is empty.
  WriteFile(user_ + ".wav", "ANY-WORD");
  EXPECT_EQ(Get("zebra", 0), 1);
  EXPECT_EQ(Out(".wav"), "ANY-WORD");
  EXPECT_EQ(Get("apple", 0), 1);
}

TEST_F(SoundCentre, SentencesByTheirSearchFormAndItsFirstEightyBytes) {
  Open({{"is it yours@", "LIB-YOURS"}}, 2);
  // Looked up in the index by "@"...
  EXPECT_EQ(Ask("Is it yours?", 2), 3);
  EXPECT_EQ(Get("Is it yours?", 2), 2);
  EXPECT_EQ(Out(".mp3"), "LIB-YOURS");
  // ...and among the user sounds, the bytes 1 to 4 left out.
  WriteFile(user_ + "Is it yours@.wav", "USER-YOURS");
  EXPECT_EQ(Get("Is it\x03 yours?", 2), 1);
  EXPECT_EQ(Out(".wav"), "USER-YOURS");

  const std::string longer =
      "When the bell rings at the end of the day, the children run out: \"Home!\" they shout, and they are gone.";
  std::string form = longer;
  vcConvertToSearchingSentence(&form[0]);
  ASSERT_GT(form.size(), 80u);
  EXPECT_NE(form.find("#"), std::string::npos);
  EXPECT_NE(form.find("^Home!^"), std::string::npos);
  WriteFile(user_ + form.substr(0, 80) + ".mp3", "SHORT-NAMED");
  EXPECT_EQ(Get(longer, 2), 2);
  EXPECT_EQ(Out(".wav"), "SHORT-NAMED");
  WriteFile(user_ + form + ".mp3", "FULL-NAMED");
  EXPECT_EQ(Get(longer, 2), 2);
  EXPECT_EQ(Out(".wav"), "FULL-NAMED");
}

TEST_F(SoundCentre, SentencesAreSpokenAsWrittenNotAsSearched) {
  Open({}, 2);
  if (!Speaks()) GTEST_SKIP() << "espeak-ng is not installed";
  // espeak-ng reads "@" as "at": a sentence spoken in its search form
  // would be longer.
  const std::string asked = "Is it yours?";
  ASSERT_EQ(Get(asked, 2, 1), 1);
  EXPECT_EQ(source_, 1);
  const int spoken = vcGetWaveFileLenInTime((base_ + ".wav").c_str());
  ASSERT_EQ(Get(asked, 0, 1), 1);
  const int word = vcGetWaveFileLenInTime((base_ + ".wav").c_str());
  ASSERT_EQ(Get("Is it yours@", 0, 1), 1);
  const int searched = vcGetWaveFileLenInTime((base_ + ".wav").c_str());
  EXPECT_NEAR(spoken, word, word / 10);
  EXPECT_GT(searched, spoken + spoken / 5);
}

TEST_F(SoundCentre, QuestionModeWritesNothing) {
  Open({}, 0);
  if (!Speaks()) GTEST_SKIP() << "espeak-ng is not installed";
  EXPECT_EQ(Ask("nowhere", 0, 0), -1);
  EXPECT_EQ(source_, -7);
  EXPECT_EQ(Ask("nowhere", 0, 1), 1);
  EXPECT_EQ(source_, 1);
  EXPECT_EQ(Ask("nowhere", 2, 1), 1);
  EXPECT_FALSE(Made(".wav"));
  EXPECT_EQ(Get("nowhere", 0, 0), -1);
  EXPECT_EQ(source_, -7);
  EXPECT_EQ(Get("nowhere", 0, 1), 1);
  EXPECT_EQ(source_, 1);
  EXPECT_TRUE(Made(".wav"));
}

TEST_F(SoundCentre, ChineseKeysWithEitherSeparator) {
  const std::string key = "zh001";
  Open({{key, "LIB-ZH"}}, 1);
  if (!Speaks()) GTEST_SKIP() << "espeak-ng is not installed";
  const std::string chinese = G("苹果");
  const struct {
    const char* what;
    std::string text;
    int allowTts;
    int expected, source;
    bool library, speech;
  } cases[] = {
      {"bare key", key, 1, 2, 0, true, false},
      {"bare key missing", "zh999", 1, -1, 0, false, false},
      {"\\1, library hit: no speech", key + "\x01" + chinese, 1, 2, 0, true, false},
      {"\\1, library miss: speech", "zh999\x01" + chinese, 1, 1, 1, false, true},
      {"\\2, speech first: library unread", key + "\x02" + chinese, 1, 1, 1, false, true},
      {"\\2 without speech: library never asked", key + "\x02" + chinese, 0, -1, -7, false, false},
      {"\\1 without speech, library miss", "zh999\x01" + chinese, 0, -1, -7, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Get(c.text, 1, c.allowTts), c.expected) << c.what;
    EXPECT_EQ(source_, c.source) << c.what;
    EXPECT_EQ(Made(".mp3"), c.library) << c.what;
    EXPECT_EQ(Made(".wav"), c.speech) << c.what;
  }
  EXPECT_EQ(Ask(key + "\x02" + chinese, 1, 1), 1);
  EXPECT_EQ(source_, 1);
  EXPECT_EQ(Ask(key + "\x01" + chinese, 1, 1), 3);
  EXPECT_EQ(source_, 0);

  // Speech that fails falls back on the library, with source 0.
  tq::env::SetOpenFaultForTesting([](const std::string& path, const char*) {
    return path.size() > 4 && path.compare(path.size() - 4, 4, ".wav") == 0;
  });
  EXPECT_EQ(Get(key + "\x02" + chinese, 1, 1), 2);
  EXPECT_EQ(source_, 0);
  EXPECT_EQ(Out(".mp3"), "LIB-ZH");
}

TEST_F(SoundCentre, ChineseSpeechKindAnswersQuestionsEvenWithoutSpeech) {
  Open({}, 0, 0);
  EXPECT_EQ(Ask(G("你好"), 3, 0), 1);
  EXPECT_EQ(source_, 1);
  EXPECT_EQ(Get(G("你好"), 3, 1), -1);
  EXPECT_EQ(source_, 1);
}

TEST_F(SoundCentre, UserSoundFoldersFromTheRegistryStore) {
  setenv("TQCOMM_REGISTRY", Path("registry").c_str(), 1);
  tqtest::Run("mkdir -p '" + Path("words/usersnd") + "' '" + Path("sentences/usersnd") + "'", nullptr);
  Open({}, 0, 0);
  WriteFile(Path("words/usersnd/apple.wav"), "WORD-PROGRAM");
  WriteFile(Path("sentences/usersnd/Good morning.wav"), "SENTENCE-PROGRAM");
  const uint32_t kCurrentUser = 0x80000001u;
  EXPECT_EQ(vcSndCenter_GetSndFile(centre_, "apple", 0, base_.c_str(), 0, 0, nullptr, nullptr), -1);
  ASSERT_EQ(vcWriteKeyValueString(kCurrentUser, "Software\\VB and VBA Program Settings\\orvex7\\User", "InstallPath",
                                (Path("words") + "/").c_str()),
            0);
  ASSERT_EQ(vcWriteKeyValueString(kCurrentUser, "Software\\\xC4\xAB\xC1\xEB\\\xC7\xE0\xD1\xE2\xBC\xC7\xBE\xE4",
                                "InstallPath", (Path("sentences") + "/").c_str()),
            0);
  EXPECT_EQ(vcSndCenter_GetSndFile(centre_, "apple", 0, base_.c_str(), 0, 0, nullptr, nullptr), 1);
  EXPECT_EQ(Out(".wav"), "WORD-PROGRAM");
  EXPECT_EQ(vcSndCenter_GetSndFile(centre_, "Good morning", 2, base_.c_str(), 0, 0, nullptr, nullptr), 1);
  EXPECT_EQ(Out(".wav"), "SENTENCE-PROGRAM");
  // The sentence program's sounds serve the one-shot sentence road too.
  WriteLibrary(Path("s.idx"), dir(), {{"other", "X"}}, true);
  EXPECT_EQ(vcMakeSentenceSndFile("Good morning", (dir() + "/").c_str(), "s.idx", base_.c_str(), 0), 1);
  unsetenv("TQCOMM_REGISTRY");
}

TEST_F(SoundCentre, OneShotSentencesAndTheSearchForm) {
  WriteLibrary(Path("s.idx"), dir(), {{"a#b", "ONE"}, {"where is it@", "TWO"}}, true);
  const std::string root = dir() + "/";
  EXPECT_EQ(vcMakeSentenceSndFile("Where is it?", root.c_str(), "s.idx", base_.c_str(), 0), 2);
  EXPECT_EQ(Out(".mp3"), "TWO");
  EXPECT_EQ(vcMakeSentenceSndFile("nothing here", root.c_str(), "s.idx", base_.c_str(), 0), -1);
  EXPECT_EQ(vcMakeSentenceSndFile("Where is it?", root.c_str(), "none.idx", base_.c_str(), 0), -1);

  const std::pair<std::string, std::string> forms[] = {
      {"a?b\"c:d/e", "a@b^c#d&e"}, {"\x01\x02 stays", "\x01\x02 stays"}, {"", ""}, {G("你好？"), G("你好？")}};
  for (const auto& [in, expected] : forms) {
    std::string text = in;
    vcConvertToSearchingSentence(&text[0]);
    EXPECT_EQ(text, expected);
  }
  vcConvertToSearchingSentence(nullptr);
}

}  // namespace
