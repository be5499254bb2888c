// The file attributes the front ends' platform keeps, as far as this one has
// them: the read-only mark, a copy that keeps what the source is, and the
// removal of an empty folder.
#pragma once

namespace tq::platform {

// Clears the read-only mark: the owner gets write permission back. True when
// the path is there afterwards with the owner allowed to write it.
bool ClearReadOnly(const char* path);
// Copies a file over the target and gives the copy the source's permission
// bits and its access and write times, as a copy on the front ends' platform
// keeps them. False (the target possibly half written) on any failure, and
// for a file copied onto itself.
bool CopyFileKeepingAttributes(const char* from, const char* to);
// Removes a folder that is empty; false otherwise.
bool RemoveFolder(const char* path);

}  // namespace tq::platform
