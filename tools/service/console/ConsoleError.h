#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <boost/json/object.hpp>

namespace zovk::service {

/// A request of the console that cannot be carried out: the status of the answer, and the reason.
class ConsoleError : public std::runtime_error {
 public:
  ConsoleError(int status, const std::string& message, boost::json::object details = {})
      : std::runtime_error(message), status_(status), details_(std::move(details)) {}

  int status() const { return status_; }
  /// Further members of the answer.
  const boost::json::object& details() const { return details_; }

 private:
  int status_;
  boost::json::object details_;
};

}  // namespace zovk::service
