#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace zovk::service {

/// A moment as HTTP headers write it.
std::string httpDate(std::time_t moment);
/// Absent when the text is no such date.
std::optional<std::time_t> parseHttpDate(const std::string& text);

}  // namespace zovk::service
