// tqcomm lesson: a listening lesson from a word list, as the lesson maker's
// front end makes one: a lesson script written from the words (and the
// samples of a dictionary), a sound centre with the data folder's sound
// library and speech, and vcMp3Maker_MakeWaveFile with compression, its
// progress bar shown on the terminal.
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "args.h"
#include "commands.h"
#include "progress.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace tqcomm {
namespace {

const char kUsage[] =
    "usage: tqcomm lesson [--book BOOK.idx | LIST.txt] [--dict DIR] [--pattern A1B1C1S2] [--words N]\n"
    "                     [--pause-sentences MS] [--chinese] -o OUT.mp3\n"
    "\n"
    "Makes a listening lesson: word after word, the word is said, its Chinese\n"
    "meaning read, the word spelled and its sample sentences said, in the order\n"
    "and with the pauses of the pattern. Leaves OUT.mp3 and beside it OUT.lrc,\n"
    "the lyric file that shows each word and sentence as it plays.\n"
    "\n"
    "  --book BOOK.idx     the words of a word book ('tqcomm book import' makes one)\n"
    "  LIST.txt            or of a word list, in either layout 'book import' reads;\n"
    "                      with neither, the bundled sample words\n"
    "  --dict DIR          sentences: the samples of the dictionary in DIR ('tqcomm\n"
    "                      dict build'), at most two a word; without it, no sentences\n"
    "  --pattern P         what plays for each word, left to right: A the word, B its\n"
    "                      meaning, C the spelling, S the sentences, a number a pause\n"
    "                      in seconds (1.5); default A1B1C1S2. \"ECText#\" in front\n"
    "                      shows the meaning with the word, and B plays nothing\n"
    "  --words N           only the first N words\n"
    "  --pause-sentences MS  the silence between two sentences (default 1000)\n"
    "  --chinese           each sentence's Chinese said after it and shown too\n"
    "  -o OUT.mp3          the lesson\n"
    "\n"
    "Sounds come from the user's own recordings (WORD.wav or .mp3 in the data\n"
    "folder's usersnd/), then the data folder's sound libraries (sndlib/words.idx\n"
    "and sentences.idx, made by 'tqcomm sndlib build' or scripts/main.sh), then\n"
    "espeak-ng speech; the letters are those of data/sound/letters.\n"
    "\n"
    "Exit status: 0 made, 1 failure, 2 bad usage.\n";

constexpr char kDefaultPattern[] = "A1B1C1S2";
constexpr int kSentencesPerWord = 2;
// The lesson: speech's own rate, mono, and an MP3 fit for speech. Below 56
// kbit/s at this rate LAME's frames have no room for the tag that tells
// players the exact length, and the length would be guessed from the size.
constexpr int kBits = 16, kRate = 22050, kChannels = 1, kKbps = 64;
// Room a script line leaves its text: lines are read 998 bytes at most.
constexpr size_t kLineText = 990;

struct Entry {
  std::string word, meaning;                                // GBK
  std::vector<std::pair<std::string, std::string>> samples;  // English, Chinese
};

bool IsDir(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// A pattern holds only what the maker plays, which the library would pass
// over without a word; "" when it does, else what is wrong with it.
std::string PatternProblem(const std::string& pattern) {
  std::string p = pattern;
  if (p.rfind("ECText#", 0) == 0) p.erase(0, 7);
  const size_t bad = p.find_first_not_of("ABCSHN0123456789.");
  if (bad != std::string::npos) return std::string("holds '") + p[bad] + "' (only A B C S H N, digits and points play)";
  if (p.find_first_of("ABCS") == std::string::npos) return "plays nothing of a word (A, B, C or S)";
  return std::string();
}

// One line of text for the script: line ends and tabs made blanks, cut at
// a character's end to fit.
std::string OneLine(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    const size_t width = c >= 0x81 && i + 1 < text.size() ? 2 : 1;
    if (out.size() + width > kLineText) break;
    if (width == 2) {
      out.append(text, i, 2);
      ++i;
    } else {
      out.push_back(c == '\r' || c == '\n' || c == '\t' ? ' ' : static_cast<char>(c));
    }
  }
  const size_t first = out.find_first_not_of(' ');
  if (first == std::string::npos) return std::string();
  return out.substr(first, out.find_last_not_of(' ') - first + 1);
}

bool ReadBook(const std::string& idx, std::vector<Entry>* entries) {
  const int book = vcCOrvexBook_New();
  vcCOrvexBook_SetBookFileName(book, idx.c_str(), nullptr);
  const int count = vcCOrvexBook_OpenIdx(book, "rb");
  if (count < 0 || vcCOrvexBook_OpenLib(book, "rb") < 0) {
    vcCOrvexBook_CloseIdx(book);
    vcCOrvexBook_Delete(book);
    return false;
  }
  static char word[4096], expl[65536];
  for (int i = 0; i < count; ++i) {
    word[0] = expl[0] = '\0';
    int32_t wordClass = 0;  // a class mark "{nn}" in front of the explanation goes there
    vcCOrvexBook_GetWordByNo(book, i, word, expl, nullptr, nullptr, nullptr, &wordClass);
    if (word[0] != '\0') entries->push_back({word, expl, {}});
  }
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
  return true;
}

// The samples of each word's entry in the compact dictionary of dir:
// "*#" (or "**") lines are English, a "->" line the Chinese of the one
// before it.
bool AddSamples(const std::string& dir, std::vector<Entry>* entries) {
  const std::string idx = dir + "/dictlib/vlkdictec.idx", lib = dir + "/dictlib/vlkdictec.lib";
  const int dict = vcEcDict_Open(idx.c_str(), lib.c_str(), nullptr);
  if (dict < 0) return false;
  for (Entry& e : *entries) {
    if (vcEcDict_Search(dict, e.word.c_str(), 0, 0) != 1) continue;
    std::string text(static_cast<size_t>(std::max(0, vcEcDict_GetDetailLength(dict, 2))) + 1, '\0');
    text.resize(static_cast<size_t>(std::max(0, vcEcDict_GetOneDetail(dict, &text[0], 2))));
    size_t at = 0;
    while (at < text.size() && e.samples.size() <= kSentencesPerWord) {
      size_t end = text.find('\n', at);
      if (end == std::string::npos) end = text.size();
      const std::string line = text.substr(at, end - at);
      at = end + 1;
      if (line.rfind("*#", 0) == 0 || line.rfind("**", 0) == 0) {
        const std::string english = OneLine(line.substr(2));
        if (!english.empty()) e.samples.push_back({english, std::string()});
      } else if (line.rfind("->", 0) == 0 && !e.samples.empty()) {
        e.samples.back().second = OneLine(line.substr(2));
      }
    }
    if (e.samples.size() > kSentencesPerWord) e.samples.resize(kSentencesPerWord);
  }
  vcEcDict_Close(dict);
  return true;
}

struct Options {
  std::string book, list, dict, out;
  std::string pattern = kDefaultPattern;
  int words = 0;  // 0: all
  int pauseSentences = 1000;
  bool chinese = false;
};

std::string LetterDir() {
  std::string sample = SampleDir();
  while (!sample.empty() && sample.back() == '/') sample.pop_back();
  return sample.substr(0, sample.rfind('/') + 1) + "sound/letters/";
}

// The lesson script: the 23 header lines, then a block a word.
std::string Script(const Options& o, const std::string& work, const std::vector<Entry>& entries) {
  const std::string user = DataDir() + "/usersnd/";
  const std::string header[] = {
      LetterDir(), work + "word", work + "meaning", work + "sentence", work + "chinese", user, user,
      "1",  // the meaning captioned
      "1",  // a word no recording or library has is spoken
      "0",  // the meaning spoken, not looked up
      o.chinese ? "1" : "0",  // Chinese sentences said
      o.chinese ? "1" : "0",  // and shown
      "1",                    // English first
      std::to_string(kSentencesPerWord), "0", std::to_string(o.pauseSentences),
      "500",  // between a sentence and its Chinese
      "0", std::to_string(kBits), std::to_string(kRate), std::to_string(kChannels), std::to_string(kKbps),
      o.pattern};
  std::string s;
  for (const std::string& line : header) s += line + "\r\n";
  for (const Entry& e : entries) {
    s += "A " + OneLine(e.word) + "\r\n";
    if (!e.meaning.empty()) s += "B " + OneLine(e.meaning) + "\r\n";
    for (const auto& [english, chinese] : e.samples) {
      std::string d = english;
      // A sentence ending so would name a recording on the next lines.
      while (d.size() >= 4 && d.compare(d.size() - 4, 4, "@@@@") == 0) d.erase(d.size() - 1);
      s += "D " + d + "\r\n";
      if (!chinese.empty()) s += "E " + chinese + "\r\n";
    }
    s += "####\r\n";
  }
  return s;
}

// The host progress bar the maker and the encoder move, watched through its
// window procedure: the first range message starts the making, the second
// the compressing.
struct Watch {
  TqWindowProc previous = nullptr;
  int phase = 0;
  std::unique_ptr<ProgressBar> bar;
};
Watch g_watch;

intptr_t TQ_CALL WatchProgress(int window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  if (message == 1025) {
    g_watch.bar.reset();
    g_watch.bar = std::make_unique<ProgressBar>(g_watch.phase++ == 0 ? "making lesson" : "compressing");
  } else if (message == 1026 && g_watch.bar != nullptr) {
    g_watch.bar->Show(static_cast<long>(wparam), 100);
  }
  return tqHost_CallWindowProc(g_watch.previous, window, message, wparam, lparam);
}

std::string Clock(int ms) {
  char text[32];
  std::snprintf(text, sizeof text, "%d:%02d.%d", ms / 60000, ms / 1000 % 60, ms / 100 % 10);
  return text;
}

int Make(const Options& o) {
  std::vector<Entry> entries;
  if (!o.book.empty()) {
    if (!ReadBook(o.book, &entries)) {
      std::fprintf(stderr, "tqcomm: cannot open the word book %s\n", o.book.c_str());
      return 1;
    }
  } else {
    const std::string list = o.list.empty() ? SampleDir() + "/words.txt" : o.list;
    std::vector<std::pair<std::string, std::string>> items;
    if (!IsFile(list) || !ReadListEntries(list, &items)) {
      std::fprintf(stderr, "tqcomm: cannot read the word list %s\n", list.c_str());
      return 1;
    }
    for (auto& [word, meaning] : items) entries.push_back({word, meaning, {}});
  }
  if (o.words > 0 && static_cast<size_t>(o.words) < entries.size()) entries.resize(static_cast<size_t>(o.words));
  if (entries.empty()) {
    std::fprintf(stderr, "tqcomm: there are no words to make a lesson of\n");
    return 1;
  }
  if (!o.dict.empty() && !AddSamples(o.dict, &entries)) {
    std::fprintf(stderr, "tqcomm: no dictionary in %s (make one with: tqcomm dict build SOURCE -o %s)\n",
                 o.dict.c_str(), o.dict.c_str());
    return 1;
  }
  if (o.pattern.find('C') != std::string::npos && !IsDir(LetterDir())) {
    std::fprintf(stderr, "tqcomm: no letter sounds in %s; the words will not be spelled\n", LetterDir().c_str());
  }

  // The lesson's own files stand in a work folder beside it until they are
  // done: its temporary sounds, its script, the wave and the captions.
  const std::string stem = o.out.substr(0, o.out.size() - 4);
  const std::string work = stem + ".work/";
  mkdir(work.c_str(), 0755);
  const std::string scriptPath = work + "lesson.txt", wave = work + "lesson.wav";
  {
    const std::string script = Script(o, work, entries);
    std::FILE* f = std::fopen(scriptPath.c_str(), "wb");
    if (f == nullptr || std::fwrite(script.data(), 1, script.size(), f) != script.size()) {
      if (f != nullptr) std::fclose(f);
      std::fprintf(stderr, "tqcomm: cannot write in %s\n", work.c_str());
      return 1;
    }
    std::fclose(f);
  }

  const int centre = vcSndCenter_Open(1, kBits, kRate, kChannels);
  std::vector<std::string> from;
  const std::string libs = DataDir() + "/sndlib/";
  if (IsFile(libs + "words.idx") && vcSndCenter_AddSndLib(centre, (libs + "words.idx").c_str(), libs.c_str(), 0) == 1) {
    from.push_back("the sound library " + libs + "words.idx");
  }
  if (IsFile(libs + "sentences.idx") &&
      vcSndCenter_AddSndLib(centre, (libs + "sentences.idx").c_str(), libs.c_str(), 2) == 1) {
    from.push_back("the sound library " + libs + "sentences.idx");
  }
  if (vcSndCenter_IsTtsAvailable(centre) > 0) {
    from.push_back("speech (espeak-ng)");
  } else {
    std::fprintf(stderr, "tqcomm: speech is unavailable (is espeak-ng-data installed?)\n");
  }
  std::string sources;
  for (const std::string& f : from) sources += (sources.empty() ? "" : ", ") + f;
  std::printf("%zu words, pattern %s; sounds from %s\n", entries.size(), o.pattern.c_str(),
              sources.empty() ? "nowhere" : sources.c_str());
  std::fflush(stdout);

  const int window = tqHost_CreateWindow("lesson", 300, 20);
  g_watch.previous = tqHost_SetWindowProc(window, WatchProgress);
  const int maker = vcMp3Maker_Open(scriptPath.c_str(), centre);
  const int made = maker < 0 ? -1
                             : vcMp3Maker_MakeWaveFile(maker, wave.c_str(), static_cast<int>(entries.size()), 1,
                                                       window, 0);
  g_watch.bar.reset();
  if (maker > 0) vcMp3Maker_Close(maker);
  vcSndCenter_Close(centre);
  tqHost_DestroyWindow(window);

  const std::string mp3 = work + "lesson.mp3", lrc = work + "lesson.lrc";
  int rc = 0;
  if (made < 0) {
    std::fprintf(stderr, "tqcomm: cannot make the lesson's wave in %s\n", work.c_str());
    rc = 1;
  } else if (!IsFile(mp3)) {
    if (IsFile(wave)) {
      std::fprintf(stderr,
                   "tqcomm: no MP3 was made: the file /tmp/tqtqnomp3.dat (c:\\tmp\\tqtqnomp3.dat) keeps the wave; "
                   "it is in %s\n",
                   work.c_str());
    } else {
      std::fprintf(stderr, "tqcomm: the lesson could not be compressed to MP3\n");
    }
    return 1;
  } else if (std::rename(mp3.c_str(), o.out.c_str()) != 0 ||
             (IsFile(lrc) && std::rename(lrc.c_str(), (stem + ".lrc").c_str()) != 0)) {
    std::fprintf(stderr, "tqcomm: cannot write %s\n", o.out.c_str());
    rc = 1;
  } else {
    const int ms = vcGetMp3FileLengthInTime(o.out.c_str());
    std::printf("%d words, %s (%d ms) -> %s, %s.lrc\n", made, Clock(ms).c_str(), ms, o.out.c_str(), stem.c_str());
  }
  // The temporary sounds of the last word (a library's sound comes as MP3
  // before it is a wave) and the script go with the folder.
  std::vector<std::string> sounds = {"word", "meaning", "chinese_-1"};
  for (int i = 0; i < kSentencesPerWord * 4; ++i) {
    sounds.push_back("sentence_" + std::to_string(i));
    sounds.push_back("chinese_" + std::to_string(i));
  }
  for (const std::string& sound : sounds) {
    std::remove((work + sound + ".wav").c_str());
    std::remove((work + sound + ".mp3").c_str());
  }
  for (const char* name : {"lesson.txt", "lesson.wav", "lesson.lrt"}) std::remove((work + name).c_str());
  rmdir(work.c_str());
  return rc;
}

}  // namespace

int LessonCommand(const Args& in) {
  Args args = in;
  if (WantsHelp(args)) {
    std::printf("%s", kUsage);
    return 0;
  }
  Options o;
  bool ok = TakeOption(&args, "-o", &o.out);
  TakeOption(&args, "--book", &o.book);
  TakeOption(&args, "--dict", &o.dict);
  TakeOption(&args, "--pattern", &o.pattern);
  std::string value;
  if (TakeOption(&args, "--words", &value)) ok = ok && ParseInt(value, 1, 1000000, &o.words);
  if (TakeOption(&args, "--pause-sentences", &value)) ok = ok && ParseInt(value, 0, 600000, &o.pauseSentences);
  o.chinese = TakeFlag(&args, "--chinese");
  if (args.size() == 1 && o.book.empty() && !args[0].empty() && args[0][0] != '-') {
    o.list = args[0];
    args.clear();
  }
  const std::string problem = PatternProblem(o.pattern);
  if (ok && !problem.empty()) {
    std::fprintf(stderr, "tqcomm: the pattern %s %s\n", o.pattern.c_str(), problem.c_str());
    return 2;
  }
  if (!ok || !args.empty() || o.out.empty()) {
    std::fprintf(stderr, "%s", kUsage);
    return 2;
  }
  // OUT.mp3: the lyric file takes its stem.
  if (o.out.size() < 4 || strcasecmp(o.out.c_str() + o.out.size() - 4, ".mp3") != 0) o.out += ".mp3";
  return Make(o);
}

}  // namespace tqcomm
