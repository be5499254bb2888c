#include "html/detail_page.h"

#include <cstdio>
#include <cstring>

#include "core/text.h"
#include "platform/env.h"

namespace tq::html {
namespace {

// GBK text used on the page, spelled as bytes so that the source file's own
// encoding does not matter.
const char kSongTi[] = "\xCB\xCE\xCC\xE5";      // the font name "Song"
const char kWordRoot[] = "\xB4\xCA\xB8\xF9";    // "word root", opens a root heading
const char kDashedRule[] = "\xA9\xA8";          // box-drawing dashes, English in a phrase head

struct SectionLook {
  const char* anchor;
  const char* image;
};

const SectionLook kSections[kSectionCount] = {
    {"dtMean", "cy_title.jpg"},   {"dtEMean", "ys_title.jpg"}, {"dtSample", "lj_title.jpg"},
    {"dtPhrase", "dy_title.jpg"}, {"dtVary", "bh_title.jpg"},  {"dtRoot", "cg_title.jpg"},
    {"dtSyno", "xg_title.jpg"},
};

enum Section { kMeaning, kExplanation, kSamples, kPhrases, kForms, kRoot, kRelated };

inline bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
inline bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 128; }

std::string Head() {
  static const char* const kLines[] = {
      "<head>",
      "<meta http-equiv=\"Content-Language\" content=\"zh-cn\">",
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">",
      "<meta name=\"GENERATOR\" content=\"Microsoft FrontPage 4.0\">",
      "<meta name=\"ProgId\" content=\"FrontPage.Editor.Document\">",
      "<STYLE type=text/css>",
      nullptr,  // the body style, which names a Chinese font
      "</STYLE>",
      "<title></title>",
      "</head>",
      "<body>",
  };
  std::string out;
  for (const char* line : kLines) {
    if (line == nullptr) {
      out += "BODY { \tFONT-SIZE: 14px; COLOR: #000000; LINE-HEIGHT: 20px; FONT-STYLE: normal; FONT-FAMILY: ";
      out += kSongTi;
      out += " }";
    } else {
      out += line;
    }
    out += "\r\n";
  }
  return out;
}

// One line of a section as the page holds it: cut to the line buffer and
// at a NUL, as a C string would be.
std::string HoldLine(const char* p, size_t n) {
  char buf[kDetailLineBuffer + 1];
  size_t take = n < static_cast<size_t>(kDetailLineBuffer) ? n : kDetailLineBuffer;
  std::memcpy(buf, p, take);
  buf[take] = '\0';
  CStrRtrim(buf, kDetailLineBuffer - 1);
  return buf;
}

// Calls emit(line) for every line of the section that ends in a line end;
// the text behind the last line end is not a line. A line end is CR or LF,
// and a second CR or LF right behind it belongs to it.
template <typename Emit>
void WalkLines(const char* p, size_t n, size_t start, bool nul_ends_line, Emit emit) {
  size_t line_start = start;
  for (size_t i = start; i < n; ++i) {
    char c = p[i];
    if (!IsLineEnd(c) && !(nul_ends_line && c == '\0')) continue;
    emit(HoldLine(p + line_start, i - line_start));
    if (i + 1 < n && IsLineEnd(p[i + 1])) ++i;
    line_start = i + 1;
  }
}

size_t LeadingBlanks(const std::string& line) {
  size_t k = 0;
  while (k < line.size() && line[k] == ' ') ++k;
  return k;
}

// The English head of a phrase line: up to the first Chinese character
// (dashes apart), a numbered sense "1.", or a bracket opening Chinese.
size_t PhraseHeadLength(const std::string& s) {
  size_t i = 0;
  while (i < s.size()) {
    char c = s[i];
    if (IsHigh(c)) {
      if (s.compare(i, 2, kDashedRule) == 0) {
        i += 2;
        continue;
      }
      break;
    }
    if (c == '1' && i + 1 < s.size() && s[i + 1] == '.') break;
    if (c == '(' && ((i + 1 < s.size() && IsHigh(s[i + 1])) || (i + 2 < s.size() && IsHigh(s[i + 2])))) break;
    ++i;
  }
  return i;
}

class DetailWriter {
 public:
  explicit DetailWriter(int sound_flag) : sound_flag_(sound_flag) {}

  void Section(int k, const char* p, size_t n) {
    out_ += "\r\n<a name=\"";
    out_ += kSections[k].anchor;
    out_ += "\"></a><img border=\"0\" src=\"";
    out_ += kSections[k].image;
    out_ += "\"> <br>\r\n";
    switch (k) {
      case kMeaning: {
        // The first line is the pronunciation, shown elsewhere.
        size_t start = 0;
        while (start < n && !IsLineEnd(p[start])) ++start;
        while (start < n && IsLineEnd(p[start])) ++start;
        WalkLines(p, n, start, false, [this](const std::string& l) { KeptBlanksLine(l); });
        break;
      }
      case kExplanation:
        WalkLines(p, n, 0, false, [this](const std::string& l) { KeptBlanksLine(l); });
        break;
      case kSamples:
        WalkLines(p, n, 0, false, [this](const std::string& l) { SampleLine(l.substr(LeadingBlanks(l))); });
        break;
      case kPhrases:
        WalkLines(p, n, 0, false, [this](const std::string& l) { PhraseLine(l.substr(LeadingBlanks(l))); });
        break;
      case kRoot:
        WalkLines(p, n, 0, true, [this](const std::string& l) { RootLine(l.substr(LeadingBlanks(l))); });
        break;
      default:  // word forms, related words
        WalkLines(p, n, 0, false, [this](const std::string& l) { Line(l.substr(LeadingBlanks(l))); });
        break;
    }
  }

  std::string& out() { return out_; }

 private:
  void Line(const std::string& s) {
    out_ += s;
    out_ += "<br>\r\n";
  }

  void KeptBlanksLine(const std::string& s) {
    size_t blanks = LeadingBlanks(s);
    for (size_t i = 0; i < blanks; ++i) out_ += "&nbsp;";
    Line(s.substr(blanks));
  }

  void SampleLine(const std::string& s) {
    if (s.empty()) return;
    // Two tag bytes, never shown: "*#" a sample, "**" a sample from the
    // net, anything else the translation of the sample above.
    std::string shown = s.size() > 2 ? s.substr(2) : std::string();
    if (s.compare(0, 2, "*#") == 0) {
      SoundLink("ES", shown, "sound6.jpg");
      Line(shown);
      ++sample_index_;
    } else if (s.compare(0, 2, "**") == 0) {
      if (sound_flag_ == 1) {
        SoundLink("EN", shown, "sound5.jpg");
      } else {
        out_ += "&nbsp;.&nbsp;";
      }
      Line(shown);
      ++net_index_;
    } else {
      out_ += "&nbsp;&nbsp;&nbsp;";
      out_ += shown;
      // Once a net sample has passed, every save link counts net samples.
      out_ += "<a href=\"A_";
      out_ += net_index_ != 0 ? "N" + std::to_string(net_index_ - 1) : "S" + std::to_string(sample_index_);
      Line("\"><img border=\"0\" src=\"savesample.jpg\" width=\"11\" height=\"11\"></a>&nbsp;");
    }
  }

  void SoundLink(const char* kind, const std::string& sentence, const char* image) {
    out_ += "<a href=\"";
    out_ += kind;
    out_ += EncodeUrlSentence(sentence);
    out_ += "$\"><img border=\"0\" src=\"";
    out_ += image;
    out_ += "\" width=\"15\" height=\"11\"></a>&nbsp;";
  }

  void PhraseLine(const std::string& s) {
    if (s.empty()) return;
    size_t head = PhraseHeadLength(s);
    out_ += "<img border=\"0\" src=\"icon.bmp\" width=\"13\" height=\"11\"><font color=\"#800080\">";
    out_ += s.substr(0, head);
    out_ += "</font>";
    Line(s.substr(head));
  }

  void RootLine(const std::string& s) {
    if (s.empty()) return;
    if (s.compare(0, 4, kWordRoot) == 0) {
      out_ += "<font color=\"#800000\">";
      out_ += s;
      out_ += "</font><br>\r\n";
    } else {
      out_ += "&nbsp;";
      Line(s);
    }
  }

  int sound_flag_;
  int sample_index_ = -1;
  int net_index_ = 0;
  std::string out_;
};

}  // namespace

std::string EncodeUrlSentence(const std::string& sentence) {
  std::string out = sentence;
  for (char& c : out) {
    if (c == '?') c = '#';
    else if (c == '"') c = '~';
  }
  return out;
}

std::string DetailPage(const uint32_t* lengths, const char* text, int soundFlag) {
  DetailWriter writer(soundFlag);
  std::string& out = writer.out();
  out = Head();
  if (lengths != nullptr && text != nullptr) {
    size_t offset = 0;
    for (int k = 0; k < kSectionCount; ++k) {
      if (lengths[k] == 0) continue;
      writer.Section(k, text + offset, lengths[k]);
      offset += lengths[k];
    }
  }
  out += "</body> </html>";
  return out;
}

void CreateDetailPage(const uint32_t* lengths, const char* text, const char* outPath, int soundFlag) {
  std::string page = DetailPage(lengths, text, soundFlag);
  std::FILE* f = outPath != nullptr ? env::Open(outPath, "wb") : nullptr;
  if (f == nullptr) {
    std::fputs("The file was not opened\n", stdout);
    return;
  }
  std::fwrite(page.data(), 1, page.size(), f);
  if (std::fclose(f) != 0) std::fputs("The file 'data' was not closed\n", stdout);
}

}  // namespace tq::html
