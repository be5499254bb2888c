#include "desktop/message_feed.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>

#include "core/text.h"
#include "platform/env.h"
#include "platform/named_lock.h"

namespace tq::desktop {

const FeedFiles kFirstFeed = {"velmarkadv.txt", "velmarkadv.no", "VelmarkAdv"};
const FeedFiles kSecondFeed = {"vlkjbadv.txt", "vlkjbadv.no", "vlkjbadv"};

namespace {

constexpr int kSeenLineBytes = 199;
constexpr int kMessageLineBytes = 1997;

struct Slot {
  std::mutex mutex;
  std::shared_ptr<platform::NamedLock> lock;
  int handles = 0;
};

Slot& TheSlot() {
  static Slot* slot = new Slot;  // used until exit
  return *slot;
}

// Holds the slot's lock, if there is one, for the life of one file access.
// The lock is kept alive here even when the guard is ended meanwhile.
class Guarded {
 public:
  Guarded() {
    Slot& s = TheSlot();
    {
      std::lock_guard<std::mutex> hold(s.mutex);
      lock_ = s.lock;
    }
    if (lock_) lock_->Wait(kFeedWaitMs);
  }
  ~Guarded() {
    if (lock_) lock_->Release();  // refused when the wait ran out
  }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

 private:
  std::shared_ptr<platform::NamedLock> lock_;
};

int ReadLastSeen(const std::string& path) {
  Guarded guard;
  std::FILE* f = env::Open(path.c_str(), "rb");
  if (f == nullptr) return 0;
  char line[kSeenLineBytes + 1];
  int number = std::fgets(line, sizeof line, f) != nullptr ? LeadingDigits(line) : 0;
  std::fclose(f);
  return number;
}

}  // namespace

int StartFeedGuard(const std::string& folder, const char* lockName) {
  if (lockName == nullptr) return 0;
  std::string native = env::NativePath(folder.c_str());
  if (!native.empty() && native.back() != '/') native += '/';
  auto lock = std::make_shared<platform::NamedLock>(native + lockName + ".lock");
  Slot& s = TheSlot();
  std::lock_guard<std::mutex> hold(s.mutex);
  if (!lock->ok()) {
    s.lock.reset();
    return 0;
  }
  s.lock = std::move(lock);
  return ++s.handles;
}

int EndFeedGuard() {
  Slot& s = TheSlot();
  std::lock_guard<std::mutex> hold(s.mutex);
  if (!s.lock) return 0;
  s.lock.reset();
  return 1;
}

int LeadingDigits(const char* text) {
  uint32_t n = 0;  // an absurdly long number wraps, as a 32-bit count would
  for (const char* p = text; *p >= '0' && *p <= '9'; ++p) n = n * 10 + static_cast<uint32_t>(*p - '0');
  return static_cast<int32_t>(n);
}

int MessageNumber(const char* line) {
  char head[6] = {0};
  for (int i = 0; i < 5 && line[i] != '\0' && line[i] != '.'; ++i) head[i] = line[i];
  // At most five characters: no atoi overflow.
  return std::atoi(head);
}

int CountAbove(std::FILE* messages, int lastSeen) {
  char line[kMessageLineBytes + 1];
  int count = 0;
  while (std::fgets(line, sizeof line, messages) != nullptr) {
    StrongRtrim(line);
    if (line[0] == '\0') break;
    if (MessageNumber(line) > lastSeen) ++count;
  }
  return count;
}

int CountNewMessages(const std::string& messagePath, const std::string& lastSeenPath) {
  int lastSeen = ReadLastSeen(lastSeenPath);
  Guarded guard;
  // A folder opens for reading here, but holds no messages.
  std::FILE* f = env::IsDirectory(messagePath.c_str()) ? nullptr : env::Open(messagePath.c_str(), "rb");
  if (f == nullptr) return kNoMessageFile;
  int count = CountAbove(f, lastSeen);
  std::fclose(f);
  return count;
}

int WriteLastSeen(const std::string& lastSeenPath, int number) {
  Guarded guard;
  std::FILE* f = env::Open(lastSeenPath.c_str(), "wb");
  if (f == nullptr) return -1;
  bool ok = std::fprintf(f, "%d", number) > 0;
  ok = std::fclose(f) == 0 && ok;
  return ok ? 1 : -1;
}

}  // namespace tq::desktop
