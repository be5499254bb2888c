#include "option_names.h"

#include <cctype>

namespace tqcomm {
namespace {

bool IsNameChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_'; }

}  // namespace

bool NamesOption(const std::string& text, const std::string& option) {
  if (option.empty()) return false;
  for (size_t at = text.find(option); at != std::string::npos; at = text.find(option, at + 1)) {
    bool starts = at == 0 || !IsNameChar(text[at - 1]);
    bool ends = at + option.size() == text.size() || !IsNameChar(text[at + option.size()]);
    if (starts && ends) return true;
  }
  return false;
}

std::set<std::string> OptionsNamed(const std::string& text) {
  std::set<std::string> options;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '-' || (at > 0 && IsNameChar(text[at - 1]))) continue;
    size_t name = at + (at + 1 < text.size() && text[at + 1] == '-' ? 2 : 1);
    if (name >= text.size() || !std::islower(static_cast<unsigned char>(text[name]))) continue;
    size_t end = name;
    while (end < text.size() && (std::islower(static_cast<unsigned char>(text[end])) ||
                                 std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '-')) {
      ++end;
    }
    // "--name_x" or "--nameX" is no option name.
    if (end < text.size() && IsNameChar(text[end])) {
      at = end;
      continue;
    }
    options.insert(text.substr(at, end - at));
    at = end;
  }
  return options;
}

}  // namespace tqcomm
