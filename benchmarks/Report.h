#pragma once

#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

namespace zovk {

/// One figure with a bound that a benchmark checks, in the unit of its text.
struct Claim {
  enum class Holds { kUpTo, kFrom };

  std::string text;
  double figure = 0;
  std::string unit{};
  Holds side = Holds::kUpTo;
  double bound = 0;

  bool holds() const { return side == Holds::kUpTo ? figure <= bound : figure >= bound; }
};

/// The results of a benchmark. Prints each line as it comes, and writes all of them as JSON to the
/// file that the environment variable ZOVKPOPUP_BENCHMARK_RESULT names, if it is set.
class Report {
 public:
  /// Adds a claim. Returns false if it does not hold.
  bool add(const Claim& claim);
  /// Adds a figure without a bound.
  void tell(const std::string& text, double figure, const std::string& unit);
  /// Adds a fact about the machine that the figures depend on.
  void note(const std::string& text);
  /// Adds single measurements, for a picture of their distribution.
  void keep(const std::string& text, const std::vector<double>& milliseconds);
  /// Returns the exit code of the program: 0 if all claims hold.
  int finish() const;

 private:
  bool allHold_ = true;
  boost::json::array claims_;
  boost::json::array figures_;
  boost::json::array notes_;
  boost::json::object samples_;
};

}  // namespace zovk
