#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Stock.h"

namespace harbour {

/// The player's coins and lanterns. A listener gets every change.
class Purse {
 public:
  /// Buys a lantern. Returns an empty text, or what to tell the player if that fails.
  std::string buy(const Lantern& lantern);
  void add(int coins);
  bool owns(const Lantern& lantern) const;

  int coins() const { return coins_; }
  /// Returns the lanterns in the order of buying.
  const std::vector<const Lantern*>& lanterns() const { return lanterns_; }
  void onChange(std::function<void(int coins)> listener) { listener_ = std::move(listener); }

 private:
  int coins_ = 30;
  std::vector<const Lantern*> lanterns_;
  std::function<void(int coins)> listener_;
};

}  // namespace harbour
