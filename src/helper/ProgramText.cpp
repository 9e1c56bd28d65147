#include "helper/ProgramText.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

/// Only parts that nobody ever wrote to are as they are in the file.
bool isAsInFile(const ElfW(Phdr) & part) {
  return part.p_type == PT_LOAD && (part.p_flags & PF_W) == 0;
}

/// The loader keeps the library where it is meanwhile.
int giveBack(dl_phdr_info* library, std::size_t, void*) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < library->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = library->dlpi_phdr[i];
    if (!isAsInFile(part)) continue;
    const std::uintptr_t start = (library->dlpi_addr + part.p_vaddr) & ~(page - 1);
    const std::uintptr_t end = library->dlpi_addr + part.p_vaddr + part.p_memsz;
    madvise(std::bit_cast<void*>(start), end - start, MADV_DONTNEED);
  }
  return 0;
}

}  // namespace

void giveProgramTextBack() {
  dl_iterate_phdr(giveBack, nullptr);
}

}  // namespace zovk::helper
