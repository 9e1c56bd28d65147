#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "support/UniqueFd.h"

namespace zovk::tool {

/// Captures the standard error of the helper program and its children while it lives. The web
/// engine writes the pages' console there. Meanwhile this program writes its own lines with `say`.
/// One at a time.
class HelperOutput {
 public:
  /// Throws ToolError if the process has no descriptors left.
  HelperOutput();
  ~HelperOutput();
  HelperOutput(const HelperOutput&) = delete;
  HelperOutput& operator=(const HelperOutput&) = delete;

  /// Returns a descriptor that is readable when there is something to read.
  int descriptor() const { return pipe_.get(); }
  /// Passes on every whole line that has come since, without its end. Lines are cut off after 16
  /// KiB.
  void read(const std::function<void(std::string_view line)>& take);
  /// Writes a line to this program's own standard error.
  void say(const std::string& line) const;

 private:
  UniqueFd own_;
  UniqueFd pipe_;
  std::string begun_;
};

}  // namespace zovk::tool
