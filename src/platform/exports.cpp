// The tqHost_ exports: thin wrappers over the host objects.
#include <algorithm>
#include <cstring>
#include <string>

#include "platform/devices.h"
#include "platform/host.h"
#include "platform/region.h"
#include "platform/surface.h"
#include "platform/system.h"
#include "tqhost.h"

namespace {

int CopyText(const std::string& s, char* out) {
  if (out != nullptr) std::memcpy(out, s.c_str(), s.size() + 1);
  return static_cast<int>(s.size());
}

}  // namespace

extern "C" {

TQ_API int tqHost_CreateWindow(const char* title, int clientWidth, int clientHeight) {
  return tq::host::CreateWindow(title, clientWidth, clientHeight);
}

TQ_API void tqHost_DestroyWindow(int window) { tq::host::DestroyWindow(window); }

TQ_API int tqHost_GetWindowText(int window, char* out) {
  std::string text;
  if (!tq::host::GetWindowText(window, &text)) return -1;
  return CopyText(text, out);
}

TQ_API int tqHost_GetListCount(int window) { return tq::host::GetListCount(window); }

TQ_API int tqHost_GetListText(int window, int index, char* out) {
  std::string text;
  if (!tq::host::GetListText(window, index, &text)) return -1;
  return CopyText(text, out);
}

TQ_API int tqHost_GetProgressPos(int window) { return tq::host::GetProgressPos(window); }

TQ_API int tqHost_GetProgressRange(int window, int* low, int* high) {
  return tq::host::GetProgressRange(window, low, high) ? 1 : 0;
}

TQ_API void tqHost_SetMessageBoxHandler(int (*handler)(const char*, const char*, unsigned int)) {
  tq::host::SetMessageBoxHandler(handler);
}

TQ_API int tqHost_CreateDC(int width, int height) { return tq::gdi::CreateSurface(width, height); }

TQ_API void tqHost_DeleteDC(int dc) { tq::gdi::DeleteSurface(dc); }

TQ_API int tqHost_GetWindowDC(int window) { return tq::gdi::WindowSurface(window); }

TQ_API unsigned int tqHost_GetPixel(int dc, int x, int y) { return tq::gdi::GetPixel(dc, x, y); }

TQ_API void tqHost_FillRect(int dc, int left, int top, int right, int bottom, unsigned int colour) {
  tq::gdi::FillRect(dc, left, top, right, bottom, colour);
}

TQ_API int tqHost_SavePng(int dc, const char* path) { return tq::gdi::SavePng(dc, path) ? 1 : -1; }

TQ_API int tqHost_GetDrawLog(int dc, char* out, int size) {
  std::string log;
  if (!tq::gdi::GetDrawLog(dc, &log)) return -1;
  if (out != nullptr && size > 0) {
    size_t n = std::min(log.size(), static_cast<size_t>(size) - 1);
    std::memcpy(out, log.data(), n);
    out[n] = '\0';
  }
  return static_cast<int>(log.size());
}

TQ_API void tqHost_ClearDrawLog(int dc) { tq::gdi::ClearDrawLog(dc); }

TQ_API void tqHost_SetWindowOrigin(int window, int x, int y) { tq::host::SetWindowOrigin(window, x, y); }

TQ_API int tqHost_InRegion(int window, int x, int y) { return tq::gdi::InWindowRegion(window, x, y); }

TQ_API int tqHost_CreateRectRgn(int left, int top, int right, int bottom) {
  return tq::gdi::CreateRectRgn(left, top, right, bottom);
}

TQ_API int tqHost_DeleteObject(int object) { return tq::gdi::DeleteObject(object) ? 1 : 0; }

TQ_API TqWindowProc tqHost_SetWindowProc(int window, TqWindowProc proc) {
  return tq::host::SetWindowProc(window, proc);
}

TQ_API intptr_t tqHost_CallWindowProc(TqWindowProc proc, int window, unsigned int message, uintptr_t wParam,
                                      intptr_t lParam) {
  return tq::host::CallWindowProc(proc, window, message, wParam, lParam);
}

TQ_API intptr_t tqHost_SendMessage(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return tq::host::SendMessage(window, message, static_cast<intptr_t>(wParam), lParam);
}

TQ_API int tqHost_PostMessage(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return tq::host::PostMessage(window, message, wParam, lParam) ? 1 : 0;
}

TQ_API void tqHost_SetKeyState(int virtualKey, int down) { tq::host::SetKeyState(virtualKey, down != 0); }

TQ_API void tqHost_SetCursorPos(int x, int y) { tq::host::SetCursorPos(x, y); }

TQ_API void tqHost_SetAudioDeviceCount(int count) { tq::host::SetAudioDeviceCount(count); }

TQ_API void tqHost_SetSoundPlayer(int (*play)(const char* path, unsigned int flags)) {
  tq::host::SetSoundPlayer(play);
}

TQ_API void tqHost_SetCdDrive(char letter, const char* folder) { tq::host::SetCdDrive(letter, folder); }

TQ_API void tqHost_SetVersion(int platform, int major, int minor) {
  tq::host::SetVersion(platform, major, minor);
}

}  // extern "C"
