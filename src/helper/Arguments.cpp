#include "helper/Arguments.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <boost/json/array.hpp>
#include <boost/json/value_to.hpp>

namespace zovk::helper {
namespace {

/// The largest length that X11 knows; sizes beyond it make the toolkit fail.
constexpr double kLongest = 32767;

[[noreturn]] void refuse(std::string_view name, std::string_view why) {
  throw std::invalid_argument("\"" + std::string(name) + "\" " + std::string(why));
}

Id idOf(std::string_view name, const boost::json::value& value) {
  boost::json::error_code error;
  const auto id = value.to_number<Id>(error);
  if (error || id <= 0) refuse(name, "is no identifier");
  return id;
}

double numberOf(std::string_view name, const boost::json::value& value) {
  const double number = value.is_number() ? value.to_number<double>() : std::nan("");
  if (std::isnan(number)) refuse(name, "is no number");  // a text such as 0e999 is read as one
  return number;
}

std::string textOf(std::string_view name, const boost::json::value& value) {
  if (!value.is_string()) refuse(name, "is no text");
  std::string text(value.get_string());
  // The toolkit would silently cut the text there.
  if (text.find('\0') != std::string::npos) refuse(name, "holds a zero character");
  return text;
}

const boost::json::array& listOf(std::string_view name, const boost::json::value& value) {
  if (!value.is_array()) refuse(name, "is no list");
  return value.get_array();
}

int length(double value) {
  return static_cast<int>(std::lround(std::clamp(value, -kLongest, kLongest)));
}

float part(double value) {
  return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

}  // namespace

const boost::json::value& Arguments::member(std::string_view name) const {
  const boost::json::value* value = message_.if_contains({name.data(), name.size()});
  if (value == nullptr) refuse(name, "is missing");
  return *value;
}

bool Arguments::has(std::string_view name) const {
  return message_.contains({name.data(), name.size()});
}

Id Arguments::id(std::string_view name) const {
  return idOf(name, member(name));
}

std::vector<Id> Arguments::ids(std::string_view name) const {
  std::vector<Id> result;
  for (const boost::json::value& value : listOf(name, member(name))) {
    result.push_back(idOf(name, value));
  }
  return result;
}

bool Arguments::flag(std::string_view name) const {
  const boost::json::value& value = member(name);
  if (!value.is_bool()) refuse(name, "is no boolean");
  return value.get_bool();
}

std::int64_t Arguments::wholeNumber(std::string_view name) const {
  boost::json::error_code error;
  const auto number = member(name).to_number<std::int64_t>(error);
  if (error || number < 0) refuse(name, "is no whole number");
  return number;
}

double Arguments::number(std::string_view name) const {
  return std::clamp(numberOf(name, member(name)), -kLongest, kLongest);
}

std::string Arguments::text(std::string_view name) const {
  return textOf(name, member(name));
}

std::vector<std::string> Arguments::texts(std::string_view name) const {
  std::vector<std::string> result;
  for (const boost::json::value& value : listOf(name, member(name))) {
    result.push_back(textOf(name, value));
  }
  return result;
}

std::vector<double> Arguments::numbers(std::string_view name, std::size_t count) const {
  const boost::json::array& list = listOf(name, member(name));
  if (list.size() != count) refuse(name, "has the wrong length");
  std::vector<double> result;
  for (const boost::json::value& value : list) result.push_back(numberOf(name, value));
  return result;
}

GdkRGBA Arguments::color(std::string_view name) const {
  const std::vector<double> parts = numbers(name, 4);
  return {part(parts[0]), part(parts[1]), part(parts[2]), part(parts[3])};
}

Frame Arguments::frame(std::string_view name) const {
  const std::vector<double> parts = numbers(name, 4);
  return {length(parts[0]), length(parts[1]), length(parts[2]), length(parts[3])};
}

}  // namespace zovk::helper
