// Ready window procedures for the front ends' windows: dragging a window
// without a title bar by a strip of its client area, and the input of web
// browser controls remapped. A window is hooked by installing the procedure
// (its former one kept in a table) and unhooked by giving a former procedure
// back.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "platform/host.h"

namespace tq::desktop {

// The draggable strip of a window with this title (GBK): the first row of
// the front ends' table whose text the title holds decides; false when none
// does. Client width and height stand in for rows that follow the window.
bool DragStrip(const std::string& title, int clientWidth, int clientHeight, int* width, int* height);

// The table of hooked windows: window, wheel mode and former procedure per
// entry, used as a stack. Unhooking takes the last entry whatever window it
// belongs to, so callers unhook in the reverse order of hooking; the popped
// entry keeps its window and loses its procedure and mode.
class HookTable {
 public:
  static constexpr int kCapacity = 200;

  // Pushes an entry for the window and installs proc on it. A full table
  // hooks nothing.
  void Push(int window, int wheelMode, host::WindowProc proc);
  // Pops the last entry and gives its former procedure to window (not to the
  // entry's own window). An empty table does nothing.
  void Pop(int window);
  // The former procedure and wheel mode of the first entry for the window;
  // false when it has none.
  bool Find(int window, host::WindowProc* former, int* wheelMode) const;
  int Count() const;

 private:
  struct Entry {
    int window = 0;
    int wheel_mode = 0;
    host::WindowProc former = nullptr;
  };
  // Held only to read or change entries, never while a procedure runs:
  // procedures run on whatever thread sends the message.
  mutable std::mutex mutex_;
  Entry entries_[kCapacity];
  int count_ = 0;
};

HookTable& MovableWindows();
HookTable& WebControls();

// The one window hooked with the left-and-top-edge procedure.
void HookEdgeWindow(int window, bool on, host::WindowProc proc);

// The procedures themselves (the exports install these).
intptr_t MoveWindowMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam);
intptr_t EdgeMoveWindowMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam);
intptr_t WebControlMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam);

}  // namespace tq::desktop
