// The windows, list boxes and progress bars of the front end, as the library
// sees them: integer handles that messages are sent to.
//
// On Linux the host keeps these as objects in the process (a front end or a
// test makes them and reads them back through the tqHost_ exports); on
// Windows the same calls are SendMessage and friends. A window handle of 0
// means there is no window: nothing is sent and 0 comes back.
#pragma once

#include <cstdint>
#include <string>

#include "platform/surface.h"

namespace tq::host {

// Message numbers as the front ends' controls know them.
enum Message : unsigned {
  kSetText = 12,             // WM_SETTEXT, lparam = text
  kGetText = 13,             // WM_GETTEXT, wparam = buffer size, lparam = buffer
  kGetTextLength = 14,       // WM_GETTEXTLENGTH
  kClose = 16,               // WM_CLOSE
  kNcHitTest = 132,          // WM_NCHITTEST, lparam = screen x | y << 16
  kKeyDown = 256,            // WM_KEYDOWN, wparam = key code
  kKeyUp = 257,              // WM_KEYUP
  kCommand = 273,            // WM_COMMAND
  kLButtonDown = 513,        // WM_LBUTTONDOWN
  kRButtonDown = 516,        // WM_RBUTTONDOWN
  kMouseWheel = 522,         // WM_MOUSEWHEEL, high half of wparam = signed delta
  kListAddString = 384,      // LB_ADDSTRING, lparam = text; answers the index
  kListInsertString = 385,   // LB_INSERTSTRING, wparam = index (-1 = end)
  kListDeleteString = 386,   // LB_DELETESTRING, wparam = index; answers the count left
  kListResetContent = 388,   // LB_RESETCONTENT
  kListSetCurSel = 390,      // LB_SETCURSEL
  kListGetCurSel = 392,      // LB_GETCURSEL
  kListGetText = 393,        // LB_GETTEXT, wparam = index, lparam = buffer
  kListGetTextLen = 394,     // LB_GETTEXTLEN
  kListGetCount = 395,       // LB_GETCOUNT
  kProgressSetRange = 1025,  // PBM_SETRANGE, lparam = low | high << 16
  kProgressSetPos = 1026,    // PBM_SETPOS; answers the previous position
  kProgressDeltaPos = 1027,  // PBM_DELTAPOS
  kProgressSetStep = 1028,   // PBM_SETSTEP
  kProgressStepIt = 1029,    // PBM_STEPIT
};

// Message box buttons and answers.
enum : unsigned { kMbOk = 0, kMbOkCancel = 1, kMbYesNoCancel = 3, kMbYesNo = 4 };
enum : int { kIdOk = 1, kIdCancel = 2, kIdYes = 6, kIdNo = 7 };

// Hit-test answers of WM_NCHITTEST.
enum : int { kHtClient = 1, kHtCaption = 2 };

// A window procedure. Every message sent to a window goes through its
// current procedure, the library's own messages to list boxes and progress
// bars included, so a front end that subclasses a window sees them all. A new
// window's procedure is the host's: it keeps the window's text, list and
// progress bar, and answers 0 to anything else.
using WindowProc = intptr_t (*)(int window, unsigned message, uintptr_t wparam, intptr_t lparam);

// Calls the window's current procedure (never under a host lock); 0 for
// window 0 or no such window.
intptr_t SendMessage(int window, unsigned message, intptr_t wparam, intptr_t lparam);
void SetWindowText(int window, const char* text);

// Installs a procedure (SetWindowLongA with index -4) and answers the one it
// replaces; null, with nothing changed, for no such window or a null proc.
WindowProc SetWindowProc(int window, WindowProc proc);
// The current procedure; null for no such window.
WindowProc GetWindowProc(int window);
// Calls proc (CallWindowProcA); 0 for a null proc.
intptr_t CallWindowProc(WindowProc proc, int window, unsigned message, uintptr_t wparam, intptr_t lparam);
// Queues the message on the queue of the thread that made the window; false
// for no such window. A message for window 0 goes to the calling thread's
// queue and is taken off it by DispatchOneMessage without a procedure.
bool PostMessage(int window, unsigned message, uintptr_t wparam, intptr_t lparam);
// DoEvents: takes the first message off the calling thread's queue and sends
// it to its window's procedure; 0 at once when the queue is empty, else 1.
int DispatchOneMessage();

// The window's text through WM_GETTEXT (so a subclassing procedure answers):
// at most size - 1 bytes and a NUL; the length copied, 0 for no such window.
int GetWindowTextA(int window, char* out, int size);
// The client area's size (its rectangle starts at 0, 0); false for no such
// window.
bool GetClientRect(int window, int* width, int* height);
// Screen to client coordinates: less the screen position of the client
// area's top-left corner (tqHost_SetWindowOrigin).
void ScreenToClient(int window, gdi::Point* point);
void ScreenToClient(int window, int* x, int* y);
// The most recently made window whose text is exactly title; 0 for none.
int FindWindowA(const char* title);
bool IsWindow(int window);

// Keys and the mouse, as the host was told they are (tqHost_SetKeyState,
// tqHost_SetCursorPos). GetKeyState is negative while the key is down.
int16_t GetKeyState(int virtualKey);
bool GetCursorPos(int* x, int* y);
void SetKeyState(int virtualKey, bool down);
void SetCursorPos(int x, int y);

// Shows a message box and answers the button pressed.
int MessageBox(int owner, const char* text, const char* title, unsigned type);

// Lets the message loop of the front end breathe during long work. Nothing
// to do on a host without a message loop.
void Yield();

// Host side: making and reading the objects (behind the tqHost_ exports).
int CreateWindow(const char* title, int client_width, int client_height);
void DestroyWindow(int window);
bool GetWindowText(int window, std::string* text);
int GetListCount(int window);
bool GetListText(int window, int index, std::string* text);
int GetProgressPos(int window);
bool GetProgressRange(int window, int* low, int* high);
bool GetClientSize(int window, int* width, int* height);  // as GetClientRect
void SetWindowOrigin(int window, int x, int y);
using MessageBoxHandler = int (*)(const char* text, const char* title, unsigned type);
void SetMessageBoxHandler(MessageBoxHandler handler);

}  // namespace tq::host
