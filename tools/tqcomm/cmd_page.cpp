// tqcomm page WORD [-o DIR] [--dict DIR]: writes the detail page of a
// dictionary word, as a front end shows it in its browser control, with the
// images the page names beside it. The word is looked up as the front ends
// do (exact, then its base form); the dictionary is a folder made by
// "tqcomm dict build" (default: the data folder's "dict").
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
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

}  // namespace

int PageCommand(const Args& args_in) {
  Args args = args_in;
  std::string out_dir = ".", dict_dir;
  TakeOption(&args, "-o", &out_dir);
  if (!TakeOption(&args, "--dict", &dict_dir)) dict_dir = DataDir() + "/dict";
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
  if (vcEcDict_Search(dict, word.c_str(), 1, 0) != 1) {
    std::fprintf(stderr, "%s: not found\n", ForTerminal(word).c_str());
    vcEcDict_Close(dict);
    return 1;
  }
  char found[64];
  vcEcDict_GetResultWord(dict, found);
  uint32_t lengths[7];
  vcEcDict_GetDetailLengthArray(dict, lengths);
  size_t total = 1;
  for (uint32_t n : lengths) total += n;
  std::vector<char> text(total);
  vcEcDict_GetAllDetails(dict, text.data());
  vcEcDict_Close(dict);

  std::string page = out_dir + "/" + PageName(found);
  vcCreateHtmlDetail(lengths, text.data(), page.c_str(), 1);
  struct stat st;
  if (stat(page.c_str(), &st) != 0) return 1;  // the library has said why
  for (const char* image : kPageImages) {
    if (!CopyTo(images + "/" + image, out_dir + "/" + image)) {
      std::fprintf(stderr, "tqcomm: cannot copy %s/%s to %s\n", images.c_str(), image, out_dir.c_str());
      return 1;
    }
  }
  std::printf("%s -> %s\n", ForTerminal(found).c_str(), page.c_str());
  return 0;
}

}  // namespace tqcomm
