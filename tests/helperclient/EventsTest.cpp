#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HelperEvents : public ClientOfTheHelper {
 protected:
  /// A web view with the number 1.
  void openPage() {
    startReady();
    WebViewConfiguration configuration;
    configuration.scriptMessageHandlers["Game"] = handler_;
    page_ = client_->makeWebView(configuration);
    page_->setNavigationDelegate(delegate_);
    commands();
  }
  void askPolicy(int decision) {
    receive(fmt::format(
        R"({{"type":"web.policy","view":1,"decision":{},"url":"https://a/","target":"main"}})",
        decision));
  }

  std::shared_ptr<RecordingHandler> handler_ = std::make_shared<RecordingHandler>();
  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::shared_ptr<WebView> page_;
};

constexpr const char* kAllowed = R"({"type":"web.decide","view":1,"decision":5,"allow":true})";
constexpr const char* kCancelled = R"({"type":"web.decide","view":1,"decision":5,"allow":false})";

TEST_F(HelperEvents, TheDelegateHearsOfEveryStepOfALoad) {
  openPage();
  receive(R"({"type":"web.address","view":1,"asked":"HTTPS://A","url":"https://a/"})");
  receive(R"({"type":"web.started","view":1,"url":"https://a/"})");
  receive(R"({"type":"web.url","view":1,"url":"https://a/b"})");
  receive(R"({"type":"web.finished","view":1,"url":"https://a/b"})");
  receive(R"({"type":"web.provisionalFailed","view":1,"url":"https://a/","error":"no host"})");
  receive(R"({"type":"web.failed","view":1,"url":"https://a/","error":"cut off"})");
  receive(R"({"type":"web.terminated","view":1})");
  receive(R"({"type":"web.window","view":1,"url":"https://w/","target":"none"})");
  EXPECT_THAT(delegate_->calls,
              ElementsAre("resolved HTTPS://A as https://a/", "started", "finished",
                          "provisionalFailed no host", "failed cut off", "terminated",
                          "window none https://w/"));
  EXPECT_EQ(page_->url(), "https://a/b");
}

TEST_F(HelperEvents, HowTheMachineIsHeldIsTheDevicesUntilTheHelperIsLost) {
  startReady();
  EXPECT_EQ(device_.orientation(), Orientation::kUnknown);
  receive(R"({"type":"held","held":"portrait"})");
  EXPECT_EQ(device_.orientation(), Orientation::kPortrait);
  receive(R"({"type":"held","held":"upsideDown"})");
  EXPECT_EQ(device_.orientation(), Orientation::kPortraitUpsideDown);
  receive(R"({"type":"held","held":"left"})");
  EXPECT_EQ(device_.orientation(), Orientation::kLandscapeLeft);
  receive(R"({"type":"held","held":"unknown"})");
  EXPECT_EQ(device_.orientation(), Orientation::kUnknown);
  receive(R"({"type":"held","held":"right"})");
  EXPECT_EQ(device_.orientation(), Orientation::kLandscapeRight);
  killHelper();
  EXPECT_EQ(device_.orientation(), Orientation::kUnknown);
}

TEST_F(HelperEvents, ADelegateThatIsGoneIsNotMissed) {
  openPage();
  delegate_.reset();
  receive(R"({"type":"web.finished","view":1,"url":"https://a/"})");
  askPolicy(5);
  EXPECT_THAT(commands(), ElementsAre(kAllowed));
}

TEST_F(HelperEvents, MessagesGoToTheHandlerOfTheirName) {
  openPage();
  receive(R"({"type":"web.message","view":1,"name":"Game","body":{"a":[1,null]}})");
  receive(R"({"type":"web.message","view":1,"name":"Game","body":null})");
  receive(R"({"type":"web.message","view":1,"name":"Game"})");
  receive(R"({"type":"web.message","view":1,"name":"Other","body":1})");
  EXPECT_THAT(handler_->calls, ElementsAre(R"(Game {"a":[1,null]})", "Game null", "Game absent"));
}

TEST_F(HelperEvents, OneTurnOfThePumpDeliversOneMessageSoThatItsBudgetHolds) {
  openPage();
  for (int i = 0; i < 3; ++i) {
    hosts_.last().send(R"({"type":"web.message","view":1,"name":"Game","body":1})");
  }
  for (std::size_t turn = 1; turn <= 3; ++turn) {
    queue_.pump(std::chrono::microseconds(0));
    EXPECT_EQ(handler_->calls.size(), turn);
  }
}

TEST_F(HelperEvents, ALongMessageTakesSeveralTurnsOfThePump) {
  openPage();
  hosts_.last().send(R"({"type":"web.message","view":1,"name":"Game","body":")" +
                     std::string(100'000, 'x') + R"("})");
  int turns = 0;
  while (handler_->calls.empty() && turns < 100) {
    queue_.pump(std::chrono::microseconds(0));
    ++turns;
  }
  EXPECT_GE(turns, 4) << "no more than 32 KiB at a time";
  EXPECT_LT(turns, 100);
}

TEST_F(HelperEvents, WhatTheHelperSaidLastComesInTurnsToo) {
  openPage();
  for (int i = 0; i < 3; ++i) {
    hosts_.last().send(R"({"type":"web.message","view":1,"name":"Game","body":1})");
  }
  hosts_.last().die();
  queue_.pump(std::chrono::microseconds(0));
  EXPECT_EQ(handler_->calls.size(), 1U);
  EXPECT_THAT(takeLines(), IsEmpty());
  pump();
  EXPECT_EQ(handler_->calls.size(), 3U);
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("lost")));
}

TEST_F(HelperEvents, ButtonsReachTheOwnerOfTheirLayoutWhileItLives) {
  startReady();
  auto owner = std::make_shared<RecordingOwner>();
  const auto layout = client_->loadLayout("/bundle", "Main", owner);
  receive(R"({"type":"action","layout":1,"action":"crossButtonClicked"})");
  EXPECT_THAT(owner->calls, ElementsAre("crossButtonClicked"));
  owner.reset();
  receive(R"({"type":"action","layout":1,"action":"crossButtonClicked"})");
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperEvents, TheFirstAnswerToANavigationCounts) {
  openPage();
  delegate_->whenAsked = [](const NavigationDecision& decide) {
    decide(NavigationPolicy::kAllow);
    decide(NavigationPolicy::kCancel);
  };
  askPolicy(5);
  EXPECT_THAT(delegate_->calls, ElementsAre("policy main https://a/"));
  EXPECT_THAT(commands(), ElementsAre(kAllowed));
}

TEST_F(HelperEvents, ANavigationMayBeAnsweredLater) {
  openPage();
  NavigationDecision kept;
  delegate_->whenAsked = [&](const NavigationDecision& decide) { kept = decide; };
  askPolicy(5);
  EXPECT_THAT(commands(), IsEmpty());
  kept(NavigationPolicy::kCancel);
  kept = nullptr;
  EXPECT_THAT(commands(), ElementsAre(kCancelled));
}

TEST_F(HelperEvents, DroppingTheLastCopyOfADecisionCancels) {
  openPage();
  NavigationDecision first;
  delegate_->whenAsked = [&](const NavigationDecision& decide) { first = decide; };
  askPolicy(5);
  NavigationDecision second = first;
  first = nullptr;
  EXPECT_THAT(commands(), IsEmpty());
  second = nullptr;
  EXPECT_THAT(commands(), ElementsAre(kCancelled));
}

TEST_F(HelperEvents, ADecisionForAPageThatIsGoneDoesNothing) {
  openPage();
  NavigationDecision kept;
  delegate_->whenAsked = [&](const NavigationDecision& decide) { kept = decide; };
  askPolicy(5);
  page_.reset();
  commands();
  kept(NavigationPolicy::kAllow);
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperEvents, ADecisionForAHelperThatIsGoneDoesNothing) {
  openPage();
  NavigationDecision kept;
  delegate_->whenAsked = [&](const NavigationDecision& decide) { kept = decide; };
  askPolicy(5);
  killHelper();
  ASSERT_EQ(hosts_.count(), 2U);
  commands();
  kept(NavigationPolicy::kAllow);
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperEvents, ScriptsGiveAValueOrAnError) {
  openPage();
  std::vector<std::string> results;
  for (int i = 0; i < 2; ++i) {
    page_->evaluateJavaScript("1", [&](const ScriptResult& result) {
      results.push_back(result.value ? boost::json::serialize(*result.value) : *result.error);
    });
  }
  const auto asked = hosts_.last().messages("web.evaluate");
  ASSERT_EQ(asked.size(), 2U);
  const auto answer = [&](int which, const std::string& rest) {
    receive(fmt::format(R"({{"type":"web.evaluated","id":{},{}}})",
                        asked[static_cast<std::size_t>(which)].at("id").as_int64(), rest));
  };
  answer(1, R"("error":"no such thing")");
  answer(0, R"("value":{"a":1})");
  answer(0, R"("value":2)");
  EXPECT_THAT(results, ElementsAre("no such thing", R"({"a":1})"));
}

TEST_F(HelperEvents, APageThatIsDroppedAnswersItsScriptsWithAnError) {
  openPage();
  std::optional<ScriptResult> result;
  page_->evaluateJavaScript("1", [&](const ScriptResult& r) { result = r; });
  page_.reset();
  EXPECT_FALSE(result) << "only from the pump";
  pump();
  ASSERT_TRUE(result);
  EXPECT_FALSE(result->value);
  EXPECT_THAT(result->error.value_or(""), HasSubstr("went away"));
}

TEST_F(HelperEvents, OpeningAnAddressIsAnsweredOnce) {
  startReady();
  std::vector<bool> answers;
  client_->openUrl("http://a/", [&](bool opened) { answers.push_back(opened); });
  const HelperId id = hosts_.last().messages("url.open").at(0).at("id").as_int64();
  const std::string answer = fmt::format(R"({{"type":"url.opened","id":{},"opened":true}})", id);
  receive(answer);
  receive(answer);
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(HelperEvents, AnAnswerOfAnotherKindIsNotTakenForTheOneThatIsWaitedFor) {
  openPage();
  int answers = 0;
  page_->evaluateJavaScript("1", [&](const ScriptResult&) { ++answers; });
  const HelperId id = hosts_.last().messages("web.evaluate").at(0).at("id").as_int64();
  receive(fmt::format(R"({{"type":"url.opened","id":{},"opened":true}})", id));
  EXPECT_EQ(answers, 0);
}

TEST_F(HelperEvents, LogLinesOfTheHelperReachTheLogOnOneLine) {
  startReady();
  receive(R"({"type":"log","line":"one\ntwo"})");
  EXPECT_THAT(takeLines(), ElementsAre("one two"));
}

TEST_F(HelperEvents, AnUnknownEventIsSkippedWithOneLine) {
  startReady();
  receive(R"({"type":"no.such","x":1})");
  EXPECT_THAT(takeLines(), ElementsAre("[Error] Helper sent an unknown event: no.such"));
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperEvents, WhatIsGoneIsSkippedQuietly) {
  startReady();
  for (const char* event :
       {R"({"type":"window.key","window":99,"key":true})",
        R"({"type":"window.size","window":99,"width":1,"height":2,"safeArea":[0,0,0,0]})",
        R"({"type":"layout.loaded","layout":99,"found":true,"outlets":[]})",
        R"({"type":"view.frame","view":99,"window":98,"frame":[0,0,1,1],"visible":true})",
        R"({"type":"action","layout":99,"action":"a"})",
        R"({"type":"web.message","view":99,"name":"Game","body":1})",
        R"({"type":"web.policy","view":99,"decision":1,"url":"","target":"sub"})",
        R"({"type":"web.url","view":99,"url":""})", R"({"type":"web.evaluated","id":99,"value":1})",
        R"({"type":"synced","id":99})"}) {
    receive(event);
  }
  EXPECT_THAT(takeLines(), IsEmpty());
  EXPECT_THAT(commands(), IsEmpty());
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kUnknown);
}

class IllFormedHelperEvent : public HelperEvents,
                             public testing::WithParamInterface<const char*> {};

TEST_P(IllFormedHelperEvent, IsSkippedWithOneLine) {
  openPage();
  const Rect screen = client_->mainScreenBounds();
  const auto event = boost::json::parse(GetParam()).as_object();
  receive(GetParam());
  EXPECT_THAT(takeLines(), ElementsAre(fmt::format("[Error] Helper sent an ill-formed {} event",
                                                   std::string(event.at("type").as_string()))));
  EXPECT_THAT(delegate_->calls, IsEmpty());
  EXPECT_THAT(handler_->calls, IsEmpty());
  EXPECT_THAT(commands(), IsEmpty());
  EXPECT_EQ(client_->mainScreenBounds(), screen);
  EXPECT_EQ(page_->url(), "");
  EXPECT_EQ(hosts_.count(), 1U) << "the connection goes on";
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, IllFormedHelperEvent,
    testing::Values(
        R"({"type":"ready"})", R"({"type":"ready","version":"1","screen":[0,0,1,1],"schemes":[]})",
        R"({"type":"ready","version":1,"screen":[0,0,1],"schemes":[]})",
        R"({"type":"ready","version":1,"screen":[0,0,1,"1"],"schemes":[]})",
        R"({"type":"ready","version":1,"screen":[0,0,1,1],"schemes":[1]})",
        R"({"type":"failed","reason":1})", R"({"type":"screen","screen":{}})",
        R"({"type":"screen","screen":[0,0,1,1,1]})", R"({"type":"held"})",
        R"({"type":"held","held":"sideways"})", R"({"type":"held","held":1})",
        R"({"type":"window.key","window":0,"key":true})",
        R"({"type":"window.key","window":1,"key":1})",
        R"({"type":"window.size","window":1,"width":-1,"height":2,"safeArea":[0,0,0,0]})",
        R"({"type":"window.size","window":1,"width":1,"height":2})",
        R"({"type":"layout.loaded","layout":1,"found":1,"outlets":[]})",
        R"({"type":"view.frame","view":1,"window":1,"frame":null,"visible":true})",
        R"({"type":"action","layout":1})", R"({"type":"web.message","view":1})",
        R"({"type":"web.message","view":"1","name":"Game"})",
        R"({"type":"web.policy","view":1,"decision":-5,"url":"u","target":"main"})",
        R"({"type":"web.policy","view":1,"decision":5,"url":"u","target":"top"})",
        R"({"type":"web.policy","view":1,"decision":5,"url":5,"target":"main"})",
        R"({"type":"web.window","view":1,"url":"u"})", R"({"type":"web.started","view":1})",
        R"({"type":"web.address","view":1,"url":"u"})",
        R"({"type":"web.address","view":1,"asked":"u","url":1})",
        R"({"type":"web.finished","view":1.5,"url":"u"})",
        R"({"type":"web.provisionalFailed","view":1,"url":"u","error":{}})",
        R"({"type":"web.failed","view":1,"url":"u"})", R"({"type":"web.terminated"})",
        R"({"type":"web.url","view":1,"url":null})", R"({"type":"web.evaluated","id":1})",
        R"({"type":"web.evaluated","id":1,"value":1,"error":"e"})",
        R"({"type":"web.evaluated","id":1,"error":1})",
        R"({"type":"url.opened","id":1,"opened":"yes"})", R"({"type":"snapshot.done","id":1})",
        R"({"type":"synced","id":"1"})", R"({"type":"log","line":[]})"));

TEST_F(HelperEvents, ADelegateMayDropEverythingWithinAnEvent) {
  openPage();
  auto window = client_->makeWindow({});
  auto layout = client_->loadLayout("/bundle", "Main", {});
  delegate_->whenFinished = [&] {
    page_.reset();
    window.reset();
    layout.reset();
    delegate_.reset();
  };
  hosts_.last().send(R"({"type":"web.finished","view":1,"url":"https://a/"})");
  hosts_.last().send(R"({"type":"web.finished","view":1,"url":"https://a/"})");
  hosts_.last().send(R"({"type":"window.key","window":2,"key":true})");
  pump();
  EXPECT_EQ(page_, nullptr);
  EXPECT_TRUE(client_->isEmpty());
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperEvents, ADelegateMayShutEverythingDownWithinAnEvent) {
  openPage();
  int finished = 0;
  delegate_->whenFinished = [&] {
    ++finished;
    client_.reset();
  };
  hosts_.last().send(R"({"type":"web.finished","view":1,"url":"https://a/"})");
  hosts_.last().send(R"({"type":"web.finished","view":1,"url":"https://a/"})");
  pump();
  EXPECT_EQ(finished, 1);
  page_->load("https://b/");
  EXPECT_TRUE(hosts_.last().sawEnd());
}

}  // namespace
}  // namespace zovk
