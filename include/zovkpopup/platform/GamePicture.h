#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace zovk {

/// The byte order of one pixel in memory. The byte named X is ignored.
enum class ZOVKPopupPixels : std::uint8_t {
  kBgrx,  ///< Four bytes; SDL's ARGB8888 and XRGB8888.
  kRgbx,  ///< Four bytes; what GL reads as GL_RGBA.
  kRgb,   ///< Three bytes.
};

/// A frame of the game, in the game's memory.
struct ZOVKPopupPicture {
  const void* pixels = nullptr;  ///< The start of the top row; null for no picture.
  int width = 0;                 ///< In pixels, at most 16,384.
  int height = 0;                ///< In pixels, at most 16,384.
  /// The number of bytes from one row to the row below. 0 means that the rows follow each other
  /// without a gap. A negative number means that the top row is the last one in memory, as GL reads
  /// them.
  std::ptrdiff_t stride = 0;
  ZOVKPopupPixels format = ZOVKPopupPixels::kBgrx;
};

/// Returns the last frame that the player saw. The library copies the pixels as soon as the
/// function has returned.
using ZOVKPopupBackdrop = std::function<ZOVKPopupPicture()>;

}  // namespace zovk
