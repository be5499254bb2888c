#include "dict/classic.h"

#include <cstring>
#include <vector>

#include "core/binary_io.h"
#include "core/streams.h"
#include "core/text.h"
#include "dict/cipher.h"
#include "dict/detail.h"
#include "dict/search.h"
#include "dict/word_forms.h"
#include "platform/env.h"
#include "platform/host.h"

namespace tq::dict {
namespace {

constexpr int kClassicRecord = 52;
constexpr int kClassicWord = 20;
constexpr int kExpRecord = 48;
constexpr int kExpWord = 32;
constexpr int kMeanRecord = 224;
constexpr int kMeanKey = 64;
constexpr int kVaryRecord = 100;
constexpr int kVaryWord = 20;

std::FILE* Idx(const DictObject* d) { return StreamFile(d->hIdx); }
std::FILE* Lib(const DictObject* d) { return StreamFile(d->hLib); }
std::FILE* Idx(const ExpDictObject* d) { return StreamFile(d->hIdx); }
std::FILE* Lib(const ExpDictObject* d) { return StreamFile(d->hLib); }

EntryRef Entry(const DictObject* d) {
  EntryRef e;
  e.libOffset = d->libOffset;
  std::memcpy(e.lengths, d->lengths, sizeof e.lengths);
  return e;
}

// Reads the classic record at offset into the object's record image.
int TakeRecord(DictObject* d, long offset) {
  unsigned char record[kClassicRecord] = {0};
  ReadAt(Idx(d), static_cast<uint64_t>(offset), record, kClassicRecord);
  int grade = DecodeIdx(record, static_cast<uint32_t>(offset), kClassicWord);
  std::memcpy(d->word, record, kClassicWord);
  IndexImage image = ReadImage(record + kClassicWord);
  d->libOffset = image.libOffset;
  std::memcpy(d->lengths, image.lengths, sizeof d->lengths);
  return grade;
}

std::string CutCopy(const char* word, size_t keep) {
  std::string s(word ? word : "");
  if (s.size() > keep) s.resize(keep);
  return s;
}

// The classic and the expression records share their leading fields.
template <class Record>
void InitRecord(Record* d, uint32_t recordSize, uint32_t wordFieldSize, const char* idxPath, const char* libPath,
                char* workBuffer) {
  d->recordSize = recordSize;
  d->wordFieldSize = wordFieldSize;
  CopyField(d->szIdxFile, sizeof d->szIdxFile, idxPath);
  CopyField(d->szLibFile, sizeof d->szLibFile, libPath);
  d->workBuffer = workBuffer;
  d->hIdx = 0;
  d->hLib = 0;
}

}  // namespace

void InitDict(DictObject* d, const char* idxPath, const char* libPath, char* workBuffer) {
  InitRecord(d, kClassicRecord, kClassicWord, idxPath, libPath, workBuffer);
}

namespace {

// Opens index then library; on a failed library the index is closed again
// but its number stays behind, as callers of the plain open have known it.
bool OpenPair(TqStream* idx, TqStream* lib, const char* idxPath, const char* libPath) {
  *idx = StreamOpen(idxPath, "rb");
  if (*idx == 0) return false;
  *lib = StreamOpen(libPath, "rb");
  if (*lib == 0) {
    StreamClose(*idx);
    return false;
  }
  return true;
}

}  // namespace

int OpenDict(DictObject* d) { return OpenPair(&d->hIdx, &d->hLib, d->szIdxFile, d->szLibFile) ? 1 : -1; }

int OpenDictDirect(DictObject* d, const char* idxPath, const char* libPath, char* workBuffer) {
  InitDict(d, idxPath, libPath, workBuffer);
  if (OpenDict(d) == 1) return 1;
  d->hIdx = 0;
  d->hLib = 0;
  return -1;
}

void CloseDict(TqStream* idx, TqStream* lib) {
  if (*idx != 0) StreamClose(*idx);
  if (*lib != 0) StreamClose(*lib);
  *idx = 0;
  *lib = 0;
}

int SearchWord(DictObject* d, const char* word) {
  std::string key = CutCopy(word, kClassicWord - 1);
  long at = SearchIdxExact(Idx(d), key.c_str(), kClassicRecord, kClassicWord);
  if (at < 0) return -1;
  return TakeRecord(d, at);
}

int SearchWordClosest(DictObject* d, const char* word) {
  std::string key = CutCopy(word, kClassicWord - 1);
  int32_t found = 0;
  long at = SearchIdxClosest(&found, Idx(d), key.c_str(), kClassicRecord, kClassicWord);
  if (at < 0) return 0;  // the index holds no record at all
  int grade = TakeRecord(d, at);
  return found ? grade : -grade;
}

int GetAllDetails(DictObject* d, char* out) {
  EntryRef e = Entry(d);
  return static_cast<int>(ReadLibrary(Lib(d), e.libOffset, e.TotalLength(), out));
}

int GetADetail(DictObject* d, char* out, int index) {
  out[0] = '\0';
  if (index < 0 || index > 6 || d->lengths[index] == 0) return 0;
  EntryRef e = Entry(d);
  return static_cast<int>(ReadLibrary(Lib(d), e.SectionStart(index), e.lengths[index], out));
}

int GetMeanAndPron(DictObject* d, const char* word, char* mean, char* pron, bool closest) {
  if (mean != nullptr) mean[0] = '\0';
  pron[0] = '\0';
  int result = closest ? SearchWordClosest(d, word) : SearchWord(d, word);
  if (result == -1 && !closest) return 0;
  if (result == 0) return 0;
  // Section 0 goes through the caller's work buffer.
  std::string own;
  char* buffer = d->workBuffer;
  size_t got;
  if (buffer != nullptr) {
    got = ReadLibrary(Lib(d), d->libOffset, d->lengths[0], buffer);
  } else {
    own = ReadLibrary(Lib(d), d->libOffset, d->lengths[0]);
    buffer = own.data();
    got = own.size();
  }
  if (got == 0) return closest ? result : 0;
  std::string m, p;
  if (!SplitMeaningAndPron(buffer, std::strlen(buffer), false, &m, &p)) {
    return closest ? result : static_cast<int>(got);
  }
  CopyOut(pron, p);
  if (mean != nullptr) CopyOut(mean, m);
  return result;
}

int GetPron(DictObject* d, const char* word, char* pron) {
  int result = GetMeanAndPron(d, word, nullptr, pron, false);
  if (result == 0) std::strcpy(pron, "[]");
  return result;
}

int GetDetail(DictObject* d, char* out, const uint32_t* sections, int count) {
  std::string text;
  int result = ComposeDetail(Lib(d), Entry(d), sections, count, &text);
  CopyOut(out, text);
  return result;
}

int FillListWithEnglish(DictObject* d, int listWindow) {
  return FillListAroundPosition(Idx(d), kClassicRecord, kClassicWord, listWindow);
}

void FillRelatedWordList(DictObject* d, int synonymList, int antonymList) {
  if (d->lengths[6] == 0) return;
  EntryRef e = Entry(d);
  std::string own;
  const char* text;
  size_t got;
  if (d->workBuffer != nullptr) {
    got = ReadLibrary(Lib(d), e.SectionStart(6), e.lengths[6], d->workBuffer);
    text = d->workBuffer;
  } else {
    own = ReadLibrary(Lib(d), e.SectionStart(6), e.lengths[6]);
    text = own.c_str();
    got = own.size();
  }
  FillRelatedLists(text, got, synonymList, antonymList);
}

int AddPron(DictObject* d, const char* srcPath, const char* dstPath) {
  std::FILE* src = env::Open(srcPath, "rb");
  std::FILE* dst = env::Open(dstPath, "wb");
  if (src != nullptr && dst != nullptr) {
    unsigned char record[kMeanRecord];
    while (std::fread(record, 1, kMeanRecord, src) == kMeanRecord) {
      char word[kMeanKey];
      std::memcpy(word, record, kMeanKey - 1);
      word[kMeanKey - 1] = '\0';
      size_t wl = std::strlen(word);
      std::string p, m;
      if (SearchWord(d, word) != -1) {
        std::string section = ReadLibrary(Lib(d), d->libOffset, d->lengths[0]);
        if (!SplitMeaningAndPron(section.c_str(), std::strlen(section.c_str()), false, &m, &p)) p.clear();
      }
      if (p.empty()) p = "[]";
      if (wl + 1 < static_cast<size_t>(kMeanKey)) record[wl + 1] = 0;
      if (p != "[]" && wl + p.size() < static_cast<size_t>(kMeanKey) - 1) {
        std::memcpy(record + wl + 1, p.c_str(), p.size() + 1);
      }
      std::fwrite(record, 1, kMeanRecord, dst);
    }
  }
  if (src != nullptr) std::fclose(src);
  if (dst != nullptr) std::fclose(dst);
  return src != nullptr && dst != nullptr ? 1 : -1;
}

int SearchOriginalWord(DictObject* d, const char* word, char* out) {
  std::FILE* idx = Idx(d);
  long at = OriginalFormChain(
      word, [idx](const char* key) { return SearchIdxExact(idx, key, kClassicRecord, kClassicWord); });
  if (at < 0) return 0;
  TakeRecord(d, at);
  char stored[kClassicWord];
  std::memcpy(stored, d->word, kClassicWord);
  stored[kClassicWord - 1] = '\0';
  return CopyOut(out, stored);
}

// ---- expression dictionary ----

void InitExpDict(ExpDictObject* d, const char* idxPath, const char* libPath, char* workBuffer) {
  InitRecord(d, kExpRecord, kExpWord, idxPath, libPath, workBuffer);
}

int OpenExpDict(ExpDictObject* d) { return OpenPair(&d->hIdx, &d->hLib, d->szIdxFile, d->szLibFile) ? 0 : -1; }

int SearchExp(ExpDictObject* d, char* expression) {
  if (std::strlen(expression) > kExpWord - 1) expression[kExpWord - 1] = '\0';
  long at = SearchIdxExact(Idx(d), expression, kExpRecord, kExpWord);
  if (at < 0) return -1;
  unsigned char record[kExpRecord] = {0};
  ReadAt(Idx(d), static_cast<uint64_t>(at), record, kExpRecord);
  std::memcpy(d->word, record, kExpWord);
  const unsigned char* tail = record + kExpWord;
  d->libOffset = static_cast<uint32_t>(GetI32(tail));
  d->meanLength = static_cast<uint32_t>(GetI32(tail + 4));
  d->sampleLength = static_cast<uint32_t>(GetI32(tail + 8));
  d->reserved = static_cast<uint32_t>(GetI32(tail + 12));
  return 1;
}

namespace {

std::string ExpSection(ExpDictObject* d, int which) {
  if (which == 0) return ReadLibrary(Lib(d), d->libOffset, d->meanLength);
  return ReadLibrary(Lib(d), static_cast<uint64_t>(d->libOffset) + d->meanLength, d->sampleLength);
}

}  // namespace

int GetAllDetailExp(ExpDictObject* d, char* out) {
  std::string text = ReadLibrary(Lib(d), d->libOffset, static_cast<uint64_t>(d->meanLength) + d->sampleLength);
  CopyOut(out, text);
  return static_cast<int>(std::strlen(out));
}

int GetADetailExp(ExpDictObject* d, char* out, int which) {
  std::string text = ExpSection(d, which);
  CopyOut(out, text);
  return static_cast<int>(std::strlen(out));
}

int GetDetailExp(ExpDictObject* d, char* out, const uint32_t* sections, int count) {
  std::string o;
  for (int i = 0; i < count && sections != nullptr; ++i) {
    if (sections[i] == 0 && d->meanLength > 0) {
      o += "<<<\xB4\xCA\xD2\xE5>>>\r\n" + ExpSection(d, 0) + "\r\n";
    } else if (sections[i] == 2 && d->sampleLength > 0) {
      o += "<<<\xC0\xFD\xBE\xE4>>>\r\n" + ExpSection(d, 2) + "\r\n";
    }
  }
  CopyOut(out, o);
  return CharLength(out);
}

int GetDictExpMean(ExpDictObject* d, const char* expression, char* out) {
  out[0] = '\0';
  std::string key = CutCopy(expression, 255);
  if (SearchExp(d, key.data()) == -1) return 0;
  std::string text = ExpSection(d, 0);
  text.resize(std::strlen(text.c_str()));
  size_t lf = text.find('\n');
  std::vector<char> m;
  if (lf != std::string::npos) m.assign(text.begin() + static_cast<long>(lf) + 1, text.end());
  m.push_back('\0');
  StrongRtrim(m.data());
  std::strcpy(out, m.data());
  return CharLength(out);
}

int FillListWithExp(ExpDictObject* d, int listWindow) {
  return FillListAroundPosition(Idx(d), kExpRecord, kExpWord, listWindow);
}

int ExpNoneExactSearch(ExpDictObject* d, char* pattern, int listWindow, int progressWindow) {
  host::SendMessage(progressWindow, host::kProgressSetRange, 0, 0x640000);
  std::FILE* idx = Idx(d);
  if (idx == nullptr || pattern == nullptr || pattern[0] == '\0') return 0;
  long start, end;
  if (pattern[0] == '*' || pattern[0] == '?') {
    start = 0;
    end = FileLength(idx) - kExpRecord;
  } else {
    std::string prefix = LetterPrefix(pattern);
    int32_t found;
    start = SearchIdxClosest(&found, idx, prefix.c_str(), kExpRecord, kExpWord);
    end = SearchIdxClosest(&found, idx, (prefix + "zzz").c_str(), kExpRecord, kExpWord);
  }
  int listed = 0;
  ScanForPattern(idx, start, end, kExpRecord, kExpRecord, kExpWord, pattern, progressWindow, [&](const char* word) {
    host::SendMessage(listWindow, host::kListAddString, 0, reinterpret_cast<intptr_t>(word));
    ++listed;
  });
  return listed;
}

// ---- mean library ----

int OpenMeanLib(MeanLibObject* m, const char* path) {
  CopyField(m->szFile, sizeof m->szFile, path);
  m->hFile = StreamOpen(path, "rb");
  return m->hFile != 0 ? 1 : -1;
}

bool MeanLibLookup(MeanLibObject* m, const char* word, std::string* mean, std::string* pron) {
  std::FILE* f = StreamFile(m->hFile);
  long at = SearchIdxExact(f, word, kMeanRecord, kMeanKey);
  if (at < 0) return false;
  std::memset(m->record, 0, sizeof m->record);
  ReadAt(f, static_cast<uint64_t>(at), m->record, kMeanRecord);
  const char* key = reinterpret_cast<const char*>(m->record);
  size_t wl = strnlen(key, kMeanKey - 1);
  if (pron != nullptr) {
    pron->clear();
    if (wl + 1 < kMeanKey) pron->assign(key + wl + 1, strnlen(key + wl + 1, kMeanKey - wl - 1));
    if (pron->empty()) *pron = "[]";
  }
  const char* text = reinterpret_cast<const char*>(m->record + kMeanKey);
  mean->assign(text, strnlen(text, kMeanRecord - kMeanKey - 1));
  return true;
}

int GetMeanLibMean(MeanLibObject* m, const char* word, char* out) {
  out[0] = '\0';
  std::string mean;
  if (!MeanLibLookup(m, word, &mean, nullptr)) return -1;
  return CopyOut(out, mean);
}

int GetMeanLibMeanAndPron(MeanLibObject* m, const char* word, char* mean, char* pron) {
  if (mean != nullptr) mean[0] = '\0';
  pron[0] = '\0';
  std::string mn, p;
  if (!MeanLibLookup(m, word, &mn, &p)) return -1;
  CopyOut(pron, p);
  if (mean == nullptr) return 1;
  return CopyOut(mean, mn);
}

int CloseMeanLib(MeanLibObject* m) {
  if (m->hFile != 0) StreamClose(m->hFile);
  m->hFile = 0;
  return 0;
}

// ---- word forms on files ----

int FindVary(const char* word, char* out) {
  std::FILE* f = env::Open("vary.idx", "rb");
  if (f == nullptr) return -1;
  long at = SearchIdxExact(f, word, kVaryRecord, kVaryWord);
  int result = -1;
  if (at >= 0) {
    size_t got = ReadAt(f, static_cast<uint64_t>(at) + kVaryWord, out, kVaryRecord - kVaryWord);
    std::memset(out + got, 0, static_cast<size_t>(kVaryRecord - kVaryWord) - got);
    // A text that fills the field has no NUL of its own.
    result = static_cast<int>(strnlen(out, kVaryRecord - kVaryWord));
  }
  std::fclose(f);
  return result;
}

int GetAllWordVarys(const char* word, char* out) { return CopyOut(out, AllWordVarys(word)); }

}  // namespace tq::dict
