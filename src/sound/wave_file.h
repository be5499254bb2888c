// The wave file record that the caller owns, and the whole-file queries.
#pragma once

#include <cstdint>

#include "tqcomm2006.h"

namespace tq::sound {

// Copies a path into a record's 200-byte name, cut to fit.
void SetWaveFileName(WaveFileObj* wave, const char* path);

int InitWave(WaveFileObj* wave, int samplesPerSecond, int bits, int channels, const char* fileName);
int CreateWave(WaveFileObj* wave);
int OpenWaveToRead(WaveFileObj* wave);
int ReadWave(WaveFileObj* wave, void* buffer, int count);
int WriteWave(WaveFileObj* wave, const void* buffer, int count);
int CloseWave(WaveFileObj* wave);
int CurrentTimePos(const WaveFileObj* wave);
int SeekByTime(WaveFileObj* wave, int ms);
int SeekByByte(WaveFileObj* wave, int offset);
int SeekByBytes(WaveFileObj* wave, int offset, int origin);

// Channels x rate x bits as a signed 32-bit product, over 8.
int32_t BytesPerSecond(const TqWaveFormat& format);
int ByteLenToTimeLen(const TqWaveFormat& format, int bytes);
int TimeLenToByteLen(const TqWaveFormat& format, int ms);
int TimeOffsetToByteOffset(const TqWaveFormat& format, int ms);

int GetFormat(const char* path, TqWaveFormat* format);
int GetParameters(const char* path, int32_t* para);
int LengthInTime(const char* path);

// A double truncated toward zero as the processor does it: what lies
// outside 32 bits, infinities and NaN (a zero rate divides by zero) all
// become INT32_MIN.
int32_t TruncateToInt(double value);

}  // namespace tq::sound
