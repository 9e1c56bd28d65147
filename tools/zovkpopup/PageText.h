#pragma once

#include <optional>
#include <string>

namespace zovk::tool {

/// Returns the text of a page file in UTF-8, decoded as the web engine decodes it: by its
/// byte-order mark, else by the encoding that it names, else as Windows-1252. A byte that belongs
/// to no character becomes U+FFFD. Returns nothing if the page names an encoding that is not known
/// here.
std::optional<std::string> pageText(const std::string& page);

}  // namespace zovk::tool
