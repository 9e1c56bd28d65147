#pragma once

namespace zovk {

/// Sizes and places on a screen, in logical pixels: x grows to the right, y downwards.
struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

/// A colour; every part runs from 0 to 1.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
  static constexpr Color clear() { return {}; }
  static constexpr Color black(double alpha) { return {0, 0, 0, alpha}; }
  friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace zovk
