// Fuzzes the page generators on hostile input: the detail page on any
// section text and lengths, the printable copy on any quiz page and answer
// file.
//
// Input: one byte choosing the generator. Detail page: seven bytes giving
// the share of each section, a sound flag byte, then the text; the
// lengths never add up to more than the text, as a caller's would not.
// Printable copy: a mode byte, two bytes of answer-file length, the answer
// file, then the page.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz_util.h"
#include "html/detail_page.h"
#include "html/printable_page.h"

namespace {

using fuzzutil::Check;
using fuzzutil::ReadAll;
using fuzzutil::Scratch;
using fuzzutil::WriteAll;

void Detail(const uint8_t* data, size_t size) {
  if (size < 8) return;
  const uint8_t* shares = data;
  int sound = data[7] & 1;
  std::string text(reinterpret_cast<const char*>(data + 8), size - 8);
  uint32_t lengths[7];
  size_t left = text.size();
  for (int k = 0; k < 7; ++k) {
    lengths[k] = static_cast<uint32_t>(left * shares[k] / 255);
    left -= lengths[k];
  }
  std::string page = tq::html::DetailPage(lengths, text.data(), sound);
  static const char kTail[] = "</body> </html>";
  Check(page.compare(0, 8, "<head>\r\n") == 0);
  Check(page.size() >= sizeof kTail - 1 && page.compare(page.size() - (sizeof kTail - 1), std::string::npos, kTail) == 0);
  Check(page.find('\0') == std::string::npos);  // a line is a C string
}

void Printable(const uint8_t* data, size_t size) {
  if (size < 3) return;
  int mode = data[0] % 4;
  size_t answers = std::min<size_t>(size - 3, static_cast<size_t>(data[1] | data[2] << 8));
  WriteAll(Scratch("ans.txt"), data + 3, answers);
  WriteAll(Scratch("quiz.htm"), data + 3 + answers, size - 3 - answers);
  int blank = mode & 1, numbered = mode >> 1;
  Check(tq::html::GenPrintablePage(Scratch("quiz.htm").c_str(), Scratch("print.htm").c_str(),
                                   Scratch("ans.txt").c_str(), blank, numbered) == 1);
  // Boxes only ever shrink to their replacement, so the copy stays within
  // the page, the answers and the foot.
  std::string out = ReadAll(Scratch("print.htm"));
  Check(out.size() <= 40 * (size + 16) + 64);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  if (data[0] & 1) {
    Detail(data + 1, size - 1);
  } else {
    Printable(data + 1, size - 1);
  }
  return 0;
}
