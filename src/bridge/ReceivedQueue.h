#pragma once

#include <cstddef>
#include <optional>

#include <boost/json/stream_parser.hpp>
#include <boost/json/string.hpp>
#include <boost/json/value.hpp>

#include "text/JsonSize.h"

namespace zovk {

/// How much of a queue's text is read in one turn of the main thread: a fraction of a millisecond.
inline constexpr std::size_t kPieceOfQueue = std::size_t{32} * 1024;
/// How many values a queue may hold; a list of more takes too long to make at once.
inline constexpr std::size_t kMostValuesOfQueue = 500'000;

/// A page's message queue, read a piece at a time and taken apart a message at a time, so that no
/// page can hold the main thread up. Main thread only.
class ReceivedQueue {
 public:
  /// JSON text of any kind, well formed or not.
  explicit ReceivedQueue(boost::json::string text);

  std::size_t size() const { return text_.size(); }
  /// Reads the next piece. False when there is none: all was read, or the text is of no use.
  bool readPiece();
  /// Whether reading ended since the text holds more values than it may.
  bool holdsTooMuch() const { return tooMuch_; }
  /// The next element of the list, or the next key of a top-level object; absent at the end, and
  /// for any text that holds neither. To be called once all is read. What is taken is moved, not
  /// copied, and may be kept.
  std::optional<boost::json::value> take();

 private:
  void giveUp();

  boost::json::string text_;
  std::size_t read_ = 0;
  std::size_t taken_ = 0;
  bool tooMuch_ = false;
  JsonValueCount count_;
  boost::json::stream_parser parser_;
  std::optional<boost::json::value> messages_;
};

}  // namespace zovk
