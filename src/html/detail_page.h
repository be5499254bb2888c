// The word detail page: the seven sections of a dictionary entry as one
// GB2312 page for the front ends' browser control.
//
// The page's anchors and link addresses are read by the front ends' scripts:
// "ES"/"EN" + sentence + "$" plays a sample sentence, "A_S<n>"/"A_N<n>" saves
// one. A sentence in an address has "?" written as "#" and a double quote as
// "~" (vcRestoreUrlSentence undoes it).
#pragma once

#include <cstdint>
#include <string>

namespace tq::html {

constexpr int kSectionCount = 7;
// A line of an entry is held in a buffer of this size; longer lines are cut
// to fit, never between the two bytes of a character.
constexpr int kDetailLineBuffer = 2000;

// The bytes of the page for the sections of text (back to back, lengths[k]
// bytes each). A set soundFlag gives the "**" samples a sound link too.
std::string DetailPage(const uint32_t* lengths, const char* text, int soundFlag);

// Writes DetailPage to outPath. A page that cannot be created or closed is
// reported on standard output, as the front ends have always had it.
void CreateDetailPage(const uint32_t* lengths, const char* text, const char* outPath, int soundFlag);

// A sample sentence as it stands in a link address.
std::string EncodeUrlSentence(const std::string& sentence);

}  // namespace tq::html
