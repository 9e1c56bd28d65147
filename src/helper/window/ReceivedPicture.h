#pragma once

#include <cstdint>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Returns the picture in a memory file that the game has sent, without copying it: see
/// protocol/PictureBounds.h. Throws std::invalid_argument if the numbers are out of bounds, if the
/// file is too short for them, or if anyone could still change or shorten the file, because reading
/// it could then end this process. The file may be closed afterwards.
GObjectPtr<GdkTexture> pictureIn(int file, std::int64_t width, std::int64_t height);

}  // namespace zovk::helper
