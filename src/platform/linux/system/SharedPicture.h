#pragma once

#include <string>

#include "support/UniqueFd.h"
#include "zovkpopup/platform/GamePicture.h"

namespace zovk {

/// A picture in memory for another process: see protocol/PictureBounds.h.
struct SharedPicture {
  UniqueFd pixels;    ///< None if it cannot be shared.
  std::string error;  ///< Why it cannot be shared.
};

/// Copies the picture, which must have pixels.
SharedPicture sharePicture(const ZOVKPopupPicture& picture);

}  // namespace zovk
