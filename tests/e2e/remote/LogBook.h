#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace zovk {

/// The log lines of a game, as they come. Any thread.
class LogBook {
 public:
  void add(std::string_view line);
  void clear();
  std::vector<std::string> lines() const;
  /// Returns the error lines, in order and without the level in front.
  std::vector<std::string> errors() const;
  /// Returns whether a line ends with this message.
  bool has(std::string_view message) const { return count(message) > 0; }

  /// Waits until `times` lines end with `message`. Returns false if they do not come within a
  /// minute.
  bool waitFor(std::string_view message, std::size_t times = 1) const;
  /// Calls `action` once, while the first line that ends with `message` is logged. Logging
  /// continues when it returns.
  void onLine(std::string message, std::function<void()> action);

 private:
  std::size_t count(std::string_view message) const;
  std::size_t countLocked(std::string_view message) const;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::vector<std::string> lines_;
  std::string awaited_;
  std::function<void()> action_;
};

}  // namespace zovk
