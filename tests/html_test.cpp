// Word detail pages and printable quiz pages at the boundary: the exact
// bytes the front ends' scripts and browser control depend on.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"

using namespace tqtest;
using namespace std::string_literals;

namespace {

const std::string kHead =
    "<head>\r\n"
    "<meta http-equiv=\"Content-Language\" content=\"zh-cn\">\r\n"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\r\n"
    "<meta name=\"GENERATOR\" content=\"Microsoft FrontPage 4.0\">\r\n"
    "<meta name=\"ProgId\" content=\"FrontPage.Editor.Document\">\r\n"
    "<STYLE type=text/css>\r\n"
    "BODY { \tFONT-SIZE: 14px; COLOR: #000000; LINE-HEIGHT: 20px; FONT-STYLE: normal; FONT-FAMILY: " +
    G(u8"宋体") +
    " }\r\n"
    "</STYLE>\r\n"
    "<title></title>\r\n"
    "</head>\r\n"
    "<body>\r\n";
const std::string kTail = "</body> </html>";

std::string Heading(const std::string& anchor, const std::string& image) {
  return "\r\n<a name=\"" + anchor + "\"></a><img border=\"0\" src=\"" + image + "\"> <br>\r\n";
}

// A sample's sound link (N: a net sample) ahead of its sentence, and a
// translation with its save link.
std::string Sound(const std::string& address, const std::string& shown, bool net = false) {
  return "<a href=\"" + address + "$\"><img border=\"0\" src=\"sound" + (net ? "5" : "6") +
         ".jpg\" width=\"15\" height=\"11\"></a>&nbsp;" + shown + "<br>\r\n";
}
std::string Saved(const std::string& text, const std::string& id) {
  return "&nbsp;&nbsp;&nbsp;" + text + "<a href=\"A_" + id +
         "\"><img border=\"0\" src=\"savesample.jpg\" width=\"11\" height=\"11\"></a>&nbsp;<br>\r\n";
}

class DetailPageTest : public tqtest::TempDirTest {
 protected:
  // The page for the given sections (index -> text, in index order); the
  // others are empty.
  std::string Page(const std::vector<std::pair<int, std::string>>& sections, int sound_flag = 1) {
    uint32_t lengths[7] = {0, 0, 0, 0, 0, 0, 0};
    std::string text;
    for (const auto& s : sections) {
      lengths[s.first] = static_cast<uint32_t>(s.second.size());
      text += s.second;
    }
    vcCreateHtmlDetail(lengths, text.c_str(), "page.htm", sound_flag);
    return ReadFile("page.htm");
  }
  // Only what the sections wrote: the page without head and tail.
  std::string Body(const std::vector<std::pair<int, std::string>>& sections, int sound_flag = 1) {
    std::string page = Page(sections, sound_flag);
    EXPECT_EQ(page.compare(0, kHead.size(), kHead), 0);
    EXPECT_GE(page.size(), kHead.size() + kTail.size());
    EXPECT_EQ(page.substr(page.size() - kTail.size()), kTail);
    return page.substr(kHead.size(), page.size() - kHead.size() - kTail.size());
  }
};

TEST_F(DetailPageTest, EmptyEntryIsHeadAndClosingTagsOnly) {
  EXPECT_EQ(Page({}), kHead + kTail);
  // An existing page is overwritten.
  WriteFile("page.htm", std::string(5000, 'x'));
  EXPECT_EQ(Page({}), kHead + kTail);
}

TEST_F(DetailPageTest, MeaningDropsPronunciationAndKeepsBlanks) {
  // A single line (the pronunciation) gives the heading and nothing more.
  for (const char* pron : {"[ 'r^nin ]\r\n", "[x]"}) EXPECT_EQ(Body({{0, pron}}), Heading("dtMean", "cy_title.jpg"));
  // All line ends behind the pronunciation go with it; later empty lines stay.
  EXPECT_EQ(Body({{0, "[x]\r\n\r\n" + G(u8"n. 跑") + "\r\n  " + G(u8"赛跑") + "\r\n\r\ntail"}}),
            Heading("dtMean", "cy_title.jpg") + G(u8"n. 跑") + "<br>\r\n&nbsp;&nbsp;" + G(u8"赛跑") +
                "<br>\r\n<br>\r\n");
  // The explanation keeps its first line.
  EXPECT_EQ(Body({{1, "[x]\n  the act\n"}}),
            Heading("dtEMean", "ys_title.jpg") + "[x]<br>\r\n&nbsp;&nbsp;the act<br>\r\n");
}

TEST_F(DetailPageTest, EachPairOfLineEndBytesIsOneLineEnd) {
  EXPECT_EQ(Body({{4, "a\r\nb\n\rc\r\rd\n\ne\r\n\r\nf\rg\nh"}}),
            Heading("dtVary", "bh_title.jpg") + "a<br>\r\nb<br>\r\nc<br>\r\nd<br>\r\ne<br>\r\n<br>\r\n"
                                                "f<br>\r\ng<br>\r\n");
}

TEST_F(DetailPageTest, EmptySectionsHaveNoHeadingAndOffsetsAddUp) {
  EXPECT_EQ(Body({{0, "[p]\r\nm\r\n"}, {4, "  runs\r\n"}, {6, "run\r\n\r\n"}}),
            Heading("dtMean", "cy_title.jpg") + "m<br>\r\n" + Heading("dtVary", "bh_title.jpg") +
                "runs<br>\r\n" + Heading("dtSyno", "xg_title.jpg") + "run<br>\r\n<br>\r\n");
}

TEST_F(DetailPageTest, SamplesCarrySoundAndSaveLinks) {
  std::string samples =
      "*#Is it \"fast\"?\r\n"
      "  --" + G(u8"快吗？") + "\r\n"
      "\r\n"
      "*#He runs.\r\n"
      "--" + G(u8"他跑。") + "\r\n"
      "**Who runs?\r\n"
      "--" + G(u8"谁跑？") + "\r\n"
      "*#Run!\r\n"
      "--" + G(u8"跑！") + "\r\n";
  std::string expected =
      Heading("dtSample", "lj_title.jpg") + Sound("ESIs it ~fast~#", "Is it \"fast\"?") + Saved(G(u8"快吗？"), "S0") +
      Sound("ESHe runs.", "He runs.") + Saved(G(u8"他跑。"), "S1") + Sound("ENWho runs#", "Who runs?", true) +
      Saved(G(u8"谁跑？"), "N0") + Sound("ESRun!", "Run!") +
      Saved(G(u8"跑！"), "N0");  // after a net sample every save link counts net samples
  EXPECT_EQ(Body({{2, samples}}), expected);

  // Without the sound flag a net sample shows a dot in place of its link.
  EXPECT_EQ(Body({{2, "**Go.\r\nxx" + G(u8"走。") + "\r\n"}}, 0),
            Heading("dtSample", "lj_title.jpg") + "&nbsp;.&nbsp;Go.<br>\r\n" + Saved(G(u8"走。"), "N0"));
  // A translation before any sample, and a line of a tag alone.
  EXPECT_EQ(Body({{2, "--t\r\n*#\r\n"}}),
            Heading("dtSample", "lj_title.jpg") + Saved("t", "S-1") + Sound("ES", ""));
}

TEST_F(DetailPageTest, PhrasesColourTheirEnglishHead) {
  const std::string icon = "<img border=\"0\" src=\"icon.bmp\" width=\"13\" height=\"11\"><font color=\"#800080\">";
  std::string phrases = "  run out " + G(u8"用完") + "\r\n" +                    // stops at Chinese
                        "run " + G(u8"┄") + " down " + G(u8"撞倒") + "\r\n" +    // dashes count as English
                        "run into 1.meet\r\n" +                                 // stops at "1."
                        "run (" + G(u8"口") + ") off\r\n" +                     // bracket opening Chinese
                        "run ( " + G(u8"口") + ")\r\n" +                        // ... two places behind
                        "run (a) b\r\n" +                                       // an English bracket stays
                        "\r\n";                                                 // an empty line writes nothing
  EXPECT_EQ(Body({{3, phrases}}),
            Heading("dtPhrase", "dy_title.jpg") + icon + "run out </font>" + G(u8"用完") + "<br>\r\n" + icon +
                "run " + G(u8"┄") + " down </font>" + G(u8"撞倒") + "<br>\r\n" + icon +
                "run into </font>1.meet<br>\r\n" + icon + "run </font>(" + G(u8"口") + ") off<br>\r\n" + icon +
                "run </font>( " + G(u8"口") + ")<br>\r\n" + icon + "run (a) b</font><br>\r\n");
}

TEST_F(DetailPageTest, RootHeadingsAndNulLineEnds) {
  std::string root = G(u8"词根：run") + "\r\n\r\n  running\0ran\r\n"s;
  EXPECT_EQ(Body({{5, root}}), Heading("dtRoot", "cg_title.jpg") + "<font color=\"#800000\">" + G(u8"词根：run") +
                                   "</font><br>\r\n&nbsp;running<br>\r\n&nbsp;ran<br>\r\n");
}

TEST_F(DetailPageTest, LongLinesAreCutWithoutSplittingACharacter) {
  // 1,998 ASCII bytes and then Chinese: the character at byte 1,998 would
  // not fit whole, so the line keeps 1,998 bytes.
  EXPECT_EQ(Body({{4, std::string(1998, 'a') + G(u8"中文") + std::string(3000, 'b') + "\r\nnext\r\n"}}),
            Heading("dtVary", "bh_title.jpg") + std::string(1998, 'a') + "<br>\r\nnext<br>\r\n");
  EXPECT_EQ(Body({{6, std::string(5000, 'w') + "\n"}}),
            Heading("dtSyno", "xg_title.jpg") + std::string(1999, 'w') + "<br>\r\n");
}

TEST_F(DetailPageTest, FailuresAreToldOnStandardOutput) {
  uint32_t lengths[7] = {0, 0, 0, 0, 0, 0, 0};
  // Closing a page on a full device fails when the last bytes go out.
  std::pair<const char*, const char*> cases[] = {{"no/such/folder/page.htm", "The file was not opened\n"},
                                                 {"/dev/full", "The file 'data' was not closed\n"}};
  for (const auto& c : cases) {
    testing::internal::CaptureStdout();
    vcCreateHtmlDetail(lengths, "", c.first, 1);
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), c.second) << c.first;
  }
}

class PrintablePageTest : public tqtest::TempDirTest {
 protected:
  std::string Box(int n) { return "<input type=\"text\" id=\"Blk001-00" + std::to_string(n) + "\" size=\"12\">"; }
  // The printable page made of quiz.htm, as written.
  std::string Print(const char* answers, int numbering, int list) {
    EXPECT_EQ(vcGenPrintableHtml("quiz.htm", "print.htm", answers, numbering, list), 1);
    return ReadFile("print.htm");
  }
};

TEST_F(PrintablePageTest, FillsBoxesWithTheirAnswers) {
  WriteFile("quiz.htm", "<html><body>\r\n1. He " + Box(1) + " fast and " + Box(2) + " far.\r\n" +
                            "2. " + Box(3) + " and <input type=\"text\" id=broken\r\n</body>\r\n<p>after</p>\r\n");
  WriteFile("ans.txt", "runs  \r\njumps\r\n");
  // The third box finds no answer left and repeats the last one; a box
  // without its ">" on the line is no box.
  EXPECT_EQ(Print("ans.txt", 0, 1),
            "<html><body>\r\n1. He <b><u>runs</u></b> fast and <b><u>jumps</u></b> far.\r\n"
            "2. <b><u>jumps</u></b> and <input type=\"text\" id=broken\r\n</body>\r\n</html>\r\n");
  // Without an answer file the boxes can only become blanks.
  EXPECT_EQ(Print(nullptr, 0, 0),
            "<html><body>\r\n1. He _____________ fast and _____________ far.\r\n"
            "2. _____________ and <input type=\"text\" id=broken\r\n</body>\r\n</html>\r\n");
}

TEST_F(PrintablePageTest, BlanksAreNumberedAndAnswersListed) {
  WriteFile("quiz.htm", "<body>\n" + Box(1) + Box(2) + "\n" + Box(3) + "\n</BODY> tail\n</html>\n");
  WriteFile("ans.txt", "A\nA\nB\nB");
  EXPECT_EQ(Print("ans.txt", 1, 1),
            "<body>\n[1]_____________[2]_____________\n[3]_____________\n"
            "\r\n<p>" + G(u8"备选答案：") + "</p>\r\n"
            "1) A\n&nbsp;&nbsp&nbsp;&nbsp;1) A\n&nbsp;&nbsp&nbsp;&nbsp;2) B\n&nbsp;&nbsp&nbsp;&nbsp;"
            // the last answer has no line end, so it differs from the one before
            "3) B&nbsp;&nbsp&nbsp;&nbsp;"
            "</body>\r\n</html>\r\n");
  // Unnumbered blanks; an answer file that cannot be opened gives no list.
  EXPECT_EQ(Print("missing.txt", 2, 0),
            "<body>\n_____________" "_____________\n_____________\n</body>\r\n</html>\r\n");
}

TEST_F(PrintablePageTest, OnlyALineOpeningWithTheBodyEndStopsTheCopy) {
  WriteFile("quiz.htm", "<body>\n<p>x</p></body>\n " + Box(1) + "\n");
  EXPECT_EQ(Print("none.txt", 1, 0), "<body>\n<p>x</p></body>\n _____________\n");
}

TEST_F(PrintablePageTest, RefusesWhatCannotBeOpened) {
  WriteFile("quiz.htm", "<body>\n</body>\n");
  EXPECT_EQ(vcGenPrintableHtml("missing.htm", "print.htm", nullptr, 1, 0), -1);
  EXPECT_EQ(vcGenPrintableHtml("quiz.htm", "no/such/dir/print.htm", nullptr, 1, 0), -1);
  EXPECT_EQ(vcGenPrintableHtml(nullptr, "print.htm", nullptr, 1, 0), -1);
}

TEST_F(PrintablePageTest, HostileInputNeitherOverrunsNorHangs) {
  // Lines far past the buffer arrive in pieces, a NUL ends what is copied
  // of a line, and long answers are cut where they fill a box.
  WriteFile("quiz.htm", "<body>" + std::string(20000, 'x') + Box(1) + std::string("\0zz\n", 4) + "</body>\n");
  WriteFile("ans.txt", std::string(500, 'a') + "\n");
  std::string out = Print("ans.txt", 0, 0);
  EXPECT_NE(out.find("<b><u>" + std::string(98, 'a') + "</u></b>"), std::string::npos);
  EXPECT_EQ(out.substr(out.size() - 18), "</body>\r\n</html>\r\n");
}

}  // namespace

// tqcomm page: a dictionary word's page with its images, through the
// exports as a front end would make it.
TEST_F(DetailPageTest, PageCommandWritesTheWordsPageWithItsImages) {
  // A plain source: the builder closes every line and tags the sample and
  // its translation, so that no line is lost on the page.
  WriteFile("src.txt", G(u8"run\trAn\tv. 跑\tto move fast\tRun!\\n跑！\t\t\t\t\n"));
  std::string out, tool = TQCOMM_BIN;
  ASSERT_EQ(tqtest::Run(tool + " dict build src.txt -o dict 2>&1", &out), 0) << out;
  ASSERT_EQ(tqtest::Run(tool + " page running -o pages --dict dict 2>&1", &out), 0) << out;
  EXPECT_NE(out.find("pages/run.htm"), std::string::npos) << out;
  // The tool heads the library's page with the word, its pronunciation in
  // IPA ("rAn" is /ræn/) and the form that led to it.
  const std::string tool_head =
      "<p id=\"tqHead\"><font size=\"5\"><b>run</b></font>&nbsp;&nbsp;<span id=\"tqPron\" style=\"font-family: "
      "'DejaVu Sans', 'Lucida Sans Unicode', 'Arial Unicode MS', sans-serif; font-size: 16px\">/r&#230;n/</span>"
      "<br>\r\n<font color=\"#808080\">running &rarr; run</font></p>\r\n";
  EXPECT_EQ(ReadFile("pages/run.htm"),
            kHead + tool_head + Heading("dtMean", "cy_title.jpg") + G(u8"v. 跑") + "<br>\r\n" +
                Heading("dtEMean", "ys_title.jpg") + "to move fast<br>\r\n" + Heading("dtSample", "lj_title.jpg") +
                Sound("ESRun!", "Run!") + Saved(G(u8"跑！"), "S0") + kTail);
  for (const char* image : {"cy_title.jpg", "sound6.jpg", "icon.bmp"}) {
    EXPECT_EQ(ReadFile(std::string("pages/") + image),
              ReadFile(std::string(TQ_SOURCE_DIR) + "/data/html/" + image)) << image;
  }
  EXPECT_EQ(tqtest::Run(tool + " page zzz -o pages --dict dict 2>&1", &out), 1);
  EXPECT_NE(out.find("zzz: not found"), std::string::npos) << out;
}
