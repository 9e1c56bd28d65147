#include <filesystem>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "Picture.h"
#include "PopupScreen.h"
#include "SlowPage.h"

namespace zovk {
namespace {

constexpr const char* kLine = "#1a5fb4";

class HelperProgress : public testing::Test {
 protected:
  void load(const std::string& url) {
    helper_.send({{"type", "web.load"}, {"view", PopupScreen::kWebView}, {"url", url}});
    const HelperMessage question = helper_.await("web.policy");
    helper_.send({{"type", "web.decide"},
                  {"view", PopupScreen::kWebView},
                  {"decision", question.at("decision")},
                  {"allow", true}});
  }
  /// Takes a picture. Returns the number of pixels of the line along the top of the window.
  int linePixels() {
    const std::string path = (helper_.directory() / "window.png").string();
    const int id = ++lastPicture_;
    helper_.send({{"type", "snapshot"}, {"id", id}, {"window", 1}, {"path", path}});
    helper_.await("snapshot.done", {{"id", id}, {"done", true}});
    return pixelsOf(path, kLine, std::to_string(PopupScreen::kWidth) + "x3+0+0");
  }
  /// Takes pictures until the line is there, or, with `there` false, is gone.
  int awaitLine(bool there) {
    int pixels = linePixels();
    for (int i = 0; i < 100 && (pixels > 0) != there; ++i) pixels = linePixels();
    return pixels;
  }
  void openPlainScreen() {
    screen_.open();
    for (const char* name : {"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView",
                             "returnBtn", "refreshBtn"}) {
      screen_.hide(name);
    }
    helper_.sync();
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
  int lastPicture_ = 0;
};

TEST_F(HelperProgress, IsALineAtTheTopOfThePageUntilItHasLoaded) {
  SlowPage page;
  openPlainScreen();
  load(page.url());
  helper_.await("web.started");
  const int pixels = awaitLine(true);
  EXPECT_GT(pixels, 3 * PopupScreen::kWidth / 20);
  EXPECT_LT(pixels, 3 * PopupScreen::kWidth) << "not all of it has come";
  EXPECT_FALSE(helper_.came("web.finished"));
  page.letGo();
  helper_.await("web.finished");
  EXPECT_EQ(awaitLine(false), 0);
}

TEST_F(HelperProgress, ChangesNoPlaceThatTheGameHearsOf) {
  SlowPage page;
  openPlainScreen();
  helper_.await("window.size");
  while (helper_.came("view.frame")) {
  }
  load(page.url());
  awaitLine(true);
  page.letGo();
  helper_.await("web.finished");
  awaitLine(false);
  helper_.sync();
  EXPECT_FALSE(helper_.came("view.frame"));
  EXPECT_FALSE(helper_.came("window.size"));
}

TEST_F(HelperProgress, EndsWithALoadThatFailsOrIsStopped) {
  std::string gone;
  {
    SlowPage page;
    openPlainScreen();
    load(gone = page.url());
    awaitLine(true);
    helper_.send({{"type", "web.stop"}, {"view", PopupScreen::kWebView}});
    EXPECT_EQ(awaitLine(false), 0);
  }
  load(gone);
  helper_.await("web.provisionalFailed", {{"url", gone}});
  EXPECT_EQ(awaitLine(false), 0);
}

TEST_F(HelperProgress, EndsWithTheProcessOfThePage) {
  SlowPage page;
  openPlainScreen();
  load(page.url());
  awaitLine(true);
  helper_.send({{"type", "web.terminate"}, {"view", PopupScreen::kWebView}});
  helper_.await("web.terminated");
  EXPECT_EQ(awaitLine(false), 0);
}

TEST_F(HelperProgress, EndsWithTheView) {
  SlowPage page;
  openPlainScreen();
  load(page.url());
  awaitLine(true);
  helper_.send({{"type", "web.close"}, {"view", PopupScreen::kWebView}});
  EXPECT_EQ(awaitLine(false), 0);
}

}  // namespace
}  // namespace zovk
