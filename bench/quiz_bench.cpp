// Question banks of a realistic large size, 10,000 choice questions:
// compiling the text, reading any question by number (one seek, then the
// record held in memory), and writing an exam page of 100 questions and of
// the whole bank.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tqcomm2006.h"

namespace {

constexpr int kQuestions = 10000;

struct BankFixture {
  std::string dir, text, bank;
  int file = 0;

  BankFixture() {
    char tmpl[] = "/tmp/tqbench.XXXXXX";
    dir = mkdtemp(tmpl);
    text = dir + "/bank.txt";
    bank = dir + "/bank.dat";
    std::ofstream out(text, std::ios::binary);
    for (int i = 0; i < kQuestions; ++i) {
      out << "$ Question " << i << ": he _______ to school every day, and so do his friends.\r\n"
          << "A) go\r\nB) goes\r\nC) going\r\nD) gone\r\n#" << static_cast<char>('A' + i % 4) << "\r\n"
          << "DGR " << i % 5 << "\r\nKNO 01." << 100 + i % 900 << "\r\n"
          << "// \xd2\xbb\xb0\xe3\xcf\xd6\xd4\xda\xca\xb1 third person singular takes -s.\r\n\r\n";
    }
    out.close();
    vcChoiceQtFile_AddQtTextFile(bank.c_str(), text.c_str(), 1);
    file = vcChoiceQtFile_Open(bank.c_str(), "rb");
  }
  ~BankFixture() {
    vcChoiceQtFile_Close(file);
    if (std::system(("rm -rf " + dir).c_str()) != 0) std::fprintf(stderr, "left %s behind\n", dir.c_str());
  }
};

BankFixture& Fixture() {
  static BankFixture f;
  return f;
}

void BM_CompileBank(benchmark::State& state) {
  BankFixture& f = Fixture();
  std::string out = f.dir + "/compiled.dat";
  for (auto _ : state) benchmark::DoNotOptimize(vcChoiceQtFile_AddQtTextFile(out.c_str(), f.text.c_str(), 1));
  state.SetItemsProcessed(state.iterations() * kQuestions);
}
BENCHMARK(BM_CompileBank)->Unit(benchmark::kMillisecond);

// Any question by number: a seek and a read, as a front end jumps around.
void BM_ReadAnyQuestion(benchmark::State& state) {
  BankFixture& f = Fixture();
  unsigned n = 1;
  char comment[600];
  for (auto _ : state) {
    n = (n * 1103515245u + 12345u) % kQuestions;
    vcChoiceQtFile_GetComment(f.file, static_cast<int>(n), comment, 0);
    benchmark::DoNotOptimize(comment[0]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ReadAnyQuestion);

// The same question again: served from the record the handle holds.
void BM_ReadHeldQuestion(benchmark::State& state) {
  BankFixture& f = Fixture();
  for (auto _ : state) benchmark::DoNotOptimize(vcChoiceQtFile_GetDifficulty(f.file, 17));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ReadHeldQuestion);

void BM_ExamPage(benchmark::State& state) {
  BankFixture& f = Fixture();
  std::vector<int32_t> list = {static_cast<int32_t>(state.range(0))};
  for (int i = 0; i < state.range(0); ++i) list.push_back((i * 7919) % kQuestions);
  std::string page = f.dir + "/exam.htm";
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        vcChoiceQtFile_MakeHtml(f.file, page.c_str(), 1, 0, nullptr, list.data(), 1, 0));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ExamPage)->Arg(100)->Arg(kQuestions)->Unit(benchmark::kMillisecond);

}  // namespace
