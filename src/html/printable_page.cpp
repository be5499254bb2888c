#include "html/printable_page.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform/env.h"

namespace tq::html {
namespace {

const char kTextBox[] = "<input type=\"text\" id=";
// "<p>Answers to choose from:</p>" in GBK.
const char kAnswerListHead[] = "\r\n<p>\xB1\xB8\xD1\xA1\xB4\xF0\xB0\xB8\xA3\xBA</p>\r\n";

bool StartsWithBodyEnd(const char* line) {
  static const char kEnd[] = "</body>";
  for (size_t i = 0; kEnd[i] != '\0'; ++i) {
    char c = line[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != kEnd[i]) return false;
  }
  return true;
}

void TrimAnswer(char* s) {
  size_t n = std::strlen(s);
  while (n > 0 && (s[n - 1] == '\r' || s[n - 1] == '\n' || s[n - 1] == ' ')) --n;
  s[n] = '\0';
}

class PrintableCopy {
 public:
  PrintableCopy(std::FILE* out, std::FILE* answers, int blank_mode, int numbered)
      : out_(out), answers_(answers), numbered_(numbered) {
    // Without answers to fill in, the boxes can only become blanks.
    fill_ = blank_mode == 0 && answers != nullptr;
  }

  // Copies one line of the page with every text box in it replaced.
  void Line(const char* p) {
    for (;;) {
      const char* box = std::strstr(p, kTextBox);
      if (box == nullptr) break;
      const char* close = std::strchr(box + sizeof kTextBox - 1, '>');
      if (close == nullptr) break;  // a box must end on its own line
      std::fwrite(p, 1, static_cast<size_t>(box - p), out_);
      ReplaceBox();
      p = close + 1;
    }
    std::fputs(p, out_);
  }

  // The answers at the foot of the page. Equal answers in a row share a
  // number; each goes in with its own line end.
  void AnswerList(std::vector<char>* buf) {
    std::fputs(kAnswerListHead, out_);
    std::string previous;
    int n = 0;
    while (std::fgets(buf->data(), static_cast<int>(buf->size()), answers_) != nullptr) {
      if (previous != buf->data()) {
        ++n;
        previous = buf->data();
      }
      std::fprintf(out_, "%d) %s&nbsp;&nbsp&nbsp;&nbsp;", n, buf->data());
    }
  }

 private:
  void ReplaceBox() {
    if (fill_) {
      // Too few answers leave the last one standing in the buffer.
      if (std::fgets(answer_, sizeof answer_, answers_) != nullptr) TrimAnswer(answer_);
      std::fprintf(out_, "<b><u>%s</u></b>", answer_);
    } else if (numbered_ != 0) {
      std::fprintf(out_, "[%d]_____________", counter_);
    } else {
      std::fputs("_____________", out_);
    }
    ++counter_;
  }

  std::FILE* out_;
  std::FILE* answers_;
  int numbered_;
  bool fill_;
  int counter_ = 1;
  char answer_[kFilledAnswer + 1] = "";
};

}  // namespace

int GenPrintablePage(const char* srcPath, const char* dstPath, const char* answerPath, int blankMode,
                     int numbered) {
  std::FILE* src = srcPath != nullptr ? env::Open(srcPath, "rb") : nullptr;
  if (src == nullptr) return -1;
  std::FILE* dst = dstPath != nullptr ? env::Open(dstPath, "wb") : nullptr;
  if (dst == nullptr) {
    std::fclose(src);
    return -1;
  }
  std::FILE* answers = answerPath != nullptr ? env::Open(answerPath, "rb") : nullptr;

  std::vector<char> line(kPrintableLine + 1);
  PrintableCopy copy(dst, answers, blankMode, numbered);
  bool body_ended = false;
  while (std::fgets(line.data(), static_cast<int>(line.size()), src) != nullptr) {
    if (StartsWithBodyEnd(line.data())) {
      body_ended = true;
      break;
    }
    copy.Line(line.data());
  }
  // A page without its body's end tag is copied as it is, and whatever
  // follows that tag is dropped for the page's own ending.
  if (body_ended) {
    if (blankMode != 0 && answers != nullptr) copy.AnswerList(&line);
    std::fputs("</body>\r\n</html>\r\n", dst);
  }
  if (answers != nullptr) std::fclose(answers);
  std::fclose(dst);
  std::fclose(src);
  return 1;
}

}  // namespace tq::html
