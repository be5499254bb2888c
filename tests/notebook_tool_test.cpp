// tqcomm notebook on a fresh data folder: words added from the sample
// dictionary are read back by the word book class, learnt from with
// tqcomm learn, and removed with their history.
#include <cstring>
#include <string>
#include <vector>

#include "learning_files.h"
#include "platform/env.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;

namespace {

class NotebookTool : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    std::string out;
    ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " dict build " + TQ_SOURCE_DIR +
                              "/data/sample/dict_source.txt -o dict 2>&1",
                          &out),
              0)
        << out;
  }
  // Runs the tool in the C locale (arguments pass as GBK bytes); its exit
  // status, with standard output and error in *out.
  int Tool(const std::string& args, std::string* out, const std::string& input = "") {
    std::string cmd = "printf '" + input + "' | LC_ALL=C XDG_DATA_HOME='" + dir() + "' " + TQCOMM_BIN + " " + args +
                      " 2>&1";
    return tqtest::Run(cmd, out);
  }
  std::string Data(const std::string& name) const { return dir() + "/tqcomm/" + name; }

  struct Word {
    std::string word, pron, mean;
    bool operator==(const Word& o) const { return word == o.word && pron == o.pron && mean == o.mean; }
  };
  // Every word of the notebook through the word book class.
  std::vector<Word> ReadByBookClass() {
    int book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, Data("notebook.idx").c_str(), nullptr);
    int count = vcCOrvexBook_OpenIdx(book, "rb");
    EXPECT_GT(vcCOrvexBook_OpenLib(book, "rb"), 0);
    std::vector<Word> words;
    for (int i = 0; i < count; ++i) {
      char word[200], expl[4000], pron[4000];
      vcCOrvexBook_GetWordByNo(book, i, word, expl, pron, nullptr, nullptr, nullptr);
      words.push_back({word, pron, expl});
    }
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    return words;
  }
};

TEST_F(NotebookTool, AddedWordsAreABookToLearnFrom) {
  std::string out;
  ASSERT_EQ(Tool("notebook add able --dict dict", &out), 0) << out;
  ASSERT_EQ(Tool("notebook add running --dict dict", &out), 0) << out;  // the base form's entry
  ASSERT_EQ(Tool("notebook add zzz --pron zi: --mean '" + G("打鼾") + "'", &out), 0) << out;
  EXPECT_EQ(Tool("notebook add able --dict dict", &out), 1) << out;  // there already
  EXPECT_EQ(Tool("notebook add qqqq --dict dict", &out), 1) << out;  // not in the dictionary
  EXPECT_EQ(Tool("notebook add", &out), 2) << out;

  const std::vector<Word> want = {{"able", "['eibl]", G("adj. 能够的；有能力的")},
                                  {"running", "[rAn]", G("v. 跑；经营；运转; n. 跑步")},
                                  {"zzz", "[zi:]", G("打鼾")}};
  EXPECT_EQ(ReadByBookClass(), want);
  EXPECT_EQ(tqtest::ReadFile(Data("notebook.idx.tag")), std::string(412, '\0'));
  ASSERT_EQ(Tool("notebook list", &out), 0);
  EXPECT_NE(out.find("running"), std::string::npos) << out;

  // The picture: one list row of 600 x 24 pixels per word.
  ASSERT_EQ(Tool("notebook show --png list.png", &out), 0) << out;
  std::string png = tqtest::ReadFile("list.png");
  ASSERT_GT(png.size(), 24u);
  EXPECT_EQ(png.substr(1, 3), "PNG");
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\x58\0\0\0\x48", 8));  // IHDR: 600 x 72
  EXPECT_EQ(Tool("notebook show", &out), 2) << out;

  // A day's learning on the notebook: its history file is made beside it.
  ASSERT_EQ(Tool("learn --book '" + Data("notebook.idx") + "' --date 2026-03-01 --new 3", &out, "1\\n4\\n5\\n"), 0)
      << out;
  EXPECT_NE(out.find("answered 3, left 0"), std::string::npos) << out;
  std::vector<LearningRecord> h = tqtest::ReadHistory(Data("notebook.his"));
  ASSERT_EQ(h.size(), 3u);
  EXPECT_EQ(h[1].attr, 1);  // known at first sight

  // Removing a word rewrites the notebook and drops its learning record.
  EXPECT_EQ(Tool("notebook remove running nope", &out), 1) << out;
  EXPECT_NE(out.find("nope is not in the notebook"), std::string::npos) << out;
  EXPECT_EQ(ReadByBookClass(), std::vector<Word>({want[0], want[2]}));
  h = tqtest::ReadHistory(Data("notebook.his"));
  ASSERT_EQ(h.size(), 2u);
  EXPECT_EQ(h[1].itemNo, 1);
  EXPECT_EQ(h[1].attr, 2);
  EXPECT_EQ(tqtest::ReadFile(Data("notebook.idx.tag")), std::string(408, '\0'));

  ASSERT_EQ(Tool("notebook remove able zzz", &out), 0) << out;
  EXPECT_EQ(tqtest::ReadFile(Data("notebook.idx.lib")), std::string(1, '\0'));
  ASSERT_EQ(Tool("notebook list", &out), 0);
  EXPECT_NE(out.find("empty"), std::string::npos) << out;
  EXPECT_EQ(Tool("notebook show --png list.png", &out), 1) << out;
}

}  // namespace
