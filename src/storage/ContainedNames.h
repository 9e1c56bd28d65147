#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zovk {

/// Those of `names` that occur somewhere in `text`, which may be a part of a longer name in it.
/// Looking for each by itself would take the product of both lengths; this takes their sum, once
/// for every length that names have beside those that stand between two commas. The views are of
/// `names`.
std::unordered_set<std::string_view> containedNames(const std::vector<std::string>& names,
                                                    std::string_view text);

}  // namespace zovk
