// Fuzzes the sound library lookup and extract on hostile index files: every
// answer is a whole record's position inside the file whose key is the one
// asked for, and an extract writes exactly the record's length.
//
// Input: one byte of flags (bit 0: a sentence library, scrambled), then the
// index file's bytes. A data file of 64 bytes stands beside it under the
// name "d.dat".
#include <cstring>
#include <string>

#include "sound/sound_library.h"
#include "sound_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const bool scrambled = (data[0] & 1) != 0;
  const std::string index = Scratch("lib.idx"), root = Scratch("root"), out = Scratch("out");
  if (!WriteInput(index, data, size, 1)) return 0;
  const size_t length = size - 1;
  static const bool made = [] {
    std::string dir = Scratch("root");
    Check(std::system(("mkdir -p '" + dir + "'").c_str()) == 0);
    std::FILE* f = std::fopen((dir + "/d.dat").c_str(), "wb");
    for (int i = 0; i < 64; ++i) std::fputc(i, f);
    std::fclose(f);
    return true;
  }();
  (void)made;

  // The keys to ask: a few of our own, and each record's own key.
  std::string keys[8] = {"", "a", "zzzz", std::string(70, 'k'), "\xFF\xFE"};
  int count = 5;
  for (size_t at = 1; at + 64 <= size && count < 8; at += 96 * 3) {
    const char* key = reinterpret_cast<const char*>(data + at);
    keys[count++] = std::string(key, strnlen(key, 64));
  }
  std::FILE* f = std::fopen(index.c_str(), "rb");
  for (int i = 0; i < count; ++i) {
    SndLibRecord found;
    const long at = tq::sound::LookupSndKey(f, keys[i].c_str(), &found);
    if (at < 0) continue;
    Check(at % 96 == 0 && static_cast<size_t>(at) + 96 <= length);
    char key[64];
    std::memcpy(key, found.key, 64);
    key[63] = '\0';
    Check(tq::sound::FoldSndKey(key) == tq::sound::FoldSndKey(keys[i].c_str()));

    // Copy out only what is small: a hostile length would write gigabytes.
    const uint32_t position = static_cast<uint32_t>(at);
    const uint32_t bytes = scrambled ? found.length ^ position : found.length;
    tq::sound::SndLib lib;
    Check(lib.Open(index.c_str(), root.c_str()) == 1);
    Check(lib.Extract(keys[i].c_str(), out.c_str(), false, scrambled, true) == tq::sound::kSndFound);
    if (bytes > 4096) continue;
    const int got = lib.Extract(keys[i].c_str(), out.c_str(), false, scrambled, false);
    if (got == -1) continue;
    Check(got == (found.isWave != 0 ? 1 : 2));
    const std::string target = out + (got == 1 ? ".wav" : ".mp3");
    std::FILE* t = std::fopen(target.c_str(), "rb");
    Check(t != nullptr);
    std::fseek(t, 0, SEEK_END);
    Check(std::ftell(t) == static_cast<long>(bytes));
    std::fclose(t);
    std::remove(target.c_str());
  }
  std::fclose(f);
  return 0;
}
