#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>
#include <boost/json/storage_ptr.hpp>
#include <boost/json/stream_parser.hpp>

namespace zovk {

/// The deepest nesting of arrays and objects in a value of a page.
inline constexpr std::size_t kMaximumValueDepth = 512;
/// The deepest nesting in a message, which is an object around the value.
inline constexpr std::size_t kMaximumMessageDepth = kMaximumValueDepth + 1;

/// One message between the game and its helper: an object with a text member "type".
using HelperMessage = boost::json::object;

/// Parses the text of one frame, piece by piece. One thread at a time.
class FrameParser {
 public:
  /// The message will be in `memory`. `working` is used until the parser ends.
  explicit FrameParser(boost::json::storage_ptr memory = {}, boost::json::storage_ptr working = {});

  /// Parses a further piece. Returns false if the text is broken.
  bool write(std::string_view piece);
  /// Returns the message after the last piece; nothing if the text is not a message.
  std::optional<HelperMessage> finish();
  /// Returns what is wrong with the text; empty if nothing is.
  const std::string& error() const { return error_; }

 private:
  bool check(const boost::json::error_code& failure);

  boost::json::stream_parser parser_;
  std::string error_;
};

}  // namespace zovk
