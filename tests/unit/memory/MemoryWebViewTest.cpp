#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryWebView.h"

namespace zovk {
namespace {

class Delegate final : public WebViewDelegate {
 public:
  void decidePolicyForNavigationAction(WebView&, const NavigationAction& action,
                                       const NavigationDecision& decide) override {
    events.push_back("decide " + action.url);
    target = action.targetFrame;
    if (policy) decide(*policy);
    if (keep) kept = decide;
  }
  void didStartProvisionalNavigation(WebView&) override { events.push_back("start"); }
  void didFailProvisionalNavigation(WebView&, const std::string& error) override {
    events.push_back("provisional " + error);
  }
  void didFailNavigation(WebView&, const std::string& error) override {
    events.push_back("fail " + error);
  }
  void didFinishNavigation(WebView&) override { events.push_back("finish"); }
  void webContentProcessDidTerminate(WebView&) override { events.push_back("terminated"); }
  void createWebView(WebView&, const NavigationAction& action) override {
    events.push_back("window " + action.url);
  }

  std::vector<std::string> events;
  std::optional<NavigationPolicy> policy;
  TargetFrame target = TargetFrame::kNone;
  bool keep = false;
  NavigationDecision kept;
};

class Handler final : public ScriptMessageHandler {
 public:
  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override {
    names.push_back(name);
    bodies.push_back(body);
  }
  std::vector<std::string> names;
  std::vector<std::optional<boost::json::value>> bodies;
};

class MemoryPage : public testing::Test {
 protected:
  MemoryPage() {
    WebViewConfiguration configuration;
    configuration.scriptMessageHandlers["channel"] = handler;
    page = std::make_shared<MemoryWebView>(scheduler, configuration);
    page->setNavigationDelegate(delegate);
  }

  MemoryScheduler scheduler;
  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
  std::shared_ptr<Handler> handler = std::make_shared<Handler>();
  std::shared_ptr<MemoryWebView> page;
};

TEST_F(MemoryPage, RecordsCommands) {
  EXPECT_EQ(page->lastLoad(), "");
  page->load("http://host/");
  page->loadFile("file:///a", "file:///b");
  page->stopLoading();
  page->reload();
  page->reload();
  ASSERT_EQ(page->loads().size(), 2u);
  EXPECT_EQ(page->loads()[0], (MemoryLoad{"http://host/", std::nullopt}));
  EXPECT_EQ(page->loads()[1], (MemoryLoad{"file:///a", "file:///b"}));
  EXPECT_EQ(page->stopCount(), 1);
  EXPECT_EQ(page->reloadCount(), 2);
  EXPECT_TRUE(delegate->events.empty());
}

TEST_F(MemoryPage, DecidesWithTheFirstAnswer) {
  delegate->keep = true;
  delegate->policy = NavigationPolicy::kCancel;
  const auto decision = page->navigate("http://host/", TargetFrame::kSub);
  EXPECT_TRUE(decision.cancelled());
  EXPECT_EQ(delegate->target, TargetFrame::kSub);
  delegate->kept(NavigationPolicy::kAllow);
  EXPECT_TRUE(decision.cancelled());
}

TEST_F(MemoryPage, WaitsForAnAnswerThatComesLater) {
  delegate->keep = true;
  const auto decision = page->navigate("http://host/");
  EXPECT_TRUE(decision.undecided());
  delegate->kept(NavigationPolicy::kAllow);
  EXPECT_TRUE(decision.allowed());
}

TEST_F(MemoryPage, CancelsANavigationThatNobodyWillAnswer) {
  EXPECT_TRUE(page->navigate("http://host/a").cancelled());
  delegate->keep = true;
  const auto decision = page->navigate("http://host/b");
  EXPECT_TRUE(decision.undecided());
  delegate->kept = nullptr;
  EXPECT_TRUE(decision.cancelled());
}

TEST_F(MemoryPage, AllowsEverythingWithoutADelegate) {
  delegate.reset();
  EXPECT_TRUE(page->navigate("http://host/").allowed());
  page->startProvisional();
  page->finish();
  page->fail("x");
  page->failProvisional("x");
  page->terminateProcess();
  page->requestNewWindow("http://host/");
  EXPECT_EQ(page->url(), "http://host/");
}

TEST_F(MemoryPage, PlaysAWholeLoad) {
  delegate->policy = NavigationPolicy::kAllow;
  EXPECT_TRUE(page->open("http://host/"));
  EXPECT_EQ(page->url(), "http://host/");
  EXPECT_EQ(delegate->events, (std::vector<std::string>{"decide http://host/", "start", "finish"}));
  delegate->policy = NavigationPolicy::kCancel;
  EXPECT_FALSE(page->open("http://other/"));
  EXPECT_EQ(page->url(), "http://host/");
}

TEST_F(MemoryPage, KeepsItsAddressWhenAFrameNavigates) {
  delegate->policy = NavigationPolicy::kAllow;
  page->open("http://host/");
  page->navigate("http://frame/", TargetFrame::kSub);
  page->startProvisional();
  EXPECT_EQ(page->url(), "http://host/");
}

TEST_F(MemoryPage, TellsItsDelegateWhatHappens) {
  page->startProvisional();
  page->failProvisional("a");
  page->fail("b");
  page->terminateProcess();
  page->requestNewWindow("http://host/");
  EXPECT_EQ(delegate->events, (std::vector<std::string>{"start", "provisional a", "fail b",
                                                        "terminated", "window http://host/"}));
}

TEST_F(MemoryPage, PostsMessagesToTheHandlerOfTheirName) {
  EXPECT_TRUE(page->postMessage("channel", boost::json::value("text")));
  EXPECT_TRUE(page->postMessage("channel", std::nullopt));
  EXPECT_FALSE(page->postMessage("other", std::nullopt));
  EXPECT_EQ(handler->names, (std::vector<std::string>{"channel", "channel"}));
  EXPECT_EQ(handler->bodies[0], boost::json::value("text"));
  EXPECT_FALSE(handler->bodies[1]);
}

TEST_F(MemoryPage, AnswersScriptsFromTheScheduler) {
  std::vector<ScriptResult> results;
  const auto keep = [&](const ScriptResult& result) { results.push_back(result); };
  page->evaluateJavaScript("1", keep);
  EXPECT_TRUE(results.empty());
  scheduler.runReady();
  ASSERT_EQ(results.size(), 1u);
  EXPECT_EQ(results[0].value, boost::json::value(nullptr));
  page->setScriptHandler([](const std::string& script) {
    ScriptResult result;
    result.error = "broken " + script;
    return result;
  });
  page->evaluateJavaScript("2", keep);
  page->evaluateJavaScript("3", nullptr);
  scheduler.runReady();
  ASSERT_EQ(results.size(), 2u);
  EXPECT_EQ(results[1].error, "broken 2");
  EXPECT_EQ(page->scripts(), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(MemoryPage, AnswersScriptsWithAnErrorWhenItIsGone) {
  std::optional<ScriptResult> answer;
  page->evaluateJavaScript("1", [&](const ScriptResult& result) { answer = result; });
  page.reset();
  scheduler.runReady();
  ASSERT_TRUE(answer);
  EXPECT_TRUE(answer->error);
  EXPECT_FALSE(answer->value);
}

TEST_F(MemoryPage, LeavesItsParentAndItsHandlersWhenItIsDropped) {
  const auto parentNode = std::make_shared<MemoryViewNode>();
  MemoryView parent(parentNode);
  parent.addSubview(*page);
  EXPECT_EQ(parentNode->childNames(), std::vector<std::string>{"web"});
  page.reset();
  EXPECT_TRUE(parentNode->children.empty());
  EXPECT_EQ(handler.use_count(), 1);
}

}  // namespace
}  // namespace zovk
