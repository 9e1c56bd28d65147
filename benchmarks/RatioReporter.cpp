#include "RatioReporter.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace zovk {
namespace {

double medianOf(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

RatioReporter::RatioReporter(std::vector<RatioClaim> claims)
    : ConsoleReporter(OO_None), claims_(std::move(claims)) {}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    nanoseconds_[run.run_name.function_name +
                 (run.run_name.args.empty() ? "" : "/" + run.run_name.args)]
        .push_back(run.GetAdjustedRealTime() * 1e9 /
                   benchmark::GetTimeUnitMultiplier(run.time_unit));
  }
  ConsoleReporter::ReportRuns(runs);
}

bool RatioReporter::printClaims() const {
  bool allHold = true;
  fmt::print("\n{:<58}{:>12}{:>12}{:>8}{:>8}\n", "claim", "median us", "floor us", "ratio",
             "bound");
  for (const RatioClaim& claim : claims_) {
    const auto subject = nanoseconds_.find(claim.subject);
    const auto floor = nanoseconds_.find(claim.floor);
    if (subject == nanoseconds_.end() || floor == nanoseconds_.end()) continue;
    const double subjectTime = medianOf(subject->second);
    const double floorTime = medianOf(floor->second);
    const double ratio = subjectTime / floorTime;
    const bool holds = ratio <= claim.bound;
    allHold = allHold && holds;
    fmt::print("{:<58}{:>12.1f}{:>12.1f}{:>8.3f}{:>8.2f}  {}\n", claim.text, subjectTime / 1e3,
               floorTime / 1e3, ratio, claim.bound, holds ? "holds" : "DOES NOT HOLD");
  }
  return allHold;
}

int runWithClaims(int argc, char** argv, std::vector<RatioClaim> claims) {
  // Interleaved, so that what else the machine does falls on subject and floor alike.
  std::vector<std::string> defaults = {argv[0], "--benchmark_repetitions=9",
                                       "--benchmark_min_time=0.05",
                                       "--benchmark_enable_random_interleaving=true",
                                       "--benchmark_display_aggregates_only=true"};
  defaults.insert(defaults.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  for (std::string& argument : defaults) arguments.push_back(argument.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter(std::move(claims));
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.printClaims() ? 0 : 1;
}

}  // namespace zovk
