#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace zovk::service {

/// Hands reports to those who listen, as they come in. Any thread.
class ReportFeed {
 public:
  /// Each has a thread of the service's to itself.
  static constexpr std::size_t kMostListeners = 8;
  /// How many lines wait for one that does not keep up; older ones are dropped.
  static constexpr std::size_t kMostWaiting = 256;

  class Listener {
   public:
    explicit Listener(ReportFeed& feed) : feed_(feed) {}
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// The next line; absent when none came in that time, or the feed is closed.
    std::optional<std::string> next(std::chrono::milliseconds time);

   private:
    friend class ReportFeed;
    ReportFeed& feed_;
    std::deque<std::string> lines_;
  };

  /// Null when there are as many as may be, or the feed is closed.
  std::shared_ptr<Listener> listen();
  void publish(const std::string& line);
  /// Nobody waits any more, and nobody can listen again.
  void close();
  bool closed() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::set<Listener*> listeners_;
  bool closed_ = false;
};

}  // namespace zovk::service
