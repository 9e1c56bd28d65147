#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "Picture.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

std::set<std::string> namesIn(const HelperMessage& loaded) {
  std::set<std::string> names;
  for (const boost::json::value& name : loaded.at("outlets").as_array()) {
    names.emplace(name.as_string());
  }
  return names;
}

class HelperLayout : public testing::Test {
 protected:
  /// Shows a layout file with the given text.
  HelperMessage showText(const std::string& text) {
    std::ofstream(helper_.directory() / "Odd.ui") << text;
    screen_.createWindow();
    screen_.loadLayout("Odd", helper_.directory().string());
    screen_.createWebView();
    screen_.show();
    return helper_.await("layout.loaded");
  }

  void hideAnswers() {
    for (const char* name : {"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView"}) {
      screen_.hide(name);
    }
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

class HelperLayoutFile : public HelperLayout, public testing::WithParamInterface<const char*> {};

TEST_P(HelperLayoutFile, HasEveryOutlet) {
  screen_.createWindow();
  screen_.loadLayout(GetParam());
  const HelperMessage loaded = helper_.await("layout.loaded", {{"layout", 1}});
  EXPECT_EQ(loaded.at("found"), true);
  const std::set<std::string> names = namesIn(loaded);
  for (const char* name :
       {"xibView", "contentView", "backgroundView", "stackView", "aloneConfirmStackView",
        "rejectBtn", "confirmBtn", "returnBtn", "crossBtn", "refreshBtn", "centerConfirmBtn"}) {
    EXPECT_TRUE(names.contains(name)) << name;
  }
}

TEST_P(HelperLayoutFile, HasButtonsThatFingersCanHit) {
  screen_.createWindow();
  screen_.loadLayout(GetParam());
  screen_.show();
  for (const char* name :
       {"rejectBtn", "confirmBtn", "returnBtn", "crossBtn", "refreshBtn", "centerConfirmBtn"}) {
    const boost::json::array place = screen_.place(PopupScreen::view(name));
    EXPECT_GE(place[2].to_number<int>(), 44) << name;
    EXPECT_GE(place[3].to_number<int>(), 44) << name;
  }
}

TEST_P(HelperLayoutFile, EndsThePageAboveTheAnswersAlsoWhenTheFirstGroupIsHidden) {
  screen_.createWindow();
  screen_.loadLayout(GetParam());
  screen_.createWebView();
  screen_.hide("stackView");
  helper_.send({{"type", "view.pinBottom"},
                {"view", PopupScreen::kWebView},
                {"candidates",
                 {PopupScreen::view("stackView"), PopupScreen::view("aloneConfirmStackView")}}});
  screen_.show();
  const boost::json::array page = screen_.place(PopupScreen::kWebView);
  const boost::json::array answers = screen_.place(PopupScreen::view("aloneConfirmStackView"));
  EXPECT_EQ(page[1], 0);
  EXPECT_EQ(page[3], answers[1]);
  EXPECT_GT(page[3].to_number<int>(), PopupScreen::kHeight / 2);
}

TEST_P(HelperLayoutFile, TakesAnySizeThatTheGameGives) {
  helper_.send({{"type", "window.create"},
                {"window", PopupScreen::kWindow},
                {"view", PopupScreen::kRoot},
                {"frame", {10, 10, 200, 120}}});
  screen_.loadLayout(GetParam());
  screen_.createWebView();
  screen_.show();
  const boost::json::array whole{0, 0, 200, 120};
  EXPECT_EQ(screen_.place(PopupScreen::kRoot), whole);
  EXPECT_EQ(screen_.place(PopupScreen::view("contentView")), whole);
  EXPECT_EQ(screen_.place(PopupScreen::kWebView), whole);
}

INSTANTIATE_TEST_SUITE_P(Helper, HelperLayoutFile,
                         testing::Values("ZOVKPopupView", "ZOVKPopupViewLandscape"),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST_F(HelperLayout, GivesThePageTheWholeScreen) {
  screen_.open();
  const boost::json::array whole{0, 0, PopupScreen::kWidth, PopupScreen::kHeight};
  EXPECT_EQ(screen_.place(PopupScreen::kWebView), whole);
}

TEST_F(HelperLayout, SendsTheActionOfAButtonThatIsClicked) {
  screen_.open();
  hideAnswers();
  screen_.click("crossBtn");
  helper_.await("action", {{"layout", 1}, {"action", "crossButtonClicked"}});
  screen_.click("returnBtn");
  helper_.await("action", {{"layout", 1}, {"action", "returnButtonClicked"}});
  screen_.click("refreshBtn");
  helper_.await("action", {{"layout", 1}, {"action", "refreshButtonClicked"}});
}

TEST_F(HelperLayout, SendsTheActionsOfTheAnswers) {
  screen_.open();
  screen_.hide("aloneConfirmStackView");
  helper_.sync();
  screen_.click("rejectBtn");
  helper_.await("action", {{"layout", 1}, {"action", "rejectButtonDidClicked"}});
  screen_.click("confirmBtn");
  helper_.await("action", {{"layout", 1}, {"action", "confirmButtonDidClicked"}});
  screen_.hide("aloneConfirmStackView", false);
  screen_.hide("stackView");
  helper_.sync();
  screen_.click("centerConfirmBtn");
  helper_.await("action", {{"layout", 1}, {"action", "confirmButtonDidClicked"}});
}

TEST_F(HelperLayout, SaysThatAHiddenViewIsNotSeen) {
  screen_.open();
  screen_.place(PopupScreen::view("crossBtn"));
  screen_.hide("crossBtn");
  helper_.await("view.frame", {{"view", PopupScreen::view("crossBtn")}, {"visible", false}});
  screen_.hide("crossBtn", false);
  helper_.await("view.frame", {{"view", PopupScreen::view("crossBtn")}, {"visible", true}});
}

TEST_F(HelperLayout, PaintsAButtonThatIsShownAgain) {
  screen_.openPage("plain.html");
  auto greenWhereTheButtonGoes = [this, number = 0]() mutable {
    const std::string path = (helper_.directory() / "window.png").string();
    helper_.send({{"type", "snapshot"}, {"id", ++number}, {"window", 1}, {"path", path}});
    helper_.await("snapshot.done", {{"id", number}, {"done", true}});
    return pixelsOf(path, "#2e7d32", "44x44+64+12");
  };
  screen_.hide("refreshBtn");
  EXPECT_EQ(greenWhereTheButtonGoes(), 44 * 44);
  screen_.hide("refreshBtn", false);
  EXPECT_LT(greenWhereTheButtonGoes(), 44 * 44 / 2);
}

TEST_F(HelperLayout, PutsATopEdgeWhereTheGameWantsItHoweverOften) {
  screen_.open();
  const int cross = PopupScreen::view("crossBtn");
  const int before = screen_.place(cross)[1].to_number<int>();
  for (int i = 1; i <= 44; ++i) {
    helper_.send({{"type", "view.pinTop"},
                  {"view", cross},
                  {"to", PopupScreen::kRoot},
                  {"safeArea", false},
                  {"offset", i}});
  }
  helper_.sync();
  EXPECT_EQ(screen_.place(cross)[1], before + 44);
}

TEST_F(HelperLayout, FollowsAViewInAnotherContainer) {
  screen_.open();
  const int stack = PopupScreen::view("stackView");
  const boost::json::array answers = screen_.place(stack);
  screen_.hide("backgroundView", false);
  helper_.send({{"type", "view.pinBottom"},
                {"view", PopupScreen::view("backgroundView")},
                {"candidates", {stack}}});
  const HelperMessage seen =
      helper_.await("view.frame", {{"view", PopupScreen::view("backgroundView")},
                                   {"frame", {0, 0, PopupScreen::kWidth, answers[1]}}});
  EXPECT_EQ(seen.at("visible"), true);
}

TEST_F(HelperLayout, ThatIsMissingLeavesAnEmptyWindow) {
  screen_.createWindow();
  screen_.loadLayout("Missing");
  screen_.createWebView();
  screen_.show();
  const HelperMessage loaded = helper_.await("layout.loaded");
  EXPECT_EQ(loaded.at("found"), false);
  EXPECT_TRUE(loaded.at("outlets").as_array().empty());
  helper_.send({{"type", "layout.close"}, {"layout", 1}});
  helper_.sync();
}

TEST_F(HelperLayout, ThatIsBrokenIsNotFound) {
  EXPECT_EQ(showText("<interface><object").at("found"), false);
}

TEST_F(HelperLayout, WithAnUnknownClassIsNotFound) {
  EXPECT_EQ(
      showText("<interface><object class='NoSuchClass' id='xibView'/></interface>").at("found"),
      false);
}

TEST_F(HelperLayout, WhoseRootIsAWindowIsNotFound) {
  EXPECT_EQ(showText("<interface><object class='GtkWindow' id='xibView'/></interface>").at("found"),
            false);
}

TEST_F(HelperLayout, WithNothingInItIsNotFound) {
  EXPECT_EQ(showText("<interface/>").at("found"), false);
}

TEST_F(HelperLayout, GivesTheOutletsItHas) {
  const HelperMessage loaded = showText(
      "<interface><object class='ZovkView' id='xibView'><child>"
      "<object class='GtkButton' id='crossBtn'/></child></object></interface>");
  EXPECT_EQ(loaded.at("found"), true);
  EXPECT_EQ(namesIn(loaded), (std::set<std::string>{"xibView", "crossBtn"}));
}

TEST_F(HelperLayout, OfWrongClassesDoesNoHarm) {
  const HelperMessage loaded = showText(
      "<interface><object class='GtkBox' id='xibView'><child>"
      "<object class='GtkLabel' id='crossBtn'/></child><child>"
      "<object class='GtkButton' id='contentView'/></child></object>"
      "<object class='GtkAdjustment' id='stackView'/></interface>");
  EXPECT_EQ(namesIn(loaded), (std::set<std::string>{"xibView", "crossBtn", "contentView"}));
  for (const char* name : {"crossBtn", "contentView", "stackView"}) {
    const int view = PopupScreen::view(name);
    helper_.send({{"type", "view.image"}, {"view", view}, {"path", "/nowhere.png"}});
    helper_.send({{"type", "view.background"}, {"view", view}, {"color", {0, 0, 0, 0.5}}});
    helper_.send({{"type", "view.clip"}, {"view", view}, {"clips", true}});
    helper_.send({{"type", "view.pinTop"},
                  {"view", view},
                  {"to", PopupScreen::kRoot},
                  {"safeArea", true},
                  {"offset", 0}});
    helper_.send({{"type", "view.remove"}, {"view", view}});
  }
  helper_.sync();
}

TEST_F(HelperLayout, CannotReachFunctionsOfTheProgram) {
  const HelperMessage loaded = showText(
      "<interface><object class='ZovkView' id='xibView'><child>"
      "<object class='GtkButton' id='crossBtn'><property name='width-request'>80</property>"
      "<property name='height-request'>80</property>"
      "<signal name='clicked' handler='abort'/></object></child></object></interface>");
  EXPECT_EQ(loaded.at("found"), true);
  screen_.click("crossBtn");
  helper_.await("action", {{"action", "abort"}});
}

TEST_F(HelperLayout, CannotBeNestedInItself) {
  screen_.open();
  const int content = PopupScreen::view("contentView");
  helper_.send({{"type", "view.add"}, {"view", content}, {"child", PopupScreen::kLayoutRoot}});
  helper_.send({{"type", "view.add"}, {"view", content}, {"child", content}});
  helper_.send({{"type", "view.add"}, {"view", content}, {"child", PopupScreen::kRoot}});
  helper_.sync();
}

TEST_F(HelperLayout, TakesAPictureThatIsNone) {
  screen_.open();
  std::ofstream(helper_.directory() / "text.png") << "no picture";
  for (const std::string& path :
       {helper_.directory().string() + "/text.png", std::string("/nowhere.png"),
        std::string(HELPER_BUNDLE) + "/close.png"}) {
    helper_.send({{"type", "view.image"}, {"view", PopupScreen::view("crossBtn")}, {"path", path}});
  }
  helper_.sync();
}

struct Fineness {
  const char* name;
  const char* scale;
  const char* letters;  ///< Fractions are made of whole pixels and smaller letters.
  int pixels;           ///< In a screen's length.
};

class HelperIcon : public testing::TestWithParam<Fineness> {};

TEST_P(HelperIcon, HasTheSizeOfItsPictureOnEveryScale) {
  const Fineness& fineness = GetParam();
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted,
                         {std::string("GDK_SCALE=") + fineness.scale,
                          std::string("GDK_DPI_SCALE=") + fineness.letters});
  const std::string icon = (helper.directory() / "icon.png").string();
  const std::string fine = (helper.directory() / "icon@2x.png").string();
  ASSERT_EQ(runProgram({"convert", "-size", "24x24", "xc:#ff00ff", icon}), 0);
  ASSERT_EQ(runProgram({"convert", "-size", "48x48", "xc:#00ffff", fine}), 0);
  PopupScreen screen(helper);
  screen.createWindow();
  screen.loadLayout();
  screen.show();
  helper.send({{"type", "view.image"}, {"view", PopupScreen::view("crossBtn")}, {"path", icon}});
  const std::string path = (helper.directory() / "window.png").string();
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", PopupScreen::kWindow}, {"path", path}});
  helper.await("snapshot.done", {{"id", 1}, {"done", true}});
  const int length = 24 * fineness.pixels;
  EXPECT_EQ(pixelsOf(path, fineness.pixels == 1 ? "#ff00ff" : "#00ffff"), length * length);
}

INSTANTIATE_TEST_SUITE_P(Scales, HelperIcon,
                         testing::Values(Fineness{"One", "1", "1", 1},
                                         Fineness{"OneAndAQuarter", "1", "1.25", 1},
                                         Fineness{"OneAndAHalf", "2", "0.75", 2},
                                         Fineness{"Two", "2", "1", 2}),
                         [](const auto& scale) { return scale.param.name; });

TEST(HelperFineLayout, TakesAPathThatIsTooLongForAFile) {
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, {"GDK_SCALE=2"});
  PopupScreen screen(helper);
  screen.open();
  helper.send({{"type", "view.image"},
               {"view", PopupScreen::view("crossBtn")},
               {"path", "/" + std::string(100'000, 'x') + ".png"}});
  helper.sync();
}

TEST_F(HelperLayout, TakesItsViewsOutWhenItIsClosed) {
  screen_.open();
  helper_.send({{"type", "layout.close"}, {"layout", 1}});
  screen_.hide("crossBtn");
  helper_.sync();
  helper_.send(
      {{"type", "web.evaluate"}, {"view", PopupScreen::kWebView}, {"id", 1}, {"script", "7"}});
  EXPECT_EQ(helper_.await("web.evaluated", {{"id", 1}}).at("value"), 7);
}

}  // namespace
}  // namespace zovk
