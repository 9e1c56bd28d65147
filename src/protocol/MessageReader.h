#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/FrameCodec.h"

namespace zovk {

/// Reads the members of a message, for either end. A reader throws std::invalid_argument, with the
/// member's name, if the member is missing or of another kind. The message must outlive the reader.
class MessageReader {
 public:
  explicit MessageReader(const HelperMessage& message) : message_(message) {}

  bool has(std::string_view name) const;
  /// Reads a whole number above zero.
  HelperId id(std::string_view name) const;
  std::vector<HelperId> ids(std::string_view name) const;
  bool flag(std::string_view name) const;
  /// Reads a flag that may be missing, and is `absent` then.
  bool flagOr(std::string_view name, bool absent) const;
  /// Reads a whole number that is zero or more.
  std::int64_t wholeNumber(std::string_view name) const;
  /// Reads a number. It may be infinite, but it is never NaN.
  double number(std::string_view name) const;
  /// Reads a list of exactly that many numbers.
  std::vector<double> numbers(std::string_view name, std::size_t count) const;
  std::string text(std::string_view name) const;
  std::vector<std::string> texts(std::string_view name) const;

  /// Throws, for a member whose value is of the right kind but means nothing.
  [[noreturn]] static void refuse(std::string_view name, std::string_view why);

 private:
  const boost::json::value& member(std::string_view name) const;

  const HelperMessage& message_;
};

}  // namespace zovk
