#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "helper/pad/PadSteps.h"

namespace zovk::helper {

/// The most places of a page that a game pad can reach.
inline constexpr std::size_t kMaximumPadPlaces = 500;

/// The places of a page for a game pad, in the page's own coordinates.
struct PadPage {
  std::vector<PadPlace> places;
  std::optional<std::size_t> focused;
  bool above = false;  ///< The page continues above its visible part.
  bool below = false;
};

/// Reads the result of the script in the page. Gives an empty result for any other text.
PadPage readPadPage(const std::string& text);

/// Returns the script for a task: "list", "focus", "press", "leave" or "scroll".
std::string padScript(const std::string& wish, int number = 0);

}  // namespace zovk::helper
