// tqcomm book: bring a word list into a word book, and list a book back.
#include <cstdio>
#include <cstring>
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

enum class Layout { kAuto, kAlternate, kOneLine };

// An English item may carry its pronunciation in brackets: "able ['eibl]".
Item MakeItem(const std::string& english, const std::string& meaning) {
  Item item;
  size_t open = english.find('[');
  item.word = english.substr(0, open);
  item.word.erase(item.word.find_last_not_of(" \t") + 1);
  if (open != std::string::npos) item.pron = english.substr(open);
  item.meaning = meaning;
  return item;
}

// Every item of a word list read in one layout, through the library's own
// reader; false when the file will not open.
bool ReadItems(const std::string& path, bool oneLine, std::vector<Item>* items) {
  int file = vcCEnglishTxtFile_OpenEx(path.c_str(), oneLine ? 1 : 0);
  if (file < 0) return false;
  static char english[4000], chinese[4000];
  while (vcCEnglishTxtFile_GetNextItem(file, english, chinese) == 1) {
    Item item = MakeItem(english, chinese);
    if (!item.word.empty()) items->push_back(item);
  }
  vcCEnglishTxtFile_Close(file);
  return true;
}

size_t WithMeaning(const std::vector<Item>& items) {
  size_t n = 0;
  for (const Item& it : items) n += it.meaning.empty() ? 0 : 1;
  return n;
}

// Reads a word list in the layout asked for, or else in the layout that
// pairs more words with a meaning: a list of alternate lines read as one
// line per entry gives words without meanings, and the other way round the
// entries are not English lines at all.
bool ReadWordList(const std::string& path, Layout layout, std::vector<Item>* items) {
  if (layout != Layout::kAuto) return ReadItems(path, layout == Layout::kOneLine, items);
  std::vector<Item> alternate, oneLine;
  if (!ReadItems(path, false, &alternate) || !ReadItems(path, true, &oneLine)) return false;
  *items = WithMeaning(oneLine) > WithMeaning(alternate) ? oneLine : alternate;
  return true;
}

// A history file of blank records (never learnt, numbered 0 up), one per
// word, beside the book.
bool WriteBlankHistory(const std::string& path, int words) {
  return vcCOrvexWizard_GenBlankHistoryFile(path.c_str(), words) == 1;
}

std::string HistoryPath(const std::string& idx) {
  size_t dot = idx.rfind('.');
  size_t slash = idx.rfind('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return idx + ".his";
  return idx.substr(0, dot) + ".his";
}

int Import(const std::string& file, const std::string& idx, Layout layout) {
  std::vector<Item> items;
  if (vcIfFileExist(file.c_str()) != 1) {
    std::fprintf(stderr, "tqcomm: there is no file %s\n", file.c_str());
    return 1;
  }
  if (!ReadWordList(file, layout, &items)) {
    std::fprintf(stderr, "tqcomm: cannot read %s\n", file.c_str());
    return 1;
  }
  if (items.empty()) {
    std::fprintf(stderr,
                 "tqcomm: %s holds no English item (a word list has an English word or phrase on a line, "
                 "with its Chinese meaning on the next line or behind it on the same line)\n",
                 file.c_str());
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
  std::string history = HistoryPath(idx);
  if (!WriteBlankHistory(history, added)) {
    std::fprintf(stderr, "tqcomm: cannot write the history file %s\n", history.c_str());
    return 1;
  }
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
    // A book keeps an empty pronunciation as "[]"; nothing to show.
    std::string shown = std::strcmp(pron, "[]") == 0 ? "" : ForTerminal(pron);
    std::printf("%4d  %-16s %-18s %s\n", i, word, shown.c_str(), ForTerminal(expl).c_str());
  }
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
  return 0;
}

}  // namespace

int ImportWordList(const std::string& file, const std::string& idx) { return Import(file, idx, Layout::kAuto); }

int ListBook(const std::string& idx) { return List(idx); }

std::string BookHistoryPath(const std::string& idx) { return HistoryPath(idx); }

bool ReadListWords(const std::string& file, std::vector<std::string>* words) {
  std::vector<Item> items;
  if (!ReadWordList(file, Layout::kAuto, &items)) return false;
  for (const Item& it : items) words->push_back(it.word);
  return true;
}

int BookCommand(const Args& in) {
  Args args = in;
  std::string idx = DataDir() + "/sample.idx";
  TakeOption(&args, "--book", &idx);
  std::string layoutName = "auto";
  TakeOption(&args, "--layout", &layoutName);
  Layout layout = Layout::kAuto;
  if (layoutName == "alternate") {
    layout = Layout::kAlternate;
  } else if (layoutName == "one-line") {
    layout = Layout::kOneLine;
  } else if (layoutName != "auto") {
    args.clear();  // falls to the usage below
  }
  if (args.size() == 2 && args[0] == "import") return Import(args[1], idx, layout);
  if (args.size() == 1 && args[0] == "list") return List(idx);
  if (args.size() == 1 && args[0] == "sample") {
    int r = Import(SampleDir() + "/words.txt", idx, Layout::kAlternate);
    return r != 0 ? r : List(idx);
  }
  std::fprintf(stderr,
               "usage: tqcomm book import FILE [--layout auto|alternate|one-line] | list | sample "
               "[--book BOOK.idx]\n");
  return 2;
}

}  // namespace tqcomm
