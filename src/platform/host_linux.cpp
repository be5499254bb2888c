// Host windows: their text, list and progress bar, their procedures, and the
// message queues of the threads that made them.
//
// The host lock guards the table and is held only to read or change it:
// procedures, message-box handlers and anything else of the caller's run
// after it is let go, since they call back into the host, and worker threads
// update progress bars while the interface thread is inside a procedure.
#include <cstdio>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/handles.h"
#include "platform/host.h"
#include "platform/region.h"
#include "platform/surface.h"

namespace tq::host {
namespace {

intptr_t HostWindowProc(int window, unsigned message, uintptr_t wparam, intptr_t lparam);

struct HostWindow {
  std::string text;
  int width = 0;
  int height = 0;
  int origin_x = 0;
  int origin_y = 0;
  WindowProc proc = HostWindowProc;
  std::thread::id thread;
  std::vector<std::string> list;
  int cur_sel = -1;
  int progress_low = 0;
  int progress_high = 100;
  int progress_pos = 0;
  int progress_step = 10;
};

struct QueuedMessage {
  int window;
  unsigned message;
  uintptr_t wparam;
  intptr_t lparam;
};

struct Host {
  std::mutex mutex;
  std::map<int, std::unique_ptr<HostWindow>> windows;
  std::map<std::thread::id, std::deque<QueuedMessage>> queues;
  MessageBoxHandler box_handler = nullptr;
};

Host& TheHost() {
  static Host* host = new Host;  // lives until exit
  return *host;
}

HostWindow* Find(Host& h, int window) {
  auto it = h.windows.find(window);
  return it == h.windows.end() ? nullptr : it->second.get();
}

// Runs read under the host's lock on the window, or answers none when there
// is no such window.
template <class T, class F>
T WithWindow(int window, T none, F read) {
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  HostWindow* w = Find(h, window);
  return w ? read(*w) : none;
}

int ClampPos(const HostWindow& w, int pos) {
  if (pos < w.progress_low) return w.progress_low;
  if (pos > w.progress_high) return w.progress_high;
  return pos;
}

intptr_t CopyOut(const std::string& s, char* out, size_t room) {
  if (out == nullptr || room == 0) return 0;
  size_t n = s.size() < room - 1 ? s.size() : room - 1;
  std::memcpy(out, s.data(), n);
  out[n] = '\0';
  return static_cast<intptr_t>(n);
}

// What a new window does with a message: it is at once a text window, a list
// box and a progress bar.
intptr_t HandleMessage(HostWindow* w, unsigned message, intptr_t wparam, intptr_t lparam) {
  const char* text = reinterpret_cast<const char*>(lparam);
  switch (message) {
    case kSetText:
      w->text = text ? text : "";
      return 1;
    case kGetText:
      return CopyOut(w->text, reinterpret_cast<char*>(lparam), static_cast<size_t>(wparam));
    case kGetTextLength:
      return static_cast<intptr_t>(w->text.size());
    case kListAddString:
      w->list.emplace_back(text ? text : "");
      return static_cast<intptr_t>(w->list.size() - 1);
    case kListInsertString: {
      size_t at = wparam < 0 || static_cast<size_t>(wparam) > w->list.size() ? w->list.size()
                                                                            : static_cast<size_t>(wparam);
      w->list.insert(w->list.begin() + static_cast<std::ptrdiff_t>(at), text ? text : "");
      return static_cast<intptr_t>(at);
    }
    case kListDeleteString:
      if (wparam < 0 || static_cast<size_t>(wparam) >= w->list.size()) return -1;
      w->list.erase(w->list.begin() + wparam);
      return static_cast<intptr_t>(w->list.size());
    case kListResetContent:
      w->list.clear();
      w->cur_sel = -1;
      return 0;
    case kListSetCurSel:
      if (wparam < 0 || static_cast<size_t>(wparam) >= w->list.size()) {
        w->cur_sel = -1;
        return -1;
      }
      w->cur_sel = static_cast<int>(wparam);
      return w->cur_sel;
    case kListGetCurSel:
      return w->cur_sel;
    case kListGetText:
      if (wparam < 0 || static_cast<size_t>(wparam) >= w->list.size()) return -1;
      return CopyOut(w->list[static_cast<size_t>(wparam)], reinterpret_cast<char*>(lparam), SIZE_MAX);
    case kListGetTextLen:
      if (wparam < 0 || static_cast<size_t>(wparam) >= w->list.size()) return -1;
      return static_cast<intptr_t>(w->list[static_cast<size_t>(wparam)].size());
    case kListGetCount:
      return static_cast<intptr_t>(w->list.size());
    case kProgressSetRange: {
      int old = w->progress_low | (w->progress_high << 16);
      w->progress_low = static_cast<int>(lparam & 0xFFFF);
      w->progress_high = static_cast<int>((lparam >> 16) & 0xFFFF);
      w->progress_pos = ClampPos(*w, w->progress_pos);
      return old;
    }
    case kProgressSetPos: {
      int old = w->progress_pos;
      w->progress_pos = ClampPos(*w, static_cast<int>(wparam));
      return old;
    }
    case kProgressDeltaPos: {
      int old = w->progress_pos;
      w->progress_pos = ClampPos(*w, old + static_cast<int>(wparam));
      return old;
    }
    case kProgressSetStep: {
      int old = w->progress_step;
      w->progress_step = static_cast<int>(wparam);
      return old;
    }
    case kProgressStepIt: {
      int old = w->progress_pos;
      int next = old + w->progress_step;
      // A bar that steps past its end starts again from the bottom.
      w->progress_pos = next > w->progress_high ? w->progress_low + (next - w->progress_high) : next;
      return old;
    }
    default:
      return 0;
  }
}

intptr_t HostWindowProc(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  return WithWindow(window, intptr_t{0}, [&](HostWindow& w) {
    return HandleMessage(&w, message, static_cast<intptr_t>(wparam), lparam);
  });
}

}  // namespace

intptr_t SendMessage(int window, unsigned message, intptr_t wparam, intptr_t lparam) {
  if (window == 0) return 0;
  WindowProc proc = GetWindowProc(window);
  return CallWindowProc(proc, window, message, static_cast<uintptr_t>(wparam), lparam);
}

void SetWindowText(int window, const char* text) {
  SendMessage(window, kSetText, 0, reinterpret_cast<intptr_t>(text));
}

WindowProc SetWindowProc(int window, WindowProc proc) {
  if (proc == nullptr) return nullptr;
  return WithWindow(window, WindowProc{nullptr}, [&](HostWindow& w) {
    WindowProc old = w.proc;
    w.proc = proc;
    return old;
  });
}

WindowProc GetWindowProc(int window) {
  return WithWindow(window, WindowProc{nullptr}, [](HostWindow& w) { return w.proc; });
}

intptr_t CallWindowProc(WindowProc proc, int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  return proc == nullptr ? 0 : proc(window, message, wparam, lparam);
}

bool PostMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  std::thread::id thread = std::this_thread::get_id();
  if (window != 0) {
    HostWindow* w = Find(h, window);
    if (w == nullptr) return false;
    thread = w->thread;
  }
  h.queues[thread].push_back({window, message, wparam, lparam});
  return true;
}

int DispatchOneMessage() {
  QueuedMessage m;
  {
    Host& h = TheHost();
    std::lock_guard<std::mutex> lock(h.mutex);
    auto it = h.queues.find(std::this_thread::get_id());
    if (it == h.queues.end() || it->second.empty()) return 0;
    m = it->second.front();
    it->second.pop_front();
    if (it->second.empty()) h.queues.erase(it);
  }
  SendMessage(m.window, m.message, static_cast<intptr_t>(m.wparam), m.lparam);
  return 1;
}

int GetWindowTextA(int window, char* out, int size) {
  if (out == nullptr || size <= 0) return 0;
  out[0] = '\0';
  if (!IsWindow(window)) return 0;
  intptr_t n = SendMessage(window, kGetText, size, reinterpret_cast<intptr_t>(out));
  // A subclassing procedure may answer carelessly: the text stays in bounds.
  n = n < 0 ? 0 : n > size - 1 ? size - 1 : n;
  out[n] = '\0';
  return static_cast<int>(n);
}

bool GetClientRect(int window, int* width, int* height) {
  return WithWindow(window, false, [&](HostWindow& w) {
    if (width) *width = w.width;
    if (height) *height = w.height;
    return true;
  });
}

bool GetClientSize(int window, int* width, int* height) { return GetClientRect(window, width, height); }

void ScreenToClient(int window, int* x, int* y) {
  WithWindow(window, false, [&](HostWindow& w) {
    if (x) *x -= w.origin_x;
    if (y) *y -= w.origin_y;
    return true;
  });
}

void ScreenToClient(int window, gdi::Point* point) {
  if (point != nullptr) ScreenToClient(window, &point->x, &point->y);
}

int FindWindowA(const char* title) {
  if (title == nullptr) return 0;
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  for (auto it = h.windows.rbegin(); it != h.windows.rend(); ++it) {
    if (it->second->text == title) return it->first;
  }
  return 0;
}

bool IsWindow(int window) {
  return WithWindow(window, false, [](HostWindow&) { return true; });
}

int MessageBox(int /*owner*/, const char* text, const char* title, unsigned type) {
  MessageBoxHandler handler;
  {
    Host& h = TheHost();
    std::lock_guard<std::mutex> lock(h.mutex);
    handler = h.box_handler;
  }
  if (text == nullptr) text = "";
  if (title == nullptr) title = "";
  if (handler != nullptr) return handler(text, title, type);
  std::fprintf(stderr, "[%s] %s\n", title, text);
  unsigned buttons = type & 0xF;
  return buttons == kMbYesNo || buttons == kMbYesNoCancel ? kIdNo : kIdOk;
}

void Yield() {}

int CreateWindow(const char* title, int client_width, int client_height) {
  auto w = std::make_unique<HostWindow>();
  w->text = title ? title : "";
  w->width = client_width;
  w->height = client_height;
  w->thread = std::this_thread::get_id();
  int id = NewHandle();
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  h.windows[id] = std::move(w);
  return id;
}

void DestroyWindow(int window) {
  {
    Host& h = TheHost();
    std::lock_guard<std::mutex> lock(h.mutex);
    if (h.windows.erase(window) == 0) return;
  }
  gdi::DropWindowSurface(window);
  gdi::DropWindowRegion(window);
}

void SetWindowOrigin(int window, int x, int y) {
  WithWindow(window, false, [&](HostWindow& w) {
    w.origin_x = x;
    w.origin_y = y;
    return true;
  });
}

bool GetWindowText(int window, std::string* text) {
  return WithWindow(window, false, [&](HostWindow& w) {
    *text = w.text;
    return true;
  });
}

int GetListCount(int window) {
  return WithWindow(window, -1, [](HostWindow& w) { return static_cast<int>(w.list.size()); });
}

bool GetListText(int window, int index, std::string* text) {
  return WithWindow(window, false, [&](HostWindow& w) {
    if (index < 0 || static_cast<size_t>(index) >= w.list.size()) return false;
    *text = w.list[static_cast<size_t>(index)];
    return true;
  });
}

int GetProgressPos(int window) {
  return WithWindow(window, -1, [](HostWindow& w) { return w.progress_pos; });
}

bool GetProgressRange(int window, int* low, int* high) {
  return WithWindow(window, false, [&](HostWindow& w) {
    if (low) *low = w.progress_low;
    if (high) *high = w.progress_high;
    return true;
  });
}

void SetMessageBoxHandler(MessageBoxHandler handler) {
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  h.box_handler = handler;
}

}  // namespace tq::host
