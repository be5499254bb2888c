#include "dict/ec_dict.h"

#include <atomic>
#include <cstring>
#include <vector>

#include "core/binary_io.h"
#include "core/text.h"
#include "dict/cipher.h"
#include "dict/classic.h"
#include "dict/search.h"
#include "dict/word_forms.h"
#include "platform/env.h"
#include "platform/host.h"

namespace tq::dict {

namespace {

// Counts the rewrites of compact indexes by this process (vcOldDictToNew
// writes them in place, through the same file that an open handle maps).
// A handle maps its index again when the count has moved: reading a view
// past the end of a file that has since been cut shorter would fault. The
// size is not checked on every search: that system call would cost more
// than the search itself. Another program cutting an open index short is
// not guarded against; on Windows the system refuses to cut a mapped file.
std::atomic<unsigned> g_index_rewrites{0};

}  // namespace

EcDicts& EcDictTable() {
  static EcDicts table;
  return table;
}

EcDict* EcDict::Open(const char* idxPath, const char* libPath, char* workBuffer) {
  std::FILE* idx = env::Open(idxPath, "rb");
  std::FILE* lib = idx ? env::Open(libPath, "rb") : nullptr;
  if (lib == nullptr) {
    if (idx != nullptr) std::fclose(idx);
    return nullptr;
  }
  EcDict* d = new EcDict;
  d->idx_ = idx;
  d->lib_ = lib;
  d->map_.Map(idx);  // an empty index stays unmapped and is read as a file
  d->rewrites_seen_ = g_index_rewrites.load();
  CopyField(d->idx_path_, sizeof d->idx_path_, idxPath);
  CopyField(d->lib_path_, sizeof d->lib_path_, libPath);
  if (workBuffer != nullptr) {
    d->work_buffer_ = workBuffer;
  } else {
    d->work_buffer_ = new char[kOwnBuffer]();
    d->owns_buffer_ = true;
  }
  return d;
}

EcDict::~EcDict() {
  map_.Unmap();
  if (idx_ != nullptr) std::fclose(idx_);
  if (lib_ != nullptr) std::fclose(lib_);
  if (owns_buffer_) delete[] work_buffer_;
}

template <class Fn>
auto EcDict::WithRecords(Fn fn) {
  if (map_.data() != nullptr) {
    MappedRecords records(map_.data(), map_.size());
    auto result = fn(records);
    if (records.position() >= 0) pending_position_ = records.position();
    return result;
  }
  SettleIndex();
  FileRecords records(idx_);
  return fn(records);
}

void EcDict::CheckView() {
  unsigned now = g_index_rewrites.load();
  if (now == rewrites_seen_) return;
  rewrites_seen_ = now;
  map_.Refresh(idx_);
}

void EcDict::SettleIndex() {
  if (pending_position_ >= 0) std::fseek(idx_, pending_position_, SEEK_SET);
  pending_position_ = -1;
}

int EcDict::Search(const char* word, int tryBaseForm, int acceptClosest) {
  if (word == nullptr) word = "";
  CheckView();
  // The whole search runs on one view of the records; the base-form chain
  // works on a copy of the word.
  long position = WithRecords([&](auto& records) {
    int32_t found = 0;
    long at = SearchClosest(records, &found, word, kRecord, kWordField);
    search_result_ = found ? 1 : 3;
    if (!found && tryBaseForm != 0 && at >= 0) {
      long base = OriginalFormChain(
          word, [&records](const char* key) { return SearchExact(records, key, kRecord, kWordField); });
      if (base >= 0) {
        search_result_ = 2;
        at = base;
      }
    }
    return at;
  });
  if (search_result_ == 1 || search_result_ == 2) {
    state_ = 1;
  } else {
    state_ = acceptClosest != 0 ? 1 : -1;
  }
  if (position < 0) state_ = -1;  // the index holds no whole record
  if (state_ == 1) {
    unsigned char record[kRecord] = {0};
    if (map_.data() != nullptr && static_cast<size_t>(position) + kRecord <= map_.size()) {
      std::memcpy(record, map_.data() + position, kRecord);
      pending_position_ = position + kRecord;
    } else {
      SettleIndex();
      ReadAt(idx_, static_cast<uint64_t>(position), record, kRecord);
    }
    grade_ = static_cast<uint32_t>(DecodeEcIdx(record, static_cast<uint32_t>(position)));
    std::memcpy(word_, record, kWordField);
    word_[kWordField - 1] = '\0';
    IndexImage image = ReadImage(record + kWordField);
    entry_.libOffset = image.libOffset;
    std::memcpy(entry_.lengths, image.lengths, sizeof entry_.lengths);
  }
  return state_;
}

int EcDict::GetResultWord(char* out) const {
  if (out == nullptr) return -1;
  if (state_ != 1) {
    out[0] = '\0';
    return 1;
  }
  std::strcpy(out, word_);
  return 1;
}

int EcDict::GetMeanOrPron(char* mean, char* pron) {
  if (mean != nullptr) mean[0] = '\0';
  if (pron != nullptr) pron[0] = '\0';
  if (state_ != 1) return 1;
  size_t got = ReadLibrary(lib_, entry_.libOffset, entry_.lengths[0], work_buffer_, Room(nullptr));
  (void)got;
  std::string m, p;
  if (!SplitMeaningAndPron(work_buffer_, std::strlen(work_buffer_), true, &m, &p)) return 1;
  if (pron != nullptr) CopyOut(pron, p);
  if (mean != nullptr) CopyOut(mean, m);
  return 1;
}

std::string EcDict::CurrentMeaning() {
  if (state_ != 1) return std::string();
  std::string section = ReadLibrary(lib_, entry_.libOffset, entry_.lengths[0]);
  std::string m, p;
  if (!SplitMeaningAndPron(section.c_str(), std::strlen(section.c_str()), true, &m, &p)) return std::string();
  return m;
}

int EcDict::GetDetailLength(int index) const {
  if (state_ != 1 || index < 0 || index > 6) return 0;
  return static_cast<int>(entry_.lengths[index]);
}

int EcDict::GetDetailLengthArray(uint32_t* lengths) const {
  std::memcpy(lengths, entry_.lengths, sizeof entry_.lengths);
  return 1;
}

int EcDict::GetAllDetails(char* out) {
  if (state_ != 1) return 0;
  return static_cast<int>(ReadLibrary(lib_, entry_.libOffset, entry_.TotalLength(), Buffer(out), Room(out)));
}

int EcDict::GetOneDetail(char* out, int index) {
  if (state_ != 1 || index < 0 || index > 6) return 0;
  char* buffer = Buffer(out);
  buffer[0] = '\0';
  if (entry_.lengths[index] == 0) return 0;
  return static_cast<int>(ReadLibrary(lib_, entry_.SectionStart(index), entry_.lengths[index], buffer, Room(out)));
}

int EcDict::FillListWithEnglish(int listWindow) {
  if (state_ != 1) return -1;
  SettleIndex();
  return FillListAroundPosition(idx_, kRecord, kWordField, listWindow);
}

int EcDict::FillRelatedWordList(int synonymList, int antonymList) {
  if (state_ != 1 || entry_.lengths[6] == 0) return 1;
  size_t got = ReadLibrary(lib_, entry_.SectionStart(6), entry_.lengths[6], work_buffer_, Room(nullptr));
  FillRelatedLists(work_buffer_, got, synonymList, antonymList);
  return 1;
}

int EcDict::WildSearch(char* pattern, char* outBuffer, int listWindow, int progressWindow) {
  if (progressWindow != 0) host::SendMessage(progressWindow, host::kProgressSetRange, 0, 0x640000);
  if (pattern == nullptr || pattern[0] == '\0') return 0;
  map_.Refresh(idx_);  // beside a whole scan the size check costs nothing
  // The scan keeps the step and the end of the expression index's 48-byte
  // records while reading 96 bytes at a time, as it always has: it reads
  // twice as often as its range holds records, and the reads past the end
  // of the file leave the last record in the buffer to be tested again.
  constexpr long kStep = 48;
  long start, end;
  if (pattern[0] == '*' || pattern[0] == '?') {
    start = 0;
    SettleIndex();
    end = FileLength(idx_) - kStep;
  } else {
    std::string prefix = LetterPrefix(pattern);
    std::string last = prefix + "zzz";
    int32_t found;
    start = WithRecords([&](auto& r) { return SearchClosest(r, &found, prefix.c_str(), kRecord, kWordField); });
    end = WithRecords([&](auto& r) { return SearchClosest(r, &found, last.c_str(), kRecord, kWordField); });
  }
  pending_position_ = -1;
  int total = 0;
  char* sink = outBuffer;
  ScanForPattern(idx_, start, end, kStep, kRecord, kWordField, pattern, progressWindow, [&](const char* word) {
    size_t len = std::strlen(word);
    total += static_cast<int>(len) + 1;
    if (listWindow != 0) host::SendMessage(listWindow, host::kListAddString, 0, reinterpret_cast<intptr_t>(word));
    if (sink != nullptr) {
      std::memcpy(sink, word, len + 1);
      sink += len + 1;
    }
  });
  return total;
}

int OpenEcDict(const char* idxPath, const char* libPath, char* workBuffer) {
  EcDicts& table = EcDictTable();
  // A full table answers before any file is touched.
  bool room = false;
  for (int h = 1; h < EcDicts::kSize && !room; ++h) room = table.Get(h) == nullptr;
  if (!room) return -1;
  EcDict* d = EcDict::Open(idxPath, libPath, workBuffer);
  if (d == nullptr) return -1;
  return table.Adopt(d);
}

int AppendMean(MeanLibObject* meanLib, EcDict* wordDict, EcDict* exprDict, const char* srcPath,
               const char* dstPath) {
  static const char kTemp[] = "tmptqmean.txt";
  std::FILE* src = env::Open(srcPath, "rb");
  std::FILE* tmp = src ? env::Open(kTemp, "wb") : nullptr;
  if (tmp == nullptr) {
    if (src != nullptr) std::fclose(src);
    return -1;
  }
  constexpr int kLine = 199;  // 198 bytes a line
  char line[kLine + 1];
  char next[kLine + 1];
  while (std::fgets(line, kLine, src) != nullptr) {
    StrongRtrim(line);
    Ltrim(line);
    if (line[0] == '\0' || !IsEnglishWord(line)) continue;
    long noted = std::ftell(src);
    if (std::fgets(next, kLine, src) == nullptr) next[0] = '\0';
    StrongRtrim(next);
    Ltrim(next);
    std::string meaning;
    if (next[0] != '\0' && !IsEnglishWord(next)) {
      meaning = next;
    } else {
      if (next[0] != '\0') std::fseek(src, noted, SEEK_SET);  // the next word comes round again
      std::string mean;
      if (meanLib != nullptr && MeanLibLookup(meanLib, line, &mean, nullptr)) {
        meaning = mean;
      } else {
        EcDict* d = IsExpress(line) ? exprDict : wordDict;
        if (d != nullptr && d->Search(line, 0, 0) == 1) meaning = d->CurrentMeaning();
      }
    }
    std::fputs(line, tmp);
    std::fputs("\r\n", tmp);
    if (!meaning.empty()) {
      std::fwrite(meaning.data(), 1, meaning.find_first_of("\r\n") == std::string::npos
                                          ? meaning.size()
                                          : meaning.find_first_of("\r\n"),
                  tmp);
      std::fputs("\r\n", tmp);
    }
  }
  std::fclose(src);
  std::fclose(tmp);
  if (FoldCompare(srcPath, dstPath) == 0) env::Remove(srcPath);
  env::CopyFile(kTemp, dstPath);
  env::Remove(kTemp);
  return 0;
}

namespace {

// Rewrites one classic index as a compact one, record by record.
template <class Convert>
bool ConvertIndex(const char* from, const char* to, int sourceRecord, Convert convert) {
  std::FILE* in = env::Open(from, "rb");
  std::FILE* out = in ? env::Open(to, "wb") : nullptr;
  if (out == nullptr) {
    if (in != nullptr) std::fclose(in);
    return false;
  }
  std::vector<unsigned char> record(static_cast<size_t>(sourceRecord));
  uint32_t p = 0, q = 0;
  while (std::fread(record.data(), 1, record.size(), in) == record.size()) {
    unsigned char target[EcDict::kRecord] = {0};
    convert(record.data(), p, target);
    EncodeEcIdx(target, q);
    std::fwrite(target, 1, sizeof target, out);
    p += static_cast<uint32_t>(sourceRecord);
    q += EcDict::kRecord;
  }
  std::fclose(in);
  std::fclose(out);
  ++g_index_rewrites;
  return true;
}

}  // namespace

int OldDictToNew() {
  bool ok = ConvertIndex("dictlib\\hmorec.idx", "dictlib\\vlkdictec.idx", 52,
                         [](unsigned char* rec, uint32_t p, unsigned char* target) {
                           int grade = DecodeIdx(rec, p, 20);
                           std::memcpy(target, rec, 20);
                           std::memcpy(target + 64, rec + 20, 32);
                           // A stored grade of 0 becomes an explicit 21.
                           PutI32(target + 72, GetI32(target + 72) | static_cast<int32_t>(
                                                   static_cast<uint32_t>(grade) << 16));
                         });
  if (!ok) return -1;
  env::CopyFile("dictlib\\hmorec.lib", "dictlib\\vlkdictec.lib");
  ok = ConvertIndex("dictlib\\hmorexp.idx", "dictlib\\vlkdictexp.idx", 48,
                    [](unsigned char* rec, uint32_t, unsigned char* target) {
                      std::memcpy(target, rec, 32);
                      std::memcpy(target + 64, rec + 32, 4);   // library offset
                      std::memcpy(target + 68, rec + 36, 4);   // meaning: section 0
                      std::memcpy(target + 76, rec + 40, 4);   // samples: section 2
                    });
  if (!ok) return -1;
  env::CopyFile("dictlib\\hmorexp.lib", "dictlib\\vlkdictexp.lib");
  return 1;
}

}  // namespace tq::dict
