#include "platform/find.h"

#include <dirent.h>

#include <mutex>
#include <vector>

#include "platform/env.h"

namespace tq::find {
namespace {

unsigned char Lower(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }

struct Search {
  DIR* dir = nullptr;
  std::string folder;   // native, ending in "/" unless empty
  std::string pattern;  // the last part
};

struct SearchTable {
  std::mutex mutex;
  std::vector<Search*> searches = std::vector<Search*>(1, nullptr);
};

SearchTable& Table() {
  static SearchTable* table = new SearchTable;  // never destroyed: used until exit
  return *table;
}

SearchId Enter(Search* s) {
  SearchTable& t = Table();
  std::lock_guard<std::mutex> lock(t.mutex);
  for (size_t i = 1; i < t.searches.size(); ++i) {
    if (t.searches[i] == nullptr) {
      t.searches[i] = s;
      return static_cast<SearchId>(i);
    }
  }
  t.searches.push_back(s);
  return static_cast<SearchId>(t.searches.size() - 1);
}

Search* Lookup(SearchId id) {
  SearchTable& t = Table();
  std::lock_guard<std::mutex> lock(t.mutex);
  return id < t.searches.size() ? t.searches[id] : nullptr;
}

Search* Take(SearchId id) {
  SearchTable& t = Table();
  std::lock_guard<std::mutex> lock(t.mutex);
  if (id == 0 || id >= t.searches.size()) return nullptr;
  Search* s = t.searches[id];
  t.searches[id] = nullptr;
  return s;
}

void Free(Search* s) {
  if (s == nullptr) return;
  if (s->dir != nullptr) ::closedir(s->dir);
  delete s;
}

// Reads on to the next entry that fits; false at the end of the folder.
bool Advance(Search* s, Found* found) {
  while (struct dirent* e = ::readdir(s->dir)) {
    std::string name = e->d_name;
    if (!NameMatches(name, s->pattern)) continue;
    // An entry that vanished since the folder was read is still reported,
    // with no size and no times.
    Found f;
    platform::StatNative(s->folder + name, &f);
    f.name = name;
    *found = f;
    return true;
  }
  return false;
}

}  // namespace

bool NameMatches(const std::string& name, const std::string& pattern) {
  if (pattern == "*.*") return true;
  // Backtracking over the last star is enough: a later star can only take
  // over what an earlier one would have matched.
  size_t n = 0, p = 0, star = std::string::npos, resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() &&
               (pattern[p] == '?' || Lower(static_cast<unsigned char>(pattern[p])) ==
                                         Lower(static_cast<unsigned char>(name[n])))) {
      ++p;
      ++n;
    } else if (star != std::string::npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

SearchId First(const char* pattern, Found* found) {
  if (pattern == nullptr) return 0;
  std::string native = env::NativePath(pattern);
  size_t slash = native.rfind('/');
  std::string folder = slash == std::string::npos ? std::string() : native.substr(0, slash + 1);
  std::string last = slash == std::string::npos ? native : native.substr(slash + 1);
  if (last.empty()) return 0;  // "dir\" names no file
  if (last.find_first_of("*?") == std::string::npos) {
    // No wildcard: the one file or folder of that name, or nothing.
    Found f;
    if (!platform::StatNative(native, &f)) return 0;
    f.name = last;
    Search* s = new Search;
    SearchId id = Enter(s);
    *found = f;
    return id;
  }
  DIR* dir = ::opendir(folder.empty() ? "." : folder.c_str());
  if (dir == nullptr) return 0;
  Search* s = new Search;
  s->dir = dir;
  s->folder = folder;
  s->pattern = last;
  if (!Advance(s, found)) {
    Free(s);
    return 0;
  }
  return Enter(s);
}

bool Next(SearchId search, Found* found) {
  Search* s = Lookup(search);
  if (s == nullptr || s->dir == nullptr) return false;
  return Advance(s, found);
}

bool Close(SearchId search) {
  Search* s = Take(search);
  if (s == nullptr) return false;
  Free(s);
  return true;
}

}  // namespace tq::find
