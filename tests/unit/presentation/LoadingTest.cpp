#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;

class Loading : public ControllerFixture {
 protected:
  void load(const ZOVKPopupModel& popup, const std::string& finalAddress) {
    controller().loadPopupUri(std::make_shared<const ZOVKPopupModel>(popup), finalAddress);
    settle();
  }
};

TEST_F(Loading, AWebPageLoadsItsAddressAndSaysSoInThePlatformLog) {
  show({webPage("a")});
  EXPECT_EQ(page()->loads(), (std::vector<MemoryLoad>{{webPage("a").uri, std::nullopt}}));
  EXPECT_THAT(log().lines(), Contains("webView will loadRequest the url : " + webPage("a").uri));
}

TEST_F(Loading, AFinalAddressTakesThePlaceOfTheWebPagesOwn) {
  show({webPage("a")});
  load(webPage("a"), "https://final.example/");
  EXPECT_EQ(page()->lastLoad(), "https://final.example/");
  load(webPage("a"), "");
  EXPECT_EQ(page()->lastLoad(), webPage("a").uri);
}

TEST_F(Loading, APageFileLoadsFromTheCacheAndMayReadNothingElse) {
  const ZOVKPopupModel popup = pageFile("a");
  show({popup});
  const std::string address = "file://" + popup.getPopupFilePath();
  EXPECT_EQ(page()->loads(), (std::vector<MemoryLoad>{{address, address}}));
  EXPECT_FALSE(log().contains("webView will loadRequest"));
  load(popup, "https://final.example/");
  EXPECT_EQ(page()->lastLoad(), address);
}

TEST_F(Loading, APageFileThatIsNotThereIsHandedToTheWebViewAllTheSame) {
  const ZOVKPopupModel popup = pageFile("a");
  memory().files.take(popup.getPopupFilePath());
  show({popup});
  EXPECT_EQ(page()->lastLoad(), "file://" + popup.getPopupFilePath());
}

TEST_F(Loading, ALocalPageFileLoadsFromTheResourceBundle) {
  ZOVKPopupModel popup = pageFile("a");
  popup.config_type = 1;
  popup.content_type = 2;
  show({popup});
  EXPECT_EQ(page()->lastLoad(), std::string("file://") + kBundle + "/" + popup.getPopupFileName());
}

TEST_F(Loading, AnyOtherContentTypeLoadsAFileAddressWithoutAPath) {
  for (const std::uint64_t type : {0U, 4U}) {
    ZOVKPopupModel popup = webPage("a");
    popup.content_type = type;
    show({popup});
    EXPECT_EQ(page()->loads().back(), (MemoryLoad{"file://", "file://"})) << type;
  }
}

TEST_F(Loading, WaitsForTheMainQueue) {
  show({webPage("a")});
  controller().loadPopupUri(listOf({webPage("b")})[0], "");
  EXPECT_EQ(page()->lastLoad(), webPage("a").uri);
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("b").uri);
}

TEST_F(Loading, TheRefreshButtonLoadsTheLastPageAgainWithItsFinalAddress) {
  show({webPage("a")});
  press("refreshButtonClicked");
  EXPECT_EQ(page()->loads().size(), 2U);
  EXPECT_EQ(page()->lastLoad(), webPage("a").uri);
  load(webPage("a"), "https://final.example/?x=1");
  press("refreshButtonClicked");
  EXPECT_EQ(page()->loads().size(), 4U);
  EXPECT_EQ(page()->lastLoad(), "https://final.example/?x=1");
  EXPECT_TRUE(answers().empty());
}

TEST_F(Loading, TheRefreshButtonKnowsThePageAtOnceAndItsFinalAddressOnceItLoads) {
  show({webPage("a")});
  controller().loadPopupUri(listOf({webPage("b")})[0], "https://final.example/");
  controller().performAction("refreshButtonClicked");
  settle();
  ASSERT_EQ(page()->loads().size(), 3U);
  EXPECT_EQ(page()->loads()[1].url, "https://final.example/");
  EXPECT_EQ(page()->loads()[2].url, webPage("b").uri) << "there was no final address yet";
}

TEST_F(Loading, TheRefreshButtonKnowsTheLastPageWhileTheOneBeforeItLoads) {
  show({webPage("a")});
  controller().loadPopupUri(listOf({webPage("b")})[0], "");
  memory().scheduler.async([this] { controller().performAction("refreshButtonClicked"); });
  controller().loadPopupUri(listOf({webPage("c")})[0], "");
  settle();
  ASSERT_EQ(page()->loads().size(), 4U);
  EXPECT_EQ(page()->loads()[1].url, webPage("b").uri);
  EXPECT_EQ(page()->loads()[2].url, webPage("c").uri);
  EXPECT_EQ(page()->loads()[3].url, webPage("c").uri);
}

TEST_F(Loading, TheRefreshButtonDoesNothingBeforeTheFirstPage) {
  show({conditional("asked")});
  press("refreshButtonClicked");
  EXPECT_TRUE(page()->loads().empty());
}

}  // namespace
}  // namespace zovk
