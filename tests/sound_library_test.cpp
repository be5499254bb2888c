// Sound libraries: the halving lookup on the index file, carrying a sound
// out of its data file (scrambled, past the end, from a CD drive), and the
// single-word road of vcMakeWordSndFile.
#include <cstdio>
#include <string>
#include <vector>

#include "sndlib_util.h"
#include "sound/sound_library.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

// A folder of user sounds that isn't there.
const char kNoUser[] = "no-user-sounds/";

class SoundLibrary : public TempDirTest {
 protected:
  // The lookup's answer for key on an index of these bytes.
  long Lookup(const std::string& index, const std::string& key, SndLibRecord* found = nullptr) {
    WriteFile(Path("look.idx"), index);
    std::FILE* f = std::fopen(Path("look.idx").c_str(), "rb");
    const long at = tq::sound::LookupSndKey(f, key.c_str(), found);
    std::fclose(f);
    return at;
  }
  // A centre with one library under kind, the search's answer for key.
  int Get(const std::string& key, int kind = 0, bool question = false, int wantWave = 0) {
    const int c = vcSndCenter_Open(0, 16, 22050, 1);
    EXPECT_EQ(vcSndCenter_AddSndLib(c, Path("lib.idx").c_str(), dir().c_str(), kind), 1);
    const std::string base = Path("out");
    const int got = question ? vcSndCenter_CanSpeak(c, key.c_str(), kind, base.c_str(), wantWave, 0, nullptr, kNoUser)
                             : vcSndCenter_GetSndFile(c, key.c_str(), kind, base.c_str(), wantWave, 0, nullptr, kNoUser);
    vcSndCenter_Close(c);
    return got;
  }
};

TEST_F(SoundLibrary, LookupEdgeCases) {
  const std::string apple = SndRecord("apple", 1, 2, "a.dat", 0);
  const std::string long63(63, 'k');
  std::string full64 = SndRecord(long63 + "Z", 0, 0, "a.dat", 0);  // byte 63 set: no terminator in the field
  const struct {
    const char* what;
    std::string index, key;
    long expected;
  } cases[] = {
      {"one record, hit", apple, "apple", 0},
      {"one record, key after it", apple, "banana", -1},
      {"one record, key before it", apple, "aardvark", -1},
      {"capital letters", apple, "APPLE", 0},
      {"empty index", "", "apple", -1},
      {"empty index, empty key", "", "", -1},
      {"less than a record", std::string(50, '\0'), "", -1},
      {"byte 63 never counts", full64, long63, 0},
      {"a key of 70 bytes", full64, long63 + "1234567", 0},
      {"62 bytes are not 63", full64, long63.substr(1), -1},
      {"GBK key", SndRecord(G("苹果"), 0, 0, "a.dat", 0), G("苹果"), 0},
  };
  for (const auto& c : cases) EXPECT_EQ(Lookup(c.index, c.key), c.expected) << c.what;

  SndLibRecord found;
  ASSERT_EQ(Lookup(SndRecord("London", 7, 9, "city.dat", 1), "lONDON", &found), 0);
  EXPECT_STREQ(found.key, "london");  // the record comes back lowered
  EXPECT_EQ(found.offset, 7u);
  EXPECT_EQ(found.length, 9u);
  EXPECT_STREQ(found.dataFile, "city.dat");
  EXPECT_EQ(found.isWave, 1);
  ASSERT_EQ(Lookup(full64, long63, &found), 0);
  EXPECT_EQ(found.key[63], 'Z');  // put back as it was after the comparison
}

TEST_F(SoundLibrary, HalvingReachesEveryRecordOfEverySize) {
  for (int n = 1; n <= 41; ++n) {
    std::string index;
    for (int i = 0; i < n; ++i) index += SndRecord("w" + std::to_string(1000 + 2 * i), i, 0, "a.dat", 0);
    for (int i = 0; i < n; ++i) {
      EXPECT_EQ(Lookup(index, "w" + std::to_string(1000 + 2 * i)), 96L * i) << n << " records, " << i;
      EXPECT_EQ(Lookup(index, "w" + std::to_string(1001 + 2 * i)), -1) << n << " records, between " << i;
    }
    EXPECT_EQ(Lookup(index, "a"), -1);
    // A cut-off record at the end changes nothing for the whole ones.
    EXPECT_EQ(Lookup(index + "w9", "w" + std::to_string(1000 + 2 * (n - 1))), 96L * (n - 1)) << n;
  }
}

TEST_F(SoundLibrary, ExtractAnswersAndFiles) {
  WriteLibrary(Path("lib.idx"), dir(),
               {{"apple", "APPLE-MP3"}, {"cat", "RIFFcat", 1}, {"ghost", "x", 0, "gone.dat"}});
  std::remove(Path("gone.dat").c_str());
  EXPECT_EQ(Get("apple"), 2);
  EXPECT_EQ(ReadFile(Path("out.mp3")), "APPLE-MP3");
  EXPECT_EQ(Get("Cat"), 1);
  EXPECT_EQ(ReadFile(Path("out.wav")), "RIFFcat");
  // A question never opens the data file.
  EXPECT_EQ(Get("ghost", 0, true), 3);
  EXPECT_EQ(Get("ghost"), -1);
  EXPECT_EQ(Get("dog", 0, true), -1);
}

TEST_F(SoundLibrary, LengthPastTheEndOfTheDataFileFillsWithEndOfFileBytes) {
  WriteFile(Path("snd.dat"), "0123456789");
  WriteFile(Path("lib.idx"),
            SndRecord("beyond", 100, 5, "snd.dat", 0) + SndRecord("tail", 4, 20, "snd.dat", 0));
  EXPECT_EQ(Get("tail"), 2);
  EXPECT_EQ(ReadFile(Path("out.mp3")), "456789" + std::string(14, '\xFF'));
  EXPECT_EQ(Get("beyond"), 2);
  EXPECT_EQ(ReadFile(Path("out.mp3")), std::string(5, '\xFF'));
}

TEST_F(SoundLibrary, SentenceLibrariesAreScrambledByRecordPosition) {
  WriteLibrary(Path("lib.idx"), dir(), {{"a sentence", "FIRST"}, {"b sentence", "SECOND!"}}, true);
  EXPECT_EQ(Get("b sentence", 2), 2);
  EXPECT_EQ(ReadFile(Path("out.mp3")), "SECOND!");
  // Read plain, the second record's fields are 96 off.
  EXPECT_EQ(Get("b sentence", 0), 2);
  EXPECT_NE(ReadFile(Path("out.mp3")), "SECOND!");
  // The first record is XORed with 0: the same either way.
  EXPECT_EQ(Get("a sentence", 0), 2);
  EXPECT_EQ(ReadFile(Path("out.mp3")), "FIRST");
}

TEST_F(SoundLibrary, MissingDataFilesAreLookedForOnCdDrivesInLetterOrder) {
  WriteLibrary(Path("lib.idx"), dir(), {{"apple", "SOUND"}});
  std::remove(Path("snd.dat").c_str());
  for (char letter : {'E', 'F', 'H'}) {
    const std::string drive = Path(std::string("drive") + letter);
    tqtest::Run("mkdir -p '" + drive + "/sndlib'", nullptr);
    if (letter != 'E') WriteFile(drive + "/sndlib/snd.dat", std::string("SOUND-FROM-") + letter);
    tqHost_SetCdDrive(letter, drive.c_str());
  }
  const int c = vcSndCenter_Open(0, 16, 22050, 1);
  ASSERT_EQ(vcSndCenter_AddSndLib(c, Path("lib.idx").c_str(), Path("nowhere").c_str(), 0), 1);
  const std::string base = Path("out");
  const struct {
    char removed;
    int expected;
    const char* content;
  } steps[] = {{0, 2, "SOUND-FROM-F"}, {'F', 2, "SOUND-FROM-H"}, {'H', -1, ""}};
  for (const auto& s : steps) {
    if (s.removed != 0) tqHost_SetCdDrive(s.removed, nullptr);
    std::remove((base + ".mp3").c_str());
    EXPECT_EQ(vcSndCenter_GetSndFile(c, "apple", 0, base.c_str(), 0, 0, nullptr, kNoUser), s.expected);
    // The record's length (5) is what is copied.
    EXPECT_EQ(ReadFile(base + ".mp3"), std::string(s.content).substr(0, 5)) << s.content;
  }
  vcSndCenter_Close(c);
}

TEST_F(SoundLibrary, MakeWordSndFileOnTheShortRoad) {
  const std::string mp3 = ReadFile(ToneMp3(1, 22050, 0.5, 32));
  tqtest::Run("mkdir -p '" + Path("lib") + "'", nullptr);
  WriteLibrary(Path("lib/words.idx"), Path("lib"),
               {{"apple", mp3}, {"bell", "RIFFbell", 1}, {"odd", "ODD", 2}, {std::string(63, 'q'), mp3}});
  const std::string root = Path("lib/");  // data files at rootDir + name, no separator added
  const std::string base = Path("w");
  EXPECT_EQ(vcMakeWordSndFile("APPLE", root.c_str(), "words.idx", base.c_str()), 1);
  EXPECT_EQ(ReadFile(base + ".mp3"), mp3);
  int32_t para[5];
  ASSERT_EQ(vcGetWaveFilePara((base + ".wav").c_str(), para), 1);
  EXPECT_EQ(para[2], 22050);
  EXPECT_GT(para[4], 400);
  std::remove((base + ".wav").c_str());
  std::remove((base + ".mp3").c_str());
  EXPECT_EQ(vcMakeWordSndFile("bell", root.c_str(), "words.idx", base.c_str()), 1);
  EXPECT_EQ(ReadFile(base + ".wav"), "RIFFbell");
  EXPECT_EQ(vcIfFileExist((base + ".mp3").c_str()), 0);
  std::remove((base + ".wav").c_str());
  // An isWave above 1 leaves the sound as an MP3 alone.
  EXPECT_EQ(vcMakeWordSndFile("odd", root.c_str(), "words.idx", base.c_str()), 1);
  EXPECT_EQ(ReadFile(base + ".mp3"), "ODD");
  EXPECT_EQ(vcIfFileExist((base + ".wav").c_str()), 0);
  // A key longer than 64 bytes is cut to 63.
  EXPECT_EQ(vcMakeWordSndFile((std::string(63, 'q') + "rstuvw").c_str(), root.c_str(), "words.idx", base.c_str()), 1);
  EXPECT_EQ(vcMakeWordSndFile("pear", root.c_str(), "words.idx", base.c_str()), 0);
  EXPECT_EQ(vcMakeWordSndFile("apple", root.c_str(), "none.idx", base.c_str()), 0);
  EXPECT_EQ(vcMakeWordSndFile("apple", Path("lib").c_str(), "/words.idx", base.c_str()), 0);  // data at "libsnd.dat"
  EXPECT_EQ(vcMakeWordSndFile(nullptr, root.c_str(), "words.idx", base.c_str()), 0);
}

}  // namespace
