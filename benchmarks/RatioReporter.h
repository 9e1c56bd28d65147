#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Report.h"

namespace zovk {

/// A claim: one benchmark takes at most `bound` times as long as its floor, measured in one run.
struct RatioClaim {
  std::string text;
  std::string subject;  ///< Name of a benchmark.
  std::string floor;    ///< Name of the benchmark that it is compared with.
  double bound;
};

/// Prints the output of Google Benchmark, and at the end each claim with the ratio of the medians
/// of processor time, which excludes the time of other programs.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  explicit RatioReporter(std::vector<RatioClaim> claims);

  void ReportRuns(const std::vector<Run>& runs) override;
  /// Adds the claims whose benchmarks ran, with the medians in microseconds.
  void report(Report& report) const;

 private:
  std::vector<RatioClaim> claims_;
  std::map<std::string, double> medians_;  // nanoseconds
};

/// Runs the program's benchmarks, interleaved and repeated, and prints its claims. Returns the exit
/// code, which says whether they hold.
int runWithClaims(int argc, char** argv, std::vector<RatioClaim> claims);

}  // namespace zovk
