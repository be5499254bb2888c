#include "core/registry.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "core/binary_io.h"
#include "platform/env.h"
#include "platform/store.h"

namespace tq {
namespace {

const char kMagic[] = "TQREG1\n";
constexpr size_t kMagicLength = sizeof kMagic - 1;
const char kValuesFile[] = "/.values";  // no key's folder name begins with "."
const char kLockFile[] = "/.lock";

const char* RootFolder(uint32_t root) {
  switch (root) {
    case 0x80000000u: return "HKEY_CLASSES_ROOT";
    case 0x80000001u: return "HKEY_CURRENT_USER";
    case 0x80000002u: return "HKEY_LOCAL_MACHINE";
    case 0x80000003u: return "HKEY_USERS";
    case 0x80000004u: return "HKEY_PERFORMANCE_DATA";
    case 0x80000005u: return "HKEY_CURRENT_CONFIG";
    case 0x80000006u: return "HKEY_DYN_DATA";
    default: return nullptr;
  }
}

bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 128; }

// The parts of a key path between backslashes. A backslash that is the
// second byte of a Chinese character does not divide; empty parts drop out.
std::vector<std::string> KeyParts(const char* key) {
  std::vector<std::string> parts;
  std::string part;
  for (const char* p = key; *p != '\0'; ++p) {
    if (IsHigh(*p) && p[1] != '\0') {
      part += p[0];
      part += p[1];
      ++p;
    } else if (*p == '\\') {
      if (!part.empty()) parts.push_back(part);
      part.clear();
    } else {
      part += *p;
    }
  }
  if (!part.empty()) parts.push_back(part);
  return parts;
}

// A key part as a folder name: folded, with every byte that could mislead
// the file system written as %XX, a leading "." among them.
std::string FolderName(const std::string& part) {
  static const char kPlain[] = " -_.()+,;=@[]{}~!#$&'^`";
  std::string folded = RegistryKey::Fold(part);
  std::string out;
  for (size_t i = 0; i < folded.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(folded[i]);
    bool plain = c >= 128 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                 (c != 0 && std::strchr(kPlain, c) != nullptr);
    if (i == 0 && c == '.') plain = false;
    if (plain) {
      out += static_cast<char>(c);
    } else {
      char hex[4];
      std::snprintf(hex, sizeof hex, "%%%02X", c);
      out += hex;
    }
  }
  return out;
}

bool ReadWhole(const std::string& path, std::string* bytes) {
  std::FILE* f = env::Open(path.c_str(), "rb");
  if (f == nullptr) return false;
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) bytes->append(buf, n);
  std::fclose(f);
  return true;
}

void PutString(std::string* out, const std::string& s) {
  unsigned char n[4];
  PutI32(n, static_cast<int32_t>(s.size()));
  out->append(reinterpret_cast<char*>(n), 4);
  out->append(s);
}

bool TakeU32(const std::string& in, size_t* at, uint32_t* v) {
  if (in.size() - *at < 4) return false;
  *v = static_cast<uint32_t>(GetI32(reinterpret_cast<const unsigned char*>(in.data() + *at)));
  *at += 4;
  return true;
}

bool TakeString(const std::string& in, size_t* at, std::string* s) {
  uint32_t n;
  if (!TakeU32(in, at, &n) || in.size() - *at < n) return false;
  s->assign(in, *at, n);
  *at += n;
  return true;
}

}  // namespace

std::string RegistryKey::StoreFolder() {
  std::string chosen = store::Variable("TQCOMM_REGISTRY");
  if (!chosen.empty()) return chosen;
  return store::UserDataFolder() + "/tqcomm/registry";
}

std::string RegistryKey::Fold(const std::string& name) {
  std::string out = name;
  for (size_t i = 0; i < out.size(); ++i) {
    if (IsHigh(out[i])) {
      ++i;  // the second byte of a character keeps its case
    } else if (out[i] >= 'A' && out[i] <= 'Z') {
      out[i] = static_cast<char>(out[i] + 32);
    }
  }
  return out;
}

bool RegistryKey::Open(uint32_t root, const char* key) {
  const char* rootName = RootFolder(root);
  if (rootName == nullptr || key == nullptr) return false;
  std::string folder = StoreFolder() + "/" + rootName;
  for (const std::string& part : KeyParts(key)) folder += "/" + FolderName(part);
  if (!store::MakeFolders(folder)) return false;
  folder_ = folder;
  return true;
}

std::string RegistryKey::Encode(const Values& values) {
  std::string out(kMagic, kMagicLength);
  for (const auto& entry : values) {
    unsigned char type[4];
    PutI32(type, static_cast<int32_t>(entry.second.type));
    out.append(reinterpret_cast<char*>(type), 4);
    PutString(&out, entry.second.name);
    PutString(&out, entry.second.data);
  }
  return out;
}

RegistryKey::Values RegistryKey::Decode(const std::string& bytes) {
  // A damaged file gives the values before the damage.
  Values values;
  if (bytes.compare(0, kMagicLength, kMagic) != 0) return values;
  size_t at = kMagicLength;
  while (at < bytes.size()) {
    Value v;
    if (!TakeU32(bytes, &at, &v.type) || !TakeString(bytes, &at, &v.name) || !TakeString(bytes, &at, &v.data)) {
      break;
    }
    std::string key = Fold(v.name);
    values[key] = std::move(v);
  }
  return values;
}

RegistryKey::Values RegistryKey::Load() const {
  std::string bytes;
  if (!ReadWhole(folder_ + kValuesFile, &bytes)) return Values();
  return Decode(bytes);
}

bool RegistryKey::Read(const char* name, Value* value) const {
  if (folder_.empty()) return false;
  if (name == nullptr) name = "";  // the key's unnamed value
  Values values = Load();
  auto it = values.find(Fold(name));
  if (it == values.end()) return false;
  *value = it->second;
  return true;
}

bool RegistryKey::Write(const char* name, uint32_t type, const std::string& data) {
  if (folder_.empty()) return false;
  if (name == nullptr) name = "";  // the key's unnamed value
  store::FileLock lock(folder_ + kLockFile);
  if (!lock.held()) return false;
  Values values = Load();
  Value& v = values[Fold(name)];
  if (v.name.empty()) v.name = name;
  v.type = type;
  v.data = data;
  return store::WriteFileSafely(folder_ + kValuesFile, Encode(values));
}

bool RegistryKey::Delete(const char* name) {
  if (folder_.empty()) return false;
  if (name == nullptr) name = "";  // the key's unnamed value
  store::FileLock lock(folder_ + kLockFile);
  if (!lock.held()) return false;
  Values values = Load();
  if (values.erase(Fold(name)) == 0) return false;
  return store::WriteFileSafely(folder_ + kValuesFile, Encode(values));
}

int RegistryGetInt(uint32_t root, const char* key, const char* name, int32_t* result) {
  RegistryKey k;
  RegistryKey::Value v;
  if (!k.Open(root, key) || !k.Read(name, &v) || v.data.size() > 4 || result == nullptr) return -1;
  // Fewer than four bytes fill the low end and leave the rest as it was.
  unsigned char bytes[4];
  PutI32(bytes, *result);
  std::memcpy(bytes, v.data.data(), v.data.size());
  *result = GetI32(bytes);
  return 0;
}

int RegistryGetString(uint32_t root, const char* key, const char* name, char* buffer, int32_t* size) {
  RegistryKey k;
  RegistryKey::Value v;
  if (!k.Open(root, key) || !k.Read(name, &v) || size == nullptr) return -1;
  int32_t need = static_cast<int32_t>(v.data.size());
  if (*size < 0 || need > *size) {
    *size = need;
    return -1;
  }
  if (buffer == nullptr) return -1;
  std::memcpy(buffer, v.data.data(), v.data.size());
  *size = need;
  buffer[need] = '\0';
  return 0;
}

int RegistryWriteInt(uint32_t root, const char* key, const char* name, int32_t value) {
  unsigned char bytes[4];
  PutI32(bytes, value);
  RegistryKey k;
  if (!k.Open(root, key)) return -1;
  return k.Write(name, RegistryKey::kInteger, std::string(reinterpret_cast<char*>(bytes), 4)) ? 0 : -1;
}

int RegistryWriteString(uint32_t root, const char* key, const char* name, const char* text) {
  RegistryKey k;
  if (text == nullptr || !k.Open(root, key)) return -1;
  return k.Write(name, RegistryKey::kString, std::string(text, std::strlen(text) + 1)) ? 0 : -1;
}

int RegistryDeleteValue(uint32_t root, const char* key, const char* name) {
  RegistryKey k;
  if (!k.Open(root, key)) return -1;
  return k.Delete(name) ? 0 : -1;
}

}  // namespace tq
