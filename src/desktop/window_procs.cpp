#include "desktop/window_procs.h"

#include <cstring>

namespace tq::desktop {
namespace {

// The front ends' windows by title, and the strip each is dragged by.
// Order matters: the listening window's contents window (row 9) holds the
// title of the listening window itself (row 10).
struct StripRow {
  const char* title;  // GBK
  int width;          // below 0: the client width less this much
  int height;         // 0: the whole height
};
const StripRow kStrips[] = {
    {"Dialog", -35, 30},
    {"\xd4\xc6\xbc\xe3\xb4\xca\xd4\xb7", 507, 21},                                // 云笺词苑
    {"\xc7\xe0\xd1\xe2\xbc\xc7\xb4\xca", 715, 60},                                // 青砚记词
    {"\xb3\xbf\xd6\xd3\xcb\xe6\xc9\xed\xb4\xca", 68, 0},                          // 晨钟随身词
    {"\xcb\xaa\xc7\xc5\xb5\xa5\xb4\xca\xcc\xd8\xd1\xb5", 400, 40},                // 霜桥单词特训
    {"\xc4\xab\xc1\xeb\xc6\xaa\xd5\xc2\xb2\xc9\xbc\xaf\xc6\xf7", 465, 40},        // 墨岭篇章采集器
    {"\xc4\xab\xc1\xeb\xcb\xd9\xc0\xc0\xce\xc4\xbf\xe2" "2", 900, 40},            // 墨岭速览文库2
    {"\xba\xd7\xd3\xb0\xcb\xd9\xb6\xc1\xd3\xaa", 850, 40},                        // 鹤影速读营
    {"\xd4\xb6\xb2\xa8\xb9\xe3\xb2\xa5\xcc\xfd\xd1\xa7-\xc4\xbf\xc2\xbc", 740, 70},  // 远波广播听学-目录
    {"\xd4\xb6\xb2\xa8\xb9\xe3\xb2\xa5\xcc\xfd\xd1\xa7", 686, 30},                // 远波广播听学
};

constexpr int kTitleBytes = 90;

struct EdgeSlot {
  std::mutex mutex;
  int window = 0;
  host::WindowProc former = nullptr;
};

EdgeSlot& TheEdgeSlot() {
  static EdgeSlot* slot = new EdgeSlot;  // lives until exit
  return *slot;
}

void ClientPoint(int window, intptr_t lparam, int* x, int* y) {
  // Both halves unsigned: a screen position left of or above the screen's
  // origin is far off to the right or below, and never in a strip.
  *x = static_cast<int>(lparam & 0xFFFF);
  *y = static_cast<int>((lparam >> 16) & 0xFFFF);
  host::ScreenToClient(window, x, y);
}

}  // namespace

bool DragStrip(const std::string& title, int clientWidth, int clientHeight, int* width, int* height) {
  for (const StripRow& row : kStrips) {
    if (title.find(row.title) == std::string::npos) continue;
    *width = row.width < 0 ? clientWidth + row.width : row.width;
    *height = row.height == 0 ? clientHeight : row.height;
    return true;
  }
  return false;
}

void HookTable::Push(int window, int wheelMode, host::WindowProc proc) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (count_ >= kCapacity) return;
    entries_[count_++] = {window, wheelMode, host::GetWindowProc(window)};
  }
  host::SetWindowProc(window, proc);
}

void HookTable::Pop(int window) {
  host::WindowProc former;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (count_ == 0) return;
    Entry& e = entries_[--count_];
    former = e.former;
    e.former = nullptr;
    e.wheel_mode = 0;
  }
  host::SetWindowProc(window, former);
}

bool HookTable::Find(int window, host::WindowProc* former, int* wheelMode) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (int i = 0; i < count_; ++i) {
    if (entries_[i].window != window) continue;
    if (former) *former = entries_[i].former;
    if (wheelMode) *wheelMode = entries_[i].wheel_mode;
    return true;
  }
  return false;
}

int HookTable::Count() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return count_;
}

HookTable& MovableWindows() {
  static HookTable* table = new HookTable;  // lives until exit
  return *table;
}

HookTable& WebControls() {
  static HookTable* table = new HookTable;  // lives until exit
  return *table;
}

void HookEdgeWindow(int window, bool on, host::WindowProc proc) {
  if (window == 0) return;
  EdgeSlot& slot = TheEdgeSlot();
  if (on) {
    {
      std::lock_guard<std::mutex> lock(slot.mutex);
      slot.window = window;
      slot.former = host::GetWindowProc(window);
    }
    host::SetWindowProc(window, proc);
    return;
  }
  host::WindowProc former;
  {
    std::lock_guard<std::mutex> lock(slot.mutex);
    former = slot.former;
    slot.former = nullptr;
  }
  host::SetWindowProc(window, former);
}

intptr_t MoveWindowMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  host::WindowProc former = nullptr;
  int wheel_mode = 0;
  if (!MovableWindows().Find(window, &former, &wheel_mode)) return 0;
  if (message == host::kNcHitTest) {
    int x, y;
    ClientPoint(window, lparam, &x, &y);
    char title[kTitleBytes + 1] = {};
    host::GetWindowTextA(window, title, kTitleBytes);
    int client_width = 0, client_height = 0, width = 0, height = 0;
    host::GetClientRect(window, &client_width, &client_height);
    if (DragStrip(title, client_width, client_height, &width, &height) && x < width && y < height) {
      return host::kHtCaption;
    }
  } else if (message == host::kMouseWheel && wheel_mode != 0) {
    auto delta = static_cast<int16_t>((wparam >> 16) & 0xFFFF);
    return host::CallWindowProc(former, window, host::kKeyDown, delta < 1 ? 123 : 122, 0);
  }
  return host::CallWindowProc(former, window, message, wparam, lparam);
}

intptr_t EdgeMoveWindowMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  if (message == host::kNcHitTest) {
    int x, y;
    ClientPoint(window, lparam, &x, &y);
    if (x < 65 || y < 8) return host::kHtCaption;
  }
  host::WindowProc former;
  {
    EdgeSlot& slot = TheEdgeSlot();
    std::lock_guard<std::mutex> lock(slot.mutex);
    former = slot.former;
  }
  return host::CallWindowProc(former, window, message, wparam, lparam);
}

intptr_t WebControlMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  host::WindowProc former = nullptr;
  if (!WebControls().Find(window, &former, nullptr)) return WebControls().Count();
  switch (message) {
    case host::kRButtonDown:
      message = host::kLButtonDown;
      break;
    case host::kKeyDown:
    case host::kKeyUp:
      if (wparam == 17) wparam = 67;  // Ctrl goes on as the letter C
      break;
    case host::kCommand:
      return 0;
    default:
      break;
  }
  return host::CallWindowProc(former, window, message, wparam, lparam);
}

}  // namespace tq::desktop
