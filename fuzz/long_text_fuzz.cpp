// Fuzzes the line breaking of long text (BreakLongText) on any bytes at any
// width and line height.
//
// Input: two bytes of width, one of line height, one choosing the measure,
// then the text (up to its first zero byte, at most 1024 bytes). The
// measures add up per-byte widths taken from the input, so they are true
// text widths that grow with the text; one more measure is erratic, as no
// font is, to show that the breaking still ends and stays in bounds.
//
// With a growing measure the result must be exactly that of the breaking
// done the slow way, measuring back one byte at a time; lines come in order
// without overlap; and in text whose high bytes come in pairs, with CR LF
// line ends, no line splits a pair.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "desktop/text_lines.h"

namespace {

using tq::desktop::LongTextLayout;
using tq::desktop::MeasureText;

void Check(bool ok) {
  if (!ok) std::abort();
}

bool IsWordByte(unsigned char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '\'';
}

// The breaking as first written: back one byte and measure, every time.
LongTextLayout SlowBreak(const char* text, int32_t y, int32_t width, int32_t lh, const MeasureText& measure) {
  LongTextLayout out;
  const auto* t = reinterpret_cast<const unsigned char*>(text);
  size_t n = std::strlen(text);
  uint32_t pen = static_cast<uint32_t>(y);
  auto fits = [&](size_t from, size_t len) { return measure(text + from, len) <= width; };
  auto line = [&](size_t from, size_t len) { out.lines.push_back({from, len, static_cast<int32_t>(pen)}); };
  size_t start = 0, i = 0;
  for (;;) {
    while (i < n && t[i] != '\r' && t[i] != '\n') ++i;
    if (i == start || fits(start, i - start)) {  // an empty line fits any width
      line(start, i - start);
      i += 2;
      start = i;
      if (start >= n) break;
      pen += static_cast<uint32_t>(lh);
      continue;
    }
    bool mark = false;
    while (i > start) {
      unsigned char passed = t[i];
      --i;
      mark = passed >= 0x80 ? !mark : false;
      if (fits(start, i - start + 1)) break;
    }
    if (mark && i > start) {
      line(start, i - start);
      pen += static_cast<uint32_t>(lh);
      start = i;
      continue;
    }
    if (mark) {
      ++i;
    } else if (t[i] < 0x80) {
      size_t fallback = i, j = i;
      while (j > start && IsWordByte(t[j])) --j;
      if (j > start) {
        line(start, j - start + 1);
        start = j + 1;
      } else if (fallback > start) {
        line(start, fallback - start);
        start = fallback;
      } else {
        line(start, 1);
        start += 1;
      }
      i = start;
      pen += static_cast<uint32_t>(lh);
      if (start >= n) break;
      continue;
    }
    line(start, i - start + 1);
    start = i + 1;
    pen += static_cast<uint32_t>(lh);
    ++i;
    if (i >= n) break;
  }
  out.height = static_cast<int32_t>(pen - static_cast<uint32_t>(y) + static_cast<uint32_t>(lh));
  return out;
}

// Lines ended by CR LF, as the drawing expects: a lone CR or LF takes the
// byte after it along.
bool CrLfLineEnds(const std::string& s) {
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\r' && (i + 1 >= s.size() || s[i + 1] != '\n')) return false;
    if (s[i] == '\n' && (i == 0 || s[i - 1] != '\r')) return false;
  }
  return true;
}

bool PairedHighBytes(const std::string& s) {
  for (size_t i = 0; i < s.size(); ++i) {
    if (static_cast<unsigned char>(s[i]) < 0x80) continue;
    if (i + 1 >= s.size() || static_cast<unsigned char>(s[i + 1]) < 0x80) return false;
    ++i;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  int32_t width = static_cast<int16_t>(data[0] | data[1] << 8);
  int32_t line_height = static_cast<int8_t>(data[2]);
  uint8_t mode = data[3] % 3;
  std::string text(reinterpret_cast<const char*>(data + 4), std::min<size_t>(size - 4, 1024));
  text = text.c_str();  // up to the first zero byte
  const char* base = text.c_str();

  // Widths per byte: Latin 3 to 10 by byte value, each half of a Chinese
  // character 7; or with mode 1 every byte 1 wide.
  std::vector<int32_t> prefix(text.size() + 1, 0);
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<unsigned char>(text[i]);
    int32_t w = mode == 1 ? 1 : c >= 0x80 ? 7 : 3 + c % 8;
    prefix[i + 1] = prefix[i] + w;
  }
  MeasureText grows = [&](const char* s, size_t len) {
    size_t from = static_cast<size_t>(s - base);
    Check(from + len <= text.size());  // never measures past the text
    return prefix[from + len] - prefix[from];
  };
  MeasureText erratic = [&](const char* s, size_t len) {
    size_t from = static_cast<size_t>(s - base);
    Check(from + len <= text.size());
    return static_cast<int32_t>((len * 2654435761u + from * 40503u) % 97);
  };

  LongTextLayout got = tq::desktop::BreakLongText(base, 0, width, line_height, mode == 2 ? erratic : grows);
  Check(got.lines.size() <= text.size() + 1);
  size_t end = 0;
  for (const auto& line : got.lines) {
    Check(line.start >= end && line.start + line.length <= text.size());
    end = line.start + line.length;
  }
  if (mode == 2) return 0;

  LongTextLayout slow = SlowBreak(base, 0, width, line_height, grows);
  Check(slow.height == got.height && slow.lines.size() == got.lines.size());
  for (size_t i = 0; i < got.lines.size(); ++i) {
    Check(slow.lines[i].start == got.lines[i].start && slow.lines[i].length == got.lines[i].length &&
          slow.lines[i].y == got.lines[i].y);
  }
  if (CrLfLineEnds(text) && PairedHighBytes(text)) {
    for (const auto& line : got.lines) Check(PairedHighBytes(text.substr(line.start, line.length)));
  }
  return 0;
}
