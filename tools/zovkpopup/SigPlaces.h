#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zovk::tool {

/// Where an entry of "popups" has its "sig" in the text of a document, in bytes.
struct SigPlace {
  std::size_t inside = 0;  ///< Behind the entry's opening brace.
  std::size_t begin = 0;   ///< Of the value, with its quotes; 0 where there is none, or no text.
  std::size_t end = 0;
  bool hasSig = false;
  bool isObject = false;
};

/// One for each element of "popups", in order; none for a text that is no JSON.
std::vector<SigPlace> sigPlaces(std::string_view text);

}  // namespace zovk::tool
