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

/// The shop's goods. The game knows the prices; the page only shows them.
extern const std::array<Lantern, 4> kStock;

/// Returns a lantern; null if there is none of that name.
const Lantern* lanternNamed(std::string_view id);

}  // namespace harbour
