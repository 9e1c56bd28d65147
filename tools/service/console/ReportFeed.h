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

/// Passes reports to listeners as they come in. Any thread.
class ReportFeed {
 public:
  /// Each listener takes one thread of the service.
  static constexpr std::size_t kMostListeners = 8;
  /// The most lines that wait for a slow listener; older ones are dropped.
  static constexpr std::size_t kMostWaiting = 256;

  class Listener {
   public:
    explicit Listener(ReportFeed& feed) : feed_(feed) {}
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Returns the next line, or nothing if none came in that time or the feed is closed.
    std::optional<std::string> next(std::chrono::milliseconds time);

   private:
    friend class ReportFeed;
    ReportFeed& feed_;
    std::deque<std::string> lines_;
  };

  /// Returns a listener; null if there are too many, or the feed is closed.
  std::shared_ptr<Listener> listen();
  void publish(const std::string& line);
  /// Ends all waiting; nobody can listen again.
  void close();
  bool closed() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::set<Listener*> listeners_;
  bool closed_ = false;
};

}  // namespace zovk::service
