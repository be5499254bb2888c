// A read-only view of an open file, for lookups that would otherwise cost a
// seek and a read per step. The view does not move the file's position.
#pragma once

#include <cstddef>
#include <cstdio>

namespace tq::env {

class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile() { Unmap(); }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  // Maps the whole of an open file as it stands now. False (and no view)
  // for an empty file or when the system refuses.
  bool Map(std::FILE* file);
  // Maps the file again when its size is no longer the view's: a page of a
  // view that lies beyond the end of a file cut shorter faults the process.
  // One system call; answers whether a view is held.
  bool Refresh(std::FILE* file);
  void Unmap();

  const unsigned char* data() const { return data_; }
  size_t size() const { return size_; }

 private:
  const unsigned char* data_ = nullptr;
  size_t size_ = 0;
};

}  // namespace tq::env
