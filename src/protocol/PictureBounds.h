#pragma once

#include <cstddef>
#include <cstdint>

namespace zovk {

/// The bounds of a picture that the game passes to its helper: four bytes a pixel, blue, green, red
/// and full alpha, rows without gaps, in memory that nobody can change or shorten any more.
inline constexpr int kLongestPictureSide = 16384;
inline constexpr std::size_t kMostPictureBytes = std::size_t{256} * 1024 * 1024;
inline constexpr std::size_t kPicturePixelBytes = 4;

/// Returns the bytes of a picture, or 0 if it is out of bounds.
constexpr std::size_t pictureBytes(std::int64_t width, std::int64_t height) {
  if (width < 1 || height < 1) return 0;
  if (width > kLongestPictureSide || height > kLongestPictureSide) return 0;
  const auto bytes =
      static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kPicturePixelBytes;
  return bytes > kMostPictureBytes ? 0 : bytes;
}

}  // namespace zovk
