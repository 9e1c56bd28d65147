#pragma once

#include <functional>
#include <optional>
#include <string>

#include <boost/json/object.hpp>

namespace zovk::tool {

/// The bytes of a page file by its name; absent when there is none.
using PageSource = std::function<std::optional<std::string>(const std::string& name)>;

/// Puts the service's address where an author wrote {{base}}.
std::string withBase(std::string text, const std::string& base);

/// Completes the popups of a document in the development service's own format: "page" becomes an
/// address, a content type and a digest, and a web page gets the digest of its address. What is
/// given stays. A page that is not there leaves its popup without a digest.
void completePopups(boost::json::object& document, const std::string& base,
                    const PageSource& pages);

}  // namespace zovk::tool
