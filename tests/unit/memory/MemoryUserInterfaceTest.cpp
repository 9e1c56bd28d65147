#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryUserInterface.h"

namespace zovk {
namespace {

class MemoryInterface : public testing::Test {
 protected:
  MemoryScheduler scheduler;
  MemoryUserInterface ui{scheduler};
};

TEST_F(MemoryInterface, HasAScreenThatCanBeTakenAway) {
  EXPECT_GT(ui.mainScreenBounds().width, 0);
  ui.setMainScreenBounds({});
  EXPECT_EQ(ui.mainScreenBounds(), Rect{});
}

TEST_F(MemoryInterface, CountsWhatLives) {
  auto window = ui.makeWindow({1, 2, 3, 4});
  auto webView = ui.makeWebView({});
  auto layout = ui.loadLayout("/b", "Screen", {});
  auto second = ui.loadLayout("/b", "Other", {});
  EXPECT_EQ(ui.frontWindow()->frame(), (Rect{1, 2, 3, 4}));
  EXPECT_EQ(ui.frontWebView(), webView);
  EXPECT_EQ(ui.frontLayout()->name(), "Other");
  EXPECT_EQ(ui.liveLayouts(), 2u);
  second.reset();
  EXPECT_EQ(ui.frontLayout()->name(), "Screen");
  window.reset();
  webView.reset();
  layout.reset();
  EXPECT_EQ(ui.liveWindows() + ui.liveWebViews() + ui.liveLayouts(), 0u);
  EXPECT_EQ(ui.frontWindow(), nullptr);
  EXPECT_EQ(ui.windowsMade(), 1u);
  EXPECT_EQ(ui.layoutsMade(), 2u);
}

TEST_F(MemoryInterface, LoadsTheStandardLayoutUnlessToldOtherwise) {
  ui.addLayout("/b", "Own", {{"only", ""}});
  ui.missingLayout("Missing");
  const auto standard = ui.loadLayout("/b", "Screen", {});
  EXPECT_TRUE(memoryNode(*standard->outlet("crossBtn")).present);
  const auto own = ui.loadLayout("/b", "Own", {});
  EXPECT_TRUE(memoryNode(*own->outlet("only")).present);
  EXPECT_FALSE(memoryNode(*own->outlet("crossBtn")).present);
  const auto missing = ui.loadLayout("/b", "Missing", {});
  EXPECT_FALSE(memoryNode(*missing->root()).present);
}

TEST_F(MemoryInterface, KnowsWhichSchemesAreOpened) {
  EXPECT_TRUE(ui.canOpenUrl("https://host/"));
  EXPECT_FALSE(ui.canOpenUrl("weird:x"));
  EXPECT_FALSE(ui.canOpenUrl("no scheme"));
  ui.setOpenableSchemes({"weird"});
  EXPECT_TRUE(ui.canOpenUrl("weird:x"));
  EXPECT_FALSE(ui.canOpenUrl("https://host/"));
}

TEST_F(MemoryInterface, OpensAddressesAndAnswersFromTheScheduler) {
  std::optional<bool> opened;
  const auto keep = [&](bool answer) { opened = answer; };
  ui.openUrl("https://host/", keep);
  EXPECT_FALSE(opened);
  scheduler.runReady();
  EXPECT_EQ(opened, true);
  ui.openUrl("weird:x", keep);
  scheduler.runReady();
  EXPECT_EQ(opened, false);
  ui.setOpenAnswer([](const std::string&) { return true; });
  ui.openUrl("weird:y", keep);
  ui.openUrl("weird:z", nullptr);
  scheduler.runReady();
  EXPECT_EQ(opened, true);
  EXPECT_EQ(ui.openedUrls(),
            (std::vector<std::string>{"https://host/", "weird:x", "weird:y", "weird:z"}));
}

}  // namespace
}  // namespace zovk
