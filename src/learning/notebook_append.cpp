// Appending to a notebook: the one path of the family that tells the user,
// in a message box, what went wrong.
#include <cstdio>
#include <string>

#include "core/binary_io.h"
#include "learning/book.h"
#include "learning/notebook.h"
#include "platform/env.h"
#include "platform/host.h"

namespace tq {
namespace {

int Tell(const char* text) {
  host::MessageBox(0, text, Notebook::kTitle, host::kMbOk);
  return -1;
}

bool Put(std::FILE* f, const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
}

}  // namespace

int Notebook::Append(const char* word, const char* explanation, const char* pronunciation, bool first_line_only) {
  // An empty library is taken as new: every entry needs the 0 before it.
  bool fresh = env::FileSize(lib_.c_str()) <= 0;
  std::FILE* lib = env::Open(lib_.c_str(), "a+b");
  if (lib == nullptr) return Tell(kLibOpenFailed);
  std::FILE* idx = env::Open(idx_.c_str(), "a+b");
  if (idx == nullptr) {
    std::fclose(lib);
    return Tell(kIdxOpenFailed);
  }
  auto fail = [&](const char* text) {
    std::fclose(lib);
    std::fclose(idx);
    return Tell(text);
  };

  int32_t offset = 0;
  std::string entry;
  if (fresh) {
    entry.push_back(static_cast<char>(Book::kSeparator));
  } else {
    long length = FileLength(lib);
    if (length <= 0) return fail(kLibWriteFailed);
    offset = static_cast<int32_t>(length - 1);  // the 0 that ends the last entry
  }
  entry += word ? word : "";
  entry += pronunciation ? pronunciation : "";
  entry += ExplanationToStore(explanation, first_line_only);
  entry.push_back(static_cast<char>(Book::kSeparator));
  if (!Put(lib, entry) || std::fflush(lib) != 0) return fail(kLibWriteFailed);
  if (!WriteI32(idx, offset) || std::fflush(idx) != 0) return fail(kIdxWriteFailed);
  std::fclose(lib);
  std::fclose(idx);
  if (AppendBlankTags(1) != 0) Tell(kTagWriteFailed);  // the word is in all the same
  return 0;
}

int Notebook::AppendBlankTags(int n) {
  bool fresh = env::FileSize(tag_.c_str()) <= 0;
  std::FILE* f = env::Open(tag_.c_str(), "ab");
  if (f == nullptr) return -1;
  bool ok = (!fresh || WriteZeros(f, kTagHeaderInts)) && WriteZeros(f, n);
  return (std::fclose(f) == 0 && ok) ? 0 : -1;
}

}  // namespace tq
