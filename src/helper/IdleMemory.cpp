#include "helper/IdleMemory.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

std::uintptr_t pageSize() {
  return static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
}

struct Range {
  std::uintptr_t start;
  std::uintptr_t end;
};

/// Gives back what lies between two addresses, of which the first begins a page.
void giveBack(const Range& range) {
  madvise(std::bit_cast<void*>(range.start), range.end - range.start, MADV_DONTNEED);
}

/// Only parts that nobody ever wrote to are as they are in the file.
bool isAsInFile(const ElfW(Phdr) & part) {
  return part.p_type == PT_LOAD && (part.p_flags & PF_W) == 0;
}

int addText(dl_phdr_info* library, std::size_t, void* ranges) {
  for (int i = 0; i < library->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = library->dlpi_phdr[i];
    if (!isAsInFile(part)) continue;
    const std::uintptr_t start = library->dlpi_addr + part.p_vaddr;
    static_cast<std::vector<Range>*>(ranges)->push_back(
        {start & ~(pageSize() - 1), start + part.p_memsz});
  }
  return 0;
}

}  // namespace

void giveIdleMemoryBack() {
  // Listed first: the list is read from the text itself, which would come back.
  std::vector<Range> ranges;
  dl_iterate_phdr(addText, &ranges);
  for (const Range& range : ranges) giveBack(range);
}

}  // namespace zovk::helper
