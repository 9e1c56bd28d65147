#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

namespace zovk {

/// Returns the integer value of a text: after white space and a sign, its leading decimal digits,
/// limited to the 32-bit range; 0 if there are none.
std::int32_t intValueOfText(std::string_view text);

/// Returns the integer value of a JSON value: numbers are cut towards zero and limited to the
/// 32-bit range, true is 1 and false 0, texts as above. Throws `std::invalid_argument` for null,
/// arrays and objects.
std::int32_t intValue(const boost::json::value& value);

/// Returns the same as a double; a text gives the number that it begins with, or 0.
double doubleValue(const boost::json::value& value);

/// Returns a number as people write it: 0.5, 100, 1e21. It has just the digits that distinguish it
/// from its neighbours. From 1e21 on and below 0.000001 it has an exponent, without the "+" that a
/// query would lose.
std::string numberText(double number);

}  // namespace zovk
