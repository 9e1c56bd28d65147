#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace zovk::tool {

/// Runs a program and waits for its end. What it prints is dropped. Throws ToolError if it cannot
/// be run or fails, or if it runs longer than `limit`; then it is killed. Any thread.
void runBriefly(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                std::chrono::milliseconds limit);

}  // namespace zovk::tool
