#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace zovk {

/// Counts how a trial's rounds ended, for people to read.
class Tally {
 public:
  explicit Tally(std::string trial) : trial_(std::move(trial)) {}
  /// Prints itself: "hostile: TRIAL: 40 tried: 38 answered, 2 given up".
  ~Tally();
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;

  void add(const std::string& outcome) { ++outcomes_[outcome]; }
  /// Adds a measured figure of a round; median and largest are printed.
  void measure(const std::string& what, double value) { figures_[what].push_back(value); }

 private:
  std::string trial_;
  std::map<std::string, std::size_t> outcomes_;
  std::map<std::string, std::vector<double>> figures_;
};

/// Returns how often a trial is repeated: `quick` times in every run of the tests, `full` times by
/// scripts/test --hostile.
std::size_t rounds(std::size_t quick, std::size_t full);

}  // namespace zovk
