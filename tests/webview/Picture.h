#pragma once

#include <string>

namespace zovk {

/// How many pixels of a picture, or of a part of it ("WIDTHxHEIGHT+X+Y"), have this colour, or
/// nearly so: the toolkit rounds where it blends.
int pixelsOf(const std::string& path, const std::string& colour, const std::string& part = "");

}  // namespace zovk
