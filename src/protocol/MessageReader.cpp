#include "protocol/MessageReader.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include <boost/json/array.hpp>

namespace zovk {
namespace {

/// Returns -1 for everything that is not a whole number of zero or more.
std::int64_t wholeNumberOf(const boost::json::value& value) {
  if (value.is_int64()) return value.get_int64() < 0 ? -1 : value.get_int64();
  constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (!value.is_uint64() || value.get_uint64() > kMost) return -1;
  return static_cast<std::int64_t>(value.get_uint64());
}

HelperId idOf(std::string_view name, const boost::json::value& value) {
  const HelperId id = wholeNumberOf(value);
  if (id <= 0) MessageReader::refuse(name, "is no identifier");
  return id;
}

double numberOf(std::string_view name, const boost::json::value& value) {
  const double number = value.is_number() ? value.to_number<double>() : std::nan("");
  // A text such as 0e999 is read as NaN.
  if (std::isnan(number)) MessageReader::refuse(name, "is no number");
  return number;
}

std::string textOf(std::string_view name, const boost::json::value& value) {
  if (!value.is_string()) MessageReader::refuse(name, "is no text");
  return {value.get_string().data(), value.get_string().size()};
}

const boost::json::array& listOf(std::string_view name, const boost::json::value& value) {
  if (!value.is_array()) MessageReader::refuse(name, "is no list");
  return value.get_array();
}

}  // namespace

void MessageReader::refuse(std::string_view name, std::string_view why) {
  throw std::invalid_argument("\"" + std::string(name) + "\" " + std::string(why));
}

const boost::json::value& MessageReader::member(std::string_view name) const {
  const boost::json::value* value = message_.if_contains(name);
  if (value == nullptr) refuse(name, "is missing");
  return *value;
}

bool MessageReader::has(std::string_view name) const {
  return message_.contains(name);
}

HelperId MessageReader::id(std::string_view name) const {
  return idOf(name, member(name));
}

std::vector<HelperId> MessageReader::ids(std::string_view name) const {
  std::vector<HelperId> result;
  for (const boost::json::value& value : listOf(name, member(name))) {
    result.push_back(idOf(name, value));
  }
  return result;
}

bool MessageReader::flag(std::string_view name) const {
  const boost::json::value& value = member(name);
  if (!value.is_bool()) refuse(name, "is no boolean");
  return value.get_bool();
}

bool MessageReader::flagOr(std::string_view name, bool absent) const {
  return has(name) ? flag(name) : absent;
}

std::int64_t MessageReader::wholeNumber(std::string_view name) const {
  const std::int64_t number = wholeNumberOf(member(name));
  if (number < 0) refuse(name, "is no whole number");
  return number;
}

double MessageReader::number(std::string_view name) const {
  return numberOf(name, member(name));
}

std::vector<double> MessageReader::numbers(std::string_view name, std::size_t count) const {
  const boost::json::array& list = listOf(name, member(name));
  if (list.size() != count) refuse(name, "has the wrong length");
  std::vector<double> result;
  for (const boost::json::value& value : list) result.push_back(numberOf(name, value));
  return result;
}

std::string MessageReader::text(std::string_view name) const {
  return textOf(name, member(name));
}

std::vector<std::string> MessageReader::texts(std::string_view name) const {
  std::vector<std::string> result;
  for (const boost::json::value& value : listOf(name, member(name))) {
    result.push_back(textOf(name, value));
  }
  return result;
}

}  // namespace zovk
