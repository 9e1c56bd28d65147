#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <httplib.h>

namespace zovk::service {

/// Returns the body of a request. Returns nothing, and sets the answer's status, if it is longer
/// than `largest` or cannot be read.
std::optional<std::string> readBody(const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& reader, std::size_t largest);

}  // namespace zovk::service
