#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Stock.h"

namespace harbour {

/// What the player has. Whoever shows the coins hears of every change.
class Purse {
 public:
  /// Empty when a lantern was bought, else what to tell the player.
  std::string buy(const Lantern& lantern);
  void add(int coins);
  bool owns(const Lantern& lantern) const;

  int coins() const { return coins_; }
  /// In the order in which they were bought.
  const std::vector<const Lantern*>& lanterns() const { return lanterns_; }
  void onChange(std::function<void(int coins)> listener) { listener_ = std::move(listener); }

 private:
  int coins_ = 30;
  std::vector<const Lantern*> lanterns_;
  std::function<void(int coins)> listener_;
};

}  // namespace harbour
