// The library's window procedures on host windows: dragging strips, wheel
// keys, web controls, and the stack of hooked windows.
#include <string>
#include <vector>

#include "platform/host.h"
#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

using tqtest::G;
using namespace tq::host;

// Each window's own procedure before hooking: records what reaches it,
// tagged with a name, and leaves the work to the host's procedure.
std::vector<std::string> g_log;
TqWindowProc g_host_proc = nullptr;

intptr_t Record(const char* name, int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  if (message != kGetText) {
    g_log.push_back(std::string(name) + " " + std::to_string(message) + " " + std::to_string(wparam) + " " +
                    std::to_string(lparam));
  }
  return tqHost_CallWindowProc(g_host_proc, window, message, wparam, lparam);
}
intptr_t RecordA(int w, unsigned m, uintptr_t wp, intptr_t lp) { return Record("A", w, m, wp, lp); }
intptr_t RecordB(int w, unsigned m, uintptr_t wp, intptr_t lp) { return Record("B", w, m, wp, lp); }

int Window(const std::string& title, int width, int height, TqWindowProc own = RecordA) {
  int w = tqHost_CreateWindow(title.c_str(), width, height);
  g_host_proc = tqHost_SetWindowProc(w, own);
  return w;
}

intptr_t HitTest(int window, int screen_x, int screen_y) {
  intptr_t point = (screen_x & 0xFFFF) | (static_cast<intptr_t>(screen_y & 0xFFFF) << 16);
  return tqHost_SendMessage(window, kNcHitTest, 0, point);
}

// Whether the client point (x, y) of a window at screen (100, 50) drags it.
bool Drags(int window, int x, int y) { return HitTest(window, 100 + x, 50 + y) == kHtCaption; }

TEST(WindowProcs, TitlesGiveTheirStrips) {
  struct Row {
    std::string title;
    int width, height;  // the strip
  } rows[] = {
      {"Dialog", 300 - 35, 30},
      {"Options Dialog", 300 - 35, 30},  // the title holds the text
      {G("云笺词苑"), 507, 21},
      {G("青砚记词 - 今天"), 715, 60},
      {G("晨钟随身词"), 68, 400},  // the whole height of the window
      {G("霜桥单词特训"), 400, 40},
      {G("墨岭篇章采集器"), 465, 40},
      {G("墨岭速览文库2"), 900, 40},
      {G("鹤影速读营"), 850, 40},
      {G("远波广播听学-目录"), 740, 70},  // before the row it contains
      {G("远波广播听学"), 686, 30},
  };
  for (const Row& r : rows) {
    int w = Window(r.title, 300, 400);
    tqHost_SetWindowOrigin(w, 100, 50);
    vcSetMoveWindowProc(w, 1);
    EXPECT_TRUE(Drags(w, r.width - 1, r.height - 1)) << r.title;
    EXPECT_TRUE(Drags(w, 0, 0)) << r.title;
    EXPECT_FALSE(Drags(w, r.width, 0)) << r.title;
    EXPECT_FALSE(Drags(w, 0, r.height)) << r.title;
    vcSetMoveWindowProc(w, 0);
    tqHost_DestroyWindow(w);
  }
  // No strip: the message goes on to the window's own procedure.
  int plain = Window("Notes", 300, 400);
  vcSetMoveWindowProc(plain, 1);
  g_log.clear();
  EXPECT_EQ(HitTest(plain, 1, 1), 0);
  EXPECT_EQ(g_log, std::vector<std::string>{"A 132 0 65537"});
  // Screen positions are read unsigned: left of the screen is far right.
  int dialog = Window("Dialog", 300, 400);
  vcSetMoveWindowProc(dialog, 1);
  EXPECT_EQ(HitTest(dialog, 10, 10), kHtCaption);
  EXPECT_NE(HitTest(dialog, -5, 10), kHtCaption);
}

TEST(WindowProcs, TheWheelBecomesFunctionKeysWhenAsked) {
  int w = Window("Reader", 100, 100);
  vcSetMoveWindowProcEx(w, 1, 1);
  auto wheel = [&](int delta) {
    g_log.clear();
    tqHost_SendMessage(w, kMouseWheel, static_cast<uintptr_t>(static_cast<uint16_t>(delta)) << 16 | 8, 1234);
    return g_log;
  };
  EXPECT_EQ(wheel(120), std::vector<std::string>{"A 256 122 0"});   // away: F11
  EXPECT_EQ(wheel(-120), std::vector<std::string>{"A 256 123 0"});  // towards: F12
  EXPECT_EQ(wheel(0), std::vector<std::string>{"A 256 123 0"});
  vcSetMoveWindowProc(w, 0);
  vcSetMoveWindowProc(w, 1);  // wheel mode 0: the wheel goes on as it is
  EXPECT_EQ(wheel(120), std::vector<std::string>{"A 522 7864328 1234"});
  // The library's own messages still reach the list box behind the hook.
  SendMessage(w, kListAddString, 0, reinterpret_cast<intptr_t>("word"));
  EXPECT_EQ(tqHost_GetListCount(w), 1);
  // A window not in the table gets 0 from the procedure itself.
  EXPECT_EQ(MoveWindowProc(w + 1000, kNcHitTest, 0, 0), 0);
}

TEST(WindowProcs, UnhookingPopsTheLastEntryWhateverItsWindow) {
  int a = Window("a", 10, 10, RecordA);
  int b = Window("b", 10, 10, RecordB);
  auto owner = [](int window) {
    g_log.clear();
    tqHost_SendMessage(window, 0x8000, 0, 0);
    return g_log.empty() ? std::string("none") : g_log[0].substr(0, 1);
  };
  // Reversed: each window gets its own procedure back.
  vcSetMoveWindowProc(a, 1);
  vcSetMoveWindowProc(b, 1);
  vcSetMoveWindowProc(b, 0);
  vcSetMoveWindowProc(a, 0);
  EXPECT_EQ(owner(a) + owner(b), "AB");
  // In the order of hooking: each gets the other's.
  vcSetMoveWindowProc(a, 1);
  vcSetMoveWindowProc(b, 1);
  vcSetMoveWindowProc(a, 0);
  vcSetMoveWindowProc(b, 0);
  EXPECT_EQ(owner(a) + owner(b), "BA");
  // Window 0 is ignored, and an empty table pops nothing.
  vcSetMoveWindowProc(0, 1);
  vcSetMoveWindowProc(a, 0);
  EXPECT_EQ(owner(a), "B");
}

TEST(WindowProcs, TheEdgeWindowDragsByItsLeftAndTopEdges) {
  int w = Window("any title", 300, 200);
  tqHost_SetWindowOrigin(w, 100, 50);
  vcSetMoveWindowProcForTamrill(w, 1);
  EXPECT_TRUE(Drags(w, 64, 150));
  EXPECT_TRUE(Drags(w, 200, 7));
  g_log.clear();
  EXPECT_FALSE(Drags(w, 65, 8));
  EXPECT_EQ(g_log.size(), 1u);  // passed on
  vcSetMoveWindowProcForTamrill(w, 0);
  EXPECT_FALSE(Drags(w, 0, 0));
}

TEST(WindowProcs, WebControlsSeeRightAsLeftAndCtrlAsC) {
  int w = Window("browser", 100, 100);
  vcSetWebCtrlWndProc(w, 1);
  struct {
    unsigned message;
    uintptr_t wparam;
    const char* seen;  // what the control's own procedure gets, "" for nothing
  } cases[] = {
      {kRButtonDown, 2, "A 513 2 99"},
      {kLButtonDown, 1, "A 513 1 99"},
      {kKeyDown, 17, "A 256 67 99"},
      {kKeyUp, 17, "A 257 67 99"},
      {kKeyDown, 65, "A 256 65 99"},
      {kCommand, 5, ""},
  };
  for (auto c : cases) {
    g_log.clear();
    intptr_t answer = tqHost_SendMessage(w, c.message, c.wparam, 99);
    EXPECT_EQ(g_log.empty() ? "" : g_log[0], c.seen) << c.message;
    if (c.message == kCommand) {
      EXPECT_EQ(answer, 0);
    }
  }
  // A window not in the table gets the number of entries.
  int other = Window("other", 10, 10);
  vcSetWebCtrlWndProc(other, 1);
  EXPECT_EQ(WebCtrlProc(other + 1000, kKeyDown, 17, 0), 2);
  vcSetWebCtrlWndProc(other, 0);
  vcSetWebCtrlWndProc(w, 0);
  EXPECT_EQ(WebCtrlProc(w, kKeyDown, 17, 0), 0);  // empty table
  g_log.clear();
  tqHost_SendMessage(w, kRButtonDown, 0, 0);
  EXPECT_EQ(g_log, std::vector<std::string>{"A 516 0 0"});  // unhooked
}

}  // namespace
