#include <chrono>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "GameStandIn.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr Place kGame{300, 200, 640, 400};

/// A helper for popups over the game; its window takes all that there is to cover.
class PopupOver {
 public:
  explicit PopupOver(const GameStandIn& game, const std::vector<std::string>& environment = {},
                     const std::string& window = {})
      : helper(HelperUnderTest::Start::kSilent, environment) {
    HelperMessage greeting = helper.greeting();
    greeting["nativeWindow"] = game.id();
    if (!window.empty()) greeting["popupWindow"] = window;
    helper.send(greeting);
    ready = helper.await("ready");
  }
  void show() {
    helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
    helper.send({{"type", "window.show"}, {"window", 1}});
  }
  void open() {
    show();
    helper.await("window.key", {{"window", 1}, {"key", true}});
  }
  void close() { helper.send({{"type", "window.close"}, {"window", 1}}); }

  HelperUnderTest helper;
  HelperMessage ready;
};

boost::json::array frameOf(const Place& place) {
  return {place.x, place.y, place.width, place.height};
}

TEST(HelperPlace, IsTheFrameOfTheGamesWindowAndOfItsTitle) {
  const GameStandIn game(kGame);
  PopupOver popup(game);
  EXPECT_EQ(popup.ready.at("screen"), frameOf(game.place()));
  popup.open();
  popup.helper.await("window.size", {{"window", 1}, {"width", 640}, {"height", 400}});
  game.awaitPlace(game.popup(), game.place());
  EXPECT_TRUE(game.isDialog(game.popup()));
  EXPECT_EQ(game.title(game.popup()), "The Game");
}

TEST(HelperPlace, HasTheNameOfTheProgramWhenTheGamesWindowHasNoTitle) {
  GameStandIn game(kGame);
  game.setTitle({});
  PopupOver popup(game);
  popup.open();
  EXPECT_EQ(game.title(game.popup()), popup.helper.greeting().at("application").as_string());
}

TEST(HelperPlace, FollowsTheGamesWindow) {
  GameStandIn game(kGame);
  PopupOver popup(game);
  popup.open();
  game.move({80, 60, 500, 700});
  popup.helper.await("window.size", {{"window", 1}, {"width", 500}, {"height", 700}});
  popup.helper.await("screen", {{"screen", frameOf(game.place())}});
  game.awaitPlace(game.popup(), game.place());
}

TEST(HelperPlace, StaysWhenTheGameIsMinimisedForTheLossOfTheKeyboard) {
  GameStandIn game(kGame);
  PopupOver popup(game);
  popup.open();
  const std::uint64_t window = game.popup();
  const Place before = game.place();
  game.minimise();
  game.awaitViewable(game.id(), false);
  popup.helper.await("window.key", {{"window", 1}, {"key", true}});
  game.awaitViewable(window, true);
  game.awaitPlace(window, before);
  popup.close();
  game.awaitFocus(true);
  game.awaitViewable(game.id(), true);
}

TEST(HelperPlace, IsNotInFrontOfTheGameUntilThatIsBack) {
  GameStandIn game(kGame);
  PopupOver popup(game);
  popup.open();
  const std::uint64_t window = game.popup();
  game.minimise();
  game.awaitPopup(0);
  game.activate();
  game.awaitPopup(window);
}

TEST(HelperPlace, IsOnTheWorkSpaceOfTheGame) {
  const BareScreen screen;
  const GameStandIn game(kGame, screen.name());
  PopupOver popup(game, screen.environment());
  popup.open();
  WorkSpaces spaces(screen);
  spaces.put(game.popup(), 0);
  spaces.put(game.id(), 1);
  EXPECT_EQ(spaces.awaitWish(game.popup()), 1U);
  spaces.put(game.popup(), 1);
  spaces.put(game.id(), 1);  // nothing to ask for
  spaces.put(game.id(), 2);
  EXPECT_EQ(spaces.awaitWish(game.popup()), 2U);
}

TEST(HelperPlace, StaysOnItsWorkSpaceWhileTheGameIsMinimised) {
  const BareScreen screen;
  GameStandIn game(kGame, screen.name());
  PopupOver popup(game, screen.environment());
  popup.open();
  const std::uint64_t window = game.popup();
  WorkSpaces spaces(screen);
  spaces.put(window, 0);
  game.setShown(false);
  game.awaitPopup(0);
  spaces.put(game.id(), 1);
  game.setShown(true);
  EXPECT_EQ(spaces.awaitWish(window), 1U);
  game.awaitPopup(window);
  spaces.put(game.id(), 2);
  EXPECT_EQ(spaces.awaitWish(window), 2U) << "one wish before, when the game came back";
}

TEST(HelperPlace, GoesAndComesWithAGameThatThePlayerMinimises) {
  GameStandIn game(kGame);
  PopupOver popup(game);
  popup.open();
  const std::uint64_t window = game.popup();
  // The player does it later than a game that minds the loss of the keyboard.
  const auto later = std::chrono::steady_clock::now() + std::chrono::milliseconds(1200);
  while (std::chrono::steady_clock::now() < later) popup.helper.sync();
  game.minimise();
  game.awaitViewable(window, false);
  game.activate();
  game.awaitViewable(window, true);
  EXPECT_EQ(game.popup(), window);
}

TEST(HelperPlace, IsTheGamesWithoutAWindowManagerToo) {
  const BareScreen screen;
  GameStandIn game({700, 200, 500, 400}, screen.name());
  PopupOver popup(game, screen.environment());
  popup.open();
  popup.helper.await("window.size", {{"window", 1}, {"width", 500}, {"height", 400}});
  game.awaitPlace(game.popup(), game.place());
  game.move({20, 30, 600, 300});
  popup.helper.await("window.size", {{"window", 1}, {"width", 600}, {"height", 300}});
  game.awaitPlace(game.popup(), game.place());
  popup.close();
  game.awaitFocus(true);
  popup.helper.await("window.other");
}

TEST(HelperPlace, IsTheWholeScreenWithoutAGameAndAWindowManager) {
  const BareScreen screen;
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, screen.environment());
  helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.size", {{"window", 1}, {"width", 1280}, {"height", 800}});
  helper.await("window.key", {{"window", 1}, {"key", true}});
}

std::vector<std::string> with(std::vector<std::string> environment, const std::string& more) {
  environment.push_back(more);
  return environment;
}

TEST(HelperPlace, IsTheWholeScreenWhenTheGameAsksForIt) {
  const BareScreen screen;
  const GameStandIn game({700, 200, 500, 400}, screen.name());
  PopupOver popup(game, screen.environment(), "FullScreen");
  popup.open();
  popup.helper.await("window.size", {{"window", 1}, {"width", 1280}, {"height", 800}});
  game.awaitPlace(game.popup(), {0, 0, 1280, 800});
}

TEST(HelperPlace, IsWhatThePlayerAsksForBeforeTheGame) {
  const BareScreen screen;
  const GameStandIn game({700, 200, 500, 400}, screen.name());
  PopupOver popup(game, with(screen.environment(), "ZOVKPOPUP_WINDOW=AUTO"), "fullscreen");
  popup.open();
  game.awaitPlace(game.popup(), game.place());
}

TEST(HelperPlace, IsTheGamesWhereTheWishIsNotUnderstoodWhichTheLogSays) {
  const BareScreen screen;
  const GameStandIn game({700, 200, 500, 400}, screen.name());
  PopupOver popup(game, screen.environment(), "huge");
  popup.helper.await("log", {{"line", "helper: no kind of window is called \"huge\""}});
  popup.open();
  game.awaitPlace(game.popup(), game.place());
}

TEST(HelperPlace, IsNotManagedInTheSessionOfAHandheld) {
  GameStandIn game(kGame);
  PopupOver popup(game, {"GAMESCOPE_WAYLAND_DISPLAY=gamescope-0"});
  popup.open();
  game.awaitPlace(game.popup(), game.place());
  EXPECT_TRUE(game.isOverrideRedirect(game.popup()));
  popup.close();
  game.awaitFocus(true);
}

TEST(HelperPlace, IsAboveTheGameWhereTheWindowManagerPutsItBelow) {
  const BareScreen screen;
  const SimpleManager manager(screen, SimpleManager::Habit::kLowers);
  const GameStandIn game({300, 200, 640, 400}, screen.name());
  PopupOver popup(game, screen.environment());
  popup.show();
  popup.helper.sync();
  game.awaitAbove(game.popup());
  game.awaitPlace(game.popup(), game.place());
  EXPECT_FALSE(game.isOverrideRedirect(game.popup()));
}

TEST(HelperPlace, IsTheWholeScreenWhereTheWindowManagerDoesNotPutItOverTheGame) {
  const BareScreen screen;
  const GameStandIn game({300, 200, 640, 400}, screen.name());
  const SimpleManager manager(screen, SimpleManager::Habit::kShifts);
  PopupOver popup(game, screen.environment());
  popup.show();
  popup.helper.await("window.size", {{"window", 1}, {"width", 640}, {"height", 400}});
  popup.helper.await("window.size", {{"window", 1}, {"width", 1280}, {"height", 800}});
  game.awaitPlace(game.popup(), {0, 0, 1280, 800});
  popup.helper.send(
      {{"type", "window.create"}, {"window", 2}, {"view", 2}, {"frame", {0, 0, 0, 0}}});
  popup.helper.send({{"type", "window.show"}, {"window", 2}});
  EXPECT_EQ(popup.helper.await("window.size", {{"window", 2}}).at("width"), 1280) << "at once";
}

TEST(HelperPlace, IsToldWhenThePopupComesUpNowhere) {
  const BareScreen screen;
  GameStandIn game(kGame, screen.name());
  const IdleManager manager(screen);
  PopupOver popup(game, screen.environment());
  popup.show();
  popup.helper.await("log");  // it tries the whole screen first
  popup.helper.await("window.stuck", {{"window", 1}, {"display", "x11"}});
}

}  // namespace
}  // namespace zovk
