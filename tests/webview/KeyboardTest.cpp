#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "Picture.h"
#include "PopupKinds.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr const char* kTellKeys =
    "addEventListener('keydown', event => window.webkit.messageHandlers.ZOVKPopup.postMessage("
    "event.key + (event.repeat ? ' again' : ''))); 0";

class HelperKeyboard : public testing::Test {
 protected:
  void open(const PopupKind& kind, const std::string& layout = "ZOVKPopupView") {
    screen_.createWindow();
    screen_.loadLayout(layout);
    screen_.createWebView();
    screen_.show();
    screen_.loadPage("plain.html");
    for (const std::string& name : kind.hidden) screen_.hide(name);
    helper_.sync();
    helper_.await("window.key", {{"window", 1}, {"key", true}});
  }
  static void press(const std::string& keys) {
    ASSERT_EQ(runProgram({"xdotool", "key", keys}), 0) << keys;
  }
  void expectAction(const std::string& button) {
    helper_.await("action", {{"layout", 1}, {"action", actionOf(button)}});
  }
  /// The page tells of a key that was pressed after all that a test looks for.
  void expectNoAction() {
    screen_.evaluate(kTellKeys);
    press("k");
    helper_.await("web.message", {{"body", "k"}});
    EXPECT_FALSE(helper_.came("action"));
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

class HelperKeyboardOfAKind
    : public HelperKeyboard,
      public testing::WithParamInterface<std::tuple<PopupKind, const char*>> {};

TEST_P(HelperKeyboardOfAKind, GoesFromThePageThroughTheShownButtonsAndBackToThePage) {
  const auto& [kind, layout] = GetParam();
  open(kind, layout);
  for (const std::string& button : kind.buttons) {
    press("Tab");
    press("Return");
    expectAction(button);
    EXPECT_FALSE(helper_.came("action"));
  }
  press("Tab");
  expectNoAction();
}

TEST_P(HelperKeyboardOfAKind, GoesBackwardsWithShift) {
  const auto& [kind, layout] = GetParam();
  open(kind, layout);
  for (auto button = kind.buttons.rbegin(); button != kind.buttons.rend(); ++button) {
    press("shift+Tab");
    press("Return");
    expectAction(*button);
  }
}

TEST_P(HelperKeyboardOfAKind, EscapeIsTheCornerButtonThatIsShown) {
  const auto& [kind, layout] = GetParam();
  open(kind, layout);
  press("Escape");
  const std::string& first = kind.buttons.front();
  if (first == "crossBtn" || first == "returnBtn") {
    expectAction(first);
    EXPECT_FALSE(helper_.came("action"));
    press("Tab");
    press("Escape");  // with the keyboard on the button as well as on the page
    expectAction(first);
  } else {
    expectNoAction();
  }
}

INSTANTIATE_TEST_SUITE_P(Helper, HelperKeyboardOfAKind,
                         testing::Combine(testing::ValuesIn(popupKinds()),
                                          testing::Values("ZOVKPopupView",
                                                          "ZOVKPopupViewLandscape")),
                         [](const auto& test) {
                           return std::string(std::get<0>(test.param).name) + "In" +
                                  std::get<1>(test.param);
                         });

TEST_F(HelperKeyboard, EscapeDoesNothingWhereOnlyTheRefreshIsShown) {
  PopupKind refreshOnly = popupKinds()[1];
  refreshOnly.hidden.emplace_back("returnBtn");
  open(refreshOnly);
  press("Escape");
  expectNoAction();
}

TEST_F(HelperKeyboard, APageThatUsesEscapeKeepsIt) {
  open(popupKinds()[0]);
  screen_.evaluate(
      "window.use = event => event.preventDefault(); addEventListener('keydown', window.use); 0");
  press("Escape");
  expectNoAction();
  screen_.evaluate("removeEventListener('keydown', window.use); 0");
  press("Escape");
  expectAction("crossBtn");
}

TEST_F(HelperKeyboard, EscapeThatIsHeldDownPressesOnce) {
  open(popupKinds()[0]);
  screen_.evaluate(kTellKeys);
  ASSERT_EQ(runProgram({"xdotool", "keydown", "Escape"}), 0);
  expectAction("crossBtn");
  for (int i = 0; i < 3; ++i) helper_.await("web.message", {{"body", "Escape again"}});
  ASSERT_EQ(runProgram({"xdotool", "keyup", "Escape"}), 0);
  press("k");
  helper_.await("web.message", {{"body", "k"}});
  EXPECT_FALSE(helper_.came("action"));
  press("Escape");
  expectAction("crossBtn");
}

TEST_F(HelperKeyboard, SeesWhereItIs) {
  open(popupKinds()[2]);
  const std::string path = (helper_.directory() / "window.png").string();
  const auto focusPixels = [&] {
    helper_.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
    helper_.await("snapshot.done", {{"id", 1}, {"done", true}});
    return pixelsOf(path, "#4c9aff");
  };
  EXPECT_EQ(focusPixels(), 0);
  press("Tab");
  press("Return");
  expectAction("rejectBtn");
  EXPECT_GT(focusPixels(), 300) << "a ring of three pixels around a button";
}

}  // namespace
}  // namespace zovk
