#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtk/gtk.h>

#include "helper/Events.h"

namespace zovk::helper {

struct Frame {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Frame&) const = default;
};

/// The members of one command. Every reader throws std::invalid_argument with the member's name if
/// it is missing or of the wrong kind. Numbers are brought into the range that the toolkit accepts.
class Arguments {
 public:
  explicit Arguments(const HelperMessage& message) : message_(message) {}

  bool has(std::string_view name) const;
  Id id(std::string_view name) const;
  std::vector<Id> ids(std::string_view name) const;
  bool flag(std::string_view name) const;
  /// Reads a number that is zero or more.
  std::int64_t wholeNumber(std::string_view name) const;
  double number(std::string_view name) const;
  std::string text(std::string_view name) const;
  std::vector<std::string> texts(std::string_view name) const;
  GdkRGBA color(std::string_view name) const;
  Frame frame(std::string_view name) const;

 private:
  const boost::json::value& member(std::string_view name) const;
  std::vector<double> numbers(std::string_view name, std::size_t count) const;

  const HelperMessage& message_;
};

}  // namespace zovk::helper
