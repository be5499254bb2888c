// How long the user has been at it, as the older front ends show it: the
// widest span of days in their page and folder record files (".pag" of
// 24-byte records, ".dir" of 128-byte records, each record with a 16-bit
// day number at byte 14, 65535 for none). Those files are written by the
// front ends; the library only reads them.
#pragma once

#include <cstddef>

namespace tq {

constexpr size_t kPagRecord = 24;
constexpr size_t kDirRecord = 128;
// The span of a file that holds no whole record or no day.
constexpr int kNoSpan = -100099;

// The span of one file: its latest day less its earliest; kNoSpan; 0 when
// the file does not open.
int RecordFileSpan(const char* path, size_t record_size);
// The widest span over the files of the working directory that match the
// pattern, at least 0.
int WidestSpan(const char* pattern, size_t record_size);
// The widest over both kinds.
int LearningStatus();

}  // namespace tq
