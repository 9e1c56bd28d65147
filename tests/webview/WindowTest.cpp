#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "OtherWindow.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

/// Readies a silent helper whose popups stand before that window.
void greetFor(HelperUnderTest& helper, std::uint64_t gameWindow) {
  HelperMessage greeting = helper.greeting();
  greeting["nativeWindow"] = gameWindow;
  helper.send(greeting);
  helper.await("ready");
}

TEST(HelperWindow, TakesTheFrameOfTheGame) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.createWindow();
  screen.show();
  const HelperMessage size = helper.await("window.size", {{"window", 1}});
  EXPECT_EQ(size.at("width"), PopupScreen::kWidth);
  EXPECT_EQ(size.at("height"), PopupScreen::kHeight);
  EXPECT_EQ(size.at("safeArea"), (boost::json::array{0, 0, 0, 0}));
}

TEST(HelperWindow, FillsTheScreenWhenTheFrameIsEmpty) {
  HelperUnderTest helper;
  const boost::json::array screen = helper.ready().at("screen").as_array();
  helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.size", {{"window", 1}, {"width", screen[2]}, {"height", screen[3]}});
}

TEST(HelperWindow, TellsItsSizeWhenItIsTurned) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.open();
  helper.await("window.key", {{"window", 1}, {"key", true}});
  ASSERT_EQ(runProgram({"xdotool", "getactivewindow", "windowsize", "700", "390"}), 0);
  helper.await("window.size", {{"window", 1}, {"width", 700}, {"height", 390}});
  helper.await("view.frame", {{"view", PopupScreen::kWebView}, {"frame", {0, 0, 700, 390}}});
}

TEST(HelperWindow, LetsTheTabKeyGoFromThePageToTheButtonsAndBack) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  for (const char* name : {"returnBtn", "crossBtn", "refreshBtn", "aloneConfirmStackView"}) {
    screen.hide(name);
  }
  helper.sync();
  helper.await("window.key", {{"window", 1}, {"key", true}});
  ASSERT_EQ(runProgram({"xdotool", "key", "Tab", "space"}), 0);
  helper.await("action", {{"action", "rejectButtonDidClicked"}});
  ASSERT_EQ(runProgram({"xdotool", "key", "Tab", "space"}), 0);
  helper.await("action", {{"action", "confirmButtonDidClicked"}});
  screen.evaluate(
      "addEventListener('keydown', event => "
      "window.webkit.messageHandlers.ZOVKPopup.postMessage(event.key)); 0");
  ASSERT_EQ(runProgram({"xdotool", "key", "Tab", "k"}), 0);
  helper.await("web.message", {{"body", "k"}});
}

TEST(HelperWindow, BecomesTheKeyWindowWhenItIsShown) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.open();
  helper.await("window.key", {{"window", 1}, {"key", true}});
}

TEST(HelperWindow, GivesKeysToThePage) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.await("window.key", {{"window", 1}, {"key", true}});
  screen.evaluate(
      "addEventListener('keydown', event => "
      "window.webkit.messageHandlers.ZOVKPopup.postMessage(event.key)); 0");
  ASSERT_EQ(runProgram({"xdotool", "key", "k"}), 0);
  EXPECT_EQ(helper.await("web.message").at("body"), "k");
}

TEST(HelperWindow, IsSeenInItsSnapshot) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  const std::string path = (helper.directory() / "window.png").string();
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
  helper.await("snapshot.done", {{"id", 1}, {"done", true}});
  // The page is of one green, #2e7d32, which must be what most of the picture shows.
  const std::string colour = (helper.directory() / "colour.txt").string();
  ASSERT_EQ(runProgram({"convert", path, "-gravity", "center", "-crop", "100x100+0+0", "-scale",
                        "1x1!", "-depth", "8", "txt:" + colour}),
            0);
  std::ifstream file(colour);
  const std::string text((std::istreambuf_iterator<char>(file)), {});
  EXPECT_NE(text.find("#2E7D32"), std::string::npos) << text;
}

TEST(HelperWindow, StandsBeforeTheWindowOfTheGame) {
  OtherWindow game;
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  greetFor(helper, game.id());
  PopupScreen screen(helper);
  screen.open();
  helper.await("window.key", {{"window", 1}, {"key", true}});
  EXPECT_TRUE(game.hasTransient());
}

TEST(HelperWindow, TellsWhenTheWindowOfTheGameBecomesActiveAndGivesItTheKeyboardBack) {
  OtherWindow game;
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  greetFor(helper, game.id());
  PopupScreen screen(helper);
  screen.open();
  helper.await("window.key", {{"window", 1}, {"key", true}});
  game.awaitFocus(false);
  game.activate();
  helper.await("window.other");
  helper.await("window.key", {{"window", 1}, {"key", false}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.key", {{"window", 1}, {"key", true}});
  game.awaitFocus(false);
  helper.send({{"type", "window.close"}, {"window", 1}});
  game.awaitFocus(true);
  helper.await("window.other");
}

TEST(HelperWindow, IsOffTheScreenBeforeTheGameGetsTheKeyboardBack) {
  OtherWindow game;
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  greetFor(helper, game.id());
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.await("window.key", {{"window", 1}, {"key", true}});
  game.watchTransient();
  helper.send({{"type", "window.close"}, {"window", 1}});
  EXPECT_TRUE(game.getsFocusAfterTransientLeft());
}

TEST(HelperWindow, SurvivesAWindowOfTheGameThatIsGone) {
  std::uint64_t id = 0;
  {
    const OtherWindow gone;
    id = gone.id();
  }
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  greetFor(helper, id);
  PopupScreen screen(helper);
  screen.open();
  helper.send({{"type", "window.close"}, {"window", 1}});
  helper.sync();
}

}  // namespace
}  // namespace zovk
