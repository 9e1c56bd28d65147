#pragma once

#include <string_view>

#include "protocol/MessageReader.h"
#include "zovkpopup/platform/Geometry.h"

namespace zovk {

/// Reads the members of an event. Its own readers throw as those of every message do.
class HelperEventReader : public MessageReader {
 public:
  using MessageReader::MessageReader;

  /// Reads a finite number that is not negative.
  double length(std::string_view member) const;
  /// Reads four finite numbers.
  Rect rect(std::string_view member) const;
};

}  // namespace zovk
