// MP3 to wave on the MPEG engine: at once, with a progress bar, on a worker
// thread that the caller polls, and a piece between two times.
#pragma once

#include <cstdint>

namespace tq::sound {

// progressBar 0: none.
int Mp3ToWav(const char* mp3Path, const char* wavePath, int progressBar, int32_t* secondsOut);
int StartMp3ToWavThread(const char* mp3Path, const char* wavePath);
int Mp3ToWavPercentage();
void CancelMp3ToWav();
int Mp3LengthInTime(const char* mp3Path);
int ExtractMp3ToWav(const char* mp3Path, const char* wavePath, int startMs, int endMs, int thin);

// The rough seconds between two clock readings in 100-nanosecond ticks,
// worked out from their 32-bit halves as the front ends have always had
// them.
int32_t RoughSeconds(uint64_t startTicks, uint64_t endTicks);

// Tests only: whether a worker is still running, and a function told each
// new percentage the worker stores (null for none).
bool Mp3ThreadRunningForTesting();
void SetProgressObserverForTesting(void (*observer)(int percent));

}  // namespace tq::sound
