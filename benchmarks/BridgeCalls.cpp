// How fast page and game call each other over the bridge, beside the same in a bare WebKitGTK
// program, in turns on the same machine.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BridgeGame.h"
#include "GameLoop.h"
#include "Report.h"
#include "Statistics.h"
#include "fixtures/ChildProcess.h"

namespace zovk {
namespace {

constexpr int kCalls = 2000;
constexpr int kManyCalls = 10'000;
constexpr int kManyInFlight = 64;
constexpr int kFrameCalls = 100;
// A signal says no more than that there is a call. What it is must be fetched, so the bare loop
// that fetches does the same work in one process.
constexpr double kFetchBound = 0.7;
constexpr double kInFlightBound = 6;
constexpr double kFrameBound = 28;

/// Round trips a second, one figure a round.
struct Speeds {
  std::vector<double> bareSignal;
  std::vector<double> bareFetch;
  std::vector<double> bareMessage;
  std::vector<double> bareEvaluate;
  std::vector<double> fromPage;
  std::vector<double> inFlight;
  std::vector<double> fromGame;
};

class Bench {
 public:
  Bench(std::filesystem::path bare, int rounds) : bare_(std::move(bare)), rounds_(rounds) {}

  void run() {
    game_.callsFromPage(kManyCalls, kManyInFlight);  // warm
    game_.callsFromGame(kCalls, 1);
    for (int round = 0; round < rounds_; ++round) {
      speeds_.bareSignal.push_back(bareSpeed("signal"));
      speeds_.fromPage.push_back(kCalls * 1000 / game_.callsFromPage(kCalls, 1));
      speeds_.bareFetch.push_back(bareSpeed("fetch"));
      speeds_.inFlight.push_back(kManyCalls * 1000 /
                                 game_.callsFromPage(kManyCalls, kManyInFlight));
      speeds_.bareMessage.push_back(bareSpeed("message"));
      speeds_.bareEvaluate.push_back(bareSpeed("evaluate"));
      speeds_.fromGame.push_back(kCalls * 1000 / game_.callsFromGame(kCalls, 1));
    }
  }

  int report() {
    Report report;
    const auto atLeast = [&report](const char* text, double figure, const char* unit,
                                   double bound) {
      report.add({text, figure, unit, Claim::Holds::kFrom, bound});
    };
    atLeast("page to game, one at a time / bare signal and fetch",
            ratio(speeds_.fromPage, speeds_.bareFetch), "x", kFetchBound);
    atLeast("page to game, 64 in flight / one at a time", ratio(speeds_.inFlight, speeds_.fromPage),
            "x", kInFlightBound);
    const FrameSpeeds frames = speedsOfFrames();
    atLeast("page to game, pumped 60 times a second, one at a time", frames.one, "a second",
            kFrameBound);
    report.tell("the same, 64 in flight", frames.many, "a second");
    report.tell("game to page, pumped 60 times a second", frames.fromGame, "a second");
    report.tell("page to game, one at a time", medianOf(speeds_.fromPage), "a second");
    report.tell("  bare signal and fetch", medianOf(speeds_.bareFetch), "a second");
    report.tell("  bare signal without data", medianOf(speeds_.bareSignal), "a second");
    report.tell("  bare message with reply", medianOf(speeds_.bareMessage), "a second");
    report.tell("page to game, 64 in flight", medianOf(speeds_.inFlight), "a second");
    report.tell("game to page, one at a time", medianOf(speeds_.fromGame), "a second");
    report.tell("  bare script and message", medianOf(speeds_.bareEvaluate), "a second");
    return report.finish();
  }

 private:
  static double ratio(const std::vector<double>& ours, const std::vector<double>& floor) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < ours.size(); ++i) ratios.push_back(ours[i] / floor[i]);
    return medianOf(ratios);
  }

  double bareSpeed(const std::string& kind) const {
    ChildProcess program({bare_.string(), kind, std::to_string(kCalls)}, "/dev/null");
    const auto line = program.nextLine();
    if (!line) {
      std::fprintf(stderr, "the bare program failed\n");
      std::exit(1);
    }
    return kCalls * 1000 / std::atof(line->c_str());
  }

  struct FrameSpeeds {
    double one;
    double many;
    double fromGame;
  };

  /// A game that draws 60 frames a second, and looks at the popups only once in each.
  FrameSpeeds speedsOfFrames() {
    GameLoop loop;
    const auto frame = [&loop] { loop.runFrames(1); };
    const double one = game_.callsFromPage(kFrameCalls, 1, frame);
    const double many = game_.callsFromPage(kManyCalls, kManyInFlight, frame);
    const double fromGame = game_.callsFromGame(kFrameCalls, 1, frame);
    return {kFrameCalls * 1000 / one, kManyCalls * 1000 / many, kFrameCalls * 1000 / fromGame};
  }

  const std::filesystem::path bare_;
  const int rounds_;
  BridgeGame game_;
  Speeds speeds_;
};

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
  const auto bare = std::filesystem::path(argv[0]).replace_filename("zovkpopup-bare-bridge");
  zovk::Bench bench(bare, rounds);
  bench.run();
  return bench.report();
}
