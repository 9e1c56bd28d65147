#include "helper/IdleMemory.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#include <link.h>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

/// What the calls from here on may need.
constexpr std::uintptr_t kRoomOnStack = std::uintptr_t{64} * 1024;

std::uintptr_t pageSize() {
  return static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
}

/// Gives back what lies between two addresses, of which the first begins a page.
void giveBack(std::uintptr_t start, std::uintptr_t end) {
  if (start < end) madvise(std::bit_cast<void*>(start), end - start, MADV_DONTNEED);
}

/// Only parts that nobody ever wrote to are as they are in the file.
bool isAsInFile(const ElfW(Phdr) & part) {
  return part.p_type == PT_LOAD && (part.p_flags & PF_W) == 0;
}

/// The loader keeps the library where it is meanwhile.
int giveTextBack(dl_phdr_info* library, std::size_t, void*) {
  for (int i = 0; i < library->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = library->dlpi_phdr[i];
    if (!isAsInFile(part)) continue;
    const std::uintptr_t start = library->dlpi_addr + part.p_vaddr;
    giveBack(start & ~(pageSize() - 1), start + part.p_memsz);
  }
  return 0;
}

void giveStackBack() {
  pthread_attr_t stack;
  if (pthread_getattr_np(pthread_self(), &stack) != 0) return;
  void* lowest = nullptr;
  std::size_t size = 0;
  pthread_attr_getstack(&stack, &lowest, &size);
  pthread_attr_destroy(&stack);
  const auto used = std::bit_cast<std::uintptr_t>(__builtin_frame_address(0)) - kRoomOnStack;
  giveBack(std::bit_cast<std::uintptr_t>(lowest), used & ~(pageSize() - 1));
}

}  // namespace

void giveIdleMemoryBack() {
  dl_iterate_phdr(giveTextBack, nullptr);
  giveStackBack();
}

}  // namespace zovk::helper
