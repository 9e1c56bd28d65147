#pragma once

#include <functional>
#include <optional>
#include <string>

#include <boost/json/object.hpp>

namespace zovk::tool {

/// Returns the bytes of a page file by its name, or nothing if there is none.
using PageSource = std::function<std::optional<std::string>(const std::string& name)>;

/// Replaces {{base}} by the service's address.
std::string withBase(std::string text, const std::string& base);

/// Completes the popups of a document in the development service's format: "page" becomes an
/// address, a content type and a digest, and a web page gets the digest of its address. Given
/// values stay. A missing page leaves its popup without a digest.
void completePopups(boost::json::object& document, const std::string& base,
                    const PageSource& pages);

}  // namespace zovk::tool
