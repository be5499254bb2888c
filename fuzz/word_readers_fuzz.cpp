// Fuzzes the two word-list readers on hostile files: the English text
// reader in both layouts and the word file reader over a caller's buffer.
//
// Input: one byte for the word file reader's buffer size (1 to 256), then
// the file's bytes. Output buffers are as large as each reader promises to
// fill, so that a write past the promise is caught.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "core/word_text.h"

namespace {

std::string ScratchPath() {
  // Memory-backed when the machine has it: the file is rewritten per input.
  static const std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  static const std::string path = dir + "/tq_word_fuzz." + std::to_string(::getpid()) + ".txt";
  return path;
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  uint32_t bufferSize = static_cast<uint32_t>(data[0]) + 1;
  const std::string path = ScratchPath();
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data + 1, 1, size - 1, f);
  std::fclose(f);

  // Each item costs at least one line end or the end of the file, so the
  // number of items is bounded by the input.
  const size_t limit = size + 2;
  for (bool split : {false, true}) {
    tq::EnglishTextFile reader(split);
    Check(reader.Open(path.c_str()));
    std::vector<char> english(tq::EnglishTextFile::kLineBuffer), chinese(tq::EnglishTextFile::kLineBuffer);
    size_t items = 0;
    while (reader.NextItem(english.data(), chinese.data()) == 1) {
      Check(++items <= limit);
      Check(std::strlen(english.data()) < tq::EnglishTextFile::kLineBuffer);
    }
    Check(english[0] == '\0' && chinese[0] == '\0');
  }

  std::vector<char> buffer(bufferSize), word(bufferSize), mean(bufferSize);
  WordFileObj obj;
  Check(tq::InitWordFile(&obj, path.c_str(), buffer.data(), bufferSize) == 1);
  size_t calls = 0;
  int r;
  // The seek-back may read a line twice, never more.
  while ((r = tq::NextWordFromWordFile(&obj, word.data(), mean.data())) != -1) {
    Check(++calls <= 2 * limit);
    Check(r == 0 || static_cast<size_t>(r) == std::strlen(word.data()));
  }
  Check(tq::CloseLeadingStream(&obj.hFile) == 0);
  return 0;
}
