#pragma once

#include <vector>

#include "Backdrop.h"
#include "LanternSprites.h"

namespace lanterns {

/// Lanterns that rise over a lake at dusk and are lit by a tap.
class Scene {
 public:
  Scene(SDL_Renderer* renderer, int width, int height);

  void update(double seconds);
  void draw() const;
  /// Lights the lantern at a place. Returns false if there is no dark one.
  bool tap(int x, int y);
  int litCount() const;
  int count() const { return static_cast<int>(lanterns_.size()); }

 private:
  struct Lantern {
    std::size_t size;  // index of its sprites
    double across;     // share of the width
    double height;     // pixels above the water; it starts below it
    double phase;
    bool litAtFirst;  // as it rises from the water
    bool lit;
    double light;
  };

  void addLantern(int index);
  double top() const;
  int xOf(const Lantern& lantern) const;
  int yOf(const Lantern& lantern) const;

  int width_;
  Backdrop backdrop_;
  std::vector<LanternSprites> sprites_;
  std::vector<Lantern> lanterns_;
  double now_ = 0;
};

}  // namespace lanterns
