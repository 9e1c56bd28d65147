#pragma once

#include <string_view>
#include <vector>

namespace zovk::tool {

/// Returns the word that was probably meant: the nearest that differs in at most two letters; empty
/// for none.
std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known);

}  // namespace zovk::tool
