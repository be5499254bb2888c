// Fuzzes the digest exports with hostile files: the immediate maker and
// both job bodies on the input as a wave and as an MP3, and the drawing of
// the input and of what was made, as digests, through the readers.
//
// Input: five bytes of settings (block length, interval and blocks a point,
// height, width, start of the picture), then the file's bytes. The pictures
// go to a host surface, whose journal is checked: after the centre line
// every line is one column, inside the picture's 2,050 columns, symmetric
// about the middle.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "sound_fuzz.h"
#include "tqcomm2006.h"
#include "tqhost.h"

namespace {

constexpr int kSpecialBlocks[] = {0, -7, 1000, 1001, 3, 7};

struct Line {
  int x0, y0, x1, y1;
};

// The lines of the surface's journal, each a MoveTo and a LineTo; the
// journal is cleared.
std::vector<Line> Lines(int dc) {
  const int n = tqHost_GetDrawLog(dc, nullptr, 0);
  std::string log(static_cast<size_t>(n) + 1, '\0');
  tqHost_GetDrawLog(dc, log.data(), n + 1);
  tqHost_ClearDrawLog(dc);
  std::vector<Line> lines;
  Line l{};
  for (const char* p = log.c_str(); *p != '\0';) {
    int x, y, used = 0;
    if (std::sscanf(p, "MoveTo %d %d\n%n", &x, &y, &used) == 2 && used > 0) {
      l.x0 = x;
      l.y0 = y;
    } else if (std::sscanf(p, "LineTo %d %d\n%n", &x, &y, &used) == 2 && used > 0) {
      l.x1 = x;
      l.y1 = y;
      lines.push_back(l);
    } else {
      Check(false);  // nothing else is drawn
    }
    p += used;
  }
  return lines;
}

int BlockMs(uint8_t b) { return b >= 250 ? kSpecialBlocks[b - 250] : 1 + b % 100; }

void CheckPicture(const std::vector<Line>& lines, int height, int width) {
  if (lines.empty()) return;
  const int mid = height / 2;
  Check(lines[0].y0 == mid && lines[0].x0 == 0 && lines[0].x1 == width && lines[0].y1 == mid);
  const int columns = std::min(std::max(width / 2, 0), 1025) * 2;
  Check(static_cast<int>(lines.size()) - 1 <= columns);
  int last = -1;
  for (size_t i = 1; i < lines.size(); ++i) {
    const Line& l = lines[i];
    Check(l.x0 == l.x1 && l.x0 > last && l.x0 < columns);
    last = l.x0;
    // From mid - v to mid + v + 1: v at most 255/128 of the half height.
    const int64_t v = static_cast<int64_t>(mid) - l.y0;
    Check(static_cast<int64_t>(l.y1) == static_cast<int64_t>(mid) + v + 1 && v != 0);
    Check(std::abs(v) <= std::abs(static_cast<int64_t>(mid)) * 2);
  }
}

void Draw(int dc, const std::string& path, int height, int width, int startMs, int perPoint, int blockMs) {
  const int reader = vcDigestFile_Open(path.c_str());
  Check(reader == -1 || (reader >= 1 && reader <= 9));
  vcDigestFile_Draw(reader, dc, height, width, startMs, perPoint, blockMs);
  const std::vector<Line> first = Lines(dc);
  CheckPicture(first, height, width);
  // A second picture from the same reader is the same picture.
  vcDigestFile_Draw(reader, dc, height, width, startMs, perPoint, blockMs);
  Check(Lines(dc).size() == first.size());
  vcDigestFile_Close(reader);
  vcDrawDigestFile(path.c_str(), dc, height, width, blockMs);
  CheckPicture(Lines(dc), height, width);
}

bool Amplitudes(const std::string& digest) {
  for (unsigned char c : digest) {
    if (c > 128) return false;
  }
  return true;
}

std::string ReadAll(const std::string& path) {
  std::string out;
  if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
    char buf[4096];
    for (size_t n; (n = std::fread(buf, 1, sizeof buf, f)) > 0;) out.append(buf, n);
    std::fclose(f);
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  const int blockMs = BlockMs(data[0]);
  const bool interval = (data[1] & 1) != 0;
  const int perPoint = data[1] >> 4;
  const int height = (data[2] - 64) * 3, width = data[3] * 9, startMs = (data[4] - 16) * 10;
  const std::string wave = Scratch("in.wav"), mp3 = Scratch("in.mp3");
  const std::string now = Scratch("now.dig"), job = Scratch("job.dig"), from_mp3 = Scratch("mp3.dig");
  if (!WriteInput(wave, data, size, 5) || !WriteInput(mp3, data, size, 5)) return 0;
  for (const std::string& p : {now, job, from_mp3}) std::remove(p.c_str());

  // The immediate form and the wave job's body make the same digest, or
  // both refuse and make none.
  const int ms = vcMakeWaveDigestFile(wave.c_str(), now.c_str(), blockMs);
  const std::string made = ReadAll(now);
  Check(ms == -1 ? vcIfFileExist(now.c_str()) == 0 : ms == static_cast<int>(made.size()) * blockMs);
  Check(Amplitudes(made));
  vcInitMakingDigestProcess(wave.c_str(), job.c_str(), blockMs);
  if (interval) vcSetDigestInterval(data[4] * 10, data[2] * 20);
  const int body = vcMakeWaveDigestThread(nullptr);
  Check(body == (ms == -1 ? -1 : 1));
  Check(vcGetMakeDigestPercentage() == (body == 1 ? 1000 : 0));
  Check(ReadAll(job) == made);

  vcInitMakingDigestProcess(mp3.c_str(), from_mp3.c_str(), blockMs);
  if (interval) vcSetDigestInterval(data[4] * 10, data[2] * 20);
  const int decoded = vcMakeMp3DigestThread(nullptr);
  Check(decoded == 0 || decoded == -1);
  Check(vcGetMakeDigestPercentage() == (decoded == 0 ? 1000 : 0));
  Check(Amplitudes(ReadAll(from_mp3)));

  static const int dc = tqHost_CreateDC(64, 64);
  Draw(dc, wave, height, width, startMs, perPoint, blockMs);
  Draw(dc, now, height, width, startMs, perPoint, blockMs);
  Draw(dc, from_mp3, height, width, 0, 1, blockMs);
  for (const std::string& p : {now, job, from_mp3}) std::remove(p.c_str());
  return 0;
}
