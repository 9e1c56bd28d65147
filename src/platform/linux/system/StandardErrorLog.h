#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Writes each line to standard error, with time, program, process and thread, or passes it
/// unchanged to the host's sink. Any thread. Shared with the logger, which may outlive the
/// platform.
class StandardErrorLog : public PlatformLog {
 public:
  using Sink = std::function<void(std::string_view line)>;
  explicit StandardErrorLog(Sink sink = nullptr) : sink_(std::move(sink)) {}

  void writeLine(std::string_view line) override;
  /// Returns the record for standard error; its further lines are indented.
  static std::string record(std::string_view line);

 private:
  const Sink sink_;
};

}  // namespace zovk
