#include "service/console/EntryFields.h"

#include <charconv>

namespace zovk::service {

std::int64_t numberIn(const boost::json::object& object, std::string_view name) {
  const auto* const value = object.if_contains(name);
  if (value == nullptr) return 0;
  if (const auto* const text = value->if_string()) {
    std::int64_t number = 0;
    const auto read = std::from_chars(text->data(), text->data() + text->size(), number);
    return read.ec == std::errc() ? number : 0;
  }
  boost::json::error_code error;
  const auto number = value->to_number<std::int64_t>(error);
  return error ? 0 : number;
}

std::string textIn(const boost::json::object& object, std::string_view name) {
  const auto* const value = object.if_contains(name);
  return value != nullptr && value->is_string() ? std::string(value->get_string()) : "";
}

std::string titleOf(const boost::json::object& entry) {
  return "popup " + std::to_string(numberIn(entry, "pop_id")) + ", scene \"" +
         textIn(entry, "scene") + "\"";
}

}  // namespace zovk::service
