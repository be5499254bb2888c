// Article scripts: cutting a recording into one wave per sentence, the
// sentence file names, checking for sounds, and taking sentences out of an
// older sentence library.
#include <cstdlib>
#include <string>
#include <vector>

#include "sndlib_util.h"
#include "sound/article_script.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

std::vector<std::string> g_boxes;

int CollectBox(const char* text, const char* title, unsigned) {
  g_boxes.push_back(std::string(title) + "|" + text);
  return 1;
}

class ArticleScript : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    g_boxes.clear();
    tqHost_SetMessageBoxHandler(CollectBox);
  }
  void TearDown() override {
    tqHost_SetMessageBoxHandler(nullptr);
    TempDirTest::TearDown();
  }
  int Ms(const std::string& name) { return vcGetWaveFileLenInTime(Path(name).c_str()); }
};

TEST_F(ArticleScript, LinesAsTheCuttingReadsThem) {
  using L = tq::sound::ScriptLine;
  const struct {
    const char* line;
    L::Kind kind;
    int timeMs;
    const char* sentence;
    const char* recording;
  } cases[] = {
      {"[01:02.500]  Hello there.", L::kMark, 62500, "Hello there.", ""},
      {"[00:00.000]", L::kMark, 0, "", ""},
      {"[00:05", L::kMark, 5000, "", ""},
      {"[", L::kMark, 0, "", ""},
      {"[xx:1e999 ]big", L::kMark, 0, "big", ""},  // beyond a double: no number
      {"[00:nan   ]x", L::kMark, INT32_MIN, "x", ""},
      {"abc****[00:01.25 ]Cut.", L::kOther, 0, "", ""},  // four bytes of the line go, not the stars
      {"****[00:01.25 ]Cut.", L::kMark, 1250, "Cut.", ""},
      {"$ section **c:\\voa\\news.mp3", L::kSection, 0, "", "c:\\voa\\news.mp3"},
      {"$ no recording", L::kSection, 0, "", ""},
      {"  [00:01.000]indented", L::kOther, 0, "", ""},
      {"", L::kOther, 0, "", ""},
  };
  for (const auto& c : cases) {
    const L s = tq::sound::ReadScriptLine(c.line);
    EXPECT_EQ(s.kind, c.kind) << c.line;
    if (c.kind == L::kMark) {
      EXPECT_EQ(s.timeMs, c.timeMs) << c.line;
      EXPECT_EQ(s.sentence, c.sentence) << c.line;
    }
    EXPECT_EQ(s.recording, c.recording) << c.line;
  }
}

TEST_F(ArticleScript, SentenceFileNames) {
  const std::pair<std::string, std::string> names[] = {
      {"Where is it?", "Where is it@.mp3"},
      {"Time: 10/12 \"now\"", "Time# 10&12 ^now^.mp3"},
      {G("Yes， he said：“Go！”"), "Yes, he said#^Go!^.mp3"},
      {G("It‘s　done。"), "It's done..mp3"},
      {G("你好，世界"), G("你好") + "," + G("世界") + ".mp3"},
      {std::string(70, 'x'), std::string(63, 'x') + ".mp3"},
      {"a\x01\x04z", "az.mp3"},
  };
  for (const auto& [sentence, name] : names) EXPECT_EQ(tq::sound::SentenceFileName(sentence, ".mp3"), name);
}

TEST_F(ArticleScript, CutsEachSentenceFromItsMarkToTheNext) {
  const std::string mp3 = ToneMp3(1, 22050, 6, 32);
  WriteFile(Path("script.txt"), "$ VOA **" + mp3 +
                                    "\r\n[00:01.000]First: one.\r\n[00:03.500]Is it two?   \r\nnot a mark\r\n"
                                    "$ end\r\n[00:04.000]Single mark, no section after.\r\n");
  vcProcessVoaScript(Path("script.txt").c_str());
  // Each wave opens with one block from the start of the recording.
  EXPECT_NEAR(Ms("First# one..wav"), 2500, 120);
  EXPECT_NEAR(Ms("Is it two@.wav"), 2500, 120);  // to the end, at the "$" line
  EXPECT_NEAR(Ms("Single mark, no section after..wav"), 2000, 120);  // to the end of the file
}

TEST_F(ArticleScript, SentencesAgreeingInSixtyThreeBytesShareAFile) {
  const std::string mp3 = ToneMp3(1, 22050, 6, 32);
  const std::string stem(63, 's');
  WriteFile(Path("script.txt"), "$**" + mp3 + "\n[00:00.000]" + stem + "A\n[00:01.000]" + stem + "B\n");
  vcProcessVoaScript(Path("script.txt").c_str());
  EXPECT_NEAR(Ms(stem + ".wav"), 5000, 120);  // the second overwrote the first
  vcProcessVoaScript(nullptr);
  vcProcessVoaScript(Path("missing.txt").c_str());
  WriteFile(Path("empty.txt"), "");
  vcProcessVoaScript(Path("empty.txt").c_str());
  vcVerifyVoaScript(Path("empty.txt").c_str());
  EXPECT_TRUE(g_boxes.empty());
}

TEST_F(ArticleScript, VerifyNamesEachSentenceWithoutSound) {
  WriteFile(Path("Where is it@.mp3"), "x");
  WriteFile(Path("Yes, he said.mp3"), "x");
  WriteFile(Path("script.txt"), "  Where is it?\n" + G("Yes， he said") + "\nMissing one.\n\tAnother: gone\n");
  vcVerifyVoaScript(Path("script.txt").c_str());
  EXPECT_EQ(g_boxes, (std::vector<std::string>{"|Missing one.", "|Another: gone"}));
}

TEST_F(ArticleScript, OldLibrarySoundsByRegistrySetting) {
  setenv("TQCOMM_REGISTRY", Path("registry").c_str(), 1);
  tqtest::Run("mkdir -p '" + Path("old") + "'", nullptr);
  WriteLibrary(Path("old/voa.idx"), Path("old"), {{"how are you@", "HOW"}, {"fine, thanks.", "FINE"}}, true);
  WriteFile(Path("script.txt"),
            "[00:01.000]How are you?\n$ **x.mp3\nHow are you?\nFine, thanks.\nNot in it.\nskip &&& me\n");
  vcGetOldVoaSnd(Path("script.txt").c_str());
  EXPECT_EQ(g_boxes.size(), 3u);  // no library set: every sentence line is missing
  g_boxes.clear();
  for (auto [name, value] : {std::pair<const char*, std::string>{"IndexPath", Path("old/voa.idx")}, {"RootDir", Path("old")}}) {
    ASSERT_EQ(vcWriteKeyValueString(0x80000001u, "Software\\tqcomm2006\\VoaLibrary", name, value.c_str()), 0);
  }
  vcGetOldVoaSnd(Path("script.txt").c_str());
  EXPECT_EQ(ReadFile(Path("How are you@.mp3")), "HOW");
  EXPECT_EQ(ReadFile(Path("Fine, thanks..mp3")), "FINE");
  EXPECT_EQ(g_boxes, (std::vector<std::string>{"|Not in it."}));
  unsetenv("TQCOMM_REGISTRY");
}

}  // namespace
