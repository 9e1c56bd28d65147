#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <boost/json/memory_resource.hpp>

#include "protocol/MappedBytes.h"

namespace zovk {

/// The memory of one long message, which is given back as a whole when the last value in it ends.
/// One thread fills it. Values that are made afterwards, such as copies of those in it, have memory
/// of their own, on any thread.
class MessageMemory : public boost::json::memory_resource {
 public:
  using Blocks = std::vector<MappedBytes>;
  /// It is filled until `isFull` is true. `release` is given the memory at the end, on the thread
  /// of the last value. Giving tens of megabytes back takes the system milliseconds.
  MessageMemory(std::shared_ptr<const bool> isFull, std::function<void(Blocks)> release)
      : isFull_(std::move(isFull)), release_(std::move(release)) {}
  ~MessageMemory() override { release_(std::move(blocks_)); }
  MessageMemory(const MessageMemory&) = delete;
  MessageMemory& operator=(const MessageMemory&) = delete;

 private:
  void* do_allocate(std::size_t size, std::size_t alignment) override;
  void do_deallocate(void* place, std::size_t size, std::size_t alignment) override;
  bool do_is_equal(const boost::json::memory_resource& other) const noexcept override {
    return this == &other;
  }
  bool isWithin(const void* place) const;

  const std::shared_ptr<const bool> isFull_;
  const std::function<void(Blocks)> release_;
  Blocks blocks_;
  std::size_t used_ = 0;  // of the last block
};

}  // namespace zovk
