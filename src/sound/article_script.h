// Article scripts: text files that pair the sentences of a recorded radio
// article with time marks in its MP3, from which sentence sound libraries
// are made. One wave per sentence is cut out, sentence sounds are checked
// for, and the sounds of an older sentence library are taken out, each
// under a file name made from the sentence in the working directory.
#pragma once

#include <cstdint>
#include <string>

namespace tq::sound {

// Bytes of a script line that are read at once; a longer line comes in pieces.
constexpr int kScriptLineBytes = 998;
// Bytes of a sentence's search form that name its file.
constexpr size_t kSentenceNameBytes = 63;

// Where vcGetOldVoaSnd finds its library: values "IndexPath" and "RootDir"
// under this key of the current user.
extern const char kOldVoaLibraryKey[];

// The file name of a sentence: full-width punctuation made ASCII, the
// search form (bytes 1 to 4 left out), at most 63 bytes, then extension.
std::string SentenceFileName(const std::string& sentence, const char* extension);

// One line of a script, as the cutting reads it after trimming at the
// right and the skip of "****".
struct ScriptLine {
  enum Kind { kOther, kMark, kSection } kind = kOther;
  int32_t timeMs = 0;         // a mark's time
  std::string sentence;       // a mark's sentence, trimmed at the left
  bool namesRecording = false;
  std::string recording;      // a section's MP3, when it names one
};
ScriptLine ReadScriptLine(std::string line);

// The exports' work; a script that can't be opened does nothing.
void ProcessVoaScript(const char* scriptPath);
void VerifyVoaScript(const char* scriptPath);
void GetOldVoaSnd(const char* scriptPath);

}  // namespace tq::sound
