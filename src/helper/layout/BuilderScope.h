#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Returns a scope for a layout file in which every handler name is known: a connected signal calls
/// `perform` with that name. A layout file cannot call any other code of this program.
GObjectPtr<GtkBuilderScope> newActionScope(std::function<void(const std::string&)> perform);

}  // namespace zovk::helper
