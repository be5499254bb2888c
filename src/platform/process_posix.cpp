#include "platform/process.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace tq::platform {
namespace {

bool IsExecutableFile(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

int FromErrno(int error) {
  switch (error) {
    case ENOENT: return kStartFileNotFound;
    case ENOTDIR: return kStartPathNotFound;
    case EACCES:
    case ENOEXEC:
    case EISDIR:
    case ELOOP: return kStartBadFormat;
    default: return kStartOutOfResources;
  }
}

// Reads an errno the grandchild sends when its exec fails; 0 when the pipe
// closes without one, since the exec closes it on success.
int ReadChildError(int fd) {
  int error = 0;
  ssize_t n;
  do {
    n = ::read(fd, &error, sizeof error);
  } while (n < 0 && errno == EINTR);
  return n == static_cast<ssize_t>(sizeof error) ? error : 0;
}

}  // namespace

std::string FindProgram(const std::string& native) {
  if (native.empty()) return std::string();
  if (native.find('/') != std::string::npos) return IsExecutableFile(native) ? native : std::string();
  const char* path = std::getenv("PATH");
  std::string dirs = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
  size_t start = 0;
  while (start <= dirs.size()) {
    size_t end = dirs.find(':', start);
    if (end == std::string::npos) end = dirs.size();
    std::string dir = dirs.substr(start, end - start);
    std::string candidate = (dir.empty() ? std::string(".") : dir) + "/" + native;
    if (IsExecutableFile(candidate)) return candidate;
    start = end + 1;
  }
  return std::string();
}

int StartDetached(const std::string& program, const std::vector<std::string>& arguments) {
  if (program.empty()) return kStartFileNotFound;
  // Everything the children need is made before the fork: after it, only
  // calls that are safe in a child of a threaded process are made.
  std::vector<std::string> words;
  words.push_back(program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& w : words) argv.push_back(w.data());
  argv.push_back(nullptr);

  int report[2];
  if (::pipe2(report, O_CLOEXEC) != 0) return kStartOutOfResources;
  pid_t child = ::fork();
  if (child < 0) {
    ::close(report[0]);
    ::close(report[1]);
    return kStartOutOfResources;
  }
  if (child == 0) {
    // The middle process: a session of its own, then a grandchild that is
    // handed to init when this one ends at once, so that no one has to wait
    // for the program.
    ::setsid();
    pid_t grandchild = ::fork();
    if (grandchild != 0) {
      if (grandchild < 0) {
        int error = errno;
        (void)!::write(report[1], &error, sizeof error);
      }
      ::_exit(0);
    }
    // No terminal, as for a program started from the desktop: nothing to
    // read, and what it writes goes nowhere (nor keeps the caller's pipes open).
    int null = ::open("/dev/null", O_RDWR);
    if (null >= 0) {
      for (int fd = 0; fd <= 2; ++fd) ::dup2(null, fd);
      if (null > 2) ::close(null);
    }
    ::execv(program.c_str(), argv.data());
    int error = errno;
    (void)!::write(report[1], &error, sizeof error);
    ::_exit(127);
  }
  ::close(report[1]);
  int status;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  int error = ReadChildError(report[0]);
  ::close(report[0]);
  return error == 0 ? kStarted : FromErrno(error);
}

}  // namespace tq::platform
