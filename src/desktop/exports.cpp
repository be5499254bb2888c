// The desktop exports: thin wrappers over the file services, the shell and
// start-up services, the message feed, window shaping, text measurement and
// the window procedures.
#include "desktop/file_services.h"
#include "desktop/host_services.h"
#include "desktop/long_text.h"
#include "desktop/message_feed.h"
#include "desktop/shell.h"
#include "desktop/window_procs.h"
#include "desktop/window_shape.h"
#include "platform/env.h"
#include "platform/host.h"
#include "platform/system.h"
#include "tqcomm2006.h"

using namespace tq::desktop;

namespace {

enum : int { kVkControl = 17, kVkMenu = 18 };

int KeyDown(int key) { return tq::host::GetKeyState(key) < 0 ? 1 : 0; }

}  // namespace

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

TQ_API int TQ_CALL vcDeleteWinPathFile(const char* name) {
  if (name == nullptr) return 0;
  return DeleteOneFile(InWindowsFolder(name).c_str(), false) ? 1 : 0;
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

TQ_API int TQ_CALL vcAddShortCutToDeskTop(const char* target, const char* arguments, const char* linkName,
                                          const char* workingFolder, int hotKey) {
  return AddDesktopShortcut(target, arguments, linkName, workingFolder, hotKey);
}

TQ_API int TQ_CALL vcDeleteDeskTopShortCut(const char* name) {
  if (name == nullptr) return 0;
  return DeleteInSpecialFolder(tq::host::kCsidlDesktop, name);
}

TQ_API int TQ_CALL vcDeleteItemInProgramGroup(const char* group, const char* item) {
  if (group == nullptr || item == nullptr) return 0;
  return DeleteInSpecialFolder(tq::host::kCsidlPrograms, std::string(group) + "\\" + item);
}

TQ_API int TQ_CALL vcDeleteItemInStartMenu(const char* name) { return DeleteStartMenuItem(name); }

TQ_API int TQ_CALL vcHttpPage(const char* url) { return RunShellCommand(kHttpCommandKey, url ? url : ""); }

TQ_API int TQ_CALL vcSendMailTo(const char* address, const char* subject) {
  return RunShellCommand(kMailtoCommandKey, MailtoAddress(address, subject));
}

TQ_API int TQ_CALL vcHtmlHelp(const char* path) { return OpenHelpFile(path); }

TQ_API void TQ_CALL vcDispFileInWordpad(const char* path) { DisplayInWordpad(path); }

TQ_API int TQ_CALL vcMakeSureGenieCharacterExist(void) { return MakeSureSpeechComponents(); }

TQ_API int TQ_CALL vcStartSp(const char* path) { return StartCompanion(path); }

TQ_API int TQ_CALL vcIfCDROMReady(const char* file) { return FindCdWithFile(file, nullptr); }

TQ_API int TQ_CALL vcIfCdFileReady(const char* file, char* driveOut) {
  return FindCdWithFile(file, driveOut) != 0 ? 1 : 0;
}

TQ_API int TQ_CALL vcGetSystemDir(char* buffer) { return SystemDirectory(buffer); }

TQ_API int TQ_CALL vcNtOr95(void) { return HostSystemFamily(); }

TQ_API int TQ_CALL vcIsXpCompitableInVista(void) { return HostMajorVersion() < 6 ? 1 : 0; }

TQ_API int TQ_CALL vcFindWindow(const char* title) { return title != nullptr ? tq::host::FindWindowA(title) : 0; }

TQ_API int TQ_CALL vcGetMousePosition(int32_t* x, int32_t* y) {
  int cx = 0, cy = 0;
  if (x == nullptr || y == nullptr || !tq::host::GetCursorPos(&cx, &cy)) return 0;
  *x = cx;
  *y = cy;
  return 1;
}

TQ_API int TQ_CALL vcVbIntegerToUnsigned(int value) { return value & 0xFFFF; }

TQ_API int TQ_CALL vcBitAnd(int a, int b) { return a & b; }

TQ_API int TQ_CALL vcBitOr(int a, int b) { return a | b; }

TQ_API int TQ_CALL vcBitXor(int a, int b) { return a ^ b; }

TQ_API int TQ_CALL vcIsAllDigit(const char* text) { return IsAllDigit(text); }

// The message feed.

TQ_API int TQ_CALL vcInitKuvAdv(void) { return StartFeedGuard(tq::host::WindowsFolder(), kFirstFeed.lock); }

TQ_API int TQ_CALL vcInitKuvAdvForNore(void) {
  return StartFeedGuard(tq::host::WindowsFolder(), kSecondFeed.lock);
}

TQ_API int TQ_CALL vcEndKuvAdv(void) { return EndFeedGuard(); }

TQ_API int TQ_CALL vcEndKuvAdvForNore(void) { return EndFeedGuard(); }

TQ_API int TQ_CALL vcIfNewMsgExist(const char* path) {
  std::string messages = path != nullptr && path[0] != '\0' ? path : InWindowsFolder(kFirstFeed.messages);
  return CountNewMessages(messages, InWindowsFolder(kFirstFeed.lastSeen));
}

TQ_API int TQ_CALL vcIfNewMsgExistForNore(const char* path) {
  std::string messages = path != nullptr && path[0] != '\0' ? path : InWindowsFolder(kSecondFeed.messages);
  return CountNewMessages(messages, InWindowsFolder(kSecondFeed.lastSeen));
}

TQ_API int TQ_CALL vcSetMaxViewedMsg(int number) {
  return WriteLastSeen(InWindowsFolder(kFirstFeed.lastSeen), number);
}

TQ_API int TQ_CALL vcSetMaxViewedMsgForNore(int number) {
  return WriteLastSeen(InWindowsFolder(kSecondFeed.lastSeen), number);
}

// Window shaping and text measurement.

TQ_API int TQ_CALL vcMakeNoRegularWin(int /*unused*/, int window, unsigned int colour) {
  return MakeIrregularWindow(window, colour);
}

TQ_API int TQ_CALL vcRestoreWinRgn(int window) { return RestoreWindowRegion(window); }

TQ_API int TQ_CALL vcAddRectRgn(int window, int left, int top, int right, int bottom) {
  return AddRectToWindowRegion(window, left, top, right, bottom);
}

TQ_API int TQ_CALL vcSubstractRectRgn(int window, int left, int top, int right, int bottom) {
  return SubtractRectFromWindowRegion(window, left, top, right, bottom);
}

TQ_API int TQ_CALL vcGetStringHeight(int dc, const char* text) { return StringHeight(dc, text); }

TQ_API int TQ_CALL vcGetTextWidth(int dc, const char* text) { return StringWidth(dc, text); }

TQ_API int TQ_CALL vcGetStringWidth(int dc, const char* text) { return StringWidth(dc, text); }

TQ_API const char* TQ_CALL vcInitDrawTextObj(DrawTextObj* obj, const char* text) {
  if (obj != nullptr) obj->text = text;
  return text;
}

TQ_API DrawTextObj* TQ_CALL vcDrawLongText(DrawTextObj* obj) {
  if (obj == nullptr) return nullptr;
  obj->height = DrawLongText(obj->dc, obj->text, obj->x, obj->y, obj->width, obj->lineHeight);
  return obj;
}

TQ_API void TQ_CALL vcDrawLineBackground(int dc, int width, int bottom, int step, unsigned int colour) {
  DrawRuledLines(dc, width, bottom, step, colour);
}

TQ_API int TQ_CALL vcIfAltPressed(void) { return KeyDown(kVkMenu); }

TQ_API int TQ_CALL vcIfCtrlPressed(void) { return KeyDown(kVkControl); }

TQ_API void TQ_CALL vcSetMoveWindowProc(int window, int on) { vcSetMoveWindowProcEx(window, on, 0); }

TQ_API void TQ_CALL vcSetMoveWindowProcEx(int window, int on, int wheelMode) {
  if (window == 0) return;
  if (on != 0) {
    MovableWindows().Push(window, wheelMode, MoveWindowProc);
  } else {
    MovableWindows().Pop(window);
  }
}

TQ_API void TQ_CALL vcSetMoveWindowProcForTamrill(int window, int on) {
  HookEdgeWindow(window, on != 0, MoveWindowProcForTamrill);
}

TQ_API void TQ_CALL vcSetWebCtrlWndProc(int window, int on) {
  if (window == 0) return;
  if (on != 0) {
    WebControls().Push(window, 0, WebCtrlProc);
  } else {
    WebControls().Pop(window);
  }
}

TQ_API intptr_t TQ_CALL MoveWindowProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return MoveWindowMessage(window, message, wParam, lParam);
}

TQ_API intptr_t TQ_CALL MoveWindowProcForTamrill(int window, unsigned int message, uintptr_t wParam,
                                                 intptr_t lParam) {
  return EdgeMoveWindowMessage(window, message, wParam, lParam);
}

TQ_API intptr_t TQ_CALL WebCtrlProc(int window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
  return WebControlMessage(window, message, wParam, lParam);
}

}  // extern "C"
