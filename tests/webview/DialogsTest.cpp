#include "ScreenWindows.h"
#include "WebPageFixture.h"

namespace zovk {
namespace {

// What a page would put in front of the player. What comes up would keep the second click from the
// page.
class HelperDialogs : public WebPageFixture {
 protected:
  static constexpr const char* kWhole = "position:fixed;inset:0;width:100%;height:100%";

  /// Clicks into the page twice and expects it to tell `heard` each time, on a screen with no
  /// more windows than before.
  void clickTwice(const char* heard) {
    helper_.sync();
    const int before = windowsOnScreen();
    for (int i = 0; i < 2; ++i) {
      screen_.clickPage();
      EXPECT_EQ(told(), heard);
      screen_.evaluate("1");
      helper_.sync();
      EXPECT_EQ(windowsOnScreen(), before);
    }
  }
};

// The click goes to a label: under the pointer a chooser shows its file in a window, a tooltip.
TEST_F(HelperDialogs, AFileChooserIsCancelled) {
  open("document.querySelector('input').oncancel = () => tell('cancelled');",
       std::string("<label style='") + kWhole + "'><input type=file hidden></label>");
  clickTwice("cancelled");
}

TEST_F(HelperDialogs, AColourChooserStaysAway) {
  open("document.querySelector('input').onclick = () => tell('clicked');",
       std::string("<input type=color style='") + kWhole + "'>");
  clickTwice("clicked");
}

TEST_F(HelperDialogs, APrintIsNotOffered) {
  open("addEventListener('click', () => { print(); tell('printed'); });");
  clickTwice("printed");
}

TEST_F(HelperDialogs, ARightClickShowsNoMenu) {
  open(
      "addEventListener('contextmenu', () => tell('menu'));"
      "addEventListener('click', () => tell('clicked'));");
  helper_.sync();
  const int before = windowsOnScreen();
  screen_.clickPage(3);
  EXPECT_EQ(told(), "menu");
  screen_.evaluate("1");
  helper_.sync();
  EXPECT_EQ(windowsOnScreen(), before);
  screen_.clickPage();
  EXPECT_EQ(told(), "clicked");
}

TEST_F(HelperDialogs, APageCannotTakeTheWholeScreen) {
  open(
      "const body = document.body;"
      "tell([String(document.fullscreenEnabled), typeof body.requestFullscreen,"
      "      typeof body.webkitRequestFullscreen]);");
  EXPECT_EQ(told(), (boost::json::value{"undefined", "undefined", "undefined"}));
}

TEST_F(HelperDialogs, AWindowThatNobodyClickedForStaysAway) {
  open("tell(String(window.open('/other')));");
  EXPECT_EQ(told(), "null");
  EXPECT_FALSE(helper_.came("web.policy"));
  EXPECT_FALSE(helper_.came("web.window"));
}

TEST_F(HelperDialogs, APageThatAsksForAPasswordShowsWhatTheServerSaysWithoutOne) {
  const std::string url =
      site_.handle("/secret", [](const httplib::Request&, httplib::Response& response) {
        response.status = 401;
        response.set_header("WWW-Authenticate", "Basic realm=\"popups\"");
        response.set_content("<title>Not for you</title>", "text/html");
      });
  screen_.open();
  screen_.load(url);
  EXPECT_EQ(screen_.evaluate("document.title"), "Not for you");
}

}  // namespace
}  // namespace zovk
