#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zovk {

/// Returns the `names` that occur anywhere in `text`, even as a part of a longer name. A separate
/// search for each would take the product of both lengths. This takes their sum, once for each
/// length of those names that are not whole items between two commas. The views refer to `names`.
std::unordered_set<std::string_view> containedNames(const std::vector<std::string>& names,
                                                    std::string_view text);

}  // namespace zovk
