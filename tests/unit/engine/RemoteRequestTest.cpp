#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFile = "/home/player/Library/Caches/ZOVKPopup/ZOVKPopupRemote.config";

std::string documentWith(const std::string& scene) {
  const std::string uri = "https://popups.example/" + scene;
  return R"({"code":0,"server_time":77,"popups":[{"scene":")" + scene +
         R"(","scene_type":4,"content_type":3,"uri":")" + uri + R"(","sig":")" + md5Hex(uri) +
         R"("}]})";
}

class RemoteRequest : public EngineFixture {
 protected:
  void start() {
    engine();
    log().clear();
    engine().startPopup("https://service.example", "1001", "secret");
  }
  void answer(const std::string& body, int status = 200) {
    log().clear();
    memory().urlSession.answer("/popup/get_info", status, body);
    settle();
  }
  std::vector<std::string> debug() { return debugMessages(log()); }
};

TEST_F(RemoteRequest, IsSignedAndSentOnceWithTheCommonParameters) {
  start();
  EXPECT_THAT(debug(), Contains("Request remote config"));
  ASSERT_EQ(memory().urlSession.requestCount(), 1U);
  const MemoryRequest request = memory().urlSession.request(0);
  const std::string installId = *fileManager().getUUID();
  const std::string parameters = "game_id=1001&install_id=" + installId + "&os=2&version=1.0.0";
  EXPECT_EQ(request.url, "https://service.example/popup/get_info?" + parameters +
                             "&sig=" + md5Hex("/popup/get_info?" + parameters + "secret"));
  EXPECT_EQ(request.method, "GET");
  EXPECT_EQ(request.body, std::nullopt);
}

// Entries that cannot be read are passed over, which leaves a good answer without popups.
TEST_F(RemoteRequest, AnAnswerWithoutOneReadablePopupIsSavedWhileThePopupsOfThisRunStay) {
  for (const std::string body : {R"({"code":0,"popups":[1]})", R"({"popups":[{},"a"]})"}) {
    addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
    start();
    answer(body);
    EXPECT_EQ(memory().files.text(kFile), body);
    ASSERT_EQ(engine().remotePopupArr().size(), 1U);
    EXPECT_EQ(engine().remotePopupArr().front()->scene, "old");
    EXPECT_EQ(engine().mergePopupArr().size(), 1U);
    EXPECT_THAT(errorMessages(log()), IsEmpty());
    ZOVKPopupManager::purgeSharedInstance();
    EXPECT_TRUE(engine().remotePopupArr().empty()) << "at the next start";
    ZOVKPopupManager::purgeSharedInstance();
  }
}

TEST_F(RemoteRequest, MeasuresItsTimeByTheUptime) {
  start();
  EXPECT_EQ(engine().startTime(), MemoryScheduler::kStartOfUptime);
  memory().scheduler.advance(std::chrono::milliseconds(1500));
  answer(documentWith("a"));
  EXPECT_DOUBLE_EQ(engine().requestTime(), 1.5);
  EXPECT_THAT(debug(), Contains("Request time:1.500000"));
}

TEST_F(RemoteRequest, AGoodAnswerIsSavedAndTakesThePlaceOfTheRemotePopups) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
  start();
  EXPECT_EQ(engine().remotePopupArr().front()->scene, "old");
  const std::string body = documentWith("new") + " ";
  answer(body);
  ASSERT_EQ(engine().remotePopupArr().size(), 1U);
  EXPECT_EQ(engine().remotePopupArr().front()->scene, "new");
  EXPECT_EQ(engine().mergePopupArr(), engine().remotePopupArr());
  EXPECT_EQ(memory().files.text(kFile), body) << "byte for byte";
  EXPECT_EQ(engine().serverTime(), 77);
  EXPECT_THAT(debug(), Contains("Request remote config success"));
  EXPECT_THAT(debug(), Contains("Handle remote config response:" + std::to_string(body.size())));
  EXPECT_THAT(debug(), Contains("Parse config file success"));
  EXPECT_THAT(debug(), Contains("Save remote config file"));
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(RemoteRequest, AnAnswerIsTakenWhateverItsStatus) {
  start();
  answer(documentWith("a"), 500);
  EXPECT_EQ(engine().remotePopupArr().size(), 1U);
}

TEST_F(RemoteRequest, ATransportFailureLeavesEverythingAndIsNotRetried) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
  start();
  log().clear();
  memory().urlSession.fail("/popup/get_info", "no network");
  settle();
  EXPECT_THAT(errorMessages(log()), Contains("Request remote config failed!"));
  EXPECT_THAT(debug(), IsEmpty());
  EXPECT_EQ(engine().mergePopupArr().front()->scene, "old");
  EXPECT_EQ(memory().files.text(kFile), documentWith("old"));
  memory().scheduler.advance(std::chrono::hours(1));
  EXPECT_EQ(memory().urlSession.requestCount(), 1U);
}

TEST_F(RemoteRequest, AnEmptyAnswerLeavesEverything) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
  start();
  answer("");
  EXPECT_EQ(debug().back(), "Handle remote config response:0");
  EXPECT_THAT(errorMessages(log()), IsEmpty());
  EXPECT_EQ(engine().mergePopupArr().front()->scene, "old");
  EXPECT_EQ(memory().files.text(kFile), documentWith("old"));
}

TEST_F(RemoteRequest, AnAbsentAnswerCountsAsAnEmptyOne) {
  engine();
  log().clear();
  engine().handleRemoteConfigResponse(std::nullopt);
  EXPECT_THAT(debug(), ElementsAre("Handle remote config response:0"));
}

TEST_F(RemoteRequest, AnAnswerThatIsNoDocumentLeavesEverything) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
  start();
  for (const char* body : {"<html>", R"({"code":3})", R"({"popups":[]})", "[]"}) {
    log().clear();
    engine().handleRemoteConfigResponse(body);
    EXPECT_EQ(errorMessages(log()).back(), "No remote config or parse config file error") << body;
    EXPECT_EQ(engine().mergePopupArr().front()->scene, "old");
    EXPECT_EQ(memory().files.text(kFile), documentWith("old"));
  }
}

TEST_F(RemoteRequest, AnAnswerWithoutUsablePopupsIsSavedButClearsNothing) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("old"));
  start();
  const std::string body = R"({"code":0,"popups":[1,{}]})";
  answer(body);
  EXPECT_EQ(memory().files.text(kFile), body);
  EXPECT_EQ(engine().remotePopupArr().front()->scene, "old");
  EXPECT_EQ(debug().back(), "Save remote config file");
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(RemoteRequest, AFailureThatComesAfterTheEngineIsGoneIsToldAllTheSame) {
  start();
  ZOVKPopupManager::purgeSharedInstance();
  log().clear();
  memory().urlSession.fail("/popup/get_info", "no network");
  settle();
  EXPECT_EQ(errorMessages(log()).back(), "Request remote config failed!");
}

TEST_F(RemoteRequest, AnAnswerThatComesAfterTheEngineIsGoneIsOnlyLogged) {
  start();
  const std::weak_ptr<ZOVKPopupManager> gone = engine().weak_from_this();
  ZOVKPopupManager::purgeSharedInstance();
  EXPECT_TRUE(gone.expired()) << "a request that is on its way keeps no engine";
  answer(documentWith("late"));
  EXPECT_EQ(debugMessages(log(), "ZOVKPopupNetwork").size(), 1U);
  EXPECT_THAT(debug(), IsEmpty());
  EXPECT_THAT(errorMessages(log()), IsEmpty());
  EXPECT_EQ(memory().files.text(kFile), std::nullopt);
}

}  // namespace
}  // namespace zovk
