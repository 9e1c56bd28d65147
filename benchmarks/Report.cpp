#include "Report.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

namespace zovk {

bool Report::add(const Claim& claim) {
  const bool upTo = claim.side == Claim::Holds::kUpTo;
  std::printf("%-64s %10.3f %-12s %s %8.2f  %s\n", claim.text.c_str(), claim.figure,
              claim.unit.c_str(), upTo ? "<=" : ">=", claim.bound,
              claim.holds() ? "holds" : "DOES NOT HOLD");
  std::fflush(stdout);
  claims_.push_back({{"text", claim.text},
                     {"figure", claim.figure},
                     {"unit", claim.unit},
                     {"side", upTo ? "at most" : "at least"},
                     {"bound", claim.bound}});
  allHold_ = allHold_ && claim.holds();
  return claim.holds();
}

void Report::tell(const std::string& text, double figure, const std::string& unit) {
  std::printf("%-64s %10.3f %s\n", text.c_str(), figure, unit.c_str());
  std::fflush(stdout);
  figures_.push_back({{"text", text}, {"figure", figure}, {"unit", unit}});
}

void Report::note(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
  notes_.emplace_back(text);
}

void Report::keep(const std::string& text, const std::vector<double>& milliseconds) {
  samples_[text] = boost::json::array(milliseconds.begin(), milliseconds.end());
}

int Report::finish() const {
  if (const char* const path = std::getenv("ZOVKPOPUP_BENCHMARK_RESULT")) {
    std::ofstream file(path);
    file << boost::json::serialize(boost::json::object{
        {"claims", claims_}, {"figures", figures_}, {"notes", notes_}, {"samples", samples_}});
    if (!file.flush()) {
      std::fprintf(stderr, "cannot write %s\n", path);
      return 1;
    }
  }
  return allHold_ ? 0 : 1;
}

}  // namespace zovk
