#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// The constraint layout of containers. They accept any size and ask for none, because the game
/// decides a popup's size. Layout files call it "ZovkLayout".
GType containerLayoutType();

}  // namespace zovk::helper
