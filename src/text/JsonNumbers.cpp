#include "text/JsonNumbers.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include <boost/json/kind.hpp>

namespace zovk {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

std::int32_t clampedInt(double number) {
  if (std::isnan(number)) return 0;
  if (number >= kLargest) return kLargest;
  if (number <= kSmallest) return kSmallest;
  return static_cast<std::int32_t>(number);
}

[[noreturn]] void rejectNumber(const boost::json::value& value) {
  throw std::invalid_argument("a number is needed where there is " +
                              std::string(boost::json::to_string(value.kind())));
}

std::string_view withoutLeadingSpace(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
  return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// Returns whether a text begins with "nan" or "inf", which from_chars would read as numbers.
bool beginsWithAWord(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && std::isalpha(static_cast<unsigned char>(text.front())) != 0;
}

// Parses the number at the start of a text; from_chars knows no "+".
template <class Number>
Number leadingNumber(std::string_view text, Number tooLarge, Number tooSmall) {
  text = withoutLeadingSpace(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number number{};
  if (beginsWithAWord(text)) return number;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) {
    return text.starts_with('-') ? tooSmall : tooLarge;
  }
  return error == std::errc() ? number : Number{};
}

}  // namespace

std::int32_t intValueOfText(std::string_view text) {
  return leadingNumber<std::int32_t>(text, kLargest, kSmallest);
}

std::int32_t intValue(const boost::json::value& value) {
  if (const auto* text = value.if_string()) return intValueOfText(*text);
  if (const bool* flag = value.if_bool()) return *flag ? 1 : 0;
  if (value.is_number()) return clampedInt(value.to_number<double>());
  rejectNumber(value);
}

double doubleValue(const boost::json::value& value) {
  if (const auto* text = value.if_string()) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    return leadingNumber<double>(*text, kInfinity, -kInfinity);
  }
  if (const bool* flag = value.if_bool()) return *flag ? 1 : 0;
  if (value.is_number()) return value.to_number<double>();
  rejectNumber(value);
}

std::string numberText(double number) {
  const double size = std::abs(number);
  const bool plain = size == 0 || (size >= 1e-6 && size < 1e21);
  std::array<char, 32> digits{};  // the longest of both forms has 24
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific);
  std::string text(digits.data(), end.ptr);
  std::erase(text, '+');
  return text;
}

}  // namespace zovk
