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

namespace tq::host {

// Message numbers as the front ends' controls know them.
enum Message : unsigned {
  kSetText = 12,             // WM_SETTEXT, lparam = text
  kGetText = 13,             // WM_GETTEXT, wparam = buffer size, lparam = buffer
  kGetTextLength = 14,       // WM_GETTEXTLENGTH
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

intptr_t SendMessage(int window, unsigned message, intptr_t wparam, intptr_t lparam);
void SetWindowText(int window, const char* text);

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
bool GetClientSize(int window, int* width, int* height);
using MessageBoxHandler = int (*)(const char* text, const char* title, unsigned type);
void SetMessageBoxHandler(MessageBoxHandler handler);

}  // namespace tq::host
