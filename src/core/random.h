// The one random source of the library: a 15-bit generator shared by the
// whole process, of the kind the C runtime's rand() is, seeded from the clock
// in seconds. Shuffles and return distances are defined in terms of its
// draws, so two calls seeded in the same second give the same order.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tq {

void SeedRandom(uint32_t seed);
// Seeds with the current time in seconds.
void SeedRandomFromClock();
// The next draw, 0 to 32767.
int Random15();
// The next count draws at once, as count calls of Random15 would give them,
// for shuffles of long arrays.
void Random15Fill(int* out, size_t count);

}  // namespace tq
