#include "protocol/MappedBytes.h"

#include <new>

#include <sys/mman.h>

namespace zovk {
namespace {

char* mapped(std::size_t size) {
  constexpr int kKind = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* const bytes = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, kKind, -1, 0);
  if (bytes == MAP_FAILED) throw std::bad_alloc();
  return static_cast<char*>(bytes);
}

}  // namespace

MappedBytes::MappedBytes(std::size_t size) : bytes_(mapped(size)), size_(size) {}

MappedBytes::~MappedBytes() {
  if (bytes_ != nullptr) ::munmap(bytes_, size_);
}

}  // namespace zovk
