#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "logging/ZPLogger.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Keeps the log lines. Any thread. Copies share their lines, so that a logger that outlives a test
/// still has a log to write to.
class MemoryLog final : public PlatformLog {
 public:
  void writeLine(std::string_view line) override;

  std::vector<std::string> lines() const;
  std::vector<std::string> linesContaining(std::string_view text) const;
  /// Returns whether a line contains the text.
  bool contains(std::string_view text) const { return count(text) > 0; }
  /// Returns how many lines contain the text.
  std::size_t count(std::string_view text) const;
  void clear();

 private:
  struct Lines {
    mutable Mutex mutex;
    std::vector<std::string> all ZOVK_GUARDED_BY(mutex);
  };
  std::shared_ptr<Lines> lines_ = std::make_shared<Lines>();
};

/// Returns an environment that makes the logger write into `log`, with or without debug lines.
LogEnvironment memoryLogEnvironment(const MemoryLog& log, bool debug);

}  // namespace zovk
