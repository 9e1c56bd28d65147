#include <thread>

#include "fixtures/MemoryHostFixture.h"
#include "zovkpopup/Bridge.h"
#include "zovkpopup/WebWindow.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WebWindow : public MemoryHostFixture {
 protected:
  WebWindow() { settings_.address = "https://game.example/shop"; }

  void open() {
    ASSERT_TRUE(setUp());
    window_ = ZOVKPopupWebWindow::open(settings_);
    ASSERT_NE(window_, nullptr);
    page_ = memory().userInterface.frontWebView();
  }
  void askForBridge() { page_->navigate("https://__bridge_loaded__"); }
  std::size_t held() const {
    const auto queue = window_->bridge().base().startupMessageQueue();
    return queue ? queue->size() : 0;
  }
  void expectNothingOnScreen() {
    page_.reset();
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
  }

  ZOVKPopupWebWindowSettings settings_;
  std::unique_ptr<ZOVKPopupWebWindow> window_;
  std::shared_ptr<MemoryWebView> page_;
};

TEST_F(WebWindow, IsAbsentBeforeTheHostIsSetUp) {
  ZPLogger::setEnvironment(memoryLogEnvironment(log(), false));
  EXPECT_EQ(ZOVKPopupWebWindow::open(settings_), nullptr);
  EXPECT_THAT(errorMessages(log()),
              ElementsAre("ZOVKPopupWebWindow::open: the host is not set up, or this is not its "
                          "main thread"));
}

TEST_F(WebWindow, IsAbsentOnAnotherThread) {
  ASSERT_TRUE(setUp());
  std::thread([this] { EXPECT_EQ(ZOVKPopupWebWindow::open(settings_), nullptr); }).join();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
}

TEST_F(WebWindow, LoadsAnAddressOrAFileThatReadsOnlyItself) {
  open();
  EXPECT_EQ(page_->lastLoad(), "https://game.example/shop");
  settings_.address.clear();
  settings_.pageFile = "/app/a b.html";
  const auto other = ZOVKPopupWebWindow::open(settings_);
  const MemoryLoad file{"file:///app/a%20b.html", "file:///app/a%20b.html"};
  EXPECT_THAT(memory().userInterface.frontWebView()->loads(), ElementsAre(file));
}

TEST_F(WebWindow, ResetsTheBridgeForANewPageOnlyWhenTheOldOneHadIt) {
  open();
  window_->bridge().callHandler("early");
  page_->open(settings_.address);
  EXPECT_EQ(held(), 1U) << "the first page takes nothing away";
  page_->open(settings_.address);
  EXPECT_EQ(held(), 1U) << "nor does one after a page that did not ask";
  askForBridge();
  EXPECT_EQ(held(), 0U);
  window_->bridge().callHandler("waits", std::nullopt, [](const auto&) { FAIL(); });
  page_->startProvisional();
  EXPECT_THAT(window_->bridge().base().responseCallbacks(), ElementsAre("objc_cb_1"));
  page_->commit();
  EXPECT_THAT(window_->bridge().base().responseCallbacks(), IsEmpty());
  window_->bridge().callHandler("late");
  EXPECT_EQ(held(), 1U);
}

TEST_F(WebWindow, TellsOfEachPageOnceTheBridgeIsReadyForIt) {
  std::vector<std::size_t> heldThen;
  settings_.pageChanged = [&] {
    window_->bridge().callHandler("state");
    heldThen.push_back(held());
  };
  open();
  page_->open(settings_.address);
  askForBridge();
  page_->open(settings_.address);
  EXPECT_THAT(heldThen, ElementsAre(1U, 1U));
}

TEST_F(WebWindow, MayBeLetGoWhenAPageChanges) {
  settings_.pageChanged = [this] { window_.reset(); };
  open();
  page_->open(settings_.address);
  EXPECT_EQ(window_, nullptr);
  expectNothingOnScreen();
}

TEST_F(WebWindow, LoadsThePageAgainWhenItsProcessEnds) {
  open();
  page_->open(settings_.address);
  askForBridge();
  page_->terminateProcess();
  EXPECT_EQ(page_->reloadCount(), 1);
  window_->bridge().callHandler("note");
  EXPECT_EQ(held(), 1U);
}

TEST_F(WebWindow, ThatIsClosedLeavesNothingAndLetsItsHandlersGo) {
  open();
  const auto kept = std::make_shared<int>();
  window_->bridge().registerHandler("a", [kept](const auto&, const auto&) {});
  window_->bridge().callHandler("b", std::nullopt, [kept](const auto&) {});
  window_->close();
  EXPECT_EQ(kept.use_count(), 1);
  EXPECT_FALSE(window_->isOpen());
  expectNothingOnScreen();
  window_->bridge().callHandler("b", std::nullopt, [kept](const auto&) {});
  EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(WebWindow, ThatClosesInAHandlerLooksAtNoFurtherMessage) {
  open();
  int later = 0;
  window_->bridge().registerHandler("close", [this](const auto&, const auto&) { window_.reset(); });
  window_->bridge().registerHandler("later", [&](const auto&, const auto&) { ++later; });
  page_->setScriptHandler([](const std::string&) {
    return ScriptResult{boost::json::value(R"([{"handlerName":"close"},{"handlerName":"later"}])"),
                        std::nullopt};
  });
  page_->navigate("https://__wvjb_queue_message__");
  page_->navigate("https://__wvjb_queue_message__");
  pump();
  EXPECT_EQ(window_, nullptr);
  EXPECT_EQ(later, 0);
  expectNothingOnScreen();
}

TEST_F(WebWindow, IsClosedWhenTheInterfaceFails) {
  std::vector<std::string> reasons;
  settings_.failed = [&](const std::string& reason) {
    EXPECT_FALSE(window_->isOpen());
    reasons.push_back(reason);
    window_.reset();
  };
  open();
  memory().userInterface.failInterface("no display");
  EXPECT_THAT(reasons, ElementsAre("no display"));
  expectNothingOnScreen();
}

TEST_F(WebWindow, IsClosedWhenTheProcessOfItsPageCannotRun) {
  std::vector<std::string> reasons;
  settings_.failed = [&](const std::string& reason) {
    EXPECT_FALSE(window_->isOpen());
    reasons.push_back(reason);
  };
  open();
  page_->failProcess("it ends at once");
  EXPECT_THAT(reasons, ElementsAre("it ends at once"));
  expectNothingOnScreen();
}

TEST_F(WebWindow, OutlivesTheShutDownOfItsHost) {
  open();
  page_.reset();
  ZOVKPopupHost::shutDown();
  EXPECT_FALSE(window_->isOpen());
  window_->reload();
  window_->evaluate("1", [](const ScriptResult&) { FAIL(); });
  window_->bridge().callHandler("b");
  ZOVKPopupHost::pump();
  ASSERT_TRUE(setUpAnew());
  EXPECT_FALSE(window_->isOpen()) << "it belongs to the host before";
}

}  // namespace
}  // namespace zovk
