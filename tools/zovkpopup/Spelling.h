#pragma once

#include <string_view>
#include <vector>

namespace zovk::tool {

/// The word that was probably meant: the nearest that is at most two letters off; empty for none.
std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known);

}  // namespace zovk::tool
