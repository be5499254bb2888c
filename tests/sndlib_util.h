// Sound libraries for the tests, written byte by byte: 96-byte records
// sorted by the lower-cased key, sounds back to back in data files, and
// offsets and lengths XORed with the record's position for sentences.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "sound_util.h"

namespace tqtest {

struct Sound {
  std::string key;
  std::string bytes;
  int isWave = 0;
  std::string dataFile = "snd.dat";
};

inline std::string Lowered(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return s;
}

// One record; the key fills at most its 64 bytes.
inline std::string SndRecord(const std::string& key, uint32_t offset, uint32_t length, const std::string& dataFile,
                             int isWave) {
  std::string r = key.substr(0, 64);
  r.resize(64, '\0');
  std::string name = dataFile.substr(0, 20);
  name.resize(20, '\0');
  return r + Le(offset) + Le(length) + name + Le(static_cast<uint32_t>(isWave));
}

// Writes the index at indexPath and the data files into dataDir.
inline void WriteLibrary(const std::string& indexPath, const std::string& dataDir, std::vector<Sound> sounds,
                         bool scrambled = false) {
  std::stable_sort(sounds.begin(), sounds.end(), [](const Sound& a, const Sound& b) {
    const std::string x = Lowered(a.key), y = Lowered(b.key);
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(),
                                        [](char p, char q) { return static_cast<unsigned char>(p) < static_cast<unsigned char>(q); });
  });
  std::map<std::string, std::string> data;
  std::string index;
  for (const Sound& s : sounds) {
    std::string& file = data[s.dataFile];
    uint32_t offset = static_cast<uint32_t>(file.size()), length = static_cast<uint32_t>(s.bytes.size());
    if (scrambled) {
      offset ^= static_cast<uint32_t>(index.size());
      length ^= static_cast<uint32_t>(index.size());
    }
    file += s.bytes;
    index += SndRecord(s.key, offset, length, s.dataFile, s.isWave);
  }
  WriteFile(indexPath, index);
  for (const auto& [name, bytes] : data) WriteFile(dataDir + "/" + name, bytes);
}

}  // namespace tqtest
