#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "support/UniqueFd.h"

namespace zovk {

/// Descriptors with what to do when they become readable or are closed from the other end, united
/// in one descriptor that is readable while any of them is. Main thread only. It does not own the
/// descriptors; each must be removed before it is closed. Making one throws std::system_error
/// when the process has no descriptors left.
class PollSet {
 public:
  using Callback = std::function<void()>;
  PollSet();

  int descriptor() const { return epoll_.get(); }
  /// Throws std::system_error when the system refuses.
  void add(int fd, Callback callback);
  /// The callback does not run again, even if it is due. No effect on a descriptor that is not in.
  void remove(int fd);
  void clear();
  /// Runs the callback of one ready descriptor; those that are ready take turns from call to call.
  /// False when none is. Never waits.
  bool dispatchOne();

 private:
  struct Source {
    std::uint64_t id;
    std::shared_ptr<const Callback> callback;
  };
  std::shared_ptr<const Callback> callbackOf(std::uint64_t id) const;

  UniqueFd epoll_;
  std::map<int, Source> sources_;
  // Numbers tell a source from an earlier one whose descriptor had the same value.
  std::uint64_t lastId_ = 0;
};

}  // namespace zovk
