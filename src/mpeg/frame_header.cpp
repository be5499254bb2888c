#include "mpeg/frame_header.h"

#include <vector>

namespace tq::mpeg {
namespace {

// kbit/s by bit-rate index 1 to 14.
constexpr int kBitrates[5][14] = {
    {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},  // MPEG-1 layer I
    {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},     // MPEG-1 layer II
    {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},      // MPEG-1 layer III
    {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},     // MPEG-2 and 2.5 layer I
    {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},          // MPEG-2 and 2.5 layers II, III
};
constexpr int kRates[3] = {44100, 48000, 32000};  // MPEG-1; halved for 2, quartered for 2.5

constexpr size_t kPaddingSearch = 4096;
constexpr int kMaxTags = 4;

}  // namespace

bool ParseFrameHeader(const unsigned char* p, FrameHeader* h) {
  if (p[0] != 0xFF || (p[1] & 0xE0) != 0xE0) return false;
  const int version_bits = (p[1] >> 3) & 3, layer_bits = (p[1] >> 1) & 3;
  const int rate_index = (p[2] >> 2) & 3, bitrate_index = p[2] >> 4;
  if (version_bits == 1 || layer_bits == 0 || rate_index == 3 || bitrate_index == 0 || bitrate_index == 15) {
    return false;
  }
  h->version = version_bits == 3 ? 10 : version_bits == 2 ? 20 : 25;
  h->layer = 4 - layer_bits;
  const bool mpeg1 = h->version == 10;
  const int table = mpeg1 ? h->layer - 1 : (h->layer == 1 ? 3 : 4);
  h->bitrate = kBitrates[table][bitrate_index - 1];
  h->sampleRate = kRates[rate_index] / (mpeg1 ? 1 : h->version == 20 ? 2 : 4);
  h->channels = (p[3] >> 6) == 3 ? 1 : 2;
  const int padding = (p[2] >> 1) & 1;
  const int bits_per_second = h->bitrate * 1000;
  if (h->layer == 1) {
    h->frameBytes = (12 * bits_per_second / h->sampleRate + padding) * 4;
    h->samplesPerFrame = 384;
  } else if (h->layer == 2 || mpeg1) {
    h->frameBytes = 144 * bits_per_second / h->sampleRate + padding;
    h->samplesPerFrame = 1152;
  } else {
    h->frameBytes = 72 * bits_per_second / h->sampleRate + padding;
    h->samplesPerFrame = 576;
  }
  return h->frameBytes > 4;
}

int64_t Id3v2Length(const unsigned char* p, size_t n) {
  if (n < 10 || p[0] != 'I' || p[1] != 'D' || p[2] != '3' || p[3] == 0xFF || p[4] == 0xFF) return 0;
  int64_t size = 0;
  for (int i = 6; i < 10; ++i) {
    if (p[i] & 0x80) return 0;  // sizes are kept in 7-bit bytes
    size = size << 7 | p[i];
  }
  const bool footer = (p[5] & 0x10) != 0;
  return 10 + size + (footer ? 10 : 0);
}

bool LooksLikeMpegAudio(const ReadAt& read) {
  unsigned char head[10];
  int64_t at = 0;
  for (int tag = 0; tag < kMaxTags; ++tag) {
    int64_t tag_length = Id3v2Length(head, read(at, head, sizeof head));
    if (tag_length == 0) break;
    at += tag_length;
  }
  // Some writers leave zeros between the tag and the first frame.
  std::vector<unsigned char> block(kPaddingSearch);
  size_t got = read(at, block.data(), block.size());
  size_t first = 0;
  while (first < got && block[first] == 0) ++first;
  FrameHeader a, b;
  if (got < first + 4 || !ParseFrameHeader(&block[first], &a)) return false;
  unsigned char next[4];
  if (read(at + static_cast<int64_t>(first) + a.frameBytes, next, sizeof next) < sizeof next) return true;
  return ParseFrameHeader(next, &b) && b.version == a.version && b.layer == a.layer &&
         b.sampleRate == a.sampleRate;
}

}  // namespace tq::mpeg
