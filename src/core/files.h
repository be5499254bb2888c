// Existence, directory search over the caller's record, lengths and times.
#pragma once

#include "tqcomm2006.h"

namespace tq {

bool FileExists(const char* pathOrPattern);
// The next found name into name and its length, 0 at the end.
int FindNextName(FindFileState* record, char* name);
// 1, 0 when the search had found nothing or was ended before, -1 when it
// never started.
int EndFind(FindFileState* record);
// The length of a file that opens for reading, else -1.
int FileLengthOf(const char* path);
bool CopyFileTimes(const char* source, const char* destination);
bool SameWriteTime(const char* first, const char* second);

}  // namespace tq
