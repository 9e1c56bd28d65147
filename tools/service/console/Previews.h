#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// Pages for a frame of the console that are not saved yet. It keeps the latest few, each under a
/// name that nobody can guess. Any thread.
class Previews {
 public:
  static constexpr std::size_t kMost = 8;

  /// Returns the page's name.
  std::string add(std::string bytes);
  std::optional<std::string> page(const std::string& name) const;

 private:
  struct Preview {
    std::string name;
    std::string bytes;
  };

  mutable Mutex mutex_;
  std::deque<Preview> latest_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
