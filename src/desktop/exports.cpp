// The desktop exports: thin wrappers over the file services, the shell and
// start-up services and the message feed.
#include "desktop/file_services.h"
#include "desktop/shell.h"
#include "platform/env.h"
#include "tqcomm2006.h"

using namespace tq::desktop;

extern "C" {

// File services.

TQ_API int TQ_CALL vcCopyFile(const char* source, const char* destination) {
  return CopyOneFile(source, destination);
}

TQ_API int TQ_CALL vcCopyGroupFile(const char* pattern, const char* folder) { return CopyMatching(pattern, folder); }

TQ_API int TQ_CALL vcCopyAllFile(const char* sourceFolder, const char* destinationFolder) {
  return CopyFolderFiles(sourceFolder, destinationFolder);
}

TQ_API int TQ_CALL vcCopyNewerFile(const char* source, const char* destination) {
  return CopyIfNewer(source, destination);
}

TQ_API int TQ_CALL vcAppendFile(const char* source, const char* destination) {
  return AppendFileTo(source, destination);
}

TQ_API int TQ_CALL vcDeleteFile(const char* path) { return DeleteOneFile(path, true) ? 1 : 0; }

TQ_API int TQ_CALL vcUnlink(const char* path) { return DeleteOneFile(path, false) ? 0 : -1; }

TQ_API int TQ_CALL vcRename(const char* oldPath, const char* newPath) {
  return tq::env::Rename(oldPath, newPath) ? 0 : -1;
}

TQ_API int TQ_CALL vcDeleteAllFile(const char* folder) { return DeleteFolderAndFiles(folder); }

TQ_API int TQ_CALL vcBatDeleteFile(const char* pattern) { return DeleteMatching(pattern, true); }

TQ_API int TQ_CALL vcDeleteSt5unst(const char* folder) {
  if (folder == nullptr) return 0;
  return DeleteMatching(JoinPath(folder, "st5unst.*").c_str(), false);
}

TQ_API int TQ_CALL vcOpenTmpFile(const char* path) { return OpenTempFile(path); }

TQ_API int TQ_CALL vcWriteTmpFileLine(const char* text) { return WriteTempFile(text); }

TQ_API int TQ_CALL vcCloseTmpFile(void) { return CloseTempFile(); }

TQ_API int TQ_CALL vcOpenFileForVb(FileForVb* record, const char* path, const char* mode) {
  return OpenRecordFile(record, path, mode);
}

TQ_API int TQ_CALL vcWriteFileForVb(FileForVb* record, const char* text) {
  return WriteRecordFile(record, text, false);
}

TQ_API int TQ_CALL vcWriteFileForVbALine(FileForVb* record, const char* text) {
  return WriteRecordFile(record, text, true);
}

TQ_API int TQ_CALL vcReadFileForVb(FileForVb* record, char* buffer, int size, int trimLeft, int trimRight) {
  return ReadRecordLine(record, buffer, size, trimLeft != 0, trimRight != 0);
}

TQ_API int TQ_CALL vcWriteIntArrayToFile(const char* path, const int32_t* values, int count) {
  return WriteIntArray(path, values, count);
}

TQ_API int TQ_CALL vcReadIntArrayFromFile(const char* path, int32_t* values, int count) {
  return ReadIntArray(path, values, count);
}

TQ_API int TQ_CALL vcGetIntArrayFileElements(const char* path) { return IntArrayElements(path); }

// Registry, shell and start-up.

TQ_API int TQ_CALL vcSetStartupRun(const char* name, const char* command) {
  return SetStartup(kRunKey, name, command);
}

TQ_API int TQ_CALL vcRemoveStartupRun(const char* name) { return RemoveStartup(kRunKeyLower, name); }

TQ_API int TQ_CALL vcIfStartupRun(const char* name, const char* command) {
  return IsStartup(name, command) ? 1 : 0;
}

TQ_API int TQ_CALL vcMakeSureStartupRun(const char* name, const char* command) {
  return MakeSureStartup(name, command);
}

TQ_API int TQ_CALL vcSetStartupRunService(const char* name, const char* command) {
  return SetStartup(kRunServicesKey, name, command);
}

TQ_API int TQ_CALL vcRemoveStartupRunService(const char* name) { return RemoveStartup(kRunServicesKey, name); }

TQ_API int TQ_CALL vcSetNavigateSnd(const char* path) { return SetNavigateSound(path); }

TQ_API int TQ_CALL vcRemoveNavigateSnd(char* buffer) { return RemoveNavigateSound(buffer); }

TQ_API int TQ_CALL vcHttpPage(const char* url) { return RunShellCommand(kHttpCommandKey, url ? url : ""); }

TQ_API int TQ_CALL vcSendMailTo(const char* address, const char* subject) {
  return RunShellCommand(kMailtoCommandKey, MailtoAddress(address, subject));
}

TQ_API int TQ_CALL vcHtmlHelp(const char* path) { return OpenHelpFile(path); }

TQ_API int TQ_CALL vcVbIntegerToUnsigned(int value) { return value & 0xFFFF; }

TQ_API int TQ_CALL vcBitAnd(int a, int b) { return a & b; }

TQ_API int TQ_CALL vcBitOr(int a, int b) { return a | b; }

TQ_API int TQ_CALL vcBitXor(int a, int b) { return a ^ b; }

TQ_API int TQ_CALL vcIsAllDigit(const char* text) { return IsAllDigit(text); }

}  // extern "C"
