#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// Makes one press of the tab key one step, even on the way from a page to the buttons.
void keepTabSteps(GtkWindow* window);

}  // namespace zovk::helper
