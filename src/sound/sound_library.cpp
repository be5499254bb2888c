#include "sound/sound_library.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "core/binary_io.h"
#include "core/sound_key.h"
#include "dict/search.h"
#include "platform/devices.h"
#include "platform/env.h"
#include "sound/mp3_to_wave.h"

namespace tq::sound {
namespace {

constexpr size_t kCopyBlock = 64 * 1024;
constexpr unsigned char kEndOfFileByte = 0xFF;  // what a byte read past the end comes back as

unsigned char Lower(unsigned char c) { return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c; }

// The index read a record at a time, the record read last kept at hand.
class KeptRecords {
 public:
  explicit KeptRecords(std::FILE* file) : records_(file) {}
  long Length() const { return records_.Length(); }
  const unsigned char* Read(long offset, int recordSize) { return last_ = records_.Read(offset, recordSize); }
  const unsigned char* last() const { return last_; }

 private:
  dict::FileRecords records_;
  const unsigned char* last_ = nullptr;
};

uint32_t GetU32(const unsigned char* p) { return static_cast<uint32_t>(GetI32(p)); }

// The data file's name as the record holds it: up to its NUL, at most the
// whole field.
std::string DataFileName(const SndLibRecord& r) {
  const void* end = std::memchr(r.dataFile, '\0', sizeof r.dataFile);
  const size_t n = end ? static_cast<size_t>(static_cast<const char*>(end) - r.dataFile) : sizeof r.dataFile;
  return std::string(r.dataFile, n);
}

struct FileCloser {
  void operator()(std::FILE* f) const {
    if (f != nullptr) std::fclose(f);
  }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Copies the record's sound from data into target; false when the target
// can't be made or written.
bool WriteSound(std::FILE* data, const SndLibRecord& r, const std::string& target) {
  File out(env::Open(target.c_str(), "wb"));
  if (out == nullptr) return false;
  const bool copied = CopySoundBytes(data, r.offset, r.length, out.get());
  return std::fclose(out.release()) == 0 && copied;
}

}  // namespace

SndLibRecord DecodeSndRecord(const unsigned char* b) {
  SndLibRecord r;
  std::memcpy(r.key, b, sizeof r.key);
  r.offset = GetU32(b + 64);
  r.length = GetU32(b + 68);
  std::memcpy(r.dataFile, b + 72, sizeof r.dataFile);
  r.isWave = GetI32(b + 92);
  return r;
}

void EncodeSndRecord(const SndLibRecord& r, unsigned char* b) {
  std::memcpy(b, r.key, sizeof r.key);
  PutI32(b + 64, static_cast<int32_t>(r.offset));
  PutI32(b + 68, static_cast<int32_t>(r.length));
  std::memcpy(b + 72, r.dataFile, sizeof r.dataFile);
  PutI32(b + 92, r.isWave);
}

std::string FoldSndKey(const char* key) {
  std::string out;
  for (size_t i = 0; key != nullptr && key[i] != '\0' && i < kSndKeyLength; ++i) {
    out.push_back(static_cast<char>(Lower(static_cast<unsigned char>(key[i]))));
  }
  return out;
}

long LookupSndKey(std::FILE* index, const char* key, SndLibRecord* found) {
  if (index == nullptr || key == nullptr) return -1;
  // The dictionaries' walk is this one: from the first record, half the
  // records still open on the key's side a step, the 64th byte of a key
  // never counting, A-Z folded on both sides.
  const std::string wanted = FoldSndKey(key);
  KeptRecords records(index);
  const dict::Bisection b = dict::Bisect(records, wanted.c_str(), kSndRecordBytes, kSndKeyBytes);
  if (!b.found) return -1;
  if (found != nullptr) {
    unsigned char record[kSndRecordBytes];
    std::memcpy(record, records.last(), sizeof record);
    // The record comes back with its key lowered; its byte 63 as it was.
    for (int i = 0; i < kSndKeyLength && record[i] != 0; ++i) record[i] = Lower(record[i]);
    *found = DecodeSndRecord(record);
  }
  return b.offset;
}

bool CopySoundBytes(std::FILE* data, uint32_t offset, uint32_t length, std::FILE* target) {
  std::vector<unsigned char> block(kCopyBlock);
  // A seek that fails leaves nothing to read: every byte is past the end.
  bool atEnd = std::fseek(data, static_cast<long>(offset), SEEK_SET) != 0;
  for (uint64_t left = length; left > 0;) {
    const size_t want = static_cast<size_t>(std::min<uint64_t>(left, kCopyBlock));
    size_t got = atEnd ? 0 : std::fread(block.data(), 1, want, data);
    if (got < want) {
      atEnd = true;
      std::fill(block.begin() + static_cast<std::ptrdiff_t>(got), block.begin() + static_cast<std::ptrdiff_t>(want),
                kEndOfFileByte);
    }
    if (std::fwrite(block.data(), 1, want, target) != want) return false;
    left -= want;
  }
  return true;
}

std::string CdDriveHolding(const std::string& dataFile) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    if (host::GetDriveTypeA(letter) != host::kDriveCdRom) continue;
    const std::string drive = std::string(1, letter) + ":";
    if (env::Exists((drive + "\\sndlib\\" + dataFile).c_str())) return drive;
  }
  return std::string();
}

int SndLib::Open(const char* indexPath, const char* rootDir) {
  Close();
  indexPath_ = indexPath != nullptr ? indexPath : "";
  rootDir_ = rootDir != nullptr ? rootDir : "";
  index_ = indexPath != nullptr ? env::Open(indexPath, "rb") : nullptr;
  return index_ != nullptr ? 1 : -1;
}

void SndLib::Close() {
  if (index_ != nullptr) std::fclose(index_);
  index_ = nullptr;
  indexPath_.clear();
  rootDir_.clear();
}

std::FILE* SndLib::OpenDataFile() const {
  const std::string name = DataFileName(lastRecord_);
  if (std::FILE* f = env::Open((rootDir_ + "\\" + name).c_str(), "rb")) return f;
  // Not beside the index: the library may stand on a CD. With no drive
  // holding it the path starts at the root all the same.
  return env::Open((CdDriveHolding(name) + "\\sndlib\\" + name).c_str(), "rb");
}

int SndLib::Extract(const char* key, const char* outBase, bool wantWave, bool scrambled, bool queryOnly) {
  SndLibRecord found;
  const long at = LookupSndKey(index_, key, &found);
  if (at < 0) return kSndMissing;
  lastRecord_ = found;
  // A question never opens the data file: a hit counts even when it is gone.
  if (queryOnly) return kSndFound;
  if (outBase == nullptr) return kSndMissing;
  if (scrambled) {
    lastRecord_.offset ^= static_cast<uint32_t>(at);
    lastRecord_.length ^= static_cast<uint32_t>(at);
  }
  File data(OpenDataFile());
  if (data == nullptr) return kSndMissing;
  const std::string base(outBase);
  const bool wave = lastRecord_.isWave != 0;
  if (!WriteSound(data.get(), lastRecord_, base + (wave ? ".wav" : ".mp3"))) return kSndMissing;
  if (wave) return kSndWave;
  if (!wantWave) return kSndMp3;
  // The MP3 stays beside the wave; how the conversion went isn't looked at.
  Mp3ToWav((base + ".mp3").c_str(), (base + ".wav").c_str(), 0, nullptr);
  return kSndWave;
}

int XorSoundFile(const char* source, const char* target) {
  File in(source != nullptr ? env::Open(source, "rb") : nullptr);
  if (in == nullptr) return -1;
  File out(target != nullptr ? env::Open(target, "wb") : nullptr);
  if (out == nullptr) return -1;
  std::vector<unsigned char> block(kCopyBlock);
  uint64_t at = 0;
  for (size_t got; (got = std::fread(block.data(), 1, block.size(), in.get())) > 0; at += got) {
    ApplySoundKey(block.data(), got, at);
    if (std::fwrite(block.data(), 1, got, out.get()) != got) break;
  }
  return 1;
}

int MakeWordSndFile(const char* word, const char* rootDir, const char* indexName, const char* outBase) {
  if (word == nullptr || rootDir == nullptr || indexName == nullptr || outBase == nullptr) return 0;
  SndLibRecord r;
  {
    File index(env::Open((std::string(rootDir) + indexName).c_str(), "rb"));
    if (index == nullptr) return 0;
    const long at = dict::SearchIdxExact(index.get(), word, kSndRecordBytes, kSndKeyBytes);
    unsigned char bytes[kSndRecordBytes];
    if (at < 0 || dict::ReadAt(index.get(), static_cast<uint64_t>(at), bytes, sizeof bytes) != sizeof bytes) return 0;
    r = DecodeSndRecord(bytes);
  }
  // Beside rootDir as it stands: no separator is put in, no CD is searched.
  File data(env::Open((std::string(rootDir) + DataFileName(r)).c_str(), "rb"));
  if (data == nullptr) return 0;
  const std::string base(outBase);
  if (!WriteSound(data.get(), r, base + (r.isWave == 1 ? ".wav" : ".mp3"))) return 0;
  // Only 0 is an MP3 to convert; a larger isWave leaves the ".mp3" alone.
  if (r.isWave == 0) Mp3ToWav((base + ".mp3").c_str(), (base + ".wav").c_str(), 0, nullptr);
  return 1;
}

}  // namespace tq::sound
