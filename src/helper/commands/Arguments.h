#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtk/gtk.h>

#include "protocol/MessageReader.h"

namespace zovk::helper {

struct Frame {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Frame&) const = default;
};

/// The members of one command, with their values in the range that the toolkit accepts. Every
/// reader throws std::invalid_argument as that of a message does, also for a text with a zero
/// character.
class Arguments : private MessageReader {
 public:
  using MessageReader::flag;
  using MessageReader::flagOr;
  using MessageReader::has;
  using MessageReader::id;
  using MessageReader::ids;
  using MessageReader::MessageReader;
  using MessageReader::wholeNumber;

  double number(std::string_view name) const;
  std::string text(std::string_view name) const;
  /// Reads a text that may be missing, and is `absent` then.
  std::string textOr(std::string_view name, std::string absent) const;
  std::vector<std::string> texts(std::string_view name) const;
  GdkRGBA color(std::string_view name) const;
  Frame frame(std::string_view name) const;
};

}  // namespace zovk::helper
