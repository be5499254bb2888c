// MPEG audio frame headers, read only so far as to tell MPEG audio from
// other files before a decoder is given them: a decoder that hunts for a
// sync word finds false ones in a wave's samples.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace tq::mpeg {

struct FrameHeader {
  int version = 0;  // 10 for MPEG-1, 20 for MPEG-2, 25 for MPEG-2.5
  int layer = 0;    // 1 to 3
  int bitrate = 0;  // kbit/s
  int sampleRate = 0;
  int channels = 0;
  int frameBytes = 0;
  int samplesPerFrame = 0;
};

// Reads the four bytes of a header; false for anything that is not a
// header of a frame we can measure (free-format frames included).
bool ParseFrameHeader(const unsigned char* p, FrameHeader* header);

// The length of an ID3v2 tag at p (header, body and footer), or 0 when p
// holds none. n is the bytes readable at p (10 are needed).
int64_t Id3v2Length(const unsigned char* p, size_t n);

// Reads up to n bytes at offset into buffer; the bytes read.
using ReadAt = std::function<size_t(int64_t offset, void* buffer, size_t n)>;

// True when the stream opens (behind any ID3v2 tags and zero padding) with
// a frame header followed by a second one of the same kind, or by the end.
bool LooksLikeMpegAudio(const ReadAt& read);

}  // namespace tq::mpeg
