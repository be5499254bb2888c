// Named values under a root and a key, the front ends' settings store.
//
// On Linux the store is a tree of folders under $XDG_DATA_HOME/tqcomm/registry
// (TQCOMM_REGISTRY names another folder, for tests): a folder per root, a
// folder per key below it, and the key's values together in one file. Key
// and value names are matched without regard to the case of ASCII letters,
// as the front ends are used to. Opening a key makes it, so that reading a
// missing key leaves it created. Each write rewrites the key's value file
// under a lock, through a temporary file renamed over it: two processes
// writing at once both land, and a crash leaves the old file or the new.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace tq {

class RegistryKey {
 public:
  // Value types as the front ends know them.
  static constexpr uint32_t kString = 1;
  static constexpr uint32_t kInteger = 4;

  struct Value {
    uint32_t type = 0;
    std::string name;  // as first written
    std::string data;
  };

  // The folder that holds the whole store.
  static std::string StoreFolder();

  // Opens the key, making it and the keys above it when missing. False for
  // a root that is not one of the predefined keys, or when the store cannot
  // be written.
  bool Open(uint32_t root, const char* key);

  // The named value; false when there is none.
  bool Read(const char* name, Value* value) const;
  bool Write(const char* name, uint32_t type, const std::string& data);
  // False when there was no such value.
  bool Delete(const char* name);

  // The value file's bytes and back; exposed for tests of damaged files.
  using Values = std::map<std::string, Value>;  // by folded name
  static std::string Encode(const Values& values);
  static Values Decode(const std::string& bytes);
  // A name as it is compared and as a key part appears among the folders.
  static std::string Fold(const std::string& name);

 private:
  Values Load() const;
  std::string folder_;
};

}  // namespace tq

namespace tq {

// The front ends' registry calls: 0, or -1 (see the exports).
int RegistryGetInt(uint32_t root, const char* key, const char* name, int32_t* result);
int RegistryGetString(uint32_t root, const char* key, const char* name, char* buffer, int32_t* size);
int RegistryWriteInt(uint32_t root, const char* key, const char* name, int32_t value);
int RegistryWriteString(uint32_t root, const char* key, const char* name, const char* text);
int RegistryDeleteValue(uint32_t root, const char* key, const char* name);

}  // namespace tq
