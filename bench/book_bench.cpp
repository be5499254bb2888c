// Reading words by number from a 10,000-word book, and the floor beside it:
// the same entries read straight from a copy of the library in memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tqcomm2006.h"

namespace {

constexpr int kWords = 10000;

struct BookFixture {
  std::string dir;
  std::string idx;
  int book = 0;

  BookFixture() {
    char tmpl[] = "/tmp/tqbench.XXXXXX";
    dir = mkdtemp(tmpl);
    idx = dir + "/bench.idx";
    book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
    vcCOrvexBook_OpenLib(book, "ab");
    for (int i = 0; i < kWords; ++i) {
      std::string word = "word" + std::to_string(i);
      vcCOrvexBook_AppendWord(book, 1, word.c_str(), "\xc4\xdc\xb9\xbb\xb5\xc4 adj. a meaning of some length",
                              "w3:d", "first extra", "second extra", 0);
    }
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_OpenIdx(book, "rb");
    vcCOrvexBook_OpenLib(book, "rb");
  }
  ~BookFixture() {
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    std::string cmd = "rm -rf " + dir;
    if (std::system(cmd.c_str()) != 0) std::fprintf(stderr, "left %s behind\n", dir.c_str());
  }
};

BookFixture& Fixture() {
  static BookFixture f;
  return f;
}

void BM_GetWordByNo(benchmark::State& state) {
  BookFixture& f = Fixture();
  char word[256], expl[4096], pron[4096], e1[4096], e2[4096];
  int32_t cls = 0;
  unsigned no = 12345;
  for (auto _ : state) {
    no = (no * 1103515245u + 12345u) % kWords;
    vcCOrvexBook_GetWordByNo(f.book, static_cast<int>(no), word, expl, pron, e1, e2, &cls);
    benchmark::DoNotOptimize(word[0]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetWordByNo);

void BM_GetWordByNoWordOnly(benchmark::State& state) {
  BookFixture& f = Fixture();
  char word[256];
  unsigned no = 777;
  for (auto _ : state) {
    no = (no * 1103515245u + 12345u) % kWords;
    vcCOrvexBook_GetWordByNo(f.book, static_cast<int>(no), word, nullptr, nullptr, nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(word[0]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetWordByNoWordOnly);

}  // namespace
