#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <boost/json/stream_parser.hpp>
#include <boost/json/string.hpp>
#include <boost/json/value.hpp>

#include "text/JsonSize.h"

namespace zovk {

/// The part of a queue's text that one turn of the main thread reads: a fraction of a millisecond.
inline constexpr std::size_t kPieceOfQueue = std::size_t{32} * 1024;
/// The greatest number of values in a queue. Making a longer list at once would take too long.
inline constexpr std::size_t kMostValuesOfQueue = 500'000;

/// The longest text or key in a queue, in bytes as they are written. It is made in one turn, which
/// takes a longer one more than a millisecond.
inline constexpr std::size_t kLongestTextOfQueue = std::size_t{2} * 1024 * 1024;
/// The longest queue, in bytes. The memory of its messages is given back in one turn.
inline constexpr std::size_t kLongestQueue = std::size_t{16} * 1024 * 1024;

/// A page's message queue. It is parsed in pieces and returns one message at a time, so that no
/// page can block the main thread. Main thread only.
class ReceivedQueue {
 public:
  /// Takes JSON text of any kind, well formed or not.
  explicit ReceivedQueue(boost::json::string text);

  std::size_t size() const { return text_.size(); }
  /// Reads the next piece. Returns false if there is none: everything was read, or the text is
  /// useless.
  bool readPiece();
  /// Returns what the text holds too much of, if reading stopped because of that; else an empty
  /// text.
  std::string_view tooMuch() const { return tooMuch_; }
  /// Returns the next element of the list, or the next key of a top-level object; nothing at the
  /// end, and for a text that is neither. Call it after everything was read. The element is moved,
  /// not copied, and the caller may keep it.
  std::optional<boost::json::value> take();

 private:
  void giveUp();

  boost::json::string text_;
  std::size_t read_ = 0;
  std::size_t taken_ = 0;
  std::string_view tooMuch_;
  JsonSize measured_;
  boost::json::stream_parser parser_;
  std::optional<boost::json::value> messages_;
};

}  // namespace zovk
