// A 5,000-word notebook as a front end's list uses it: words and
// explanations read through the record's fixed windows, beside the word
// book class reading whole entries; a row painted into a host surface; and
// appending one word.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

constexpr int kWords = 5000;

struct NotebookFixture {
  std::string dir, idx;
  BookRecord record;
  std::vector<int32_t> offsets = std::vector<int32_t>(kWords);
  int book = 0;
  int dc = 0;

  NotebookFixture() {
    char tmpl[] = "/tmp/tqbench.XXXXXX";
    dir = mkdtemp(tmpl);
    idx = dir + "/notebook.idx";
    for (int i = 0; i < kWords; ++i) {
      std::string word = "word" + std::to_string(i);
      vcFullAppendNotebook(idx.c_str(), word.c_str(), "{03}\xc4\xdc\xb9\xbb\xb5\xc4 adj. a meaning of some length",
                           "[w3:d]", 0);
    }
    std::memset(&record, 0, sizeof record);
    vcOpenBookIdxAndReturnNum(&record, idx.c_str());
    vcOpenBookLib(&record, nullptr);
    vcReadBookIndex(&record, offsets.data(), kWords);
    book = vcCOrvexBook_New();
    vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
    vcCOrvexBook_OpenIdx(book, "rb");
    vcCOrvexBook_OpenLib(book, "rb");
    dc = tqHost_CreateDC(600, 24);
  }
  ~NotebookFixture() {
    vcCloseBookIdx(&record);
    vcCloseBookLib(&record);
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_CloseLib(book);
    vcCOrvexBook_Delete(book);
    tqHost_DeleteDC(dc);
    std::string cmd = "rm -rf " + dir;
    if (std::system(cmd.c_str()) != 0) std::fprintf(stderr, "left %s behind\n", dir.c_str());
  }
  int32_t Next(unsigned* seed) {
    *seed = *seed * 1103515245u + 12345u;
    return offsets[(*seed >> 8) % kWords];
  }
};

NotebookFixture& Fixture() {
  static NotebookFixture f;
  return f;
}

void BM_RecordWordAndExplanation(benchmark::State& state) {
  NotebookFixture& f = Fixture();
  char word[32], expl[98];
  unsigned seed = 1;
  for (auto _ : state) {
    int32_t at = f.Next(&seed);
    vcGetEnglishWordFromBook(&f.record, at, word);
    vcGetExplainFromBook(&f.record, at, expl);
    benchmark::DoNotOptimize(expl[0]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RecordWordAndExplanation);

// The same words through the word book class, which parses whole entries.
void BM_BookClassWordAndExplanation(benchmark::State& state) {
  NotebookFixture& f = Fixture();
  char word[256], expl[4096];
  unsigned seed = 1;
  for (auto _ : state) {
    int32_t at = f.Next(&seed);
    vcCOrvexBook_GetWord(f.book, &at, word, expl, nullptr, nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(expl[0]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BookClassWordAndExplanation);

// One list row: word, pronunciation in its own font, explanation, lines.
void BM_PaintRow(benchmark::State& state) {
  NotebookFixture& f = Fixture();
  unsigned seed = 1;
  for (auto _ : state) {
    int32_t at = f.Next(&seed);
    vcDispWord(&f.record, at, f.dc, 4, 3);
    vcDispPronun(&f.record, at, f.dc, 150, 3);
    benchmark::DoNotOptimize(vcDispExplain(&f.record, at, f.dc, 290, 3));
    tqHost_ClearDrawLog(f.dc);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PaintRow);

// One append: library, index and tag file, each opened and closed.
void BM_Append(benchmark::State& state) {
  NotebookFixture& f = Fixture();
  std::string idx = f.dir + "/grow.idx";
  for (auto _ : state) vcFullAppendNotebook(idx.c_str(), "word", "meaning", "[w3:d]", 0);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Append);

}  // namespace
