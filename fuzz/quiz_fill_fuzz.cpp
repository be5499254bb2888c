// Fuzzes the fill-blank file: the compiler on any text, and the degree
// operations and the page on any file of records (brackets unclosed,
// nested, texts without their zero byte).
//
// Input: a mode byte, then the text or the file. Mode bit 0: the bytes are
// a question file; the other bits choose the page's filter and order.
#include <cstddef>
#include <cstdint>
#include <string>

#include "quiz/fill_blank.h"
#include "fuzz_util.h"

using fuzzutil::Check;

namespace {

void Records(const std::string& dat, int mode) {
  tq::quiz::FillFiles& files = tq::quiz::FillTables();
  int h = files.Open(dat.c_str(), "r+b");
  Check(h > 0);
  int count = files.RecordCount(h);
  const int32_t list[] = {3, count - 1, -5, 0};
  int shown = files.MakePage(h, fuzzutil::Scratch("fill.htm").c_str(), mode & 2, (mode & 4) ? 0 : -1000, (mode & 8) ? 1 : 1000, nullptr,
                             (mode & 16) ? list : nullptr, mode & 32);
  Check(shown >= 0 && shown <= count + 3);
  for (int i = -1; i <= count && i < 3; ++i) files.SetInt(h, i, offsetof(FillBlankQtRecord, degree), i);
  files.Close(h);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  int mode = data[0];
  const std::string in = fuzzutil::Scratch("in"), fill = fuzzutil::Scratch("fill.dat");
  fuzzutil::WriteAll(in, data + 1, size - 1);
  if (mode & 1) {
    Records(in, mode);
    return 0;
  }
  Check(tq::quiz::CompileFillText(fill.c_str(), in.c_str(), 1) == 1);
  std::string dat = fuzzutil::ReadAll(fill);
  Check(dat.size() % tq::quiz::kFillSize == 0);
  for (size_t at = 0; at < dat.size(); at += tq::quiz::kFillSize) {
    Check(fuzzutil::FieldEnds(dat, at, tq::quiz::kFillTextSize));
  }
  Records(fill, mode);
  return 0;
}
