// tqcomm learn: a day's learning in the terminal. Today's words are the
// saved list of an unfinished day, else the words the forgetting curve says
// are due, then a few new ones. Each word is shown, the answer read from
// standard input, and the wizard writes the result to the history file at
// once; "q" or the end of input saves what is left for later.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "learning_options.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

constexpr int kDefaultNewWords = 10;

struct Options : LearningOptions {
  std::string list;
  int new_words = kDefaultNewWords;
};

// One line of standard input without its line end; false at the end of input.
bool ReadLine(std::string* line) {
  line->clear();
  char buf[256];
  bool got = false;
  while (std::fgets(buf, sizeof buf, stdin) != nullptr) {
    got = true;
    *line += buf;
    if (!line->empty() && line->back() == '\n') break;
  }
  while (!line->empty() && (line->back() == '\n' || line->back() == '\r' || line->back() == ' ')) line->pop_back();
  size_t start = line->find_first_not_of(' ');
  line->erase(0, start == std::string::npos ? line->size() : start);
  // Answers from a pipe are not echoed by a terminal; show them.
  static const bool piped = isatty(STDIN_FILENO) == 0;
  if (got && piped) std::printf("%s\n", line->c_str());
  return got;
}

// The wizard asks through a message box whether a word that has finished
// the curve is mastered for good; here the question goes to the terminal.
int AskInTerminal(const char* text, const char* title, unsigned type) {
  for (;;) {
    std::printf("%s: %s (y/n) ", ForTerminal(title).c_str(), ForTerminal(text).c_str());
    std::fflush(stdout);
    std::string line;
    if (!ReadLine(&line)) {
      std::printf("\n");
      return 7;  // No
    }
    if (line == "y" || line == "Y") return 6;
    if (line == "n" || line == "N") return 7;
    std::printf("  answer y or n\n");
  }
}

const char kUsage[] =
    "usage: tqcomm learn [--book BOOK.idx] [--history H.his] [--list L.llr] [--date YYYY-MM-DD]\n"
    "                    [--curve 0,1,2,4,7,15,30] [--new N]\n";

int Usage() {
  std::fputs(kUsage, stderr);
  return 2;
}

int Help() {
  std::printf(
      "%s\nA day's learning: today's words are the list kept from an unfinished day, else\n"
      "the words due by the forgetting curve, then up to N new ones. Answer each with\n"
      "1 right, 2 wrong, 3 unsure, 4 known, 5 right and done for today; q (or the end\n"
      "of input) keeps the rest for the next run.\n\n%s"
      "  --list L.llr        where an unfinished day's list is kept (default: beside\n"
      "                      the history, H.llr)\n"
      "  --new N             new words to add, 0 to 1000 (default %d)\n"
      "\nExit status: 0 done, 1 the book or history cannot be used, 2 bad usage.\n",
      kUsage, kLearningOptionsHelp, kDefaultNewWords);
  return 0;
}

bool ParseOptions(const Args& in, Options* o) {
  Args args = in;
  if (!TakeLearningOptions(&args, o)) return false;
  if (!TakeOption(&args, "--list", &o->list)) o->list = Stem(o->history) + ".llr";
  if (!TakeNumberOption(&args, "--new", 0, 1000, &o->new_words)) return false;
  return args.empty();
}

// Makes the history file match the book: blank records for every word
// that has none yet.
bool PrepareHistory(const Options& o, int words) {
  long length = FileLengthOf(o.history);
  if (length < 0) return vcCOrvexWizard_GenBlankHistoryFile(o.history.c_str(), words) == 1;
  int records = static_cast<int>(length / 48);
  if (records < words) return vcCOrvexWizard_AppendHistoryFile(o.history.c_str(), words - records) == 1;
  return true;
}

class Session {
 public:
  Session(const Options& o, int book) : o_(o), book_(book) {}
  ~Session() {
    if (wizard_ > 0) vcCOrvexWizard_Delete(wizard_);
  }

  bool Open() {
    if (wizard_ > 0) vcCOrvexWizard_Delete(wizard_);
    wizard_ = vcCOrvexWizard_New();
    if (wizard_ <= 0) return false;
    vcCOrvexWizard_SetFileNames(wizard_, o_.history.c_str());
    vcCOrvexWizard_SetForgetCurve(wizard_, o_.curve);
    vcCOrvexWizard_SetLearningBook(wizard_, book_);
    vcCOrvexWizard_SetDate(wizard_, o_.day);
    return true;
  }

  // Today's list: the saved rest of an unfinished day, else the due words
  // and then new ones. False when the history cannot be read.
  bool Select() {
    if (FileLengthOf(o_.list) > 0 && vcCOrvexWizard_LoadList(wizard_, o_.list.c_str()) > 0) {
      std::printf("%d words left from a day not finished\n", Length());
      return true;
    }
    int due = vcCOrvexWizard_GetWordsToLearn(wizard_, 1, 0);
    if (due < 0) return false;
    int32_t added = 0;
    if (o_.new_words > 0 && vcCOrvexWizard_AddTodayList(wizard_, 0, NewWordLimit(), &added) < 0) return false;
    if (added > o_.new_words) {  // only in a history whose records are out of order
      if (!KeepFirst(due + o_.new_words)) return false;
      added = o_.new_words;
    }
    std::printf("%d words due by the curve, %d new\n", due, added);
    return true;
  }

  // Runs the answer loop; the number of answers given.
  int Learn() {
    static char word[4096], expl[65536], pron[65536];
    int answered = 0;
    while (Length() > 0) {
      vcCOrvexWizard_GetItemEnglish(wizard_, word, 0);
      std::printf("\n(%d) %s\n", Length(), ForTerminal(word).c_str());
      int result = Ask();
      if (result == 0) break;
      vcCOrvexWizard_GetItemPron(wizard_, pron, 0);
      vcCOrvexWizard_GetItemChinese(wizard_, expl, 0);
      std::printf("    %s  %s\n", ForTerminal(pron).c_str(), ForTerminal(expl).c_str());
      vcCOrvexWizard_LearnItem(wizard_, result);
      ++answered;
    }
    return answered;
  }

  // Keeps the rest of the list for later, or forgets a finished day's list.
  int Finish() {
    int left = Length();
    if (left > 0) {
      if (vcCOrvexWizard_SaveList(wizard_, o_.list.c_str()) < 0) {
        std::fprintf(stderr, "tqcomm: cannot save the list to %s\n", o_.list.c_str());
      }
    } else {
      std::remove(o_.list.c_str());
    }
    return left;
  }

  int Length() const { return vcCOrvexWizard_GetListLength(wizard_); }

 private:
  // The answer to the front word: 1 to 5, or 0 to stop.
  static int Ask() {
    for (;;) {
      std::printf("1 right  2 wrong  3 unsure  4 known  5 right, done today  q stop > ");
      std::fflush(stdout);
      std::string line;
      if (!ReadLine(&line)) {
        std::printf("\n");
        return 0;
      }
      if (line == "q" || line == "Q") return 0;
      if (line.size() == 1 && line[0] >= '1' && line[0] <= '5') return line[0] - '0';
      std::printf("  answer 1 to 5, or q to stop and keep the rest for later\n");
    }
  }

  // The highest item number that lets in no more than the new words asked
  // for: that of the last of them, counting the words not yet met in file
  // order. 0 (no limit) when the book has no more than that many.
  int NewWordLimit() const {
    long records = FileLengthOf(o_.history) / 48;
    if (records <= 0) return 0;
    std::vector<int32_t> fresh(static_cast<size_t>(records) + 1);
    int n = vcCOrvexWizard_ReadWordListByAttr(o_.history.c_str(), 0, fresh.data());
    if (n <= o_.new_words || n > records) return 0;
    return fresh[static_cast<size_t>(o_.new_words) - 1];
  }

  // Cuts today's list to its first n words, through a list file. The words
  // lose their new-or-hard marks on the way, so this is the last resort.
  bool KeepFirst(int n) {
    std::vector<int32_t> items(static_cast<size_t>(Length()) + 1);
    vcCOrvexWizard_ExportList(wizard_, items.data());
    std::FILE* f = std::fopen(o_.list.c_str(), "wb");
    if (f == nullptr) return false;
    for (int i = 0; i < n; ++i) {
      unsigned char b[4];
      uint32_t v = static_cast<uint32_t>(items[static_cast<size_t>(i)]);
      for (int k = 0; k < 4; ++k) b[k] = static_cast<unsigned char>(v >> (8 * k));
      std::fwrite(b, 1, 4, f);
    }
    std::fclose(f);
    return Open() && vcCOrvexWizard_LoadList(wizard_, o_.list.c_str()) >= 0;
  }

  const Options& o_;
  int book_;
  int wizard_ = 0;
};

void PrintSummary(const Options& o, int answered, int left) {
  std::printf("\nanswered %d, left %d%s\n", answered, left, left > 0 ? " (kept for later)" : "");
  WordTotals totals;
  if (CountWordTotals(o.history, &totals)) std::printf("%s\n", WordTotalsLine(totals).c_str());
}

}  // namespace

int LearnCommand(const Args& args) {
  if (WantsHelp(args)) return Help();
  Options o;
  if (!ParseOptions(args, &o)) return Usage();
  if (int r = PrepareSampleBook(o); r != 0) return r;
  int words = 0;
  int book = OpenBook(o.idx, &words);
  if (words <= 0) {
    std::fprintf(stderr, "tqcomm: cannot open the book %s\n", o.idx.c_str());
    CloseBook(book);
    return 1;
  }
  tqHost_SetMessageBoxHandler(AskInTerminal);
  int status = 0;
  {
    std::printf("%s, %d words in %s\n", DateText(o.day).c_str(), words, o.idx.c_str());
    Session session(o, book);
    if (!PrepareHistory(o, words) || !session.Open() || !session.Select()) {
      std::fprintf(stderr, "tqcomm: cannot use the history file %s\n", o.history.c_str());
      status = 1;
    } else {
      int answered = session.Learn();
      int left = session.Finish();
      PrintSummary(o, answered, left);
    }
  }
  tqHost_SetMessageBoxHandler(nullptr);
  CloseBook(book);
  return status;
}

}  // namespace tqcomm
