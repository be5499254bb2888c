#include "platform/env.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <ctime>
#include <mutex>

#include "platform/devices.h"

namespace tq::env {
namespace {

std::mutex g_fault_mutex;
std::function<bool(const std::string&, const char*)> g_open_fault;

}  // namespace

std::string NativePath(const char* path) {
  if (path == nullptr) return std::string();
  std::string out(path);
  // A drive letter stands for the root of the one file system, or for the
  // folder of a CD drive.
  if (out.size() >= 2 && std::isalpha(static_cast<unsigned char>(out[0])) && out[1] == ':') {
    std::string root;
    bool cd = host::CdDriveFolder(out[0], &root);
    out.erase(0, 2);
    if (out.empty() || (out[0] != '\\' && out[0] != '/')) out.insert(out.begin(), '/');
    if (cd) {
      while (!root.empty() && root.back() == '/') root.pop_back();
      out.insert(0, root);
    }
  }
  for (char& c : out) {
    if (c == '\\') c = '/';
  }
  return out;
}

std::FILE* Open(const char* path, const char* mode) {
  if (path == nullptr || mode == nullptr) return nullptr;
  std::string native = NativePath(path);
  {
    std::lock_guard<std::mutex> lock(g_fault_mutex);
    if (g_open_fault && g_open_fault(native, mode)) {
      errno = EIO;
      return nullptr;
    }
  }
  return std::fopen(native.c_str(), mode);
}

bool Exists(const char* path) {
  struct stat st;
  return path != nullptr && ::stat(NativePath(path).c_str(), &st) == 0;
}

bool IsDirectory(const char* path) {
  struct stat st;
  return path != nullptr && ::stat(NativePath(path).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

int64_t FileSize(const char* path) {
  struct stat st;
  if (path == nullptr || ::stat(NativePath(path).c_str(), &st) != 0) return -1;
  return static_cast<int64_t>(st.st_size);
}

bool CopyFile(const char* from, const char* to) {
  std::FILE* in = Open(from, "rb");
  if (in == nullptr) return false;
  std::FILE* out = Open(to, "wb");
  if (out == nullptr) {
    std::fclose(in);
    return false;
  }
  char buf[64 * 1024];
  bool ok = true;
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, in)) > 0) {
    if (std::fwrite(buf, 1, n, out) != n) {
      ok = false;
      break;
    }
  }
  if (std::ferror(in)) ok = false;
  std::fclose(in);
  if (std::fclose(out) != 0) ok = false;
  return ok;
}

bool Remove(const char* path) {
  return path != nullptr && std::remove(NativePath(path).c_str()) == 0;
}

bool Rename(const char* from, const char* to) {
  return from != nullptr && to != nullptr &&
         std::rename(NativePath(from).c_str(), NativePath(to).c_str()) == 0;
}

int64_t NowSeconds() { return static_cast<int64_t>(std::time(nullptr)); }

void SetOpenFaultForTesting(std::function<bool(const std::string&, const char*)> fail) {
  std::lock_guard<std::mutex> lock(g_fault_mutex);
  g_open_fault = std::move(fail);
}

}  // namespace tq::env
