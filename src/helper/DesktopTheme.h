#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// Makes the toolkit light or dark, and of high contrast, as the desktop's settings say. Where they
/// say nothing the toolkit's own settings stand.
void followDesktopTheme();

/// Gives the window the style class "high-contrast" while the theme is of high contrast.
void markHighContrast(GtkWindow* window);

}  // namespace zovk::helper
