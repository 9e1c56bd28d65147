#pragma once

#include <cstddef>
#include <utility>

namespace zovk {

/// Memory straight from the system, which goes straight back to it. A part that was never written
/// to takes up nothing but addresses. One thread at a time.
class MappedBytes {
 public:
  /// Takes memory of `size` bytes, more than none. Throws std::bad_alloc if the system has none.
  explicit MappedBytes(std::size_t size);
  ~MappedBytes();
  MappedBytes(MappedBytes&& other) noexcept
      : bytes_(std::exchange(other.bytes_, nullptr)), size_(std::exchange(other.size_, 0)) {}
  MappedBytes& operator=(MappedBytes&& other) noexcept {
    std::swap(bytes_, other.bytes_);
    std::swap(size_, other.size_);
    return *this;
  }

  char* data() { return bytes_; }
  const char* data() const { return bytes_; }
  std::size_t size() const { return size_; }

 private:
  char* bytes_;
  std::size_t size_;
};

}  // namespace zovk
