#include <chrono>
#include <filesystem>

#include <boost/json/serialize.hpp>

#include "ClientFixture.h"

namespace zovk {
namespace {

TEST_F(HelperClientLive, ShowsALocalPageInTheRealLayoutAndHearsIt) {
  openPage();
  EXPECT_EQ(screen_->messages[0], R"(Game {"here":")" + pageUrl() + R"("})");
  EXPECT_EQ(screen_->page->url(), pageUrl());
  EXPECT_EQ(screen_->navigations, std::vector<std::string>{pageUrl()});
  EXPECT_TRUE(screen_->errors.empty());
  EXPECT_EQ(device_->statusBarOrientation(), Orientation::kPortrait);
  EXPECT_TRUE(screen_->turns.empty());
}

TEST_F(HelperClientLive, ARealClickOnTheCrossReachesTheOwnerOfTheLayout) {
  openPage();
  click("crossBtn");
  pumpUntil("the action", [&] { return !screen_->actions.empty(); });
  EXPECT_EQ(screen_->actions, std::vector<std::string>{"crossButtonClicked"});
}

TEST_F(HelperClientLive, ScriptsOfThePageAreAnswered) {
  openPage();
  std::string answer;
  screen_->page->evaluateJavaScript("({a: [1, 'b']})", [&](const ScriptResult& result) {
    answer = result.value ? boost::json::serialize(*result.value) : *result.error;
  });
  pumpUntil("the value", [&] { return !answer.empty(); });
  EXPECT_EQ(answer, R"({"a":[1,"b"]})");
}

TEST_F(HelperClientLive, ASnapshotIsWritten) {
  openPage();
  const std::string path = (directory_ / "window.png").string();
  bool done = false;
  client_->snapshot(nullptr, path, [&](bool written) { done = written; });
  pumpUntil("the picture", [&] { return done; });
  EXPECT_GT(std::filesystem::file_size(path), 100U);
}

TEST_F(HelperClientLive, TurningTheWindowIsOneTransitionAndKeepsThePage) {
  openPage();
  screen_->page->evaluateJavaScript("window.kept = 7; 0", {});
  screen_->layoutName = "ZOVKPopupViewLandscape";
  runTool("getactivewindow windowsize --sync " + std::to_string(kHeight) + " " +
          std::to_string(kWidth));
  pumpUntil("the new arrangement", [&] { return screen_->arranged == 1; });
  sync();
  ASSERT_EQ(screen_->turns.size(), 1U);
  EXPECT_EQ(screen_->turns[0], (Size{kHeight, kWidth}));
  EXPECT_EQ(device_->statusBarOrientation(), Orientation::kLandscapeLeft);
  std::string kept;
  screen_->page->evaluateJavaScript("window.kept", [&](const ScriptResult& result) {
    kept = result.value ? boost::json::serialize(*result.value) : *result.error;
  });
  pumpUntil("the page's state", [&] { return !kept.empty(); });
  EXPECT_EQ(kept, "7");
  click("crossBtn");
  pumpUntil("the action", [&] { return !screen_->actions.empty(); });
}

TEST_F(HelperClientLive, AWebProcessThatEndsIsToldAndThePageComesBack) {
  openPage();
  client_->terminateWebProcess();
  pumpUntil("the page again", [&] { return screen_->messages.size() == 2; });
  EXPECT_EQ(screen_->terminated, 1);
}

TEST_F(HelperClientLive, StartingTheHelperDoesNotHoldTheGameUp) {
  const auto before = std::chrono::steady_clock::now();
  ZOVKPopupHostSettings settings;
  HelperUserInterface another(settings, *queue_, *device_);
  const auto took = std::chrono::steady_clock::now() - before;
  RecordProperty("microseconds", static_cast<int>(took / std::chrono::microseconds(1)));
  EXPECT_LT(took, std::chrono::milliseconds(50)) << "the helper itself takes far longer";
}

}  // namespace
}  // namespace zovk
