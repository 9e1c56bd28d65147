// Monitors that go, change or were never there, on an X server of the test's own.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "GameStandIn.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr const char* kTwoWide = "2560x800";
constexpr const char* kNarrower = "2559x800";
constexpr Place kOnTheLeft{300, 200, 640, 400};
constexpr Place kOnTheRight{1580, 200, 640, 400};
const std::string kTheLeft = "1280/320x800/200+0+0";
const std::string kTheRight = "1280/320x800/200+1280+0";
constexpr const char* kTellKeys =
    "addEventListener('keydown', event => "
    "window.webkit.messageHandlers.ZOVKPopup.postMessage(event.key)); 0";
// The page is asked for this only when it is about to be drawn.
constexpr const char* kTellDrawing =
    "requestAnimationFrame(() => "
    "window.webkit.messageHandlers.ZOVKPopup.postMessage('drawn')); 0";

/// A screen for two monitors, without a window manager.
class HelperMonitors : public testing::Test {
 protected:
  void SetUp() override {
    // A screen of memory has no beam: the clock and the edges of its modes mean nothing.
    xrandr({"--newmode", kNarrower, "0", "2559", "0", "0", "0", "800", "0", "0", "0"});
    xrandr({"--addmode", "screen", kNarrower});
  }
  /// The toolkit knows a monitor only by its output, and this screen has one: a monitor that takes
  /// it ends the one before. The toolkit looks for monitors only when an output has another mode.
  void putMonitor(const std::string& place) {
    const std::string name = "monitor" + std::to_string(++monitors_);
    xrandr({"--setmonitor", name, place, "screen"});
    xrandr({"--output", "screen", "--mode", monitors_ % 2 == 0 ? kTwoWide : kNarrower});
  }
  void xrandr(std::vector<std::string> words) {
    words.insert(words.begin(), {"xrandr", "--display", screen_.name()});
    ASSERT_EQ(runProgram(words), 0);
  }
  void press(const std::string& key) {
    ASSERT_EQ(runProgram({"env", "DISPLAY=" + screen_.name(), "xdotool", "key", key}), 0);
  }

  BareScreen screen_{kTwoWide};

 private:
  int monitors_ = 0;
};

/// A page over the game there.
class PageOver {
 public:
  PageOver(const GameStandIn& game, const BareScreen& screen, const std::string& window = {})
      : helper(HelperUnderTest::Start::kSilent, screen.environment()) {
    HelperMessage greeting = helper.greeting();
    greeting["nativeWindow"] = game.id();
    if (!window.empty()) greeting["popupWindow"] = window;
    helper.send(greeting);
    helper.await("ready");
    helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
    page.fillWithWebView();
    page.show();
    page.loadPage("plain.html");
    page.evaluate(kTellKeys);
    helper.await("window.key", {{"window", 1}, {"key", true}});
  }
  void expectDrawn() {
    page.evaluate(kTellDrawing);
    helper.await("web.message", {{"body", "drawn"}});
  }

  HelperUnderTest helper;
  PopupScreen page{helper};
};

TEST_F(HelperMonitors, DrawThePageOnAPlaceThatBelongsToNone) {
  putMonitor(kTheRight);
  const GameStandIn game(kOnTheLeft, screen_.name());
  PageOver over(game, screen_);
  game.awaitPlace(game.popup(), kOnTheLeft);
  over.expectDrawn();
  press("k");
  over.helper.await("web.message", {{"body", "k"}});
}

TEST_F(HelperMonitors, DrawThePageWhenThePopupFollowsTheGameToSuchAPlaceAndBack) {
  putMonitor(kTheRight);
  GameStandIn game(kOnTheRight, screen_.name());
  PageOver over(game, screen_);
  over.expectDrawn();
  for (const Place& place : {kOnTheLeft, kOnTheRight, kOnTheLeft}) {
    game.move(place);
    game.awaitPlace(game.popup(), place);
    over.expectDrawn();
  }
}

TEST_F(HelperMonitors, DrawThePageWhenItsOwnIsUnplugged) {
  putMonitor(kTheLeft);
  const GameStandIn game(kOnTheLeft, screen_.name());
  PageOver over(game, screen_);
  over.expectDrawn();
  putMonitor(kTheRight);
  over.expectDrawn();
  game.awaitPlace(game.popup(), kOnTheLeft);
  press("k");
  over.helper.await("web.message", {{"body", "k"}});
}

TEST_F(HelperMonitors, DrawThePageOnceThereIsOneWhereverItIs) {
  for (const std::string& place : {kTheRight, kTheLeft}) {
    xrandr({"--fb", kTwoWide, "--output", "screen", "--off"});
    const GameStandIn game(kOnTheLeft, screen_.name());
    PageOver over(game, screen_);
    putMonitor(place);
    over.expectDrawn();
    game.awaitPlace(game.popup(), kOnTheLeft);
  }
}

TEST_F(HelperMonitors, MayChangeBeforeAPopupOfTheWholeScreenIsShown) {
  putMonitor(kTheLeft);
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, screen_.environment());
  helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
  helper.sync();
  putMonitor("1280/320x600/200+0+100");
  helper.await("screen", {{"screen", {0, 100, 1280, 600}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.size", {{"window", 1}, {"width", 1280}, {"height", 600}});
}

TEST_F(HelperMonitors, TakeAPopupOverAGameWithoutASizeAlongWhenTheyChange) {
  putMonitor(kTheLeft);
  const GameStandIn game({300, 200, 1, 1}, screen_.name());
  PageOver over(game, screen_);
  game.awaitPlace(game.popup(), {0, 0, 1280, 800});
  putMonitor("1280/320x600/200+0+100");
  game.awaitPlace(game.popup(), {0, 100, 1280, 600});
}

TEST_F(HelperMonitors, TakeAPopupOfTheWholeScreenAlongWhenTheyChange) {
  putMonitor(kTheLeft);
  const GameStandIn game(kOnTheLeft, screen_.name());
  PageOver over(game, screen_, "fullscreen");
  game.awaitPlace(game.popup(), {0, 0, 1280, 800});
  putMonitor("1280/320x600/200+0+100");
  over.helper.await("window.size", {{"window", 1}, {"width", 1280}, {"height", 600}});
  game.awaitPlace(game.popup(), {0, 100, 1280, 600});
  xrandr({"--fb", kTwoWide, "--output", "screen", "--off"});
  putMonitor(kTheRight);
  game.awaitPlace(game.popup(), {1280, 0, 1280, 800});
  putMonitor("1280/320x600/200+1280+100");
  game.awaitPlace(game.popup(), {1280, 100, 1280, 600});
  over.expectDrawn();
  press("k");
  over.helper.await("web.message", {{"body", "k"}});
}

}  // namespace
}  // namespace zovk
