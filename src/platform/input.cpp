// The state of keys and the mouse cursor, as the front end tells the host
// (on Windows the system knows it).
#include <atomic>

#include "platform/host.h"

namespace tq::host {
namespace {

std::atomic<bool> g_keys[256];
std::atomic<uint64_t> g_cursor{0};  // x in the low half, y in the high half

}  // namespace

int16_t GetKeyState(int virtualKey) {
  if (virtualKey < 0 || virtualKey > 255) return 0;
  // Down is the high bit, as the window system answers (0xFF80).
  return g_keys[virtualKey].load() ? static_cast<int16_t>(-128) : 0;
}

void SetKeyState(int virtualKey, bool down) {
  if (virtualKey >= 0 && virtualKey <= 255) g_keys[virtualKey] = down;
}

bool GetCursorPos(int* x, int* y) {
  if (x == nullptr || y == nullptr) return false;
  uint64_t xy = g_cursor;
  *x = static_cast<int32_t>(static_cast<uint32_t>(xy));
  *y = static_cast<int32_t>(static_cast<uint32_t>(xy >> 32));
  return true;
}

void SetCursorPos(int x, int y) {
  g_cursor = static_cast<uint32_t>(x) | static_cast<uint64_t>(static_cast<uint32_t>(y)) << 32;
}

}  // namespace tq::host
