#include "test_util.h"

#include <iconv.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace tqtest {

namespace {
// The tool the tests run stops when a command takes an option that its
// --help does not name.
const bool kCheckToolHelp = setenv("TQCOMM_CHECK_HELP", "1", 1) == 0;
}  // namespace

std::string G(const std::string& utf8) {
  iconv_t cd = iconv_open("GBK", "UTF-8");
  if (cd == reinterpret_cast<iconv_t>(-1)) return utf8;
  std::string in = utf8;
  std::string out(in.size() * 2 + 4, '\0');
  char* src = in.data();
  size_t src_left = in.size();
  char* dst = out.data();
  size_t dst_left = out.size();
  iconv(cd, &src, &src_left, &dst, &dst_left);
  iconv_close(cd);
  out.resize(out.size() - dst_left);
  return out;
}

std::string ReadFile(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  std::stringstream ss;
  ss << f.rdbuf();
  return ss.str();
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream f(path, std::ios::binary | std::ios::trunc);
  f.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<int32_t> ReadInts(const std::string& path) {
  std::string bytes = ReadFile(path);
  std::vector<int32_t> out;
  for (size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(bytes.data() + i);
    out.push_back(static_cast<int32_t>(p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24));
  }
  return out;
}

std::string Ints(std::initializer_list<int32_t> values) {
  std::string out;
  for (int32_t v : values) {
    uint32_t u = static_cast<uint32_t>(v);
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<char>((u >> (8 * i)) & 0xFF));
  }
  return out;
}

int Run(const std::string& command, std::string* out) {
  FILE* p = popen(command.c_str(), "r");
  if (p == nullptr) return -1;
  char buf[4096];
  size_t n;
  if (out) out->clear();
  while ((n = fread(buf, 1, sizeof buf, p)) > 0) {
    if (out) out->append(buf, n);
  }
  int status = pclose(p);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void TempDirTest::SetUp() {
  char tmpl[] = "/tmp/tqtest.XXXXXX";
  char* made = mkdtemp(tmpl);
  ASSERT_NE(made, nullptr);
  dir_ = made;
  char cwd[4096];
  old_cwd_ = getcwd(cwd, sizeof cwd) ? cwd : "/";
  ASSERT_EQ(chdir(dir_.c_str()), 0);
}

void TempDirTest::TearDown() {
  if (chdir(old_cwd_.c_str()) != 0) {
    // nothing more to do: the folder is left behind
  }
  std::string cmd = "rm -rf '" + dir_ + "'";
  if (system(cmd.c_str()) != 0) {
    // a leftover scratch folder is harmless
  }
}

}  // namespace tqtest
