// tqcomm page WORD [-o DIR] [--dict DIR]: writes the detail page of a
// dictionary word, as a front end shows it in its browser control, with the
// images the page names beside it. The word is looked up as "tqcomm lookup"
// does (exact, then its base word from the table of inflected forms, then
// by the library's rules); the dictionary is a folder made by
// "tqcomm dict build" (default: the data folder's "dict").
//
// The library's page leaves the word and its pronunciation to the front
// end's own window, which draws the stored notation in its "pron" face. A
// browser has no such face, so the tool heads the page with the word and
// its pronunciation turned back to IPA (character references, which a
// GB2312 page shows as well as any), and with what the word was found as.
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "commands.h"
#include "find_word.h"
#include "pron_notation.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

const char* const kPageImages[] = {"cy_title.jpg", "ys_title.jpg", "lj_title.jpg", "dy_title.jpg",
                                   "bh_title.jpg", "cg_title.jpg", "xg_title.jpg", "sound5.jpg",
                                   "sound6.jpg",   "savesample.jpg", "icon.bmp"};

bool CopyTo(const std::string& from, const std::string& to) {
  std::ifstream in(from, std::ios::binary);
  std::ofstream out(to, std::ios::binary | std::ios::trunc);
  if (!in || !out) return false;
  out << in.rdbuf();
  return static_cast<bool>(out);
}

std::string Absolute(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char cwd[PATH_MAX];
  return std::string(getcwd(cwd, sizeof cwd) ? cwd : ".") + "/" + path;
}

// A file name for the page from the word: letters, digits, '-' and '_'
// stay, and so does Chinese; anything else becomes '_'.
std::string PageName(const std::string& word) {
  std::string name;
  for (unsigned char c : word) {
    bool keep = c >= 128 || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                c == '-' || c == '_';
    name.push_back(keep ? static_cast<char>(c) : '_');
  }
  return (name.empty() ? "page" : name) + ".htm";
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Text for the page (GBK, no markup of its own).
std::string Escape(const std::string& s) {
  std::string out;
  for (char c : s) {
    if (c == '<') out += "&lt;";
    else if (c == '>') out += "&gt;";
    else if (c == '&') out += "&amp;";
    else out.push_back(c);
  }
  return out;
}

// The head of the page: the word, its pronunciation in IPA, and how an
// inflected form led to it.
std::string Heading(const std::string& asked, const Found& hit, const std::string& pron) {
  std::string notation = pron.size() > 2 && pron.front() == '[' ? pron.substr(1, pron.size() - 2) : std::string();
  std::string out = "<p id=\"tqHead\"><font size=\"5\"><b>" + Escape(hit.word) + "</b></font>";
  if (!notation.empty()) {
    out += "&nbsp;&nbsp;<span id=\"tqPron\" style=\"font-family: 'DejaVu Sans', 'Lucida Sans Unicode', "
           "'Arial Unicode MS', sans-serif; font-size: 16px\">/" + NotationToIpaHtml(notation) + "/</span>";
  }
  if (hit.by == FoundBy::kFormTable || hit.by == FoundBy::kRules) {
    out += "<br>\r\n<font color=\"#808080\">" + Escape(asked) + " &rarr; " + Escape(hit.word) + "</font>";
  }
  if (!hit.formOf.empty()) {
    std::string bases;
    for (const std::string& b : hit.formOf) bases += (bases.empty() ? "" : ", ") + Escape(b);
    out += "<br>\r\n<font color=\"#808080\">" + Escape(hit.word) + " &larr; " + bases + "</font>";
  }
  return out + "</p>\r\n";
}

}  // namespace

int PageCommand(const Args& args_in) {
  Args args = args_in;
  std::string out_dir = ".", dict_dir;
  TakeOption(&args, "-o", &out_dir);
  if (!TakeOption(&args, "--dict", &dict_dir)) dict_dir = DataDir() + "/dict";
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") {
      std::printf("usage: tqcomm page WORD [-o DIR] [--dict DIR]\n"
                  "Writes DIR/WORD.htm, the word's detail page, with the images it names.\n");
      return 0;
    }
  }
  if (args.size() != 1) {
    std::fprintf(stderr, "usage: tqcomm page WORD [-o DIR] [--dict DIR]\n");
    return 2;
  }
  const std::string& word = args[0];
  out_dir = Absolute(out_dir);
  mkdir(out_dir.c_str(), 0755);
  std::string images = Absolute(SampleDir() + "/../html");  // beside the samples

  // The dictionaries name their files relative to the working directory
  // (the word forms' "vary.idx" too).
  if (chdir(dict_dir.c_str()) != 0) {
    std::fprintf(stderr, "tqcomm: no dictionary in %s (make one with: tqcomm dict build SOURCE -o %s)\n",
                 dict_dir.c_str(), dict_dir.c_str());
    return 1;
  }
  bool expression = word.find(' ') != std::string::npos;
  int dict = expression ? vcEcDict_Open("dictlib\\vlkdictexp.idx", "dictlib\\vlkdictexp.lib", nullptr)
                        : vcEcDict_Open("dictlib\\vlkdictec.idx", "dictlib\\vlkdictec.lib", nullptr);
  if (dict < 0) {
    std::fprintf(stderr, "tqcomm: cannot open the dictionary in %s\n", dict_dir.c_str());
    return 1;
  }
  FormTables forms;
  forms.Open(".");
  Found hit = FindWord(dict, word, forms, false);
  if (hit.by == FoundBy::kNone) {
    std::fprintf(stderr, "%s: not found\n", ForTerminal(word).c_str());
    vcEcDict_Close(dict);
    return 1;
  }
  const std::string& found = hit.word;
  uint32_t lengths[7];
  vcEcDict_GetDetailLengthArray(dict, lengths);
  size_t total = 1;
  for (uint32_t n : lengths) total += n;
  std::vector<char> text(total);
  vcEcDict_GetAllDetails(dict, text.data());
  std::vector<char> mean(total + 1), pron(total + 1);
  vcEcDict_GetMeanOrPron(dict, mean.data(), pron.data());
  vcEcDict_Close(dict);

  std::string page = out_dir + "/" + PageName(found);
  vcCreateHtmlDetail(lengths, text.data(), page.c_str(), 1);
  struct stat st;
  if (stat(page.c_str(), &st) != 0) return 1;  // the library has said why
  std::string html = ReadAll(page);
  size_t body = html.find("<body>");
  if (body != std::string::npos) {
    size_t at = html.find('\n', body);
    html.insert(at == std::string::npos ? body + 6 : at + 1, Heading(word, hit, pron.data()));
    std::ofstream(page, std::ios::binary | std::ios::trunc) << html;
  }
  for (const char* image : kPageImages) {
    if (!CopyTo(images + "/" + image, out_dir + "/" + image)) {
      std::fprintf(stderr, "tqcomm: cannot copy %s/%s to %s\n", images.c_str(), image, out_dir.c_str());
      return 1;
    }
  }
  std::printf("%s (%s) -> %s\n", ForTerminal(found).c_str(), FoundByText(hit.by), page.c_str());
  return 0;
}

}  // namespace tqcomm
