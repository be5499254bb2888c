// The compiler of choice-question texts.
//
// One record is kept in hand for the whole text and never cleared between
// questions: a question replaces only its stem, its comment and the options
// it names. So a question without DGR or KNO inherits them from the one
// before, CLS letters add up over the bank, options beyond those given stay
// from earlier questions, and a question without an answer line keeps the
// answer and option count before it. Teachers' banks are written that way.
// A question is written when the next one starts or the text ends, once the
// bank has shown its first answer line; questions before that are dropped.
#include <cstdlib>
#include <cstring>
#include <string>

#include "core/binary_io.h"
#include "core/text.h"
#include "quiz/choice.h"

namespace tq::quiz {
namespace {

bool StartsWithFolded(const char* line, const char* keyword) {
  for (; *keyword != '\0'; ++line, ++keyword) {
    char c = *line;
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (c != *keyword) return false;
  }
  return true;
}

bool EqualsFolded(const char* line, const char* keyword) {
  return StartsWithFolded(line, keyword) && line[std::strlen(keyword)] == '\0';
}

int32_t ClassBit(char c) {
  switch (c) {
    case 'x': return 1;
    case 'c': return 2;
    case 'g': return 4;
    case 'd': return 8;
    case 't': return 16;
    default: return 0;
  }
}

// Up to `digits` decimal digits at p, read as a number; p moves past the
// bytes taken (never past the end of the line).
int32_t Digits(const char** p, int digits) {
  int32_t value = 0;
  for (int i = 0; i < digits && **p != '\0'; ++i, ++*p) {
    if (**p >= '0' && **p <= '9') value = value * 10 + (**p - '0');
  }
  return value;
}

// "KNO 01.234": two digits, a separator of any value, three digits.
int32_t KnowledgeCode(const char* p) {
  while (*p == ' ' || *p == '\t') ++p;
  int32_t group = Digits(&p, 2);
  if (*p != '\0') ++p;
  return group * 1000 + Digits(&p, 3);
}

int32_t Decimal(const char* p) {
  long v = std::strtol(p, nullptr, 10);
  if (v > INT32_MAX) return INT32_MAX;
  if (v < INT32_MIN) return INT32_MIN;
  return static_cast<int32_t>(v);
}

std::string TrimBlanks(const std::string& s) {
  size_t b = s.find_first_not_of(" \t");
  if (b == std::string::npos) return "";
  return s.substr(b, s.find_last_not_of(" \t") - b + 1);
}

class ChoiceCompiler {
 public:
  ChoiceCompiler(std::FILE* text, std::FILE* out) : reader_(text), out_(out) {
    std::memset(record_, 0, sizeof record_);
    PutI32(record_ + offsetof(ChoiceQtRecord, optionCount), 4);
  }

  void Run() {
    char line[LineReader::kBufferSize];
    while (reader_.Next(line) >= 0) Line(line);
    if (answer_seen_) Write();
  }

 private:
  void Line(const char* line) {
    if (line[0] == '\0') return;
    if ((line[0] >= '1' && line[0] <= '9') || line[0] == '$') return NewQuestion(line);
    if (line[1] == ')') return Option(line + 2);
    if (StartsWithFolded(line, "KNO ")) return SetInt(offsetof(ChoiceQtRecord, knowledgeCode), KnowledgeCode(line + 4));
    if (StartsWithFolded(line, "DGR ")) return SetInt(offsetof(ChoiceQtRecord, difficulty), Decimal(line + 4));
    if (StartsWithFolded(line, "CLS ")) return AddClasses(line + 4);
    if (std::strncmp(line, "// ", 3) == 0) return AddComment(line + 3);
    if (std::strcmp(line, "/*") == 0 || EqualsFolded(line, "CMT/*")) return LongComment();
    if (!StartsWithFolded(line, "CMT")) {
      if (line[0] == '#') Answer(line);
      return;
    }
    if (const char* open = std::strstr(line, "/*")) {
      std::string inner(open + 2);
      inner = inner.substr(0, inner.find("*/"));
      return AddComment(TrimBlanks(inner));
    }
    const char* rest = line + 3;
    if (*rest == ' ' || *rest == '\t') ++rest;
    AddComment(rest);
  }

  void NewQuestion(const char* line) {
    options_ = 0;
    if (answer_seen_) Write();
    comment_.clear();
    PutFieldText(record_, offsetof(ChoiceQtRecord, comment), kCommentSize, comment_);
    PutFieldText(record_, offsetof(ChoiceQtRecord, stem), kStemSize, SkipQuestionNumber(line));
  }

  // A sixth option has no field to go to and is dropped.
  void Option(const char* text) {
    if (options_ >= kMaxOptions) return;
    PutFieldText(record_, OptionOffset(options_), kOptionSize, text);
    ++options_;
  }

  void Answer(const char* line) {
    answer_seen_ = true;
    SetInt(offsetof(ChoiceQtRecord, answer), static_cast<unsigned char>(line[1]) - 'A');
    SetInt(offsetof(ChoiceQtRecord, optionCount), options_);
  }

  // Only the five lower-case letters count; anything else is passed over.
  void AddClasses(const char* letters) {
    int32_t bits = GetI32(record_ + offsetof(ChoiceQtRecord, classBits));
    for (; *letters != '\0'; ++letters) bits |= ClassBit(*letters);
    SetInt(offsetof(ChoiceQtRecord, classBits), bits);
  }

  // Lines up to one that holds "*/", each but the first behind a line feed;
  // of the closing line, what stands before the mark. A comment left open
  // ends with the text.
  void LongComment() {
    char line[LineReader::kBufferSize];
    for (bool first = true;; first = false) {
      if (!first) AddComment("\n");
      if (reader_.Next(line) < 0) return;
      if (char* close = std::strstr(line, "*/")) {
        *close = '\0';
        AddComment(line);
        return;
      }
      AddComment(line);
    }
  }

  // Pieces join with nothing between them; what does not fit in the field
  // is dropped.
  void AddComment(const std::string& piece) {
    if (comment_.size() >= kCommentMax) return;
    comment_ += CutText(piece, kCommentMax - comment_.size());
    PutFieldText(record_, offsetof(ChoiceQtRecord, comment), kCommentSize, comment_);
  }

  void SetInt(size_t offset, int32_t value) { PutI32(record_ + offset, value); }

  void Write() { std::fwrite(record_, 1, kChoiceSize, out_); }

  LineReader reader_;
  std::FILE* out_;
  unsigned char record_[kChoiceSize];
  std::string comment_;
  int options_ = 0;
  bool answer_seen_ = false;
};

}  // namespace

int CompileChoiceText(const char* binary_path, const char* text_path, int overwrite) {
  std::FILE *text, *out;
  if (!OpenForCompiling(binary_path, text_path, overwrite, &text, &out)) return -1;
  ChoiceCompiler(text, out).Run();
  std::fclose(out);
  std::fclose(text);
  return 1;
}

}  // namespace tq::quiz
