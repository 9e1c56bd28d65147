#include <csignal>

#include "e2e/bridge/BridgePageFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A page that never answers "wait", and tells what "note" brings.
class Reload : public BridgePageFixture {
 protected:
  Reload() {
    open(
        bridgePage("bridge.registerHandler('wait', (data, respond) => { window.kept = respond; });"
                   "bridge.registerHandler('note', data => bridge.callHandler('tell', data));"
                   "bridge.callHandler('tell', 'here');"));
    awaitTold(1);
  }
  void leaveACallWaiting() {
    bridge().callHandler("wait", boost::json::value("?"), [this](const Value&) { ++answers_; });
    EXPECT_EQ(bridge().base().responseCallbacks().size(), 1U);
  }
  void expectNewPageIsReached() {
    awaitPages(2);
    EXPECT_THAT(bridge().base().responseCallbacks(), IsEmpty());
    bridge().callHandler("note", boost::json::value("hello"));
    awaitTold(3);
    EXPECT_THAT(told(), ElementsAre("here", "here", "hello"));
    EXPECT_EQ(answers_, 0);
  }

  int answers_ = 0;
};

TEST_F(Reload, DropsWhatWaitsForTheOldPageAndHoldsMessagesForTheNewOne) {
  leaveACallWaiting();
  window().reload();
  expectNewPageIsReached();
  EXPECT_THAT(bridgeLines(), IsEmpty());
}

TEST_F(Reload, ByThePageItselfIsTheSame) {
  leaveACallWaiting();
  evaluate("location.reload(); 1");
  expectNewPageIsReached();
}

TEST_F(Reload, AfterTheOwnersResetLosesNothingThatTheOwnerSendsBetween) {
  leaveACallWaiting();
  bridge().reset();
  bridge().callHandler("note", boost::json::value("between"));
  window().reload();
  awaitTold(3);
  EXPECT_THAT(told(), ElementsAre("here", "here", "between"));
  EXPECT_EQ(answers_, 0);
}

TEST_F(Reload, ComesByItselfWhenThePagesProcessEnds) {
  leaveACallWaiting();
  screen().terminateWebProcess();
  pumpUntil([&] { return bridge().base().responseCallbacks().empty(); }, "the end of the page");
  bridge().callHandler("note", boost::json::value("between"));
  awaitTold(3);
  EXPECT_THAT(told(), ElementsAre("here", "here", "between"));
}

TEST_F(Reload, ComesWithANewHelperWhenTheHelperEnds) {
  leaveACallWaiting();
  ::kill(screen().helperProcessId(), SIGKILL);
  expectNewPageIsReached();
  EXPECT_TRUE(window().isOpen());
}

class HelperFailure : public BridgePageFixture {
 protected:
  void endHelperTwice() {
    open(bridgePage("bridge.callHandler('tell', 'here');"));
    awaitTold(1);
    ::kill(screen().helperProcessId(), SIGKILL);
    awaitTold(2);
    ::kill(screen().helperProcessId(), SIGKILL);
    pumpUntil([&] { return !reasons_.empty(); }, "the failure");
  }

  std::vector<std::string> reasons_;
};

TEST_F(HelperFailure, ForGoodClosesTheWindowAndSaysWhy) {
  windowSettings().failed = [this](const std::string& reason) { reasons_.push_back(reason); };
  endHelperTwice();
  EXPECT_THAT(reasons_, ElementsAre(testing::HasSubstr("The helper cannot be used")));
  EXPECT_FALSE(window().isOpen());
  EXPECT_EQ(evaluate("1"), "ERROR The window is closed");
  bridge().callHandler("note");
  window().reload();
  window().close();
}

TEST_F(HelperFailure, ForGoodMayLetTheWindowGoAndOpenAnother) {
  windowSettings().failed = [this](const std::string& reason) {
    reasons_.push_back(reason);
    windowSettings().failed = nullptr;
    letWindowGo();
    openAddress(windowSettings().address);
  };
  endHelperTwice();
  awaitTold(3);
  EXPECT_TRUE(window().isOpen());
}

}  // namespace
}  // namespace zovk
