#include "helper/commands/Arguments.h"

#include <algorithm>
#include <cmath>

namespace zovk::helper {
namespace {

/// The largest length that X11 knows; sizes beyond it make the toolkit fail.
constexpr double kLongest = 32767;

int length(double value) {
  return static_cast<int>(std::lround(std::clamp(value, -kLongest, kLongest)));
}

float part(double value) {
  return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

/// The toolkit would silently cut a text at a zero character.
void refuseZero(std::string_view name, const std::string& text) {
  if (text.find('\0') != std::string::npos) MessageReader::refuse(name, "holds a zero character");
}

}  // namespace

double Arguments::number(std::string_view name) const {
  return std::clamp(MessageReader::number(name), -kLongest, kLongest);
}

std::string Arguments::text(std::string_view name) const {
  std::string text = MessageReader::text(name);
  refuseZero(name, text);
  return text;
}

std::string Arguments::textOr(std::string_view name, std::string absent) const {
  return has(name) ? text(name) : std::move(absent);
}

std::vector<std::string> Arguments::texts(std::string_view name) const {
  std::vector<std::string> texts = MessageReader::texts(name);
  for (const std::string& text : texts) refuseZero(name, text);
  return texts;
}

GdkRGBA Arguments::color(std::string_view name) const {
  const std::vector<double> parts = numbers(name, 4);
  return {part(parts[0]), part(parts[1]), part(parts[2]), part(parts[3])};
}

Frame Arguments::frame(std::string_view name) const {
  const std::vector<double> parts = numbers(name, 4);
  return {length(parts[0]), length(parts[1]), length(parts[2]), length(parts[3])};
}

}  // namespace zovk::helper
