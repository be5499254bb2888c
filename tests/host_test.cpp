// What the logic code sends through the host seam arrives where a front end
// reads it.
#include <string>

#include "platform/host.h"
#include "test_util.h"
#include "tqhost.h"

namespace {

std::string g_seen;
int AnswerYes(const char* text, const char* title, unsigned type) {
  g_seen = std::string(title) + "|" + text + "|" + std::to_string(type);
  return tq::host::kIdYes;
}

TEST(HostSeam, MessagesReachHostObjects) {
  int w = tqHost_CreateWindow("", 10, 10);
  using namespace tq::host;
  EXPECT_EQ(SendMessage(w, kListAddString, 0, reinterpret_cast<intptr_t>("apple")), 0);
  EXPECT_EQ(SendMessage(w, kListAddString, 0, reinterpret_cast<intptr_t>("pear")), 1);
  char out[32];
  EXPECT_EQ(tqHost_GetListCount(w), 2);
  EXPECT_EQ(tqHost_GetListText(w, 1, out), 4);
  EXPECT_STREQ(out, "pear");
  SendMessage(w, kListResetContent, 0, 0);
  EXPECT_EQ(tqHost_GetListCount(w), 0);

  SendMessage(w, kProgressSetRange, 0, 5 | (300 << 16));
  SendMessage(w, kProgressSetPos, 42, 0);
  int low = 0, high = 0;
  tqHost_GetProgressRange(w, &low, &high);
  EXPECT_EQ(low, 5);
  EXPECT_EQ(high, 300);
  EXPECT_EQ(tqHost_GetProgressPos(w), 42);
  SendMessage(w, kProgressSetPos, 1000, 0);
  EXPECT_EQ(tqHost_GetProgressPos(w), 300);

  SetWindowText(w, "caption");
  EXPECT_EQ(tqHost_GetWindowText(w, out), 7);
  EXPECT_STREQ(out, "caption");

  // Window 0 is no window: nothing is sent, nothing breaks.
  EXPECT_EQ(SendMessage(0, kListAddString, 0, reinterpret_cast<intptr_t>("x")), 0);
  SetWindowText(0, "x");
  tqHost_DestroyWindow(w);
}

TEST(HostSeam, MessageBoxHandlerAndDefaults) {
  using namespace tq::host;
  // Without a handler: OK boxes answer OK, yes/no boxes answer No.
  EXPECT_EQ(MessageBox(0, "text", "title", kMbOk), kIdOk);
  EXPECT_EQ(MessageBox(0, "text", "title", kMbYesNo | 0x20), kIdNo);
  EXPECT_EQ(MessageBox(0, "text", "title", kMbYesNoCancel), kIdNo);
  tqHost_SetMessageBoxHandler(AnswerYes);
  EXPECT_EQ(MessageBox(0, "done?", "Learn", kMbYesNo), kIdYes);
  EXPECT_EQ(g_seen, "Learn|done?|4");
  tqHost_SetMessageBoxHandler(nullptr);
}

}  // namespace
