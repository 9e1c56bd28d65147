#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "HandServer.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

class HelperPage : public testing::Test {
 protected:
  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

constexpr int kWebView = PopupScreen::kWebView;

TEST_F(HelperPage, StartsAndFinishesWithItsAddress) {
  screen_.open();
  const boost::json::value url(PopupScreen::pageUrl("plain.html"));
  helper_.send({{"type", "web.load"}, {"view", kWebView}, {"url", url}});
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_EQ(question.at("url"), url);
  EXPECT_EQ(question.at("target"), "main");
  EXPECT_FALSE(helper_.came("web.finished"));
  helper_.send({{"type", "web.decide"},
                {"view", kWebView},
                {"decision", question.at("decision")},
                {"allow", true}});
  helper_.await("web.started", {{"view", kWebView}, {"url", url}});
  helper_.await("web.finished", {{"view", kWebView}, {"url", url}});
  helper_.await("web.url", {{"view", kWebView}, {"url", url}});
}

TEST_F(HelperPage, ThatIsCompleteWhileTheGameDecidesOnTheNextOneIsToldUnderItsOwnAddress) {
  HandServer server;
  screen_.open();
  screen_.decide(screen_.ask(server.url()));
  server.awaitRequest();
  server.begin("First");
  helper_.await("web.committed", {{"url", server.url()}});
  const boost::json::value next(PopupScreen::pageUrl("plain.html"));
  const HelperMessage question = screen_.ask(PopupScreen::pageUrl("plain.html"));
  server.end();
  helper_.await("web.finished", {{"url", server.url()}});
  EXPECT_EQ(screen_.evaluate("document.title"), "First");
  screen_.decide(question);
  helper_.await("web.started", {{"url", next}});
  helper_.await("web.committed", {{"url", next}});
  helper_.await("web.finished", {{"url", next}});
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPage, IsToldWithoutAWindowToo) {
  screen_.createWebView();
  screen_.loadPage("plain.html");
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPage, ReportsAFileThatIsNotThereAsFailedBeforeItBegan) {
  screen_.open();
  helper_.send({{"type", "web.loadFile"},
                {"view", kWebView},
                {"url", "file:///nowhere/page.html"},
                {"readAccess", "file:///nowhere/page.html"}});
  const HelperMessage question = helper_.await("web.policy");
  helper_.send({{"type", "web.decide"},
                {"view", kWebView},
                {"decision", question.at("decision")},
                {"allow", true}});
  const HelperMessage failure = helper_.await("web.provisionalFailed", {{"view", kWebView}});
  EXPECT_EQ(failure.at("url"), "file:///nowhere/page.html");
  EXPECT_FALSE(failure.at("error").as_string().empty());
  EXPECT_FALSE(helper_.came("web.finished"));
}

TEST_F(HelperPage, IsAFileWhosePathNeedsEscaping) {
  screen_.open();
  const std::filesystem::path folder = helper_.directory() / "a \xC3\xB6 100% #1";
  std::filesystem::create_directories(folder);
  std::filesystem::copy(std::string(HELPER_PAGES) + "/plain.html", folder);
  // A "%" and a "#" of the path mean something else in an address, so the game escapes them.
  const std::string url =
      "file://" + helper_.directory().string() + "/a \xC3\xB6 100%25 %231/plain.html";
  const std::string escaped =
      "file://" + helper_.directory().string() + "/a%20%C3%B6%20100%25%20%231/plain.html";
  const HelperMessage question = screen_.ask(url);
  EXPECT_EQ(helper_.await("web.address", {{"asked", url}}).at("url"), boost::json::value(escaped));
  EXPECT_EQ(question.at("url"), boost::json::value(escaped));
  screen_.decide(question);
  helper_.await("web.finished", {{"url", escaped}});
  screen_.evaluate("location.href = '?answer=1'; 0");
  EXPECT_EQ(helper_.await("web.policy").at("url"), boost::json::value(escaped + "?answer=1"));
}

TEST_F(HelperPage, TakesAnEmptyFileAddress) {
  screen_.open();
  const auto load = [this](const std::string& url) {
    helper_.send({{"type", "web.loadFile"}, {"view", kWebView}, {"url", url}, {"readAccess", url}});
  };
  load("file://");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_TRUE(std::string(question.at("url").as_string()).starts_with("file://")) << question;
  for (const char* url : {"", "no address at all", "http://"}) load(url);
  // Whatever became of them, the next page comes.
  const boost::json::value page(PopupScreen::pageUrl("plain.html"));
  load(PopupScreen::pageUrl("plain.html"));
  helper_.send({{"type", "web.decide"},
                {"view", kWebView},
                {"decision", helper_.await("web.policy", {{"url", page}}).at("decision")},
                {"allow", true}});
  helper_.await("web.finished", {{"url", page}});
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPage, GivesTheValueOfAScript) {
  screen_.openPage("plain.html");
  EXPECT_EQ(screen_.evaluate("1 + 1"), 2);
  EXPECT_EQ(screen_.evaluate("'a\\u00e4\\u{1F600}'"), "a\xC3\xA4\xF0\x9F\x98\x80");
  EXPECT_EQ(screen_.evaluate("({a: [1, null, 'x']})"),
            (boost::json::value{{"a", {1, nullptr, "x"}}}));
  EXPECT_EQ(screen_.evaluate("undefined"), nullptr);
}

TEST_F(HelperPage, RunsAScriptWhoseResultNobodyWants) {
  screen_.openPage("plain.html");
  for (const char* script : {"window.kept = 7", "throw new Error('no')", "(function () {})"}) {
    helper_.send({{"type", "web.run"}, {"view", kWebView}, {"script", script}});
  }
  helper_.send({{"type", "web.run"}, {"view", kWebView + 1}, {"script", "window.kept = 8"}});
  EXPECT_EQ(screen_.evaluate("window.kept"), 7);
}

TEST_F(HelperPage, GivesTheErrorOfAScript) {
  screen_.openPage("plain.html");
  helper_.send({{"type", "web.evaluate"},
                {"view", kWebView},
                {"id", 1},
                {"script", "throw new Error('no')"}});
  const HelperMessage result = helper_.await("web.evaluated", {{"id", 1}});
  EXPECT_FALSE(result.contains("value"));
  EXPECT_NE(std::string(result.at("error").as_string()).find("no"), std::string::npos);
}

TEST_F(HelperPage, CannotGiveAFunctionAsTheValueOfAScript) {
  screen_.openPage("plain.html");
  helper_.send(
      {{"type", "web.evaluate"}, {"view", kWebView}, {"id", 1}, {"script", "(function () {})"}});
  EXPECT_FALSE(helper_.await("web.evaluated", {{"id", 1}}).at("error").as_string().empty());
}

TEST_F(HelperPage, TellsWhenItsProcessEndedAndLoadsAgain) {
  screen_.openPage("plain.html");
  helper_.send({{"type", "web.terminate"}, {"view", kWebView}});
  helper_.await("web.terminated", {{"view", kWebView}});
  helper_.send({{"type", "web.reload"}, {"view", kWebView}});
  const HelperMessage question = helper_.await("web.policy");
  helper_.send({{"type", "web.decide"},
                {"view", kWebView},
                {"decision", question.at("decision")},
                {"allow", true}});
  helper_.await("web.finished");
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPage, TakesInNoFileBesideIt) {
  screen_.openPage("neighbours.html");
  EXPECT_EQ(screen_.evaluate("document.getElementById('picture').naturalWidth"), 0);
  EXPECT_EQ(screen_.evaluate("typeof window.neighbour"), "undefined");
  EXPECT_NE(screen_.evaluate("getComputedStyle(document.body).color"), "rgb(1, 2, 3)");
}

TEST_F(HelperPage, EmbedsNoOtherFileEvenIfTheGameAllowsIt) {
  screen_.open();
  const std::string url = PopupScreen::pageUrl("framed.html");
  helper_.send({{"type", "web.loadFile"}, {"view", kWebView}, {"url", url}, {"readAccess", url}});
  for (int i = 0; i < 2; ++i) {
    helper_.send({{"type", "web.decide"},
                  {"view", kWebView},
                  {"decision", helper_.await("web.policy").at("decision")},
                  {"allow", true}});
  }
  helper_.await("web.finished");
  EXPECT_FALSE(helper_.came("web.message"));
}

TEST_F(HelperPage, ReadsNoOtherFile) {
  screen_.openPage("plain.html");
  screen_.evaluate(
      "fetch('other.html').then(r => r.text()).then("
      "t => document.title = 'read', () => document.title = 'refused'); 0");
  while (screen_.evaluate("document.title") == "Plain") helper_.sync();
  EXPECT_EQ(screen_.evaluate("document.title"), "refused");
}

TEST_F(HelperPage, CannotBlockItselfWithDialogs) {
  screen_.openPage("plain.html");
  EXPECT_EQ(screen_.evaluate("alert('hello'), confirm('sure?')"), false);
  EXPECT_EQ(screen_.evaluate("prompt('name?')"), nullptr);
}

TEST_F(HelperPage, IsAskedForAsAMobilePage) {
  screen_.openPage("plain.html");
  const boost::json::value agent = screen_.evaluate("navigator.userAgent");
  EXPECT_NE(std::string(agent.as_string()).find(" Mobile Safari/"), std::string::npos) << agent;
}

// An indicator that lies over the page takes no room of it, so its own width is looked at.
TEST_F(HelperPage, ShowsNoScrollIndicatorWhenTheGameWantsNone) {
  screen_.createWebView();
  const auto indicatorWidth = [this](int view) {
    helper_.send(
        {{"type", "web.evaluate"},
         {"view", view},
         {"id", view},
         {"script", "getComputedStyle(document.documentElement, '::-webkit-scrollbar').width"}});
    return helper_.await("web.evaluated", {{"id", view}}).at("value");
  };
  EXPECT_EQ(indicatorWidth(kWebView), "0px");
  constexpr int kOtherWebView = kWebView + 1;
  helper_.send({{"type", "web.create"},
                {"view", kOtherWebView},
                {"handlers", boost::json::array()},
                {"inlineMedia", true},
                {"mobile", true},
                {"bounces", true},
                {"scrollIndicator", true},
                {"adjustInset", false},
                {"opaque", false}});
  EXPECT_NE(indicatorWidth(kOtherWebView), "0px");
}

TEST_F(HelperPage, IsGoneWhenItIsClosed) {
  screen_.openPage("plain.html");
  helper_.send({{"type", "web.close"}, {"view", kWebView}});
  EXPECT_EQ(screen_.evaluate("1"), "the web view is gone");
  helper_.sync();
}

TEST_F(HelperPage, StaysWhenItMovesToAnotherLayout) {
  screen_.openPage("plain.html");
  screen_.evaluate("window.kept = 'yes'");
  helper_.send({{"type", "layout.load"},
                {"layout", 2},
                {"view", 102},
                {"bundle", HELPER_BUNDLE},
                {"name", "ZOVKPopupViewLandscape"}});
  helper_.send({{"type", "layout.outlet"}, {"layout", 2}, {"view", 110}, {"name", "contentView"}});
  helper_.send({{"type", "view.add"}, {"view", PopupScreen::kRoot}, {"child", 102}});
  helper_.send({{"type", "view.pinEdges"}, {"view", 102}, {"to", PopupScreen::kRoot}});
  helper_.send({{"type", "view.add"}, {"view", 110}, {"child", kWebView}});
  helper_.send({{"type", "view.pinEdges"}, {"view", kWebView}, {"to", 110}});
  helper_.send({{"type", "layout.close"}, {"layout", 1}});
  helper_.sync();
  EXPECT_EQ(screen_.evaluate("window.kept"), "yes");
}

}  // namespace
}  // namespace zovk
