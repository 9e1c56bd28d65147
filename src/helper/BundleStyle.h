#pragma once

#include <string>

namespace zovk::helper {

/// Puts the style sheets of a bundle in force, each file once: the one that comes with the layouts,
/// and above it the studio's own, if there is one. What cannot be read as style is left out with a
/// warning.
void loadStyles(const std::string& bundle);

}  // namespace zovk::helper
