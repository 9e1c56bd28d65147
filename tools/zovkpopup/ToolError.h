#pragma once

#include <stdexcept>
#include <string>

#include "zovkpopup/ExitCode.h"

namespace zovk::tool {

/// A mistake that the user can correct: what is wrong, where, and what to do. By default it is
/// in the command line.
class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& text, ExitCode code = kUsage)
      : std::runtime_error(text), code_(code) {}

  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace zovk::tool
