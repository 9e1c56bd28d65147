#include "RatioReporter.h"

#include <utility>

namespace zovk {
RatioReporter::RatioReporter(std::vector<RatioClaim> claims)
    : ConsoleReporter(OO_None), claims_(std::move(claims)) {}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
    const std::string& arguments = run.run_name.args;
    medians_[run.run_name.function_name + (arguments.empty() ? "" : "/" + arguments)] =
        run.GetAdjustedCPUTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
  }
  ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::report(Report& report) const {
  for (const RatioClaim& claim : claims_) {
    const auto subject = medians_.find(claim.subject);
    const auto floor = medians_.find(claim.floor);
    if (subject == medians_.end() || floor == medians_.end()) continue;
    report.add({.text = claim.text,
                .figure = subject->second / floor->second,
                .unit = "x",
                .bound = claim.bound});
    report.tell("  " + claim.subject, subject->second / 1e3, "us");
    report.tell("  " + claim.floor, floor->second / 1e3, "us");
  }
}

int runWithClaims(int argc, char** argv, std::vector<RatioClaim> claims) {
  // Interleaved, so that what else the machine does falls on subject and floor alike.
  std::vector<std::string> defaults = {
      argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.05",
      "--benchmark_enable_random_interleaving=true", "--benchmark_display_aggregates_only=true"};
  defaults.insert(defaults.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  for (std::string& argument : defaults) arguments.push_back(argument.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter(std::move(claims));
  benchmark::RunSpecifiedBenchmarks(&reporter);
  Report report;
  reporter.report(report);
  return report.finish();
}

}  // namespace zovk
