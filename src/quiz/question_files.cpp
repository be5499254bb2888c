#include "quiz/question_files.h"

#include <climits>
#include <cstring>
#include <numeric>

#include "core/binary_io.h"
#include "core/text.h"
#include "platform/env.h"
#include "tqcomm2006.h"

namespace tq::quiz {

QuestionFile::~QuestionFile() {
  if (file != nullptr) std::fclose(file);
}

template <int kRecordSize>
QuestionFiles<kRecordSize>::QuestionFiles() {
  std::memset(records_, 0, sizeof records_);
  for (int& n : held_) n = kNothingHeld;
}

template <int kRecordSize>
int QuestionFiles<kRecordSize>::Open(const char* path, const char* mode) {
  if (path == nullptr || mode == nullptr) return -1;
  int h = files_.New();
  QuestionFile* f = files_.Get(h);
  if (f == nullptr) return -1;
  f->path = path;
  f->file = env::Open(path, mode);
  if (f->file == nullptr) return -1;
  // Unbuffered, so that every read of a record goes to the file and sees
  // what other handles have written there.
  std::setvbuf(f->file, nullptr, _IONBF, 0);
  return h;
}

template <int kRecordSize>
void QuestionFiles<kRecordSize>::Close(int h) {
  if (files_.Get(h) == nullptr) return;
  files_.Delete(h);
  held_[h] = kNothingHeld;
}

template <int kRecordSize>
QuestionFile* QuestionFiles<kRecordSize>::Get(int h) const {
  QuestionFile* f = files_.Get(h);
  return f != nullptr && f->file != nullptr ? f : nullptr;
}

template <int kRecordSize>
int QuestionFiles<kRecordSize>::RecordCount(int h) const {
  long length = FileLength(files_.Get(h)->file);
  return length < 0 ? 0 : static_cast<int>(length / kRecordSize);
}

template <int kRecordSize>
bool QuestionFiles<kRecordSize>::Read(std::FILE* f, int index, unsigned char* out) const {
  int64_t at = static_cast<int64_t>(index) * kRecordSize;
  if (index < 0 || at > LONG_MAX - kRecordSize) return false;
  return std::fseek(f, static_cast<long>(at), SEEK_SET) == 0 && std::fread(out, 1, kRecordSize, f) == kRecordSize;
}

template <int kRecordSize>
unsigned char* QuestionFiles<kRecordSize>::Load(int h, int index) {
  if (index < 0) return nullptr;
  if (held_[h] == index) return records_[h];
  if (!Read(files_.Get(h)->file, index, records_[h])) {
    held_[h] = kNothingHeld;  // the buffer may hold part of a record
    return nullptr;
  }
  held_[h] = index;
  return records_[h];
}

template <int kRecordSize>
int QuestionFiles<kRecordSize>::Store(int h, int index) {
  std::FILE* f = files_.Get(h)->file;
  if (std::fseek(f, static_cast<long>(static_cast<int64_t>(index) * kRecordSize), SEEK_SET) != 0) return 0;
  size_t written = std::fwrite(records_[h], kRecordSize, 1, f);
  std::fflush(f);
  return static_cast<int>(written);
}

template <int kRecordSize>
int QuestionFiles<kRecordSize>::GetInt(int h, int index, size_t offset) {
  const unsigned char* r = Load(h, index);
  return r != nullptr ? GetI32(r + offset) : -1;
}

template <int kRecordSize>
int QuestionFiles<kRecordSize>::SetInt(int h, int index, size_t offset, int32_t value) {
  if (index == -1) {
    std::FILE* f = files_.Get(h)->file;
    int count = RecordCount(h);
    for (int i = 0; i < count && Read(f, i, records_[h]); ++i) {
      PutI32(records_[h] + offset, value);
      Store(h, i);
    }
    held_[h] = kAllChanged;
    return 0;
  }
  unsigned char* r = Load(h, index);
  if (r == nullptr) return -1;
  PutI32(r + offset, value);
  Store(h, index);
  return 1;
}

template class QuestionFiles<sizeof(ChoiceQtRecord)>;
template class QuestionFiles<sizeof(FillBlankQtRecord)>;

std::string FieldText(const unsigned char* record, size_t offset, size_t size) {
  const char* p = reinterpret_cast<const char*>(record + offset);
  const void* end = std::memchr(p, '\0', size - 1);
  return std::string(p, end != nullptr ? static_cast<const char*>(end) - p : size - 1);
}

std::string CutText(const std::string& text, size_t max) {
  if (text.size() <= max) return text;
  std::string s = text.substr(0, max + 1);  // CStrRtrim looks at the byte at max
  CStrRtrim(s.data(), static_cast<int>(max));
  s.resize(std::strlen(s.c_str()));
  return s;
}

void PutFieldText(unsigned char* record, size_t offset, size_t size, const std::string& text) {
  std::string s = CutText(text, size - 1);
  std::memset(record + offset, 0, size);
  std::memcpy(record + offset, s.data(), std::strlen(s.c_str()));
}

std::string PageHead(bool style_sheet, const char* background_image) {
  // The title is the suite's own: "Moling English Grammar".
  std::string head =
      "<html>\r\n<head>\r\n"
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">\r\n"
      "<title>\xC4\xAB\xC1\xEB\xD3\xA2\xD3\xEF\xD3\xEF\xB7\xA8</title>\r\n";
  if (style_sheet) head += "<link href=\"login.css\" rel=\"stylesheet\" type=\"text/css\">";
  head += "</head>\r\n";
  if (background_image != nullptr && *background_image != '\0') {
    head += std::string("<body background='") + background_image + "'> <!-------------------M----------------->\r\n";
  } else {
    head += "<body >\r\n";
  }
  return head;
}

std::FILE* OpenPage(const char* html_path) { return html_path != nullptr ? env::Open(html_path, "wb") : nullptr; }

std::vector<int32_t> PageNumbers(int record_count, const int32_t* list, int random_order) {
  std::vector<int32_t> numbers;
  if (list != nullptr) {
    if (list[0] > 0) numbers.assign(list + 1, list + 1 + list[0]);
  } else {
    numbers.resize(static_cast<size_t>(record_count > 0 ? record_count : 0));
    std::iota(numbers.begin(), numbers.end(), 0);
  }
  if (random_order != 0) ShuffleInts(numbers.data(), static_cast<int>(numbers.size()));
  return numbers;
}

bool OpenForCompiling(const char* binary_path, const char* text_path, int overwrite, std::FILE** text,
                      std::FILE** out) {
  if (binary_path == nullptr || text_path == nullptr) return false;
  *text = env::Open(text_path, "rb");
  if (*text == nullptr) return false;
  *out = env::Open(binary_path, overwrite == 0 && env::Exists(binary_path) ? "ab" : "wb");
  if (*out == nullptr) {
    std::fclose(*text);
    return false;
  }
  return true;
}

const char* SkipQuestionNumber(const char* line) {
  while ((*line >= '1' && *line <= '9') || *line == ' ' || *line == '.' || *line == '\t' || *line == '$') ++line;
  return line;
}

}  // namespace tq::quiz
