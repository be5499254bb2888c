// The file and registry exports: thin wrappers over core/files.h and
// core/registry.h.
#include "core/files.h"
#include "core/registry.h"
#include "tqcomm2006.h"

extern "C" {

TQ_API int TQ_CALL vcIfFileExist(const char* path) { return tq::FileExists(path) ? 1 : 0; }

TQ_API int TQ_CALL FindFile(FindFileState* record, char* name) {
  if (record == nullptr || name == nullptr) return 0;
  return tq::FindNextName(record, name);
}

TQ_API int TQ_CALL MyFindClose(FindFileState* record) {
  if (record == nullptr) return -1;
  return tq::EndFind(record);
}

TQ_API int TQ_CALL vcGetFileLength(const char* path) { return tq::FileLengthOf(path); }

TQ_API int TQ_CALL vcSetSameFileTime(const char* source, const char* destination) {
  return tq::CopyFileTimes(source, destination) ? 1 : 0;
}

TQ_API int TQ_CALL vcIsSameTimeFiles(const char* first, const char* second) {
  return tq::SameWriteTime(first, second) ? 1 : 0;
}

TQ_API int TQ_CALL vcGetKeyValueInt(uint32_t root, const char* key, const char* name, int32_t* result) {
  return tq::RegistryGetInt(root, key, name, result);
}

TQ_API int TQ_CALL vcGetKeyValueString(uint32_t root, const char* key, const char* name, char* buffer,
                                       int32_t* size) {
  return tq::RegistryGetString(root, key, name, buffer, size);
}

TQ_API int TQ_CALL vcWriteKeyValueInt(uint32_t root, const char* key, const char* name, int32_t value) {
  return tq::RegistryWriteInt(root, key, name, value);
}

TQ_API int TQ_CALL vcWriteKeyValueString(uint32_t root, const char* key, const char* name, const char* text) {
  return tq::RegistryWriteString(root, key, name, text);
}

TQ_API int TQ_CALL vcDeleteKeyValue(uint32_t root, const char* key, const char* name) {
  return tq::RegistryDeleteValue(root, key, name);
}

}  // extern "C"
