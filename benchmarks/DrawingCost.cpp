// What drawing costs: the frames a second of a moving page, as the player sees them, and of the
// game beside it, and the processor time of both, with one way of drawing on the screen as it is.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

#include "PixelWatch.h"
#include "PopupGame.h"
#include "ProcessorTime.h"
#include "Report.h"
#include "fixtures/ChildProcess.h"
#include "fixtures/ProcessFacts.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array kWays = {"software", "plain", "hardware"};
constexpr std::chrono::seconds kWarmUp{2};
constexpr std::chrono::seconds kMeasured{5};
constexpr unsigned long kMark = 0xaa;  // the blue of each colour that holds a frame's number
constexpr unsigned long kNumbers = 0x10000;
constexpr const char* kPage = R"(<!doctype html><meta charset=utf-8><title>Moving</title>
<style>
  html { background: rgba(20, 12, 6, .5) }
  body { margin: 0; overflow: hidden }
  canvas { position: fixed; left: 0; top: 0 }
  div { position: fixed; left: calc(50% - 20px); top: calc(50% - 20px); width: 40px; height: 40px }
</style>
<canvas width=600 height=400></canvas><div></div>
<script>
  const picture = document.querySelector('canvas'), box = document.querySelector('div');
  const brush = picture.getContext('2d');
  for (let i = 0; i < 60; ++i) {
    brush.fillStyle = `hsl(${6 * i}, 80%, 50%)`;
    brush.fillRect(10 * i, 0, 10, 400);
  }
  let frame = 0;
  function move() {
    ++frame;
    const x = frame * 6 % (innerWidth - 600), y = frame * 4 % (innerHeight - 400);
    picture.style.transform = `translate(${x}px, ${y}px)`;
    box.style.background = `rgb(${frame >> 8 & 255}, ${frame & 255}, 170)`;
    requestAnimationFrame(move);
  }
  move();
</script>)";

/// Returns the number of the page's frame that has this colour.
std::optional<unsigned long> numberIn(unsigned long colour) {
  if ((colour & 0xff) != kMark) return std::nullopt;
  return colour >> 8;
}

/// What a few seconds of the game were like.
struct Play {
  double seconds = 0;
  std::vector<double> work;          // of each frame of the game, in milliseconds
  std::vector<unsigned long> shown;  // the numbers of the page's frames on the screen
  ProcessorTime used;
};

Play play(GameLoop& game, PixelWatch& watch) {
  Play result;
  const ProcessorTime before = ProcessorTime::now(watch);
  watch.follow();
  const auto start = Clock::now();
  result.work = game.runUntil([&] { return Clock::now() - start >= kMeasured; });
  for (const unsigned long colour : watch.followed()) {
    if (const auto number = numberIn(colour)) result.shown.push_back(*number);
  }
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  result.used = ProcessorTime::now(watch) - before;
  return result;
}

void tellAll(Report& report, const std::string& which, const Play& alone, const Play& popup) {
  const auto tell = [&](const char* what, double figure, const char* unit) {
    report.tell(which + ": " + what, figure, unit);
  };
  const auto rate = [&](const char* what, const Play& play, double count, const char* unit) {
    tell(what, count / play.seconds, unit);
  };
  constexpr const char* kFrames = "frames/s";
  constexpr const char* kProcessors = "processors";
  const auto shown = static_cast<double>(popup.shown.size());
  const unsigned long drawn = popup.shown.back() + kNumbers - popup.shown.front();
  rate("page", popup, shown - 1, kFrames);
  rate("page, frames it drew", popup, static_cast<double>(drawn % kNumbers), kFrames);
  rate("game", popup, static_cast<double>(popup.work.size()), kFrames);
  rate("game without a popup", alone, static_cast<double>(alone.work.size()), kFrames);
  tell("median frame", medianOf(popup.work), "ms");
  tell("median frame without a popup", medianOf(alone.work), "ms");
  tell("worst frame", largestOf(popup.work), "ms");
  tell("worst frame without a popup", largestOf(alone.work), "ms");
  const ProcessorTime& used = popup.used;
  rate("processors", popup, used.game + used.helper + used.web, kProcessors);
  rate("processors, game", popup, used.game, kProcessors);
  rate("processors, game without a popup", alone, alone.used.game, kProcessors);
  rate("processors, helper", popup, used.helper, kProcessors);
  rate("processors, WebKit's processes", popup, used.web, kProcessors);
  rate("processors, X server", popup, used.screen, kProcessors);
  rate("processors, X server without a popup", alone, alone.used.screen, kProcessors);
}

/// Returns the GL renderer that the helper finds here, whether or not it draws with it.
std::string renderer() {
  const pid_t helper = childrenOf(getpid()).at(0);
  const auto program = std::filesystem::read_symlink("/proc/" + std::to_string(helper) + "/exe");
  ChildProcess asked({program.string(), "--renderer", "x11"}, "/dev/null");
  std::string name;
  while (const auto line = asked.nextLine()) {
    if (!line->empty()) name = *line;
  }
  return name.empty() ? "none" : name;
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const std::string way = argc == 2 ? argv[1] : "";
  if (std::find(kWays.begin(), kWays.end(), way) == kWays.end()) {
    std::fprintf(stderr, "usage: %s software|plain|hardware\n", argv[0]);
    return 2;
  }
  setenv("ZOVKPOPUP_DRAWING", way.c_str(), 1);
  PopupGame game(kPage);
  const SDL_Point screen = game.loop.fillScreen();
  PixelWatch watch(screen.x / 2, screen.y / 2);
  if (!game.start()) return 1;

  const Play alone = play(game.loop, watch);
  ZOVKPopup::showPopup("page", 0, [](std::int32_t code, const std::string&) {
    std::fprintf(stderr, "the page ended with %d\n", static_cast<int>(code));
  });
  game.loop.runUntil([&] { return numberIn(watch.colour()).has_value(); });
  const auto seen = Clock::now();
  game.loop.runUntil([&] { return Clock::now() - seen >= kWarmUp; });
  const Play popup = play(game.loop, watch);
  if (popup.shown.empty()) {
    std::fprintf(stderr, "the page went away\n");
    return 1;
  }
  Report report;
  report.note("GL renderer: " + renderer());
  ZOVKPopupHost::shutDown();
  const std::string size = std::to_string(screen.x) + "x" + std::to_string(screen.y);
  tellAll(report, way + ", " + size, alone, popup);
  return report.finish();
}
