// Fuzzes the usage-test reader on any file: the count line, the questions,
// reads past the end, into host windows whose texts must stay within one
// read.
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/host.h"
#include "quiz/usage_test.h"
#include "fuzz_util.h"

using fuzzutil::Check;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static int windows[4] = {tq::host::CreateWindow("q", 1, 1), tq::host::CreateWindow("a", 1, 1),
                           tq::host::CreateWindow("b", 1, 1), tq::host::CreateWindow("c", 1, 1)};
  const std::string path = fuzzutil::Scratch("usage.txt");
  fuzzutil::WriteAll(path, data, size);
  tq::quiz::UsageTest& test = tq::quiz::TheUsageTest();
  int count = test.Open(path.c_str());
  // A few more questions than the file says it holds, but not forever.
  int asks = count < 0 ? 0 : count > 40 ? 40 : count + 2;
  for (int i = 0; i < asks; ++i) {
    int answer = test.Next(windows[0], windows + 1);
    Check((answer >= 0 && answer <= 2) || answer == windows[0]);
    for (int w : windows) {
      std::string text;
      Check(tq::host::GetWindowText(w, &text) && text.size() <= tq::quiz::UsageTest::kLineRead);
    }
  }
  test.Close();
  return 0;
}
