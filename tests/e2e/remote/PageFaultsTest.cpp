#include "e2e/remote/RemoteFixture.h"
#include "text/Md5.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kPagePath = "/pages/lobby.html";

// Every test has a good day behind it; today the same page comes in a bad way.
class PageFaults : public RemoteFixture {
 protected:
  void spoilToday(const std::string& fault, const std::string& lastLine) {
    startService();
    letADayPass();
    stopService();
    startService({"--fault", std::string(kPagePath) + "=" + fault});
    startGame();
    await(lastLine);
  }
  std::string uri() const { return base() + kPagePath; }
  void expectOldPage(const std::string& reason) {
    EXPECT_THAT(log().errors(), ElementsAre("Download from url:" + uri() + ", error:" + reason,
                                            "Download file failed, uri:" + uri()));
    EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
    EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  }
  void expectNeverShown(const std::string& stored) {
    log().clear();
    ZOVKPopup::showPopup("", kRemoteType, recordAnswer());
    EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
    EXPECT_THAT(log().errors(), ElementsAre("MD5 different, config sig:" + md5Hex(kPage) +
                                            ", file MD5:" + md5Hex(stored)));
  }
  void expectHealedTomorrow() {
    endGame();
    setFault(kPagePath, "none");
    letADayPass();
    startGame("");
    EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  }
};

TEST_F(PageFaults, ADroppedDownloadKeepsTheOldPage) {
  spoilToday("drop", kPagePath);
  expectOldPage("Empty reply from server");
}

TEST_F(PageFaults, ADownloadThatBreaksOffKeepsTheOldPage) {
  spoilToday("truncate", kPagePath);
  expectOldPage("transfer closed with 1000 bytes remaining to read");
}

TEST_F(PageFaults, ADownloadThatIsSentRoundInCirclesKeepsTheOldPage) {
  spoilToday("redirect-loop", kPagePath);
  expectOldPage("Maximum (16) redirects followed");
}

TEST_F(PageFaults, AnEmptyPageKeepsTheOldPage) {
  spoilToday("empty", kPagePath);
  endGame();
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
}

TEST_F(PageFaults, ADownloadThatIsLateOrDripsArrivesWhole) {
  for (const char* fault : {"delay:200", "slow-drip:200"}) {
    SCOPED_TRACE(fault);
    spoilToday(fault, ".html done, result:1");
    EXPECT_THAT(log().errors(), IsEmpty());
    EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
    endGame();
  }
}

TEST_F(PageFaults, AnErrorPageIsStoredButNeverShownAndGoneTomorrow) {
  spoilToday("status-500", ".html done, result:1");
  expectNeverShown(readFile(cachedPage(kPage)));
  EXPECT_THAT(readFile(cachedPage(kPage)), HasSubstr("Internal Server Error"));
  expectHealedTomorrow();
}

TEST_F(PageFaults, FiftyMegabytesInPlaceOfAPageAreNeverShownAndGoneTomorrow) {
  spoilToday("huge", ".html done, result:1");
  EXPECT_EQ(std::filesystem::file_size(cachedPage(kPage)), std::uintmax_t{50} << 20U);
  expectNeverShown(std::string(std::size_t{50} << 20U, ' '));
  expectHealedTomorrow();
}

TEST_F(PageFaults, APageThatIsNotThereIsTheOnlyOneThatIsMissing) {
  folder().write("pages/other.html", "other");
  auto gone = pageFile("gone", 3, "lobby.html");
  gone["uri"] = "{{base}}/pages/gone.html";
  gone["sig"] = md5Hex("gone");
  offer({gone, pageFile("other", 4, "other.html")});
  startService();
  startGame();
  awaitPages(2);
  EXPECT_FALSE(ZOVKPopup::havePopup(3));
  EXPECT_TRUE(ZOVKPopup::havePopup(4));
}

TEST_F(PageFaults, APageWhoseDigestDiffersIsNeverShown) {
  auto wrong = pageFile("lobby", kRemoteType, "lobby.html");
  wrong["sig"] = md5Hex("what the service promised");
  offer({wrong});
  startService();
  startGame();
  awaitPages(1);
  log().clear();
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  const std::string line = "MD5 different, config sig:" + md5Hex("what the service promised") +
                           ", file MD5:" + md5Hex(kPage);
  EXPECT_TRUE(log().has(line));
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_FALSE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_THAT(log().errors(), ElementsAre(line));
}

TEST_F(PageFaults, AnAnswerThatChangesWhilePagesDownloadIsPutRightAtTheNextStart) {
  const std::string newPage = "published in the meantime";
  startService({"--fault", std::string(kConfigPath) + "=changed:2:next.json"});
  offer({pageFile("lobby", 3, "lobby.html")}, "next.json");
  // The engine has today's answer; its page has not been asked for.
  log().onLine("Save remote config file", [&] { folder().write("pages/lobby.html", newPage); });
  startGame();
  awaitPages(1);
  EXPECT_FALSE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_THAT(log().errors(), ElementsAre("MD5 different, config sig:" + md5Hex(kPage) +
                                          ", file MD5:" + md5Hex(newPage)));
  endGame();
  startGame();
  awaitPages(1);
  EXPECT_TRUE(ZOVKPopup::havePopup(3));
  EXPECT_EQ(readFile(cachedPage(newPage, 3)), newPage);
}

TEST_F(PageFaults, AnAddressThatDoesNotParseIsAPageThatIsMissing) {
  auto odd = pageFile("odd", 3, "lobby.html");
  odd["uri"] = "http://[";
  offer({odd, pageFile("lobby", kRemoteType, "lobby.html")});
  startService();
  startGame();
  awaitPages(1);
  await("Download file failed, uri:http://[");
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_THAT(log().errors()[0],
              testing::StartsWith("Download from url:http://[, error:unusable address: "));
  EXPECT_FALSE(ZOVKPopup::havePopup(3));
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

TEST_F(PageFaults, WithoutAnAddressThePageIsMissingWhichIsSaidTwice) {
  auto odd = pageFile("odd", 3, "lobby.html");
  odd["uri"] = "";
  offer({odd, pageFile("lobby", kRemoteType, "lobby.html")});
  startService();
  startGame();
  awaitPages(1);
  await("Download file failed, uri:", 2);
  EXPECT_FALSE(ZOVKPopup::havePopup(3));
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

}  // namespace
}  // namespace zovk
