#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/object.hpp>
#include <httplib.h>

#include "service/Answer.h"
#include "service/console/Answers.h"

namespace zovk::service {

/// The longest name of a person or of a condition, in bytes.
inline constexpr std::size_t kLongestName = 64;

// What is read from the console's requests. What is missing or wrong throws ConsoleError.

/// Returns the object that a body is; an empty body is an empty object.
boost::json::object bodyOf(const std::string& text);
/// Returns the name of the person who asks.
std::string nameOf(const boost::json::object& body);
boost::json::object entryIn(const boost::json::object& body);
/// Returns the text of a page, or nothing if there is none.
std::optional<std::string> pageIn(const boost::json::object& body);
/// Returns the popups to publish.
std::vector<std::int64_t> idsIn(const boost::json::object& body);
/// Returns the number that a text is, or 0.
std::int64_t numberOf(const std::string& text);
AnswerFilter filterOf(const httplib::Request& request);

/// Makes the answer to a request that was carried out.
Answer done(boost::json::object members = {});

}  // namespace zovk::service
