#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace zovk::helper {

enum class PadDirection { kUp, kDown, kLeft, kRight };

/// Something that the focus can stand on, in the window's coordinates.
struct PadPlace {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

/// The place that a person expects next in that direction: the nearest one that lies there, where
/// what is out of line counts twice. Nothing when none does.
std::optional<std::size_t> nextPlace(const PadPlace& from, const std::vector<PadPlace>& places,
                                     PadDirection direction);

}  // namespace zovk::helper
