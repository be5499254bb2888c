// One counter for the handles of every host object (windows, device
// contexts, GDI objects), so that no number means two things and a handle
// of the wrong kind is refused rather than taken for another object.
#pragma once

#include <atomic>

namespace tq::host {

inline int NewHandle() {
  static std::atomic<int> next{1};
  return next.fetch_add(1);
}

}  // namespace tq::host
