#include <string>

#include <gtest/gtest.h>

#include "PopupKinds.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr const char* kFocus = "document.activeElement.id";
// Tells of each press, and of the key that leaves.
constexpr const char* kTell =
    "function post(text) { window.webkit.messageHandlers.ZOVKPopup.postMessage(text); }"
    "document.addEventListener('click', function (event) { post('pressed ' + event.target.id); });"
    "document.addEventListener('focusin', function (event) { post('at ' + event.target.id); }); 0";
constexpr const char* kKeepEscape =
    "document.addEventListener('keydown', function (event) {"
    "  if (event.key === 'Escape') { event.preventDefault(); post('kept'); } }); 0";

class HelperPad : public testing::Test {
 protected:
  void open(std::size_t kind) {
    screen_.createWindow();
    screen_.loadLayout();
    screen_.createWebView();
    screen_.show();
    screen_.loadPage("pad.html");
    const auto kinds = popupKinds();
    for (const std::string& name : kinds.at(kind).hidden) screen_.hide(name);
    screen_.evaluate(kTell);
    helper_.sync();
  }
  void pad(const std::string& press) {
    helper_.send({{"type", "pad.press"}, {"press", press}, {"pressName", "A"}, {"leaveName", "B"}});
  }
  void goTo(const std::string& press, const std::string& id) {
    pad(press);
    helper_.await("web.message", {{"body", "at " + id}});
  }
  void expectAction(const std::string& button) {
    helper_.await("action", {{"layout", 1}, {"action", actionOf(button)}});
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperPad, GoesToTheLinkThatLiesInEachDirection) {
  open(0);
  goTo("down", "first");  // nothing had the focus
  goTo("right", "second");
  goTo("down", "fourth");
  goTo("left", "third");
  goTo("up", "first");
}

TEST_F(HelperPad, PressesTheLinkThatHasTheFocus) {
  open(0);
  goTo("down", "first");
  goTo("right", "second");
  pad("press");
  helper_.await("web.message", {{"body", "pressed second"}});
}

TEST_F(HelperPad, GoesFromThePageToTheButtonsAndBack) {
  open(2);
  goTo("down", "first");
  goTo("down", "third");
  pad("down");
  pad("press");
  expectAction("rejectBtn");
  pad("right");
  pad("press");
  expectAction("confirmBtn");
  goTo("up", "fourth");
}

TEST_F(HelperPad, LeavesLikeTheEscapeKey) {
  open(0);
  pad("leave");
  expectAction("crossBtn");
}

TEST_F(HelperPad, LeavesThePageWhatItHasAUseFor) {
  open(0);
  screen_.evaluate(kKeepEscape);
  pad("leave");
  helper_.await("web.message", {{"body", "kept"}});
  EXPECT_FALSE(helper_.came("action"));
}

TEST_F(HelperPad, ShowsWhatIsLeftOfALongPageBeforeItGoesToTheButtons) {
  open(2);
  screen_.evaluate("document.body.style.height = innerHeight * 1.4 + 'px'; 0");
  goTo("down", "first");
  goTo("down", "third");
  screen_.evaluate("addEventListener('scroll', () => post('scrolled')); 0");
  pad("down");
  helper_.await("web.message", {{"body", "scrolled"}});
  EXPECT_EQ(screen_.evaluate(kFocus).as_string(), "third");
  EXPECT_FALSE(helper_.came("action"));
}

TEST_F(HelperPad, LeavesALongPageWhereItIsWhileTheFocusIsOnAButton) {
  open(2);
  screen_.evaluate("document.body.style.height = innerHeight * 1.4 + 'px'; 0");
  goTo("down", "first");
  goTo("down", "third");
  pad("down");  // to the end of the page
  pad("down");
  pad("press");
  expectAction("rejectBtn");
  screen_.evaluate("scrollTo(0, 0); 0");
  pad("down");
  pad("press");
  expectAction("rejectBtn");
  EXPECT_EQ(screen_.evaluate("scrollY"), 0);
}

TEST_F(HelperPad, LeavesAScreenWithoutAPageToo) {
  screen_.createWindow();
  screen_.loadLayout();
  screen_.show();
  pad("leave");
  expectAction("crossBtn");
}

TEST_F(HelperPad, PassesOverWhatCannotBeSeenOrUsed) {
  open(0);
  screen_.evaluate(
      "document.getElementById('second').disabled = true; "
      "document.getElementById('third').style.visibility = 'hidden'; 0");
  goTo("down", "first");
  goTo("down", "fourth");
}

TEST_F(HelperPad, WithoutAWindowOrWithAnUnknownPressHasNoEffect) {
  pad("up");
  helper_.sync();
  open(0);
  pad("sideways");
  goTo("down", "first");
}

}  // namespace
}  // namespace zovk
