// tqcomm notebook: the user's own word collection, beside the books in the
// data folder. Words are added with their pronunciation and meaning (from a
// dictionary when there is one), listed, removed, and shown as a front end's
// word list paints them. A notebook is a word book, so `tqcomm learn --book`
// learns from it.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "commands.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

const char kUsage[] =
    "usage: tqcomm notebook add WORD [--pron P] [--mean M] [--dict DIR]\n"
    "       tqcomm notebook list\n"
    "       tqcomm notebook remove WORD...\n"
    "       tqcomm notebook show --png OUT.png\n"
    "options: --notebook IDX  another notebook than the data folder's notebook.idx\n"
    "add takes the pronunciation and meaning from the dictionary of --dict (default: the data\n"
    "folder's dict, when there is one); --pron and --mean give them instead.\n";

int Usage(FILE* to, int code) {
  std::fputs(kUsage, to);
  return code;
}

std::string Absolute(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char cwd[4096];
  return getcwd(cwd, sizeof cwd) ? std::string(cwd) + "/" + path : path;
}

std::string Folder(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// The message boxes of the notebook functions, on the terminal.
int BoxToTerminal(const char* text, const char* title, unsigned) {
  std::fprintf(stderr, "%s: %s\n", ForTerminal(title).c_str(), ForTerminal(text).c_str());
  return 1;
}

// A meaning of several lines on one line, as a list shows it.
std::string OneLine(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r' || c == '\n') {
      while (i + 1 < text.size() && (text[i + 1] == '\r' || text[i + 1] == '\n')) ++i;
      if (!out.empty() && i + 1 < text.size()) out += "; ";
    } else if (c != '$') {  // "$" would end the explanation for the word book reader
      out.push_back(c);
    }
  }
  return out;
}

std::string Bracketed(const std::string& pron) {
  std::string out = pron;
  if (out.empty() || out.front() != '[') out.insert(out.begin(), '[');
  if (out.size() < 2 || out.back() != ']') out.push_back(']');
  return out;
}

// Pronunciation and meaning of a word from the compact dictionary in dir
// (exact, else its base form). False when the word is not there.
bool FromDictionary(const std::string& dir, const std::string& word, std::string* pron, std::string* mean) {
  char cwd[4096];
  if (getcwd(cwd, sizeof cwd) == nullptr || chdir(dir.c_str()) != 0) return false;
  bool found = false;
  int dict = vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", nullptr);
  if (dict > 0) {
    if (vcEcDict_Search(dict, word.c_str(), 1, 0) == 1) {
      std::vector<char> m(16384), p(1024);
      vcEcDict_GetMeanOrPron(dict, m.data(), p.data());
      *mean = m.data();
      *pron = p.data();
      found = true;
    }
    vcEcDict_Close(dict);
  }
  if (chdir(cwd) != 0) return false;
  return found;
}

bool InNotebook(const std::string& idx, const std::string& word) {
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  bool in = vcCOrvexBook_IfWordInBook(book, word.c_str()) == 1;
  vcCOrvexBook_Delete(book);
  return in;
}

int Add(const std::string& idx, Args args) {
  std::string pron, mean, dir;
  bool have_pron = TakeOption(&args, "--pron", &pron);
  bool have_mean = TakeOption(&args, "--mean", &mean);
  bool have_dir = TakeOption(&args, "--dict", &dir);
  if (args.size() != 1 || args[0].empty() || args[0].find_first_of("[]$") != std::string::npos) {
    return Usage(stderr, 2);
  }
  const std::string word = FromTerminal(args[0]);
  if (InNotebook(idx, word)) {
    std::fprintf(stderr, "tqcomm: %s is in the notebook already\n", args[0].c_str());
    return 1;
  }
  if (!have_dir) dir = DataDir() + "/dict";
  std::string dict_pron, dict_mean;
  if (!(have_pron && have_mean) && !FromDictionary(dir, word, &dict_pron, &dict_mean) && have_dir) {
    std::fprintf(stderr, "tqcomm: %s is not in the dictionary of %s\n", args[0].c_str(), dir.c_str());
    return 1;
  }
  pron = Bracketed(have_pron ? FromTerminal(pron) : dict_pron);
  mean = OneLine(have_mean ? FromTerminal(mean) : dict_mean);
  if (vcFullAppendNotebook(idx.c_str(), word.c_str(), mean.c_str(), pron.c_str(), 0) != 0) return 1;
  std::printf("%s %s %s (%d in the notebook)\n", args[0].c_str(), ForTerminal(pron).c_str(),
              ForTerminal(mean).c_str(), vcGetOrvexNotebookWordNum(idx.c_str()));
  return 0;
}

int List(const std::string& idx) {
  if (vcGetOrvexNotebookWordNum(idx.c_str()) == 0) {
    std::printf("the notebook is empty (add words with: tqcomm notebook add WORD)\n");
    return 0;
  }
  return ListBook(idx);
}

// The positions of the words to go, in book order; those not found are
// reported.
std::vector<int> Positions(const std::string& idx, const std::vector<int32_t>& offsets, const Args& words,
                           bool* all_found) {
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  vcCOrvexBook_OpenLib(book, "rb");
  std::vector<std::string> stored;
  for (int32_t offset : offsets) {
    static char word[4096];
    vcCOrvexBook_GetWord(book, &offset, word, nullptr, nullptr, nullptr, nullptr, nullptr);
    stored.push_back(word);
  }
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
  std::vector<int> out;
  *all_found = true;
  for (const std::string& w : words) {
    auto at = std::find(stored.begin(), stored.end(), FromTerminal(w));
    if (at == stored.end()) {
      std::fprintf(stderr, "tqcomm: %s is not in the notebook\n", w.c_str());
      *all_found = false;
      continue;
    }
    out.push_back(static_cast<int>(at - stored.begin()));
  }
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
  return out;
}

// Keeps the learning history beside the notebook in step with its words.
void DropFromHistory(const std::string& idx, const std::vector<int>& positions) {
  std::string history = BookHistoryPath(idx);
  std::string list = history.substr(0, history.size() - 4) + ".llr";
  for (auto p = positions.rbegin(); p != positions.rend(); ++p) {
    if (vcIfFileExist(history.c_str()) == 1) vcCOrvexWizard_DeleteWordInAll(history.c_str(), *p);
    if (vcIfFileExist(list.c_str()) == 1) vcCOrvexWizard_DeleteWordInLlr(list.c_str(), *p);
  }
}

int Remove(const std::string& idx_in, const Args& words) {
  if (words.empty()) return Usage(stderr, 2);
  // The rewrite makes its temporaries in the working directory: the
  // notebook's own folder, so that they are renamed into place.
  const std::string idx = Absolute(idx_in);
  if (chdir(Folder(idx).c_str()) != 0) {
    std::fprintf(stderr, "tqcomm: there is no notebook %s\n", idx.c_str());
    return 1;
  }
  BookRecord record;
  std::memset(&record, 0, sizeof record);
  int count = vcOpenBookIdxAndReturnNum(&record, idx.c_str());
  if (count <= 0) {
    vcCloseBookIdx(&record);
    std::fprintf(stderr, "tqcomm: the notebook %s is empty\n", idx.c_str());
    return 1;
  }
  std::vector<int32_t> offsets(count);
  int tag_count = vcOpenBookTagAndReturnNum(&record, nullptr);
  std::vector<int32_t> tags(100 + std::max(count, tag_count));  // a short tag file reads as zeros
  bool ok = vcReadBookIndex(&record, offsets.data(), count) == 0 && tag_count >= 0 &&
            vcReadWordTagThenCloseTag(&record, tags.data()) == 0 && vcOpenBookLib(&record, nullptr) >= 0;
  vcCloseBookIdx(&record);
  if (!ok) {
    vcCloseBookLib(&record);
    std::fprintf(stderr, "tqcomm: cannot read the notebook %s\n", idx.c_str());
    return 1;
  }
  bool all_found = false;
  std::vector<int> positions = Positions(idx, offsets, words, &all_found);
  std::vector<int32_t> flags(count, 0);
  for (int p : positions) flags[p] = 1;
  if (positions.empty()) {
    vcCloseBookLib(&record);
    return 1;
  }
  if (vcDeleteNoteBookWords(&record, offsets.data(), tags.data(), flags.data(), count) != 0) {
    std::fprintf(stderr, "tqcomm: cannot rewrite the notebook %s\n", idx.c_str());
    return 1;
  }
  DropFromHistory(idx, positions);
  std::printf("removed %zu word%s (%d left)\n", positions.size(), positions.size() == 1 ? "" : "s",
              vcGetOrvexNotebookWordNum(idx.c_str()));
  return all_found ? 0 : 1;
}

// A front end's word list paints each word into its own row: the word, the
// pronunciation and the meaning, with the list's line at the row's foot.
constexpr int kRowWidth = 600;
constexpr int kRowHeight = 24;

// Copies a row surface into the picture at y, a run of one colour at a time.
void CopyRow(int row, int picture, int y) {
  for (int py = 0; py < kRowHeight; ++py) {
    int start = 0;
    unsigned colour = tqHost_GetPixel(row, 0, py);
    for (int px = 1; px <= kRowWidth; ++px) {
      unsigned c = px < kRowWidth ? tqHost_GetPixel(row, px, py) : ~colour;
      if (c == colour) continue;
      if (colour != 0xFFFFFF) tqHost_FillRect(picture, start, y + py, px, y + py + 1, colour);
      start = px;
      colour = c;
    }
  }
}

int Show(const std::string& idx, Args args) {
  std::string png;
  if (!TakeOption(&args, "--png", &png) || !args.empty()) return Usage(stderr, 2);
  BookRecord record;
  std::memset(&record, 0, sizeof record);
  int count = vcOpenBookIdxAndReturnNum(&record, idx.c_str());
  if (count <= 0 || vcOpenBookLib(&record, nullptr) < 0) {
    vcCloseBookIdx(&record);
    std::fprintf(stderr, "tqcomm: the notebook %s is empty\n", idx.c_str());
    return 1;
  }
  std::vector<int32_t> offsets(count);
  vcReadBookIndex(&record, offsets.data(), count);
  int picture = tqHost_CreateDC(kRowWidth, kRowHeight * count);
  int row = tqHost_CreateDC(kRowWidth, kRowHeight);
  int done = picture != 0 && row != 0 ? 0 : 1;
  for (int i = 0; done == 0 && i < count; ++i) {
    tqHost_FillRect(row, 0, 0, kRowWidth, kRowHeight, 0xFFFFFF);
    vcDispWord(&record, offsets[i], row, 4, 3);
    vcDispPronun(&record, offsets[i], row, 150, 3);
    vcDispExplain(&record, offsets[i], row, 290, 3);
    CopyRow(row, picture, i * kRowHeight);
  }
  vcCloseBookIdx(&record);
  vcCloseBookLib(&record);
  if (done == 0 && tqHost_SavePng(picture, png.c_str()) != 1) done = 1;
  tqHost_DeleteDC(row);
  tqHost_DeleteDC(picture);
  if (done != 0) {
    std::fprintf(stderr, "tqcomm: cannot draw the notebook to %s\n", png.c_str());
    return 1;
  }
  std::printf("%d word%s -> %s (%dx%d)\n", count, count == 1 ? "" : "s", png.c_str(), kRowWidth, kRowHeight * count);
  return 0;
}

}  // namespace

int NotebookCommand(const Args& in) {
  Args args = in;
  if (std::find(args.begin(), args.end(), "--help") != args.end()) return Usage(stdout, 0);
  std::string idx = DataDir() + "/notebook.idx";
  TakeOption(&args, "--notebook", &idx);
  tqHost_SetMessageBoxHandler(BoxToTerminal);
  if (args.empty()) return Usage(stderr, 2);
  std::string verb = args[0];
  args.erase(args.begin());
  if (verb == "add") return Add(idx, args);
  if (verb == "list" && args.empty()) return List(idx);
  if (verb == "remove") return Remove(idx, args);
  if (verb == "show") return Show(idx, args);
  return Usage(stderr, 2);
}

}  // namespace tqcomm
