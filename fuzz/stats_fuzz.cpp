// Fuzzes the figures of tqcomm stats on a hostile history file: the
// wizard's selections the forecast asks for day by day, and the tool's own
// reading of the records (answer days, shares, leeches) and its text.
//
// Input: two bytes of today's day number (from 2 up), one byte of forecast
// days, seven bytes of curve steps, then the history file's bytes.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "stats_report.h"

// What the report's sources take from the rest of the tool.
namespace tqcomm {
std::string ForTerminal(const std::string& gbk) { return gbk; }
std::string DataDir() { return "."; }
std::string SampleDir() { return "."; }
bool TakeOption(Args*, const std::string&, std::string*) { return false; }
int ImportWordList(const std::string&, const std::string&) { return 1; }
}  // namespace tqcomm

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 10) return 0;
  static const std::string path = "/tmp/stats_fuzz." + std::to_string(getpid()) + ".his";
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data + 10, 1, size - 10, f);
  std::fclose(f);

  tqcomm::StatsInput in;
  in.history = path;
  in.day = 2 + (data[0] | data[1] << 8);
  in.days = 1 + data[2] % 40;
  int32_t at = 0;
  for (int i = 0; i < 7; ++i) in.curve[i] = at += data[3 + i] % 40;
  tqcomm::StatsReport report;
  std::string error;
  if (tqcomm::GatherStats(in, &report, &error)) {
    std::string text = tqcomm::FormatStats(in, report);
    if (text.empty()) std::abort();
  }
  return 0;
}
