#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// Makes the toolkit light or dark, and high in contrast, as the desktop's settings ask. Where they
/// are silent, the toolkit's own settings stay.
void followDesktopTheme();

/// Gives the window the style class "high-contrast" while the theme has high contrast.
void markHighContrast(GtkWindow* window);

}  // namespace zovk::helper
