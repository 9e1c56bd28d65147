#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::StartsWith;

constexpr const char* kKey = "zovk_policy_publish_time";

// The check goes by the scene, what is shown by scene type 0.
class Policy : public EngineFixture {
 protected:
  Policy() { engine(); }

  void configure(std::int32_t publishTime, std::uint64_t sceneType = 0) {
    ZOVKPopupModel policy = webPage("ZOVKPolicy", sceneType);
    policy.publish_time = publishTime;
    policy.report_url = "https://report.example/policy";
    engine().setMergePopupArr(listOf({policy}));
    log().clear();
  }
  void showPolicy() {
    engine().showPolicy(recordAnswer());
    settle();
  }
  std::optional<std::string> saved() { return memory().settings.value(kKey); }
  void save(const std::string& value) { memory().settings.set(kKey, value); }
  std::vector<std::string> debug() { return debugMessages(log()); }
};

TEST_F(Policy, ANewerVersionIsShownAndSavedWhenItIsDone) {
  save("5");
  configure(6);
  showPolicy();
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(page()->lastLoad(), webPage("ZOVKPolicy").uri);
  EXPECT_EQ(saved(), "5");
  log().clear();
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
  EXPECT_EQ(saved(), "6");
  EXPECT_THAT(debug(),
              ElementsAre("Show Popup done", "Do callback", "Show Policy done", "Save policy state",
                          "Save policy done", "Show Popup", "Get Popup from cache",
                          "No Popup to show", "Stop check key window", "Release Popup window"));
}

TEST_F(Policy, TheDecisionIsLogged) {
  save("5");
  configure(6);
  EXPECT_TRUE(engine().needToShowPolicy());
  EXPECT_EQ(debug().front(), "savedPublishTime:5");
  EXPECT_THAT(debug(), Contains("lastestPublishTime:6"));
  EXPECT_EQ(debug().back(), "Have new Policy version");
}

TEST_F(Policy, ANewerVersionIsLoggedStepByStepUntilItIsQueued) {
  save("5");
  configure(6);
  engine().showPolicy(recordAnswer());
  EXPECT_THAT(
      debug(),
      ElementsAre(StartsWith("Start Policy, complete:0x"), "savedPublishTime:5",
                  "Get valid Popup, scene:ZOVKPolicy, srcPopups count:1", "Content type remote",
                  "lastestPublishTime:6", "Have new Policy version", "Show Policy",
                  StartsWith("Show Popup, scene:, sceneType:0, complete:0x"),
                  "Get valid Popup, sceneType:0, srcPopups count:1",
                  "Popup fileName:, sceneType:0, contentType:3, frequency:2", "Content type remote",
                  StartsWith("Cache Popup, Popup count:1, complete:0x"), "Cache callback done",
                  "Show Popup", "Get Popup from cache"));
}

TEST_F(Policy, AnEqualVersionIsLoggedStepByStepBeforeTheHostHears) {
  save("5");
  configure(5);
  std::vector<std::string> before;
  engine().showPolicy([&](std::int32_t, const std::string&) { before = debug(); });
  EXPECT_THAT(before, ElementsAre(StartsWith("Start Policy, complete:0x"), "savedPublishTime:5",
                                  "Get valid Popup, scene:ZOVKPolicy, srcPopups count:1",
                                  "Content type remote", "lastestPublishTime:5",
                                  "No need to show Policy", "No need to show Policy"));
  EXPECT_EQ(debug(), before);
}

TEST_F(Policy, IsSavedBeforeTheHostHears) {
  save("5");
  configure(6);
  std::optional<std::string> savedThen;
  engine().showPolicy([&](std::int32_t, const std::string&) { savedThen = saved(); });
  settle();
  choose("skip");
  EXPECT_EQ(savedThen, "6");
}

TEST_F(Policy, AnEqualOrOlderVersionIsAnsweredAtOnce) {
  for (const std::int32_t version : {5, 4, 0, -1}) {
    save("5");
    configure(version);
    engine().showPolicy(recordAnswer());
    EXPECT_EQ(answers().back(), (Answer{-1, ""})) << version;
    EXPECT_THAT(debug(), Contains("No need to show Policy").Times(2));
    EXPECT_EQ(saved(), "5");
    EXPECT_EQ(engine().policyPublishTime(), std::to_string(version));
  }
  settle();
  EXPECT_EQ(answers().size(), 4U);
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
}

TEST_F(Policy, WithoutAPolicyIsAnsweredAtOnce) {
  engine().setMergePopupArr(listOf({webPage("lobby", 0)}));
  log().clear();
  engine().showPolicy(recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, ""}}));
  EXPECT_THAT(debug().front(), StartsWith("Start Policy, complete:"));
  EXPECT_THAT(debug(), Contains("savedPublishTime:"));
  EXPECT_THAT(debug(), Contains("No need to show Policy").Times(2));
  EXPECT_EQ(engine().policyPublishTime(), std::nullopt);
}

TEST_F(Policy, IsSubjectToTheSameTestsAsEveryPopup) {
  ZOVKPopupModel expired = webPage("ZOVKPolicy", 0);
  expired.publish_time = 6;
  expired.expire_time = 1;
  engine().setMergePopupArr(listOf({expired}));
  EXPECT_FALSE(engine().needToShowPolicy());
}

TEST_F(Policy, WithNothingSavedEveryVersionAboveZeroIsNew) {
  configure(1);
  EXPECT_TRUE(engine().needToShowPolicy());
  configure(0);
  EXPECT_FALSE(engine().needToShowPolicy());
}

TEST_F(Policy, TheSavedTextIsReadAsAnInteger) {
  configure(6);
  const std::vector<std::pair<std::string, bool>> texts = {
      {"abc", true}, {"  5", true}, {"5x9", true},   {"+5", true},
      {"-9", true},  {" 6", false}, {"7abc", false}, {"99999999999", false}};
  for (const auto& [text, needed] : texts) {
    save(text);
    EXPECT_EQ(engine().needToShowPolicy(), needed) << text;
  }
}

TEST_F(Policy, ACommitMarksItAsSeen) {
  configure(6);
  showPolicy();
  choose("commit");
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit")}}));
  EXPECT_EQ(saved(), "6");
}

TEST_F(Policy, AFailureMarksItAsSeen) {
  configure(6);
  showPolicy();
  memory().userInterface.failInterface("gone");
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "gone"}}));
  EXPECT_EQ(saved(), "6");
}

TEST_F(Policy, ACancelLeavesItToBeOfferedAgain) {
  save("5");
  configure(6);
  showPolicy();
  log().clear();
  choose("cancel");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel")}}));
  EXPECT_EQ(saved(), "5");
  EXPECT_THAT(debug(), Contains("Show Policy done"));
  EXPECT_THAT(debug(), ::testing::Not(Contains("Save policy state")));
  EXPECT_TRUE(engine().needToShowPolicy());
}

TEST_F(Policy, NeededWithNothingOfSceneTypeZeroIsAnsweredAtOnceAndMarkedAsSeen) {
  configure(6, 3);
  engine().showPolicy(recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  EXPECT_EQ(saved(), "6");
  const auto lines = debug();
  const auto none = std::find(lines.begin(), lines.end(), "No valid Popup for scene: sceneType:0");
  const auto done = std::find(lines.begin(), lines.end(), "Show Policy done");
  EXPECT_LT(none, done);
  EXPECT_NE(done, lines.end());
}

TEST_F(Policy, ShowsWhateverSceneTypeZeroSelects) {
  ZOVKPopupModel policy = webPage("ZOVKPolicy", 3);
  policy.publish_time = 6;
  engine().setMergePopupArr(listOf({policy, webPage("news", 0)}));
  showPolicy();
  EXPECT_EQ(page()->lastLoad(), webPage("news").uri);
}

TEST_F(Policy, NeedsNoCallback) {
  configure(6);
  engine().showPolicy(nullptr);
  EXPECT_EQ(debug().front(), "Start Policy, complete:(nil)");
  settle();
  choose("skip");
  EXPECT_EQ(saved(), "6");
  log().clear();
  engine().showPolicy(nullptr);
  EXPECT_THAT(debug(), Contains("No need to show Policy").Times(2));
  settle();
  EXPECT_EQ(memory().userInterface.windowsMade(), 1U) << "seen, it is not shown again";
}

}  // namespace
}  // namespace zovk
