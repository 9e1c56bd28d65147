#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace zovk {

/// How one pixel lies in memory, byte by byte. What is written X is not looked at.
enum class ZOVKPopupPixels : std::uint8_t {
  kBgrx,  ///< Four bytes; SDL's ARGB8888 and XRGB8888.
  kRgbx,  ///< Four bytes; what GL reads as GL_RGBA.
  kRgb,   ///< Three bytes.
};

/// A frame of the game's, in memory of the game's.
struct ZOVKPopupPicture {
  const void* pixels = nullptr;  ///< Of the row at the top; null for no picture.
  int width = 0;                 ///< In pixels; 16,384 at most.
  int height = 0;                ///< The same.
  /// Bytes from one row to the one below it: 0 when rows follow one another without a gap, and less
  /// than 0 when the row at the top comes last, as GL reads them.
  std::ptrdiff_t stride = 0;
  ZOVKPopupPixels format = ZOVKPopupPixels::kBgrx;
};

/// Gives the frame that the player saw last. The pixels are copied as soon as it has returned.
using ZOVKPopupBackdrop = std::function<ZOVKPopupPicture()>;

}  // namespace zovk
