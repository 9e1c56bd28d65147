#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zovk::tool {

/// A script within a page: of a `<script>` element, or of an attribute such as `onclick`.
struct PageScript {
  std::string text;
  std::size_t line = 1;  ///< The line of the page on which it begins.
  bool isModule = false;
};

/// Returns the scripts that a page in UTF-8 holds, in their order.
std::vector<PageScript> scriptsOf(const std::string& page);

}  // namespace zovk::tool
