// tqcomm draw --width W [--line-height H] TEXT -o OUT.png: draws a text the
// way the front ends draw long explanations (vcDrawLongText, with its own
// line breaking of mixed Chinese and English) into a surface W pixels wide,
// and writes it as a PNG, so the breaks can be seen. A grey rule marks the
// width. TEXT "-" reads the text from standard input.
#include <iconv.h>
#include <langinfo.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <string>

#include "commands.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

const char kUsage[] =
    "usage: tqcomm draw --width W [--line-height H] TEXT -o OUT.png\n"
    "\n"
    "Draws TEXT with the library's long-text drawing into a surface W pixels\n"
    "wide and writes it as a PNG; lines longer than W are broken as the front\n"
    "ends break them. TEXT is in the terminal's encoding (UTF-8, or GBK on a\n"
    "GBK terminal); a line feed starts a new line. TEXT - reads standard input.\n"
    "  --width W         the width to break lines at, in pixels (1 to 4000)\n"
    "  --line-height H   the distance between lines (default: the font's\n"
    "                    height and 4 more)\n"
    "  -o OUT.png        where to write the picture\n";

constexpr int kMargin = 8;
constexpr unsigned kRuleColour = 0xD0D0D0;

bool TerminalIsGbk() {
  const char* set = nl_langinfo(CODESET);
  return std::strstr(set, "GB") != nullptr;  // GBK, GB18030, GB2312
}

// The text as GBK with CR LF line ends; characters GBK lacks become "?".
std::string ToGbk(const std::string& text, int* unmapped) {
  std::string in = text;
  std::string out;
  if (TerminalIsGbk()) {
    out = in;
  } else {
    iconv_t cd = iconv_open("GBK", "UTF-8");
    if (cd == reinterpret_cast<iconv_t>(-1)) return in;
    out.assign(in.size() * 2 + 8, '\0');
    char* src = in.data();
    size_t left = in.size();
    char* dst = out.data();
    size_t room = out.size();
    while (left > 0 && room > 1) {
      if (iconv(cd, &src, &left, &dst, &room) != static_cast<size_t>(-1)) break;
      // Pass over one whole UTF-8 character.
      size_t skip = 1;
      while (skip < left && (static_cast<unsigned char>(src[skip]) & 0xC0) == 0x80) ++skip;
      src += skip;
      left -= skip;
      *dst++ = '?';
      --room;
      ++*unmapped;
    }
    iconv_close(cd);
    out.resize(out.size() - room);
  }
  std::string crlf;
  for (size_t i = 0; i < out.size(); ++i) {
    if (out[i] == '\n' && (i == 0 || out[i - 1] != '\r')) crlf.push_back('\r');
    crlf.push_back(out[i]);
  }
  while (!crlf.empty() && (crlf.back() == '\n' || crlf.back() == '\r')) crlf.pop_back();
  return crlf;
}

bool ToInt(const std::string& s, int low, int high, int* value) {
  char* end = nullptr;
  long v = std::strtol(s.c_str(), &end, 10);
  if (s.empty() || *end != '\0' || v < low || v > high) return false;
  *value = static_cast<int>(v);
  return true;
}

int CountTextLines(int dc) {
  int size = tqHost_GetDrawLog(dc, nullptr, 0);
  std::string log(static_cast<size_t>(size > 0 ? size : 0) + 1, '\0');
  tqHost_GetDrawLog(dc, log.data(), size + 1);
  int lines = 0;
  for (size_t at = 0; (at = log.find("TextOut ", at)) != std::string::npos; ++at) {
    if (at == 0 || log[at - 1] == '\n') ++lines;
  }
  return lines;
}

// Draws the text into a surface of the given height; its handle, or 0.
int Draw(const std::string& gbk, int width, int height, int line_height, int* drawn_height) {
  int dc = tqHost_CreateDC(width + 2 * kMargin, height);
  if (dc == 0) return 0;
  tqHost_FillRect(dc, kMargin + width, 0, kMargin + width + 1, height, kRuleColour);
  DrawTextObj obj{};
  obj.dc = dc;
  vcInitDrawTextObj(&obj, gbk.c_str());
  obj.width = width;
  obj.x = kMargin;
  obj.y = kMargin;
  obj.lineHeight = line_height;
  vcDrawLongText(&obj);
  *drawn_height = obj.height;
  return dc;
}

}  // namespace

int DrawCommand(const Args& args_in) {
  Args args = args_in;
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") {
      std::fputs(kUsage, stdout);
      return 0;
    }
  }
  std::string width_arg, line_arg, out;
  int width = 0, line_height = 0;
  bool have_width = TakeOption(&args, "--width", &width_arg);
  bool have_line = TakeOption(&args, "--line-height", &line_arg);
  if (!have_width || !ToInt(width_arg, 1, 4000, &width) || (have_line && !ToInt(line_arg, 1, 1000, &line_height)) ||
      !TakeOption(&args, "-o", &out) || args.size() != 1) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  std::string text = args[0];
  if (text == "-") text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  int unmapped = 0;
  std::string gbk = ToGbk(text, &unmapped);
  if (unmapped > 0) {
    std::fprintf(stderr, "tqcomm: %d character%s not in GBK, drawn as \"?\"\n", unmapped, unmapped == 1 ? "" : "s");
  }

  // Once on a scratch surface to learn the height, then for the picture.
  int probe = tqHost_CreateDC(1, 1);
  if (!have_line) line_height = vcGetStringHeight(probe, nullptr) + 4;
  int height = 0;
  tqHost_DeleteDC(probe);
  int scratch = Draw(gbk, width, 1, line_height, &height);
  tqHost_DeleteDC(scratch);
  if (height < 0 || height > 16384 - 2 * kMargin) {
    std::fprintf(stderr, "tqcomm: the text is too long to draw at width %d (%d pixels high)\n", width, height);
    return 1;
  }
  int dc = Draw(gbk, width, height + 2 * kMargin, line_height, &height);
  if (dc == 0) {
    std::fprintf(stderr, "tqcomm: cannot make a surface of %d x %d\n", width + 2 * kMargin, height + 2 * kMargin);
    return 1;
  }
  int lines = CountTextLines(dc);
  if (tqHost_SavePng(dc, out.c_str()) != 1) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", out.c_str());
    tqHost_DeleteDC(dc);
    return 1;
  }
  tqHost_DeleteDC(dc);
  std::printf("%s: %d x %d, %d line%s\n", out.c_str(), width + 2 * kMargin, height + 2 * kMargin, lines,
              lines == 1 ? "" : "s");
  return 0;
}

}  // namespace tqcomm
