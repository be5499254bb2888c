// The open question files of one family (choice or fill-blank) and the
// record each of them holds in memory.
//
// Three tables side by side, indexed by handle 1 to 9: the open file (path
// and stream), a record buffer, and the number of the record that buffer
// holds. A record is read from the file only when another number is asked
// for, and every change is written back at once, so buffer and file agree.
// After a change to every record the held number is kAllChanged, which is no
// record's number, so the next read goes to the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "core/handle_table.h"

namespace tq::quiz {

struct QuestionFile {
  std::string path;
  std::FILE* file = nullptr;
  QuestionFile() = default;
  QuestionFile(const QuestionFile&) = delete;
  QuestionFile& operator=(const QuestionFile&) = delete;
  ~QuestionFile();
};

template <int kRecordSize>
class QuestionFiles {
 public:
  static constexpr int kHandles = 9;
  static constexpr int kNothingHeld = -1;
  static constexpr int kAllChanged = -100;

  QuestionFiles();

  // A handle, or -1 when all are taken or the file will not open. A handle
  // whose file would not open stays taken: the caller never learns it.
  int Open(const char* path, const char* mode);
  void Close(int h);
  // The open file behind a handle, or null.
  QuestionFile* Get(int h) const;

  int RecordCount(int h) const;
  // The record through the held one; null when index is not a whole record
  // of the file (or the file cannot be read).
  unsigned char* Load(int h, int index);
  // Writes the held record back as record index: 1, or 0 when the write
  // fails.
  int Store(int h, int index);
  // Writes an exam page: the head, then for each record number that is a
  // record of the file and that show(record) accepts, render(record, d, n,
  // &text) with d counting the questions shown from 1, then the tail. The
  // number of questions shown, or -1 when the page cannot be made.
  template <class Show, class Render>
  int WritePage(int h, const char* html_path, const std::string& head, const std::vector<int32_t>& numbers,
                Show show, Render render);

  // Forgets the held record, after the file has changed under it.
  void Forget(int h) { held_[h] = kNothingHeld; }

  // A 32-bit field of a record: -1 when index is no record.
  int GetInt(int h, int index, size_t offset);
  // Sets it in one record (1) or, with index -1, in every record (0); -1
  // when index is no record.
  int SetInt(int h, int index, size_t offset, int32_t value);

 private:
  bool Read(std::FILE* f, int index, unsigned char* out) const;

  HandleTable<QuestionFile, kHandles + 1, -1> files_;
  unsigned char records_[kHandles + 1][kRecordSize];
  int held_[kHandles + 1];
};

// Text fields inside a record. A field's text ends at its first zero byte
// and is never longer than the field less one byte, whatever the file holds.
std::string FieldText(const unsigned char* record, size_t offset, size_t size);
// Stores text cut to the field (never half a double-byte character) and
// clears the rest of the field.
void PutFieldText(unsigned char* record, size_t offset, size_t size, const std::string& text);
// text cut to at most max bytes without splitting a double-byte character.
std::string CutText(const std::string& text, size_t max);

// The start of every exam page, up to and with the body tag. The choice
// page links the front end's style sheet; the fill-blank page does not.
std::string PageHead(bool style_sheet, const char* background_image);
// Creates the page file; null when it cannot be.
std::FILE* OpenPage(const char* html_path);

// The record numbers of a page in the order shown: those of list (a count,
// then the numbers) or all of the file's, shuffled if random_order is set.
std::vector<int32_t> PageNumbers(int record_count, const int32_t* list, int random_order);

// Opens a question text to read and the question file it is compiled to
// (appended to unless overwrite is set or it does not exist yet); false,
// with nothing left open, when either will not open.
bool OpenForCompiling(const char* binary_path, const char* text_path, int overwrite, std::FILE** text,
                      std::FILE** out);

// A line of a question text starts with its number: the bytes 1 to 9,
// blank, point, tab and "$" in front are dropped. 0 is not among them, so
// question 10 keeps "0. " in front of its text.
const char* SkipQuestionNumber(const char* line);

template <int kRecordSize>
template <class Show, class Render>
int QuestionFiles<kRecordSize>::WritePage(int h, const char* html_path, const std::string& head,
                                          const std::vector<int32_t>& numbers, Show show, Render render) {
  std::FILE* page = OpenPage(html_path);
  if (page == nullptr) return -1;
  std::fwrite(head.data(), 1, head.size(), page);
  int shown = 0;
  std::string text;
  for (int32_t n : numbers) {
    const unsigned char* r = Load(h, n);
    if (r == nullptr || !show(r)) continue;
    text.clear();
    render(r, ++shown, n, &text);
    std::fwrite(text.data(), 1, text.size(), page);
  }
  std::fputs("</body>\r\n</html>\r\n", page);
  std::fclose(page);
  return shown;
}

}  // namespace tq::quiz
