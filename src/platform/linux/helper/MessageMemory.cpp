#include "platform/linux/helper/MessageMemory.h"

#include <algorithm>
#include <functional>
#include <new>

namespace zovk {
namespace {

// Each block is twice as large as the one before, so that there are few. What is not used of the
// last costs nothing.
constexpr std::size_t kFirstBlock = std::size_t{1} << 20;
constexpr std::size_t kMostDoublings = 6;

std::size_t alignedUp(std::size_t position, std::size_t alignment) {
  return (position + alignment - 1) / alignment * alignment;
}

}  // namespace

void* MessageMemory::do_allocate(std::size_t size, std::size_t alignment) {
  if (*isFull_) return ::operator new(size, std::align_val_t(alignment));
  std::size_t begin = alignedUp(used_, alignment);
  if (blocks_.empty() || blocks_.back().size() < begin + size) {
    blocks_.emplace_back(std::max(size, kFirstBlock << std::min(blocks_.size(), kMostDoublings)));
    begin = 0;
  }
  used_ = begin + size;
  return blocks_.back().data() + begin;
}

void MessageMemory::do_deallocate(void* place, std::size_t /*size*/, std::size_t alignment) {
  if (!isWithin(place)) ::operator delete(place, std::align_val_t(alignment));
}

bool MessageMemory::isWithin(const void* place) const {
  const std::less_equal<const void*> notAfter;
  return std::any_of(blocks_.begin(), blocks_.end(), [&](const MappedBytes& block) {
    return notAfter(block.data(), place) && !notAfter(block.data() + block.size(), place);
  });
}

}  // namespace zovk
