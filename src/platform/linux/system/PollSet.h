#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "support/UniqueFd.h"

namespace zovk {

/// Descriptors and the callbacks for when they become readable or are closed by the other end. They
/// are combined in one descriptor, which is readable while any of them is. Main thread only. It
/// does not own the descriptors; remove each before it is closed. The constructor throws
/// std::system_error if the process has no descriptors left.
class PollSet {
 public:
  using Callback = std::function<void()>;
  PollSet();

  int descriptor() const { return epoll_.get(); }
  /// Throws std::system_error if the system refuses.
  void add(int fd, Callback callback);
  /// Removes a descriptor. Its callback does not run again, even if it is due. Has no effect on an
  /// unknown descriptor.
  void remove(int fd);
  void clear();
  /// Runs the callback of one ready descriptor; ready ones take turns from call to call. Returns
  /// false if none is ready. Never waits.
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
