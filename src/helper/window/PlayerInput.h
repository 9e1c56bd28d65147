#pragma once

#include <functional>

#include <gtk/gtk.h>

namespace zovk::helper {

/// Calls `acted` for each click, touch and key that the window gets. Pages cannot make such events.
void watchPlayer(GtkWidget* window, std::function<void()> acted);

}  // namespace zovk::helper
