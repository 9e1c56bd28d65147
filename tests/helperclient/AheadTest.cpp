// What the helper does before the game has answered: loads that will be allowed, and what a page
// that calls has to say.
#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class HelperAhead : public ClientOfTheHelper {
 protected:
  static constexpr const char* kScript = "fetch();";

  /// A web view with the number 1, whose delegate fetches when it is asked about the address.
  void openPage() {
    startReady();
    page_ = client_->makeWebView({});
    page_->setNavigationDelegate(delegate_);
    page_->fetchAhead("https://a/", kScript);
    delegate_->whenAsked = [this](const NavigationDecision& decide) {
      evaluate(kScript);
      decide(NavigationPolicy::kCancel);
    };
    commands();
  }
  void evaluate(const std::string& script) {
    page_->evaluateJavaScript(script, [this](const ScriptResult& result) {
      results_.push_back(result.value ? boost::json::serialize(*result.value)
                                      : "error: " + *result.error);
    });
  }
  void ask(int decision, bool fetching) {
    receive(fmt::format(R"({{"type":"web.policy","view":1,"decision":{},"url":"https://a/",)"
                        R"("target":"main"{}}})",
                        decision, fetching ? R"(,"fetching":true)" : ""));
  }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::shared_ptr<WebView> page_;
  std::vector<std::string> results_;
};

constexpr const char* kCancelled = R"({"type":"web.decide","view":1,"decision":5,"allow":false})";

TEST_F(HelperAhead, TheHelperIsToldWhatToFetch) {
  startReady();
  page_ = client_->makeWebView({});
  commands();
  page_->fetchAhead("https://a/", kScript);
  EXPECT_THAT(
      commands(),
      ElementsAre(
          R"({"type":"web.fetchAhead","view":1,"address":"https://a/","script":"fetch();"})"));
}

TEST_F(HelperAhead, ANewHelperIsToldTheSame) {
  openPage();
  killHelper();
  EXPECT_THAT(commands(), Contains(HasSubstr("web.fetchAhead")));
}

TEST_F(HelperAhead, WhatIsFetchedAlreadyIsNotAskedForAgain) {
  openPage();
  ask(5, true);
  EXPECT_THAT(commands(), ElementsAre(kCancelled));
  EXPECT_THAT(results_, IsEmpty());
  receive(R"({"type":"web.fetched","view":1,"decision":5,"value":"[1]"})");
  EXPECT_THAT(results_, ElementsAre(R"("[1]")"));
}

TEST_F(HelperAhead, SignalAndQueueThatCameTogetherAreHeardInOnePump) {
  openPage();
  hosts_.last().send(R"({"type":"web.policy","view":1,"decision":5,"url":"https://a/",)"
                     R"("target":"main","fetching":true})");
  hosts_.last().send(R"({"type":"web.fetched","view":1,"decision":5,"value":"[1]"})");
  pump();
  EXPECT_THAT(results_, ElementsAre(R"("[1]")"));
}

TEST_F(HelperAhead, AFetchThatFailedTellsWhy) {
  openPage();
  ask(5, true);
  receive(R"({"type":"web.fetched","view":1,"decision":5,"error":"no such function"})");
  EXPECT_THAT(results_, ElementsAre("error: no such function"));
}

TEST_F(HelperAhead, WhatIsNotFetchedYetIsAskedFor) {
  openPage();
  ask(5, false);
  EXPECT_THAT(commands(), Contains(HasSubstr("web.evaluate")));
}

TEST_F(HelperAhead, AnotherScriptIsRunAsEver) {
  openPage();
  delegate_->whenAsked = [this](const NavigationDecision&) { evaluate("other();"); };
  ask(5, true);
  EXPECT_THAT(commands(), Contains(HasSubstr("other();")));
  receive(R"({"type":"web.fetched","view":1,"decision":5,"value":"[1]"})");
  EXPECT_THAT(results_, IsEmpty());
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAhead, OneFetchServesOneCall) {
  openPage();
  delegate_->whenAsked = [this](const NavigationDecision&) {
    evaluate(kScript);
    evaluate(kScript);
  };
  ask(5, true);
  EXPECT_EQ(hosts_.last().messages("web.evaluate").size(), 1U);
}

TEST_F(HelperAhead, TheScriptIsRunAsEverOnceNobodyIsAskedAnyMore) {
  openPage();
  delegate_->whenAsked = nullptr;
  ask(5, true);
  commands();
  evaluate(kScript);
  EXPECT_THAT(commands(), Contains(HasSubstr("web.evaluate")));
}

TEST_F(HelperAhead, AFetchOfALostHelperFails) {
  openPage();
  ask(5, true);
  killHelper();
  pump();
  EXPECT_THAT(results_, ElementsAre(HasSubstr("error: ")));
}

TEST_F(HelperAhead, AFetchFromAPageThatIsGoneFailsFromThePump) {
  openPage();
  ask(5, true);
  page_.reset();
  EXPECT_THAT(results_, IsEmpty());
  pump();
  EXPECT_THAT(results_, ElementsAre(HasSubstr("error: ")));
}

TEST_F(HelperAhead, AnIllFormedFetchIsRefused) {
  openPage();
  ask(5, true);
  receive(R"({"type":"web.fetched","view":1,"decision":5})");
  receive(R"({"type":"web.fetched","view":1,"decision":5,"value":"[]","error":"both"})");
  receive(R"({"type":"web.policy","view":1,"decision":6,"url":"u","target":"main","fetching":1})");
  EXPECT_THAT(takeLines(),
              ElementsAre(HasSubstr("ill-formed web.fetched"), HasSubstr("ill-formed web.fetched"),
                          HasSubstr("ill-formed web.policy")));
  EXPECT_THAT(results_, IsEmpty());
}

TEST_F(HelperAhead, ALoadThatWillBeAllowedNeedNotWait) {
  openPage();
  page_->allowAhead("file:///p.html");
  page_->loadFile("file:///p.html", "file:///p.html");
  EXPECT_THAT(commands(), ElementsAre(HasSubstr(R"("allowed":true)")));
}

TEST_F(HelperAhead, WhatIsAllowedAheadIsOneLoadOfThatAddress) {
  openPage();
  page_->allowAhead("file:///p.html");
  page_->loadFile("file:///other.html", "file:///other.html");
  page_->loadFile("file:///p.html", "file:///p.html");
  EXPECT_THAT(commands(), Not(Contains(HasSubstr("allowed"))));
}

TEST_F(HelperAhead, ANewHelperAsksAboutTheLoad) {
  openPage();
  page_->allowAhead("file:///p.html");
  page_->loadFile("file:///p.html", "file:///p.html");
  killHelper();
  const auto replayed = commands();
  EXPECT_THAT(replayed, Contains(HasSubstr("file:///p.html")));
  EXPECT_THAT(replayed, Not(Contains(HasSubstr("allowed"))));
}

}  // namespace
}  // namespace zovk
