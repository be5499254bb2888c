#include "platform/host.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace tq::host {
namespace {

struct HostWindow {
  std::string text;
  int width = 0;
  int height = 0;
  std::vector<std::string> list;
  int cur_sel = -1;
  int progress_low = 0;
  int progress_high = 100;
  int progress_pos = 0;
  int progress_step = 10;
};

struct Host {
  std::mutex mutex;
  std::map<int, std::unique_ptr<HostWindow>> windows;
  int next = 1;
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
T ReadWindow(int window, T none, F read) {
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

}  // namespace

intptr_t SendMessage(int window, unsigned message, intptr_t wparam, intptr_t lparam) {
  if (window == 0) return 0;
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  HostWindow* w = Find(h, window);
  if (w == nullptr) return 0;
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

void SetWindowText(int window, const char* text) {
  SendMessage(window, kSetText, 0, reinterpret_cast<intptr_t>(text));
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
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  auto w = std::make_unique<HostWindow>();
  w->text = title ? title : "";
  w->width = client_width;
  w->height = client_height;
  int id = h.next++;
  h.windows[id] = std::move(w);
  return id;
}

void DestroyWindow(int window) {
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  h.windows.erase(window);
}

bool GetWindowText(int window, std::string* text) {
  return ReadWindow(window, false, [&](const HostWindow& w) {
    *text = w.text;
    return true;
  });
}

int GetListCount(int window) {
  return ReadWindow(window, -1, [](const HostWindow& w) { return static_cast<int>(w.list.size()); });
}

bool GetListText(int window, int index, std::string* text) {
  return ReadWindow(window, false, [&](const HostWindow& w) {
    if (index < 0 || static_cast<size_t>(index) >= w.list.size()) return false;
    *text = w.list[static_cast<size_t>(index)];
    return true;
  });
}

int GetProgressPos(int window) {
  return ReadWindow(window, -1, [](const HostWindow& w) { return w.progress_pos; });
}

bool GetProgressRange(int window, int* low, int* high) {
  return ReadWindow(window, false, [&](const HostWindow& w) {
    if (low) *low = w.progress_low;
    if (high) *high = w.progress_high;
    return true;
  });
}

bool GetClientSize(int window, int* width, int* height) {
  return ReadWindow(window, false, [&](const HostWindow& w) {
    if (width) *width = w.width;
    if (height) *height = w.height;
    return true;
  });
}

void SetMessageBoxHandler(MessageBoxHandler handler) {
  Host& h = TheHost();
  std::lock_guard<std::mutex> lock(h.mutex);
  h.box_handler = handler;
}

}  // namespace tq::host
