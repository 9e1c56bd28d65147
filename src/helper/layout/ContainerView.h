#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// The toolkit's type of a plain view: children in front of one another, placed by constraints.
/// Layout files call it "ZovkView".
GType containerViewType();
GtkWidget* newContainerView();
bool isContainerView(GtkWidget* widget);

}  // namespace zovk::helper
