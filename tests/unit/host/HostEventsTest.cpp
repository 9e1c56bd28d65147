#include "fixtures/MemoryHostFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The events that a game receives of each popup, beside the results of its requests.
class HostEvents : public MemoryHostFixture {
 protected:
  HostEvents() {
    EXPECT_TRUE(setUp());
    listen();
  }
  void listen() {
    ZOVKPopupHooks hooks;
    hooks.popupEvent = [this](const ZOVKPopupEvent& event) { heard_.push_back(textOf(event)); };
    EXPECT_TRUE(ZOVKPopupHost::setHooks(hooks));
  }
  static std::string textOf(const ZOVKPopupEvent& event) {
    const std::string popup = event.scene + " " + std::to_string(event.pop_id) + " ";
    if (event.kind == ZOVKPopupEvent::Kind::kShown) return popup + "shown";
    if (event.kind == ZOVKPopupEvent::Kind::kNotShown) return popup + event.reason;
    return popup + "answered " + std::to_string(event.result) + " " + event.message;
  }
  static ZOVKPopupModel popup(const std::string& scene, std::int32_t id) {
    ZOVKPopupModel popup = lobby();
    popup.scene = scene;
    popup.pop_id = id;
    popup.priority = 100 - id;  // shown in the order of their numbers
    popup.uri = "https://popups.example/" + scene;
    popup.sig = md5Hex(popup.uri);
    popup.report_url = "https://report.example/" + scene;
    return popup;
  }
  static ZOVKPopupModel conditional(std::int32_t id) {
    ZOVKPopupModel conditional = popup("vip", id);
    conditional.pop_freq = kPopFreqConditional;
    conditional.check_url = "https://check.example/vip";
    return conditional;
  }
  static void add(const std::vector<ZOVKPopupModel>& popups) {
    PopupList list;
    for (const ZOVKPopupModel& popup : popups) {
      list.push_back(std::make_shared<const ZOVKPopupModel>(popup));
    }
    ZOVKPopupManager::sharedInstance()->setMergePopupArr(list);
  }
  ZOVKPopupComplete result() {
    return [this](std::int32_t code, const std::string&) {
      heard_.push_back("result " + std::to_string(code));
    };
  }
  void show(const std::string& scene) { ZOVKPopup::showPopup(scene, 1, result()); }
  void pageLoads() {
    memory().userInterface.frontWebView()->finish();
    pump();
  }
  void answerCondition(const std::string& body) {
    memory().urlSession.answer("check.example", 200, body);
    deliver();
  }
  void failCondition() {
    memory().urlSession.fail("check.example", "gone");
    deliver();
  }
  void deliver() {
    memory().urlSession.deliver();
    pump();
  }
  void chooseAndPump(const std::string& action) {
    choose(action);
    pump();
  }

  static constexpr const char* kWanted = R"({"need_popup":1})";
  std::vector<std::string> heard_;
};

TEST_F(HostEvents, ComeForAPopupThatIsShownAndAnswered) {
  add({popup("lobby", 7)});
  show("lobby");
  pump();
  EXPECT_THAT(heard_, IsEmpty()) << "its page has not loaded yet";
  pageLoads();
  EXPECT_THAT(heard_, ElementsAre("lobby 7 shown"));
  pageLoads();
  EXPECT_THAT(heard_, ElementsAre("lobby 7 shown")) << "it was loaded again, not shown again";
  chooseAndPump("commit");
  EXPECT_THAT(heard_, ElementsAre("lobby 7 shown", "result 1",
                                  R"(lobby 7 answered 1 {"action":"commit","msg":""})"));
}

TEST_F(HostEvents, ComeOnceForAnAnswerThatThePageGivesTwice) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  choose("skip");
  chooseAndPump("skip");
  EXPECT_THAT(heard_, ElementsAre(R"(a 1 answered 0 {"action":"skip","msg":""})", "result 0",
                                  "b 2 skipped_over"));
}

TEST_F(HostEvents, ComeForAPopupWhoseTurnALateConditionEnds) {
  add({popup("a", 1), conditional(2), popup("b", 3)});
  show("");
  pump();
  chooseAndPump("skip");
  chooseAndPump("skip");
  heard_.clear();
  answerCondition(R"({"need_popup":0})");
  EXPECT_THAT(heard_, ElementsAre("result 0", "b 3 skipped_over"))
      << "the conditional was answered";
}

TEST_F(HostEvents, ComeOnceForAPopupThatFailedAndIsSkippedOver) {
  add({popup("a", 1), conditional(2), popup("b", 3)});
  show("");
  pump();
  chooseAndPump("skip");
  chooseAndPump("skip");
  memory().userInterface.frontWebView()->failProvisional("no such host");
  pump();
  heard_.clear();
  failCondition();
  EXPECT_THAT(heard_, ElementsAre("result 0")) << "the game knows that its page failed";
}

TEST_F(HostEvents, ComeForEachPopupOfARequest) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  pageLoads();
  chooseAndPump("skip");
  pageLoads();
  chooseAndPump("cancel");
  EXPECT_THAT(heard_,
              ElementsAre("a 1 shown", R"(a 1 answered 0 {"action":"skip","msg":""})", "b 2 shown",
                          "result 2", R"(b 2 answered 2 {"action":"cancel","msg":""})"));
}

TEST_F(HostEvents, ComeForPopupsBehindOneThatEndsTheRequest) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  chooseAndPump("cancel");
  EXPECT_THAT(heard_, ElementsAre("result 2", R"(a 1 answered 2 {"action":"cancel","msg":""})",
                                  "b 2 request_ended"));
}

TEST_F(HostEvents, ComeForWhatTheSelectionPassesOverWithItsOwnReasons) {
  ZOVKPopupModel late = popup("late", 1);
  late.expire_time = 1;
  ZOVKPopupModel other = popup("other", 2);
  other.valid_platform = "9";
  ZOVKPopupModel wrong = popup("wrong", 3);
  wrong.sig = "no digest";
  ZOVKPopupModel elsewhere = popup("elsewhere", 4);
  elsewhere.scene_type = 8;
  add({late, other, wrong, popup("good", 5), elsewhere});
  show("");
  EXPECT_THAT(heard_, IsEmpty()) << "events come from the pump";
  pump();
  EXPECT_THAT(heard_,
              ElementsAre("late 1 expired", "other 2 other_channel", "wrong 3 digest_differs"));
}

TEST_F(HostEvents, ComeForARequestWithNothingToShow) {
  show("lobby");
  add({popup("lobby", 7)});
  show("nowhere");
  ZOVKPopup::showPolicy(result());
  EXPECT_THAT(heard_, ElementsAre("result -1", "result -1", "result -1"));
  heard_.clear();
  pump();
  EXPECT_THAT(heard_, ElementsAre("lobby 0 no_popup", "nowhere 0 no_popup",
                                  "ZOVKPolicy 0 policy_not_needed"));
}

TEST_F(HostEvents, ComeForAConditionalPopupThatItsServiceDoesNotWant) {
  add({conditional(3)});
  show("vip");
  answerCondition(R"({"need_popup":0})");
  EXPECT_THAT(heard_, ElementsAre("vip 3 condition_refused", "result 0"));
  heard_.clear();
  show("vip");
  failCondition();
  EXPECT_THAT(heard_, ElementsAre("vip 3 condition_failed", "result 0"));
}

TEST_F(HostEvents, ComeForAConditionalPopupThatIsRefusedWhenItIsAboutToBeShown) {
  add({conditional(3)});
  show("vip");
  answerCondition(kWanted);
  answerCondition(R"({"need_popup":0})");
  EXPECT_THAT(heard_, ElementsAre("vip 3 condition_refused", "result 0"));
  heard_.clear();
  show("vip");
  answerCondition(kWanted);
  failCondition();
  EXPECT_THAT(heard_, ElementsAre("vip 3 condition_failed", "result 0"));
}

TEST_F(HostEvents, ComeForPopupsBehindAConditionalOneThatEndsTheRequest) {
  add({conditional(1), popup("b", 2), popup("c", 3)});
  show("");
  answerCondition(R"({"need_popup":0})");
  EXPECT_THAT(heard_, ElementsAre("vip 1 condition_refused", "result 0", "b 2 request_ended",
                                  "c 3 request_ended"));
}

TEST_F(HostEvents, ComeForPopupsBehindAConditionalOneThatCommits) {
  add({conditional(1), popup("b", 2)});
  show("");
  answerCondition(kWanted);
  answerCondition(kWanted);
  chooseAndPump("commit");
  pageLoads();
  EXPECT_THAT(heard_, ElementsAre(R"(vip 1 answered 1 {"action":"commit","msg":""})", "b 2 shown"));
}

TEST_F(HostEvents, ComeOnceForAPageThatDoesNotLoad) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  memory().userInterface.frontWebView()->failProvisional("no such host");
  memory().userInterface.frontWebView()->failProvisional("no such host");
  pump();
  EXPECT_THAT(heard_, ElementsAre("a 1 page_failed"));
  chooseAndPump("skip");
  heard_.clear();
  memory().userInterface.frontWebView()->fail("the line was cut");
  pump();
  EXPECT_THAT(heard_, ElementsAre("b 2 page_failed"));
}

TEST_F(HostEvents, ComeForAllThatALostDisplayLeavesUnanswered) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  memory().userInterface.failInterface("the helper is gone");
  pump();
  EXPECT_THAT(heard_, ElementsAre("result -1", "a 1 display_failed", "b 2 display_failed"));
}

TEST_F(HostEvents, DoNotComeOfALostDisplayForAPopupThatWasAnswered) {
  add({popup("a", 1), popup("b", 2)});
  show("");
  pump();
  choose("skip");
  memory().userInterface.failInterface("the helper is gone");
  pump();
  EXPECT_THAT(heard_, ElementsAre("result -1", R"(a 1 answered 0 {"action":"skip","msg":""})",
                                  "b 2 display_failed"));
}

TEST_F(HostEvents, ComeForACommitWithoutAnAddressToReportTo) {
  ZOVKPopupModel mute = popup("lobby", 7);
  mute.report_url.clear();
  add({mute});
  show("lobby");
  pump();
  chooseAndPump("commit");
  EXPECT_THAT(heard_, ElementsAre("lobby 7 report_missing", "result 0"));
}

TEST_F(HostEvents, ComeForPopupsBehindACommitWithoutAnAddressToReportTo) {
  ZOVKPopupModel mute = popup("a", 1);
  mute.report_url.clear();
  add({mute, popup("b", 2)});
  show("");
  pump();
  chooseAndPump("commit");
  EXPECT_THAT(heard_, ElementsAre("a 1 report_missing", "result 0", "b 2 request_ended"));
}

TEST_F(HostEvents, DoNotComeAfterTheShutDownOrToEarlierHooks) {
  add({popup("lobby", 7)});
  show("nowhere");
  ASSERT_TRUE(ZOVKPopupHost::setHooks({}));
  pump();
  EXPECT_THAT(heard_, ElementsAre("result -1"));
  listen();
  show("lobby");
  pump();
  ZOVKPopupHost::shutDown();
  EXPECT_THAT(heard_, ElementsAre("result -1"));
}

TEST_F(HostEvents, MayShutTheHostDown) {
  ZOVKPopupHooks hooks;
  hooks.popupEvent = [this](const ZOVKPopupEvent& event) {
    heard_.push_back(textOf(event));
    ZOVKPopupHost::shutDown();
  };
  ASSERT_TRUE(ZOVKPopupHost::setHooks(hooks));
  show("nowhere");
  show("nowhere else");
  pump();
  EXPECT_THAT(heard_, ElementsAre("result -1", "result -1", "nowhere 0 no_popup"));
}

}  // namespace
}  // namespace zovk
