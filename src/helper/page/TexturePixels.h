#pragma once

#include <gtk/gtk.h>

#include "helper/CairoPtr.h"

namespace zovk::helper {

/// Returns what a texture shows, without a copy where that is possible. Returns null for a texture
/// that is too large.
CairoSurface pixelsOf(GdkTexture* texture);

}  // namespace zovk::helper
