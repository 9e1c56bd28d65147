#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "zovkpopup/platform/Timers.h"

namespace zovk {

/// A timer of the memory scheduler. The scheduler knows it only as long as its holder keeps it.
class MemoryTimer final : public Timer {
 public:
  MemoryTimer(std::chrono::nanoseconds now, std::chrono::milliseconds interval,
              std::function<void()> callback)
      : interval_(std::max(interval, std::chrono::milliseconds(1))),
        due_(now + interval_),
        callback_(std::make_shared<std::function<void()>>(std::move(callback))) {}

  void fire() override {
    const auto callback = callback_;  // kept while it runs: it may invalidate this timer
    if (callback && *callback) (*callback)();
  }
  void invalidate() override { callback_.reset(); }
  bool isValid() const override { return callback_ != nullptr; }

  std::chrono::nanoseconds due() const { return due_; }
  /// Runs one turn for all turns that are due by now.
  void turn(std::chrono::nanoseconds now) {
    due_ += ((now - due_) / interval_ + 1) * interval_;
    fire();
  }

 private:
  const std::chrono::nanoseconds interval_;
  std::chrono::nanoseconds due_;
  std::shared_ptr<std::function<void()>> callback_;
};

}  // namespace zovk
