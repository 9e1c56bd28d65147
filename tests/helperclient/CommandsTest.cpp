#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HelperCommands : public ClientOfTheHelper {};

TEST_F(HelperCommands, TheGreetingComesFirstAndNamesTheGame) {
  start();
  const auto greetings = hosts_.last().messages();
  ASSERT_EQ(greetings.size(), 1U);
  // Developer tools are for builds that ask for them by name, as the tests' own do not.
  EXPECT_EQ(
      boost::json::serialize(greetings[0]),
      R"({"type":"hello","version":1,"application":"test.game",)"
      R"("dataDirectory":"/data/test.game","nativeWindow":7,"developerTools":false,"pageMemory":512,)"
      R"("drawing":"plain","drawingFailed":false})");
}

TEST_F(HelperCommands, TheGreetingAsksForThePagesConsoleWhenAToolWantsIt) {
  settings_.pageConsole = true;
  start();
  EXPECT_EQ(hosts_.last().messages().front().at("pageConsole"), true);
}

TEST_F(HelperCommands, TheGreetingNamesTheGamesWindowAsItsTextSays) {
  const auto greetingFor = [this](const std::string& text) {
    settings_.gameWindow = text;
    start();
    return hosts_.last().messages().front();
  };
  EXPECT_EQ(greetingFor("x11:0x1f").at("nativeWindow"), 31U);
  EXPECT_EQ(greetingFor("x11:12").at("nativeWindow"), 12U);
  const HelperMessage wayland = greetingFor("wayland:a b");
  EXPECT_EQ(wayland.at("nativeWindow"), 0U);
  EXPECT_EQ(wayland.at("waylandWindow"), "a b");
  EXPECT_THAT(takeLines(), IsEmpty());
  for (const std::string text : {"x11:", "x11:0", "x11:7b", "wayland:", "mir:1", "7"}) {
    const HelperMessage other = greetingFor(text);
    EXPECT_EQ(other.at("nativeWindow"), 7U) << text;
    EXPECT_FALSE(other.contains("waylandWindow")) << text;
    EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("neither x11:NUMBER nor wayland:HANDLE")));
  }
}

TEST_F(HelperCommands, WhatOnlyTheGameCanTellOfItsWindowReachesTheHelper) {
  settings_.nativeWindow = 0;
  startReady();
  client_->gameWindowDidResize(640, 400);
  client_->gameWindowDidResize(0, 400);
  client_->gameWindowDidBecomeKey();
  client_->gameWindowDidResignKey();
  EXPECT_THAT(commands(), ElementsAre(R"({"type":"game.size","size":[0,0,6.4E2,4E2]})",
                                      R"({"type":"game.key","key":true})",
                                      R"({"type":"game.key","key":false})"));
  EXPECT_EQ(client_->mainScreenBounds(), (Rect{0, 0, 640, 400}));
}

TEST_F(HelperCommands, WhatTheDisplayTellsOfTheGamesWindowTheGameNeedNot) {
  startReady();
  client_->gameWindowDidResize(640, 400);
  client_->gameWindowDidBecomeKey();
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperCommands, AWindowIsMadeShownAndClosed) {
  startReady();
  auto window = client_->makeWindow({10, 20, 300.5, 400});
  window->setBackgroundColor({1, 0, 0.5, 0.25});
  window->makeKeyAndVisible();
  window.reset();
  EXPECT_THAT(
      commands(),
      ElementsAre(R"({"type":"window.create","window":1,"view":2,"frame":[1E1,2E1,3.005E2,4E2]})",
                  R"({"type":"window.background","window":1,"color":[1E0,0E0,5E-1,2.5E-1]})",
                  R"({"type":"window.show","window":1})", R"({"type":"window.close","window":1})",
                  R"({"type":"view.release","view":2})"));
}

TEST_F(HelperCommands, APressOfAGamePadIsSentByName) {
  startReady();
  client_->gamePadDidPress(ZOVKPopupGamePad::kDown, "A", "B");
  client_->gamePadDidPress(ZOVKPopupGamePad::kLeave, "Cross", "Circle");
  client_->gamePadDidPress(static_cast<ZOVKPopupGamePad>(6), "A", "B");
  EXPECT_THAT(
      commands(),
      ElementsAre(
          R"({"type":"pad.press","press":"down","pressName":"A","leaveName":"B"})",
          R"({"type":"pad.press","press":"leave","pressName":"Cross","leaveName":"Circle"})"));
}

TEST_F(HelperCommands, CommandsBeforeTheHelperIsReadyAreSentInOrder) {
  start();
  EXPECT_EQ(client_->mainScreenBounds(), Rect{});
  const auto window = client_->makeWindow({});
  window->makeKeyAndVisible();
  const auto sent = hosts_.last().messages();
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[0].at("type"), "hello");
  EXPECT_EQ(sent[1].at("type"), "window.create");
  EXPECT_EQ(sent[2].at("type"), "window.show");
}

TEST_F(HelperCommands, ALayoutBindsEachViewOnce) {
  startReady();
  auto layout = client_->loadLayout("/bundle", "Main", {});
  auto button = layout->outlet("crossBtn");
  EXPECT_EQ(layout->outlet("crossBtn"), button);
  EXPECT_THAT(
      commands(),
      ElementsAre(R"({"type":"layout.load","layout":1,"view":2,"bundle":"/bundle","name":"Main"})",
                  R"({"type":"layout.outlet","layout":1,"view":3,"name":"crossBtn"})"));
  layout.reset();
  EXPECT_THAT(commands(), ElementsAre(R"({"type":"layout.close","layout":1})",
                                      R"({"type":"view.release","view":2})"));
  button.reset();
  EXPECT_THAT(commands(), ElementsAre(R"({"type":"view.release","view":3})"));
}

TEST_F(HelperCommands, EveryViewCommandIsSentAtOnce) {
  startReady();
  const auto layout = client_->loadLayout("/bundle", "Main", {});
  const auto a = layout->outlet("a");
  const auto b = layout->outlet("b");
  commands();
  a->addSubview(*b);
  a->sendSubviewToBack(*b);
  b->removeFromSuperview();
  b->setHidden(true);
  b->setAlpha(0.5);
  b->setBackgroundColor(Color::black(0.5));
  b->setClipsToBounds(true);
  b->setImage("/close.png");
  b->pinEdgesTo(*a);
  b->pinTopTo(*a, true, 44);
  b->pinBottomToTopOfFirst({a.get(), nullptr, layout->root().get()});
  EXPECT_THAT(
      commands(),
      ElementsAre(
          R"({"type":"view.add","view":3,"child":4})", R"({"type":"view.back","view":3,"child":4})",
          R"({"type":"view.remove","view":4})", R"({"type":"view.hidden","view":4,"hidden":true})",
          R"({"type":"view.alpha","view":4,"alpha":5E-1})",
          R"({"type":"view.background","view":4,"color":[0E0,0E0,0E0,5E-1]})",
          R"({"type":"view.clip","view":4,"clips":true})",
          R"({"type":"view.image","view":4,"path":"/close.png"})",
          R"({"type":"view.pinEdges","view":4,"to":3})",
          R"({"type":"view.pinTop","view":4,"to":3,"safeArea":true,"offset":4.4E1})",
          R"({"type":"view.pinBottom","view":4,"candidates":[3,2]})"));
}

TEST_F(HelperCommands, EveryWebCommandIsSentAtOnce) {
  startReady();
  WebViewConfiguration configuration;
  configuration.scriptMessageHandlers["A"] = nullptr;
  configuration.scriptMessageHandlers["B"] = nullptr;
  configuration.prefersMobileContent = true;
  configuration.opaque = false;
  auto view = client_->makeWebView(configuration);
  view->load("https://a/");
  view->loadFile("file:///p.html", "file:///");
  view->stopLoading();
  view->reload();
  view->evaluateJavaScript("1+1", [](const ScriptResult&) {});
  view->evaluateJavaScript("2+2", {});
  client_->terminateWebProcess();
  view.reset();
  EXPECT_THAT(
      commands(),
      ElementsAre(
          R"({"type":"web.create","view":1,"handlers":["A","B"],"inlineMedia":false,)"
          R"("mobile":true,"bounces":true,"scrollIndicator":true,"adjustInset":true,)"
          R"("opaque":false})",
          R"({"type":"web.load","view":1,"url":"https://a/"})",
          R"({"type":"web.loadFile","view":1,"url":"file:///p.html","readAccess":"file:///"})",
          R"({"type":"web.stop","view":1})", R"({"type":"web.reload","view":1})",
          R"({"type":"web.evaluate","view":1,"script":"1+1","id":2})",
          R"({"type":"web.run","view":1,"script":"2+2"})", R"({"type":"web.terminate","view":1})",
          R"({"type":"web.close","view":1})"));
}

TEST_F(HelperCommands, CommandsThatTheSocketDoesNotTakeWaitInOrder) {
  startReady();
  const auto view = client_->makeWebView({});
  const std::string padding(10000, 'x');
  for (int i = 0; i < 1000; ++i) view->load(std::to_string(i) + padding);
  int next = 0;
  pumpUntil("the commands", [&] {
    for (const auto& load : hosts_.last().messages("web.load")) {
      EXPECT_TRUE(load.at("url").as_string().starts_with(std::to_string(next++) + "x"));
    }
    return next == 1000;
  });
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperCommands, AHelperThatNeverReadsCountsAsLostWhenTooMuchWaits) {
  HelperLauncher launcher = hosts_.launcher();
  launcher.maximumPendingBytes = 100000;
  start(launcher);
  const auto view = client_->makeWebView({});
  for (int i = 0; i < 100; ++i) view->load(std::string(10000, 'x'));
  pump();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("too many commands wait")));
  EXPECT_EQ(hosts_.last().messages("web.load").size(), 1U);
}

TEST_F(HelperCommands, AScriptThatIsTooLongIsAnsweredWithAnErrorAndHarmsNothing) {
  startReady();
  const auto view = client_->makeWebView({});
  std::optional<ScriptResult> result;
  view->evaluateJavaScript(std::string(kMaximumFrameLength, 'x'),
                           [&](const ScriptResult& r) { result = r; });
  pump();
  ASSERT_TRUE(result);
  EXPECT_TRUE(result->error);
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperCommands, AClosedSocketDoesNotSignalTheGame) {
  startReady();
  const auto view = client_->makeWebView({});
  hosts_.last().die();
  view->load("https://a/");
  view->load("https://b/");
  pump();
  EXPECT_EQ(hosts_.last().messages("web.load").size(), 1U);
}

TEST_F(HelperCommands, AnAddressIsOpenedByTheHelper) {
  startReady();
  client_->openUrl("mailto:a@b", {});
  EXPECT_THAT(commands(), ElementsAre(R"({"type":"url.open","url":"mailto:a@b","id":1})"));
  EXPECT_THAT(takeLines(), IsEmpty());
}

}  // namespace
}  // namespace zovk
