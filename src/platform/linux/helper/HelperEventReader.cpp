#include "platform/linux/helper/HelperEventReader.h"

#include <cmath>
#include <vector>

namespace zovk {

double HelperEventReader::length(std::string_view member) const {
  const double length = number(member);
  if (!std::isfinite(length) || length < 0) refuse(member, "is no length");
  return length;
}

Rect HelperEventReader::rect(std::string_view member) const {
  const std::vector<double> parts = numbers(member, 4);
  for (const double part : parts) {
    if (!std::isfinite(part)) refuse(member, "is no rectangle");
  }
  return {parts[0], parts[1], parts[2], parts[3]};
}

}  // namespace zovk
