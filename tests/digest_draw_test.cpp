// Digests drawn into host surfaces, read back from the surface's journal
// and its pixels.
#include <string>
#include <vector>

#include "platform/surface.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

using namespace tqtest;

namespace {

constexpr unsigned kWhite = 0xFFFFFF, kBlack = 0x000000;

class DigestDrawing : public TempDirTest {
 protected:
  void TearDown() override {
    for (int dc : dcs_) tqHost_DeleteDC(dc);
    TempDirTest::TearDown();
  }
  int Surface(int width, int height) {
    dcs_.push_back(tqHost_CreateDC(width, height));
    return dcs_.back();
  }
  static std::string Journal(int dc) {
    std::string log(static_cast<size_t>(tqHost_GetDrawLog(dc, nullptr, 0)) + 1, '\0');
    log.resize(static_cast<size_t>(tqHost_GetDrawLog(dc, log.data(), static_cast<int>(log.size()))));
    return log;
  }
  // The rows of column x that are black, as "top-bottom" runs.
  static std::string BlackRuns(int dc, int x, int height) {
    std::string runs;
    for (int y = 0; y < height; ++y) {
      if (tqHost_GetPixel(dc, x, y) != kBlack) continue;
      int end = y;
      while (end + 1 < height && tqHost_GetPixel(dc, x, end + 1) == kBlack) ++end;
      runs += (runs.empty() ? "" : " ") + std::to_string(y) + "-" + std::to_string(end);
      y = end;
    }
    return runs;
  }

 private:
  std::vector<int> dcs_;
};

TEST_F(DigestDrawing, ColumnsStandForPointsAndTheirMeans) {
  // Half height 50: 128 -> 50, 64 -> 25, 0 -> 0, 32 -> 12. Five points fit
  // in ten columns but the file ends after four: columns 8 and 9 stay blank,
  // and column 7 takes the mean of 12 and the point that was never read.
  WriteFile("four.dig", std::string{'\x80', '\x40', '\x00', '\x20'});
  const int dc = Surface(10, 100);
  vcDrawDigestFile("four.dig", dc, 100, 10, 20);
  EXPECT_EQ(Journal(dc),
            "MoveTo 0 50\nLineTo 10 50\n"
            "MoveTo 0 0\nLineTo 0 101\n"     // 50
            "MoveTo 1 13\nLineTo 1 88\n"     // (50 + 25) / 2 = 37
            "MoveTo 2 25\nLineTo 2 76\n"     // 25
            "MoveTo 3 38\nLineTo 3 63\n"     // (25 + 0) / 2 = 12
            "MoveTo 5 44\nLineTo 5 57\n"     // (0 + 12) / 2 = 6
            "MoveTo 6 38\nLineTo 6 63\n"     // 12
            "MoveTo 7 44\nLineTo 7 57\n");   // (12 + 0) / 2 = 6
  // The end point is left out: 2v + 1 pixels about the middle.
  EXPECT_EQ(BlackRuns(dc, 0, 100), "0-99");
  EXPECT_EQ(BlackRuns(dc, 2, 100), "25-75");
  EXPECT_EQ(BlackRuns(dc, 5, 100), "44-56");
  for (int x : {4, 8, 9}) EXPECT_EQ(BlackRuns(dc, x, 100), "50-50") << x;
  // The other name, and a reader from the start one block a point, draw
  // the same.
  const int other = Surface(10, 100), by_reader = Surface(10, 100);
  vcDrawWaveDigestFile("four.dig", other, 100, 10, 20);
  const int reader = vcDigestFile_Open("four.dig");
  vcDigestFile_Draw(reader, by_reader, 100, 10, 0, 1, 20);
  EXPECT_EQ(Journal(other), Journal(dc));
  EXPECT_EQ(Journal(by_reader), Journal(dc));
}

TEST_F(DigestDrawing, ReaderSeeksToTheStartAndAveragesBlocks) {
  // From 25 ms in blocks of 10 ms: byte 2. Points of two blocks: (10 + 20)
  // / 2 = 15 and (30 + 41) / 2 = 35, on a half height of 64.
  WriteFile("ramp.dig", std::string{'\x7f', '\x7f', '\x0a', '\x14', '\x1e', '\x29'});
  const int reader = vcDigestFile_Open("ramp.dig");
  ASSERT_EQ(reader, 1);
  const int dc = Surface(4, 128);
  vcDigestFile_Draw(reader, dc, 128, 4, 25, 2, 10);
  const std::string picture =
      "MoveTo 0 64\nLineTo 4 64\n"
      "MoveTo 0 57\nLineTo 0 72\n"   // 15 x 64 / 128 = 7
      "MoveTo 1 52\nLineTo 1 77\n"   // (7 + 17) / 2 = 12
      "MoveTo 2 47\nLineTo 2 82\n"   // 35 x 64 / 128 = 17
      "MoveTo 3 56\nLineTo 3 73\n";  // (17 + 0) / 2 = 8
  EXPECT_EQ(Journal(dc), picture);
  // The reader seeks anew for every picture, after the end of the file too.
  tqHost_ClearDrawLog(dc);
  vcDigestFile_Draw(reader, dc, 128, 4, 25, 2, 10);
  EXPECT_EQ(Journal(dc), picture);
  // A point cut short by the end of the file is not drawn: (127 + 127 +
  // 10 + 20) / 4 = 71 -> 35, and the next point never ends. From beyond
  // the end there is the centre line alone.
  tqHost_ClearDrawLog(dc);
  vcDigestFile_Draw(reader, dc, 128, 4, 0, 4, 10);
  EXPECT_EQ(Journal(dc), "MoveTo 0 64\nLineTo 4 64\nMoveTo 0 29\nLineTo 0 100\nMoveTo 1 47\nLineTo 1 82\n");
  tqHost_ClearDrawLog(dc);
  vcDigestFile_Draw(reader, dc, 128, 4, 70, 1, 10);
  EXPECT_EQ(Journal(dc), "MoveTo 0 64\nLineTo 4 64\n");
  vcDigestFile_Close(reader);
}

TEST_F(DigestDrawing, AtMost2050Columns) {
  WriteFile("long.dig", std::string(3000, '\x40'));
  const int dc = Surface(3000, 40);
  vcDrawWaveDigestFile("long.dig", dc, 40, 3000, 10);
  const std::string journal = Journal(dc);
  EXPECT_NE(journal.find("MoveTo 2049 15\nLineTo 2049 26\n"), std::string::npos);
  EXPECT_EQ(journal.find("MoveTo 2050 "), std::string::npos);
  EXPECT_EQ(BlackRuns(dc, 2049, 40), "15-25");
  EXPECT_EQ(BlackRuns(dc, 2050, 40), "20-20");
  EXPECT_EQ(tqHost_GetPixel(dc, 2999, 20), kBlack);  // the centre line goes on
}

TEST_F(DigestDrawing, TheCallersPenDraws) {
  WriteFile("one.dig", std::string(3, '\x80'));
  const int dc = Surface(6, 20);
  const int red = tq::gdi::CreatePen(tq::gdi::kPsSolid, 1, tq::gdi::Rgb(255, 0, 0));
  tq::gdi::SelectObject(dc, red);
  tqHost_ClearDrawLog(dc);
  vcDrawDigestFile("one.dig", dc, 20, 6, 10);
  EXPECT_EQ(Journal(dc).find("Pen"), std::string::npos);
  EXPECT_EQ(tqHost_GetPixel(dc, 0, 0), 0x0000FFu);
  EXPECT_EQ(tqHost_GetPixel(dc, 5, 10), 0x0000FFu);
  tqHost_DeleteObject(red);
}

TEST_F(DigestDrawing, NothingIsDrawnForWhatCannotBeDrawn) {
  WriteFile("x.dig", std::string(10, '\x40'));
  const int dc = Surface(20, 20);
  const int reader = vcDigestFile_Open("x.dig");
  vcDrawDigestFile("missing.dig", dc, 20, 20, 10);
  vcDrawDigestFile(nullptr, dc, 20, 20, 10);
  vcDrawDigestFile("x.dig", dc, 20, 20, 0);             // no block length
  vcDigestFile_Draw(reader, dc, 20, 20, 0, 0, 10);      // no blocks a point
  vcDigestFile_Draw(reader, dc, 20, 20, 0, -3, 10);
  vcDigestFile_Draw(reader, dc, 20, 20, -20, 1, 10);    // before the file
  vcDigestFile_Draw(reader, dc, 20, 20, 0, 1, -10);
  vcDigestFile_Draw(reader + 1, dc, 20, 20, 0, 1, 10);  // an empty slot
  vcDigestFile_Draw(0, dc, 20, 20, 0, 1, 10);
  vcDigestFile_Draw(10, dc, 20, 20, 0, 1, 10);
  vcDigestFile_Close(reader);
  vcDigestFile_Draw(reader, dc, 20, 20, 0, 1, 10);      // closed
  EXPECT_EQ(Journal(dc), "");
  for (int x = 0; x < 20; ++x) EXPECT_EQ(tqHost_GetPixel(dc, x, 10), kWhite) << x;
  // Hostile sizes: the ends of a line stop at the limits of 32 bits.
  WriteFile("max.dig", "\xff");
  tqHost_ClearDrawLog(dc);
  vcDrawDigestFile("max.dig", dc, 2147483647, 2, 1);
  EXPECT_EQ(Journal(dc), "MoveTo 0 1073741823\nLineTo 2 1073741823\nMoveTo 0 -1065353215\nLineTo 0 2147483647\n"
                         "MoveTo 1 4194304\nLineTo 1 2143289343\n");
  EXPECT_EQ(BlackRuns(dc, 0, 20), "0-19");
}

TEST_F(DigestDrawing, NineReadersAtOnce) {
  WriteFile("a.dig", "abc");
  std::vector<int> handles;
  for (int i = 0; i < 9; ++i) handles.push_back(vcDigestFile_Open("a.dig"));
  EXPECT_EQ(handles, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(vcDigestFile_Open("a.dig"), -1);
  vcDigestFile_Close(4);
  EXPECT_EQ(vcDigestFile_Open("missing.dig"), -1);
  EXPECT_EQ(vcDigestFile_Open(nullptr), -1);
  EXPECT_EQ(vcDigestFile_Open("a.dig"), 4);
  for (int h : handles) vcDigestFile_Close(h);
  EXPECT_EQ(vcDigestFile_Open("a.dig"), 1);
}

}  // namespace
