// Fuzzes the quick readers, the list painters' cuts and the notebook
// rewrite on hostile libraries.
//
// Input: one byte for the separator (0 most of the time), four 16-bit
// offsets (little-endian, 0xFFFF standing for -1), then the library's
// bytes. Every text out of a window must come from inside it, and the
// readers' outputs go into buffers of exactly their promised sizes.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "learning/book_record.h"
#include "learning/book_window.h"
#include "learning/notebook.h"
#include "tqcomm2006.h"

namespace {

#define Check(ok)                                                      \
  do {                                                                 \
    if (!(ok)) {                                                       \
      std::fprintf(stderr, "check failed at line %d: %s\n", __LINE__, #ok); \
      std::abort();                                                    \
    }                                                                  \
  } while (0)

// A scratch folder for the notebook's files.
const std::string& Scratch() {
  static const std::string dir = [] {
    std::string base = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string d = base + "/tq_notebook_fuzz." + std::to_string(::getpid());
    std::string cmd = "mkdir -p '" + d + "'";
    Check(std::system(cmd.c_str()) == 0);
    return d;
  }();
  return dir;
}

// The scratch folder as the working directory, for the rewrite's
// temporaries, and the fuzzer's own folder again afterwards (where its
// findings are written).
class InScratch {
 public:
  InScratch() { Check(::getcwd(home_, sizeof home_) != nullptr && ::chdir(Scratch().c_str()) == 0); }
  ~InScratch() { Check(::chdir(home_) == 0); }

 private:
  char home_[4096];
};

bool Inside(const std::string& text, const tq::LibraryWindow& w, size_t from) {
  if (text.empty()) return true;
  std::string window(w.data(), w.size());
  return window.find(text, from) != std::string::npos;
}

void Cuts(std::FILE* lib, int64_t offset, int separator) {
  tq::LibraryWindow word(lib, offset + 1, tq::kWordWindow);
  std::string w = tq::ListWord(word);
  Check(w.size() <= 30 && Inside(w, word, 0));
  tq::LibraryWindow at(lib, offset, tq::kWordWindow);
  w = tq::PaintedWord(at);
  Check(w.size() <= 39 && Inside(w, at, 1));

  std::string text;
  tq::LibraryWindow expl(lib, offset + 1, tq::kExplainWindow);
  if (tq::ListExplanation(expl, separator, &text)) Check(text.size() <= 97);
  tq::LibraryWindow pron(lib, offset, tq::kPronWindow);
  if (tq::PaintedPronunciation(pron, separator, &text)) {
    Check(text.size() <= 63 && text[0] == '[' && text.back() == ']');
    Check(Inside(text.substr(0, text.size() - 1), pron, 1));
  }
  tq::LibraryWindow paint(lib, offset, tq::kPaintWindow);
  if (tq::PaintedExplanation(paint, separator, &text)) Check(text.size() <= 187 && Inside(text, paint, 1));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 9) return 0;
  const int separator = data[0] < 240 ? 0 : data[0];
  int32_t offsets[4];
  for (int i = 0; i < 4; ++i) {
    int v = data[1 + 2 * i] | data[2 + 2 * i] << 8;
    offsets[i] = v == 0xFFFF ? -1 : v;
  }
  const std::string idx = Scratch() + "/nb.idx", lib = idx + ".lib";
  std::FILE* f = std::fopen(lib.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data + 9, 1, size - 9, f);
  std::fclose(f);
  f = std::fopen(idx.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(offsets, 4, 4, f);
  std::fclose(f);

  BookRecord record;
  std::memset(&record, 0, sizeof record);
  tq::RecordBook book(&record);
  Check(book.OpenIdx(idx.c_str()) == 4);
  Check(book.OpenLib(nullptr) == static_cast<int>(size - 9));
  record.separator = separator;
  for (int32_t offset : offsets) Cuts(book.lib(), offset, separator);

  std::vector<char> word(32), expl(98);
  for (int i = 0; i < 5; ++i) {
    int n = book.WordByNo(i, word.data());
    Check(i < 4 ? n >= 0 : n == -1);
    Check(book.Explanation(offsets[i % 4], expl.data()) <= 98);
  }

  // The rewrite keeps the words whose flag is 0; never more bytes than the
  // kept entries could hold.
  int32_t flags[4] = {data[0] & 1, data[0] & 2, data[0] & 4, 0};
  int32_t tags[104] = {};
  int r;
  {
    InScratch in_scratch;
    r = tq::Notebook(idx).KeepWords(&record, offsets, tags, flags, 4);
  }
  Check(record.libFile == 0);
  book.CloseIdx();
  if (r == 0) {
    f = std::fopen(lib.c_str(), "rb");
    Check(f != nullptr);
    std::fseek(f, 0, SEEK_END);
    Check(std::ftell(f) <= static_cast<long>(4 * (size - 9)) + 1);
    std::fclose(f);
  }
  return 0;
}
