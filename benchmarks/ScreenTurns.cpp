// What a turn of the screen and a press of a button take in a game of 60 frames a second: from the
// size event to the new layout on screen, and from the button's event to the game's callback.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "GameLoop.h"
#include "Report.h"
#include "fixtures/LocalBundle.h"
#include "fixtures/VirtualScreen.h"
#include "platform/linux/helper/HelperInspector.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTurns = 21;
constexpr int kClicks = 21;
constexpr double kTurnBound = 100;
constexpr double kFrameBound = 1;

/// What the log tells: when things happened, and in which frame.
struct Journal {
  Clock::time_point turnBegan;
  double turnTook = 0;
  int turns = 0;
  int loads = 0;
  bool pageIsThere = false;
  int frame = 0;
  int frameOfThePress = 0;

  void read(std::string_view line) {
    const auto ends = [line](const char* text) { return line.ends_with(text); };
    if (ends("viewWillTransitionToSize called")) turnBegan = Clock::now();
    if (ends("did remove the viewToRemove")) {
      turnTook = Milliseconds(Clock::now() - turnBegan).count();
      ++turns;
    }
    if (ends("Did start provisional navigation")) ++loads;
    if (ends("Did finish navigation")) pageIsThere = true;
    if (line.find("the user operation is: 2") != std::string_view::npos) frameOfThePress = frame;
  }
};

class Screen {
 public:
  Screen(GameLoop& game, Journal& journal, HelperInspector& inspector)
      : game_(game), journal_(journal), inspector_(inspector) {}

  void show(const ZOVKPopupComplete& complete) {
    journal_.pageIsThere = false;
    ZOVKPopup::showPopup("page", 0, complete);
    runUntil([this] { return journal_.pageIsThere; });
    game_.runFrames(30);
  }
  void fillGame(int width, int height) { game_.fill(width, height); }
  void runUntil(const std::function<bool()>& done) {
    game_.runUntil([&] {
      ++journal_.frame;
      return done();
    });
  }
  /// Makes a real press of the pointer on the button that leads back.
  void press() {
    bool painted = false;
    inspector_.sync([&](bool) { painted = true; });
    runUntil([&] { return painted; });
    const auto place = inspector_.viewFrame("returnBtn");
    if (!place || !place->visible) {
      std::fprintf(stderr, "there is no button to press\n");
      std::exit(1);
    }
    const int x = static_cast<int>(place->frame.x + place->frame.width / 2);
    const int y = static_cast<int>(place->frame.y + place->frame.height / 2);
    const std::string command =
        "xdotool mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1";
    if (std::system(command.c_str()) != 0) std::exit(1);
  }

 private:
  GameLoop& game_;
  Journal& journal_;
  HelperInspector& inspector_;
};

struct Turns {
  std::vector<double> fromTheEvent;
  std::vector<double> fromTheDisplay;
  int reloads = 0;
};

Turns measureTurns(Screen& screen, Journal& journal) {
  Turns measured;
  bool answered = false;
  screen.show([&](std::int32_t, const std::string&) { answered = true; });
  const int loads = journal.loads;
  VirtualScreen display;
  for (int i = 0; i < kTurns; ++i) {
    const int before = journal.turns;
    const auto start = Clock::now();
    const bool isUpright = i % 2 == 0;
    const int width = isUpright ? 800 : 1280;
    const int height = isUpright ? 1280 : 800;
    display.resize(width, height);
    screen.fillGame(width, height);
    screen.runUntil([&] { return journal.turns > before; });
    measured.fromTheDisplay.push_back(Milliseconds(Clock::now() - start).count());
    measured.fromTheEvent.push_back(journal.turnTook);
  }
  measured.reloads = journal.loads - loads;
  screen.press();
  screen.runUntil([&] { return answered; });
  return measured;
}

struct Clicks {
  std::vector<double> frames;
  std::vector<double> milliseconds;
};

Clicks measureClicks(Screen& screen, Journal& journal) {
  Clicks measured;
  for (int i = 0; i < kClicks; ++i) {
    int frameOfTheAnswer = 0;
    screen.show([&](std::int32_t, const std::string&) { frameOfTheAnswer = journal.frame; });
    const auto start = Clock::now();
    screen.press();
    screen.runUntil([&] { return frameOfTheAnswer != 0; });
    measured.milliseconds.push_back(Milliseconds(Clock::now() - start).count());
    measured.frames.push_back(frameOfTheAnswer - journal.frameOfThePress);
  }
  return measured;
}

int report(const Turns& turns, const Clicks& clicks) {
  Report report;
  report.add({.text = "size event to the new layout on screen, median",
              .figure = medianOf(turns.fromTheEvent),
              .unit = "ms",
              .bound = kTurnBound});
  report.add({.text = "page reloads over all turns", .figure = static_cast<double>(turns.reloads)});
  report.add({.text = "frames from the pump that hears of a press to the callback",
              .figure = largestOf(clicks.frames),
              .bound = kFrameBound});
  report.tell("size event to the new layout, slowest", largestOf(turns.fromTheEvent), "ms");
  report.tell("the same with the display and the window manager, median",
              medianOf(turns.fromTheDisplay), "ms");
  report.tell("from before the pointer moves to the callback, median",
              medianOf(clicks.milliseconds), "ms");
  report.keep("size event to the new layout", turns.fromTheEvent);
  return report.finish();
}

}  // namespace
}  // namespace zovk

int main() {
  using namespace zovk;
  if (!VirtualScreen::isThere()) {
    std::fprintf(stderr, "run it with scripts/with-display\n");
    return 1;
  }
  LocalBundle bundle;
  ScratchDirectory home;
  ZOVKPopupModel page;
  page.scene = "page";
  page.pop_freq = 2;
  page.pop_type = 2;
  bundle.addPage(page, answeringPage("skip", "", false));
  bundle.write();
  std::ofstream(std::filesystem::path(bundle.resourceDirectory()) / "Info.json")
      << R"({"ZOVK_DEBUG": true})";

  GameLoop game;
  Journal journal;
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-benchmark";
  settings.resourceDirectory = bundle.resourceDirectory();
  settings.dataDirectory = home.path().string();
  settings.nativeWindow = game.nativeWindow();
  settings.logSink = [&](std::string_view line) { journal.read(line); };
  const auto platform = makeDefaultPlatform(settings);
  if (!ZOVKPopupHost::setUp(platform)) return 1;
  game.runFrames(180);  // the helper gets warm while the game shows its own start

  auto& inspector = dynamic_cast<HelperInspector&>(platform->interfaces().userInterface);
  Screen screen(game, journal, inspector);
  const Turns turns = measureTurns(screen, journal);
  const Clicks clicks = measureClicks(screen, journal);
  ZOVKPopupHost::shutDown();
  return report(turns, clicks);
}
