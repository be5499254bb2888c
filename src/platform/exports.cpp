// The tqHost_ exports: thin wrappers over the host objects.
#include <cstring>
#include <string>

#include "platform/host.h"
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

}  // extern "C"
