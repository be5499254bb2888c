#include "dict_build.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

void Put32(std::string* s, size_t at, uint32_t v) {
  for (int i = 0; i < 4; ++i) (*s)[at + static_cast<size_t>(i)] = static_cast<char>(v >> (8 * i) & 0xFF);
}

// Enciphers bytes that will stand at offset of their file.
void Encipher(std::string* bytes, size_t from, size_t length, uint32_t offset) {
  if (length > 0) DecodeExplain(reinterpret_cast<unsigned char*>(&(*bytes)[from]), static_cast<int>(length), offset);
}

bool IsExpression(const std::string& word) { return word.find(' ') != std::string::npos; }

// Cuts GBK text to at most n bytes without halving a character.
std::string CutGbk(const std::string& s, size_t n) {
  if (s.size() <= n) return s;
  size_t i = 0;
  while (i < n) {
    size_t step = static_cast<unsigned char>(s[i]) >= 0x80 ? 2 : 1;
    if (i + step > n) break;
    i += step;
  }
  return s.substr(0, i);
}

class Output {
 public:
  explicit Output(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "wb")) {}
  ~Output() {
    if (file_ != nullptr) std::fclose(file_);
  }
  bool ok() const { return file_ != nullptr; }
  uint32_t size() const { return size_; }
  void Write(const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), file_);
    size_ += static_cast<uint32_t>(bytes.size());
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  std::FILE* file_;
  uint32_t size_ = 0;
};

// Appends an entry's text to a library; answers where it starts.
uint32_t AppendToLibrary(Output* lib, const std::string& text) {
  uint32_t at = lib->size();
  std::string bytes = text;
  Encipher(&bytes, 0, bytes.size(), at);
  lib->Write(bytes);
  return at;
}

bool IsAscii(const std::string& s) {
  for (unsigned char c : s) {
    if (c >= 0x80) return false;
  }
  return true;
}

bool HasTag(const std::string& line, const char* tag) { return line.compare(0, 2, tag) == 0; }

// The readers of the entry text take a line only when a line end closes it,
// so every stored line ends in CR LF.
std::string CloseLines(const std::string& s) {
  if (s.empty() || s.back() == '\n' || s.back() == '\r') return s;
  return s + "\r\n";
}

// Each sample line opens with a two-byte tag that is never shown: "*#"
// before a sentence (it gets a sound link), "->" before its translation.
// Lines that already carry a tag keep it; empty lines go.
std::string TagSamples(const std::string& s) {
  std::string out;
  size_t from = 0;
  while (from < s.size()) {
    size_t end = s.find_first_of("\r\n", from);
    std::string line = s.substr(from, end == std::string::npos ? std::string::npos : end - from);
    from = end == std::string::npos ? s.size() : s.find_first_not_of("\r\n", end);
    if (from == std::string::npos) from = s.size();
    if (line.empty()) continue;
    if (!HasTag(line, "*#") && !HasTag(line, "**") && !HasTag(line, "->")) {
      line = (IsAscii(line) ? "*#" : "->") + line;
    }
    out += line + "\r\n";
  }
  return out;
}

// Puts the sections of an entry into their stored form. The forms kept for
// "vary.idx" stay as the source gave them.
void FinishSections(DictEntry* e) {
  e->sections[2] = TagSamples(e->sections[2]);
  for (std::string& section : e->sections) section = CloseLines(section);
}

}  // namespace

bool WriteDictionaries(std::vector<DictEntry> entries, const std::string& dir, bool finish_sections,
                       BuildCounts* counts, std::string* error) {
  // The search order: bytes as unsigned values, A to Z folded. Entries that
  // fold to the same word keep the first.
  std::stable_sort(entries.begin(), entries.end(), [](const DictEntry& a, const DictEntry& b) {
    return vcStrcmp(a.word.c_str(), b.word.c_str()) < 0;
  });
  entries.erase(std::unique(entries.begin(), entries.end(),
                            [](const DictEntry& a, const DictEntry& b) {
                              return vcStrcmp(a.word.c_str(), b.word.c_str()) == 0;
                            }),
                entries.end());
  // Sections 1 to 6 have 16-bit length fields (the grade shares the first),
  // so a longer one is cut rather than let its length spill into the grade.
  for (DictEntry& e : entries) {
    for (int k = 1; k < 7; ++k) e.sections[k] = CutGbk(e.sections[k], 0xFFFF);
  }
  mkdir(dir.c_str(), 0755);
  std::string lib_dir = dir + "/dictlib";
  mkdir(lib_dir.c_str(), 0755);

  {
  Output word_lib(lib_dir + "/hmorec.lib"), exp_lib(lib_dir + "/hmorexp.lib");
  Output classic_idx(lib_dir + "/hmorec.idx"), exp_idx(lib_dir + "/hmorexp.idx");
  Output ec_idx(lib_dir + "/vlkdictec.idx"), ecx_idx(lib_dir + "/vlkdictexp.idx");
  Output mean_lib(lib_dir + "/meanlib.dat"), vary(dir + "/vary.idx");
  for (const Output* o : {&word_lib, &exp_lib, &classic_idx, &exp_idx, &ec_idx, &ecx_idx, &mean_lib, &vary}) {
    if (!o->ok()) {
      *error = "cannot write " + o->path();
      return false;
    }
  }
  for (DictEntry& e : entries) {
    if (e.word.empty() || e.word.size() > 63) continue;
    if (finish_sections) FinishSections(&e);
    uint32_t lengths[7];
    for (int k = 0; k < 7; ++k) lengths[k] = static_cast<uint32_t>(e.sections[k].size());
    uint32_t grade = e.grade != 0 ? static_cast<uint32_t>(e.grade) & 0xFFFF : 21;
    if (!IsExpression(e.word)) {
      std::string text;
      for (const std::string& s : e.sections) text += s;
      uint32_t at = AppendToLibrary(&word_lib, text);
      if (e.word.size() < 20) {  // the classic word field holds 19 bytes
        std::string rec(52, '\0');
        std::memcpy(&rec[0], e.word.data(), e.word.size());
        Put32(&rec, 20, at);
        for (int k = 0; k < 7; ++k) Put32(&rec, 24 + 4 * static_cast<size_t>(k), lengths[k]);
        Put32(&rec, 28, lengths[1] | static_cast<uint32_t>(e.grade & 0xFFFF) << 16);
        Encipher(&rec, 20, 32, classic_idx.size() + 20);
        classic_idx.Write(rec);
        ++counts->classicWords;
      }
      std::string rec(96, '\0');
      std::memcpy(&rec[0], e.word.data(), e.word.size());
      Put32(&rec, 64, at);
      for (int k = 0; k < 7; ++k) Put32(&rec, 68 + 4 * static_cast<size_t>(k), lengths[k]);
      Put32(&rec, 72, lengths[1] | grade << 16);
      Encipher(&rec, 64, 32, ec_idx.size() + 64);
      ec_idx.Write(rec);
      ++counts->words;
    } else {
      // An expression keeps two sections, meaning then samples.
      uint32_t at = AppendToLibrary(&exp_lib, e.sections[0] + e.sections[2]);
      if (e.word.size() < 32) {
        std::string rec(48, '\0');
        std::memcpy(&rec[0], e.word.data(), e.word.size());
        Put32(&rec, 32, at);
        Put32(&rec, 36, lengths[0]);
        Put32(&rec, 40, lengths[2]);
        exp_idx.Write(rec);
        ++counts->classicExpressions;
      }
      std::string rec(96, '\0');
      std::memcpy(&rec[0], e.word.data(), e.word.size());
      Put32(&rec, 64, at);
      Put32(&rec, 68, lengths[0]);
      // The grade field stays 0 (read as 21), as the conversion leaves it.
      Put32(&rec, 76, lengths[2]);
      Encipher(&rec, 64, 32, ecx_idx.size() + 64);
      ecx_idx.Write(rec);
      ++counts->expressions;
    }
    std::string mean(224, '\0');
    std::memcpy(&mean[0], e.word.data(), e.word.size());
    if (!e.pron.empty() && e.pron != "[]" && e.word.size() + e.pron.size() < 63) {
      std::memcpy(&mean[e.word.size() + 1], e.pron.data(), e.pron.size());
    }
    std::string short_mean = CutGbk(e.meanLine, 159);
    std::memcpy(&mean[64], short_mean.data(), short_mean.size());
    mean_lib.Write(mean);
    if (!e.forms.empty() && e.word.size() < 20) {
      std::string rec(100, '\0');
      std::memcpy(&rec[0], e.word.data(), e.word.size());
      std::string forms = CutGbk(e.forms, 80);
      std::memcpy(&rec[20], forms.data(), forms.size());
      vary.Write(rec);
      ++counts->vary;
    }
  }
  }  // the files are complete and closed here
  // The compact indexes point into the same libraries, under their own names.
  for (const char* name : {"hmorec", "hmorexp"}) {
    std::ifstream from(lib_dir + "/" + name + ".lib", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(from)), std::istreambuf_iterator<char>());
    std::ofstream to(lib_dir + "/" + (std::string(name) == "hmorec" ? "vlkdictec" : "vlkdictexp") + ".lib",
                     std::ios::binary);
    to.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!from || !to) {
      *error = "cannot write the compact libraries";
      return false;
    }
  }
  return true;
}

}  // namespace tqcomm
