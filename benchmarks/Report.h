#pragma once

#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

namespace zovk {

/// One figure that a benchmark holds up, in the unit of its text.
struct Claim {
  enum class Holds { kUpTo, kFrom };

  std::string text;
  double figure = 0;
  std::string unit{};
  Holds side = Holds::kUpTo;
  double bound = 0;

  bool holds() const { return side == Holds::kUpTo ? figure <= bound : figure >= bound; }
};

/// What a benchmark found. Prints each line as it comes, and writes all of it as JSON to the file
/// that the environment variable ZOVKPOPUP_BENCHMARK_RESULT names, if it is set.
class Report {
 public:
  /// False when the claim does not hold.
  bool add(const Claim& claim);
  /// A figure that is told and has no bound.
  void tell(const std::string& text, double figure, const std::string& unit);
  /// Single measurements, for a picture of how they are distributed.
  void keep(const std::string& text, const std::vector<double>& milliseconds);
  /// The exit code of the program: 0 when all claims hold.
  int finish() const;

 private:
  bool allHold_ = true;
  boost::json::array claims_;
  boost::json::array figures_;
  boost::json::object samples_;
};

}  // namespace zovk
