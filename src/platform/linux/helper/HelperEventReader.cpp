#include "platform/linux/helper/HelperEventReader.h"

#include <array>
#include <cmath>
#include <optional>

#include <boost/json/array.hpp>

namespace zovk {
namespace {

std::optional<double> finiteNumber(const boost::json::value& value) {
  if (!value.is_number()) return std::nullopt;
  const double number = value.to_number<double>();
  if (!std::isfinite(number)) return std::nullopt;
  return number;
}

}  // namespace

const boost::json::value& HelperEventReader::member(std::string_view name) const {
  static const boost::json::value nothing;
  const boost::json::value* found = event_.if_contains(name);
  return found == nullptr ? nothing : *found;
}

HelperId HelperEventReader::id(std::string_view name) {
  const std::int64_t* number = member(name).if_int64();
  if (number != nullptr && *number > 0) return *number;
  reject();
  return 0;
}

std::string HelperEventReader::text(std::string_view name) {
  const boost::json::string* text = member(name).if_string();
  if (text != nullptr) return {text->data(), text->size()};
  reject();
  return {};
}

bool HelperEventReader::flag(std::string_view name) {
  const bool* flag = member(name).if_bool();
  if (flag == nullptr) reject();
  return flag != nullptr && *flag;
}

double HelperEventReader::length(std::string_view name) {
  const auto number = finiteNumber(member(name));
  if (!number || *number < 0) reject();
  return number.value_or(0);
}

Rect HelperEventReader::rect(std::string_view name) {
  const boost::json::array* list = member(name).if_array();
  std::array<double, 4> numbers{};
  if (list == nullptr || list->size() != numbers.size()) {
    reject();
    return {};
  }
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto number = finiteNumber((*list)[i]);
    if (!number) reject();
    numbers[i] = number.value_or(0);
  }
  return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

std::vector<std::string> HelperEventReader::texts(std::string_view name) {
  const boost::json::array* list = member(name).if_array();
  if (list == nullptr) reject();
  std::vector<std::string> texts;
  for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
    const boost::json::string* text = (*list)[i].if_string();
    if (text == nullptr) reject();
    if (text != nullptr) texts.emplace_back(text->data(), text->size());
  }
  return texts;
}

}  // namespace zovk
