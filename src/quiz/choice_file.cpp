// The choice-question file's own operations and its exam page.
#include <cstring>
#include <string>

#include "core/binary_io.h"
#include "core/text.h"
#include "platform/env.h"
#include "quiz/choice.h"

namespace tq::quiz {
namespace {

constexpr char kDeleteTemp[] = "tmptmpdelete.dat";

// The look of the icons beside a question; the front end's script catches
// clicks on them by their ids.
constexpr char kIconStyle[] = "\" style= \"cursor:hand\" border=\"0\" src=\"";
// The row start of the two rows that close a question's table. They stay
// without "</tr>": the front ends' scripts walk the table as it is.
constexpr char kBlankCells[] = "<tr>\r\n<td width=10> </td>\r\n<td width=30> </td>\r\n<td>";

char Letter(int place) { return static_cast<char>(static_cast<unsigned>('A') + static_cast<unsigned>(place)); }

}  // namespace

ChoiceFiles& ChoiceTables() {
  static ChoiceFiles* tables = new ChoiceFiles;  // lives until exit
  return *tables;
}

int RenderChoiceQuestion(const unsigned char* record, int d, int n, bool shuffle_options, bool show_delete,
                         std::string* out) {
  const std::string ds = std::to_string(d), ns = std::to_string(n);
  int answer = GetI32(record + offsetof(ChoiceQtRecord, answer));
  int count = GetI32(record + offsetof(ChoiceQtRecord, optionCount));
  if (count < 0) count = 0;
  if (count > kMaxOptions) count = kMaxOptions;

  // The options' order on the page, and the place the right one went to.
  int32_t order[kMaxOptions] = {0, 1, 2, 3, 4};
  int p = answer;
  if (shuffle_options) {
    ShuffleInts(order, count);
    for (int i = 0; i < kMaxOptions; ++i) {
      if (order[i] == answer) p = i;
    }
  }
  const std::string ps = std::to_string(p);

  std::string& s = *out;
  s += "<p>";
  // The name carries the constant 1000, not the difficulty: the front ends
  // read the record's own value through the file.
  s += "<a id = \"Degree" + ds + "\" name = \"" + ns +
       "-1000\" style=\"color:blue; text-decoration:underline; cursor:hand\"></a>\r\n";
  s += "<a id=\"Problem" + ns + "\">" + ds + ". " + FieldText(record, offsetof(ChoiceQtRecord, stem), kStemSize) +
       "</a>\r\n";
  s += "<table border=\"0\"  id=\"table" + ds + "\">\r\n";
  for (int i = 0; i < count; ++i) {
    const char c = Letter(i);
    s += "<tr>\r\n<td width=10> </td>\r\n";
    // The options in the Song face, named in GBK.
    s += "<td width=30 align=center style=\"color: #000; font-family: \xCB\xCE\xCC\xE5; font-size: 10px; margin: 0\">"
         "<input type=radio name=radio" + ds + " value=" + c + "></td>\r\n";
    s += "<td id=\"Choice" + ds + "-" + std::to_string(i) + "\">" + c + ") " +
         FieldText(record, OptionOffset(order[i]), kOptionSize) + "</td>\r\n";
    s += "</tr>\r\n";
  }
  s += kBlankCells;
  s += "<img id = \"Digest" + ns + "-" + ds + "-" + ps + kIconStyle + "savesample.jpg\" width=\"11\" height=\"11\">&nbsp;";
  s += "<img id = \"ToSerlo" + ns + "-" + ds + "-" + ps + kIconStyle +
       "savesentence.jpg\" width=\"11\" height=\"11\">&nbsp;";
  if (show_delete) s += "<img id = \"Delete" + ns + kIconStyle + "savesample.jpg\" width=\"11\" height=\"11\">&nbsp;\r\n";
  s += "</td>\r\n";
  s += kBlankCells;
  s += std::string("<a id = \"answ") + ds + "\" name = \"" + Letter(p) + "-" + ns + "\" style=\"color:#ff0000\"></a>";
  s += "</td>\r\n</table>\r\n";
  return p;
}

int ChoiceFiles::GetComment(int h, int index, char* buffer) {
  const unsigned char* r = Load(h, index);
  std::string comment = r != nullptr ? FieldText(r, offsetof(ChoiceQtRecord, comment), kCommentSize) : "";
  if (buffer != nullptr) std::memcpy(buffer, comment.c_str(), comment.size() + 1);
  return r != nullptr ? 0 : -1;
}

int ChoiceFiles::SetComment(int h, int index, const char* text) {
  unsigned char* r = Load(h, index);
  if (r == nullptr) return -1;
  PutFieldText(r, offsetof(ChoiceQtRecord, comment), kCommentSize, text != nullptr ? text : "");
  return Store(h, index);
}

// A digest is either a question file of its own or a list of record
// numbers; the caller knows which.
int ChoiceFiles::Digest(int h, int index, const char* digest_path, int whole_record) {
  const bool whole = (whole_record & 0xFF) != 0;
  const unsigned char* r = whole ? Load(h, index) : nullptr;
  if (whole && r == nullptr) return -1;
  std::FILE* f = digest_path != nullptr ? env::Open(digest_path, "ab") : nullptr;
  if (f == nullptr) return -1;
  if (whole) {
    std::fwrite(r, 1, kChoiceSize, f);
  } else {
    WriteI32(f, index);
  }
  std::fclose(f);
  return 1;
}

int ChoiceFiles::Delete(int h, int count, const int32_t* indices) {
  QuestionFile* qf = Get(h);
  std::FILE* tmp = env::Open(kDeleteTemp, "wb");
  if (tmp == nullptr) return -1;
  std::fseek(qf->file, 0, SEEK_SET);
  unsigned char record[kChoiceSize];
  int next = 0;
  for (int32_t n = 0; std::fread(record, 1, kChoiceSize, qf->file) == kChoiceSize; ++n) {
    if (indices != nullptr && next < count && n == indices[next]) {
      ++next;
      continue;
    }
    std::fwrite(record, 1, kChoiceSize, tmp);
  }
  // A file open for writing only cannot be read: better to keep it whole
  // than to copy an empty file over it.
  bool unreadable = std::ferror(qf->file) != 0;
  std::clearerr(qf->file);
  std::fclose(tmp);
  bool copied = !unreadable && env::CopyFile(kDeleteTemp, qf->path.c_str());
  env::Remove(kDeleteTemp);
  Forget(h);
  return copied ? 1 : -1;
}

int ChoiceFiles::MakePage(int h, const char* html_path, int shuffle_options, const char* background_image,
                          const int32_t* list, int random_order, int show_delete) {
  auto render = [&](const unsigned char* r, int d, int n, std::string* out) {
    RenderChoiceQuestion(r, d, n, shuffle_options != 0, show_delete != 0, out);
  };
  return WritePage(h, html_path, PageHead(true, background_image), PageNumbers(RecordCount(h), list, random_order),
                   [](const unsigned char*) { return true; }, render);
}

}  // namespace tq::quiz
