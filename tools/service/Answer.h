#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

namespace zovk::service {

/// The answer of an endpoint, before a fault may spoil it.
struct Answer {
  int status = 200;
  std::string body;
  std::string type = "application/json; charset=utf-8";
  std::vector<std::pair<std::string, std::string>> headers;
};

Answer jsonAnswer(const boost::json::value& value, int status = 200);
/// Returns an error answer: an object with "code" (the status) and "message".
Answer problem(int status, std::string_view message);

}  // namespace zovk::service
