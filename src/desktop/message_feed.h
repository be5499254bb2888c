// The message feed: how many messages of a partner's message file the user
// has not seen yet, and the number of the last one seen.
//
// A message file holds GBK lines "number.text"; an empty line ends it. The
// last-seen file holds one decimal number and no line end; without it the
// user has seen nothing (0). Both lie in the Windows folder, and other
// programs (whatever delivers the messages, other front ends) read and
// rewrite them, so every open of either is guarded by a lock that holds
// across processes (platform/named_lock.h), waited for at most three
// seconds: a wait that runs out does not stop the access.
//
// Both feeds keep their lock in one slot: starting the guard of one feed
// replaces the other's, so that only the feed started last is guarded by
// its own lock, and the other feed then waits for that one.
#pragma once

#include <cstdio>
#include <string>

namespace tq::desktop {

struct FeedFiles {
  const char* messages;  // in the Windows folder
  const char* lastSeen;  // in the Windows folder
  const char* lock;      // the lock's name
};
extern const FeedFiles kFirstFeed;
extern const FeedFiles kSecondFeed;

constexpr int kFeedWaitMs = 3000;
constexpr int kNoMessageFile = -2;

// The lock slot shared by both feeds.
// Opens the named lock (a file "<name>.lock" in folder, made when missing)
// and puts it in the slot in place of the one there; a positive handle, or
// 0 (and an empty slot) when the lock file cannot be made.
int StartFeedGuard(const std::string& folder, const char* lockName);
// Closes the lock in the slot: 1, or 0 when the slot was empty.
int EndFeedGuard();

// The last-seen number: the leading digits of text (no sign, no blanks).
int LeadingDigits(const char* text);
// The number of a message line: the line is cut at a point within its
// first five bytes, or after five bytes, and read as a decimal number
// (blanks and a sign in front allowed, as atoi reads it).
int MessageNumber(const char* line);
// Counts the lines of an open message file numbered above lastSeen, up to
// the first line that is empty once its trailing white space is gone.
int CountAbove(std::FILE* messages, int lastSeen);

// Reads the last-seen file and counts the new messages, each open guarded
// by the slot's lock; -2 when the message file cannot be opened.
int CountNewMessages(const std::string& messagePath, const std::string& lastSeenPath);
// Replaces the last-seen file by the number, guarded: 1, or -1.
int WriteLastSeen(const std::string& lastSeenPath, int number);

}  // namespace tq::desktop
