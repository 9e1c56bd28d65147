#pragma once

#include <array>
#include <string_view>

namespace harbour {

struct Lantern {
  std::string_view id;
  std::string_view name;
  std::string_view about;
  int price;
  /// 0xRRGGBB
  unsigned colour;
};

/// What the shop sells. The game knows the prices; the page only shows them.
extern const std::array<Lantern, 4> kStock;

/// Null when there is no such lantern.
const Lantern* lanternNamed(std::string_view id);

}  // namespace harbour
