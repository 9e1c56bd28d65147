// A helper that is not greeted yet: one at rest.
#include <string>

#include <gtest/gtest.h>
#include <poll.h>

#include "PopupScreen.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

/// Waits until the helper has started and has given back what it can.
void settle(const HelperUnderTest& helper) {
  constexpr double kLeft = 10;  // of the 35 megabytes that starting reads
  while (threadsOf(helper.pid()) < 2) poll(nullptr, 0, 10);
  while (fileMegabytes(helper.pid()) > kLeft) poll(nullptr, 0, 10);
}

TEST(HelperAtRest, GivesTheMemoryOfItsProgramTextBack) {
  const HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  settle(helper);
}

TEST(HelperAtRest, HasNoProcessesAndNoGraphicsDriver) {
  const HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  settle(helper);
  EXPECT_TRUE(descendantsOf(helper.pid()).empty());
  EXPECT_FALSE(hasMapped(helper.pid(), "LLVM"));
}

TEST(HelperAtRest, EndsWithTheGame) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  settle(helper);
  helper.closeSocket();
  EXPECT_EQ(helper.awaitEnd(), 0);
}

TEST(HelperAtRest, ShowsAPopupOnceItIsGreeted) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  settle(helper);
  helper.send(helper.greeting());
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("document.title"), "Plain");
}

TEST(HelperHoldsAPageReady, ThatHasTheSizeOfAPopup) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.createWebView();
  const boost::json::array& whole = helper.ready().at("screen").as_array();
  const std::string size = std::to_string(whole.at(2).to_number<int>()) + " " +
                           std::to_string(whole.at(3).to_number<int>());
  EXPECT_EQ(screen.evaluate("innerWidth + ' ' + innerHeight"), boost::json::value(size));
}

TEST(HelperHoldsAPageReady, AndMemoryThatPicturesAreHandedToTheServerIn) {
  const HelperUnderTest helper;
  EXPECT_TRUE(hasMapped(helper.pid(), "/SYSV"));
}

}  // namespace
}  // namespace zovk
