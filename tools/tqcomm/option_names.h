// Option names in help texts: what a command's --help names, so that the
// options a command takes can be held against it.
#pragma once

#include <set>
#include <string>

namespace tqcomm {

// Whether text names the option as a word of its own: "--list" is not named
// by "--list-all" or "--no-list", nor "-o" by "--o" or "-output".
bool NamesOption(const std::string& text, const std::string& option);

// Every option a text names: "-" or "--" and a lowercase letter, then
// letters, digits and hyphens, standing as a word of its own ("--book",
// "-o"; not the "-8" of "utf-8", nor "-" alone).
std::set<std::string> OptionsNamed(const std::string& text);

}  // namespace tqcomm
