// Drawing a long explanation with vcDrawLongText: a paragraph of mixed
// Chinese and English, 128 bytes to 5 KB, broken at a pane 300 pixels wide.
// Every line is found by measuring pieces of the remaining text through the
// font engine, so the time is in the measuring; it should grow with the
// number of lines, not with the square of the paragraph (measuring the whole
// rest and giving back a byte at a time would).
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <string>

#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

std::string Gbk(const std::string& utf8) {
  iconv_t cd = iconv_open("GBK", "UTF-8");
  std::string in = utf8, out(utf8.size() * 2 + 4, '\0');
  char* src = in.data();
  char* dst = out.data();
  size_t left = in.size(), room = out.size();
  iconv(cd, &src, &left, &dst, &room);
  iconv_close(cd);
  out.resize(out.size() - room);
  return out;
}

std::string Paragraph(int repeats) {
  std::string one = Gbk("我们学习English单词，the quick brown fox jumps over the lazy dog。中文和English混排的句子，"
                        "internationalization 是一个很长的词。");
  std::string text;
  for (int i = 0; i < repeats; ++i) text += one;
  return text;
}

void BM_DrawLongText(benchmark::State& state) {
  std::string text = Paragraph(static_cast<int>(state.range(0)));
  int dc = tqHost_CreateDC(320, 32);
  DrawTextObj obj{};
  obj.dc = dc;
  vcInitDrawTextObj(&obj, text.c_str());
  obj.width = 300;
  obj.lineHeight = 20;
  for (auto _ : state) {
    tqHost_ClearDrawLog(dc);
    vcDrawLongText(&obj);
    benchmark::DoNotOptimize(obj.height);
  }
  state.counters["bytes"] = static_cast<double>(text.size());
  state.counters["lines"] = obj.height / 20;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
  tqHost_DeleteDC(dc);
}
BENCHMARK(BM_DrawLongText)->Arg(1)->Arg(10)->Arg(40)->Unit(benchmark::kMillisecond);

}  // namespace
