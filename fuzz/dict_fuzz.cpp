// Fuzzes the dictionaries on hostile files: a corrupt index (any records,
// lengths and offsets beyond the library, words without a NUL) and a
// corrupt library (no "]", stray line ends), through every reader of the
// classic, expression, compact and mean-library forms and "vary.idx".
//
// Input: a selector byte, a key of up to 40 bytes ended by a NUL, two bytes
// for the index's share of the rest, then the index and the library. Output
// buffers are as large as the library promises to fill for a caller who
// sizes them by the library, so that a write past that is caught.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tqcomm2006.h"

namespace {

const std::string& Dir() {
  static const std::string dir = [] {
    std::string base = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string d = base + "/tq_dict_fuzz." + std::to_string(::getpid());
    std::string cmd = "mkdir -p " + d;
    if (std::system(cmd.c_str()) != 0) std::abort();
    return d;
  }();
  return dir;
}

std::string P(const char* name) { return Dir() + "/" + name; }

void Write(const char* name, const uint8_t* data, size_t size) {
  std::FILE* f = std::fopen(P(name).c_str(), "wb");
  if (f == nullptr) std::abort();
  if (size > 0) std::fwrite(data, 1, size, f);
  std::fclose(f);
}

void Classic(const std::string& key, size_t lib_size) {
  std::vector<char> work(lib_size + 1), out(lib_size * 7 * 13 + 4096), pron(lib_size + 1), mean(lib_size + 1);
  DictObject d;
  if (vcCmOpenDictDirect(&d, P("i.idx").c_str(), P("l.lib").c_str(), work.data()) != 1) return;
  const uint32_t all[7] = {6, 5, 4, 3, 2, 1, 0};
  for (int closest = 0; closest < 2; ++closest) {
    int r = closest ? vcCmSearchWordClosest(&d, key.c_str()) : vcCmSearchWord(&d, key.c_str());
    if (r == -1 || r == 0) continue;
    vcCmGetAllDetails(&d, out.data());
    for (int k = 0; k < 7; ++k) vcCmGetADetail(&d, out.data(), k);
    vcCmGetDetail(&d, out.data(), all, 7);
    vcCmGetDetail(&d, out.data(), all, 0);
    vcFillListWithEnglish(&d, 0);
    vcFillRelatedWordList(&d, 0, 0);
  }
  vcCmGetDictMeanAndPron(&d, key.c_str(), mean.data(), pron.data());
  vcCmGetDictMeanAndPronClosest(&d, key.c_str(), mean.data(), pron.data());
  char base[20];
  vcCmSearchOrignalWord(&d, key.c_str(), base);
  vcCmCloseDict(&d);
}

void Expressions(const std::string& key, size_t lib_size) {
  std::vector<char> out(lib_size * 2 + 4096), work(lib_size + 1);
  ExpDictObject e;
  vcInitExpDictObject(&e, P("i.idx").c_str(), P("l.lib").c_str(), work.data());
  if (vcCmOpenExpDict(&e) != 0) return;
  std::string k = key;
  k.resize(64, '\0');
  if (vcCmSearchExp(&e, &k[0]) == 1) {
    vcCmGetAllDetailExp(&e, out.data());
    vcCmGetADetailExp(&e, out.data(), 0);
    vcCmGetADetailExp(&e, out.data(), 1);
    const uint32_t both[2] = {2, 0};
    vcCmGetDetailExp(&e, out.data(), both, 2);
    vcFillListWithExp(&e, 0);
  }
  vcCmGetDictExpMean(&e, key.c_str(), out.data());
  std::string pattern = key.substr(0, 30);
  vcExpNoneExactSearch(&e, &pattern[0], 0, 0);
  vcCmCloseExpDict(&e);
}

void Compact(const std::string& key, size_t lib_size, bool own_buffer) {
  std::vector<char> work(lib_size + 1), out(lib_size + 1), mean(lib_size + 1), pron(lib_size + 1);
  int h = vcEcDict_Open(P("i.idx").c_str(), P("l.lib").c_str(), own_buffer ? nullptr : work.data());
  if (h < 0) return;
  for (int flags = 0; flags < 4; ++flags) {
    vcEcDict_Search(h, key.c_str(), flags & 1, flags >> 1);
    char word[64];
    vcEcDict_GetResultWord(h, word);
    vcEcDict_GetMeanOrPron(h, mean.data(), pron.data());
    vcEcDict_GetAllDetails(h, out.data());
    if (!own_buffer) vcEcDict_GetAllDetails(h, nullptr);
    for (int k = 0; k < 7; ++k) {
      vcEcDict_GetOneDetail(h, out.data(), k);
      vcEcDict_GetOneDetail(h, nullptr, k);
      vcEcDict_GetDetailLength(h, k);
    }
    uint32_t lengths[7];
    vcEcDict_GetDetailLengthArray(h, lengths);
    vcEcDict_GetWordGrade(h);
    vcEcDict_FillListWithEnglish(h, 0);
    vcEcDict_FillRelatedWordList(h, 0, 0);
  }
  // The scan lower-cases the pattern in place, which can move its range:
  // each call gets the caller's pattern afresh.
  std::string pattern = key.substr(0, 30);
  int need = vcEcDict_WildSearch(h, &pattern[0], nullptr, 0, 0);
  if (need >= 0) {
    std::vector<char> words(static_cast<size_t>(need) + 1);
    pattern = key.substr(0, 30);
    vcEcDict_WildSearch(h, &pattern[0], words.data(), 0, 0);
  }
  vcEcDict_Close(h);
}

void MeanAndVary(const std::string& key) {
  MeanLibObject m;
  if (vcCmOpenMeanLib(&m, P("i.idx").c_str()) == 1) {
    char mean[224], pron[80];
    vcCmGetMeanLibMean(&m, key.c_str(), mean);
    vcCmGetMeanLibMeanAndPron(&m, key.c_str(), mean, pron);
    vcCmCloseMeanLib(&m);
  }
  // "vary.idx" is read from the working directory.
  std::rename(P("i.idx").c_str(), P("vary.idx").c_str());
  char cwd[4096];
  if (::getcwd(cwd, sizeof cwd) == nullptr || ::chdir(Dir().c_str()) != 0) std::abort();
  char forms[81];
  vcFindVary(key.c_str(), forms);
  if (::chdir(cwd) != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Dir();
  if (size < 4) return 0;
  uint8_t selector = data[0];
  size_t at = 1;
  std::string key;
  while (at < size && data[at] != 0 && key.size() < 40) key.push_back(static_cast<char>(data[at++]));
  if (at < size && data[at] == 0) ++at;
  if (size - at < 2) return 0;
  size_t share = static_cast<size_t>(data[at]) | static_cast<size_t>(data[at + 1]) << 8;
  at += 2;
  size_t rest = size - at;
  size_t idx_size = rest == 0 ? 0 : share % (rest + 1);
  Write("i.idx", data + at, idx_size);
  Write("l.lib", data + at + idx_size, rest - idx_size);
  size_t lib_size = rest - idx_size;
  switch (selector % 5) {
    case 0: Classic(key, lib_size); break;
    case 1: Expressions(key, lib_size); break;
    case 2: Compact(key, lib_size, false); break;
    case 3: Compact(key, lib_size, true); break;
    default: MeanAndVary(key); break;
  }
  return 0;
}
