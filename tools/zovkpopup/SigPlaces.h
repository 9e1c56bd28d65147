#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zovk::tool {

/// The place of the "sig" of an entry of "popups" in the text of a document, in bytes.
struct SigPlace {
  std::size_t inside = 0;  ///< After the entry's opening brace.
  std::size_t begin = 0;   ///< The value, with its quotes; 0 if there is none or it is not a text.
  std::size_t end = 0;
  bool hasSig = false;
  bool isObject = false;
};

/// Returns one for each element of "popups", in order; none for a text that is not JSON.
std::vector<SigPlace> sigPlaces(std::string_view text);

}  // namespace zovk::tool
