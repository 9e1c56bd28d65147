#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// The constraint layout of containers, which take the size they are given and ask for none: a
/// popup's size is the game's business. Layout files call it "ZovkLayout".
GType containerLayoutType();

}  // namespace zovk::helper
