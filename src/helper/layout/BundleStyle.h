#pragma once

#include <string>

namespace zovk::helper {

/// Loads the style sheets of a bundle, each file once: the one that comes with the layouts, and
/// above it the studio's own, if there is one. Rules that cannot be read are ignored with a
/// warning.
void loadStyles(const std::string& bundle);

}  // namespace zovk::helper
