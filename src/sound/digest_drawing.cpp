#include "sound/digest_drawing.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>

#include "platform/env.h"
#include "platform/surface.h"

namespace tq::sound {
namespace {

// Points of one picture: two columns each, so 2,050 columns at most.
constexpr int kMaxPoints = 1025;
// 1/128: an amplitude of 128 fills the half height.
constexpr double kPerAmplitude = 0.0078125;
constexpr size_t kReadPiece = 4096;

int32_t Clamp32(int64_t v) { return static_cast<int32_t>(std::clamp<int64_t>(v, INT32_MIN, INT32_MAX)); }

// The sum of the next count bytes of f; false when the file ends first.
bool SumNext(std::FILE* f, int64_t count, int64_t* sum) {
  unsigned char piece[kReadPiece];
  *sum = 0;
  while (count > 0) {
    const size_t n = std::fread(piece, 1, static_cast<size_t>(std::min<int64_t>(count, kReadPiece)), f);
    if (n == 0) return false;
    for (size_t i = 0; i < n; ++i) *sum += piece[i];
    count -= static_cast<int64_t>(n);
  }
  return true;
}

}  // namespace

DigestReader* DigestReader::Open(const char* path) {
  std::FILE* f = env::Open(path, "rb");
  if (f == nullptr) return nullptr;
  DigestReader* reader = new (std::nothrow) DigestReader(path, f);
  if (reader == nullptr) std::fclose(f);
  return reader;
}

DigestReader::~DigestReader() { std::fclose(file_); }

void DigestReader::Draw(int dc, int height, int width, int startMs, int blocksPerPoint, int blockMs) {
  if (blockMs < 1 || blocksPerPoint < 1) return;
  const long from = startMs / blockMs;
  if (from < 0 || std::fseek(file_, from, SEEK_SET) != 0) return;
  const int mid = height / 2;
  gdi::MoveToEx(dc, 0, mid, nullptr);
  gdi::LineTo(dc, width, mid);

  // Only what is shown is read. A point beyond the last one read counts
  // as 0 where an odd column takes the mean of its two neighbours.
  const int wanted = std::clamp(width / 2, 0, kMaxPoints);
  int64_t points[kMaxPoints + 1] = {};
  int finished = 0;
  for (int64_t sum = 0; finished < wanted && SumNext(file_, blocksPerPoint, &sum); ++finished) {
    const int64_t mean = sum / blocksPerPoint;
    points[finished] = static_cast<int64_t>(mean * kPerAmplitude * mid);
  }
  // When the file ends, the columns of the points not finished stay blank.
  for (int x = 0; x < 2 * finished; ++x) {
    const int64_t v = x % 2 == 0 ? points[x / 2] : (points[x / 2] + points[x / 2 + 1]) / 2;
    if (v == 0) continue;
    // The end point is left out by LineTo: 2v + 1 pixels about the middle.
    gdi::MoveToEx(dc, x, Clamp32(mid - v), nullptr);
    gdi::LineTo(dc, x, Clamp32(mid + v + 1));
  }
}

DigestReaders& Readers() {
  static DigestReaders readers;
  return readers;
}

}  // namespace tq::sound
