// Drive letters. Linux has one file system, which is drive C:. CD drives are
// the optical file systems mounted on the machine (iso9660, udf), lettered
// from D in the order they were mounted, and any that the front end declares
// (tqHost_SetCdDrive), which take the letter over.
#include <cctype>
#include <fstream>
#include <map>
#include <mutex>
#include <set>
#include <sstream>
#include <vector>

#include "platform/devices.h"

namespace tq::host {
namespace {

struct Drives {
  std::mutex mutex;
  std::map<char, std::string> declared;
  std::set<char> removed;
};

Drives& TheDrives() {
  static Drives* drives = new Drives;  // lives until exit
  return *drives;
}

// A mount table field with its octal escapes ("\040" for a blank) undone.
std::string Unescape(const std::string& field) {
  std::string out;
  for (size_t i = 0; i < field.size(); ++i) {
    bool octal = field[i] == '\\' && i + 3 < field.size();
    for (size_t k = 1; octal && k <= 3; ++k) octal = field[i + k] >= '0' && field[i + k] <= '7';
    if (octal) {
      out.push_back(static_cast<char>(std::stoi(field.substr(i + 1, 3), nullptr, 8)));
      i += 3;
    } else {
      out.push_back(field[i]);
    }
  }
  return out;
}

// Mount points of the optical file systems, in mount order.
std::vector<std::string> OpticalMounts() {
  std::vector<std::string> mounts;
  std::ifstream table("/proc/self/mounts");
  std::string line;
  while (std::getline(table, line)) {
    std::istringstream fields(line);
    std::string device, point, type;
    if (fields >> device >> point >> type && (type == "iso9660" || type == "udf")) {
      mounts.push_back(Unescape(point));
    }
  }
  return mounts;
}

char Upper(char letter) { return static_cast<char>(std::toupper(static_cast<unsigned char>(letter))); }

}  // namespace

bool CdDriveFolder(char letter, std::string* folder) {
  letter = Upper(letter);
  if (letter < 'A' || letter > 'Z') return false;
  {
    Drives& d = TheDrives();
    std::lock_guard<std::mutex> lock(d.mutex);
    auto it = d.declared.find(letter);
    if (it != d.declared.end()) {
      if (folder) *folder = it->second;
      return true;
    }
    if (d.removed.count(letter) != 0) return false;
  }
  if (letter < 'D') return false;
  std::vector<std::string> mounts = OpticalMounts();
  size_t index = static_cast<size_t>(letter - 'D');
  if (index >= mounts.size()) return false;
  if (folder) *folder = mounts[index];
  return true;
}

int GetDriveTypeA(char letter) {
  if (CdDriveFolder(letter, nullptr)) return kDriveCdRom;
  return Upper(letter) == 'C' ? kDriveFixed : kDriveNoRootDir;
}

void SetCdDrive(char letter, const char* folder) {
  letter = Upper(letter);
  if (letter < 'A' || letter > 'Z') return;
  Drives& d = TheDrives();
  std::lock_guard<std::mutex> lock(d.mutex);
  if (folder != nullptr) {
    d.declared[letter] = folder;
    d.removed.erase(letter);
  } else {
    d.declared.erase(letter);
    d.removed.insert(letter);
  }
}

}  // namespace tq::host
