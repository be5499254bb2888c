// Dictionaries for the tests, made by the tool from tab-separated sources
// in the scratch folder.
#pragma once

#include <string>
#include <vector>

#include "test_util.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqtest {

// One source line: word, pronunciation, meaning, explanation, samples,
// phrases, forms, root, related, grade (missing fields are empty).
inline std::string Entry(std::vector<std::string> fields) {
  std::string line;
  for (size_t i = 0; i < fields.size(); ++i) line += (i ? "\t" : "") + fields[i];
  return line;
}

class DictTest : public TempDirTest {
 protected:
  // The dictionaries for these source lines, in the folder given.
  void Build(const std::vector<std::string>& lines, const std::string& folder = ".") {
    std::string src;
    for (const std::string& l : lines) src += l + "\n";
    WriteFile("src.txt", src);
    std::string out;
    ASSERT_EQ(tqtest::Run(std::string(TQCOMM_BIN) + " dict build src.txt -o " + folder + " --verbatim 2>&1", &out), 0)
        << out;
  }
  // The classic word dictionary, open in d_ (closed with the test).
  void OpenClassic() {
    ASSERT_EQ(vcCmOpenDictDirect(&d_, "dictlib\\hmorec.idx", "dictlib\\hmorec.lib", work_), 1);
  }
  // The expression dictionary, open in e_ (closed with the test).
  void OpenExp() {
    vcInitExpDictObject(&e_, "dictlib\\hmorexp.idx", "dictlib\\hmorexp.lib", work_);
    ASSERT_EQ(vcCmOpenExpDict(&e_), 0);  // 0 is success here
  }
  std::string Word(const DictObject& d) { return std::string(d.word, strnlen(d.word, 20)); }
  // A host window (list box or progress bar) destroyed with the test.
  int Window() { return windows_.emplace_back(tqHost_CreateWindow("", 1, 1)); }
  void TearDown() override {
    vcCmCloseDict(&d_);
    vcCmCloseExpDict(&e_);
    for (int w : windows_) tqHost_DestroyWindow(w);
    TempDirTest::TearDown();
  }
  DictObject d_ = {};
  ExpDictObject e_ = {};
  char work_[4096] = {0};
  std::vector<int> windows_;
};

}  // namespace tqtest
