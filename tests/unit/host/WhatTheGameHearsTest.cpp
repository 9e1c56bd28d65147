#include <functional>

#include <boost/json/serialize.hpp>

#include "fixtures/MemoryHostFixture.h"

namespace zovk {
namespace {

namespace json = boost::json;

enum class When { kAtOnce, kInAPump };

constexpr const char* kReason = "the helper is gone";

/// A test for each row of the table in docs/integration.md, in its order: the test's name is the
/// row's first cell, and the first `hears` or `hearsNothing` of a test is what the row says. A test
/// of the documents compares them.
///
/// The game has a document, a service, a player and the public calls.
class WhatTheGameHears : public MemoryHostFixture {
 protected:
  static json::object popup(const std::string& scene) {
    const std::string uri = "https://popups.example/" + scene;
    return {{"scene", scene}, {"scene_type", 1},
            {"pop_type", 1},  {"content_type", 3},
            {"uri", uri},     {"sig", md5Hex(uri)},
            {"pop_freq", 2},  {"report_url", "https://report.example/" + scene},
            {"priority", 5}};
  }
  static json::object with(json::object popup, const char* member, const json::value& value) {
    popup[member] = value;
    return popup;
  }
  static json::object withoutReport(json::object popup) {
    popup.erase("report_url");
    return popup;
  }
  static json::object behind() { return with(popup("behind"), "priority", 1); }
  static json::object conditional(const std::string& scene) {
    return with(with(popup(scene), "check_url", json::value("https://check.example/" + scene)),
                "pop_freq", 3);
  }
  /// The policy is shown by scene type, not by its scene.
  static json::object policy(const std::string& scene = "ZOVKPolicy") {
    return with(with(popup(scene), "scene_type", 0), "publish_time", 5);
  }

  void setUpWith(const std::vector<json::object>& popups) {
    const json::object document = {{"popups", json::array(popups.begin(), popups.end())}};
    memory().files.addFile("/app/ZOVKPopupResource.bundle/ZOVKPopupLocal.config",
                           json::serialize(document));
    ASSERT_TRUE(setUp());
  }
  void request() { ZOVKPopup::showPopup("", 1, note()); }
  void requestWith(const std::vector<json::object>& popups) {
    setUpWith(popups);
    request();
    settle();
  }
  void requestPolicyWith(const std::vector<json::object>& popups) {
    setUpWith(popups);
    ZOVKPopup::showPolicy(note());
    settle();
  }

  ZOVKPopupComplete note() {
    return [this](std::int32_t code, const std::string& message) {
      heard_.push_back({pumping_ ? When::kInAPump : When::kAtOnce, {code, message}});
    };
  }
  /// Pumps until nothing is left to do. Answers of services come in between, on their own.
  void settle() {
    do {
      pumping_ = true;
      pump();
      pumping_ = false;
    } while (memory().urlSession.deliver() > 0);
  }
  /// Delivers an event of the screen, which comes in a pump.
  void play(const std::function<void()>& act) {
    memory().scheduler.async(act);
    settle();
  }
  void post(const std::string& action, const std::string& message = "") {
    play([&] {
      const json::object body{{"action", action}, {"msg", message}};
      page()->postMessage("ZOVKPopup", json::value(json::serialize(body)));
    });
  }
  void press(const std::string& button, const std::string& action) {
    const auto layout = memory().userInterface.frontLayout();
    EXPECT_TRUE(layout->isVisible(button)) << button;
    play([&] { layout->press(action); });
  }
  /// Answers the waiting query of a condition with this text.
  void answer(const std::string& text) {
    memory().urlSession.answer("check.example", 200, text);
    settle();
  }
  void answerYes(int times) {
    for (int i = 0; i < times; ++i) answer(R"({"need_popup":1})");
  }

  void hears(When when, std::int32_t code, const std::string& message) {
    ASSERT_EQ(heard_.size(), 1U);
    EXPECT_EQ(heard_[0].second, Answer(code, message));
    EXPECT_EQ(heard_[0].first, when);
    heard_.clear();
  }
  void hearsNothing() { EXPECT_TRUE(heard_.empty()); }
  void expectOnScreen(const std::string& scene) {
    ASSERT_NE(page(), nullptr) << "no page is on screen";
    EXPECT_EQ(page()->lastLoad(), "https://popups.example/" + scene);
    EXPECT_EQ(memory().userInterface.liveWindows(), 1U);
  }
  /// Nothing of the request is left, and nothing more of it comes.
  void expectNothingOnScreen() {
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    memory().scheduler.advance(std::chrono::minutes(1));
    settle();
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_TRUE(heard_.empty());
  }
  std::shared_ptr<MemoryWebView> page() { return memory().userInterface.frontWebView(); }

 private:
  bool pumping_ = false;
  std::vector<std::pair<When, Answer>> heard_;
};

TEST_F(WhatTheGameHears, NothingIsValid) {
  setUpWith({with(popup("past"), "expire_time", 1)});
  request();
  hears(When::kAtOnce, -1, "No valid Popup now");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePolicyIsNotNewer) {
  setUpWith({with(policy(), "publish_time", 0)});
  ZOVKPopup::showPolicy(note());
  hears(When::kAtOnce, -1, "");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePolicyIsNewerButNoPopupOfSceneType0IsValid) {
  setUpWith({with(policy(), "scene_type", 1)});
  ZOVKPopup::showPolicy(note());
  hears(When::kAtOnce, -1, "No valid Popup now");
  ZOVKPopup::showPolicy(note());
  hears(When::kAtOnce, -1, "");  // it counts as seen
}

TEST_F(WhatTheGameHears, TheHostWasShutDownBefore) {
  setUpWith({popup("page")});
  ZOVKPopupHost::shutDown();
  request();
  hears(When::kAtOnce, -1, "ZOVKPopup is not set up, or was shut down");
}

TEST_F(WhatTheGameHears, ThePageSkips) {
  requestWith({popup("page")});
  post("skip", "later");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":"later"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageSkipsWithPopupsBehindIt) {
  requestWith({popup("page"), behind()});
  post("skip", "later");
  hearsNothing();
  expectOnScreen("behind");
  post("skip", "never");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":"never"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageCommits) {
  requestWith({popup("page")});
  post("commit", "sword");
  hears(When::kInAPump, 1, R"({"action":"commit","msg":"sword"})");
  EXPECT_EQ(memory().urlSession.requestsTo("report.example/page").size(), 1U);
  memory().urlSession.answer("report.example", 200, "stored");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageCommitsAndTheReportFails) {
  requestWith({popup("page")});
  post("commit", "sword");
  memory().urlSession.fail("report.example", "no network");
  settle();
  hears(When::kInAPump, 1, R"({"action":"commit","msg":"sword"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageCommitsWithPopupsBehindIt) {
  requestWith({popup("page"), behind()});
  post("commit", "sword");
  hearsNothing();
  expectOnScreen("behind");
  post("skip", "never");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":"never"})");
}

TEST_F(WhatTheGameHears, ThePageCommitsAndHasNoReportAddress) {
  requestWith({withoutReport(popup("page")), behind()});
  post("commit", "sword");
  hears(When::kInAPump, 0, "reatin complete");
  EXPECT_EQ(memory().urlSession.requestCount(), 0U);
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageCancels) {
  requestWith({popup("page")});
  post("cancel", "no");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":"no"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageCancelsWithPopupsBehindIt) {
  requestWith({popup("page"), behind()});
  post("cancel", "no");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":"no"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, APageOfTheOtherHandlerConfirmsRejectsOrCancels) {
  setUpWith({popup("page")});
  for (const char* action : {"confirm", "reject", "cancel"}) {
    request();
    settle();
    play([&] {
      page()->postMessage("__qvOpenSdk", json::object{{"action", action}, {"msg", "sword"}});
    });
    hears(When::kInAPump, 1, R"({"action":"commit","msg":"sword"})");
    expectNothingOnScreen();
  }
}

TEST_F(WhatTheGameHears, TheCrossIsPressed) {
  requestWith({popup("page")});
  press("crossBtn", "crossButtonClicked");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":""})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ReturnIsPressedOnAGamePage) {
  requestWith({with(popup("page"), "pop_type", 2), behind()});
  press("returnBtn", "returnButtonClicked");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":""})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePolicyIsConfirmed) {
  requestPolicyWith({policy()});
  press("confirmBtn", "confirmButtonDidClicked");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":""})");
  ZOVKPopup::showPolicy(note());
  hears(When::kAtOnce, -1, "");  // seen
}

TEST_F(WhatTheGameHears, ThePolicyIsRejected) {
  requestPolicyWith({policy()});
  press("rejectBtn", "rejectButtonDidClicked");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":""})");
  ZOVKPopup::showPolicy(note());
  settle();
  expectOnScreen("ZOVKPolicy");
}

TEST_F(WhatTheGameHears, ThePermissionIsConfirmed) {
  requestWith({popup("ZOVKPolicy_Permission")});
  press("centerConfirmBtn", "confirmButtonDidClicked");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":""})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, ThePageDoesNotLoad) {
  requestWith({popup("page")});
  play([&] { page()->failProvisional("no network"); });
  hearsNothing();
  expectOnScreen("page");
  press("crossBtn", "crossButtonClicked");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":""})");
}

TEST_F(WhatTheGameHears, TheProcessOfThePageEnds) {
  requestWith({popup("page")});
  play([&] {
    page()->open("https://popups.example/page");
    page()->terminateProcess();
  });
  hearsNothing();
  EXPECT_EQ(page()->reloadCount(), 1);
  post("skip", "later");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":"later"})");
}

TEST_F(WhatTheGameHears, TheServiceDoesNotWantAConditionalPopup) {
  requestWith({conditional("asked"), behind()});
  answer(R"({"need_popup":0})");
  hears(When::kInAPump, 0, "reatin complete");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, TheServiceOfAConditionalPopupDoesNotAnswer) {
  requestWith({conditional("asked"), behind()});
  memory().urlSession.fail("check.example", "no network");
  settle();
  hears(When::kInAPump, 0, "reatin complete");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, TheServiceWantsAConditionalPopupOnlyTheFirstTimeItIsAsked) {
  requestWith({conditional("asked"), behind()});
  answerYes(1);
  answer(R"({"need_popup":0})");
  hears(When::kInAPump, 0, "");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupSkips) {
  requestWith({conditional("asked"), behind()});
  answerYes(2);
  expectOnScreen("asked");
  post("skip", "later");
  hears(When::kInAPump, 0, R"({"action":"skip","msg":"later"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupCancels) {
  requestWith({conditional("asked"), behind()});
  answerYes(2);
  post("cancel", "no");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":"no"})");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupCommitsAlone) {
  requestWith({conditional("asked")});
  answerYes(2);
  post("commit", "sword");
  hearsNothing();
  EXPECT_EQ(memory().urlSession.requestsTo("report.example/asked").size(), 1U);
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupCommitsWithPopupsBehindIt) {
  requestWith({conditional("asked"), behind()});
  answerYes(2);
  post("commit", "sword");
  hearsNothing();
  expectOnScreen("behind");
  post("cancel", "no");
  hears(When::kInAPump, 2, R"({"action":"cancel","msg":"no"})");
}

TEST_F(WhatTheGameHears, AConditionalPopupCommitsAndHasNoReportAddress) {
  requestWith({withoutReport(conditional("asked")), behind()});
  answerYes(2);
  post("commit", "sword");
  hears(When::kInAPump, 0, "reatin complete");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupAtTheEndOfARequestIsNotWanted) {
  requestWith({popup("page"), with(conditional("asked"), "priority", 1)});
  post("commit", "sword");
  answer(R"({"need_popup":0})");
  hears(When::kInAPump, 0, "");
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, AConditionalPopupAtTheEndOfARequestCommits) {
  requestWith({popup("page"), with(conditional("asked"), "priority", 1)});
  post("skip", "later");
  answerYes(1);
  post("commit", "sword");
  hears(When::kInAPump, 1, R"({"action":"commit","msg":"sword"})");
}

TEST_F(WhatTheGameHears, TheHelperIsLostForGood) {
  requestWith({popup("page"), behind()});
  play([&] { memory().userInterface.failInterface(kReason); });
  hears(When::kInAPump, -1, kReason);
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, TheHelperWasLostBefore) {
  setUpWith({popup("page")});
  memory().userInterface.failInterface(kReason);
  request();
  settle();
  hears(When::kInAPump, -1, kReason);
  expectNothingOnScreen();
}

TEST_F(WhatTheGameHears, PopupsAreHeldBack) {
  setUpWith({popup("page")});
  ZOVKPopupHost::holdPopups();
  request();
  settle();
  hearsNothing();
  ZOVKPopupHost::releasePopups();
  settle();
  expectOnScreen("page");
}

TEST_F(WhatTheGameHears, TheHostIsShutDownMeanwhile) {
  requestWith({popup("page")});
  ZOVKPopupHost::shutDown();
  settle();
  hearsNothing();
}

}  // namespace
}  // namespace zovk
