#include <limits>

#include <fmt/format.h>

#include "fixtures/EngineFixture.h"
#include "record/ZOVKPopupModel.h"

namespace zovk {
namespace {

TEST(PopupRecord, BeginsAsAWebPageShownOnce) {
  const ZOVKPopupModel popup;
  EXPECT_EQ(popup.pop_id, 0);
  EXPECT_EQ(popup.priority, 0);
  EXPECT_EQ(popup.publish_time, 0);
  EXPECT_EQ(popup.valid_time, 0);
  EXPECT_EQ(popup.expire_time, 0);
  EXPECT_EQ(popup.scene_type, 0U);
  EXPECT_EQ(popup.pop_type, 1U);
  EXPECT_EQ(popup.content_type, 3U);
  EXPECT_EQ(popup.pop_freq, 1U);
  EXPECT_EQ(popup.config_type, 0U);
  EXPECT_EQ(popup.scene + popup.valid_platform + popup.uri, "");
  EXPECT_EQ(popup.sig + popup.check_url + popup.report_url, "");
}

class PopupFile : public EngineFixture {
 protected:
  static ZOVKPopupModel pageOf(std::uint64_t contentType, std::uint64_t configType) {
    ZOVKPopupModel popup;
    popup.scene_type = 2;
    popup.content_type = contentType;
    popup.config_type = configType;
    popup.sig = "0123abcd";
    return popup;
  }
};

TEST_F(PopupFile, IsNamedAfterSceneTypePopTypeContentTypeAndDigest) {
  EXPECT_EQ(pageOf(1, 0).getPopupFileName(), "ZOVKPopup_2_1_1_0123abcd.html");
  EXPECT_EQ(pageOf(2, 0).getPopupFileName(), "ZOVKPopup_2_1_2_0123abcd.html");
}

TEST_F(PopupFile, DoesNotExistForOtherContents) {
  for (const std::uint64_t type : {0ULL, 3ULL, 4ULL, 1000ULL, ~0ULL}) {
    EXPECT_EQ(pageOf(type, 0).getPopupFileName(), "") << type;
    EXPECT_EQ(pageOf(type, 0).getPopupFilePath(), "") << type;
    EXPECT_EQ(pageOf(type, 1).getPopupFilePath(), "") << type;
    EXPECT_FALSE(pageOf(type, 0).isPageFile()) << type;
  }
}

TEST_F(PopupFile, LiesInTheCacheForARemotePopup) {
  for (const std::uint64_t type : {1U, 2U}) {
    EXPECT_EQ(pageOf(type, kConfigRemote).getPopupFilePath(),
              fmt::format("{}/{}", kCache, pageOf(type, 0).getPopupFileName()));
  }
}

TEST_F(PopupFile, LiesInTheResourceBundleForALocalPopup) {
  for (const std::uint64_t type : {1U, 2U}) {
    EXPECT_EQ(pageOf(type, kConfigLocal).getPopupFilePath(),
              fmt::format("{}/{}", kBundle, pageOf(type, 0).getPopupFileName()));
  }
}

TEST_F(PopupFile, LiesNowhereForAnotherDocument) {
  EXPECT_EQ(pageOf(1, 2).getPopupFilePath(), "");
  EXPECT_EQ(pageOf(1, ~0ULL).getPopupFilePath(), "");
}

TEST_F(PopupFile, LiesNowhereWithoutABundleOrAPlatform) {
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(pageOf(1, kConfigLocal).getPopupFilePath(), "");
  ZOVKPopupFileManager::purgeSharedInstance();
  setCurrentPlatform(nullptr);
  EXPECT_EQ(pageOf(1, kConfigRemote).getPopupFilePath(), "");
}

TEST_F(PopupFile, HasItsNumbersInDecimalWithTheirSign) {
  ZOVKPopupModel popup = pageOf(1, 0);
  popup.scene_type = ~0ULL;
  popup.pop_type = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(popup.getPopupFileName(), "ZOVKPopup_-1_2147483647_1_0123abcd.html");
}

TEST_F(PopupFile, HasTheDigestInItsNameAsItStands) {
  ZOVKPopupModel popup = pageOf(1, 0);
  popup.sig = "100%s \"{}\"";
  EXPECT_EQ(popup.getPopupFileName(), "ZOVKPopup_2_1_1_100%s \"{}\".html");
  popup.sig = "";
  EXPECT_EQ(popup.getPopupFileName(), "ZOVKPopup_2_1_1_.html");
}

}  // namespace
}  // namespace zovk
