#pragma once

#include <stdexcept>

namespace zovk::tool {

/// Something that the user can put right: what is wrong, where, and what to do.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What the program exits with.
inline constexpr int kSuccess = 0;
inline constexpr int kProblems = 1;
inline constexpr int kUsage = 2;

}  // namespace zovk::tool
