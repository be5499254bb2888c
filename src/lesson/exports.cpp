// The lesson maker's exports. A handle with nothing behind it answers -1
// (Close does nothing) at once.
#include <memory>
#include <new>

#include "core/handle_table.h"
#include "lesson/mp3_maker.h"
#include "tqcomm2006.h"

namespace l = tq::lesson;

namespace {

// Nineteen lessons, handles 1 to 19.
using MakerTable = tq::HandleTable<l::CMp3Maker, 20, -1>;

MakerTable& Makers() {
  static MakerTable table;
  return table;
}

}  // namespace

extern "C" {

TQ_API int TQ_CALL vcMp3Maker_Open(const char* scriptPath, int sndCenter) {
  std::unique_ptr<l::CMp3Maker> maker(new (std::nothrow) l::CMp3Maker(sndCenter));
  if (maker == nullptr || !maker->Open(scriptPath)) return -1;
  return Makers().Adopt(maker.release());
}
TQ_API int TQ_CALL vcMp3Maker_MakeWaveFile(int maker, const char* wavePath, int wordCount, int compress,
                                           int progressWindow, int deviceContext) {
  l::CMp3Maker* m = Makers().Get(maker);
  return m == nullptr ? -1 : m->MakeWaveFile(wavePath, wordCount, compress, progressWindow, deviceContext);
}
TQ_API int TQ_CALL vcMp3Maker_CompressWaveToMp3(int maker, int progressWindow, int deviceContext) {
  l::CMp3Maker* m = Makers().Get(maker);
  return m == nullptr ? -1 : m->CompressWaveToMp3(progressWindow);
}
TQ_API int TQ_CALL vcMp3Maker_AdjustLrcFile(int maker) {
  l::CMp3Maker* m = Makers().Get(maker);
  return m == nullptr ? -1 : m->AdjustLrcFile();
}
TQ_API void TQ_CALL vcMp3Maker_Close(int maker) { Makers().Delete(maker); }

}  // extern "C"
