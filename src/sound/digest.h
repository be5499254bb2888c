// Wave digests: one byte of loudness for each block of a recording, so that
// a front end can draw the shape of an hour of sound at once.
//
// A digest file has no header: byte i is the absolute amplitude (0 to 128)
// of the last sample of block i. The block length in milliseconds is the
// caller's to remember. Digests are made from a wave file at once, or by a
// worker job from a wave or an MP3 file, which the caller polls.
#pragma once

#include <cstdint>

namespace tq::sound {

// A digest byte from one sample: 8-bit unsigned, or 16-bit signed shifted
// right by 8 (so -1 gives 1 and +1 gives 0).
int Amplitude8(uint8_t sample);
int Amplitude16(int16_t sample);

// Samples in a block of blockMs at rate, with the integer truncations of
// the digest files: rate / (1000 / blockMs). 0 when there is no such block
// (blockMs outside 1..1000, or a rate below the blocks per second).
int64_t BlockSamples(int64_t rate, int blockMs);

// The digest of a wave at once: its length in milliseconds (blocks x
// blockMs), or -1. progressBar 0: none.
int MakeWaveDigest(const char* wavePath, const char* digestPath, int blockMs, int progressBar);

// The worker job: its settings, its start, and its two bodies, which also
// run on a thread of the caller's.
int InitDigestJob(const char* sourcePath, const char* digestPath, int blockMs);
int SetDigestInterval(int startMs, int endMs);
int StartDigestThread();
int WaveDigestJob();
int Mp3DigestJob();
int DigestPercentage();
void CancelDigest();

// Tests only: whether a job started by StartDigestThread still runs, and a
// function told each new percentage a job stores (null for none).
bool DigestThreadRunningForTesting();
void SetDigestObserverForTesting(void (*observer)(int percent));

}  // namespace tq::sound
