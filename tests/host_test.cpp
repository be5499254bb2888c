// What the logic code sends through the host seam arrives where a front end
// reads it.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/devices.h"
#include "platform/env.h"
#include "platform/host.h"
#include "platform/system.h"
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

// ---- Window procedures and the message queue ----

std::vector<std::string> g_seen_messages;
TqWindowProc g_former = nullptr;

// Records what reaches the window and passes it on; answers its own text for
// WM_GETTEXT, as a control that shows something else would.
intptr_t Recorder(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  g_seen_messages.push_back(std::to_string(message));
  if (message == tq::host::kGetText) {
    const char mine[] = "subclassed";
    std::strncpy(reinterpret_cast<char*>(lparam), mine, wparam);
    return static_cast<intptr_t>(std::strlen(mine));
  }
  return tqHost_CallWindowProc(g_former, window, message, wparam, lparam);
}

TEST(HostWindows, EveryMessageGoesThroughTheCurrentProcedure) {
  using namespace tq::host;
  int w = tqHost_CreateWindow("list", 100, 100);
  g_former = tqHost_SetWindowProc(w, Recorder);
  ASSERT_NE(g_former, nullptr);
  EXPECT_EQ(GetWindowProc(w), reinterpret_cast<WindowProc>(Recorder));
  // The library's own messages to a list box and a progress bar, and a front
  // end's, all reach the procedure and still work through the former one.
  EXPECT_EQ(SendMessage(w, kListAddString, 0, reinterpret_cast<intptr_t>("apple")), 0);
  EXPECT_EQ(tqHost_SendMessage(w, kProgressSetPos, 40, 0), 0);
  EXPECT_EQ(g_seen_messages, (std::vector<std::string>{"384", "1026"}));
  EXPECT_EQ(tqHost_GetListCount(w), 1);
  EXPECT_EQ(tqHost_GetProgressPos(w), 40);
  // The window's text as the library asks for it comes from the procedure.
  char title[32];
  EXPECT_EQ(GetWindowTextA(w, title, sizeof title), 10);
  EXPECT_STREQ(title, "subclassed");
  EXPECT_EQ(GetWindowTextA(w, title, 4), 3);  // at most size - 1 bytes and a NUL
  EXPECT_STREQ(title, "sub");
  // Putting the former procedure back answers the one taken out.
  EXPECT_EQ(tqHost_SetWindowProc(w, g_former), reinterpret_cast<TqWindowProc>(Recorder));
  EXPECT_EQ(GetWindowTextA(w, title, sizeof title), 4);
  EXPECT_STREQ(title, "list");
  // No window: nothing installed, nothing called.
  EXPECT_EQ(tqHost_SetWindowProc(w + 1000, Recorder), nullptr);
  EXPECT_EQ(tqHost_SendMessage(w + 1000, kListGetCount, 0, 0), 0);
  EXPECT_EQ(tqHost_SetWindowProc(w, nullptr), nullptr);
  EXPECT_EQ(tqHost_CallWindowProc(nullptr, w, kListGetCount, 0, 0), 0);
  EXPECT_EQ(GetWindowTextA(w + 1000, title, sizeof title), 0);
  EXPECT_STREQ(title, "");
  tqHost_DestroyWindow(w);
}

TEST(HostWindows, PostedMessagesWaitForDoEventsOneAtATime) {
  using namespace tq::host;
  int w = tqHost_CreateWindow("queue", 10, 10);
  g_former = tqHost_SetWindowProc(w, Recorder);
  EXPECT_EQ(DispatchOneMessage(), 0);
  EXPECT_EQ(tqHost_PostMessage(w, kListAddString, 0, reinterpret_cast<intptr_t>("one")), 1);
  EXPECT_EQ(tqHost_PostMessage(w, kProgressSetPos, 7, 0), 1);
  EXPECT_EQ(tqHost_PostMessage(w + 1000, kProgressSetPos, 7, 0), 0);
  EXPECT_TRUE(g_seen_messages.empty());  // nothing happens before DoEvents
  // A message posted from another thread waits on the queue of the window's
  // thread.
  std::thread([w] { tqHost_PostMessage(w, kProgressSetPos, 9, 0); }).join();
  EXPECT_EQ(DispatchOneMessage(), 1);
  EXPECT_EQ(g_seen_messages, (std::vector<std::string>{"384"}));
  EXPECT_EQ(DispatchOneMessage(), 1);
  EXPECT_EQ(tqHost_GetProgressPos(w), 7);
  int from_worker = -1;
  std::thread([&] { from_worker = DispatchOneMessage(); }).join();
  EXPECT_EQ(from_worker, 0);  // not that thread's queue
  EXPECT_EQ(DispatchOneMessage(), 1);
  EXPECT_EQ(tqHost_GetProgressPos(w), 9);
  EXPECT_EQ(DispatchOneMessage(), 0);
  EXPECT_EQ(tqHost_GetListCount(w), 1);
  tqHost_DestroyWindow(w);
}

std::atomic<int> g_bar{0};
std::atomic<bool> g_worker_done{false};

// While this procedure runs, a worker thread uses the host: sends to a
// progress bar, draws, makes windows. It would hang if the host held a lock
// across the call.
intptr_t WaitsForAWorker(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  if (message != 0x8001) return 0;
  std::thread worker([] {
    for (int i = 1; i <= 10; ++i) tqHost_SendMessage(g_bar, tq::host::kProgressSetPos, i * 10, 0);
    int dc = tqHost_CreateDC(4, 4);
    tqHost_FillRect(dc, 0, 0, 2, 2, 0);
    tqHost_DestroyWindow(tqHost_CreateWindow("x", 1, 1));
    tqHost_DeleteDC(dc);
    g_worker_done = true;
  });
  for (int i = 0; i < 500 && !g_worker_done; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  worker.detach();
  return g_worker_done ? 1 : 0;
}

int BoxMakesAWindow(const char*, const char*, unsigned) {
  int w = tqHost_CreateWindow("from the box", 1, 1);
  tqHost_DestroyWindow(w);
  return w > 0 ? tq::host::kIdYes : tq::host::kIdNo;
}

TEST(HostWindows, NoHostLockIsHeldWhileCallerCodeRuns) {
  int w = tqHost_CreateWindow("busy", 10, 10);
  g_bar = tqHost_CreateWindow("bar", 10, 10);
  tqHost_SetWindowProc(w, WaitsForAWorker);
  EXPECT_EQ(tqHost_SendMessage(w, 0x8001, 0, 0), 1);
  EXPECT_EQ(tqHost_GetProgressPos(g_bar), 100);
  tqHost_PostMessage(w, 0x8001, 0, 0);
  g_worker_done = false;
  EXPECT_EQ(tq::host::DispatchOneMessage(), 1);
  EXPECT_TRUE(g_worker_done);
  tqHost_SetMessageBoxHandler(BoxMakesAWindow);
  EXPECT_EQ(tq::host::MessageBox(0, "?", "", tq::host::kMbYesNo), tq::host::kIdYes);
  tqHost_SetMessageBoxHandler(nullptr);
}

TEST(HostWindows, TitlesPositionsKeysAndTheCursor) {
  using namespace tq::host;
  int a = tqHost_CreateWindow(tqtest::G("远波广播听学").c_str(), 300, 200);
  int b = tqHost_CreateWindow("Dialog", 300, 200);
  EXPECT_EQ(FindWindowA(tqtest::G("远波广播听学").c_str()), a);
  EXPECT_EQ(FindWindowA("Dialog"), b);
  EXPECT_EQ(FindWindowA("Dialo"), 0);  // exact titles only
  EXPECT_EQ(FindWindowA(nullptr), 0);
  int width = 0, height = 0;
  EXPECT_TRUE(GetClientRect(b, &width, &height));
  EXPECT_EQ(width * 1000 + height, 300200);
  EXPECT_FALSE(GetClientRect(b + 1000, &width, &height));

  tqHost_SetWindowOrigin(b, 100, -20);
  tq::gdi::Point p{130, 0};
  ScreenToClient(b, &p);
  EXPECT_EQ(p.x, 30);
  EXPECT_EQ(p.y, 20);
  int x = 5, y = 5;
  ScreenToClient(a, &x, &y);  // origin 0, 0 by default
  EXPECT_EQ(x + y, 10);

  for (int key : {17, 18}) {
    EXPECT_EQ(GetKeyState(key), 0);
    tqHost_SetKeyState(key, 1);
    EXPECT_LT(GetKeyState(key), 0);
    tqHost_SetKeyState(key, 0);
    EXPECT_EQ(GetKeyState(key), 0);
  }
  tqHost_SetKeyState(300, 1);  // no such key: ignored
  EXPECT_EQ(GetKeyState(300), 0);
  EXPECT_EQ(GetKeyState(-1), 0);

  tqHost_SetCursorPos(-12, 3456);
  EXPECT_TRUE(GetCursorPos(&x, &y));
  EXPECT_EQ(x, -12);
  EXPECT_EQ(y, 3456);
  tqHost_DestroyWindow(a);
  tqHost_DestroyWindow(b);
}

// ---- Sound, drives, folders, version ----

std::string g_played;
int RecordPlay(const char* path, unsigned flags) {
  g_played = std::string(path ? path : "(stop)") + "|" + std::to_string(flags);
  return 1;
}

TEST(HostDevices, SoundGoesToThePlayerTheFrontEndSets) {
  using namespace tq::host;
  tqHost_SetAudioDeviceCount(3);
  EXPECT_EQ(WaveOutDeviceCount(), 3);
  tqHost_SetAudioDeviceCount(0);
  EXPECT_EQ(WaveOutDeviceCount(), 0);
  EXPECT_EQ(PlaySoundFile("ding.wav", kSndAsync), 0);  // no device, no player
  tqHost_SetSoundPlayer(RecordPlay);
  EXPECT_EQ(PlaySoundFile("c:\\snd\\ding.wav", kSndAsync | kSndNoDefault), 1);
  EXPECT_EQ(g_played, "c:\\snd\\ding.wav|3");
  tqHost_SetSoundPlayer(nullptr);
  tqHost_SetAudioDeviceCount(-1);  // back to the machine's
  EXPECT_GE(WaveOutDeviceCount(), 0);
}

class HostDrives : public tqtest::TempDirTest {};

TEST_F(HostDrives, DeclaredCdDrivesHoldTheirFolders) {
  using namespace tq::host;
  ASSERT_EQ(std::system(("mkdir -p " + Path("disc/sndlib")).c_str()), 0);
  tqtest::WriteFile(Path("disc/sndlib/x.dat"), "sound");
  tqHost_SetCdDrive('e', Path("disc").c_str());
  for (auto [letter, type] : {std::pair<char, int>{'C', 3}, {'c', 3}, {'E', 5}, {'e', 5}, {'Q', 1}, {'?', 1}}) {
    EXPECT_EQ(GetDriveTypeA(letter), type) << letter;
  }

  EXPECT_EQ(tq::env::NativePath("E:\\sndlib\\x.dat"), Path("disc") + "/sndlib/x.dat");
  EXPECT_EQ(tq::env::NativePath("e:sndlib\\x.dat"), Path("disc") + "/sndlib/x.dat");
  EXPECT_EQ(tq::env::NativePath("c:\\tmp\\x"), "/tmp/x");
  EXPECT_EQ(tq::env::NativePath("q:\\tmp\\x"), "/tmp/x");
  std::FILE* f = tq::env::Open("E:\\sndlib\\x.dat", "rb");
  ASSERT_NE(f, nullptr);
  char buf[8] = {};
  EXPECT_EQ(std::fread(buf, 1, sizeof buf, f), 5u);
  std::fclose(f);

  // A folder with a trailing separator joins without a doubled one; a null
  // folder takes the drive away.
  tqHost_SetCdDrive('F', (Path("disc") + "/").c_str());
  EXPECT_EQ(tq::env::NativePath("F:\\sndlib"), Path("disc") + "/sndlib");
  tqHost_SetCdDrive('E', nullptr);
  EXPECT_EQ(GetDriveTypeA('E'), 1);
  EXPECT_EQ(tq::env::NativePath("E:\\sndlib\\x.dat"), "/sndlib/x.dat");
}

class HostFolders : public tqtest::TempDirTest {};

TEST_F(HostFolders, WindowsSystemAndSpecialFoldersAreMadeWhereTold) {
  using namespace tq::host;
  setenv("XDG_DATA_HOME", Path("data").c_str(), 1);
  setenv("XDG_DESKTOP_DIR", (Path("desk") + "/").c_str(), 1);
  unsetenv("TQCOMM_WINDOWS");
  EXPECT_EQ(WindowsFolder(), Path("data/tqcomm/windows"));
  EXPECT_EQ(SystemFolder(), Path("data/tqcomm/windows/system32"));
  EXPECT_TRUE(tq::env::IsDirectory(Path("data/tqcomm/windows/system32").c_str()));
  setenv("TQCOMM_WINDOWS", Path("win").c_str(), 1);
  EXPECT_EQ(SystemFolder(), Path("win/system32"));
  EXPECT_TRUE(tq::env::IsDirectory(Path("win/system32").c_str()));

  EXPECT_EQ(SpecialFolder(kCsidlDesktop), Path("desk"));
  EXPECT_EQ(SpecialFolder(kCsidlPrograms), Path("data/applications"));
  EXPECT_EQ(SpecialFolder(kCsidlStartMenu), Path("data/applications"));
  EXPECT_TRUE(tq::env::IsDirectory(Path("desk").c_str()));
  EXPECT_EQ(SpecialFolder(5), "");

  unsetenv("XDG_DATA_HOME");
  unsetenv("XDG_DESKTOP_DIR");
  unsetenv("TQCOMM_WINDOWS");
  setenv("HOME", Path("home").c_str(), 1);
  EXPECT_EQ(WindowsFolder(), Path("home/.local/share/tqcomm/windows"));
  EXPECT_EQ(SpecialFolder(kCsidlDesktop), Path("home/Desktop"));
}

TEST(HostSystem, VersionIsXpUnlessTold) {
  int platform = 0, major = 0, minor = 0;
  tq::host::GetVersionExA(&platform, &major, &minor);
  EXPECT_EQ(platform * 100 + major * 10 + minor, 251);
  tqHost_SetVersion(1, 4, 10);
  tq::host::GetVersionExA(&platform, &major, &minor);
  EXPECT_EQ(platform * 100 + major * 10 + minor, 1 * 100 + 40 + 10);
}

}  // namespace
