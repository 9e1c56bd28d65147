#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace zovk::helper {

enum class PadDirection { kUp, kDown, kLeft, kRight };

/// A place that can have the focus, in the window's coordinates.
struct PadPlace {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

/// Returns the place that a person expects next in that direction: the nearest one there, where the
/// distance to the side counts twice. Returns nothing if there is none.
std::optional<std::size_t> nextPlace(const PadPlace& from, const std::vector<PadPlace>& places,
                                     PadDirection direction);

}  // namespace zovk::helper
