#include "Stock.h"

#include <algorithm>

namespace harbour {

constexpr std::array<Lantern, 4> kStock = {{
    {"moon", "Paper Moon", "Rice paper on willow. A soft, even light.", 8, 0xF6D58A},
    {"plum", "Plum Blossom", "Dyed by hand, a little different each time.", 12, 0xEF7FA0},
    {"tide", "Low Tide", "Sea glass. It glows like shallow water.", 20, 0x5CC8C4},
    {"star", "Harbour Star", "Seven points of brass, to be seen from the sea.", 60, 0xFF9A4D},
}};

const Lantern* lanternNamed(std::string_view id) {
  const auto found = std::find_if(kStock.begin(), kStock.end(),
                                  [id](const Lantern& lantern) { return lantern.id == id; });
  return found == kStock.end() ? nullptr : &*found;
}

}  // namespace harbour
