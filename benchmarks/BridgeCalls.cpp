// How fast page and game call each other over the bridge, beside the same in a bare WebKitGTK
// program, in turns on the same machine.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BridgeGame.h"
#include "GameLoop.h"
#include "Statistics.h"
#include "support/ChildProcess.h"

namespace zovk {
namespace {

constexpr int kRounds = 7;
constexpr int kCalls = 2000;
constexpr int kManyCalls = 10'000;
constexpr int kManyInFlight = 64;
constexpr int kFrameCalls = 100;
// A signal says no more than that there is a call. What it is must be fetched, so the bare loop
// that fetches does the same work in one process.
constexpr double kFetchBound = 0.7;
constexpr double kInFlightBound = 6;

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
  explicit Bench(std::filesystem::path bare) : bare_(std::move(bare)) {}

  void run() {
    game_.callsFromPage(kManyCalls, kManyInFlight);  // warm
    game_.callsFromGame(kCalls, 1);
    for (int round = 0; round < kRounds; ++round) {
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
    const double fetch = ratio(speeds_.fromPage, speeds_.bareFetch);
    const double inFlight = ratio(speeds_.inFlight, speeds_.fromPage);
    const bool holds = fetch >= kFetchBound && inFlight >= kInFlightBound;
    std::printf("round trips a second, medians of %d rounds; ratios are medians of rounds\n",
                kRounds);
    std::printf("page to game, one at a time: %.0f, bare signal and fetch %.0f: %.2f (>= %.1f)\n",
                medianOf(speeds_.fromPage), medianOf(speeds_.bareFetch), fetch, kFetchBound);
    std::printf("  bare signal without data: %.0f: %.2f\n", medianOf(speeds_.bareSignal),
                ratio(speeds_.fromPage, speeds_.bareSignal));
    std::printf("  bare message with reply: %.0f\n", medianOf(speeds_.bareMessage));
    std::printf("page to game, %d in flight: %.0f: %.2f x one at a time (>= %.0f)\n", kManyInFlight,
                medianOf(speeds_.inFlight), inFlight, kInFlightBound);
    std::printf("game to page, one at a time: %.0f, bare script and message %.0f: %.2f\n",
                medianOf(speeds_.fromGame), medianOf(speeds_.bareEvaluate),
                ratio(speeds_.fromGame, speeds_.bareEvaluate));
    reportFrames();
    std::printf("%s\n", holds ? "holds" : "DOES NOT HOLD");
    return holds ? 0 : 1;
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

  /// A game that draws 60 frames a second, and looks at the popups only once in each.
  void reportFrames() {
    GameLoop loop;
    const auto frame = [&loop] { loop.runFrames(1); };
    const double one = game_.callsFromPage(kFrameCalls, 1, frame);
    const double many = game_.callsFromPage(kManyCalls, kManyInFlight, frame);
    const double fromGame = game_.callsFromGame(kFrameCalls, 1, frame);
    std::printf(
        "pumped once a frame at 60 a second: page to game %.0f, %d in flight %.0f, game to page "
        "%.0f\n",
        kFrameCalls * 1000 / one, kManyInFlight, kManyCalls * 1000 / many,
        kFrameCalls * 1000 / fromGame);
  }

  const std::filesystem::path bare_;
  BridgeGame game_;
  Speeds speeds_;
};

}  // namespace
}  // namespace zovk

int main(int /*argc*/, char** argv) {
  const auto bare = std::filesystem::path(argv[0]).replace_filename("zovkpopup-bare-bridge");
  zovk::Bench bench(bare);
  bench.run();
  return bench.report();
}
