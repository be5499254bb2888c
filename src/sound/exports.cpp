// The sound exports: wave files, segments and conversions, MP3 in both
// directions. Records and paths come from the caller; a null record or
// output answers the family's failure value at once.
#include "platform/devices.h"
#include "platform/host.h"
#include "sound/mp3_encoder.h"
#include "sound/mp3_to_wave.h"
#include "sound/wave_convert.h"
#include "sound/wave_file.h"
#include "tqcomm2006.h"

namespace s = tq::sound;

extern "C" {

TQ_API int TQ_CALL InitWaveFileObj(WaveFileObj* wave, int samplesPerSecond, int bits, int channels,
                                   const char* fileName) {
  return wave == nullptr ? 0 : s::InitWave(wave, samplesPerSecond, bits, channels, fileName);
}
TQ_API int TQ_CALL CreateWaveFile(WaveFileObj* wave) { return wave == nullptr ? 0 : s::CreateWave(wave); }
TQ_API int TQ_CALL OpenWaveFileToRead(WaveFileObj* wave) { return wave == nullptr ? -1 : s::OpenWaveToRead(wave); }
TQ_API int TQ_CALL ReadFromWaveFile(WaveFileObj* wave, void* buffer, int count) {
  return wave == nullptr ? 0 : s::ReadWave(wave, buffer, count);
}
TQ_API int TQ_CALL WriteWaveFile(WaveFileObj* wave, const void* buffer, int count) {
  return wave == nullptr ? -1 : s::WriteWave(wave, buffer, count);
}
TQ_API int TQ_CALL CloseWaveFile(WaveFileObj* wave) { return wave == nullptr ? 0 : s::CloseWave(wave); }
TQ_API int TQ_CALL GetCurrentTimePos(WaveFileObj* wave) { return wave == nullptr ? 0 : s::CurrentTimePos(wave); }
TQ_API int TQ_CALL SeekWaveFileByTime(WaveFileObj* wave, int ms) {
  return wave == nullptr ? -1 : s::SeekByTime(wave, ms);
}
TQ_API int TQ_CALL SeekWaveFileByByte(WaveFileObj* wave, int offset) {
  return wave == nullptr ? -1 : s::SeekByByte(wave, offset);
}
TQ_API int TQ_CALL BetterSeekWaveFileByBytes(WaveFileObj* wave, int offset, int origin) {
  return wave == nullptr ? -1 : s::SeekByBytes(wave, offset, origin);
}
TQ_API int TQ_CALL WaveByteLenToTimeLen(const TqWaveFormat* format, int bytes) {
  return format == nullptr ? 0 : s::ByteLenToTimeLen(*format, bytes);
}
TQ_API int TQ_CALL WaveTimeLenToByteLen(const TqWaveFormat* format, int ms) {
  return format == nullptr ? 0 : s::TimeLenToByteLen(*format, ms);
}
TQ_API int TQ_CALL WaveTimeOffsetToByteOffset(const TqWaveFormat* format, int ms) {
  return format == nullptr ? 0 : s::TimeOffsetToByteOffset(*format, ms);
}
TQ_API int TQ_CALL GetWaveFileFormat(const char* path, TqWaveFormat* format) {
  return format == nullptr ? -1 : s::GetFormat(path, format);
}
TQ_API int TQ_CALL vcGetWaveFilePara(const char* path, int32_t* para) {
  return para == nullptr ? -1 : s::GetParameters(path, para);
}
TQ_API int TQ_CALL vcGetWaveFileLenInTime(const char* path) { return s::LengthInTime(path); }

TQ_API int TQ_CALL vcIfAudioReady(void) { return tq::host::WaveOutDeviceCount(); }
TQ_API int TQ_CALL DoEvents(void) { return tq::host::DispatchOneMessage(); }
TQ_API int TQ_CALL vcButtonEnterSound(const char* path) {
  if (vcIfAudioReady() == 0) return 0;
  return tq::host::PlaySoundFile(path, tq::host::kSndAsync | tq::host::kSndNoDefault);
}
// Down and Up are one routine under two names.
TQ_API int TQ_CALL vcButtonDownSound(const char* path) { return vcButtonEnterSound(path); }
TQ_API int TQ_CALL vcButtonUpSound(const char* path) { return vcButtonDownSound(path); }

TQ_API int TQ_CALL ExtractWaveSeg(const char* srcPath, const char* dstPath, int startMs, int endMs, void* buffer,
                                  int bufferSize) {
  return s::ExtractSegment(srcPath, dstPath, startMs, endMs, buffer, bufferSize);
}
TQ_API int TQ_CALL vcExtractWaveSeg(const char* srcPath, const char* dstPath, int startMs, int endMs, void* buffer,
                                    int bufferSize) {
  return ExtractWaveSeg(srcPath, dstPath, startMs, endMs, buffer, bufferSize);
}
TQ_API int TQ_CALL vcWaveSteroToMono(const char* srcPath, const char* dstPath) {
  return s::StereoToMono(srcPath, dstPath);
}
TQ_API void TQ_CALL WaveBuf8To16(const uint8_t* src, int16_t* dst, int count) { s::Buffer8To16(src, dst, count); }
TQ_API void TQ_CALL WaveBufMonoToStero(int bits, const void* src, void* dst, int frames) {
  s::BufferMonoToStereo(bits, src, dst, frames);
}
TQ_API void TQ_CALL WaveBufAmplifyBitrate(int bits, int channels, int factor, const void* src, void* dst,
                                          int frames) {
  s::BufferAmplifyRate(bits, channels, factor, src, dst, frames);
}
TQ_API int TQ_CALL vcWaveBufConvert(int srcBits, int srcChannels, int srcRate, int dstBits, int dstChannels,
                                    int dstRate, const void* src, void* dst, int frames, int scratchSize) {
  return s::BufferConvert(srcBits, srcChannels, srcRate, dstBits, dstChannels, dstRate, src, dst, frames,
                          scratchSize);
}

TQ_API int TQ_CALL vcMp3ToWav(const char* mp3Path, const char* wavePath, int32_t* secondsOut) {
  return s::Mp3ToWav(mp3Path, wavePath, 0, secondsOut);
}
TQ_API int TQ_CALL vcMp3ToWavShowProgress(const char* mp3Path, const char* wavePath, int progressBar,
                                          int32_t* secondsOut) {
  return s::Mp3ToWav(mp3Path, wavePath, progressBar, secondsOut);
}
TQ_API int TQ_CALL vcMp3ToWavByThread(const char* mp3Path, const char* wavePath) {
  return s::StartMp3ToWavThread(mp3Path, wavePath);
}
TQ_API int TQ_CALL vcGetMp3ToWavPercentage(void) { return s::Mp3ToWavPercentage(); }
TQ_API void TQ_CALL vcCancelConvert(void) { s::CancelMp3ToWav(); }
TQ_API int TQ_CALL vcGetMp3FileLengthInTime(const char* mp3Path) { return s::Mp3LengthInTime(mp3Path); }
TQ_API int TQ_CALL vcExtractMp3ToWav(const char* mp3Path, const char* wavePath, int startMs, int endMs, int thin) {
  return s::ExtractMp3ToWav(mp3Path, wavePath, startMs, endMs, thin);
}

TQ_API int TQ_CALL vcEncodeWavToMp3ShowProgress(const char* wavePath, const char* mp3Path, int bitrate,
                                                int progressBar) {
  return s::EncodeWavToMp3(wavePath, mp3Path, bitrate, progressBar);
}
TQ_API int TQ_CALL vcEncodeWavToMp3(const char* wavePath, const char* mp3Path, int bitrate) {
  return s::EncodeWavToMp3(wavePath, mp3Path, bitrate, 0);
}

}  // extern "C"
