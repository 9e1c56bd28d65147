#pragma once

#include <array>
#include <string>

namespace zovk {

/// Returns how many pixels of a picture, or of a part of it ("WIDTHxHEIGHT+X+Y"), have this colour,
/// or nearly so: the toolkit rounds where it blends.
int pixelsOf(const std::string& path, const std::string& colour, const std::string& part = "");

/// Red, green, blue and alpha of one pixel, from 0 to 255; all zero where it is clear.
using Pixel = std::array<int, 4>;
Pixel pixelAt(const std::string& path, int x, int y);

}  // namespace zovk
