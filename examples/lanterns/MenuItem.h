#pragma once

#include <functional>
#include <string>

namespace lanterns {

/// One thing that the player can ask for.
struct MenuItem {
  std::string name;
  char key;
  std::function<void()> run;
};

}  // namespace lanterns
