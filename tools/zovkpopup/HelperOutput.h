#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "support/UniqueFd.h"

namespace zovk::tool {

/// Takes what the helper program and its children write to standard error, where the engine puts
/// what pages tell their console, for as long as it lives. Meanwhile this program says what it has
/// to say by `say`. One at a time.
class HelperOutput {
 public:
  /// Throws ToolError when the process has no descriptors left.
  HelperOutput();
  ~HelperOutput();
  HelperOutput(const HelperOutput&) = delete;
  HelperOutput& operator=(const HelperOutput&) = delete;

  /// Readable when there is something to read.
  int descriptor() const { return pipe_.get(); }
  /// Gives every whole line that came since, without its end. A line is cut after 16 KiB.
  void read(const std::function<void(std::string_view line)>& take);
  /// Writes a line to this program's own standard error.
  void say(const std::string& line) const;

 private:
  UniqueFd own_;
  UniqueFd pipe_;
  std::string begun_;
};

}  // namespace zovk::tool
