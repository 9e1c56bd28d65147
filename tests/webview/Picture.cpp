#include "Picture.h"

#include <fstream>
#include <stdexcept>

#include "HelperUnderTest.h"

namespace zovk {

int pixelsOf(const std::string& path, const std::string& colour, const std::string& part) {
  const std::string count = path + ".count";
  std::vector<std::string> command{"convert", path};
  if (!part.empty()) command.insert(command.end(), {"-crop", part, "+repage"});
  command.insert(command.end(),
                 {"-alpha", "off", "-fuzz", "6%", "-fill", "black", "+opaque", colour, "-fill",
                  "white", "-opaque", colour, "-format", "%[fx:round(mean*w*h)]", "info:" + count});
  if (runProgram(command) != 0) throw std::runtime_error("the picture cannot be read");
  int pixels = -1;
  std::ifstream(count) >> pixels;
  return pixels;
}

Pixel pixelAt(const std::string& path, int x, int y) {
  const std::string bytes = path + ".pixel";
  const std::string part = path + "[1x1+" + std::to_string(x) + "+" + std::to_string(y) + "]";
  if (runProgram({"convert", part, "-depth", "8", "rgba:" + bytes}) != 0) {
    throw std::runtime_error("the picture cannot be read");
  }
  Pixel pixel{};
  std::ifstream file(bytes, std::ios::binary);
  for (int& value : pixel) value = file.get();
  return pixel.back() == 0 ? Pixel{} : pixel;
}

}  // namespace zovk
