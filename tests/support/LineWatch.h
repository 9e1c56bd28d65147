#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/LoggerSetUp.h"
#include "platform/memory/MemoryPlatform.h"

namespace zovk {

/// While it lives, calls `look` whenever a log line that contains `part` has been written, on the
/// thread that writes it. So a test can see what has happened, and what has not, at a logged step.
class LineWatch {
 public:
  LineWatch(MemoryPlatform& memory, std::string part, std::function<void()> look)
      : memory_(memory) {
    setUpLogger(memory.shared(),
                std::make_shared<WatchedLog>(memory.sharedLog(), std::move(part), std::move(look)));
  }
  ~LineWatch() { setUpLogger(memory_.shared(), memory_.sharedLog()); }
  LineWatch(const LineWatch&) = delete;
  LineWatch& operator=(const LineWatch&) = delete;

 private:
  class WatchedLog final : public PlatformLog {
   public:
    WatchedLog(std::shared_ptr<PlatformLog> log, std::string part, std::function<void()> look)
        : log_(std::move(log)), part_(std::move(part)), look_(std::move(look)) {}
    void writeLine(std::string_view line) override {
      log_->writeLine(line);
      if (line.find(part_) != std::string_view::npos) look_();
    }

   private:
    std::shared_ptr<PlatformLog> log_;
    std::string part_;
    std::function<void()> look_;
  };

  MemoryPlatform& memory_;
};

}  // namespace zovk
