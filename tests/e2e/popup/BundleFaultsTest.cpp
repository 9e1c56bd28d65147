#include <gmock/gmock.h>

#include "fixtures/ProcessFacts.h"
#include "fixtures/ScreenFixture.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

struct Fault {
  const char* name;
  void (*spoil)(const fs::path& bundle);
};

void PrintTo(const Fault& fault, std::ostream* stream) {
  *stream << fault.name;
}

void writeLayouts(const fs::path& bundle, const std::string& text) {
  for (const char* name : {"ZOVKPopupView.ui", "ZOVKPopupViewLandscape.ui"}) {
    std::ofstream(bundle / name) << text;
  }
}

void removeLike(const fs::path& bundle, const std::string& extension) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(bundle)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  for (const fs::path& file : files) fs::remove(file);
}

std::vector<Fault> faults() {
  return {
      {"None", [](const fs::path&) {}},
      {"NoLayouts", [](const fs::path& bundle) { removeLike(bundle, ".ui"); }},
      {"EmptyLayouts", [](const fs::path& bundle) { writeLayouts(bundle, ""); }},
      {"LayoutsThatAreNoXml", [](const fs::path& bundle) { writeLayouts(bundle, "{\"a\": 1}"); }},
      {"LayoutsCutShort",
       [](const fs::path& bundle) { writeLayouts(bundle, "<interface><object class='GtkBox'"); }},
      {"LayoutsThatAreFolders",
       [](const fs::path& bundle) {
         removeLike(bundle, ".ui");
         fs::create_directory(bundle / "ZOVKPopupView.ui");
         fs::create_directory(bundle / "ZOVKPopupViewLandscape.ui");
       }},
      {"LayoutsOfUnknownClasses",
       [](const fs::path& bundle) {
         writeLayouts(bundle, "<interface><object class='NoSuch' id='xibView'/></interface>");
       }},
      {"LayoutsWithoutOutlets",
       [](const fs::path& bundle) {
         writeLayouts(bundle, "<interface><object class='ZovkView' id='xibView'/></interface>");
       }},
      {"OutletsOfWrongClasses",
       [](const fs::path& bundle) {
         writeLayouts(bundle, R"(<interface><object class="GtkBox" id="xibView">
<child><object class="GtkLabel" id="crossBtn"/></child>
<child><object class="GtkButton" id="contentView"/></child>
<child><object class="GtkEntry" id="returnBtn"/></child>
<child><object class="GtkImage" id="backgroundView"/></child></object>
<object class="GtkAdjustment" id="stackView"/>
<object class="GtkListStore" id="refreshBtn"/></interface>)");
       }},
      {"NoImages", [](const fs::path& bundle) { removeLike(bundle, ".png"); }},
      {"ImagesThatAreNone",
       [](const fs::path& bundle) {
         for (const char* name : {"close.png", "refresh.png", "returnNew.png", "close@2x.png"}) {
           std::ofstream(bundle / name) << "no picture";
         }
       }},
      {"NoStyleAndNoTexts",
       [](const fs::path& bundle) {
         removeLike(bundle, ".css");
         removeLike(bundle, ".ini");
       }},
      {"TextsThatAreNone",
       [](const fs::path& bundle) { std::ofstream(bundle / "ZOVKPopupTexts.ini") << "[[=\n=="; }},
  };
}

class BundleFaults : public ScreenFixture, public testing::WithParamInterface<Fault> {};

TEST_P(BundleFaults, LeaveARunWithTheUsualLogAndTheHelperInPlace) {
  GetParam().spoil(bundle().bundle());
  ZOVKPopupModel game = popup("game", 1);
  game.pop_type = 2;
  bundle().addPage(game, answeringPage("skip", "", false));
  start();
  ZOVKPopup::showPopup("game", 0, recordAnswer());
  awaitPage();
  EXPECT_THAT(
      screenMessages(),
      testing::ElementsAre(testing::StartsWith("Set state "), "Popup count:1", "Start show game",
                           testing::StartsWith("Decide policy for navigation action, url:"),
                           "Did start provisional navigation", "Did finish navigation"));
  std::vector<std::string> errors = lines();
  std::erase_if(errors, [](const std::string& line) { return !line.starts_with("[Error]"); });
  EXPECT_THAT(errors,
              testing::UnorderedElementsAre("[Error] ZOVKPopupRemote.config not exist",
                                            "[Error] Load remote config error, file may not exist",
                                            "[Error] ZOVKPopupFrequencyOnce.config not exist"));
  EXPECT_EQ(childrenOf(getpid()).size(), 1U);
  EXPECT_FALSE(logged("helper:"));
}

INSTANTIATE_TEST_SUITE_P(Popup, BundleFaults, testing::ValuesIn(faults()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(BundleFaults, LeaveThePageItsAnswer) {
  GetParam().spoil(bundle().bundle());
  bundle().addPage(popup("welcome", 1), answeringPage("cancel", "later", true));
  start();
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, R"({"action":"cancel","msg":"later"})"}}));
}

}  // namespace
}  // namespace zovk
