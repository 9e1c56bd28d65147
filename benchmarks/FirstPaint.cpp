// When the player sees a popup: from the show call of a game of 60 frames a second to the first
// picture of the screen with the page in it, beside the time until the page has loaded. The floor
// is a bare program that is started for the same page.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "PixelWatch.h"
#include "PopupGame.h"
#include "Report.h"
#include "fixtures/ChildProcess.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

constexpr double kBound = 50;
constexpr double kShareOfBare = 0.15;
constexpr unsigned long kLoud = 0xff00aa;  // nothing else on the screen has it
constexpr int kMiddleX = 640;
constexpr int kMiddleY = 400;
constexpr int kFramesBetween = 45;
constexpr const char* kPage =
    "<!doctype html><meta charset=utf-8><title>Loud</title><style>html{background:#ff00aa}</style>"
    "<h1>Welcome back</h1><script>addEventListener('load', () => setTimeout(() => "
    "window.webkit.messageHandlers.ZOVKPopup.postMessage('{\"action\":\"skip\"}'), 1000))</script>";

struct Times {
  std::vector<double> painted;
  std::vector<double> loaded;
  std::vector<double> bare;
};

class Openings {
 public:
  Openings(PopupGame& game, PixelWatch& watch)
      : game_(game.loop), watch_(watch), loaded_(game.loaded) {}

  void run(Times& times) {
    game_.runUntil([this] { return watch_.colour() != kLoud; });
    game_.runFrames(kFramesBetween);
    loaded_.reset();
    bool answered = false;
    watch_.expect(kLoud);
    const auto start = PixelWatch::Clock::now();
    ZOVKPopup::showPopup("page", 0, [&](std::int32_t, const std::string&) { answered = true; });
    game_.runUntil([this] { return loaded_.has_value(); });
    times.loaded.push_back(Milliseconds(*loaded_ - start).count());
    game_.runUntil([&] { return answered; });
    if (!watch_.seen()) {
      std::fprintf(stderr, "a popup was never seen at (%d, %d): 0x%06lx is there\n", kMiddleX,
                   kMiddleY, watch_.colour());
      std::exit(1);
    }
    times.painted.push_back(Milliseconds(*watch_.seen() - start).count());
  }

 private:
  GameLoop& game_;
  PixelWatch& watch_;
  std::optional<PixelWatch::Clock::time_point>& loaded_;
};

/// Milliseconds until the bare program's page is on the screen, its start included.
double openBare(GameLoop& game, PixelWatch& watch, const std::string& program,
                const std::string& page) {
  game.runUntil([&] { return watch.colour() != kLoud; });
  game.runFrames(kFramesBetween);
  watch.expect(kLoud);
  const auto start = PixelWatch::Clock::now();
  const ChildProcess bare({program, "file://" + page, "stay"}, "/dev/null");
  game.runUntil([&] { return watch.seen().has_value(); });
  return Milliseconds(*watch.seen() - start).count();
}

int report(const Times& times) {
  Report report;
  const double painted = medianOf(times.painted);
  const double bare = medianOf(times.bare);
  report.add({.text = "show to the page on the screen, 60 frames a second, median",
              .figure = painted,
              .unit = "ms",
              .bound = kBound});
  report.add({.text = "show to the page on the screen / bare program, cold",
              .figure = painted / bare,
              .unit = "x",
              .bound = kShareOfBare});
  report.tell("show to the page on the screen, slowest", largestOf(times.painted), "ms");
  report.tell("show to loaded, 60 frames a second, median", medianOf(times.loaded), "ms");
  report.tell("bare program to its page on the screen, cold, median", bare, "ms");
  report.keep("show to the page on the screen", times.painted);
  report.keep("show to loaded", times.loaded);
  report.keep("bare program, cold", times.bare);
  return report.finish();
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const int openings = argc > 1 ? std::atoi(argv[1]) : 21;
  const std::string bare =
      (std::filesystem::path(argv[0]).parent_path() / "zovkpopup-bare-webkit").string();
  PopupGame game(kPage);
  PixelWatch watch(kMiddleX, kMiddleY);
  if (!game.start()) return 1;

  Times times;
  Openings opening(game, watch);
  opening.run(times);
  times = {};  // the first opening of a process is not counted as a warm one
  for (int i = 0; i < openings; ++i) opening.run(times);
  for (int i = 0; i < (openings + 2) / 3; ++i) {
    times.bare.push_back(openBare(game.loop, watch, bare, game.pagePath));
  }
  ZOVKPopupHost::shutDown();
  return report(times);
}
