// The desktop exports: window shaping, text measurement and window
// procedures. Thin wrappers that refuse at once and forward.
#include "desktop/long_text.h"
#include "desktop/window_procs.h"
#include "desktop/window_shape.h"
#include "platform/host.h"
#include "tqcomm2006.h"

namespace {

enum : int { kVkControl = 17, kVkMenu = 18 };

int KeyDown(int key) { return tq::host::GetKeyState(key) < 0 ? 1 : 0; }

}  // namespace

extern "C" {

TQ_API int TQ_CALL vcMakeNoRegularWin(int /*unused*/, int window, unsigned int colour) {
  return tq::desktop::MakeIrregularWindow(window, colour);
}

TQ_API int TQ_CALL vcRestoreWinRgn(int window) { return tq::desktop::RestoreWindowRegion(window); }

TQ_API int TQ_CALL vcAddRectRgn(int window, int left, int top, int right, int bottom) {
  return tq::desktop::AddRectToWindowRegion(window, left, top, right, bottom);
}

TQ_API int TQ_CALL vcSubstractRectRgn(int window, int left, int top, int right, int bottom) {
  return tq::desktop::SubtractRectFromWindowRegion(window, left, top, right, bottom);
}

TQ_API int TQ_CALL vcGetStringHeight(int dc, const char* text) { return tq::desktop::StringHeight(dc, text); }

TQ_API int TQ_CALL vcGetTextWidth(int dc, const char* text) { return tq::desktop::StringWidth(dc, text); }

TQ_API int TQ_CALL vcGetStringWidth(int dc, const char* text) { return tq::desktop::StringWidth(dc, text); }

TQ_API const char* TQ_CALL vcInitDrawTextObj(DrawTextObj* obj, const char* text) {
  if (obj != nullptr) obj->text = text;
  return text;
}

TQ_API DrawTextObj* TQ_CALL vcDrawLongText(DrawTextObj* obj) {
  if (obj == nullptr) return nullptr;
  obj->height = tq::desktop::DrawLongText(obj->dc, obj->text, obj->x, obj->y, obj->width, obj->lineHeight);
  return obj;
}

TQ_API void TQ_CALL vcDrawLineBackground(int dc, int width, int bottom, int step, unsigned int colour) {
  tq::desktop::DrawRuledLines(dc, width, bottom, step, colour);
}

TQ_API int TQ_CALL vcIfAltPressed(void) { return KeyDown(kVkMenu); }

TQ_API int TQ_CALL vcIfCtrlPressed(void) { return KeyDown(kVkControl); }

TQ_API void TQ_CALL vcSetMoveWindowProc(int window, int on) { vcSetMoveWindowProcEx(window, on, 0); }

TQ_API void TQ_CALL vcSetMoveWindowProcEx(int window, int on, int wheelMode) {
  if (window == 0) return;
  if (on != 0) {
    tq::desktop::MovableWindows().Push(window, wheelMode, MoveWindowProc);
  } else {
    tq::desktop::MovableWindows().Pop(window);
  }
}

TQ_API void TQ_CALL vcSetMoveWindowProcForTamrill(int window, int on) {
  tq::desktop::HookEdgeWindow(window, on != 0, MoveWindowProcForTamrill);
}

TQ_API void TQ_CALL vcSetWebCtrlWndProc(int window, int on) {
  if (window == 0) return;
  if (on != 0) {
    tq::desktop::WebControls().Push(window, 0, WebCtrlProc);
  } else {
    tq::desktop::WebControls().Pop(window);
  }
}

TQ_API intptr_t TQ_CALL MoveWindowProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return tq::desktop::MoveWindowMessage(window, message, wParam, lParam);
}

TQ_API intptr_t TQ_CALL MoveWindowProcForTamrill(int window, unsigned int message, uintptr_t wParam,
                                                 intptr_t lParam) {
  return tq::desktop::EdgeMoveWindowMessage(window, message, wParam, lParam);
}

TQ_API intptr_t TQ_CALL WebCtrlProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return tq::desktop::WebControlMessage(window, message, wParam, lParam);
}

}  // extern "C"
