#pragma once

#include <string>

#include <gtk/gtk.h>

namespace zovk::helper {

void setBackground(GtkWidget* widget, const GdkRGBA& color);
/// Shows the picture in `path` on a button, the one beside it named "NAME@2x.png" where the screen
/// is that fine. A file that is no picture leaves the button without one.
void setButtonImage(GtkWidget* widget, const std::string& path);

}  // namespace zovk::helper
