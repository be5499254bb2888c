// tqcomm book: bring a word list into a word book, and list a book back.
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

struct Item {
  std::string word, pron, meaning;
};

bool IsAscii(const std::string& s) {
  for (unsigned char c : s) {
    if (c >= 128) return false;
  }
  return true;
}

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(" \t\r\n");
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(" \t\r\n");
  return s.substr(b, e - b + 1);
}

// A word list has the English item on one line and its meaning on the next;
// an English item may carry its pronunciation in brackets.
bool ReadWordList(const std::string& path, std::vector<Item>* items) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::string line;
  Item* last = nullptr;
  while (std::getline(in, line)) {
    line = Trim(line);
    if (line.empty()) continue;
    if (IsAscii(line)) {
      Item item;
      size_t open = line.find('[');
      item.word = Trim(line.substr(0, open));
      if (open != std::string::npos) item.pron = line.substr(open);
      items->push_back(item);
      last = &items->back();
    } else if (last != nullptr && last->meaning.empty()) {
      last->meaning = line;
    }
  }
  return true;
}

int Import(const std::string& file, const std::string& idx) {
  std::vector<Item> items;
  if (!ReadWordList(file, &items)) {
    std::fprintf(stderr, "tqcomm: cannot open %s\n", file.c_str());
    return 1;
  }
  if (items.empty()) {
    std::fprintf(stderr, "tqcomm: %s holds no English item\n", file.c_str());
    return 1;
  }
  std::remove(idx.c_str());
  std::remove((idx + ".lib").c_str());
  std::string tag = idx + ".tag";
  {
    std::ofstream t(tag, std::ios::binary | std::ios::trunc);
    t << std::string(400, '\0');
  }
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  int added = 0;
  for (const Item& it : items) {
    if (vcCOrvexBook_AppendWord(book, 0, it.word.c_str(), it.meaning.c_str(), it.pron.c_str(), nullptr, nullptr,
                                0) != 1 ||
        vcCOrvexBook_InsertTag(tag.c_str(), -1) != 1) {
      std::fprintf(stderr, "tqcomm: cannot write the book %s\n", idx.c_str());
      vcCOrvexBook_Delete(book);
      return 1;
    }
    ++added;
  }
  vcCOrvexBook_Delete(book);
  std::printf("%d words -> %s\n", added, idx.c_str());
  return 0;
}

int List(const std::string& idx) {
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  int count = vcCOrvexBook_OpenIdx(book, "rb");
  if (count < 0 || vcCOrvexBook_OpenLib(book, "rb") < 0) {
    std::fprintf(stderr, "tqcomm: cannot open the book %s\n", idx.c_str());
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_Delete(book);
    return 1;
  }
  static char word[4096], expl[65536], pron[65536];
  for (int i = 0; i < count; ++i) {
    vcCOrvexBook_GetWordByNo(book, i, word, expl, pron, nullptr, nullptr, nullptr);
    std::printf("%4d  %-16s %-18s %s\n", i, word, ForTerminal(pron).c_str(), ForTerminal(expl).c_str());
  }
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
  return 0;
}

}  // namespace

int ImportWordList(const std::string& file, const std::string& idx) { return Import(file, idx); }

int BookCommand(const Args& in) {
  Args args = in;
  std::string idx = DataDir() + "/sample.idx";
  TakeOption(&args, "--book", &idx);
  if (args.size() == 2 && args[0] == "import") return Import(args[1], idx);
  if (args.size() == 1 && args[0] == "list") return List(idx);
  if (args.size() == 1 && args[0] == "sample") {
    int r = Import(SampleDir() + "/words.txt", idx);
    return r != 0 ? r : List(idx);
  }
  std::fprintf(stderr, "usage: tqcomm book import FILE|list|sample [--book BOOK.idx]\n");
  return 2;
}

}  // namespace tqcomm
