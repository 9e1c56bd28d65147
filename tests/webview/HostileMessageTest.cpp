// Pages that post more than anybody can take. What they cost the helper is counted in its processor
// time, and how soon it answers a click is printed.
#include <chrono>
#include <iostream>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>

#include "PopupScreen.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

class HostilePage : public testing::Test {
 protected:
  HostilePage() { screen_.openPage("plain.html"); }

  /// Runs a script in which `game` and `sdk` are the two channels.
  void run(const std::string& script) {
    helper_.send({{"type", "web.run"},
                  {"view", PopupScreen::kWebView},
                  {"script",
                   "{const {ZOVKPopup: game, __qvOpenSdk: sdk} = "
                   "window.webkit.messageHandlers;" +
                       script + "}"}});
  }
  /// The line about what was left out.
  std::string line() { return std::string(helper_.await("log").at("line").as_string()); }
  boost::json::value next() { return helper_.await("web.message").at("body"); }

  void clickAndPrint(const std::string& what) {
    if (cross_.empty()) cross_ = screen_.place(PopupScreen::view("crossBtn"));
    const auto middle = [this](std::size_t side, int origin) {
      return std::to_string(origin + cross_[side].to_number<int>() +
                            cross_[side + 2].to_number<int>() / 2);
    };
    runProgram(
        {"xdotool", "mousemove", middle(0, PopupScreen::kLeft), middle(1, PopupScreen::kTop)});
    const auto before = std::chrono::steady_clock::now();
    runProgram({"xdotool", "click", "1"});
    helper_.await("action");
    const std::chrono::duration<double, std::milli> took =
        std::chrono::steady_clock::now() - before;
    std::cout << what << ": " << took.count() << " ms with the tool that clicks\n";
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
  boost::json::array cross_;
};

struct Hostile {
  const char* name;
  const char* script;
  const char* problem;
};

class HostilePost : public HostilePage, public testing::WithParamInterface<Hostile> {};

TEST_P(HostilePost, IsLeftOutWithOneLineAndCostsTheHelperNothing) {
  const double before = processorSeconds(helper_.pid());
  run(std::string(GetParam().script) + "; sdk.postMessage('after')");
  EXPECT_EQ(line(), std::string("helper: a page's message was left out: ") + GetParam().problem);
  EXPECT_EQ(next(), "after");
  const double cost = processorSeconds(helper_.pid()) - before;
  std::cout << GetParam().name << ": " << cost << " s of the helper\n";
  EXPECT_LT(cost, 1) << "a hundred times what it takes";
}

INSTANTIATE_TEST_SUITE_P(
    Of, HostilePost,
    testing::Values(
        Hostile{"AListInAListTwice",
                "let a = []; for (let i = 0; i < 24; ++i) a = [a, a];"
                "game.postMessage(a)",
                "too many values"},
        Hostile{"TheSameADepthLess",
                "let a = []; for (let i = 0; i < 23; ++i) a = [a, a];"
                "game.postMessage(a)",
                "too many values"},
        Hostile{"TenMillionHoles", "game.postMessage(new Array(1e7))", "too many values"},
        Hostile{"FourThousandMillionHoles", "game.postMessage(new Array(4294967295))",
                "too many values"},
        Hostile{"AWideObject",
                "const o = {}; for (let i = 0; i < 2e5; ++i) o['k' + i] = i;"
                "game.postMessage(o)",
                "too many values"},
        Hostile{"AHugeText", "game.postMessage('x'.repeat(64 << 20))", "too long"},
        Hostile{"ALargeText", "game.postMessage('x'.repeat((1 << 20) + 1))", "too long"},
        Hostile{"ManyMiddlingTexts", "const t = 'x'.repeat(1 << 19); game.postMessage([t, t, t])",
                "too long"},
        Hostile{"TextThatIsManyValues", "game.postMessage('[' + '1,'.repeat(2e4) + '1]')",
                "too many values"},
        Hostile{"EndlessGetters",
                "const o = {get o() { return o; }}; game.postMessage("
                "new Proxy([], {get: (t, n) => n === 'length' ? 1e9 : t[n]}))",
                "too many values"}),
    [](const auto& test) { return test.param.name; });

TEST_F(HostilePage, ThatFloodsLeavesTheButtonsAlive) {
  clickAndPrint("a click on a page at rest");
  run("const t = 'x'.repeat(1 << 20); const flood = () => {"
      "  for (let i = 0; i < 2000; ++i) game.postMessage(i % 50 ? i : t);"
      "  setTimeout(flood, 0); }; flood();");
  next();
  for (int i = 0; i < 3; ++i) clickAndPrint("a click in a flood of messages");
}

TEST_F(HostilePage, ThatWouldTakeTenSecondsToConvertLeavesTheButtonsAlive) {
  run("setInterval(() => game.postMessage(new Array(1e7)), 0)");
  line();
  for (int i = 0; i < 3; ++i) clickAndPrint("a click under posts of ten million holes");
}

TEST_F(HostilePage, DoesNotReachTheGuardOfItsMessages) {
  screen_.evaluate(
      "JSON.stringify = Array.isArray = Object = String.prototype.toWellFormed = () => 'mine';"
      "document.dispatchEvent(new Event('zovkAsk'));"
      "window.name = [window.webkit.messageHandlers.zovk === undefined,"
      "               typeof zovkCount, delete window.webkit.messageHandlers].join()");
  EXPECT_EQ(screen_.evaluate("window.name"), "true,undefined,true");
}

TEST_F(HostilePage, ThatForgesALineToTheGuardIsHeldToTheSameBounds) {
  run("document.open(); document.write('<p>'); document.close();"
      "const line = document.createElement('i'); document.body.append(line);"
      "line.dispatchEvent(new Event('zovkLine', {bubbles: true}));"
      "const post = (detail) => line.dispatchEvent(new CustomEvent('post', {detail}));"
      "post('t0 ' + 'x'.repeat(2 << 20)); post({}); post('t9 x'); post('nonsense');"
      "sdk.postMessage('after')");
  EXPECT_EQ(next(), "after");
}

TEST_F(HostilePage, CannotPostWithoutTheGuardFromAnEmptyFrame) {
  run("const frame = document.createElement('iframe'); document.body.append(frame);"
      "const handlers = frame.contentWindow.webkit.messageHandlers;"
      "handlers.ZOVKPopup.postMessage('x'.repeat(2 << 20)); sdk.postMessage('after')");
  EXPECT_EQ(line(), "helper: a page's message was left out: too long");
  EXPECT_EQ(next(), "after");
}

TEST_F(HostilePage, ThatWritesItselfAnewIsStillHeard) {
  run("document.open(); document.write('<script>window.webkit.messageHandlers.ZOVKPopup"
      ".postMessage(\"within\")</' + 'script>'); document.close(); game.postMessage('after')");
  EXPECT_EQ(next(), "within");
  EXPECT_EQ(next(), "after");
}

TEST_F(HostilePage, ThatPostsFromAFrameIsHeard) {
  run("const frame = document.createElement('iframe'); frame.sandbox = 'allow-scripts';"
      "frame.srcdoc = '<script>window.webkit.messageHandlers.ZOVKPopup.postMessage("
      "{frame: 1})</' + 'script>'; document.body.append(frame)");
  const auto asked = helper_.await("web.policy");
  helper_.send({{"type", "web.decide"},
                {"view", PopupScreen::kWebView},
                {"decision", asked.at("decision")},
                {"allow", true}});
  EXPECT_EQ(next(), (boost::json::value{{"frame", 1}}));
}

TEST_F(HostilePage, HearsThatItsMessageWasPostedOrWhyNot) {
  run("const say = (how) => (what) => sdk.postMessage(how + ' ' + what);"
      "game.postMessage(1).then(say('posted'));"
      "const loop = {}; loop.loop = loop;"
      "for (const value of [() => 1, Symbol('x'), 10n, loop])"
      "  game.postMessage(value).catch((error) => say('no')(error.name))");
  EXPECT_EQ(next(), 1);
  EXPECT_EQ(next(), "posted undefined");
  EXPECT_EQ(next(), "no DataCloneError");
  EXPECT_EQ(next(), "no DataCloneError");
  EXPECT_EQ(next(), "no TypeError");
  EXPECT_EQ(next(), "no TypeError");
}

TEST_F(HostilePage, GetsAnErrorForAResultThatIsTooLarge) {
  EXPECT_EQ(screen_.evaluate("new Array(1e5)"), "too many values");
  EXPECT_EQ(screen_.evaluate("'x'.repeat(64 << 20)"), "too long");
  EXPECT_EQ(screen_.evaluate("1"), 1);
}

}  // namespace
}  // namespace zovk
