#include "learning_options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "tqcomm2006.h"

namespace tqcomm {
namespace {

const int32_t kDefaultCurve[7] = {0, 1, 2, 4, 7, 15, 30};

bool ParseDate(const std::string& text, int* day) {
  int y, m, d;
  char tail;
  if (std::sscanf(text.c_str(), "%d-%d-%d%c", &y, &m, &d, &tail) != 3) return false;
  if (y < 1900 || y > 2078 || m < 1 || m > 12 || d < 1 || d > 31) return false;
  *day = vcGetDaysFrom1900_1_1(y, m, d) + 2;  // day numbers count from 1899-12-30
  char check[32];
  vcGetDateStr(*day, check);
  int cy, cm, cd;
  return std::sscanf(check, "%d-%d-%d", &cy, &cm, &cd) == 3 && cy == y && cm == m && cd == d;
}

int Today() {
  std::time_t now = std::time(nullptr);
  std::tm local;
  localtime_r(&now, &local);
  return vcGetDaysFrom1900_1_1(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) + 2;
}

bool ParseCurve(const std::string& text, int32_t* curve) {
  int n = 0;
  size_t pos = 0;
  while (pos <= text.size() && n < 7) {
    size_t comma = text.find(',', pos);
    std::string part = text.substr(pos, comma == std::string::npos ? std::string::npos : comma - pos);
    char* end = nullptr;
    long v = std::strtol(part.c_str(), &end, 10);
    if (part.empty() || *end != '\0' || v < 0 || v > 10000) return false;
    curve[n++] = static_cast<int32_t>(v);
    if (comma == std::string::npos) break;
    pos = comma + 1;
  }
  if (n != 7 || text.find(',', pos) != std::string::npos) return false;
  for (int i = 1; i < 7; ++i) {
    if (curve[i] < curve[i - 1]) return false;
  }
  return true;
}

}  // namespace

const char kLearningOptionsHelp[] =
    "  --book BOOK.idx     the word book (default: the bundled sample list, made into\n"
    "                      a book in the data folder on first use)\n"
    "  --history H.his     its history file (default: beside the book, BOOK.his)\n"
    "  --date YYYY-MM-DD   today (default: the computer's date)\n"
    "  --curve A,B,...     the forgetting curve: seven rising day offsets from a\n"
    "                      word's first learning (default 0,1,2,4,7,15,30)\n";

bool TakeLearningOptions(Args* args, LearningOptions* o) {
  std::string date, curve;
  o->sample_book = !TakeOption(args, "--book", &o->idx);
  if (o->sample_book) o->idx = DataDir() + "/sample.idx";
  if (!TakeOption(args, "--history", &o->history)) o->history = Stem(o->idx) + ".his";
  o->day = Today();
  if (TakeOption(args, "--date", &date) && !ParseDate(date, &o->day)) {
    std::fprintf(stderr, "tqcomm: --date wants YYYY-MM-DD between 1900 and 2078, not %s\n", date.c_str());
    return false;
  }
  std::copy(kDefaultCurve, kDefaultCurve + 7, o->curve);
  if (TakeOption(args, "--curve", &curve) && !ParseCurve(curve, o->curve)) {
    std::fprintf(stderr, "tqcomm: --curve wants seven rising day offsets, as 0,1,2,4,7,15,30\n");
    return false;
  }
  return true;
}

bool WantsHelp(const Args& args) {
  return std::any_of(args.begin(), args.end(), [](const std::string& a) { return a == "--help" || a == "-h"; });
}

bool TakeNumberOption(Args* args, const std::string& name, int low, int high, int* value) {
  std::string text;
  if (!TakeOption(args, name, &text)) return true;
  char* end = nullptr;
  long n = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || n < low || n > high) {
    std::fprintf(stderr, "tqcomm: %s wants a whole number from %d to %d, not %s\n", name.c_str(), low, high,
                 text.c_str());
    return false;
  }
  *value = static_cast<int>(n);
  return true;
}

int PrepareSampleBook(const LearningOptions& o) {
  if (!o.sample_book || FileLengthOf(o.idx) > 0) return 0;
  return ImportWordList(SampleDir() + "/words.txt", o.idx);
}

int OpenBook(const std::string& idx, int* words) {
  int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  *words = vcCOrvexBook_OpenIdx(book, "rb");
  if (*words >= 0 && vcCOrvexBook_OpenLib(book, "rb") < 0) *words = -1;
  return book;
}

void CloseBook(int book) {
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
}

std::string DateText(int day) {
  char text[32];
  vcGetDateStr(day, text);
  return text;
}

long FileLengthOf(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) return -1;
  std::fseek(f, 0, SEEK_END);
  long n = std::ftell(f);
  std::fclose(f);
  return n;
}

std::string Stem(const std::string& path) {
  size_t dot = path.rfind('.');
  size_t slash = path.rfind('/');
  if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) return path.substr(0, dot);
  return path;
}

bool CountWordTotals(const std::string& history, WordTotals* t) {
  *t = WordTotals();
  if (vcCOrvexWizard_GetBookInfo(history.c_str(), &t->not_met, &t->learning, &t->known, &t->mastered) != 1) {
    return false;
  }
  long records = FileLengthOf(history) / 48;
  long rest = records - t->not_met - t->learning - t->known - t->mastered;
  t->relapsed = rest < 0 ? 0 : static_cast<int32_t>(rest);
  return true;
}

std::string WordTotalsLine(const WordTotals& t) {
  char line[160];
  std::snprintf(line, sizeof line, "words: %d not met, %d being learnt, %d known, %d mastered, %d relapsed",
                t.not_met, t.learning, t.known, t.mastered, t.relapsed);
  return line;
}

}  // namespace tqcomm
