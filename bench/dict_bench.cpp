// Look-ups on the compact dictionary built from WordNet (about 147,000
// entries), each beside the floor: the same look-ups by bisection on a copy
// of the index loaded into memory, with the found record deciphered.
//
// The dictionary is made at start-up with the tool (tqcomm dict build) in
// $TQ_BENCH_DIR, default /tmp/tqcomm-bench-wordnet, unless it is there.
// BM_Ratio_* report the file look-up's time over the floor's as "ratio".
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "dict/cipher.h"
#include "dict/search.h"
#include "dict/word_forms.h"
#include "tqcomm2006.h"

namespace {

struct WordNetDict {
  std::string dir;
  int handle = -1;
  std::string index;  // the floor's copy of the index
  long records = 0;
  std::vector<std::string> present, absent, inflected;

  WordNetDict() {
    const char* env = std::getenv("TQ_BENCH_DIR");
    dir = env && *env ? env : "/tmp/tqcomm-bench-wordnet";
    std::string idx = dir + "/dictlib/vlkdictec.idx";
    if (::access(idx.c_str(), R_OK) != 0) {
      char exe[4096];
      ssize_t n = ::readlink("/proc/self/exe", exe, sizeof exe - 1);
      std::string tool = n > 0 ? std::string(exe, static_cast<size_t>(n)) : std::string("./dict_bench");
      tool = tool.substr(0, tool.rfind('/')) + "/tqcomm";
      std::string cmd = tool + " dict build /usr/share/wordnet -o " + dir + " >/dev/null";
      if (std::system(cmd.c_str()) != 0) {
        std::fprintf(stderr, "dict_bench: could not build %s (is wordnet-base installed?)\n", dir.c_str());
        std::exit(1);
      }
    }
    handle = vcEcDict_Open(idx.c_str(), (dir + "/dictlib/vlkdictec.lib").c_str(), nullptr);
    std::ifstream in(idx, std::ios::binary);
    index.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    records = static_cast<long>(index.size() / 96);
    std::mt19937 rng(20060101);
    while (present.size() < 4096) {
      std::string w = WordAt(static_cast<long>(rng() % static_cast<unsigned>(records)));
      present.push_back(w);
      // Absent words that fall between entries: a letter added.
      absent.push_back(w + "qx");
      // Inflected forms that only the base-form rules can find.
      const char* suffixes[] = {"s", "ed", "ing", "es", "er"};
      std::string f = w + suffixes[rng() % 5];
      if (w.find(' ') == std::string::npos && Exact(f.c_str()) < 0 &&
          tq::dict::OriginalFormChain(f.c_str(), [this](const char* k) { return Exact(k); }) >= 0) {
        inflected.push_back(f);
      }
    }
  }
  std::string WordAt(long i) const { return std::string(index.c_str() + i * 96); }
  // The floor's lookups: the library's own walk, on the copy in memory.
  long Exact(const char* key) const {
    tq::dict::MappedRecords r(reinterpret_cast<const unsigned char*>(index.data()), index.size());
    return tq::dict::SearchExact(r, key, 96, 64);
  }
  long Closest(const char* key) const {
    tq::dict::MappedRecords r(reinterpret_cast<const unsigned char*>(index.data()), index.size());
    int32_t found;
    return tq::dict::SearchClosest(r, &found, key, 96, 64);
  }
  int Decode(long at) const {
    unsigned char record[96];
    std::memcpy(record, index.data() + at, 96);
    return tq::dict::DecodeEcIdx(record, static_cast<uint32_t>(at));
  }
};

WordNetDict& Dict() {
  static WordNetDict d;
  return d;
}

enum Kind { kExact, kClosest, kBaseForm };

const std::vector<std::string>& Words(Kind k) {
  return k == kExact ? Dict().present : k == kClosest ? Dict().absent : Dict().inflected;
}

int FileLookup(Kind k, const std::string& w) {
  return vcEcDict_Search(Dict().handle, w.c_str(), k == kBaseForm, k == kClosest);
}

int MemoryLookup(Kind k, const std::string& w) {
  const WordNetDict& d = Dict();
  long at = k == kClosest ? d.Closest(w.c_str()) : d.Exact(w.c_str());
  if (at < 0 && k == kBaseForm) {
    at = tq::dict::OriginalFormChain(w.c_str(), [&d](const char* key) { return d.Exact(key); });
  }
  return at < 0 ? -1 : d.Decode(at);
}

void Run(benchmark::State& state, Kind k, bool file) {
  const std::vector<std::string>& words = Words(k);
  size_t i = 0;
  for (auto _ : state) {
    const std::string& w = words[i++ % words.size()];
    benchmark::DoNotOptimize(file ? FileLookup(k, w) : MemoryLookup(k, w));
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

double NanosPerLookup(Kind k, bool file, int rounds) {
  const std::vector<std::string>& words = Words(k);
  auto start = std::chrono::steady_clock::now();
  for (int r = 0; r < rounds; ++r) {
    for (const std::string& w : words) benchmark::DoNotOptimize(file ? FileLookup(k, w) : MemoryLookup(k, w));
  }
  std::chrono::duration<double, std::nano> t = std::chrono::steady_clock::now() - start;
  return t.count() / (static_cast<double>(rounds) * static_cast<double>(words.size()));
}

void Ratio(benchmark::State& state, Kind k) {
  double file = 0, memory = 0;
  for (auto _ : state) {
    file = NanosPerLookup(k, true, 20);
    memory = NanosPerLookup(k, false, 20);
  }
  state.counters["file_ns"] = file;
  state.counters["memory_ns"] = memory;
  state.counters["ratio"] = file / memory;
}

void BM_Exact_File(benchmark::State& s) { Run(s, kExact, true); }
void BM_Exact_Memory(benchmark::State& s) { Run(s, kExact, false); }
void BM_Closest_File(benchmark::State& s) { Run(s, kClosest, true); }
void BM_Closest_Memory(benchmark::State& s) { Run(s, kClosest, false); }
void BM_BaseForm_File(benchmark::State& s) { Run(s, kBaseForm, true); }
void BM_BaseForm_Memory(benchmark::State& s) { Run(s, kBaseForm, false); }
// For comparison: the classic dictionary reads its index through stdio, a
// seek and a read per step.
void BM_Exact_ClassicStdio(benchmark::State& state) {
  static char work[70000];
  DictObject d;
  std::string dir = Dict().dir + "/dictlib/";
  vcCmOpenDictDirect(&d, (dir + "hmorec.idx").c_str(), (dir + "hmorec.lib").c_str(), work);
  const std::vector<std::string>& words = Words(kExact);
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(vcCmSearchWord(&d, words[i++ % words.size()].c_str()));
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
  vcCmCloseDict(&d);
}
void BM_Ratio_Exact(benchmark::State& s) { Ratio(s, kExact); }
void BM_Ratio_Closest(benchmark::State& s) { Ratio(s, kClosest); }
void BM_Ratio_BaseForm(benchmark::State& s) { Ratio(s, kBaseForm); }

BENCHMARK(BM_Exact_File);
BENCHMARK(BM_Exact_Memory);
BENCHMARK(BM_Closest_File);
BENCHMARK(BM_Closest_Memory);
BENCHMARK(BM_BaseForm_File);
BENCHMARK(BM_BaseForm_Memory);
BENCHMARK(BM_Exact_ClassicStdio);
BENCHMARK(BM_Ratio_Exact)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Ratio_Closest)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Ratio_BaseForm)->Iterations(3)->Unit(benchmark::kMillisecond);

void BM_WordCounts(benchmark::State& state) {
  for (auto _ : state) {
  }
  state.counters["entries"] = static_cast<double>(Dict().records);
  state.counters["inflected"] = static_cast<double>(Dict().inflected.size());
}
BENCHMARK(BM_WordCounts)->Iterations(1);

}  // namespace
