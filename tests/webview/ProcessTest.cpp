#include <csignal>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

#include "HandServer.h"
#include "PopupScreen.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

/// Kills the processes of pages from outside, at moments of a load.
class HelperPageProcess : public testing::Test {
 protected:
  void load(const std::string& url) {
    helper_.send({{"type", "web.load"}, {"view", PopupScreen::kWebView}, {"url", url}});
  }
  boost::json::value ask() { return helper_.await("web.policy").at("decision"); }
  void allow() {
    helper_.send({{"type", "web.decide"},
                  {"view", PopupScreen::kWebView},
                  {"decision", ask()},
                  {"allow", true}});
  }
  void reload() { helper_.send({{"type", "web.reload"}, {"view", PopupScreen::kWebView}}); }
  void kill(const std::string& program, const char* event) {
    const auto processes = descendantsNamed(helper_.pid(), program);
    ASSERT_FALSE(processes.empty());
    for (const pid_t process : processes) ::kill(process, SIGKILL);
    if (*event != 0) helper_.await(event);
  }
  void killPage() { kill("WebKitWebProces", "web.terminated"); }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperPageProcess, ThatDiesBeforeItsFirstPageCameLoadsItAgain) {
  screen_.open();
  load(PopupScreen::pageUrl("plain.html"));
  ask();
  killPage();
  reload();
  allow();
  helper_.await("web.finished", {{"url", PopupScreen::pageUrl("plain.html")}});
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPageProcess, ThatDiesWhileThePageIsOnItsWayLoadsItAgain) {
  HandServer server;
  screen_.open();
  load(server.url());
  allow();
  server.awaitRequest();
  killPage();
  reload();
  allow();
  server.awaitRequest();
  server.answer("Second");
  helper_.await("web.finished", {{"url", server.url()}});
  EXPECT_EQ(screen_.evaluate("document.title"), "Second");
}

TEST_F(HelperPageProcess, ThatDiesOverAnotherPageLoadsTheOneThatWasAskedFor) {
  screen_.openPage("plain.html");
  load(PopupScreen::pageUrl("other.html"));
  ask();
  killPage();
  reload();
  allow();
  helper_.await("web.finished", {{"url", PopupScreen::pageUrl("other.html")}});
}

TEST_F(HelperPageProcess, ThatDiesOnTheWayToAnotherSiteLoadsTheOneThatWasAskedFor) {
  HandServer server;
  screen_.openPage("plain.html");
  load(server.url());
  allow();
  server.awaitRequest();
  killPage();
  reload();
  allow();
  server.awaitRequest();
  server.answer("Second");
  helper_.await("web.finished", {{"url", server.url()}});
}

TEST_F(HelperPageProcess, OfTheNetworkMayDieOnceWhileAPageIsOnItsWay) {
  HandServer server;
  screen_.open();
  load(server.url());
  allow();
  server.awaitRequest();
  kill("WebKitNetworkPr", "");
  allow();
  server.awaitRequest();
  server.answer("Second");
  helper_.await("web.finished", {{"url", server.url()}});
}

TEST_F(HelperPageProcess, OfTheNetworkThatDiesAgainFailsTheLoad) {
  HandServer server;
  screen_.open();
  load(server.url());
  for (int i = 0; i < 2; ++i) {
    allow();
    server.awaitRequest();
    kill("WebKitNetworkPr", "");
  }
  helper_.await("web.provisionalFailed", {{"url", server.url()}});
  EXPECT_FALSE(helper_.came("web.policy"));
}

TEST_F(HelperPageProcess, ThatDiesUnderItsPageLoadsItAgain) {
  screen_.openPage("plain.html");
  killPage();
  reload();
  allow();
  helper_.await("web.finished", {{"url", PopupScreen::pageUrl("plain.html")}});
}

TEST_F(HelperPageProcess, ThatHangsLeavesTheButtonsAliveIsReportedAndDoesNotHoldTheNextPageUp) {
  screen_.openPage("plain.html");
  helper_.send({{"type", "web.run"}, {"view", PopupScreen::kWebView}, {"script", "for (;;) {}"}});
  screen_.click("crossBtn");
  helper_.await("action", {{"action", "crossButtonClicked"}});
  ASSERT_EQ(runProgram({"xdotool", "mousemove", "250", "400", "click", "1", "key", "a"}), 0);
  helper_.await("web.responsive", {{"responsive", false}});
  screen_.loadPage("other.html");
  EXPECT_FALSE(helper_.came("web.terminated"));
  EXPECT_EQ(screen_.evaluate("1 + 1"), 2);
}

int memoryRank(pid_t process) {
  int rank = -1;
  std::ifstream("/proc/" + std::to_string(process) + "/oom_score_adj") >> rank;
  return rank;
}

TEST_F(HelperPageProcess, AndTheHelperGoBeforeTheGameWhenMemoryRunsOut) {
  screen_.openPage("plain.html");
  EXPECT_EQ(memoryRank(helper_.pid()), memoryRank(::getpid()) + 500);
  const auto pages = descendantsNamed(helper_.pid(), "WebKitWebProces");
  ASSERT_FALSE(pages.empty());
  for (const pid_t page : pages) EXPECT_GE(memoryRank(page), memoryRank(helper_.pid()));
}

}  // namespace
}  // namespace zovk
