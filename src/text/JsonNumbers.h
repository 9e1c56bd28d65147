#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

namespace zovk {

/// Integer value of a text: after white space and a sign, its leading decimal digits, held to the
/// 32-bit range; 0 when there are none.
std::int32_t intValueOfText(std::string_view text);

/// Integer value of a JSON value: numbers are cut towards zero and held to the 32-bit range, true
/// is 1 and false 0, texts as above. Throws `std::invalid_argument` for null, arrays and objects.
std::int32_t intValue(const boost::json::value& value);

/// The same for a double; a text gives the number that it starts with, or 0.
double doubleValue(const boost::json::value& value);

/// A number as people write it: 0.5, 100, 1e21. Just the digits that tell it from its neighbours,
/// with an exponent from 1e21 on and below 0.000001, and without the "+" that a query would lose.
std::string numberText(double number);

}  // namespace zovk
