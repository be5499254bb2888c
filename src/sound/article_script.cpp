#include "sound/article_script.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>

#include "core/registry.h"
#include "core/text.h"
#include "platform/env.h"
#include "platform/host.h"
#include "sound/mp3_to_wave.h"
#include "sound/sound_centre.h"
#include "sound/wave_file.h"

namespace tq::sound {

const char kOldVoaLibraryKey[] = "Software\\tqcomm2006\\VoaLibrary";

namespace {

// The fixed columns of a time mark: "[mm:ss.sss]sentence".
constexpr size_t kColon = 3;
constexpr size_t kSecondsAt = 4;
constexpr size_t kClosing = 10;
constexpr size_t kSentenceAt = 11;
constexpr const char* kSkipMark = "****";
constexpr size_t kSkipBytes = 4;

struct FullWidth {
  unsigned char first, second;
  char ascii;
};
// The full-width punctuation of sentences, as the file names have it.
constexpr FullWidth kFullWidth[] = {
    {0xA3, 0xAC, ','}, {0xA3, 0xBB, ';'},  {0xA1, 0xAE, '\''}, {0xA1, 0xAF, '\''},
    {0xA3, 0xA7, '\''}, {0xA1, 0xA1, ' '}, {0xA3, 0xBA, ':'},  {0xA3, 0xA1, '!'},
    {0xA3, 0xBF, '?'}, {0xA1, 0xB0, '"'},  {0xA1, 0xB1, '"'},  {0xA1, 0xA3, '.'},
};

char HalfWidth(unsigned char first, unsigned char second) {
  for (const FullWidth& f : kFullWidth) {
    if (f.first == first && f.second == second) return f.ascii;
  }
  return 0;
}

const char* SkipBlanks(const char* p) {
  while (*p == ' ' || *p == '\t') ++p;
  return p;
}

// The number at the start of text as the C library's atoi and atof read
// it, but with a point for the decimal whatever the locale; 0 for none (or
// one beyond the type).
template <class Number>
Number Leading(const char* text) {
  const char* p = SkipBlanks(text);
  if (*p == '+') ++p;
  Number value = 0;
  std::from_chars(p, p + std::strlen(p), value);
  return value;
}

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Reads the script a line at a time (at most 998 bytes), trailing white
// space removed, and both sides when asked.
class ScriptReader {
 public:
  explicit ScriptReader(const char* path) : file_(path != nullptr ? env::Open(path, "rb") : nullptr) {}
  bool Next(std::string* line, bool trimLeft) {
    if (file_ == nullptr || std::fgets(buffer_, sizeof buffer_, file_.get()) == nullptr) return false;
    StrongRtrim(buffer_);
    if (trimLeft) Ltrim(buffer_);
    line->assign(buffer_);
    return true;
  }

 private:
  File file_;
  char buffer_[kScriptLineBytes + 1];
};

}  // namespace

std::string SentenceFileName(const std::string& sentence, const char* extension) {
  std::string half;
  for (size_t i = 0; i < sentence.size(); ++i) {
    const auto c = static_cast<unsigned char>(sentence[i]);
    if (c >= 0x80 && i + 1 < sentence.size()) {
      if (const char ascii = HalfWidth(c, static_cast<unsigned char>(sentence[i + 1]))) {
        half.push_back(ascii);
      } else {
        half.append(sentence, i, 2);
      }
      ++i;
    } else {
      half.push_back(static_cast<char>(c));
    }
  }
  std::string name = SearchForm(half.c_str());
  if (name.size() > kSentenceNameBytes) name.resize(kSentenceNameBytes);
  return name + extension;
}

ScriptLine ReadScriptLine(std::string line) {
  ScriptLine s;
  if (line.find(kSkipMark) != std::string::npos) line.erase(0, kSkipBytes);
  if (line.empty()) return s;
  if (line[0] == '[') {
    s.kind = ScriptLine::kMark;
    // The columns are cut where they stand, whatever they hold; a short
    // line has nothing behind its end.
    std::string cols = line;
    if (cols.size() < kSentenceAt + 1) cols.resize(kSentenceAt + 1, '\0');
    cols[kColon] = '\0';
    cols[kClosing] = '\0';
    const int minutes = Leading<int>(cols.c_str() + 1);
    const double seconds = Leading<double>(cols.c_str() + kSecondsAt);
    s.timeMs = TruncateToInt((seconds + minutes * 60) * 1000.0);
    s.sentence = SkipBlanks(cols.c_str() + kSentenceAt);
  } else if (line[0] == '$') {
    s.kind = ScriptLine::kSection;
    const size_t stars = line.find("**");
    if (stars != std::string::npos) {
      s.namesRecording = true;
      s.recording = SkipBlanks(line.c_str() + stars + 2);
    }
  }
  return s;
}

void ProcessVoaScript(const char* scriptPath) {
  ScriptReader script(scriptPath);
  std::string line, recording, current;
  int32_t pending = -1;
  // Each sentence reaches from its own mark to the next, or to the end of
  // the recording at a new section and at the end of the script.
  auto cut = [&](int32_t endMs) { ExtractMp3ToWav(recording.c_str(), current.c_str(), pending, endMs, 0); };
  while (script.Next(&line, false)) {
    const ScriptLine s = ReadScriptLine(line);
    if (s.kind == ScriptLine::kMark) {
      if (pending != -1) cut(s.timeMs);
      pending = s.timeMs;
      current = SentenceFileName(s.sentence, ".wav");
    } else if (s.kind == ScriptLine::kSection) {
      if (pending != -1) cut(-1);
      if (s.namesRecording) recording = s.recording;
      pending = -1;
    }
  }
  if (pending != -1) cut(-1);
}

void VerifyVoaScript(const char* scriptPath) {
  ScriptReader script(scriptPath);
  std::string line;
  while (script.Next(&line, true)) {
    if (!env::Exists(SentenceFileName(line, ".mp3").c_str())) host::MessageBox(0, line.c_str(), "", host::kMbOk);
  }
}

void GetOldVoaSnd(const char* scriptPath) {
  SndCenter centre(1, 16, 22050, 1, 0);
  RegistryKey key;
  RegistryKey::Value index, root;
  if (key.Open(kCurrentUserRoot, kOldVoaLibraryKey) && key.Read("IndexPath", &index) && key.Read("RootDir", &root)) {
    centre.AddLib(index.data.c_str(), root.data.c_str(), kSentenceKind);
  }
  ScriptReader script(scriptPath);
  std::string line;
  while (script.Next(&line, true)) {
    if (!line.empty() && (line[0] == '[' || line[0] == '$')) continue;
    if (line.find("&&&") != std::string::npos) continue;
    const std::string base = SentenceFileName(line, "");
    SoundRequest r;
    r.outBase = base.c_str();
    if (centre.Search(line.c_str(), kSentenceKind, r) == -1) host::MessageBox(0, line.c_str(), "", host::kMbOk);
  }
}

}  // namespace tq::sound
