#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace zovk {

/// The screen that scripts/with-display made. A test may turn and resize it; it gets its first size
/// back with the end of the object. A developer's own screen is not changed.
class VirtualScreen {
 public:
  ~VirtualScreen() {
    if (changed_) run(std::getenv("DISPLAY_SIZE"));
  }
  static bool isThere() { return std::getenv("DISPLAY_SIZE_TOOL") != nullptr; }
  void resize(int width, int height) {
    changed_ = true;
    if (!run(std::to_string(width) + "x" + std::to_string(height))) {
      throw std::runtime_error("the screen cannot be given another size");
    }
  }

 private:
  static bool run(const std::string& size) {
    return std::system((std::getenv("DISPLAY_SIZE_TOOL") + (" " + size)).c_str()) == 0;
  }

  bool changed_ = false;
};

}  // namespace zovk
