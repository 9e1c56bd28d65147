#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "Picture.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

/// A copy of the bundle, for a studio to change.
class StudioBundle {
 public:
  StudioBundle() { fs::copy(HELPER_BUNDLE, path(), fs::copy_options::recursive); }
  std::string path() const { return (directory_.path() / "Studio.bundle").string(); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(fs::path(path()) / name) << text;
  }

 private:
  ScratchDirectory directory_;
};

class HelperStyle : public testing::Test {
 protected:
  boost::json::array placeOfTheCross(const std::string& layout = "ZOVKPopupView") {
    screen_.createWindow();
    screen_.loadLayout(layout, bundle_.path());
    screen_.createWebView();
    screen_.show();
    return screen_.place(PopupScreen::view("crossBtn"));
  }

  StudioBundle bundle_;
  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperStyle, OfTheStudioGoesBeforeTheOwnOne) {
  bundle_.write("ZOVKPopupStyle.css", "button.popup-corner { min-width: 90px; min-height: 60px; }");
  const boost::json::array place = placeOfTheCross();
  EXPECT_EQ(place[2], 90);
  EXPECT_EQ(place[3], 60);
}

TEST_F(HelperStyle, ThatIsPartlyBrokenLosesTheBrokenPartsOnly) {
  bundle_.write("ZOVKPopupStyle.css",
                "button.popup-corner { min-width: 90px; min-height: soft; }\n"
                "button { colour: mauve; }\n@import 'nowhere.css';\n} } }\n/* without an end");
  const boost::json::array place = placeOfTheCross();
  EXPECT_EQ(place[2], 90);
  EXPECT_EQ(place[3], 44);
}

TEST_F(HelperStyle, ThatIsNoTextAtAllChangesNothing) {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>(i * 7 % 251);
  bundle_.write("ZOVKPopupStyle.css", junk);
  const boost::json::array place = placeOfTheCross();
  EXPECT_EQ(place[2], 44);
  EXPECT_EQ(place[3], 44);
}

TEST_F(HelperStyle, ThatIsADirectoryChangesNothing) {
  fs::create_directory(fs::path(bundle_.path()) / "ZOVKPopupStyle.css");
  EXPECT_EQ(placeOfTheCross()[2], 44);
}

TEST_F(HelperStyle, OfTheStudioCannotTakeTheDimmingAway) {
  bundle_.write("ZOVKPopupStyle.css", "view { background-color: #00ff00; }");
  placeOfTheCross();
  helper_.send({{"type", "view.background"},
                {"view", PopupScreen::view("contentView")},
                {"color", {1, 0, 0, 1}}});
  const std::string path = (helper_.directory() / "window.png").string();
  helper_.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
  helper_.await("snapshot.done", {{"id", 1}, {"done", true}});
  EXPECT_GT(pixelsOf(path, "#ff0000"), PopupScreen::kWidth * PopupScreen::kHeight / 2);
}

TEST_F(HelperStyle, LeavesAStudiosOwnLayoutItsName) {
  bundle_.write("ZOVKPopupView.ui",
                "<interface><object class='ZovkView' id='xibView'><child>"
                "<object class='GtkButton' id='crossBtn'>"
                "<property name='width-request'>123</property></object></child></object>"
                "</interface>");
  EXPECT_EQ(placeOfTheCross()[2], 123);
}

class HelperTheme : public testing::Test {
 protected:
  void set(const std::string& group, const std::string& entry) {
    const fs::path file = home_.path() / "glib-2.0/settings/keyfile";
    fs::create_directories(file.parent_path());
    std::ofstream(file.string() + ".new") << "[org/gnome/desktop/" << group << "]\n"
                                          << entry << "\n";
    fs::rename(file.string() + ".new", file);
  }
  std::vector<std::string> environment() const {
    return {"GSETTINGS_BACKEND=keyfile", "XDG_CONFIG_HOME=" + home_.path().string(), "GTK_THEME"};
  }

  ScratchDirectory home_;
};

TEST_F(HelperTheme, FollowsTheDesktopIntoTheDarkAndBackWhileAPageIsShown) {
  set("interface", "color-scheme='prefer-dark'");
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, environment());
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("matchMedia('(prefers-color-scheme: dark)').matches"), true);
  screen.evaluate(
      "matchMedia('(prefers-color-scheme: dark)').addEventListener('change', event => "
      "window.webkit.messageHandlers.ZOVKPopup.postMessage(event.matches ? 'dark' : 'light')); 0");
  set("interface", "color-scheme='prefer-light'");
  helper.await("web.message", {{"body", "light"}});
}

TEST_F(HelperTheme, LeavesTheToolkitsOwnSettingWhereTheDesktopHasNoWish) {
  fs::create_directories(home_.path() / "gtk-4.0");
  std::ofstream(home_.path() / "gtk-4.0/settings.ini")
      << "[Settings]\ngtk-application-prefer-dark-theme=1\n";
  set("interface", "color-scheme='default'");
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, environment());
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("matchMedia('(prefers-color-scheme: dark)').matches"), true);
}

TEST_F(HelperTheme, DrawsEveryEdgeInHighContrast) {
  set("a11y/interface", "high-contrast=true");
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, environment());
  PopupScreen screen(helper);
  screen.open();
  for (const char* name : {"aloneConfirmStackView", "crossBtn", "returnBtn", "refreshBtn"}) {
    screen.hide(name);
  }
  helper.sync();
  const std::string path = (helper.directory() / "window.png").string();
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
  helper.await("snapshot.done", {{"id", 1}, {"done", true}});
  EXPECT_EQ(pixelsOf(path, "#1a5fb4"), 0) << "the confirm button in its usual colour";
  EXPECT_GT(pixelsOf(path, "#000000"), 4000) << "the confirm button in the colour of the text";
}

}  // namespace
}  // namespace zovk
