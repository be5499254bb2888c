#include "dict/detail.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "core/binary_io.h"
#include "core/text.h"
#include "dict/search.h"
#include "platform/host.h"

namespace tq::dict {
namespace {

const char kTagMeaning[] = "<<<\xB4\xCA\xD2\xE5>>>";                 // 词义, no line end
const char kTagExplanation[] = "<<<\xD3\xA2\xCA\xCD>>>\r\n";         // 英释
const char kTagSamples[] = "<<<\xC0\xFD\xBE\xE4>>>\r\n";             // 例句
const char kTagPhrases[] = "<<<\xB6\xCC\xD3\xEF>>>\r\n";             // 短语
const char kTagRoot[] = "<<<\xB4\xCA\xB8\xF9>>>\r\n";                // 词根
const char kTagRelated[] = "<\xBD\xFC\xD2\xE5\xB4\xCA>\r\n";          // <近义词>
const char kAntonymBreak[] = "\r\n<\xB7\xB4\xD2\xE5\xB4\xCA>\r\n";   // <反义词>

const char* TagFor(uint32_t section) {
  switch (section) {
    case 0: return kTagMeaning;
    case 1: return kTagExplanation;
    case 2: return kTagSamples;
    case 3: return kTagPhrases;
    case 5: return kTagRoot;
    case 6: return kTagRelated;
    default: return "";  // word forms, and any other number, go without
  }
}

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

}  // namespace

uint64_t EntryRef::SectionStart(int k) const {
  uint64_t at = libOffset;
  for (int i = 0; i < k && i < 7; ++i) at += lengths[i];
  return at;
}

uint64_t EntryRef::TotalLength() const {
  uint64_t sum = 0;
  for (uint32_t n : lengths) sum += n;
  return sum;
}

size_t ReadLibrary(std::FILE* lib, uint64_t offset, uint64_t length, char* out, uint64_t room) {
  size_t got = ReadDeciphered(lib, offset, out, std::min(length, room));
  return got;
}

std::string ReadLibrary(std::FILE* lib, uint64_t offset, uint64_t length) {
  if (lib == nullptr || length == 0) return std::string();
  long size = FileLength(lib);
  if (size <= 0 || offset >= static_cast<uint64_t>(size)) return std::string();
  length = std::min<uint64_t>(length, static_cast<uint64_t>(size) - offset);
  std::vector<char> buffer(static_cast<size_t>(length) + 1);
  size_t got = ReadDeciphered(lib, offset, buffer.data(), length);
  return std::string(buffer.data(), got);
}

int ComposeDetail(std::FILE* lib, const EntryRef& entry, const uint32_t* sections, int count, std::string* out) {
  out->clear();
  if (count == 0) {
    *out = ReadLibrary(lib, entry.libOffset, entry.TotalLength());
    return static_cast<int>(out->size());
  }
  std::string& o = *out;
  // One flag for the whole call: a run of line ends at the end of one
  // section swallows the line ends that open the next.
  bool in_run = false;
  for (int i = 0; i < count && sections != nullptr; ++i) {
    uint32_t s = sections[i];
    if (s > 6 || entry.lengths[s] == 0) continue;
    o += TagFor(s);
    const size_t begin = o.size();
    std::string raw = ReadLibrary(lib, entry.SectionStart(static_cast<int>(s)), entry.lengths[s]);
    if (s == 6) {
      for (char c : raw) {
        if (c == ',') {
          o += ", ";
        } else if (c == '#') {
          o += kAntonymBreak;
        } else {
          o.push_back(c);
        }
      }
    } else {
      for (char c : raw) {
        if (IsLineEnd(c)) {
          if (!in_run) o += "\r\n";
          in_run = true;
        } else {
          o.push_back(c);
          in_run = false;
        }
      }
      if (s == 2) {
        int crs = 0;
        for (size_t k = begin; k < o.size(); ++k) {
          if (o[k] == '\r' && ++crs == 12) {
            size_t cut = k + 1;
            if (cut < o.size() && o[cut] == '\n') ++cut;
            o.resize(cut);
            break;
          }
        }
      }
      if ((s == 0 || s == 1) && begin < o.size() && o[begin] == '[') {
        size_t limit = std::min(o.size(), begin + 51);
        for (size_t k = begin; k < limit; ++k) {
          if (o[k] == ']') {
            o.erase(begin, k - begin + 1);
            break;
          }
        }
        // Leading line ends: a CR of the section, or an LF at the same
        // place from the start of the whole text. So after a bracket only
        // the CR goes and the LF stays.
        size_t n = 0;
        while (begin + n < o.size() && (o[begin + n] == '\r' || o[n] == '\n')) ++n;
        o.erase(begin, n);
      }
    }
    if (o.size() > begin && !IsLineEnd(o.back())) o += "\r\n";
  }
  std::vector<char> text(o.begin(), o.end());
  text.push_back('\0');
  StrongRtrim(text.data());
  o.assign(text.data());
  return CharLength(o.c_str());
}

void FillRelatedLists(const char* text, size_t length, int synonymList, int antonymList) {
  if (length == 0) return;
  int target = synonymList;
  std::string word;
  auto close = [&]() {
    std::vector<char> w(word.begin(), word.end());
    w.push_back('\0');
    Ltrim(w.data());
    StrongRtrim(w.data());
    host::SendMessage(target, host::kListAddString, 0, reinterpret_cast<intptr_t>(w.data()));
    word.clear();
  };
  // The first 8 bytes are the synonyms' label.
  for (size_t i = 8; i < length; ++i) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    if (c == ',') {
      close();
    } else if (c == 0xB7) {  // the first byte of the antonyms' label
      if (!word.empty()) {
        close();
        i += 7;
      }
      target = antonymList;
    } else {
      word.push_back(static_cast<char>(c));
    }
  }
  if (!word.empty()) close();
}

int FillListAroundPosition(std::FILE* idx, int recordSize, int wordFieldSize, int listWindow) {
  if (idx == nullptr) return -1;
  long here = std::ftell(idx);
  if (here < 0) return -1;
  long start = std::max(here - 15L * recordSize, 0L);
  if (std::fseek(idx, start, SEEK_SET) == 0) {
    std::vector<unsigned char> record(static_cast<size_t>(recordSize));
    for (int i = 0; i < 30; ++i) {
      if (std::fread(record.data(), 1, record.size(), idx) != record.size()) break;
      record[static_cast<size_t>(wordFieldSize) - 1] = 0;
      host::SendMessage(listWindow, host::kListAddString, 0, reinterpret_cast<intptr_t>(record.data()));
    }
  }
  return static_cast<int>((here - start) / recordSize - 1);
}

void ScanForPattern(std::FILE* idx, long start, long end, long step, int recordSize, int wordFieldSize,
                    char* pattern, int progressWindow, const std::function<void(const char*)>& onMatch) {
  if (start < 0 || std::fseek(idx, start, SEEK_SET) != 0) return;
  std::vector<unsigned char> record(static_cast<size_t>(recordSize), 0);
  long n = 0;
  for (long pos = start; pos <= end; pos += step) {
    std::fread(record.data(), 1, record.size(), idx);
    record[static_cast<size_t>(wordFieldSize) - 1] = 0;
    const char* word = reinterpret_cast<const char*>(record.data());
    if (WildMatch(word, pattern)) onMatch(word);
    if (++n % 100 == 0) {
      if (progressWindow != 0 && end != start) {
        host::SendMessage(progressWindow, host::kProgressSetPos, 100 * (pos - start) / (end - start), 0);
      }
      host::Yield();
    }
  }
}

std::string LetterPrefix(const char* pattern) {
  std::string prefix;
  for (const char* p = pattern; *p >= 'a' && *p <= 'z'; ++p) prefix.push_back(*p);
  return prefix;
}

bool SplitMeaningAndPron(const char* section, size_t length, bool alwaysSkipPair, std::string* mean,
                         std::string* pron) {
  const char* close = static_cast<const char*>(std::memchr(section, ']', length));
  if (close == nullptr) return false;
  size_t p = static_cast<size_t>(close - section);
  pron->assign(section, p + 1);
  size_t from = p + 2;
  if (alwaysSkipPair || (from < length && IsLineEnd(section[from]))) from = p + 3;
  std::vector<char> m;
  if (from < length) m.assign(section + from, section + length);
  m.push_back('\0');
  StrongRtrim(m.data());
  mean->assign(m.data());
  return true;
}

void CopyField(char* field, size_t size, const char* text) {
  if (field == nullptr || size == 0) return;
  size_t n = text ? std::strlen(text) : 0;
  if (n >= size) n = size - 1;
  if (n > 0) std::memcpy(field, text, n);
  field[n] = '\0';
}

int CopyOut(char* out, const std::string& text) {
  if (out == nullptr) return static_cast<int>(text.size());
  std::memcpy(out, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}

}  // namespace tq::dict
