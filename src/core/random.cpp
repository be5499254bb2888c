#include "core/random.h"

#include <atomic>

#include "platform/env.h"

namespace tq {
namespace {

std::atomic<uint32_t> g_state{1};

}  // namespace

void SeedRandom(uint32_t seed) { g_state.store(seed, std::memory_order_relaxed); }

void SeedRandomFromClock() { SeedRandom(static_cast<uint32_t>(env::NowSeconds())); }

int Random15() {
  uint32_t old = g_state.load(std::memory_order_relaxed);
  uint32_t next;
  do {
    next = old * 214013u + 2531011u;
  } while (!g_state.compare_exchange_weak(old, next, std::memory_order_relaxed));
  return static_cast<int>((next >> 16) & 0x7FFF);
}

void Random15Fill(int* out, size_t count) {
  uint32_t old = g_state.load(std::memory_order_relaxed);
  uint32_t next;
  do {
    next = old;
    for (size_t i = 0; i < count; ++i) {
      next = next * 214013u + 2531011u;
      out[i] = static_cast<int>((next >> 16) & 0x7FFF);
    }
  } while (!g_state.compare_exchange_weak(old, next, std::memory_order_relaxed));
}

}  // namespace tq
