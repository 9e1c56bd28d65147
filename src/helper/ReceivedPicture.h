#pragma once

#include <cstdint>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The picture in a file of memory that the game has sent, without a copy of it: see
/// protocol/PictureBounds.h. Throws std::invalid_argument when the numbers are out of bounds,
/// the file is too short for them, or somebody could still change or shorten it: reading it would
/// end this process then. The file may be closed afterwards.
GObjectPtr<GdkTexture> pictureIn(int file, std::int64_t width, std::int64_t height);

}  // namespace zovk::helper
