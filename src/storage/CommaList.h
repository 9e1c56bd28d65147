#pragma once

#include <string_view>
#include <unordered_set>

namespace zovk {

/// Returns the items between the commas of a text, with those at its ends; empty items count. The
/// views refer to `text`. Any thread.
std::unordered_set<std::string_view> itemsBetweenCommas(std::string_view text);

}  // namespace zovk
