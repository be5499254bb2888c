// Plain file services for the front ends: copies and deletions of single
// files and of groups found by a wildcard, one temporary text file for the
// whole process, files kept in a caller's record, and files of integers.
//
// Where a copy or deletion clears attributes first, a read-only file becomes
// writable by its owner again (the read-only mark of the front ends'
// platform). Group operations pass over a file that cannot be copied or
// deleted and go on with the next; folders are never copied or deleted as
// files.
#pragma once

#include <cstdint>
#include <string>

#include "tqcomm2006.h"

namespace tq::desktop {

// folder + a separator + name; no second separator when folder ends in one.
std::string JoinPath(const std::string& folder, const std::string& name);

// Clears both files' read-only marks around a copy with overwriting; the
// copy keeps the source's write time. 1, or 0.
int CopyOneFile(const char* source, const char* destination);
// Copies every file that matches pattern into folder; the number copied.
int CopyMatching(const char* pattern, const char* folder);
// Copies every file (not folders) of one folder into another; the number.
int CopyFolderFiles(const char* sourceFolder, const char* destinationFolder);
// Copies only when the source was written later than the destination (a
// missing destination counts as older). 1 when copied, else 0.
int CopyIfNewer(const char* source, const char* destination);
// Appends the source's bytes to the destination (made when missing). 0, or
// -1 when either will not open.
int AppendFileTo(const char* source, const char* destination);
// Clears the mark (when asked) and deletes one file; false for a folder.
bool DeleteOneFile(const char* path, bool clearMark);
// Deletes every file that matches; the number deleted.
int DeleteMatching(const char* pattern, bool clearMark);
// Deletes every file of the folder, then the folder when that leaves it
// empty. 1 when the folder is gone, else 0.
int DeleteFolderAndFiles(const char* folder);

// The one temporary file of the process. Open makes it anew ("wb") and
// closes one still open: 1, or -1. Write adds the text as it stands, no
// line end: 1, or -1 with no file open. Close: 0, or -1 with none open.
int OpenTempFile(const char* path);
int WriteTempFile(const char* text);
int CloseTempFile();

// Files in the caller's record: the path is kept (cut to the field,
// never in the middle of a character) and the stream opened with the
// caller's fopen mode. 1, or -1.
int OpenRecordFile(FileForVb* record, const char* path, const char* mode);
// Writes the text, and "\r\n" behind it when asked: 1, or -1.
int WriteRecordFile(FileForVb* record, const char* text, bool lineEnd);
// Reads a line of at most size - 1 bytes, trimmed as asked: its length, or
// -1 at the end of the file, without a file, or for a size below 2.
int ReadRecordLine(FileForVb* record, char* buffer, int size, bool trimLeft, bool trimRight);

// Files of 32-bit little-endian integers. Each answers 0 when the file will
// not open. Write makes the file anew and answers how many it wrote; Read
// answers how many it read (none for a count of -1, or any count below 0);
// Elements is the length divided by 4.
int WriteIntArray(const char* path, const int32_t* values, int count);
int ReadIntArray(const char* path, int32_t* values, int count);
int IntArrayElements(const char* path);

}  // namespace tq::desktop
