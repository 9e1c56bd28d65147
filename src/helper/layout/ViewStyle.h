#pragma once

#include <string>

#include <gtk/gtk.h>

namespace zovk::helper {

void setBackground(GtkWidget* widget, const GdkRGBA& color);
/// Shows the picture in `path` on a button; on fine screens the one beside it named "NAME@2x.png".
/// If the file is not a picture, the button has none.
void setButtonImage(GtkWidget* widget, const std::string& path);

}  // namespace zovk::helper
