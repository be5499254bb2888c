// The digest exports: making digests at once or by the worker job, and
// drawing them, from a path or through reader handles 1 to 9.
#include "sound/digest.h"
#include "sound/digest_drawing.h"
#include "tqcomm2006.h"

namespace s = tq::sound;

extern "C" {

TQ_API int TQ_CALL vcMakeWaveDigestFile(const char* wavePath, const char* digestPath, int blockMs) {
  return vcMakeWaveDigestFileShowProgress(wavePath, digestPath, blockMs, 0);
}
TQ_API int TQ_CALL vcMakeWaveDigestFileShowProgress(const char* wavePath, const char* digestPath, int blockMs,
                                                    int progressBar) {
  if (wavePath == nullptr || digestPath == nullptr) return -1;
  return s::MakeWaveDigest(wavePath, digestPath, blockMs, progressBar);
}

TQ_API int TQ_CALL vcInitMakingDigestProcess(const char* sourcePath, const char* digestPath, int blockMs) {
  return s::InitDigestJob(sourcePath, digestPath, blockMs);
}
TQ_API int TQ_CALL vcSetDigestInterval(int startMs, int endMs) { return s::SetDigestInterval(startMs, endMs); }
TQ_API int TQ_CALL vcCreateMakingDigestThread(void) { return s::StartDigestThread(); }
TQ_API int TQ_CALL vcMakeWaveDigestThread(void* unused) { return s::WaveDigestJob(); }
TQ_API int TQ_CALL vcMakeMp3DigestThread(void* unused) { return s::Mp3DigestJob(); }
TQ_API int TQ_CALL vcGetMakeDigestPercentage(void) { return s::DigestPercentage(); }
TQ_API void TQ_CALL vcCancelMakeDigest(void) { s::CancelDigest(); }

TQ_API void TQ_CALL vcDrawDigestFile(const char* digestPath, int dc, int height, int width, int blockMs) {
  s::DigestReader* reader = digestPath == nullptr ? nullptr : s::DigestReader::Open(digestPath);
  if (reader == nullptr) return;
  reader->Draw(dc, height, width, 0, 1, blockMs);
  delete reader;
}
// One function under two names.
TQ_API void TQ_CALL vcDrawWaveDigestFile(const char* digestPath, int dc, int height, int width, int blockMs) {
  vcDrawDigestFile(digestPath, dc, height, width, blockMs);
}

TQ_API int TQ_CALL vcDigestFile_Open(const char* digestPath) {
  s::DigestReader* reader = digestPath == nullptr ? nullptr : s::DigestReader::Open(digestPath);
  return reader == nullptr ? -1 : s::Readers().Adopt(reader);
}
TQ_API void TQ_CALL vcDigestFile_Draw(int handle, int dc, int height, int width, int startMs, int blocksPerPoint,
                                      int blockMs) {
  if (s::DigestReader* reader = s::Readers().Get(handle)) {
    reader->Draw(dc, height, width, startMs, blocksPerPoint, blockMs);
  }
}
TQ_API void TQ_CALL vcDigestFile_Close(int handle) { s::Readers().Delete(handle); }

}  // extern "C"
