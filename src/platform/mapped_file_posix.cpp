#include "platform/mapped_file.h"

#include <sys/mman.h>
#include <sys/stat.h>

namespace tq::env {

bool MappedFile::Map(std::FILE* file) {
  Unmap();
  if (file == nullptr) return false;
  int fd = fileno(file);
  struct stat st;
  if (fd < 0 || fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size <= 0) return false;
  void* p = mmap(nullptr, static_cast<size_t>(st.st_size), PROT_READ, MAP_SHARED, fd, 0);
  if (p == MAP_FAILED) return false;
  data_ = static_cast<const unsigned char*>(p);
  size_ = static_cast<size_t>(st.st_size);
  return true;
}

bool MappedFile::Refresh(std::FILE* file) {
  struct stat st;
  int fd = file != nullptr ? fileno(file) : -1;
  if (fd >= 0 && fstat(fd, &st) == 0 && st.st_size >= 0 && static_cast<size_t>(st.st_size) == size_) {
    return data_ != nullptr;
  }
  return Map(file);
}

void MappedFile::Unmap() {
  if (data_ != nullptr) munmap(const_cast<unsigned char*>(data_), size_);
  data_ = nullptr;
  size_ = 0;
}

}  // namespace tq::env
