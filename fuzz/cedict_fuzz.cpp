// Fuzzes what the dictionary builder and the tool read from files that may
// be hostile: CC-CEDICT text (each line, then the whole file turned round
// into meanings, with the same bytes as a word-count list), the stored
// pronunciation notation, and a "base.idx" table of inflected forms.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "../tools/tqcomm/base_forms.h"
#include "../tools/tqcomm/cedict.h"
#include "core/text.h"
#include "../tools/tqcomm/pron_notation.h"
#include "tqcomm2006.h"

// The one export the table's search stands on.
TQ_API int TQ_CALL vcStrcmp(const char* a, const char* b) { return tq::FoldCompare(a, b); }

namespace {

std::vector<std::string> AsciiWords(const std::string& text, size_t most) {
  std::vector<std::string> words;
  std::string w;
  for (char c : text + " ") {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c == ' ' && !w.empty() && w.back() != ' ')) {
      w.push_back(c);
      if (c != ' ') continue;
    }
    if (!w.empty() && w.back() == ' ') w.pop_back();
    if (!w.empty()) words.push_back(w);
    w.clear();
    if (words.size() >= most) break;
  }
  return words;
}

const std::string& TablePath() {
  static const std::string path = "/tmp/tq_cedict_fuzz." + std::to_string(::getpid()) + ".idx";
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);

  std::istringstream lines(text);
  std::string line;
  tqcomm::CedictEntry entry;
  while (std::getline(lines, line)) tqcomm::ParseCedictLine(line, &entry);

  tqcomm::ChineseMeanings meanings;
  std::istringstream in(text);
  std::string error;
  std::vector<std::string> words = AsciiWords(text, 8);
  if (meanings.Read(in, &error)) {
    std::istringstream counts(text);
    meanings.ReadFrequencies(counts);
    const std::vector<tqcomm::PartOfSpeech> uses[] = {
        {}, {{'n', 2, 1}}, {{'v', 1, 0}}, {{'a', 3, 3}, {'n', 1, 5}, {'v', 1, 5}, {'r', 0, 0}}};
    for (const std::string& w : words) {
      for (const auto& u : uses) meanings.MeaningOf(w, u);
    }
  }

  std::string notation = tqcomm::IpaToNotation(text);
  tqcomm::NotationToIpaHtml(text);
  tqcomm::ShapeOf(text);
  tqcomm::ShapeOf(notation);
  for (const std::string& w : words) {
    tqcomm::RegularForms(w, {true, true, true}, tqcomm::ShapeOf(notation));
    tqcomm::RegularForms(w, {true, true, true}, tqcomm::SpellingShape(w));
  }

  std::FILE* f = std::fopen(TablePath().c_str(), "wb");
  if (f != nullptr) {
    std::fwrite(data, 1, size, f);
    std::fclose(f);
    tqcomm::BaseFormFile table;
    if (table.Open(TablePath())) {
      for (const std::string& w : words) table.Find(w);
      table.Find(text.substr(0, 19));
    }
  }
  return 0;
}
