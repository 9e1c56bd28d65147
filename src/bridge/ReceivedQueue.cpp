#include "bridge/ReceivedQueue.h"

#include <utility>

#include <boost/json/monotonic_resource.hpp>

#include "text/JsonText.h"

namespace zovk {

// The memory that all messages share is freed at once, however many values there are.
ReceivedQueue::ReceivedQueue(boost::json::string text)
    : text_(std::move(text)), parser_(boost::json::storage_ptr(), messageOptions()) {
  parser_.reset(boost::json::make_shared_resource<boost::json::monotonic_resource>());
}

bool ReceivedQueue::readPiece() {
  if (read_ == text_.size()) return false;
  const std::string_view piece = std::string_view(text_).substr(read_, kPieceOfQueue);
  measured_.add(piece);
  if (measured_.values() > kMostValuesOfQueue) tooMuch_ = "too many values";
  if (measured_.longestText() > kLongestTextOfQueue) tooMuch_ = "too long a text";
  boost::json::error_code error;
  if (tooMuch_.empty()) parser_.write(piece.data(), piece.size(), error);
  read_ += piece.size();
  const bool isEnd = read_ == text_.size();
  if (isEnd && tooMuch_.empty() && !error) parser_.finish(error);
  if (!tooMuch_.empty() || error) {
    giveUp();
  } else if (isEnd) {
    messages_.emplace(parser_.release());
  }
  return read_ < text_.size();
}

void ReceivedQueue::giveUp() {
  read_ = text_.size();
  parser_.reset();
}

std::optional<boost::json::value> ReceivedQueue::take() {
  auto* const array = messages_ ? messages_->if_array() : nullptr;
  if (array != nullptr && taken_ < array->size()) return std::move((*array)[taken_++]);
  const auto* const object = messages_ ? messages_->if_object() : nullptr;
  if (object != nullptr && taken_ < object->size()) {
    const auto member = object->begin() + static_cast<std::ptrdiff_t>(taken_++);
    return boost::json::value(member->key());
  }
  return std::nullopt;
}

}  // namespace zovk
