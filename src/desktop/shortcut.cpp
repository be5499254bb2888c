#include "desktop/shortcut.h"

#include <cstdio>

#include "desktop/command_line.h"
#include "platform/env.h"
#include "platform/text_codec.h"

namespace tq::desktop {
namespace {

// A value of the string type: backslashes and control characters escaped.
std::string Escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\t': out += "\\t"; break;
      case '\r': out += "\\r"; break;
      default: out += c;
    }
  }
  return out;
}

// One word of the Exec key: quoted when it holds a reserved character, with
// the characters that stay special inside quotes escaped; "%" doubled, as
// it would start a field code.
std::string ExecWord(const std::string& word) {
  static const char kReserved[] = " \t\n\"'\\><~|&;$*?#()`";
  bool quote = word.empty() || word.find_first_of(kReserved, 0, sizeof kReserved - 1) != std::string::npos;
  std::string out = quote ? "\"" : "";
  for (char c : word) {
    if (quote && (c == '"' || c == '`' || c == '$' || c == '\\')) out += '\\';
    out += c;
    if (c == '%') out += '%';
  }
  if (quote) out += '"';
  return out;
}

std::string BaseName(const std::string& path) {
  size_t cut = 0;
  for (size_t i = 0; i < path.size(); ++i) {
    if (static_cast<unsigned char>(path[i]) >= 128) {
      ++i;
    } else if (path[i] == '\\' || path[i] == '/') {
      cut = i + 1;
    }
  }
  std::string name = path.substr(cut);
  size_t dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

}  // namespace

std::string HotKeyName(int keyByte) {
  int key = keyByte & 0xFF;
  if (key == 0) return std::string();
  std::string name;
  if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) {
    name = std::string(1, static_cast<char>(key));
  } else if (key >= 0x70 && key <= 0x87) {
    name = "F" + std::to_string(key - 0x6F);
  } else {
    char hex[8];
    std::snprintf(hex, sizeof hex, "0x%02X", key);
    name = hex;
  }
  return "Ctrl+Alt+" + name;
}

std::string DesktopEntryText(const std::string& linkName, const Shortcut& shortcut) {
  std::string name = BaseName(linkName);
  if (name.empty()) name = BaseName(shortcut.target);
  std::string exec = ExecWord(env::NativePath(shortcut.target.c_str()));
  for (const std::string& word : SplitWords(shortcut.arguments)) exec += " " + ExecWord(MapWord(word));

  std::string text = "[Desktop Entry]\nType=Application\n";
  text += "Name=" + Escaped(platform::GbkToUtf8(name)) + "\n";
  if (!shortcut.description.empty()) text += "Comment=" + Escaped(platform::GbkToUtf8(shortcut.description)) + "\n";
  text += "Exec=" + Escaped(platform::GbkToUtf8(exec)) + "\n";
  if (!shortcut.workingFolder.empty()) {
    text += "Path=" + Escaped(platform::GbkToUtf8(env::NativePath(shortcut.workingFolder.c_str()))) + "\n";
  }
  text += "Terminal=false\n";
  std::string hotKey = HotKeyName(shortcut.hotKey);
  if (!hotKey.empty()) text += "X-Tqcomm-HotKey=" + hotKey + "\n";
  return text;
}

bool WriteShortcut(const std::string& linkPath, const Shortcut& shortcut) {
  std::string text = DesktopEntryText(linkPath, shortcut);
  std::FILE* f = env::Open(linkPath.c_str(), "wb");
  if (f == nullptr) return false;
  bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size();
  ok = std::fclose(f) == 0 && ok;
  return ok;
}

}  // namespace tq::desktop
