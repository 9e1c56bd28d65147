#include "Purse.h"

#include <algorithm>

namespace harbour {

std::string Purse::buy(const Lantern& lantern) {
  if (owns(lantern)) return "You have this one already";
  if (coins_ < lantern.price) {
    const int missing = lantern.price - coins_;
    return std::to_string(missing) + (missing == 1 ? " coin" : " coins") + " short";
  }
  lanterns_.push_back(&lantern);
  add(-lantern.price);
  return {};
}

void Purse::add(int coins) {
  coins_ += coins;
  if (listener_) listener_(coins_);
}

bool Purse::owns(const Lantern& lantern) const {
  return std::find(lanterns_.begin(), lanterns_.end(), &lantern) != lanterns_.end();
}

}  // namespace harbour
