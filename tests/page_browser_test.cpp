// The pages in a real browser: headless Chromium opens a word detail page
// and a printable quiz page, and a script in the page (tests/browser/
// page_check.js) reports what a front end's script would find there: the
// text decoded as GB2312, every section anchor, sound links that give back
// their sample sentences, images beside the page. Exam pages are answered
// there as a front end's script answers them. Skipped only where no
// Chromium can be found.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;
using tqtest::ReadFile;
using tqtest::WriteFile;

namespace {

std::string FindChromium() {
  const char* given = std::getenv("TQ_CHROMIUM");
  if (given != nullptr && *given != '\0') return given;
  std::string found;
  tqtest::Run("command -v chromium chromium-browser google-chrome google-chrome-stable", &found);
  return found.substr(0, found.find('\n'));
}

// Texts for the script as a JSON list, every UTF-8 byte percent-encoded so
// that they pass through the GBK page unharmed.
std::string Texts(const std::vector<std::string>& utf8) {
  std::string json = "[";
  char hex[4];
  for (const std::string& t : utf8) {
    json += json.size() > 1 ? ",\"" : "\"";
    for (unsigned char c : t) json += (std::snprintf(hex, sizeof hex, "%%%02X", c), hex);
    json += "\"";
  }
  return json + "]";
}

std::string PercentDecode(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    bool escape = s[i] == '%' && i + 2 < s.size();
    out += escape ? static_cast<char>(std::stoi(s.substr(i + 1, 2), nullptr, 16)) : s[i];
    if (escape) i += 2;
  }
  return out;
}

// The script's sound and save links, exam answers and filled boxes ("kind
// rest" lines); its charset, its failures and its end are checked as they
// are read.
struct Findings {
  std::vector<std::string> sounds, saves, choices, blanks;
};

class PageBrowserTest : public tqtest::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    chromium_ = FindChromium();
    if (chromium_.empty()) {
      GTEST_SKIP() << "Chromium not found (Debian package chromium, see scripts/packages.txt; or set "
                      "TQ_CHROMIUM): the pages were not checked in a browser";
    }
    // The pages' images beside them.
    ASSERT_EQ(tqtest::Run("cp '" + std::string(TQ_SOURCE_DIR) + "/data/html/'* .", nullptr), 0);
  }

  // Runs headless Chromium on a local page with a fresh profile, no network
  // and a time limit; its standard output.
  std::string Chromium(const std::string& what, const std::string& page) {
    std::string profile = Path("profile-" + std::to_string(runs_++));
    std::string cmd = "timeout -k 5 120 '" + chromium_ +
                      "' --headless --no-sandbox --disable-gpu --disable-background-networking --no-first-run"
                      " --disable-component-update --disable-sync --disable-extensions --disable-default-apps"
                      " --no-default-browser-check --disable-dev-shm-usage --user-data-dir='" + profile + "' " + what + " 'file://" +
                      Path(page) + "' 2>>'" + Path("chromium.log") + "'";
    std::string out;
    int status = tqtest::Run(cmd, &out);
    EXPECT_EQ(status, 0) << cmd << "\n" << ReadFile(Path("chromium.log"));
    return out;
  }

  // Opens a copy of the page with the checking script behind it, and reads
  // back what the script found.
  Findings Check(const std::string& page, const std::string& expect_json) {
    std::string copy = "check-" + page;
    WriteFile(copy, ReadFile(page) + "<script>window.TQ_EXPECT = " + expect_json + ";</script>\r\n<script>" +
                        ReadFile(std::string(TQ_SOURCE_DIR) + "/tests/browser/page_check.js") + "</script>\r\n");
    std::string dom = Chromium("--dump-dom", copy);
    Findings f;
    std::vector<std::string> fails;
    std::string charset;
    bool done = false;
    size_t at = dom.rfind("<pre id=\"tq-check\">");  // the script itself names it too
    EXPECT_NE(at, std::string::npos) << "the script left no findings:\n" << dom.substr(0, 2000);
    std::stringstream lines(at == std::string::npos ? "" : dom.substr(at, dom.find("</pre>", at) - at));
    for (std::string line; std::getline(lines, line);) {
      std::string kind = line.substr(0, line.find(' '));
      std::string rest = line.find(' ') == std::string::npos ? "" : line.substr(line.find(' ') + 1);
      if (kind == "fail") fails.push_back(rest);
      if (kind == "sound") f.sounds.push_back(PercentDecode(rest));
      if (kind == "save") f.saves.push_back(rest);
      if (kind == "choice") f.choices.push_back(PercentDecode(rest));
      if (kind == "blank") f.blanks.push_back(PercentDecode(rest));
      if (kind == "charset") charset = rest;
      done = done || kind == "done";
    }
    EXPECT_TRUE(done);
    EXPECT_EQ(charset, "GBK");
    EXPECT_EQ(fails, std::vector<std::string>());
    return f;
  }

  // A picture of the page, kept beside the build for a person to look at.
  void Screenshot(const std::string& page, const std::string& name, int height) {
    std::string folder = std::string(TQ_BINARY_DIR) + "/browser_check", shot = folder + "/" + name;
    ASSERT_EQ(tqtest::Run("mkdir -p '" + folder + "' && rm -f '" + shot + "'", nullptr), 0);
    Chromium("--hide-scrollbars --window-size=720," + std::to_string(height) + " --screenshot='" + shot + "'", page);
    EXPECT_EQ(ReadFile(shot).substr(0, 8), "\x89PNG\r\n\x1a\n");
  }

  std::string chromium_;
  int runs_ = 0;
};

TEST_F(PageBrowserTest, DetailPageRendersWithEveryAnchorAndSoundLink) {
  const std::vector<std::string> sentences = {"I go running every morning.", "Is the tap still \"running\"?",
                                              "Who is running the shop?"};
  std::vector<std::string> sections = {
      G(u8"[ 'rAniN ]\r\nn. 跑步, 赛跑\r\n  adj. 跑着的; 连续的\r\n"),
      "  the action of moving fast on foot\r\n  (of water) flowing\r\n",
      "*#" + sentences[0] + "\r\n--" + G(u8"我每天早上去跑步。") + "\r\n" + "*#" + sentences[1] + "\r\n--" +
          G(u8"水龙头还开着吗？") + "\r\n" + "**" + sentences[2] + "\r\n--" + G(u8"谁在经营这家店？") + "\r\n",
      G(u8"running water 自来水\r\nin the running 有获胜希望\r\nrunning ┄ out 1.用完\r\n"),
      "run, ran, run, running\r\n",
      G(u8"词根：run 跑\r\nrunner 跑步者\r\n"),
      G(u8"同义词：jogging, racing\r\n反义词：walking\r\n"),
  };
  uint32_t lengths[7];
  std::string text;
  for (int k = 0; k < 7; ++k) {
    lengths[k] = static_cast<uint32_t>(sections[k].size());
    text += sections[k];
  }
  vcCreateHtmlDetail(lengths, text.c_str(), "detail.htm", 1);

  Findings f = Check("detail.htm",
                     "{\"anchors\": [\"dtMean\", \"dtEMean\", \"dtSample\", \"dtPhrase\", \"dtVary\", \"dtRoot\", "
                     "\"dtSyno\"], \"texts\": " +
                         Texts({u8"跑步, 赛跑", u8"我每天早上去跑步。", u8"水龙头还开着吗？", u8"自来水",
                                u8"running ┄ out", u8"词根：run 跑", u8"反义词：walking"}) +
                         "}");
  // The front end turns a sound address back into its sentence with the
  // library's own vcRestoreUrlSentence.
  ASSERT_EQ(f.sounds.size(), 3u);
  for (size_t i = 0; i < f.sounds.size(); ++i) {
    std::string address = G(f.sounds[i]);
    EXPECT_EQ(address.substr(0, 2), i < 2 ? "ES" : "EN");
    ASSERT_EQ(address.back(), '$');
    std::string sentence = address.substr(2, address.size() - 3);
    vcRestoreUrlSentence(sentence.data());
    EXPECT_EQ(sentence, sentences[i]);
  }
  EXPECT_EQ(f.saves, (std::vector<std::string>{"A_S0", "A_S1", "A_N0"}));

  Screenshot("detail.htm", "detail.png", 1000);
}

TEST_F(PageBrowserTest, PrintablePageRendersWithoutTextBoxes) {
  auto Box = [](int n) {
    return "<input type=\"text\" id=\"Blk001-00" + std::to_string(n) + "\" size=\"12\" style=\"border: 1px solid #008000\">";
  };
  WriteFile("quiz.htm", "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\r\n"
                        "<title>" + G(u8"填空") + "</title>\r\n</head>\r\n<body>\r\n"
                        "<p>1. " + G(u8"他每天早上去") + " " + Box(1) + " (run)</p>\r\n"
                        "<p>2. The tap is still " + Box(2) + ", and he " + Box(3) + " the shop.</p>\r\n"
                        "</body>\r\n</html>\r\n");
  WriteFile("answers.txt", "running\r\nrunning\r\nruns\r\n");
  ASSERT_EQ(vcGenPrintableHtml("quiz.htm", "print.htm", "answers.txt", 1, 1), 1);

  Check("print.htm", "{\"noInputs\": true, \"texts\": " +
                         Texts({u8"他每天早上去 [1]_____________ (run)", u8"[3]_____________ the shop", u8"备选答案：",
                                u8"1) running", u8"2) runs"}) +
                         "}");
  Screenshot("print.htm", "printable.png", 300);
}

TEST_F(PageBrowserTest, ExamPageIsAnsweredThroughItsRadioGroups) {
  WriteFile("bank.txt", G(u8"$ 他每天 _______ 上学。\r\nA) go\r\nB) goes\r\nC) 走路去\r\nD) gone\r\n#C\r\n"
                          u8"$ Pick the second of five.\r\nA) one\r\nB) two\r\nC) three\r\nD) four\r\nE) five\r\n#B\r\n"
                          u8"$ Two options: the last.\r\nA) yes\r\nB) no\r\n#B\r\n"
                          u8"$ 第四题：借入\r\nA) lend\r\nB) borrow\r\nC) return\r\n#B\r\n"));
  ASSERT_EQ(vcChoiceQtFile_AddQtTextFile("bank.dat", "bank.txt", 1), 1);
  int f = vcChoiceQtFile_Open("bank.dat", "rb");
  ASSERT_EQ(vcChoiceQtFile_MakeHtml(f, "exam.htm", 1, 0, nullptr, nullptr, 1, 1), 4);  // all shuffled
  vcChoiceQtFile_Close(f);

  Findings found =
      Check("exam.htm", "{\"choices\": true, \"texts\": " + Texts({u8"他每天 _______ 上学。", u8"第四题：借入"}) + "}");
  // Each question, whatever its place and its options' order, was answered
  // with the option its record marks right.
  const std::string right[] = {u8"走路去", "two", "no", "borrow"};
  ASSERT_EQ(found.choices.size(), 4u);
  std::set<int> records;
  for (size_t i = 0; i < found.choices.size(); ++i) {
    std::istringstream in(found.choices[i]);
    int d = 0, n = -1;
    std::string letter, text;
    in >> d >> n >> letter >> std::ws;
    std::getline(in, text);
    EXPECT_EQ(d, static_cast<int>(i) + 1);
    ASSERT_TRUE(n >= 0 && n < 4) << found.choices[i];
    EXPECT_EQ(text, right[n]) << found.choices[i];
    records.insert(n);
  }
  EXPECT_EQ(records.size(), 4u);
  Screenshot("exam.htm", "exam.png", 900);
}

TEST_F(PageBrowserTest, FillBlankPageIsFilledThroughItsTextBoxes) {
  WriteFile("fill.txt", G(u8"He [goes] to school.\r\n这本书是[借]来的，[下周]还。\r\n[a] and [b]\r\nNo blanks here.\r\n"));
  ASSERT_EQ(vcFillBlankQtFile_AddQtTextFile("fill.dat", "fill.txt", 1), 1);
  int f = vcFillBlankQtFile_Open("fill.dat", "r+b");
  ASSERT_EQ(vcFillBlankQtFile_SetDegree(f, 2, 3), 1);
  ASSERT_EQ(vcFillBlankQtFile_MakeHtml(f, "fill.htm", 1, 0, 2, 0, nullptr, nullptr, 0), 3);  // degree 3 left out
  vcFillBlankQtFile_Close(f);

  Findings found =
      Check("fill.htm", "{\"blanks\": true, \"texts\": " + Texts({u8"这本书是", u8"来的，", u8"3. No blanks here."}) + "}");
  EXPECT_EQ(found.blanks, (std::vector<std::string>{"001-000 goes", u8"002-000 借", u8"002-001 下周"}));
  Screenshot("fill.htm", "fill.png", 300);
}

}  // namespace
