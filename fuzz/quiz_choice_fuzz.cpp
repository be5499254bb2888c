// Fuzzes the choice-question file: the compiler on any question text, and
// every record operation and the exam page on any file of records.
//
// Input: a mode byte, then the text or the file. Mode bit 0: the bytes are
// a question file (hostile records) rather than a text; bits 1-2 choose the
// page's shuffles.
#include <cstddef>
#include <cstdint>
#include <string>

#include "quiz/choice.h"
#include "fuzz_util.h"

using fuzzutil::Check;

namespace {

void Records(const std::string& dat, int mode) {
  tq::quiz::ChoiceFiles& files = tq::quiz::ChoiceTables();
  int h = files.Open(dat.c_str(), "r+b");
  Check(h > 0);
  int count = files.RecordCount(h);
  const int32_t list[] = {4, count, 0, -1, count - 1};
  int shown = files.MakePage(h, fuzzutil::Scratch("exam.htm").c_str(), mode & 2, "bg.jpg", (mode & 8) ? list : nullptr, mode & 4, mode & 16);
  Check(shown >= 0 && shown <= count + 2);
  char comment[tq::quiz::kCommentSize];
  for (int i = -1; i <= count && i < 4; ++i) {
    files.GetComment(h, i, comment);
    files.SetComment(h, i, comment);
    files.SetInt(h, i, offsetof(ChoiceQtRecord, difficulty), i);
  }
  const int32_t gone[] = {0, 2};
  if (mode & 32) fuzzutil::InScratch([&] { Check(files.Delete(h, 2, gone) == 1); });
  files.Close(h);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  int mode = data[0];
  const std::string in = fuzzutil::Scratch("in"), bank = fuzzutil::Scratch("bank.dat");
  fuzzutil::WriteAll(in, data + 1, size - 1);
  if (mode & 1) {
    Records(in, mode);
    return 0;
  }
  Check(tq::quiz::CompileChoiceText(bank.c_str(), in.c_str(), 1) == 1);
  std::string dat = fuzzutil::ReadAll(bank);
  Check(dat.size() % tq::quiz::kChoiceSize == 0);
  for (size_t at = 0; at < dat.size(); at += tq::quiz::kChoiceSize) {
    Check(fuzzutil::FieldEnds(dat, at, tq::quiz::kStemSize));
    for (int i = 0; i < tq::quiz::kMaxOptions; ++i) {
      Check(fuzzutil::FieldEnds(dat, at + tq::quiz::OptionOffset(i), tq::quiz::kOptionSize));
    }
    Check(fuzzutil::FieldEnds(dat, at + offsetof(ChoiceQtRecord, comment), tq::quiz::kCommentSize));
  }
  Records(bank, mode);
  return 0;
}
