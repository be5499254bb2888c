#include "base_forms.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

const size_t kRecord = 100, kWordField = 20, kTextField = 80;

bool IsVowel(char c) { return c == 'a' || c == 'e' || c == 'i' || c == 'o' || c == 'u'; }
bool IsConsonant(char c) { return c >= 'a' && c <= 'z' && !IsVowel(c); }
bool EndsWith(const std::string& w, const char* tail) {
  size_t n = std::strlen(tail);
  return w.size() >= n && w.compare(w.size() - n, n, tail) == 0;
}

// One vowel letter between consonants at the end (a "qu" counts as a
// consonant: quit, quiz).
bool EndsInConsonantVowelConsonant(const std::string& w) {
  size_t n = w.size();
  if (n < 3 || !IsConsonant(w[n - 1]) || !IsVowel(w[n - 2])) return false;
  return IsConsonant(w[n - 3]) || (w[n - 3] == 'u' && n >= 4 && w[n - 4] == 'q');
}

// The final consonant doubles before a suffix that starts with a vowel when
// it closes a stressed syllable of one vowel letter; w, x and y never do.
bool Doubles(const std::string& w, const PronShape& shape) {
  return EndsInConsonantVowelConsonant(w) && std::strchr("wxy", w.back()) == nullptr && shape.finalStressed;
}

// An unstressed final l after one vowel: British spelling doubles it,
// American does not.
bool EitherL(const std::string& w, const PronShape& shape) {
  return w.back() == 'l' && EndsInConsonantVowelConsonant(w) && !shape.finalStressed;
}

void Plural(const std::string& w, const PronShape& shape, std::vector<std::string>* out) {
  size_t n = w.size();
  if (w.back() == 'z' && Doubles(w, shape)) {
    out->push_back(w + "zes");  // quizzes
  } else if (EndsWith(w, "s") || EndsWith(w, "x") || EndsWith(w, "z") || EndsWith(w, "ch") || EndsWith(w, "sh")) {
    out->push_back(w + "es");
  } else if (w.back() == 'y' && IsConsonant(w[n - 2])) {
    out->push_back(w.substr(0, n - 1) + "ies");
  } else if (w.back() == 'o' && IsConsonant(w[n - 2])) {
    out->push_back(w + "s");  // pianos, and heroes: the word decides
    out->push_back(w + "es");
  } else {
    out->push_back(w + "s");
  }
}

// A suffix that starts with a vowel ("ed", "ing", "er", "est").
void VowelSuffix(const std::string& w, const std::string& suffix, const PronShape& shape,
                 std::vector<std::string>* out) {
  size_t n = w.size();
  char last = w.back();
  if (suffix == "ing") {
    if (EndsWith(w, "ie")) {
      out->push_back(w.substr(0, n - 2) + "ying");  // dying
      return;
    }
    if (EndsWith(w, "ee") || EndsWith(w, "ye") || EndsWith(w, "oe")) {
      out->push_back(w + suffix);  // agreeing, dyeing, hoeing
      return;
    }
  }
  if (last == 'e') {
    out->push_back(w.substr(0, n - 1) + suffix);  // liked, making, nicer
  } else if (last == 'y' && IsConsonant(w[n - 2]) && suffix != "ing") {
    out->push_back(w.substr(0, n - 1) + "i" + suffix);  // studied, happier
  } else if (last == 'c' && IsVowel(w[n - 2]) && (suffix == "ed" || suffix == "ing")) {
    out->push_back(w + "k" + suffix);  // panicked, picnicking
  } else if (Doubles(w, shape)) {
    out->push_back(w + last + suffix);  // stopped, preferring, bigger
  } else if (EitherL(w, shape)) {
    out->push_back(w + "l" + suffix);  // travelled
    out->push_back(w + suffix);        // traveled
  } else {
    out->push_back(w + suffix);
  }
}

// Adjectives of one syllable take -er and -est, and those of two that end
// in y, le, ow or er (happier, simpler, narrower, cleverer).
bool TakesEr(const std::string& w, const PronShape& shape) {
  if (shape.syllables == 1) return true;
  return shape.syllables == 2 &&
         (EndsWith(w, "y") || EndsWith(w, "le") || EndsWith(w, "ow") || EndsWith(w, "er"));
}

}  // namespace

PronShape SpellingShape(const std::string& word) {
  PronShape shape;
  for (size_t i = 0; i < word.size(); ++i) {
    bool vowel = IsVowel(word[i]) || (word[i] == 'y' && i > 0 && IsConsonant(word[i - 1]));
    bool before = i > 0 && (IsVowel(word[i - 1]) || (word[i - 1] == 'y' && i > 1 && IsConsonant(word[i - 2])));
    if (vowel && !before) ++shape.syllables;
  }
  // A silent final e ("make"), but not in "-le" ("simple").
  if (shape.syllables > 1 && EndsWith(word, "e") && !EndsWith(word, "le") && !IsVowel(word[word.size() - 2])) {
    --shape.syllables;
  }
  shape.finalStressed = shape.syllables <= 1;
  return shape;
}

std::vector<std::string> RegularForms(const std::string& word, const WordUse& use, const PronShape& shape) {
  std::vector<std::string> out;
  if (word.size() < 2 || !std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; })) {
    return out;
  }
  if (use.noun || use.verb) Plural(word, shape, &out);
  if (use.verb) {
    if (word.back() == 'e') {
      out.push_back(word + "d");
    } else {
      VowelSuffix(word, "ed", shape, &out);
    }
    VowelSuffix(word, "ing", shape, &out);
  }
  if (use.adjective && TakesEr(word, shape)) {
    if (word.back() == 'e') {
      out.push_back(word + "r");
      out.push_back(word + "st");
    } else {
      VowelSuffix(word, "er", shape, &out);
      VowelSuffix(word, "est", shape, &out);
    }
  }
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
  out.erase(std::remove(out.begin(), out.end(), word), out.end());
  return out;
}

void BaseFormTable::Add(const std::string& form, const std::string& base) {
  if (form.empty() || form.size() >= kWordField || form == base) return;
  std::vector<std::string>& bases = bases_[form];
  if (std::find(bases.begin(), bases.end(), base) == bases.end()) bases.push_back(base);
}

int BaseFormTable::Write(const std::string& path, const std::function<bool(const std::string&)>& keep) const {
  std::vector<const std::pair<const std::string, std::vector<std::string>>*> rows;
  for (const auto& row : bases_) {
    if (keep(row.first)) rows.push_back(&row);
  }
  // The search order of every index: bytes unsigned, A to Z folded.
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto* a, const auto* b) { return vcStrcmp(a->first.c_str(), b->first.c_str()) < 0; });
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return -1;
  int written = 0;
  const std::string* last = nullptr;
  for (const auto* row : rows) {
    if (last != nullptr && vcStrcmp(last->c_str(), row->first.c_str()) == 0) continue;
    last = &row->first;
    std::string text;
    for (const std::string& base : row->second) {
      std::string next = text.empty() ? base : text + "," + base;
      if (next.size() >= kTextField) break;  // keeps a NUL inside the field
      text = next;
    }
    if (text.empty()) continue;
    char record[kRecord] = {0};
    std::memcpy(record, row->first.data(), row->first.size());
    std::memcpy(record + kWordField, text.data(), text.size());
    if (std::fwrite(record, 1, kRecord, f) != kRecord) {
      std::fclose(f);
      return -1;
    }
    ++written;
  }
  return std::fclose(f) == 0 ? written : -1;
}

BaseFormFile::~BaseFormFile() {
  if (data_ != nullptr) munmap(const_cast<unsigned char*>(data_), size_);
}

bool BaseFormFile::Open(const std::string& path) {
  int fd = ::open(path.c_str(), O_RDONLY);
  if (fd < 0) return false;
  struct stat st;
  bool ok = fstat(fd, &st) == 0 && st.st_size >= static_cast<off_t>(kRecord);
  if (ok) {
    size_ = static_cast<size_t>(st.st_size) / kRecord * kRecord;
    void* map = mmap(nullptr, size_, PROT_READ, MAP_SHARED, fd, 0);
    ok = map != MAP_FAILED;
    data_ = ok ? static_cast<const unsigned char*>(map) : nullptr;
  }
  ::close(fd);
  return ok;
}

std::vector<std::string> BaseFormFile::Find(const std::string& form) const {
  std::vector<std::string> bases;
  if (data_ == nullptr || form.empty() || form.size() >= kWordField) return bases;
  size_t lo = 0, hi = size_ / kRecord;
  while (lo < hi) {
    size_t mid = lo + (hi - lo) / 2;
    const unsigned char* record = data_ + mid * kRecord;
    char word[kWordField];
    std::memcpy(word, record, kWordField - 1);
    word[kWordField - 1] = '\0';
    int c = vcStrcmp(form.c_str(), word);
    if (c < 0) {
      hi = mid;
    } else if (c > 0) {
      lo = mid + 1;
    } else {
      char text[kTextField + 1];
      std::memcpy(text, record + kWordField, kTextField);
      text[kTextField] = '\0';
      std::string list(text);
      size_t from = 0;
      while (from < list.size()) {
        size_t comma = list.find(',', from);
        if (comma == std::string::npos) comma = list.size();
        if (comma > from) bases.push_back(list.substr(from, comma - from));
        from = comma + 1;
      }
      break;
    }
  }
  return bases;
}

}  // namespace tqcomm
