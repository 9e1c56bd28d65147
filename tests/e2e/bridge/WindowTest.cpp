#include <filesystem>
#include <fstream>
#include <limits>

#include <unistd.h>

#include "e2e/bridge/BridgePageFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

using testing::ElementsAre;

class WebWindow : public BridgePageFixture {
 protected:
  std::string addFile(const std::string& name, const std::string& html) {
    const auto path = home() / name;
    std::ofstream(path) << html;
    return path.string();
  }
  void openFile(const std::string& path) {
    windowSettings().pageFile = path;
    openAddress("");
  }
};

constexpr const char* kReady = "bridge.callHandler('tell', 'ready');";

TEST_F(WebWindow, ShowsAPageFileThatReadsNoOtherFile) {
  const std::string other = addFile("other.html", "secret");
  openFile(
      addFile("a page #1.html", bridgePage("fetch('file://" + other +
                                           "').then(() => 'read', () => 'refused')"
                                           ".then(text => bridge.callHandler('tell', text));")));
  awaitTold(1);
  EXPECT_THAT(told(), ElementsAre("refused"));
}

TEST_F(WebWindow, FillsTheScreenUnlessItHasAPlace) {
  open(bridgePage(kReady));
  awaitTold(1);
  sync();
  const boost::json::value whole = evaluate("[innerWidth, innerHeight]");
  letWindowGo();
  windowSettings().frame = {40, 30, 500, 400};
  open(bridgePage(kReady));
  awaitTold(2);
  awaitTrue("innerWidth === 500 && innerHeight === 400");
  EXPECT_NE(whole, (boost::json::array{500, 400}));
}

TEST_F(WebWindow, TakesTheKeyboardAndThePagesKeysReachThePage) {
  open(
      bridgePage("addEventListener('keydown', event => bridge.callHandler('tell', event.key));"
                 "addEventListener('load', () => 0);" +
                 std::string(kReady)));
  awaitTold(1);
  awaitTrue("document.hasFocus()");
  press("a");
  awaitTold(2);
  press("Escape");
  awaitTold(3);
  EXPECT_THAT(told(), ElementsAre("ready", "a", "Escape"));
}

TEST_F(WebWindow, MayCloseFromWithinAHandler) {
  open(bridgePage("bridge.callHandler('close'); bridge.callHandler('tell', 'afterwards');"));
  bridge().registerHandler("close", [this](const Value&, const Respond&) { letWindowGo(); });
  pumpUntil([&] { return !windowIsThere(); }, "the end");
  openAddress(site().page("/next", bridgePage(kReady)));
  awaitTold(1);
  EXPECT_EQ(told().back(), "ready");
}

TEST_F(WebWindow, AnswersAScriptThatIsUnderWayWhenItCloses) {
  open(bridgePage(kReady));
  awaitTold(1);
  std::optional<std::string> error;
  window().evaluate("1", [&](const ScriptResult& result) { error = result.error; });
  window().close();
  EXPECT_FALSE(error.has_value());
  pumpUntil([&] { return error.has_value(); }, "the error");
  EXPECT_FALSE(window().isOpen());
}

TEST_F(WebWindow, UnderAPopupIsUsableAgainOnceThePopupIsGone) {
  bundle().addPage(popup("over", 1), answeringPage("commit", "", false));
  bundle().write();
  open(bridgePage("addEventListener('keydown', event => bridge.callHandler('tell', event.key));" +
                  std::string(kReady)));
  awaitTold(1);
  awaitTrue("document.hasFocus()");
  show("over");
  awaitTrue("!document.hasFocus()");
  bridge().callHandler("anything");  // the page below is there all the time
  EXPECT_EQ(evaluate("1 + 1"), 2);
  click("crossBtn");
  pumpUntilAnswers(1);
  awaitTrue("document.hasFocus()");
  press("b");
  awaitTold(2);
  EXPECT_EQ(told().back(), "b");
}

TEST_F(WebWindow, IsAbsentWithWrongArguments) {
  using Settings = ZOVKPopupWebWindowSettings;
  const auto refuse = [this](const Settings& settings, const std::string& why) {
    EXPECT_EQ(ZOVKPopupWebWindow::open(settings), nullptr) << why;
    EXPECT_EQ(lines().back(), "[Error] ZOVKPopupWebWindow::open: " + why);
  };
  Settings settings;
  refuse(settings, "it takes either an address or a page file");
  settings.address = "https://a.example/";
  settings.pageFile = "/a.html";
  refuse(settings, "it takes either an address or a page file");
  settings.pageFile.clear();
  settings.address = "file:///etc/passwd";
  refuse(settings, "the address is no http or https address");
  settings.address.clear();
  settings.pageFile = "a.html";
  refuse(settings, "the page file is no absolute path");
  settings.pageFile = "/a.html";
  settings.frame = {0, 0, 100, 0};
  refuse(settings, "the frame is no place on a screen");
  settings.frame = {std::numeric_limits<double>::quiet_NaN(), 0, 100, 100};
  refuse(settings, "the frame is no place on a screen");
}

TEST_F(WebWindow, ThatIsOpenMakesTheHostsShutDownNeitherSlowNorUnsafe) {
  open(bridgePage(kReady));
  awaitTold(1);
  bool called = false;
  window().evaluate("1", [&](const ScriptResult&) { called = true; });
  bridge().callHandler("anything", std::nullopt, [&](const Value&) { called = true; });
  const auto start = std::chrono::steady_clock::now();
  ZOVKPopupHost::shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_TRUE(childrenOf(getpid()).empty());
  EXPECT_FALSE(window().isOpen());
  bridge().callHandler("anything");
  window().reload();
  window().evaluate("1", [&](const ScriptResult&) { called = true; });
  letWindowGo();
  EXPECT_FALSE(called);
  EXPECT_EQ(ZOVKPopupWebWindow::open(windowSettings()), nullptr);
  EXPECT_EQ(lines().back(),
            "[Error] ZOVKPopupWebWindow::open: the host is not set up, or this is not its main "
            "thread");
}

TEST_F(WebWindow, OpenedAndClosedAgainAndAgainLeavesNothing) {
  const auto once = [this] {
    openAddress(site().page("/page", bridgePage(kReady)));
    const std::size_t before = told().size();
    awaitTold(before + 1);
    letWindowGo();
  };
  once();
  const std::size_t descriptors = openDescriptors(getpid());
  for (int i = 0; i < 10; ++i) once();
  EXPECT_LE(openDescriptors(getpid()), descriptors + 1);
  EXPECT_TRUE(bridgeLines().empty());
}

}  // namespace
}  // namespace zovk
