#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace zovk::service {

/// Returns a moment in the form of HTTP headers.
std::string httpDate(std::time_t moment);
/// Returns nothing if the text is not such a date.
std::optional<std::time_t> parseHttpDate(const std::string& text);

}  // namespace zovk::service
