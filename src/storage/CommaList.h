#pragma once

#include <string_view>
#include <unordered_set>

namespace zovk {

/// What stands between the commas of a text, its ends included; empty items count. The views are of
/// `text`. Any thread.
std::unordered_set<std::string_view> itemsBetweenCommas(std::string_view text);

}  // namespace zovk
