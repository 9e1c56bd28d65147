#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RemoteDownload : public EngineFixture {
 protected:
  RemoteDownload() {
    engine();
    log().clear();
  }
  static ZOVKPopupModel file(const std::string& scene, std::uint64_t contentType = 1) {
    ZOVKPopupModel popup;
    popup.scene = scene;
    popup.content_type = contentType;
    popup.uri = "https://files.example/" + scene + ".html";
    popup.sig = md5Hex(scene);
    return popup;
  }
  std::optional<std::string> stored(const ZOVKPopupModel& popup) {
    return memory().files.text(popup.getPopupFilePath());
  }
  std::vector<std::string> debug() { return debugMessages(log()); }
};

TEST_F(RemoteDownload, OfNothingIsAnError) {
  engine().downloadRemotePopupFile({});
  EXPECT_THAT(debug(), ElementsAre("Start to download remote Popup file"));
  EXPECT_THAT(errorMessages(log()), ElementsAre("Param illegal"));
}

TEST_F(RemoteDownload, FetchesPageFilesOnlyAndAllAtOnce) {
  engine().downloadRemotePopupFile(
      listOf({file("a", 1), file("b", 3), file("c", 2), file("d", 0)}));
  const auto requests = memory().urlSession.requests();
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].url, "https://files.example/a.html");
  EXPECT_EQ(requests[0].kind, MemoryRequest::Kind::kDownload);
  EXPECT_EQ(requests[1].url, "https://files.example/c.html");
}

TEST_F(RemoteDownload, StoresEachPageUnderItsPopupsNameInWhicheverOrderTheyEnd) {
  engine().downloadRemotePopupFile(listOf({file("a"), file("b")}));
  memory().urlSession.answer("/b.html", 200, "page b");
  settle();
  EXPECT_EQ(stored(file("b")), "page b");
  EXPECT_EQ(stored(file("a")), std::nullopt);
  log().clear();
  memory().urlSession.answer("/a.html", 200, "page a");
  settle();
  EXPECT_EQ(stored(file("a")), "page a");
  EXPECT_THAT(debug(), ElementsAre("Download file success, uri:https://files.example/a.html",
                                   "Save file " + file("a").getPopupFileName()));
}

TEST_F(RemoteDownload, AFailureKeepsTheEarlierPage) {
  addCacheFile(file("a").getPopupFileName(), "earlier");
  engine().downloadRemotePopupFile(listOf({file("a")}));
  memory().urlSession.fail("/a.html", "no network");
  settle();
  EXPECT_EQ(stored(file("a")), "earlier");
  EXPECT_THAT(errorMessages(log()),
              Contains("Download file failed, uri:https://files.example/a.html"));
}

TEST_F(RemoteDownload, AnEmptyPageIsPassedOverInSilence) {
  addCacheFile(file("a").getPopupFileName(), "earlier");
  engine().downloadRemotePopupFile(listOf({file("a")}));
  memory().urlSession.answer("/a.html", 200, "");
  settle();
  EXPECT_EQ(stored(file("a")), "earlier");
  EXPECT_EQ(debug().back(), "Download file success, uri:https://files.example/a.html");
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(RemoteDownload, APageThatCannotBeReadIsPassedOverInSilence) {
  addCacheFile(file("a").getPopupFileName(), "earlier");
  engine().downloadRemotePopupFile(listOf({file("a")}));
  memory().files.failReads("/tmp/");
  memory().urlSession.answer("/a.html", 200, "page");
  settle();
  EXPECT_EQ(stored(file("a")), "earlier");
  EXPECT_EQ(debug().back(), "Download file success, uri:https://files.example/a.html");
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(RemoteDownload, ASecondGoodAnswerFetchesEveryPageAgainAndReplacesIt) {
  const std::string sig = md5Hex("a");
  const std::string document =
      R"({"code":0,"popups":[{"scene":"a","content_type":1,"uri":"https://files.example/a.html",)"
      R"("sig":")" +
      sig + R"("},{"scene":"b","content_type":3,"uri":"https://b.example"}]})";
  for (const char* body : {"first", "second"}) {
    engine().handleRemoteConfigResponse(document);
    EXPECT_TRUE(memory().urlSession.requestsTo("b.example").empty());
    memory().urlSession.answer("/a.html", 200, body);
    settle();
    EXPECT_EQ(memory().files.text(std::string(kCache) + "/ZOVKPopup_0_0_1_" + sig + ".html"), body);
  }
  EXPECT_EQ(memory().urlSession.requestsTo("/a.html").size(), 2U);
}

}  // namespace
}  // namespace zovk
