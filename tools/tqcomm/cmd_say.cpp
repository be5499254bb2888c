// tqcomm say: a sound for a word or sentence through the sound centre, and
// where it came from. tqcomm sndlib build: a sound library of our own,
// every entry spoken by the centre's speech and kept as MP3.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "progress.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

constexpr int kRecordBytes = 96;
constexpr int kKeyBytes = 63;  // byte 63 of a key never counts
// A data file is closed when the next sound would take it past this.
constexpr long kDataFileLimit = 64L << 20;
constexpr int kDefaultBitrate = 48;
// Speech for the libraries: 16-bit mono at espeak-ng's own rate.
constexpr int kBits = 16, kRate = 22050, kChannels = 1;

const char kSayUsage[] =
    "usage: tqcomm say TEXT [-o BASE] [--kind 0..3] [--lib INDEX ROOT]... [--user DIR] [--wave] [--play]\n"
    "\n"
    "Asks the sound centre for a sound of TEXT, as a front end does, and says\n"
    "where it came from: the user's own recordings, a sound library, or speech.\n"
    "\n"
    "  -o BASE          the sound goes to BASE.wav or BASE.mp3 (default: say)\n"
    "  --kind K         0 a word (default), 1 a Chinese key (\"key\\1text\" asks the\n"
    "                   library first, \"key\\2text\" speaks first), 2 a sentence,\n"
    "                   3 Chinese speech\n"
    "  --lib INDEX ROOT a sound library (index file, folder of its data files);\n"
    "                   repeatable. Without one, the library that 'tqcomm sndlib\n"
    "                   build' made in the data folder (sndlib/words.idx, or\n"
    "                   sndlib/sentences.idx for kind 2) when there is one\n"
    "  --user DIR       the user's own recordings (WORD.usm, .wav, .mp3); without\n"
    "                   it, the install path in the registry store\n"
    "  --wave           a wave even where the sound is an MP3\n"
    "  --play           play it (as a wave) on the machine's sound device\n"
    "\n"
    "Exit status: 0 a sound was made, 1 none, 2 bad usage.\n";

const char kSndlibUsage[] =
    "usage: tqcomm sndlib build LIST -o DIR [--sentences] [--bitrate K]\n"
    "\n"
    "Builds a sound library from a GBK list: every entry is spoken by the sound\n"
    "centre's speech (espeak-ng), encoded to MP3 at K kbit/s (default 48) and\n"
    "appended to data files of at most 64 MB; the index is sorted for the\n"
    "library's lookup.\n"
    "\n"
    "  LIST         a word list as 'tqcomm book import' reads it, or with\n"
    "               --sentences one sentence a line\n"
    "  -o DIR       DIR/words.idx and DIR/words000.dat... (DIR/sentences.idx and\n"
    "               DIR/sentences000.dat... for sentences, their offsets and\n"
    "               lengths scrambled as sentence libraries are)\n"
    "\n"
    "Exit status: 0 built, 1 failure, 2 bad usage.\n";

bool WantsHelp(const Args& args) {
  return std::any_of(args.begin(), args.end(), [](const std::string& a) { return a == "--help" || a == "-h"; });
}

bool TakeFlag(Args* args, const std::string& name) {
  auto it = std::find(args->begin(), args->end(), name);
  if (it == args->end()) return false;
  args->erase(it);
  return true;
}

bool ParseInt(const std::string& text, long low, long high, int* value) {
  char* end = nullptr;
  const long v = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || v < low || v > high) return false;
  *value = static_cast<int>(v);
  return true;
}

bool IsFile(const std::string& path) { return vcIfFileExist(path.c_str()) == 1; }

std::string WithSlash(const std::string& dir) { return dir.empty() || dir.back() == '/' ? dir : dir + "/"; }

void MakeDirs(const std::string& path) {
  for (size_t i = 1; i <= path.size(); ++i) {
    if (i == path.size() || path[i] == '/') mkdir(path.substr(0, i).c_str(), 0755);
  }
}

// "\1" and "\2" typed on the command line are the separators of a Chinese
// request.
std::string Separators(std::string text) {
  for (size_t at; (at = text.find("\\1")) != std::string::npos;) text.replace(at, 2, "\x01");
  for (size_t at; (at = text.find("\\2")) != std::string::npos;) text.replace(at, 2, "\x02");
  return text;
}

struct Library {
  std::string index, root;
};

struct SayRequest {
  std::string text;  // GBK
  std::string base = "say";
  int kind = 0;
  std::vector<Library> libs;
  bool hasUser = false;
  std::string user;
  bool wave = false;
  bool play = false;
};

// The library among several that holds the sound, asked one by one in
// question mode; "" when none does.
std::string WhichLibrary(const SayRequest& q) {
  for (const Library& lib : q.libs) {
    const int centre = vcSndCenter_Open(0, kBits, kRate, kChannels);
    vcSndCenter_AddSndLib(centre, lib.index.c_str(), lib.root.c_str(), q.kind);
    const int got = vcSndCenter_CanSpeak(centre, q.text.c_str(), q.kind, q.base.c_str(), 0, 0, nullptr,
                                         q.hasUser ? q.user.c_str() : nullptr);
    vcSndCenter_Close(centre);
    if (got == 3) return lib.index;
  }
  return std::string();
}

int Say(const SayRequest& q) {
  const int centre = vcSndCenter_Open(1, kBits, kRate, kChannels);
  if (centre < 0) {
    std::fprintf(stderr, "tqcomm: no sound centre could be opened\n");
    return 1;
  }
  for (const Library& lib : q.libs) {
    if (vcSndCenter_AddSndLib(centre, lib.index.c_str(), lib.root.c_str(), q.kind) != 1) {
      std::fprintf(stderr, "tqcomm: cannot open the sound library %s\n", lib.index.c_str());
      vcSndCenter_Close(centre);
      return 1;
    }
  }
  const char* user = q.hasUser ? q.user.c_str() : nullptr;
  const bool speech = vcSndCenter_IsTtsAvailable(centre) > 0;
  int32_t source = -1;
  // What stands there from before would hide which file the answer is.
  std::remove((q.base + ".wav").c_str());
  std::remove((q.base + ".mp3").c_str());
  const int got = vcSndCenter_GetSndFile(centre, q.text.c_str(), q.kind, q.base.c_str(), q.wave || q.play ? 1 : 0, 1,
                                         &source, user);
  vcSndCenter_Close(centre);
  const std::string shown = ForTerminal(q.text);
  if (got == -1) {
    std::fprintf(stderr, "tqcomm: no sound for \"%s\"%s\n", shown.c_str(),
                 speech ? "" : " (speech is unavailable: is espeak-ng-data installed?)");
    return 1;
  }
  // Code 2 is an MP3, which a user's MP3 recording keeps under the wave's name.
  const std::string file = q.base + (got == 2 && IsFile(q.base + ".mp3") ? ".mp3" : ".wav");
  std::string from;
  if (source == 1) {
    from = q.kind == 1 || q.kind == 3 ? "speech (espeak-ng, Mandarin)" : "speech (espeak-ng)";
  } else {
    const std::string lib = WhichLibrary(q);
    from = lib.empty() ? "the user's own recording" : "the sound library " + lib;
  }
  std::printf("%s: %s -> %s\n", shown.c_str(), from.c_str(), file.c_str());
  if (q.play) {
    if (vcIfAudioReady() == 0) {
      std::fprintf(stderr, "tqcomm: there is no sound device to play %s on\n", file.c_str());
    } else {
      vcButtonEnterSound((q.base + ".wav").c_str());
    }
  }
  return 0;
}

// --- the library builder ---

struct Entry {
  std::string text;  // as spoken
  std::string key;   // as looked up
  SndLibRecord record;
};

// A key as the lookup compares it: 63 bytes, A-Z lowered.
std::string Folded(const std::string& key) {
  std::string out = key.substr(0, kKeyBytes);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return out;
}

bool KeyBefore(const Entry& a, const Entry& b) {
  const std::string x = Folded(a.key), y = Folded(b.key);
  return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), [](char p, char q) {
    return static_cast<unsigned char>(p) < static_cast<unsigned char>(q);
  });
}

void Put32(std::string* out, uint32_t v) {
  for (int i = 0; i < 4; ++i) out->push_back(static_cast<char>(v >> (8 * i)));
}

std::string RecordBytes(const SndLibRecord& r) {
  std::string out(r.key, sizeof r.key);
  Put32(&out, r.offset);
  Put32(&out, r.length);
  out.append(r.dataFile, sizeof r.dataFile);
  Put32(&out, static_cast<uint32_t>(r.isWave));
  return out;
}

// The entries of the list, each key once (the first of any that fold alike).
bool ReadEntries(const std::string& list, bool sentences, std::vector<Entry>* entries) {
  std::vector<std::string> texts;
  if (sentences) {
    std::ifstream in(list, std::ios::binary);
    if (!in) return false;
    for (std::string line; std::getline(in, line);) {
      line.erase(line.find_last_not_of(" \t\r") + 1);
      line.erase(0, line.find_first_not_of(" \t"));
      if (!line.empty()) texts.push_back(line);
    }
  } else if (!ReadListWords(list, &texts)) {
    return false;
  }
  std::vector<std::string> seen;
  for (const std::string& text : texts) {
    Entry e;
    e.text = text;
    std::string key;
    for (char c : text) {
      if (c < 1 || c > 4) key.push_back(c);
    }
    if (sentences) vcConvertToSearchingSentence(&key[0]);
    e.key = key.substr(0, kKeyBytes);
    const std::string folded = Folded(e.key);
    if (e.key.empty() || std::find(seen.begin(), seen.end(), folded) != seen.end()) continue;
    seen.push_back(folded);
    entries->push_back(e);
  }
  return true;
}

std::string ReadWhole(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Appends sounds to numbered data files of at most 64 MB each.
class DataFiles {
 public:
  DataFiles(const std::string& dir, const std::string& stem) : dir_(dir), stem_(stem) {}
  bool Append(const std::string& sound, SndLibRecord* r) {
    if (!out_.is_open() || size_ + static_cast<long>(sound.size()) > kDataFileLimit) {
      if (out_.is_open()) out_.close();
      char name[sizeof r->dataFile];
      std::snprintf(name, sizeof name, "%s%03d.dat", stem_.c_str(), count_++);
      name_ = name;
      out_.open(dir_ + name_, std::ios::binary | std::ios::trunc);
      size_ = 0;
    }
    std::memset(r->dataFile, 0, sizeof r->dataFile);
    std::memcpy(r->dataFile, name_.data(), name_.size());
    r->offset = static_cast<uint32_t>(size_);
    r->length = static_cast<uint32_t>(sound.size());
    r->isWave = 0;
    out_.write(sound.data(), static_cast<std::streamsize>(sound.size()));
    size_ += static_cast<long>(sound.size());
    total_ += static_cast<long>(sound.size());
    return static_cast<bool>(out_);
  }
  bool Finish() {
    out_.close();
    return !out_.fail();
  }
  int count() const { return count_; }
  long total() const { return total_; }

 private:
  std::string dir_, stem_, name_;
  std::ofstream out_;
  long size_ = 0, total_ = 0;
  int count_ = 0;
};

int Build(const std::string& list, const std::string& outDir, bool sentences, int bitrate) {
  std::vector<Entry> entries;
  if (!ReadEntries(list, sentences, &entries)) {
    std::fprintf(stderr, "tqcomm: cannot read %s\n", list.c_str());
    return 1;
  }
  if (entries.empty()) {
    std::fprintf(stderr, "tqcomm: %s holds no %s\n", list.c_str(), sentences ? "sentence" : "English word");
    return 1;
  }
  const std::string dir = WithSlash(outDir);
  const std::string work = dir + ".building/";
  MakeDirs(work);
  const int centre = vcSndCenter_Open(1, kBits, kRate, kChannels);
  if (vcSndCenter_IsTtsAvailable(centre) <= 0) {
    vcSndCenter_Close(centre);
    std::fprintf(stderr, "tqcomm: speech is unavailable (is espeak-ng-data installed?)\n");
    return 1;
  }
  const int kind = sentences ? 2 : 0;
  const std::string stem = sentences ? "sentences" : "words";
  DataFiles data(dir, stem);
  const std::string wave = work + "entry.wav", mp3 = work + "entry.mp3";
  int failed = 0;
  {
    ProgressBar bar(sentences ? "speaking" : "speaking words");
    for (size_t i = 0; i < entries.size(); ++i) {
      bar.Show(static_cast<long>(i), static_cast<long>(entries.size()));
      Entry& e = entries[i];
      std::memset(&e.record, 0, sizeof e.record);
      std::memcpy(e.record.key, e.key.data(), e.key.size());
      int32_t source = -1;
      // The work folder stands in as the user's recordings, so that only
      // speech answers.
      std::remove(wave.c_str());
      const bool spoken = vcSndCenter_GetSndFile(centre, e.text.c_str(), kind, (work + "entry").c_str(), 1, 1, &source,
                                                 work.c_str()) == 1 &&
                          source == 1;
      if (!spoken || vcEncodeWavToMp3(wave.c_str(), mp3.c_str(), bitrate) != 1 ||
          !data.Append(ReadWhole(mp3), &e.record)) {
        std::fprintf(stderr, "\ntqcomm: cannot make the sound of \"%s\"\n", ForTerminal(e.text).c_str());
        e.key.clear();
        ++failed;
      }
    }
    bar.Show(static_cast<long>(entries.size()), static_cast<long>(entries.size()));
  }
  vcSndCenter_Close(centre);
  std::remove(wave.c_str());
  std::remove(mp3.c_str());
  rmdir(work.c_str());
  entries.erase(std::remove_if(entries.begin(), entries.end(), [](const Entry& e) { return e.key.empty(); }),
                entries.end());
  std::sort(entries.begin(), entries.end(), KeyBefore);
  std::string index;
  for (size_t i = 0; i < entries.size(); ++i) {
    SndLibRecord r = entries[i].record;
    // A sentence library keeps offset and length XORed with the record's
    // own position.
    if (sentences) {
      const uint32_t position = static_cast<uint32_t>(i * kRecordBytes);
      r.offset ^= position;
      r.length ^= position;
    }
    index += RecordBytes(r);
  }
  const std::string indexPath = dir + stem + ".idx";
  std::ofstream out(indexPath, std::ios::binary | std::ios::trunc);
  out.write(index.data(), static_cast<std::streamsize>(index.size()));
  out.close();
  if (!data.Finish() || !out) {
    std::fprintf(stderr, "tqcomm: cannot write the library in %s\n", outDir.c_str());
    return 1;
  }
  std::printf("%zu %s, %d data file%s, %ld bytes of MP3 -> %s\n", entries.size(), sentences ? "sentences" : "words",
              data.count(), data.count() == 1 ? "" : "s", data.total(), indexPath.c_str());
  return failed == 0 ? 0 : 1;
}

}  // namespace

int SayCommand(const Args& in) {
  Args args = in;
  if (WantsHelp(args)) {
    std::printf("%s", kSayUsage);
    return 0;
  }
  SayRequest q;
  bool ok = true;
  std::string value;
  if (TakeOption(&args, "--kind", &value)) ok = ParseInt(value, 0, 3, &q.kind);
  TakeOption(&args, "-o", &q.base);
  q.hasUser = TakeOption(&args, "--user", &q.user);
  if (q.hasUser) q.user = WithSlash(q.user);
  q.wave = TakeFlag(&args, "--wave");
  q.play = TakeFlag(&args, "--play");
  for (auto it = std::find(args.begin(), args.end(), "--lib"); ok && it != args.end();
       it = std::find(args.begin(), args.end(), "--lib")) {
    if (args.end() - it < 3) {
      ok = false;
      break;
    }
    q.libs.push_back({*(it + 1), WithSlash(*(it + 2))});
    args.erase(it, it + 3);
  }
  if (!ok || args.size() != 1 || args[0].empty() || args[0][0] == '-') {
    std::fprintf(stderr, "%s", kSayUsage);
    return 2;
  }
  q.text = Separators(FromTerminal(args[0]));
  if (q.libs.empty() && (q.kind == 0 || q.kind == 2)) {
    const std::string dir = DataDir() + "/sndlib/";
    const std::string index = dir + (q.kind == 0 ? "words.idx" : "sentences.idx");
    if (IsFile(index)) q.libs.push_back({index, dir});
  }
  return Say(q);
}

int SndlibCommand(const Args& in) {
  Args args = in;
  if (WantsHelp(args)) {
    std::printf("%s", kSndlibUsage);
    return 0;
  }
  std::string out, rate;
  const bool hasOut = TakeOption(&args, "-o", &out);
  const bool sentences = TakeFlag(&args, "--sentences");
  int bitrate = kDefaultBitrate;
  const bool rateOk = !TakeOption(&args, "--bitrate", &rate) || ParseInt(rate, 8, 160, &bitrate);
  if (!hasOut || !rateOk || args.size() != 2 || args[0] != "build") {
    std::fprintf(stderr, "%s", kSndlibUsage);
    return 2;
  }
  if (!IsFile(args[1])) {
    std::fprintf(stderr, "tqcomm: there is no file %s\n", args[1].c_str());
    return 1;
  }
  return Build(args[1], out, sentences, bitrate);
}

}  // namespace tqcomm
