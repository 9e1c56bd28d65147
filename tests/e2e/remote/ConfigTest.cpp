#include <sstream>

#include "e2e/remote/RemoteFixture.h"
#include "text/Md5.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using RemoteConfig = RemoteFixture;

TEST_F(RemoteConfig, AGoodAnswerTakesThePlaceOfTheShippedPopupOfItsScene) {
  startService();
  startGame();
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
  awaitPages(1);
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_TRUE(log().has("Same scene:lobby, use the one who's publishTime latest"));
  EXPECT_FALSE(ZOVKPopup::havePopup(kLocalType));
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_EQ(md5Hex(readFile(cachedPage(kPage))), md5Hex(kPage));
  EXPECT_THAT(savedConfig(), HasSubstr(R"("sig":")" + md5Hex(kPage)));
}

TEST_F(RemoteConfig, TheShippedPopupStaysWhenItIsTheNewerOne) {
  auto older = pageFile("lobby", kRemoteType, "lobby.html");
  older["publish_time"] = -1;
  offer({older});
  startService();
  startGame();
  awaitPages(1);
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
  EXPECT_FALSE(ZOVKPopup::havePopup(kRemoteType));
}

TEST_F(RemoteConfig, TheNextAnswerTakesThePlaceOfTheOneBefore) {
  startService();
  letADayPass();
  const std::string yesterday = savedConfig();
  folder().write("pages/new.html", "new");
  offer({pageFile("lobby", 3, "new.html"), pageFile("shop", 4, "new.html")});
  startGame();
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  awaitPages(2);
  EXPECT_FALSE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_TRUE(ZOVKPopup::havePopup(3));
  EXPECT_TRUE(ZOVKPopup::havePopup(4));
  EXPECT_NE(savedConfig(), yesterday);
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage) << "pages go at a start, not at an answer";
  endGame();
  startGame("");
  EXPECT_EQ(cacheListing().size(), 3U);
  EXPECT_EQ(readFile(cachedPage("new", 3)), "new");
}

TEST_F(RemoteConfig, OneConfigurationRequestAndOneForEachPageFileAreSentAtEachStart) {
  folder().write("pages/web.html", "a web page is not downloaded");
  auto web = pageFile("web", kRemoteType, "web.html");
  web["content_type"] = 3;
  offer({pageFile("lobby", kRemoteType, "lobby.html"), web});
  startService();
  letADayPass();
  stopService();
  EXPECT_THAT(requestLog(),
              testing::MatchesRegex("GET /popup/get_info\\?game_id=1001&install_id=[-0-9A-F]{36}"
                                    "&os=2&version=1\\.0\\.0&sig=[0-9a-f]{32} 200\n"
                                    "GET /pages/lobby\\.html 200\n"));
}

TEST_F(RemoteConfig, AnUnchangedPageCostsNoBodyTheNextDayAndIsWholeAllTheSame) {
  startService();
  letADayPass();
  std::filesystem::remove(cachedPage(kPage));
  letADayPass();
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
  folder().write("pages/lobby.html", "changed");
  letADayPass();
  EXPECT_EQ(readFile(cachedPage("changed")), "changed");
  stopService();
  std::vector<std::string> pages;
  std::istringstream lines(requestLog());
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("GET /pages/")) pages.push_back(line);
  }
  EXPECT_THAT(pages, ElementsAre("GET /pages/lobby.html 200", "GET /pages/lobby.html 304",
                                 "GET /pages/lobby.html 200"));
}

TEST_F(RemoteConfig, AHundredPagesAreAllDownloadedAndVerified) {
  boost::json::array popups;
  for (int i = 0; i < 100; ++i) {
    const std::string name = std::to_string(i) + ".html";
    folder().write("pages/" + name, "page " + name);
    popups.push_back(pageFile("scene" + name, static_cast<std::uint64_t>(1000 + i), name));
  }
  offer(popups);
  startService();
  startGame();
  awaitPages(100);
  for (std::uint64_t type = 1000; type < 1100; ++type) EXPECT_TRUE(ZOVKPopup::havePopup(type));
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(RemoteConfig, AGameThatEndsWhileItWaitsForTheAnswerEndsAtOnce) {
  startService({"--fault", std::string(kConfigPath) + "=delay:60000"});
  startGame();
  const auto begin = std::chrono::steady_clock::now();
  endGame();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  EXPECT_TRUE(cacheListing().empty());
}

}  // namespace
}  // namespace zovk
