#include "protocol/FrameParser.h"

#include <utility>

#include <boost/json/value.hpp>

#include "protocol/MessageNames.h"

namespace zovk {
namespace {

boost::json::parse_options optionsOfMessages() {
  boost::json::parse_options options;
  options.max_depth = kMaximumMessageDepth;
  return options;
}

/// Returns the message that `value` is. Returns nothing, and sets `error`, if it is not a message.
std::optional<HelperMessage> messageOf(boost::json::value value, std::string& error) {
  boost::json::object* message = value.if_object();
  const boost::json::value* type =
      message == nullptr ? nullptr : message->if_contains(member::kType);
  if (type == nullptr || !type->is_string()) {
    error = message == nullptr ? "frame is not an object" : "message without a type";
    return std::nullopt;
  }
  return std::move(*message);
}

}  // namespace

FrameParser::FrameParser(boost::json::storage_ptr memory, boost::json::storage_ptr working)
    : parser_(std::move(working), optionsOfMessages()) {
  parser_.reset(std::move(memory));
}

bool FrameParser::write(std::string_view piece) {
  boost::json::error_code failure;
  parser_.write(piece.data(), piece.size(), failure);
  return check(failure);
}

std::optional<HelperMessage> FrameParser::finish() {
  boost::json::error_code failure;
  parser_.finish(failure);
  if (!check(failure)) return std::nullopt;
  return messageOf(parser_.release(), error_);
}

bool FrameParser::check(const boost::json::error_code& failure) {
  if (failure) error_ = "frame is not JSON: " + failure.message();
  return !failure;
}

}  // namespace zovk
