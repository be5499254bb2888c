// Helpers shared by the tests: a scratch folder per test (also the working
// directory, since several edits put fixed-name temporary files there), GBK
// text from readable source, and whole-file reads and writes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqtest {

// GBK bytes of a UTF-8 literal, so tests can be written in readable Chinese.
std::string G(const std::string& utf8);

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);
std::vector<int32_t> ReadInts(const std::string& path);
std::string Ints(std::initializer_list<int32_t> values);

// Runs a shell command; its exit status, with standard output in *out.
int Run(const std::string& command, std::string* out);

// A fresh folder for each test, made the working directory for its length.
class TempDirTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  std::string Path(const std::string& name) const { return dir_ + "/" + name; }
  const std::string& dir() const { return dir_; }

 private:
  std::string dir_;
  std::string old_cwd_;
};

}  // namespace tqtest
