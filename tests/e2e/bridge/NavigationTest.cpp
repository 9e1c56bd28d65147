#include "e2e/bridge/BridgePageFixture.h"
#include "e2e/bridge/NavigationListener.h"

namespace zovk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class Navigation : public BridgePageFixture {
 protected:
  const std::shared_ptr<NavigationListener> listener_ = std::make_shared<NavigationListener>();
};

TEST_F(Navigation, ToOrdinaryPagesIsTheGamesToDecide) {
  const std::string forbidden = site().url("/forbidden");
  const std::string next = site().page("/next", bridgePage("bridge.callHandler('tell', 'next');"));
  windowSettings().navigationDelegate = listener_;
  open(
      bridgePage("bridge.registerHandler('go', to => { location.href = to; });"
                 "bridge.callHandler('tell', 'here');"));
  awaitTold(1);
  bridge().callHandler("go", boost::json::value(forbidden));
  pumpUntil([&] { return listener_->decided.size() == 2; }, "the decision");
  EXPECT_EQ(evaluate("location.pathname"), "/page");
  bridge().callHandler("go", boost::json::value(next));
  awaitTold(2);
  pumpUntil([&] { return listener_->events.size() >= 6; }, "both loads");
  EXPECT_THAT(listener_->decided, ElementsAre(site().url("/page"), forbidden, next));
  EXPECT_THAT(listener_->events,
              ElementsAre("started", "committed", "finished", "started", "committed", "finished"));
  EXPECT_THAT(site().requestsTo("/forbidden"), IsEmpty());
}

TEST_F(Navigation, IsAllowedWhenNobodyDecides) {
  const std::string next = site().page("/next", bridgePage("bridge.callHandler('tell', 'next');"));
  open(page("location.href = '" + next + "';"));
  awaitTold(1);
  EXPECT_EQ(evaluate("location.pathname"), "/next");
}

TEST_F(Navigation, ToTheBridgesAddressesIsCancelledWhateverTheirCase) {
  windowSettings().navigationDelegate = listener_;
  open(
      page("window.WVJBCallbacks = [bridge => bridge.callHandler('tell', 'there')];"
           "location.href = 'wvjbscheme://__BRIDGE_LOADED__';"));
  awaitTold(1);
  EXPECT_EQ(evaluate("location.href = 'HTTPS://__Bridge_Loaded__/path?query'; 1"), 1);
  evaluate("location.href = 'WVJBSCHEME://__WVJB_queue_MESSAGE__:443/'; 1");
  evaluate("WebViewJavascriptBridge.callHandler('tell', 'again'); 1");
  awaitTold(2);
  EXPECT_EQ(evaluate("location.pathname"), "/page");
  EXPECT_THAT(listener_->decided, ElementsAre(site().url("/page")));
  EXPECT_THAT(listener_->events, Not(Contains(testing::StartsWith("failed"))));
  EXPECT_THAT(bridgeLines(), IsEmpty());
}

TEST_F(Navigation, ToAnotherHostOfTheBridgesSchemeIsAnOrdinaryOne) {
  windowSettings().navigationDelegate = listener_;
  open(page("askForBridge('wvjbscheme://forbidden');"));
  pumpUntil([&] { return listener_->decided.size() == 2; }, "the decision");
  EXPECT_THAT(listener_->decided, Contains("wvjbscheme://forbidden"));
}

TEST_F(Navigation, ThatFailsIsTold) {
  windowSettings().navigationDelegate = listener_;
  openAddress(unusedAddress());
  pumpUntil([&] { return listener_->events.size() == 2; }, "the failure");
  EXPECT_THAT(listener_->events, ElementsAre("started", "failed before it was there"));
  EXPECT_TRUE(window().isOpen());
}

}  // namespace
}  // namespace zovk
