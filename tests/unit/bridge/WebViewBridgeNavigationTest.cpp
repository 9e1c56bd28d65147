#include "unit/bridge/WebViewBridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WebViewBridgeNavigation : public WebViewBridgeFixture {
 protected:
  std::shared_ptr<NavigationRecorder> game_ = std::make_shared<NavigationRecorder>();
};

TEST_F(WebViewBridgeNavigation, OrdinaryPagesAreAllowedWithoutADelegate) {
  for (const char* url : {"https://example.org/", "http://__bridge_loaded__/", "about:blank",
                          "wvjbscheme://other", "file:///page.html"}) {
    EXPECT_TRUE(view_->navigate(url).allowed()) << url;
  }
  view_->startProvisional();
  view_->failProvisional("a");
  view_->fail("b");
  view_->finish();
  view_->terminateProcess();
  view_->requestNewWindow("https://example.org/");
  EXPECT_THAT(view_->scripts(), IsEmpty());
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(WebViewBridgeNavigation, OrdinaryPagesAreDecidedByTheDelegate) {
  adapter_->setWebViewDelegate(game_);
  const auto decision = view_->navigate("https://example.org/");
  EXPECT_TRUE(decision.undecided());
  EXPECT_THAT(game_->events, ElementsAre("decide https://example.org/"));
  EXPECT_EQ(game_->about, view_.get());
  game_->decision(NavigationPolicy::kAllow);
  EXPECT_TRUE(decision.allowed());
}

TEST_F(WebViewBridgeNavigation, TheDelegateHearsNothingOfTheBridgesOwnAddresses) {
  adapter_->setWebViewDelegate(game_);
  EXPECT_TRUE(view_->navigate(kAskForBridge).cancelled());
  EXPECT_TRUE(view_->navigate(kQueueSignal).cancelled());
  EXPECT_THAT(game_->events, IsEmpty());
}

TEST_F(WebViewBridgeNavigation, AllOtherEventsReachTheDelegate) {
  adapter_->setWebViewDelegate(game_);
  view_->startProvisional();
  view_->commit();
  view_->failProvisional("a");
  view_->fail("b");
  view_->finish();
  view_->terminateProcess();
  view_->failProcess("c");
  view_->setResponsive(false);
  view_->setResponsive(true);
  view_->requestNewWindow("https://example.org/");
  EXPECT_THAT(game_->events,
              ElementsAre("start", "commit", "provisional a", "fail b", "finish", "terminated",
                          "process failed c", "hangs", "answers", "window https://example.org/"));
  EXPECT_EQ(game_->about, view_.get());
}

TEST_F(WebViewBridgeNavigation, TheDelegateIsNotOwned) {
  adapter_->setWebViewDelegate(game_);
  EXPECT_EQ(game_.use_count(), 1);
  game_.reset();
  EXPECT_TRUE(view_->navigate("https://example.org/").allowed());
  view_->finish();
}

TEST_F(WebViewBridgeNavigation, TheDelegateMayBeChangedAndTakenAway) {
  const auto other = std::make_shared<NavigationRecorder>();
  adapter_->setWebViewDelegate(other);
  adapter_->setWebViewDelegate(game_);
  view_->finish();
  adapter_->setWebViewDelegate({});
  view_->finish();
  EXPECT_THAT(other->events, IsEmpty());
  EXPECT_THAT(game_->events, ElementsAre("finish"));
}

// A navigation that nobody decides is cancelled by the web view, so that its page need not wait.
TEST_F(WebViewBridgeNavigation, AnotherWebViewsNavigationIsLeftUndecided) {
  adapter_->setWebViewDelegate(game_);
  const auto other = makeView();
  other->setNavigationDelegate(adapter_);
  for (const char* url : {"https://example.org/", kAskForBridge, kQueueSignal}) {
    int answers = 0;
    adapter_->decidePolicyForNavigationAction(*other, {url, TargetFrame::kMain},
                                              [&](NavigationPolicy) { ++answers; });
    EXPECT_EQ(answers, 0) << url;
    EXPECT_TRUE(other->navigate(url).cancelled()) << url;
  }
  EXPECT_THAT(view_->scripts(), IsEmpty());
  EXPECT_THAT(other->scripts(), IsEmpty());
  EXPECT_THAT(game_->events, IsEmpty());
}

TEST_F(WebViewBridgeNavigation, AnotherWebViewsEventsAreIgnored) {
  adapter_->setWebViewDelegate(game_);
  const auto other = makeView();
  other->setNavigationDelegate(adapter_);
  other->startProvisional();
  other->failProvisional("a");
  other->fail("b");
  other->finish();
  other->terminateProcess();
  other->requestNewWindow("https://example.org/");
  EXPECT_THAT(game_->events, IsEmpty());
}

TEST_F(WebViewBridgeNavigation, WithoutTheBridgeThePageGoesOn) {
  adapter_->setWebViewDelegate(game_);
  adapter_.reset();
  EXPECT_TRUE(view_->navigate("https://example.org/").allowed());
  EXPECT_TRUE(view_->navigate(kQueueSignal).allowed());
  view_->finish();
  EXPECT_THAT(game_->events, IsEmpty());
}

TEST_F(WebViewBridgeNavigation, TheEndOfTheBridgeLeavesAnotherDelegateInItsPlace) {
  view_->setNavigationDelegate(game_);
  adapter_.reset();
  view_->finish();
  EXPECT_THAT(game_->events, ElementsAre("finish"));
}

}  // namespace
}  // namespace zovk
