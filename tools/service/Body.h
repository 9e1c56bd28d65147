#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <httplib.h>

namespace zovk::service {

/// The body of a request; absent, with the answer's status set, when it is longer than `largest` or
/// cannot be read.
std::optional<std::string> readBody(const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& reader, std::size_t largest);

}  // namespace zovk::service
