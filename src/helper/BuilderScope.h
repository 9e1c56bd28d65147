#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// A scope for a layout file in which every handler name is known: what the file connects calls
/// `perform` with that name. Nothing of this program can be called from a layout file.
GObjectPtr<GtkBuilderScope> newActionScope(std::function<void(const std::string&)> perform);

}  // namespace zovk::helper
