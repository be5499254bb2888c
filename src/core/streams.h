// Files kept inside caller-owned records.
//
// A record that the caller owns (a classic dictionary, a notebook, a wave
// file) keeps its open files between calls. Inside such a record a file is a
// 32-bit stream number from this one process-wide table, never a pointer, so
// that the records have the same layout in 32- and 64-bit builds. 0 means no
// file. The table is safe to use from several threads; one stream is still
// used by one thread at a time.
#pragma once

#include <cstdint>
#include <cstdio>

namespace tq {

using StreamId = uint32_t;

// Opens a file (the path is translated as every path is) and answers its
// stream number, or 0 when the open fails.
StreamId StreamOpen(const char* path, const char* mode);

// Takes over a file opened elsewhere. Answers 0 (and closes the file) when
// the table cannot take it.
StreamId StreamAdopt(std::FILE* file);

// The file behind a stream number, or null for 0 or a closed stream.
std::FILE* StreamFile(StreamId id);

// Closes the stream: the result of fclose, or EOF for an unknown number.
int StreamClose(StreamId id);

}  // namespace tq
