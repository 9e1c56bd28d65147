#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "helper/PadSteps.h"

namespace zovk::helper {

/// How many places of a page a game pad can reach.
inline constexpr std::size_t kMaximumPadPlaces = 500;

/// What a page offers to a game pad, in the page's own coordinates.
struct PadPage {
  std::vector<PadPlace> places;
  std::optional<std::size_t> focused;
  bool above = false;  ///< There is more of the page above what is seen of it.
  bool below = false;
};

/// Reads what the script in the page found. Of a text that is none of its own, nothing.
PadPage readPadPage(const std::string& text);

/// The script with a wish: "list", "focus", "press", "leave" or "scroll".
std::string padScript(const std::string& wish, int number = 0);

}  // namespace zovk::helper
