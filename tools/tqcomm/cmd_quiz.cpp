// tqcomm quiz: question banks from text to exam pages.
//
//   quiz build BANK.txt [-o BANK.dat] [--fill] [--append]
//   quiz page BANK.dat [-o EXAM.htm] [--fill] [--shuffle] [--random] [--list N,N,...] ...
//   quiz print EXAM.htm [-o PRINT.htm] [--filled] [--plain] [--no-list]
//   quiz import FILE.gift|FILE.txt [-o BANK.txt] [--format gift|aiken] [--encoding utf-8|gbk]
#include <iconv.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "commands.h"
#include "quiz_import.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

const char kHelp[] =
    "usage: tqcomm quiz COMMAND ...\n"
    "\n"
    "  quiz build BANK.txt [-o BANK.dat] [--fill] [--append]\n"
    "      Compiles a question text (GBK) into a question file. Choice questions:\n"
    "        $ He _______ to school every day.    \"$\" or a number starts a question\n"
    "        A) go                                options A) to E)\n"
    "        B) goes\n"
    "        #B                                   the answer\n"
    "        DGR 2 / CLS gx / KNO 01.234          difficulty, class, knowledge code\n"
    "        // a comment                         also CMT text, or /* lines */\n"
    "      --fill: one fill-blank question a line, answers in brackets:\n"
    "        He [goes] to school every day.\n"
    "      A question without DGR, KNO or an answer line keeps those of the one\n"
    "      before; warnings name the lines where that happens.\n"
    "\n"
    "  quiz page BANK.dat [-o EXAM.htm] [--fill] [--shuffle] [--random] [--list N,N,...]\n"
    "            [--background IMAGE] [--delete-links] [--degree MIN-MAX] [--show-degree]\n"
    "      Writes the exam page (GB2312) with its images beside it and prints the\n"
    "      answers. --shuffle shuffles each question's options, --random the\n"
    "      questions; --list takes these record numbers (from 0) in this order.\n"
    "      Fill-blank pages: --degree shows only those degrees (default all),\n"
    "      --show-degree shows each question's degree.\n"
    "\n"
    "  quiz print EXAM.htm [-o PRINT.htm] [--filled] [--plain] [--no-list]\n"
    "      A copy for paper: text boxes become numbered blanks with the answers\n"
    "      listed at the foot (--plain: no numbers, --no-list: no list), or with\n"
    "      --filled the answers themselves, underlined.\n"
    "\n"
    "  quiz import FILE.gift|FILE.txt [-o BANK.txt] [--format gift|aiken] [--encoding utf-8|gbk]\n"
    "      Turns the multiple-choice questions of a Moodle GIFT or Aiken file into\n"
    "      a question text for quiz build (default output FILE.bank.txt). Input is\n"
    "      UTF-8 unless it is not valid UTF-8 (then GBK); output is GBK.\n"
    "\n"
    "Exit status: 0 done, 1 failure, 2 bad usage.\n";

int BadUsage(const char* why) {
  std::fprintf(stderr, "tqcomm quiz: %s\n(tqcomm quiz --help tells more)\n", why);
  return 2;
}

bool TakeFlag(Args* args, const std::string& name) {
  for (size_t i = 0; i < args->size(); ++i) {
    if ((*args)[i] == name) {
      args->erase(args->begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
  }
  return false;
}

bool ReadAll(const std::string& path, std::string* out) {
  std::ifstream f(path, std::ios::binary);
  if (!f) return false;
  std::stringstream ss;
  ss << f.rdbuf();
  *out = ss.str();
  return true;
}

// ReadAll, or a message saying why not.
bool ReadInput(const std::string& path, std::string* out) {
  if (ReadAll(path, out)) return true;
  std::fprintf(stderr, "tqcomm: cannot read %s\n", path.c_str());
  return false;
}

bool WriteAll(const std::string& path, const std::string& bytes) {
  std::ofstream f(path, std::ios::binary | std::ios::trunc);
  f.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(f);
}

std::string WithExtension(const std::string& path, const std::string& ext) {
  size_t dot = path.rfind('.'), slash = path.rfind('/');
  bool has = dot != std::string::npos && (slash == std::string::npos || dot > slash);
  return (has ? path.substr(0, dot) : path) + ext;
}

// iconv over the whole text; a byte sequence that does not convert becomes
// "?" and makes the answer false.
bool Recode(const std::string& in, const char* to, const char* from, std::string* out) {
  iconv_t cd = iconv_open(to, from);
  if (cd == reinterpret_cast<iconv_t>(-1)) return *out = in, false;
  std::string src = in;
  out->assign(src.size() * 4 + 8, '\0');
  char *s = src.data(), *d = out->data();
  size_t left = src.size(), room = out->size();
  bool exact = true;
  while (left > 0 && iconv(cd, &s, &left, &d, &room) == static_cast<size_t>(-1)) {
    exact = false;
    if (room < 1) break;
    *d++ = '?', --room, ++s, --left;
  }
  iconv_close(cd);
  out->resize(out->size() - room);
  return exact;
}

bool Utf8ToGbk(const std::string& utf8, std::string* gbk) { return Recode(utf8, "GBK", "UTF-8", gbk); }

bool ValidUtf8(const std::string& s) {
  std::string ignored;
  return Recode(s, "UTF-16LE", "UTF-8", &ignored);
}

int64_t FileSize(const std::string& path) {
  std::ifstream f(path, std::ios::binary | std::ios::ate);
  return f ? static_cast<int64_t>(f.tellg()) : -1;
}

// ---- build ----

std::string Trimmed(const std::string& line) {
  size_t b = line.find_first_not_of(" \t"), e = line.find_last_not_of(" \t\r\n");
  return b == std::string::npos || e == std::string::npos || e < b ? "" : line.substr(b, e - b + 1);
}

size_t NumberLength(const std::string& line) {
  return line.find_first_not_of("123456789 .\t$") == std::string::npos ? line.size()
                                                                         : line.find_first_not_of("123456789 .\t$");
}

// The traps of a choice-question text, as the compiler would fall into
// them: a question dropped or left with the answer before, texts cut to
// their fields, options beyond five.
std::vector<std::string> LintChoice(const std::string& text) {
  std::vector<std::string> warnings;
  std::stringstream in(text);
  int n = 0, start = 0, options = 0;
  bool long_comment = false, answered = false, any_answer = false, in_question = false;
  auto warn = [&](int line, const std::string& what) { warnings.push_back(std::to_string(line) + ": " + what); };
  auto finish = [&] {
    if (!in_question || answered) return;
    warn(start, any_answer ? "no answer line: the question keeps the answer of the one before"
                           : "dropped: the bank has had no answer line (such as #B) yet");
  };
  for (std::string raw; std::getline(in, raw);) {
    ++n;
    std::string t = Trimmed(raw);
    if (long_comment) {
      long_comment = t.find("*/") == std::string::npos;
      continue;
    }
    if (t.empty()) continue;
    std::string upper = t;
    for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    if ((t[0] >= '1' && t[0] <= '9') || t[0] == '$') {
      finish();
      in_question = true, answered = false, start = n, options = 0;
      if (t.size() - NumberLength(t) > 255) warn(n, "the question is cut to 255 bytes");
    } else if (t.size() > 1 && t[1] == ')') {
      if (++options > 5) warn(n, "a sixth option has no room and is dropped");
      if (t.size() - 2 > 95) warn(n, "the option is cut to 95 bytes");
    } else if (t == "/*" || upper == "CMT/*") {
      long_comment = true;
    } else if (t[0] == '#' && upper.compare(0, 3, "CMT") != 0) {
      answered = any_answer = true;
      int place = t.size() > 1 ? t[1] - 'A' : -1;
      if (place < 0 || place >= options) warn(n, "the answer names no option of the question");
    }
  }
  finish();
  return warnings;
}

std::vector<std::string> LintFill(const std::string& text) {
  std::vector<std::string> warnings;
  std::stringstream in(text);
  int n = 0;
  for (std::string raw; std::getline(in, raw);) {
    ++n;
    std::string t = Trimmed(raw);
    t = t.substr(NumberLength(t));
    if (t.size() > 255) warnings.push_back(std::to_string(n) + ": the question is cut to 255 bytes");
    if (t.rfind('[') != std::string::npos && t.find(']', t.rfind('[')) == std::string::npos) {
      warnings.push_back(std::to_string(n) + ": a \"[\" without its \"]\" stays as text");
    }
  }
  return warnings;
}

int Build(Args args) {
  std::string out;
  bool fill = TakeFlag(&args, "--fill"), append = TakeFlag(&args, "--append");
  bool named = TakeOption(&args, "-o", &out);
  if (args.size() != 1) return BadUsage("build takes one question text");
  const std::string& bank = args[0];
  if (!named) out = WithExtension(bank, ".dat");
  std::string text;
  if (!ReadInput(bank, &text)) return 1;
  for (const std::string& w : fill ? LintFill(text) : LintChoice(text)) {
    std::fprintf(stderr, "%s:%s\n", bank.c_str(), ForTerminal(w).c_str());
  }
  const int64_t record = fill ? sizeof(FillBlankQtRecord) : sizeof(ChoiceQtRecord);
  const int64_t before = append ? std::max<int64_t>(FileSize(out), 0) / record : 0;
  int ok = fill ? vcFillBlankQtFile_AddQtTextFile(out.c_str(), bank.c_str(), append ? 0 : 1)
                : vcChoiceQtFile_AddQtTextFile(out.c_str(), bank.c_str(), append ? 0 : 1);
  if (ok != 1) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", out.c_str());
    return 1;
  }
  const int64_t records = FileSize(out) / record;
  const int64_t added = records - before;
  if (added == 0) {
    std::fprintf(stderr, "tqcomm: %s holds no question%s\n", bank.c_str(),
                 fill ? "" : " that could be kept (a question is kept once the bank has an answer line, #B)");
    return 1;
  }
  std::printf("%lld %s questions -> %s (%lld in all)\n", static_cast<long long>(added), fill ? "fill-blank" : "choice", out.c_str(),
              static_cast<long long>(records));
  return 0;
}

// ---- page ----

bool ParseList(const std::string& text, std::vector<int32_t>* list) {
  list->assign(1, 0);
  std::stringstream in(text);
  for (std::string item; std::getline(in, item, ',');) {
    char* end = nullptr;
    long v = std::strtol(item.c_str(), &end, 10);
    if (item.empty() || *end != '\0' || v < 0 || v > INT32_MAX) return false;
    list->push_back(static_cast<int32_t>(v));
  }
  (*list)[0] = static_cast<int32_t>(list->size() - 1);
  return list->size() > 1;
}

struct PageAnswer {
  std::string id, name;
};

// The answers a page carries in the names of its "answ" anchors, in order.
std::vector<PageAnswer> PageAnswers(const std::string& page) {
  std::vector<PageAnswer> answers;
  const std::string mark = "<a id = \"answ";
  for (size_t at = page.find(mark); at != std::string::npos; at = page.find(mark, at + 1)) {
    size_t id_end = page.find('"', at + mark.size());
    size_t name = page.find("name", id_end);
    size_t open = name == std::string::npos ? name : page.find('"', name);
    size_t close = open == std::string::npos ? open : page.find('"', open + 1);
    if (close == std::string::npos) break;
    answers.push_back({page.substr(at + mark.size(), id_end - at - mark.size()), page.substr(open + 1, close - open - 1)});
  }
  return answers;
}

void PrintKey(const std::vector<PageAnswer>& answers, bool fill) {
  std::string line = "key:";
  std::string last_question;
  for (const PageAnswer& a : answers) {
    std::string item;
    if (fill) {
      std::string question = std::to_string(std::atoi(a.id.substr(0, a.id.find('-')).c_str()));
      item = (question == last_question ? ", " : "  " + question + ". ") + ForTerminal(a.name);
      last_question = question;
    } else {
      item = " " + a.id + "." + a.name.substr(0, 1);
    }
    if (line.size() + item.size() > 76 && item[0] == ' ') {
      std::printf("%s\n", line.c_str());
      line = "    ";
    }
    line += item;
  }
  std::printf("%s\n", line.c_str());
}

bool CopyImages(const std::string& dir) {
  const std::string images = SampleDir() + "/../html/";
  for (const char* image : {"savesample.jpg", "savesentence.jpg"}) {
    std::string bytes;
    if (!ReadAll(images + image, &bytes) || !WriteAll(dir + "/" + image, bytes)) {
      std::fprintf(stderr, "tqcomm: cannot copy %s%s to %s\n", images.c_str(), image, dir.c_str());
      return false;
    }
  }
  return true;
}

int Page(Args args) {
  std::string out, list_text, background, degrees;
  bool fill = TakeFlag(&args, "--fill"), shuffle = TakeFlag(&args, "--shuffle"), random = TakeFlag(&args, "--random");
  bool delete_links = TakeFlag(&args, "--delete-links"), show_degree = TakeFlag(&args, "--show-degree");
  bool named = TakeOption(&args, "-o", &out);
  bool listed = TakeOption(&args, "--list", &list_text);
  TakeOption(&args, "--background", &background);
  bool filtered = TakeOption(&args, "--degree", &degrees);
  if (args.size() != 1) return BadUsage("page takes one question file");
  const std::string& bank = args[0];
  if (!named) out = WithExtension(bank, ".htm");
  std::vector<int32_t> list;
  if (listed && !ParseList(list_text, &list)) return BadUsage("--list wants record numbers such as 0,4,2");
  int min_degree = INT32_MIN, max_degree = INT32_MAX;
  if (filtered && std::sscanf(degrees.c_str(), "%d-%d", &min_degree, &max_degree) != 2) {
    if (std::sscanf(degrees.c_str(), "%d", &min_degree) != 1) return BadUsage("--degree wants MIN-MAX, as 1-3");
    max_degree = min_degree;
  }

  const int64_t size = FileSize(bank), record = fill ? sizeof(FillBlankQtRecord) : sizeof(ChoiceQtRecord);
  if (size < 0) {
    std::fprintf(stderr, "tqcomm: cannot read %s\n", bank.c_str());
    return 1;
  }
  if (size % record != 0) {
    std::fprintf(stderr, "tqcomm: %s is not a %s question file (%lld bytes, not a whole number of %lld-byte records)%s\n",
                 bank.c_str(), fill ? "fill-blank" : "choice", static_cast<long long>(size),
                 static_cast<long long>(record), fill ? "" : "; a fill-blank file wants --fill");
    return 1;
  }
  int file = fill ? vcFillBlankQtFile_Open(bank.c_str(), "rb") : vcChoiceQtFile_Open(bank.c_str(), "rb");
  if (file < 0) {
    std::fprintf(stderr, "tqcomm: cannot open %s\n", bank.c_str());
    return 1;
  }
  const int32_t* list_arg = listed ? list.data() : nullptr;
  const char* background_arg = background.empty() ? nullptr : background.c_str();
  int shown = fill ? vcFillBlankQtFile_MakeHtml(file, out.c_str(), show_degree, min_degree, max_degree, 0,
                                                background_arg, list_arg, random)
                   : vcChoiceQtFile_MakeHtml(file, out.c_str(), shuffle, 0, background_arg, list_arg, random,
                                             delete_links);
  fill ? vcFillBlankQtFile_Close(file) : vcChoiceQtFile_Close(file);
  if (shown < 0) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", out.c_str());
    return 1;
  }
  std::string dir = out.find('/') == std::string::npos ? "." : out.substr(0, out.rfind('/'));
  if (!CopyImages(dir)) return 1;
  std::printf("%d questions -> %s\n", shown, out.c_str());
  std::string page;
  ReadAll(out, &page);
  PrintKey(PageAnswers(page), fill);
  return 0;
}

// ---- print ----

int Print(Args args) {
  std::string out;
  bool filled = TakeFlag(&args, "--filled"), plain = TakeFlag(&args, "--plain"), no_list = TakeFlag(&args, "--no-list");
  bool named = TakeOption(&args, "-o", &out);
  if (args.size() != 1) return BadUsage("print takes one exam page");
  const std::string& exam = args[0];
  if (!named) out = WithExtension(exam, "-print.htm");
  std::string page;
  if (!ReadInput(exam, &page)) return 1;
  // The boxes' answers, one a line in the order of the boxes, from the
  // names of the anchors behind them.
  std::string answers;
  int boxes = 0;
  for (const PageAnswer& a : PageAnswers(page)) {
    if (a.id.find('-') == std::string::npos) continue;  // a choice question's answer
    answers += a.name + "\r\n";
    ++boxes;
  }
  char answer_path[] = "/tmp/tqcomm-answers-XXXXXX";
  int fd = mkstemp(answer_path);
  if (fd < 0 || !WriteAll(answer_path, answers)) {
    std::fprintf(stderr, "tqcomm: cannot write a temporary file\n");
    return 1;
  }
  close(fd);
  const bool with_answers = filled || !no_list;
  int ok = vcGenPrintableHtml(exam.c_str(), out.c_str(), with_answers && boxes > 0 ? answer_path : nullptr,
                              filled ? 0 : 1, plain ? 0 : 1);
  std::remove(answer_path);
  if (ok != 1) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", out.c_str());
    return 1;
  }
  std::printf("%d text boxes %s -> %s\n", boxes, filled ? "filled" : "made blanks", out.c_str());
  return 0;
}

// ---- import ----

int Import(Args args) {
  std::string out, format, encoding;
  bool named = TakeOption(&args, "-o", &out);
  TakeOption(&args, "--format", &format);
  TakeOption(&args, "--encoding", &encoding);
  if (args.size() != 1) return BadUsage("import takes one GIFT or Aiken file");
  if (!format.empty() && format != "gift" && format != "aiken") return BadUsage("--format is gift or aiken");
  if (!encoding.empty() && encoding != "utf-8" && encoding != "gbk") return BadUsage("--encoding is utf-8 or gbk");
  const std::string& source = args[0];
  if (!named) out = WithExtension(source, ".bank.txt");
  std::string raw, utf8;
  if (!ReadInput(source, &raw)) return 1;
  if (encoding == "gbk" || (encoding.empty() && !ValidUtf8(raw))) {
    Recode(raw, "UTF-8", "GBK", &utf8);
  } else {
    utf8 = raw;
  }
  if (format.empty()) {
    bool gift = source.size() >= 5 && source.compare(source.size() - 5, 5, ".gift") == 0;
    format = !gift && LooksLikeAiken(utf8) ? "aiken" : "gift";
  }
  ImportResult parsed = format == "aiken" ? ParseAiken(utf8) : ParseGift(utf8);
  int written = 0;
  std::string name = source.substr(source.rfind('/') == std::string::npos ? 0 : source.rfind('/') + 1);
  std::string text = BankText(parsed.questions, (format == "aiken" ? "Aiken: " : "GIFT: ") + name, Utf8ToGbk,
                              &parsed.notes, &written);
  for (const std::string& note : parsed.notes) std::fprintf(stderr, "%s:%s\n", source.c_str(), note.c_str());
  if (written == 0) {
    std::fprintf(stderr, "tqcomm: no multiple-choice question in %s\n", source.c_str());
    return 1;
  }
  if (!WriteAll(out, text)) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", out.c_str());
    return 1;
  }
  std::printf("%d questions (%s) -> %s\n", written, format.c_str(), out.c_str());
  return 0;
}

}  // namespace

int QuizCommand(const Args& in) {
  if (in.empty()) return BadUsage("which command: build, page, print or import?");
  const std::string& what = in[0];
  if (what == "--help" || what == "-h" || what == "help") return std::fputs(kHelp, stdout), 0;
  Args rest(in.begin() + 1, in.end());
  if (std::find(rest.begin(), rest.end(), "--help") != rest.end()) return std::fputs(kHelp, stdout), 0;
  if (what == "build") return Build(rest);
  if (what == "page") return Page(rest);
  if (what == "print") return Print(rest);
  if (what == "import") return Import(rest);
  return BadUsage(("no command " + what).c_str());
}

}  // namespace tqcomm
