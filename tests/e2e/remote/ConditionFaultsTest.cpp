#include <algorithm>

#include <unistd.h>

#include "e2e/remote/RemoteFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kCheckPath = "/check/vip";

// A service that would say yes, were its answer not spoilt.
class Condition : public RemoteFixture {
 protected:
  const std::vector<Answer> kNo{{0, "reatin complete"}};

  void startWithCondition(const std::vector<std::string>& arguments = {}) {
    folder().write("checks.json", R"({"vip": 1, "nobody": 0})");
    offer({conditional("vip", kCheckPath), conditional("nobody", "/check/nobody")});
    startService(arguments);
    startGame();
    await("Start to download remote Popup file");
    log().clear();
  }
  void ask(const std::string& scene = "vip") {
    ZOVKPopup::showPopup(scene, 0, recordAnswer());
    pumpUntilAnswers(1);
  }
};

TEST_F(Condition, ThatTheServiceDeniesIsAnsweredWithoutShowingAnything) {
  startWithCondition();
  ask("nobody");
  EXPECT_EQ(answers(), kNo);
  EXPECT_TRUE(log().has("No need to show condition Popup"));
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(Condition, CountsAsAPopupWithoutBeingAskedAbout) {
  startWithCondition();
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  endGame();
  stopService();
  EXPECT_EQ(requestLog().find("POST"), std::string::npos);
}

TEST_F(Condition, WhoseConnectionIsDroppedIsANo) {
  startWithCondition({"--fault", "/check/vip=drop"});
  ask();
  EXPECT_EQ(answers(), kNo);
  EXPECT_THAT(log().errors(), ElementsAre(requestError(kCheckPath, "Empty reply from server"),
                                          "Query condition Popup request failed"));
}

TEST_F(Condition, WhoseAnswerBreaksOffIsANo) {
  startWithCondition({"--fault", "/check/vip=truncate:5"});
  ask();
  EXPECT_EQ(answers(), kNo);
  EXPECT_THAT(
      log().errors(),
      ElementsAre(requestError(kCheckPath, "transfer closed with 5 bytes remaining to read"),
                  "Query condition Popup request failed"));
}

TEST_F(Condition, ThatIsSentRoundInCirclesIsANo) {
  startWithCondition({"--fault", "/check/vip=redirect-loop"});
  ask();
  EXPECT_EQ(answers(), kNo);
  EXPECT_THAT(log().errors(),
              ElementsAre(requestError(kCheckPath, "Maximum (16) redirects followed"),
                          "Query condition Popup request failed"));
}

TEST_F(Condition, WhoseServiceIsDownIsANo) {
  startWithCondition();
  stopService();
  ask();
  EXPECT_EQ(answers(), kNo);
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_EQ(log().errors()[1], "Query condition Popup request failed");
}

TEST_F(Condition, WhoseAnswerIsNoneIsANo) {
  startWithCondition();
  std::vector<Answer> expected;
  for (const char* fault : {"status-500", "empty", "not-json", "huge"}) {
    SCOPED_TRACE(fault);
    setFault(kCheckPath, fault);
    log().clear();
    ZOVKPopup::showPopup("vip", 0, recordAnswer());
    expected.push_back(kNo.front());
    pumpUntilAnswers(expected.size());
    EXPECT_EQ(answers(), expected);
    EXPECT_TRUE(log().has("No need to show condition Popup"));
    EXPECT_THAT(log().errors(), IsEmpty());
  }
}

TEST_F(Condition, ThatIsAnsweredLateIsStillAnswered) {
  startWithCondition({"--fault", "/check/nobody=delay:300"});
  ask("nobody");
  EXPECT_EQ(answers(), kNo);
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(Condition, AskedForTwoThousandTimesLeavesTheGameItsDescriptors) {
  constexpr std::size_t kCount = 2000;
  startWithCondition();
  const std::size_t before = openDescriptors(::getpid());
  std::size_t most = before;
  for (std::size_t i = 0; i < kCount; ++i) ZOVKPopup::showPopup("nobody", 0, recordAnswer());
  pumpUntil(
      [&] {
        most = std::max(most, openDescriptors(::getpid()));
        return answers().size() == kCount;
      },
      "all answers", std::chrono::seconds(80));
  EXPECT_EQ(answers(), std::vector<Answer>(kCount, kNo.front()));
  EXPECT_LE(most - before, 64U);
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(Condition, AtAnAddressThatDoesNotParseIsANo) {
  auto popup = conditional("vip", "");
  popup["check_url"] = "http://[/check";
  offer({popup});
  startService();
  startGame();
  await("Start to download remote Popup file");
  log().clear();
  ask();
  EXPECT_EQ(answers(), kNo);
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_THAT(log().errors()[0], testing::StartsWith("Request url:http://[/check?game_id="));
  EXPECT_EQ(log().errors()[1], "Query condition Popup request failed");
}

}  // namespace
}  // namespace zovk
