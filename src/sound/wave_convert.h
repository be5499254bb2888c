// Cutting and mixing wave files, and converting blocks of samples in
// memory between depths, channel counts and rates.
#pragma once

#include <cstdint>

namespace tq::sound {

int ExtractSegment(const char* srcPath, const char* dstPath, int startMs, int endMs, void* buffer, int bufferSize);
int StereoToMono(const char* srcPath, const char* dstPath);

void Buffer8To16(const uint8_t* src, int16_t* dst, int count);
void BufferMonoToStereo(int bits, const void* src, void* dst, int frames);
void BufferAmplifyRate(int bits, int channels, int factor, const void* src, void* dst, int frames);
int BufferConvert(int srcBits, int srcChannels, int srcRate, int dstBits, int dstChannels, int dstRate,
                  const void* src, void* dst, int frames, int scratchSize);

// Resamples frames of src into dst; the bytes the result takes.
int Resample(int bits, int channels, int rateIn, int rateOut, const void* src, void* dst, int frames);

}  // namespace tq::sound
