#include "quiz/fill_blank.h"

#include <cstdio>
#include <cstring>

#include "core/binary_io.h"
#include "core/text.h"

namespace tq::quiz {
namespace {

std::string Name(const char* format, int d, int k) {
  char name[32];
  std::snprintf(name, sizeof name, format, d, k);
  return name;
}

}  // namespace

FillFiles& FillTables() {
  static FillFiles* tables = new FillFiles;  // lives until exit
  return *tables;
}

int CompileFillText(const char* binary_path, const char* text_path, int overwrite) {
  std::FILE *text, *out;
  if (!OpenForCompiling(binary_path, text_path, overwrite, &text, &out)) return -1;
  LineReader reader(text);
  char line[LineReader::kBufferSize];
  unsigned char record[kFillSize];
  while (reader.Next(line) >= 0) {
    if (line[0] == '\0') continue;
    PutFieldText(record, offsetof(FillBlankQtRecord, text), kFillTextSize, SkipQuestionNumber(line));
    PutI32(record + offsetof(FillBlankQtRecord, degree), 0);
    std::fwrite(record, 1, kFillSize, out);
  }
  std::fclose(out);
  std::fclose(text);
  return 1;
}

void RenderFillQuestion(const unsigned char* record, int d, int n, bool show_degree, std::string* out) {
  const std::string ds = std::to_string(d);
  const std::string g = std::to_string(GetI32(record + offsetof(FillBlankQtRecord, degree)));
  std::string& s = *out;
  s += "<p>";
  s += "<a id = \"Degree" + ds + "\" name = \"" + std::to_string(n) + "-" + g +
       "\" style=\"color:blue; text-decoration:underline; cursor:hand\">";
  s += show_degree ? "[" + g + "]</a>\r\n" : "</a>\r\n";
  s += ds + ". ";
  // Every bracket pair becomes a text box and, hidden in the name of the
  // anchor behind it, the answer it holds. A "[" that nothing closes stays
  // as text.
  const std::string text = FieldText(record, offsetof(FillBlankQtRecord, text), kFillTextSize);
  size_t at = 0;
  for (int k = 0;; ++k) {
    size_t open = text.find('[', at);
    size_t close = open == std::string::npos ? open : text.find(']', open + 1);
    if (close == std::string::npos) break;
    s.append(text, at, open - at);
    s += "<input type=\"text\" id=\"" + Name("Blk%03d-%03d", d, k) +
         "\" size=\"12\" style=\"border: 1px solid #008000\">";
    s += "<a id = \"" + Name("answ%03d-%03d", d, k) + "\" name=\"" + text.substr(open + 1, close - open - 1) +
         "\" style=\"color:#ff0000\"></a>";
    at = close + 1;
  }
  s.append(text, at, std::string::npos);
  s += "\r\n";
}

int FillFiles::MakePage(int h, const char* html_path, int show_degree, int min_degree, int max_degree,
                        const char* background_image, const int32_t* list, int random_order) {
  // Without a list only the degrees asked for are shown. The display
  // numbers count the questions shown; the record numbers stay the records'
  // own, so a filtered page has gaps in those only.
  auto show = [&](const unsigned char* r) {
    int degree = GetI32(r + offsetof(FillBlankQtRecord, degree));
    return list != nullptr || (degree >= min_degree && degree <= max_degree);
  };
  auto render = [&](const unsigned char* r, int d, int n, std::string* out) {
    RenderFillQuestion(r, d, n, show_degree != 0, out);
  };
  return WritePage(h, html_path, PageHead(false, background_image), PageNumbers(RecordCount(h), list, random_order),
                   show, render);
}

}  // namespace tq::quiz
